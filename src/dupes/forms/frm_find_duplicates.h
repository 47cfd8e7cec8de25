#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "core/side.h"
#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"
#include "dupes/dupe_export.h"
#include "dupes/dupe_marks.h"
#include "dupes/dupe_removal.h"
#include "dupes/duplicate_finder.h"
#include "fileops/shell_calls.h"
#include "fileops/shell_wrappers.h"
#include "platform/busy_state.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/desktop.h"
#include "views/forms/commands.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTableView;

namespace vantrel {

class AnimationView;
class DupeDetailsModel;
class DupeGroupsModel;
class DupePreview;
class FilePathBox;
class SearchFolderList;

// What the window of the duplicate finder stands on; all must outlive it.
struct FindDuplicatesParts {
    using Paths = PerSide<std::string>;

    const Toolbox& tools;
    Options& options;
    ShellWrappers& wrappers;
    ShellCallsPort& shellCalls;
    Desktop& desktop;
    std::function<void()> requestCancel;  // asks the job that runs to end
    std::function<void()> saveOptions;
    std::function<void()> showHelp;
    // Windows over this one; null: there is no such window.
    std::function<void(const Paths& paths, QWidget* over)> compareFiles;
    std::function<void(const Paths& paths, QWidget* over)> showDifferences;  // of lines
};

// "Find Duplicate Files": the search, the groups that it found, and the removal of what is marked. It is
// modal, and whoever shows it counts as busy meanwhile; so the window has a state of its own that says
// whether it is at work.
class frmFindDuplicates : public QDialog, private DupeProgress {
    Q_OBJECT

  public:
    explicit frmFindDuplicates(FindDuplicatesParts parts, QWidget* parent = nullptr);
    ~frmFindDuplicates() override;

    // Shows the window until it is closed.
    void ShowForm();
    // The first half of that.
    void FormLoad();

    static constexpr std::size_t kCriteria = 6;
    bool IsBusy() const { return busy_.IsBusy(); }
    Commands& GetCommands() { return commands_; }
    DuplicateFinder& Finder() { return finder_; }
    DupeGroupsModel& Groups() { return *groups_; }
    DupeDetailsModel& Details() { return *details_; }
    // Opens the details of the group in a row.
    void SelectGroup(int row);

    SearchFolderList* lstFolders;
    FilePathBox* txtPath;
    QPushButton* cmdSelectFolder;
    QPushButton* cmdRemoveFolder;
    QCheckBox* chkIncludeSubFolders;
    std::array<QCheckBox*, kCriteria> chkDupeCriteria;
    QPushButton* cmdFindDupes;
    AnimationView* Animation1;
    QLineEdit* txtFilter;
    QTableView* lstDupeGroups;
    QTableView* lvwDupeDetails;
    DupePreview* picPreview;
    QLabel* lblRemoveInstructions;
    QLabel* lblMarks;
    QPushButton* cmdRemoveMarkedFiles;
    QPushButton* cmdCRC32;
    QPushButton* cmdHelp;
    QPushButton* cmdCancel;
    QLabel* lblStatus;   // the panel of StatusBar1
    QLabel* lblFigures;  // beside it
    QProgressBar* ProgressBar1;

  public Q_SLOTS:
    void done(int result) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Run;
    struct Handler;
    static const std::vector<Handler>& Handlers();
    // `work` as what a signal calls, with what the signal tells or without.
    template <typename Work>
    auto Guarded(const char* routine, Work work) {
        return [this, routine, work](const auto&... values) {
            parts_.tools.reporter.GuardRun(std::string("frmFindDuplicates.") + routine, [&] {
                if constexpr (std::is_invocable_v<Work>)
                    work();
                else
                    work(values...);
            });
        };
    }

    // Layout
    void LayOut();
    QWidget* MakeSetUp();
    QWidget* MakeCriteria();
    QWidget* MakeReview();
    QWidget* MakeGroups();
    QWidget* MakeDetails();
    QWidget* MakeStatusBar();
    void OrderTabs();
    void Wire();
    void WireLists();
    void BindCommands();
    void BindChecks();

    // DupeProgress
    void SetStatus(std::string_view text) override;
    void SetFigures(const DupeFigures& figures) override;
    void SetBar(std::int64_t value, std::int64_t maximum) override;
    void SetSearching(bool searching) override;
    void ShowFigures();

    // State
    void ShowSettings();
    void ShowFolders();
    void ListsChanged();
    void GroupsChanged();
    void DetailsChanged();
    void ShowMarks();
    void ShowPreview();
    void FitGroupWidth();
    void FitColumns();
    void ClearListBoxAndListview();
    bool LeavesGroup(std::optional<std::uint32_t> next);
    void GroupChosen();
    std::optional<std::uint32_t> SelectedFile() const;
    std::vector<int> SelectedRows() const;
    // Tells that no file has been selected, under that title.
    std::optional<std::uint32_t> FileFor(const char* title);
    std::optional<FindDuplicatesParts::Paths> TwoFilesFor(const char* title);
    void Tell(const char* title, const std::string& text, MessageIcon icon = MessageIcon::Information);

    bool OnListKey(QObject* list, int key);

    // Search
    void AddFolder();
    void RemoveFolder();
    void EditFolder();
    void FoldersDropped(const std::vector<std::string>& paths);
    void FlipProtection();
    void SetCriterion(std::size_t index, bool on);
    void SetIncludeSubFolders(bool on);
    void FlipIgnored(std::size_t index);
    void ChooseRemoval(RemovalMethod method);
    void FilesToExclude();
    void FindDupes();

    // Review
    void FlipMarksOfSelection();
    void CalculateCrc();
    void RemoveMarked();
    std::vector<std::uint32_t> GroupsToRemoveFrom();
    bool AgreesToGroups(const std::vector<std::uint32_t>& groups);
    void RemoveSelected();
    void ViewFile();
    void RenameFile();
    void AddFileToExcludes();
    void FileProperties();
    void Exit() { reject(); }

    // Beyond
    void CompareTwoFiles();
    void ShowDifferences();
    void OpenTheFolder();
    void ExportCsv() { Export(DupeExportFormat::Csv); }
    void ExportJson() { Export(DupeExportFormat::Json); }
    void Export(DupeExportFormat format);
    void RestoreFromDupes();
    void MarkNewest() { Mark(MarkRule::AllButNewest); }
    void MarkOldest() { Mark(MarkRule::AllButOldest); }
    void MarkFirst() { Mark(MarkRule::AllButFirstInFolders); }
    void MarkShortest() { Mark(MarkRule::AllButShortestPath); }
    void MarkByPattern();
    void Mark(MarkRule rule, const std::string& pattern = {});
    void UnmarkAll();
    void FlipKeepMarks();
    void Sort(GroupOrder order);
    void FilterChanged();
    void FocusFilter();
    void FlipPreview();

    FindDuplicatesParts parts_;
    clsDupeSettings settings_;
    BusyState busy_;
    const BusyPointerOf pointer_{busy_};
    Commands commands_;
    DuplicateFinder finder_;
    DupeRemoval removal_;
    DupeGroupsModel* groups_;
    DupeDetailsModel* details_;
    QWidget* content_ = nullptr;  // all that is disabled while the window is at work
    std::string status_;
    DupeFigures figures_;
    QElapsedTimer figuresShown_;
    GroupOrder order_ = GroupOrder::AsFound;
    bool keepsMarks_ = false;  // in groups that are left
    bool fillingLists_ = false;
    bool closeAfterRun_ = false;
};

}  // namespace vantrel
