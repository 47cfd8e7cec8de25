#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <vector>

#include "fileops/date_stamps.h"
#include "fileops/operation_summary.h"

class QCalendarWidget;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableView;

namespace vantrel {

class StampListModel;

// "Set Multiple File Date/Times": one date and time for the last write of many files. Access and creation
// stay as they are.
class frmFileDateTimes : public QDialog {
    Q_OBJECT

  public:
    // `tools` must outlive the window. `confirm`: ask before it is done.
    frmFileDateTimes(const Toolbox& tools, std::vector<FileToStamp> files, bool confirm,
                     std::function<void()> showHelp, QWidget* parent = nullptr);

    // Shows the window modally. Whether any file was stamped.
    bool ShowForm();
    // What the last time that was set did.
    const OperationSummary& Summary() const { return summary_; }

    QCalendarWidget* MonthView1;
    QLineEdit *txtHour, *txtMinute, *txtSecond;
    std::array<QRadioButton*, 2> optAMPM;
    QTableView* lvwFiles;
    QPushButton *cmdOK, *cmdApply, *cmdClose, *cmdHelp;

    bool eventFilter(QObject* watched, QEvent* event) override;

  public Q_SLOTS:
    void done(int result) override;

  private:
    void LayOut();
    void LayOutList();
    void Connect(std::function<void()> showHelp);
    void ShowClock();
    bool ValidateFields();
    FileTime NewTime() const;  // local
    // Whether it went through: not where a field was refused or the user said No.
    bool ApplyNewDateTime();
    void Stamp(FileTime local);

    const Toolbox& tools_;
    std::vector<FileToStamp> files_;
    const bool confirm_;
    StampListModel* model_;
    OperationSummary summary_;
    bool stamped_ = false, running_ = false;
};

}  // namespace vantrel
