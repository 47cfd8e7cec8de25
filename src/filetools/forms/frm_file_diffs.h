#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "filetools/cview_file_diffs_options.h"
#include "filetools/file_diff_engine.h"
#include "filetools/forms/file_grid_view.h"
#include "filetools/forms/line_box.h"
#include "filetools/grid_contents.h"
#include "platform/busy_state.h"
#include "platform/forms/busy_pointer.h"
#include "platform/forms/desktop.h"
#include "views/forms/commands.h"

class QCheckBox;
class QLabel;
class QMenuBar;
class QToolBar;

namespace vantrel {

class BarMarkerView;
class DiffsBarView;
class FilePathBox;

// What the windows of the difference viewer stand on; all must outlive them.
struct FileDiffsParts {
    const Toolbox& tools;
    Options& settings;
    cViewFileDiffsOptions& options;
    FileDiffEngine& globalDiffObject;
    Desktop& desktop;
    std::function<void()> requestCancel;  // asks the job that runs to end
    std::function<void()> showHelp;       // on the viewer
};

// The File Difference Viewer: two text files side by side, their lines aligned. It is modal, and whoever
// shows it counts as busy meanwhile; so the window has a state of its own that says whether it is at work.
class frmFileDiffs : public QDialog {
    Q_OBJECT

  public:
    explicit frmFileDiffs(FileDiffsParts parts, QWidget* parent = nullptr);
    ~frmFileDiffs() override;

    // Compares the files of the options, then shows the window until it is closed.
    void ShowForm();
    // The first half of that.
    void FormLoad();

    void mnuFileCompare_Click();
    void ResetToPromptState();
    // The common end of every way to a row.
    void ShowSelectedRows(std::int32_t row);

    // The row of the next or previous difference or bookmark; -1 for none, -999 while the window is at work
    // or has no result.
    static constexpr std::int32_t kNone = -1, kNotNow = -999;
    std::int32_t GetNextDiff() const;
    std::int32_t GetPreviousDiff() const;
    std::int32_t GetNextBookmark() const;
    std::int32_t GetPreviousBookmark() const;
    void ToggleBookmark();
    void ClearAllBookmarks();
    void mnuFilePrint_Click();
    bool IsRowBookmarked(std::int32_t row) const { return contents_.bookmarks.Contains(row); }
    bool Find(const std::string& text, FindDirection direction, std::int32_t& foundRow);

    bool HasResult() const { return contents_.HasResult(); }
    bool IsBusy() const { return busy_.IsBusy(); }
    const GridContents& Contents() const { return contents_; }
    std::int32_t CurrentRow() const { return contents_.currentRow; }
    Commands& GetCommands() { return commands_; }

    PerSide<FilePathBox*> txtFile;
    PerSide<FileGridView*> grdFile;
    std::array<LineBox*, 2> rtfLineDiff;
    DiffsBarView* pctDiffsBar;
    BarMarkerView* pctContainer;
    QCheckBox* chkTooltip;
    QToolBar* Toolbar1;
    QLabel* lblPosition;
    QLabel* lblDifferences;
    PerSide<QLabel*> lblForm;  // encoding and line ends

  public Q_SLOTS:
    void done(int result) override;

  protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Run;
    enum class Needs { Nothing, Result, Bookmark, Found, Moved };
    struct Handler;
    static const std::vector<Handler>& Handlers();

    // Layout
    void MakeMenusAndToolbar(QMenuBar* bar);
    QWidget* MakePanes();
    QWidget* MakePane(Side side);
    void LayOut();
    void WirePane(Side side);
    void WireBar();
    void CoupleScrolling();
    template <typename Work>
    auto Guarded(const char* routine, Work work) {
        return [this, routine, work](const auto&... values) {
            parts_.tools.reporter.GuardRun(std::string("frmFileDiffs.") + routine, [&] { work(values...); });
        };
    }

    // State
    void EnableCommands();
    bool CanRun(Needs needs) const;
    void OnPathChanged(Side side);
    bool CheckPaths();
    void Compare();
    bool DisplayComparisonResultsInGrid();
    void ClearGrids();
    void ContentsChanged();
    void LayOutRows(FoldedRows folds);
    void FoldRows();
    void ShowStatus();

    // Rows
    void MarkCurrentRowInGrid();
    void MarkCurrentRowInDiffsBar();
    bool DrawDiffBars();
    void ScrollFilesToPointInDiffBar(int y);
    void OnBarClicked(int y);
    void OnRowPressed(std::int32_t row);
    void GoToRow(std::int32_t row);
    void DisplayLinesOf(std::int32_t row);
    void DisplaySelectedLinesInRTF(std::int32_t row);
    void DisplaySelectedLinesDiffsInRTF(std::int32_t row);
    void ShowHint();
    void ShowTooltip(Side side, std::int32_t row);
    void CopyLine(Side side);

    // Commands
    void SelectFile(Side side);
    void SelectFileOne() { SelectFile(Side::Left); }
    void SelectFileTwo() { SelectFile(Side::Right); }
    void ShowFirstDiff();
    void ShowNextDiff();
    void ShowPreviousDiff();
    void ShowLastDiff();
    void GoOrTell(std::int32_t row, const char* title, const char* text);
    void AskAndFind();
    void FindNext() { FindAgain(FindDirection::Next); }
    void FindPrevious() { FindAgain(FindDirection::Previous); }
    void FindAgain(FindDirection direction);
    void NextBookmark();
    void PreviousBookmark();
    void GoBack() { reject(); }
    void FlipIgnoreCase();
    void FlipIgnoreWhitespace();
    void ViewInNotepad(Side side);
    void ViewInAssociatedProgram(Side side);
    bool ShowFileInAssociatedProgram(const std::string& path);
    bool LoadFileInNotepad(const std::string& path);
    void ViewFileOneUseNotepad() { ViewInNotepad(Side::Left); }
    void ViewFileTwoUseNotepad() { ViewInNotepad(Side::Right); }
    void ViewFileOneUseAssociated() { ViewInAssociatedProgram(Side::Left); }
    void ViewFileTwoUseAssociated() { ViewInAssociatedProgram(Side::Right); }
    void Tell(const char* title, const std::string& text, MessageIcon icon = MessageIcon::Information);

    // Extras
    void SaveAsPatch();
    void WritePatch(const std::string& path);
    void GoToMoved();
    void FlipInlineDifferences();
    void FlipWrapLines();
    void FlipFoldEqualLines();
    void ZoomIn() { Zoom(zoom_ + 1); }
    void ZoomOut() { Zoom(zoom_ - 1); }
    void NormalSize() { Zoom(0); }
    void Zoom(int steps);
    void InstallEncodings();
    void ChooseEncoding(Side side, const std::string& encoding);

    FileDiffsParts parts_;
    BusyState busy_;
    const BusyPointerOf pointer_{busy_};
    Commands commands_;
    GridContents contents_;
    std::vector<std::uint32_t> columnsOfRows_;  // made when lines are first wrapped
    std::vector<std::string> findHistory_;
    bool found_ = false;
    bool wraps_ = false;
    bool folds_ = false;
    int zoom_ = 0;  // points
    bool closeAfterRun_ = false;
    bool loading_ = false;
    bool coupling_ = false;
    bool isPlaced_ = false;
};

}  // namespace vantrel
