#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "core/toolbox.h"
#include "views/forms/result_icons.h"
#include "views/result_summary.h"

class QCheckBox;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace vantrel {

class PieChart;

// "Comparison Results Summary": the rows of one side by result type, as a list and as a pie. It counts once,
// when it is made.
class frmCompareResults : public QDialog {
    Q_OBJECT
  public:
    struct Parts {
        ErrorReporter& reporter;
        const HoldLists& hold;       // of a comparison; read in the constructor only
        PerSide<std::string> paths;  // of the two path boxes
        ResultIcons icons;
        QPixmap background;  // tiled behind the list; without one it is plain
        bool showAfterCompare = false;
        std::function<void(bool)> storeShowAfterCompare;  // OK
    };
    explicit frmCompareResults(const Parts& parts, QWidget* parent = nullptr);

    QTreeWidget* lvwFileTypes;
    PieChart* picPieChart;
    QRadioButton* optLeftFolder;
    QRadioButton* optRightFolder;
    QCheckBox* chkAutoShowGraphAfterCompare;
    QPushButton* OKButton;
    QPushButton* CancelButton;

  private:
    void LayOut();
    void Load(const HoldLists& hold);
    void ShowSide(Side side);
    void AddFileCountsToListview(Side side);
    void DrawPie(Side side);

    ErrorReporter& reporter_;
    PerSide<std::string> paths_;
    ResultIcons icons_;
    PerSide<FileTypeCounts> counts_;
};

}  // namespace vantrel
