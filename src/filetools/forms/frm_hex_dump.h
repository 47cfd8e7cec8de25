#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "filetools/forms/hex_view.h"
#include "filetools/hex_contents.h"
#include "filetools/hex_search.h"
#include "platform/busy_state.h"
#include "platform/forms/busy_pointer.h"
#include "views/forms/commands.h"

class QLabel;
class QProgressBar;

namespace vantrel {

class FilePathBox;

// What the window of hex dumps stands on; all must outlive it.
struct HexDumpParts {
    const Toolbox& tools;
    const bool& completesPaths;           // while one is typed
    std::function<void()> requestCancel;  // asks the job that runs to end
};

// "Hex Dump Viewer": the bytes of one file, or of two beside each other with what differs marked. It is
// modal, and whoever shows it counts as busy meanwhile; so the window has a state of its own that says
// whether it is at work.
class frmHexDump : public QDialog {
    Q_OBJECT

  public:
    explicit frmHexDump(HexDumpParts parts, QWidget* parent = nullptr);
    ~frmHexDump() override;

    // Shows the window on a file until it is closed; where the right path is not empty, on two.
    void ShowForm(const PerSide<std::string>& paths);
    // The first half of that.
    void FormLoad(const PerSide<std::string>& paths);

    // Shows the file in the view of a side. What cannot be shown is told, and the view is empty then.
    void OpenFile(Side side, const std::string& path);
    // Looks whether the files are what they were, as the window does every second.
    void LookAgain();

    HexContents& Contents() { return contents_; }
    bool IsBusy() const { return busy_.IsBusy(); }
    bool IsBesideShown() const { return isBesideShown_; }
    // The side that commands on one file act on: the one that had the focus last.
    Side CurrentSide() const { return isBesideShown_ ? current_ : Side::Left; }
    BytesOfFile& CurrentFile() { return contents_.Files()[CurrentSide()]; }
    Commands& GetCommands() { return commands_; }

    PerSide<FilePathBox*> txtFile;
    PerSide<HexView*> rtfHexDump;
    QLabel* lblPosition;
    QLabel* lblBytes;
    PerSide<QLabel*> lblFile;  // its size, and what became of it
    QProgressBar* prgProgress;

  public Q_SLOTS:
    void done(int result) override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Run;
    enum class Needs { Nothing, Bytes, File, Found, Pair, Beside };
    struct Handler;
    static const std::vector<Handler>& Handlers();
    enum class Placing { AsFarAsItMust, Middle };
    // How a text or bytes were looked for last.
    struct Wanted {
        const char* title = "";
        const char* noun = "";
        std::string bytes;
        bool isText = false;
    };

    // Layout
    QWidget* MakePanes();
    QWidget* MakePane(Side side);
    void LayOut();
    void WirePane(Side side);
    void FitWidth();
    template <typename Work>
    auto Guarded(const char* routine, Work work) {
        return [this, routine, work](const auto&... values) {
            parts_.tools.reporter.GuardRun(std::string("frmHexDump.") + routine, [&] { work(values...); });
        };
    }

    // State
    void EnableCommands();
    bool CanRun(Needs needs);
    void ContentsChanged();
    void ShowBeside(bool shown);
    void ShowStatus();
    void ShowBytes();
    void ShowFileState(Side side);
    void GoTo(std::uint64_t offset, SelectionStep step, Placing placing);
    void SelectionChanged(Placing placing);
    void OnDropped(Side side, const std::vector<std::string>& paths);
    void Tell(const char* title, const std::string& text, MessageIcon icon = MessageIcon::Information);

    // Commands
    void AskAndOpen(Side side);
    void mnuFileOpen_Click() { AskAndOpen(CurrentSide()); }
    void mnuFileSaveHexDump_Click();
    bool IsShownFile(const std::string& path);
    void Exit() { reject(); }
    bool CanCopy();
    void CopyDigits();
    void CopyText();
    void CopyDump();
    void SelectAll();
    void AskForTextAndFind();
    void AskForBytesAndFind();
    void FindNext() { FindAgain(SearchDirection::Forward); }
    void FindPrevious() { FindAgain(SearchDirection::Backward); }
    void FindAgain(SearchDirection direction);
    void Find(std::uint64_t from, SearchDirection direction);
    void TellNotFound(SearchDirection direction);
    void FlipIgnoreCase() { ignoresCase_ = !ignoresCase_; }
    void AskAndGoToOffset();
    void FirstDiff();
    void NextDiff();
    void PreviousDiff();
    void LastDiff();
    bool GoToDifference(std::uint64_t from, SearchDirection direction, bool stepsOver);
    void ReadAgain();
    void OpenBeside() { AskAndOpen(Side::Right); }
    void CloseBeside();
    void ZoomIn() { Zoom(zoom_ + 1); }
    void ZoomOut() { Zoom(zoom_ - 1); }
    void NormalSize() { Zoom(0); }
    void Zoom(int steps);

    HexDumpParts parts_;
    BusyState busy_;
    const BusyPointerOf pointer_{busy_};
    Commands commands_;
    HexContents contents_;
    QTimer lookAgain_;
    Wanted wanted_;
    bool ignoresCase_ = true;
    bool isBesideShown_ = false;
    Side current_ = Side::Left;
    int zoom_ = 0;  // points
    bool closeAfterRun_ = false;
    bool coupling_ = false;
    bool wasShown_ = false;
};

}  // namespace vantrel
