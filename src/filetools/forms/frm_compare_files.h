#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "filetools/two_file_comparison.h"
#include "platform/busy_state.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/ordinary_pointer.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace vantrel {

class FilePathBox;
struct Options;

// What the comparison of two files stands on; all must outlive the window. Each function that shows a window
// gets the one to show it over, and returns when it is closed.
struct CompareFilesParts {
    using Paths = PerSide<std::string>;

    const Toolbox& tools;
    const Options& options;
    std::function<void()> requestCancel;  // asks the job that runs to end
    std::function<void(const std::string& path)> openFile;
    std::function<void(const Paths& paths, QWidget* over)> showDifferences;  // of lines
    std::function<void(const Paths& paths, QWidget* over)> showBytes;        // where they differ
    std::function<void(const Paths& paths, QWidget* over)> sync;
    std::function<void(QWidget* over)> showErrorLog;
    std::function<void()> showHelp;
};

// "Compare Two Files": what each method of comparison finds in two files, in one table. It is modal, and
// whoever shows it counts as busy meanwhile; so the window has a state of its own that says whether it is at
// work.
class frmCompareFiles : public QDialog, private TwoFileDisplay {
    Q_OBJECT

  public:
    explicit frmCompareFiles(CompareFilesParts parts, QWidget* parent = nullptr);
    ~frmCompareFiles() override;

    // Shows the window until it is closed. Nothing is compared before the user says so.
    void ShowForm(const PerSide<std::string>& paths);

    enum Column { Method, FileOne, FileTwo, Result, ColumnCount };
    bool IsBusy() const { return busy_.IsBusy(); }

    PerSide<FilePathBox*> txtFile;
    PerSide<QPushButton*> cmdFile;
    PerSide<QPushButton*> cmdViewFile;
    QPushButton* cmdCompare;
    QPushButton* cmdShowDiffs;
    QPushButton* cmdShowBytes;
    QPushButton* cmdSync;
    QPushButton* cmdCancel;
    QPushButton* cmdHelp;
    QTreeWidget* lvwCompareFiles;
    QLabel* lblStatusInfo;
    QProgressBar* prgBinaryCompare;

  public Q_SLOTS:
    void reject() override;
    void done(int result) override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    class Run;
    using Click = void (frmCompareFiles::*)();

    // Layout
    void MakeButtons();
    void MakeBoxes();
    void MakeTable();
    void LayOut();
    void Wire(QPushButton* button, const char* name, Click click);
    void OrderTabs();

    // Commands
    void cmdCompare_Click();
    void cmdShowDiffs_Click();
    void cmdShowBytes_Click();
    void cmdSync_Click();
    void cmdCancel_Click();
    void cmdHelp_Click() { parts_.showHelp(); }
    void SelectFileOne() { Select(Side::Left); }
    void SelectFileTwo() { Select(Side::Right); }
    void Select(Side side);
    void ViewFileOne() { View(Side::Left); }
    void ViewFileTwo() { View(Side::Right); }
    void View(Side side);
    void CopyRow();

    PerSide<std::string> Paths() const;
    bool Exists(Side side, const std::string& path);
    std::vector<FileMethod> CheckedMethods() const;
    // What begins something is enabled while nothing is at work and no window stands over this one.
    void EnableCommands();
    void SetContentsDiffer(bool differ);

    // TwoFileDisplay
    void Begin() override;
    void SetStatus(std::string_view text) override;
    void SetCancellable(bool on) override;
    void SetPercentage(int percentage) override;
    void ShowFinding(const FileFinding& finding) override;

    CompareFilesParts parts_;
    BusyState busy_;
    const BusyPointerOf pointer_{busy_};
    std::optional<OrdinaryPointer> aim_;  // so that the button to cancel can be aimed at
    std::vector<FileMethod> methods_;     // of the rows
    bool contentsDiffer_ = false;         // by the last run
    bool cancellable_ = false;
    bool closeAfterRun_ = false;
};

}  // namespace vantrel
