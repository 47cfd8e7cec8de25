#include "main/object_operations.h"

#include <algorithm>

#include "fileops/expectations.h"
#include "main/application.h"
#include "main/running_command.h"
#include "sync/forms/frm_confirm_sync.h"
#include "sync/forms/frm_sync_wizard.h"

namespace vantrel {
namespace {

Confirm Ask(bool option) {
    return option ? Confirm::Yes : Confirm::No;
}

}  // namespace

ObjectOperations::ObjectOperations(Application& application, const TrashPlaces& trash)
    : syncSettings(application.options),
      application_(application),
      progress_(application.around.clock, application.around.locale, application.around.loop),
      questions_(application.around.locale),
      shell_({.files = application.around.files,
              .volumes = application.around.volumes,
              .clock = application.around.clock,
              .loop = application.around.loop,
              .progress = progress_,
              .questions = questions_,
              .trash = trash,
              .jobs = &application.options.jobs}),
      wrappers_(shell_, application.around.messages),
      files_(application.tools, wrappers_, application.busy,
             [&application] { application.AutoCompareStep(application.options.autoCompareAfterFileOp); }),
      synchronization_(application.tools, wrappers_, application.busy, trash) {
    progress_.SetParentWindow(&application.Window());
    questions_.SetParentWindow(&application.Window());
}

template <typename Work>
void ObjectOperations::OnCurrentList(const char* what, Work&& work) {
    const RunningCommand running(application_, what);
    const ResultPanes& panes = application_.panes;
    const Side side = panes.CurrentListview().value_or(Side::Left);
    std::vector<ShellRoot> roots = RootsOf(application_.results);
    const ShellResult result = work(ListRef{panes.Pane(side).Rows(), panes.Pane(Other(side)).Rows(),
                                            application_.Window().PaneFolder(side),
                                            application_.Window().PaneFolder(Other(side)), std::move(roots)});
    if (!result.items.empty()) TellEnd(what, SummaryOf(result));
}

void ObjectOperations::TellEnd(const char* what, const OperationSummary& summary) {
    const std::string text = DescribeSummary(summary, application_.around.locale);
    frmMain& window = application_.Window();
    if (!window.IsClosing()) return window.TellOperation(text, ListNotDone(summary));
    application_.around.messages.Ask({"Vantrel",
                                      std::string("The ") + what +
                                          (summary.IsWhole() ? " is complete." : " was stopped.") +
                                          "\r\n\r\n" + text + ".",
                                      MessageIcon::Information,
                                      MessageButtons::Ok,
                                      {}});
}

std::optional<std::string> ObjectOperations::PickTarget(const ListRef& list, const char* prompt) {
    if (std::ranges::none_of(list.rows, [](const ResultRow& row) { return row.selected; }))
        return std::string();
    const std::string start = lastPicked_.empty() ? list.otherFolder : lastPicked_;
    auto picked = application_.around.messages.PickDirectory("Browse for Folder", prompt, start);
    if (picked) lastPicked_ = *picked;
    return picked;
}

void ObjectOperations::CopyToOtherFolder() {
    OnCurrentList("copying", [&](const ListRef& list) {
        return files_.CopyFilesToOtherDirAndLVW(list, Ask(application_.options.showCopyConfirmations),
                                                PartOf::Command);
    });
}

void ObjectOperations::CopyToAnyFolder() {
    OnCurrentList("copying", [&](const ListRef& list) {
        const auto target = PickTarget(list, "Specify the folder where the object(s) will be copied to.");
        if (!target) return ShellResult();
        return files_.CopyFilesToSpecificDir(list, *target, Ask(application_.options.showCopyConfirmations));
    });
}

void ObjectOperations::MoveToOtherFolder() {
    OnCurrentList("move", [&](const ListRef& list) {
        return files_.MoveFilesToOtherDirAndLVW(list, Ask(application_.options.showMoveConfirmations));
    });
}

void ObjectOperations::MoveToAnyFolder() {
    OnCurrentList("move", [&](const ListRef& list) {
        const auto target = PickTarget(list, "Specify the folder where the object(s) will be moved to.");
        if (!target) return ShellResult();
        return files_.MoveFilesToSpecificDir(list, *target, Ask(application_.options.showMoveConfirmations));
    });
}

void ObjectOperations::Recycle() {
    OnCurrentList("deletion", [&](const ListRef& list) {
        return files_.DeleteFilesFromLVW(list, Ask(application_.options.showDeleteConfirmations),
                                         PartOf::Command);
    });
}

void ObjectOperations::DeletePermanently() {
    OnCurrentList("deletion", [&](const ListRef& list) {
        return files_.DeletePermanentlyFilesFromLVW(list, Ask(application_.options.showDeleteConfirmations),
                                                    Prompts::Shown);
    });
}

// Whether a drop asks is the option of copying, for moving too.
void ObjectOperations::Drop(DropAction action, const std::vector<std::string>& paths,
                            const std::string& folder) {
    const bool copies = action == DropAction::Copy;
    const char* what = copies ? "copying" : "move";
    const RunningCommand running(application_, what);
    const Confirm confirm = Ask(application_.options.showCopyConfirmations);
    const ShellResult result = copies ? files_.CopyOLEDropObjectsToDir(paths, folder, confirm)
                                      : files_.MoveOLEDropObjectsToDir(paths, folder, confirm);
    if (!result.items.empty()) TellEnd(what, SummaryOf(result));
}

void ObjectOperations::Synchronize(SyncScope scope) {
    const RunningCommand running(application_, "synchronization");
    if (application_.panes.ShowsNoResult()) application_.CompareDirs(CompareEnding::Silent);
    if (application_.Window().IsClosing()) return;
    if (application_.panes.ShowsNoResult())
        application_.around.messages.Ask({"Synchronization",
                                          "Unable to synchronize.  No comparison has been executed yet.",
                                          MessageIcon::Warning,
                                          MessageButtons::Ok,
                                          {}});
    else
        application_.GuardRun("frmMain.AutoSync()", [&] { AutoSync(scope); });
}

void ObjectOperations::AutoSync(SyncScope scope) {
    const Options& options = application_.options;
    application_.around.loop.ResetCancel();
    if (options.promptForSyncMethod) {
        const auto chosen = ShowSyncWizard(scope, application_.results.folders, &application_.Window());
        if (!chosen) return;
        scope = *chosen;
    }
    SyncOrder order{application_.results,
                    syncSettings,
                    {},
                    options.numSyncLogEntries,
                    options.showSynchronizeConfirmations};
    order.jobs = options.jobs;
    if (scope == SyncScope::SelectedObjects) order.selected = SelectedObjects();
    if (application_.results.inner)
        application_.around.messages.ShowInformationMessage("Synchronization",
                                                            DescribeNesting(application_.results));
    const auto report = synchronization_.AutoSync(order, *this);
    if (!report) return;
    if (const std::string end = DescribeEnd(*report); !end.empty())
        application_.around.messages.Ask({"Synchronization",
                                          end,
                                          report->IsWhole() ? MessageIcon::Information : MessageIcon::Warning,
                                          MessageButtons::Ok,
                                          {}});
    if (report->IsWhole() && application_.sounds.SoundOn) application_.sounds.PlaySyncCompleteSound();
    application_.AutoCompareStep(options.autoCompareAfterSync);
    TellEnd("synchronization", report->summary);
}

std::optional<SyncScope> ObjectOperations::ShowSyncWizard(SyncScope scope,
                                                          const PerSide<std::string>& folders,
                                                          QWidget* over) {
    frmSyncWizard wizard(syncSettings,
                         {.promptForSyncMethod = application_.options.promptForSyncMethod,
                          .syncSelectedOnly = scope == SyncScope::SelectedObjects},
                         folders, over);
    if (wizard.exec() != QDialog::Accepted) return std::nullopt;
    application_.options.promptForSyncMethod = wizard.ChosenFlags().promptForSyncMethod;
    application_.GetCommands().RefreshChecks();
    return wizard.ChosenFlags().syncSelectedOnly ? SyncScope::SelectedObjects : SyncScope::All;
}

SelectedTexts ObjectOperations::SelectedObjects() const {
    SelectedTexts texts(std::in_place);
    if (const auto side = application_.panes.CurrentListview()) {
        const PaneList& list = application_.panes.Pane(*side);
        for (const std::size_t row : list.SelectedRows()) texts->emplace(list[row].text);
    }
    return texts;
}

bool ObjectOperations::MayEmpty(const EmptyingRisk& risk) {
    return !application_.Window().IsClosing() && AskMayEmpty(application_.around.messages, risk);
}

bool ObjectOperations::ShowConfirmSync(const SyncPlan& plan) {
    return !application_.Window().IsClosing() &&
           frmConfirmSync(plan, application_.around.locale, &application_.Window()).exec() ==
               QDialog::Accepted;
}

}  // namespace vantrel
