#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/side.h"
#include "views/auto_complete_path.h"

class QComboBox;
class QToolButton;

namespace vantrel {

// The four pictures beside each path box: imgSelectSource(0..3) and imgSelectTarget(0..3).
enum class PathIcon : std::uint8_t { Select = 0, UpToParent = 1, CreateSubFolder = 2, Explore = 3 };
inline constexpr int kPathIconCount = 4;

// A path box, cboSourcePath or cboTargetPath, with the four pictures beside it. It only tells what the user
// did: what follows is the window's.
class PathBox : public QWidget, private AutoCompleteBox {
    Q_OBJECT

  public:
    PathBox(Side side, const FileSystem& files, EventLoopPort& loop, QWidget* parent = nullptr);

    // What the window is asked before the box does anything of its own accord.
    struct State {
        std::function<bool()> busy;          // a job runs
        std::function<bool()> fillingOrRun;  // PopulatingFolderCombos, or a comparison runs
        std::function<bool()> autoComplete;  // mnuOptionsAutoCompleteFolderPath
    };
    void SetState(State state) { state_ = std::move(state); }
    // The pictures look disabled while a job runs.
    void ShowBusy(bool busy);

    // The text in the engine's form; of a "file:" address, the path that it names.
    std::string Path() const;
    void SetPath(std::string_view path);
    // The recent folders, the first one shown. The text of the box is replaced.
    void SetFolders(const std::vector<std::string>& folders);
    std::vector<std::string> Folders() const;

    QComboBox* Combo() const { return combo_; }
    QToolButton* Icon(PathIcon icon) const { return icons_[static_cast<std::size_t>(icon)]; }

  Q_SIGNALS:
    // The path is another one, by whatever hand, or one was chosen from the list.
    void Changed();
    void ChosenFromList();  // after Changed
    // Enter in the box.
    void CompareRequested();
    void IconClicked(PathIcon icon);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeCombo();
    void MakeIcons();
    void OnTextChanged();
    bool TakeDrop(QEvent* event);
    bool TakeAddress();
    void SetPathOfObject(const std::string& path);
    bool SelectPrompt(const QEvent& event);
    std::string Text() const override;
    void SetTextWithProposal(const std::string& text, std::size_t selectFrom) override;

    Side side_;
    const FileSystem& files_;
    AutoCompletePath autoComplete_;
    State state_;
    QComboBox* combo_ = nullptr;
    qsizetype lengthBefore_ = 0;  // of the text, before it changed
    std::array<QToolButton*, kPathIconCount> icons_{};
};

}  // namespace vantrel
