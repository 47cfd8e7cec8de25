#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "fileops/multiple_rename.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTableView;
class QTimer;

namespace vantrel {

class RenameListModel;

// What the window stands on; all must outlive it.
struct RenameMultipleParts {
    const Toolbox& tools;
    MultipleRename& rename;
    std::function<void()> requestCancel;  // the window is to be closed while a batch runs
};

// "Rename Multiple Objects": one set of rules for the names of many objects of a folder, with the outcome
// shown beside them as the rules are typed.
class frmRenameMultiple : public QDialog {
    Q_OBJECT

  public:
    frmRenameMultiple(RenameMultipleParts parts, ShellRoot folder, std::vector<ObjectToRename> objects,
                      QWidget* parent = nullptr);

    // Shows the window modally. Whether anything was renamed; the window is not shown where the folder cannot
    // be read, which is reported.
    bool ShowForm();
    // What the batch of this window did.
    const OperationSummary& Summary() const { return summary_; }

    QCheckBox *chkShortFileName, *chkRemoveSpaces, *chkRemoveExtension;
    QComboBox* cboCapitalization;
    QCheckBox *chkChangeFileName, *chkChangeExtension, *chkAddPrefixToFilename, *chkAddSuffixToFilename;
    QLineEdit *txtFileName, *txtExtension, *txtNamePrefix, *txtNameSuffix;
    QCheckBox* chkNameAutoNumber;
    QGroupBox* fraAutoNumber;
    QRadioButton *optNumberFilename, *optNumberExtension;
    QLineEdit *txtStartsWith, *txtIncrement, *txtLength;
    QLabel* lblPadMsg;
    QTableView* lvwObjects;
    QLabel* lblOutcome;
    QProgressBar* ProgressBar1;
    QPushButton *cmdPreview, *cmdUndo, *cmdOK, *cmdClose;

    bool eventFilter(QObject* watched, QEvent* event) override;

  public Q_SLOTS:
    void done(int result) override;

  private:
    struct NumberField;
    void NameControls();
    QLayout* LayOutRules();
    QLayout* LayOutNumbers();
    QLayout* LayOutButtons();
    void LayOutList();
    void LayOut();
    void Connect();
    void Form_Load();
    void EnableFields();
    // False where one of the fields was refused, which has been told.
    bool ValidateNumbers();
    bool Validate(const NumberField& field);
    std::vector<NumberField> NumberFields();
    RenameRules Rules();
    void ReadShortNamesOnce();
    void RulesChanged();
    void Preview();
    void cmdPreview_Click();
    void cmdOK_Click();
    void cmdUndo_Click();
    // Runs a batch with everything disabled, and tells what went wrong with it.
    void Run(const std::function<RenameResult(const BatchRenames::Progress&)>& batch,
             const std::vector<std::string>& names);

    RenameMultipleParts parts_;
    const ShellRoot folder_;
    const std::vector<ObjectToRename> objects_;
    std::vector<NameToChange> names_;
    NamesInFolder inFolder_;
    bool hasShortNames_ = false;
    RenameListModel* model_;
    QTimer* previewSoon_;
    OperationSummary summary_;
    bool renamed_ = false, running_ = false, validating_ = false;
};

}  // namespace vantrel
