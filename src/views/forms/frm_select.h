#pragma once

#include <QDialog>
#include <array>
#include <string>

#include "core/toolbox.h"
#include "platform/busy_state.h"
#include "views/forms/result_icons.h"
#include "views/result_panes.h"
#include "views/select_criteria.h"

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace vantrel {

class FileTypeList;

// The "Select Wizard": selects rows of a pane by type, size, date and name, as often as wanted. Its criteria
// last as long as it stands.
class frmSelect : public QDialog {
    Q_OBJECT
  public:
    // All but the icons must outlive the window.
    struct Parts {
        const Toolbox& tools;
        ResultPanes& panes;
        BusyState& busy;
        PerSide<std::string> folders;  // that the rows of the panes lie in
        ResultIcons icons;
    };
    explicit frmSelect(Parts parts, QWidget* parent = nullptr);

    QTabWidget* tbsOptions;
    std::array<QPushButton*, 2> cmdSelect;  // Select, Deselect
    QPushButton* cmdClose;
    PerSide<QRadioButton*> optPane;
    std::array<QCheckBox*, kResultTypeCount + 1> chkFileType{};  // by the number of the result type, from 1
    QComboBox* cboSizeOperators;
    QLineEdit* txtByteSize;
    QComboBox* cboDateOperator;
    QDateEdit* dtpDate;
    FileTypeList* lstFileTypes;

  private:
    static constexpr int kFileTypeTab = 2;

    void LayOut();
    QWidget* TypePage();
    QWidget* SizePage();
    QWidget* FileTypePage();
    void Wire();
    void TurnTab(int by);
    void ShowTab(int tab);
    void LoadFileTypesList();
    void AskForPatterns();
    bool CheckByteSize();
    SelectCriteria Criteria(bool select) const;
    void cmdSelect_Click(bool select);

    Parts parts_;
    CalendarDay today_;
};

}  // namespace vantrel
