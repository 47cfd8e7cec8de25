#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/ccompare.h"
#include "core/comparison_results.h"
#include "core/toolbox.h"
#include "main/forms/popup_menus.h"
#include "settings/path_history.h"
#include "settings/window_geometry.h"
#include "views/drop_rule.h"
#include "views/forms/commands.h"
#include "views/forms/operation_line.h"
#include "views/forms/panes_widget.h"
#include "views/forms/path_box.h"
#include "views/forms/status_bar.h"
#include "views/forms/toolbars.h"
#include "views/result_panes.h"

class QBoxLayout;
class QToolButton;

namespace vantrel {

struct Options;
enum class ShownBy;
class PathOffer;

// The main window: the menus, the strips, the path boxes, the panes and the status bar, and the wires between
// them. What the commands do is hung in from outside (Commands::SetHandler); it keeps no result and no option
// of its own.
class frmMain : public QMainWindow, private ResultPanesObserver, private BusyObserver {
    Q_OBJECT

  public:
    // All must outlive the window.
    struct Parts {
        Toolbox tools;
        const Options& options;
        const CCompare& compare;
        const ComparisonResults& results;
        ResultPanes& panes;
        BusyState& busy;
        const PathHistory& history;
    };
    // What the window asks of the program around it; what is not set does nothing.
    struct Hooks {
        std::function<void()> compare;  // Enter in a path box: as mnuFileCompareDirectories
        std::function<void(Side, PathIcon)> pathIcon;
        // The window is to be closed while a job runs: whether that may be stopped, and its end.
        std::function<bool()> mayStopJob;
        std::function<void()> cancelJob;
        std::function<void()> unload;  // Form_Unload; the window closes afterwards
    };
    // Carries out a drop of `paths` on a pane, whose folder is `folder`.
    using DropHandler =
        std::function<void(DropAction, const std::vector<std::string>& paths, const std::string& folder)>;

    frmMain(const Parts& parts, const std::string& appVersion);
    ~frmMain() override;

    void SetHooks(Hooks hooks) { hooks_ = std::move(hooks); }
    // Until a handler is set the panes refuse every drop.
    void SetDropHandler(DropHandler handler);

    Commands& GetCommands() { return commands_; }
    PathBox& Box(Side side) const { return *boxes_[side]; }
    PanesWidget& Panes() const { return *panesWidget_; }
    MainStatusBar& StatusBar1() const { return *statusBar_; }
    PopupMenus& Popups() { return popups_; }
    CommandStrip& Strip(ToolbarStyle style) const {
        return style == ToolbarStyle::Coolbar ? *coolBar_ : *toolbar_;
    }

    // While it is true a change of the path boxes is not the user's: it leaves the results alone.
    bool PopulatingFolderCombos = false;
    void PopulateDirComboBoxesFromIniFile();
    void ShowFolders(const PathHistory::Lists& lists);

    // Brings that part of the window in line with the options.
    void ShowOption(ShownBy part);
    // The font that the path boxes have of themselves.
    QFont OwnFont() const { return ownFont_; }
    const QPixmap& BackgroundTile() const { return looks_.background; }  // of lists
    // Where window and columns stand, for the options to be saved. False while the window has no geometry of
    // its own, being maximised or minimised.
    bool CollectGeometry(Options& options) const;
    void ResizeForm();
    // How the panes look, by the options.
    const PaneLooks& Looks() const { return looks_; }

    // The folder of a pane: the compared one, or that of the path box while there is no result.
    std::string PaneFolder(Side side) const;
    // Of the selected item of CurrentListview; empty without one that stands for an object.
    std::string SelectedPath() const;
    // Shows this text in the log viewer (caption "Comparison Results").
    void ShowFileComparisonResults(const std::string& text);
    // What an operation did, until the next one; empty: nothing is to be told any more.
    void TellOperation(const std::string& text, const std::string& notDone);

    // Of cboSourcePath and cboTargetPath, as PathFromUser gives it.
    std::string PathText(Side side) const;
    void SetPathText(Side side, const std::string& path);
    void SetFilterPanel(std::string_view text);  // third panel of the status bar
    void RaiseMainWindow();                      // to the top, unless it is minimised
    // What was just opened beside it comes up a moment later and may hide the window: it goes to the top once
    // behind that.
    void StayInViewOnce();
    // It was closed, or will be behind the running job: whatever is under way does no more than end.
    bool IsClosing() const { return closed_ || closeAfterJob_; }
    // The two become the most recent ones of the path boxes.
    void AddPathsToIni(const std::string& left, const std::string& right);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void LayOut();
    void ShowStrip();
    void ShowLooks();
    void RestoreGeometry();
    void MakeStrips();
    void WirePathBox(Side side);
    void WirePane(Side side);
    // `work` as what a signal calls: what the user starts in another way than by a command runs inside the
    // same guard, as the routine "frmMain.<control>_<event>".
    template <typename Work>
    auto Guarded(const char* control, const char* event, Work work) {
        return
            [this, routine = std::string("frmMain.") + control + "_" + event, work](const auto&... values) {
                parts_.tools.reporter.GuardRun(routine, [&] { work(values...); });
            };
    }
    void MakePathRow(QWidget* centre, QBoxLayout* column);
    void SwapSides();
    void OfferPartner(Side side);
    void HideOffers();
    void OnDrop(Side side, const QList<QUrl>& uris, Qt::KeyboardModifiers keys);
    void DragOut(Side side);

    void BusyChanged(bool busy) override;
    void StatusTextsChanged() override;
    void ViewSelectionsChanged() override;

    Parts parts_;
    Hooks hooks_;
    DropHandler dropHandler_;
    Commands commands_;
    PopupMenus popups_;
    PerSide<PathBox*> boxes_;
    PanesWidget* panesWidget_ = nullptr;
    QToolButton* cmdSwapSides_ = nullptr;  // between the path boxes, above the strip of toggles
    PerSide<PathOffer*> offers_;           // below the path boxes
    OperationLine* operationLine_ = nullptr;
    MainStatusBar* statusBar_ = nullptr;
    CommandStrip* coolBar_ = nullptr;
    CommandStrip* toolbar_ = nullptr;
    QFont ownFont_;
    QPointer<QWidget> focusBeforeJob_;
    PaneLooks looks_;
    bool asksToStop_ = false;
    bool closeAfterJob_ = false;
    bool closed_ = false;
};

}  // namespace vantrel
