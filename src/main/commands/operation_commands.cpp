// Commands that change objects: copy, move, delete, synchronise, and drops.
#include "main/application.h"
#include "main/commands/handlers.h"
#include "main/object_operations.h"
#include "sync/forms/frm_sync_log.h"

namespace vantrel {
namespace {

// A click on the method that is ticked already does nothing. The custom method takes its table from the
// options window.
void ChooseSyncMethod(Application& application, const SyncMethodInfo& info) {
    CSyncSettings& settings = application.operations->syncSettings;
    if (settings.SyncMethod() == static_cast<std::int32_t>(info.method)) return;
    settings.SetSyncMethod(info.method);
    if (info.method == SyncMethod::Custom) ShowOptionsWindow(application, OptionTab::Synchronize);
}

}  // namespace

void InstallOperationCommands(Application& application) {
    Commands& commands = application.GetCommands();
    ObjectOperations& operations = *application.operations;
    struct Entry {
        const char* command;
        void (ObjectOperations::*run)();
    };
    for (const Entry& entry : {
             Entry{"mnuFileCopySelectedFilesToTargetDirectory", &ObjectOperations::CopyToOtherFolder},
             Entry{"mnuFileCopySelectedFilesToSpecifiedDirectory", &ObjectOperations::CopyToAnyFolder},
             Entry{"mnuFileMoveSelectedFilesToTargetDirectory", &ObjectOperations::MoveToOtherFolder},
             Entry{"mnuFileMoveSelectedFilesToSpecifiedDirectory", &ObjectOperations::MoveToAnyFolder},
             Entry{"mnuFileSendSelectedFilesToRecycleBin", &ObjectOperations::Recycle},
             Entry{"mnuFileDeletePermanently", &ObjectOperations::DeletePermanently},
         })
        commands.SetHandler(entry.command, [&operations, run = entry.run] { (operations.*run)(); });
    commands.SetHandler("mnuFileAutoSynch", [&operations] { operations.Synchronize(SyncScope::All); });
    commands.SetHandler("mnuFileSyncSelectedObjects",
                        [&operations] { operations.Synchronize(SyncScope::SelectedObjects); });
    application.Window().SetDropHandler(
        [&operations](DropAction action, const std::vector<std::string>& paths, const std::string& folder) {
            operations.Drop(action, paths, folder);
        });

    for (const SyncMethodInfo& info : SyncMethods()) {
        commands.BindCheck(info.menuItem, [&operations, &info] {
            return operations.syncSettings.SyncMethod() == static_cast<std::int32_t>(info.method);
        });
        commands.SetHandler(info.menuItem, [&application, &info] { ChooseSyncMethod(application, info); });
    }
    commands.SetHandler("mnuViewSyncHistory", [&application] {
        frmSyncLog(application.tools, application.options.numSyncLogEntries, &application.Window()).exec();
    });
}

}  // namespace vantrel
