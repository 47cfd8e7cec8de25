// The duplicate finder, and those of its options that ask something first.
#include "dupes/dupe_set_up.h"
#include "dupes/forms/frm_dupe_exclusions.h"
#include "dupes/forms/frm_find_duplicates.h"
#include "fileops/forms/frm_properties.h"
#include "main/application.h"
#include "main/commands/handlers.h"

namespace vantrel {
namespace {

void FindDuplicateFiles(Application& application) {
    // The main window starts nothing while the finder stands.
    const BusyState::Job job(application.busy);
    QtShellCalls shellCalls(application.tools, application.around.desktop);
    frmFindDuplicates window(
        {.tools = application.tools,
         .options = application.options,
         .wrappers = application.operations->Wrappers(),
         .shellCalls = shellCalls,
         .desktop = application.around.desktop,
         .requestCancel = [&application] { application.around.events.RequestCancel(); },
         .saveOptions = [&application] { application.SaveOptions(); },
         .showHelp = [&application] { OpenHelpPage(application, "duplicates.html"); },
         .compareFiles = [&application](const PerSide<std::string>& paths,
                                        QWidget* over) { ShowCompareFiles(application, paths, over); },
         .showDifferences = [&application](const PerSide<std::string>& paths,
                                           QWidget* over) { ShowDifferences(application, paths, over); }},
        &application.Window());
    window.ShowForm();
}

void FilesToExclude(Application& application) {
    frmDupeExclusions(
        application.tools, clsDupeSettings(application.options),
        [&application] { application.SaveOptions(); }, &application.Window())
        .exec();
}

}  // namespace

// Behind the commands of the options, whose plain toggles stand in the table.
void InstallDupeCommands(Application& application) {
    Commands& commands = application.GetCommands();
    commands.SetHandler("mnuFileFindDuplicateFiles", [&application] { FindDuplicateFiles(application); });
    commands.SetHandler("mnuOptionsFindDupesFilesToExclude", [&application] { FilesToExclude(application); });
    commands.SetHandler("mnuOptionsFindDupesRemovalOpt(3)", [&application] {
        clsDupeSettings settings(application.options);
        ChooseRemoveMethod(application.around.messages, settings, RemovalMethod::MoveToOtherFolder);
    });
    for (const auto& [item, option] :
         {std::pair{"mnuOptionsFindDupesIgnoreOpt(1)", IgnoreOption::SystemFiles},
          std::pair{"mnuOptionsFindDupesIgnoreOpt(2)", IgnoreOption::HiddenFiles},
          std::pair{"mnuOptionsFindDupesIgnoreOpt(3)", IgnoreOption::FilesInWindowsDir}})
        commands.SetHandler(item, [&application, option = option] {
            clsDupeSettings settings(application.options);
            FlipIgnoreOption(application.around.messages, settings, option);
        });
}

}  // namespace vantrel
