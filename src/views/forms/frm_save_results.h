#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <string>

#include "core/toolbox.h"
#include "views/results_export.h"

class QCheckBox;
class QPushButton;
class QRadioButton;

namespace vantrel {

// "Save Results As": the results of a comparison as a file for others.
class frmSaveResults : public QDialog {
    Q_OBJECT

  public:
    struct Parts {
        const Toolbox& tools;
        std::function<ResultsReport(bool onlyShown)> makeReport;
        std::function<void()> showHelp;  // over the dialog
    };
    explicit frmSaveResults(Parts parts, QWidget* parent = nullptr);

    // By ResultsFormat.
    std::array<QRadioButton*, 3> optFormat{};
    QCheckBox* chkDisplayedOnly;
    QPushButton* cmdSave;
    QPushButton* CancelButton;
    QPushButton* cmdHelp;

  private:
    void LayOut();
    void cmdSave_Click();
    void Tell(const char* text);

    Parts parts_;
};

}  // namespace vantrel
