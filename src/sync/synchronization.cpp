#include "sync/synchronization.h"

#include "platform/paths.h"
#include "sync/sync_history.h"

namespace vantrel {

void Synchronization::mnuFileAutoSynch(bool showConfirmation) {
    if (host_.NoResults()) host_.CompareDirs();
    if (host_.NoResults()) {
        tools_.messages.Ask({"Synchronization",
                             "Unable to synchronize.  No comparison has been executed yet.",
                             MessageIcon::Warning,
                             MessageButtons::Ok,
                             {}});
    } else {
        AutoSync(showConfirmation, false);
    }
    SyncSelectedOnly = false;
}

std::optional<SyncReport> Synchronization::AutoSync(bool showConfirmation, bool noSound) {
    std::optional<SyncReport> report;
    tools_.reporter.Guard("frmMain.AutoSync()", [&] { report = Run(showConfirmation, noSound); });
    return report;
}

std::optional<SyncReport> Synchronization::Run(bool showConfirmation, bool noSound) {
    tools_.loop.ResetCancel();
    if (host_.PromptForSyncMethod() && !host_.ShowSyncWizard()) return std::nullopt;
    tools_.loop.Yield();

    SelectedTexts selected;
    if (SyncSelectedOnly) selected = host_.SelectedObjects().value_or(std::unordered_set<std::string>());
    plan_ = GetListOfFilesAffectedBySync(host_.Results(), settings_, selected);
    if (showConfirmation && !host_.ShowConfirmSync(plan_)) return std::nullopt;
    tools_.loop.Yield();
    if (!SpaceSuffices(plan_)) return std::nullopt;

    host_.SetBusyPointer(true);
    SyncReport report = CarryOutSync(plan_, tools_, wrappers_);
    host_.SetBusyPointer(false);

    // What was done is done: a record that cannot be written is told, and the panes are refreshed all the
    // same.
    tools_.reporter.Guard("frmMain.AutoSync()", [&] {
        ThrowIfFailed(SyncHistory(tools_).Append(plan_.folders[Side::Left], plan_.folders[Side::Right],
                                                 report.cancelled ? kSyncCancelled : kSyncCompleted,
                                                 host_.NumSyncLogEntries()));
    });
    if (!report.cancelled && !noSound) host_.PlaySyncCompleteSound();
    if (host_.AutoCompareAfterSync())
        host_.CompareDirs();
    else
        host_.RemoveListItemsAndShowNoCompareMsg();
    return report;
}

bool Synchronization::SpaceSuffices(const SyncPlan& plan) {
    SyncSpaceAnswer answer;
    tools_.reporter.Guard("frmMain.EnoughSpaceForSync", [&] {
        PerSide<std::string> drives;
        PerSide<Currency> available;
        for (Side side : kBothSides) {
            drives[side] = tools_.volumes.GetDriveName(plan.folders[side]);
            available[side] = tools_.volumes.GetAvailableDriveSpace(drives[side]);
        }
        answer = EnoughSpaceForSync(SpaceNeededBySync(plan), drives, available);
    });
    if (answer.enough) return true;
    const std::string text =
        "There may not be enough space available on drive " + answer.drive +
        ".\r\n\r\nSpace Required: " + ConvertBytesToCorrectByteTypeString(answer.required) +
        "\r\nSpace Available: " + ConvertBytesToCorrectByteTypeString(answer.available) +
        "\r\n\r\nPress OK to continue with the synchronization, or Cancel to abort.";
    return tools_.messages.Ask(
               {"Low Disk Space", text, MessageIcon::Information, MessageButtons::OkCancel, {}}) !=
           MessageAnswer::Cancel;
}

}  // namespace vantrel
