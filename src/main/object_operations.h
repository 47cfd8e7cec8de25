#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fileops/file_operations.h"
#include "fileops/operation_summary.h"
#include "fileops/shell_wrappers.h"
#include "shell/forms/frm_shell_progress.h"
#include "shell/forms/qt_shell_questions.h"
#include "shell/shell_operations.h"
#include "sync/csync_settings.h"
#include "sync/synchronization.h"
#include "views/drop_rule.h"

namespace vantrel {

class Application;

// Which rows a synchronisation takes: SyncSelectedOnly, for one run.
enum class SyncScope { All, SelectedObjects };

// The operations that change objects on the user's command, with what they need of the main window: file
// operations and synchronisation over one shell service.
class ObjectOperations : private SyncConfirmation {
  public:
    ObjectOperations(Application& application, const TrashPlaces& trash);

    // Until a pane has been pressed they act on the left one.
    void CopyToOtherFolder();
    void CopyToAnyFolder();
    void MoveToOtherFolder();
    void MoveToAnyFolder();
    void Recycle();
    void DeletePermanently();
    void Drop(DropAction action, const std::vector<std::string>& paths, const std::string& folder);
    // The doors for windows that change single files.
    ShellWrappers& Wrappers() { return wrappers_; }
    // The window of synchronisation methods over `over`: the scope that the user leaves it with; nothing
    // where he closed it.
    std::optional<SyncScope> ShowSyncWizard(SyncScope scope, const PerSide<std::string>& folders,
                                            QWidget* over);
    // Compares first where there is no result yet.
    void Synchronize(SyncScope scope);
    // What became of the operation `what`: in the line of the main window, or in a box where that closes
    // behind it. Nothing of one that nothing was asked of.
    void TellEnd(const char* what, const OperationSummary& summary);

    CSyncSettings syncSettings;

  private:
    // Also cancelled by what cancels any job of the main window.
    class Progress : public QtShellProgress {
      public:
        Progress(Clock& clock, const LocaleFormats& locale, EventLoopPort& loop)
            : QtShellProgress(clock, locale), loop_(loop) {}
        bool CancelAsked() override { return QtShellProgress::CancelAsked() || loop_.CancelRequested(); }

      private:
        EventLoopPort& loop_;
    };

    // Runs `work` on the list of CurrentListview as the RunningCommand `what`, and tells what became of it.
    template <typename Work>
    void OnCurrentList(const char* what, Work&& work);
    // The folder that the user picks for the selected objects; nothing where he cancelled. Nothing is asked
    // while nothing is selected: the operation has a message for that.
    std::optional<std::string> PickTarget(const ListRef& list, const char* prompt);
    void AutoSync(SyncScope scope);
    SelectedTexts SelectedObjects() const;
    bool ShowConfirmSync(const SyncPlan& plan) override;
    bool MayEmpty(const EmptyingRisk& risk) override;

    Application& application_;
    Progress progress_;
    QtShellQuestions questions_;
    SystemShellOperations shell_;
    ShellWrappers wrappers_;
    FileOperations files_;
    Synchronization synchronization_;
    std::string lastPicked_;  // where the next pick of a folder begins
};

}  // namespace vantrel
