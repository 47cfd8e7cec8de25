#pragma once

#include <string>

#include "core/side.h"
#include "main/command_table.h"
#include "main/option_boxes.h"

class QWidget;

namespace vantrel {

class Application;

// The handlers of the main window's commands by area. Each gives its commands what they do, and binds the
// check marks to what they show.
void InstallCompareCommands(Application& application);
void InstallFolderCommands(Application& application);
void InstallObjectCommands(Application& application);
void InstallSelectionAndViewCommands(Application& application);
void InstallOptionCommands(Application& application);
void InstallHelpCommands(Application& application);
void InstallOperationCommands(Application& application);
void InstallFileDiffCommands(Application& application);
void InstallHexDumpCommands(Application& application);
void InstallDupeCommands(Application& application);
void InstallPrintCommands(Application& application);
void InstallRenameCommands(Application& application);

// ERRORLOG.TXT in its viewer, over that window.
void ShowErrorLog(Application& application, QWidget& over);

// A page of the help, in the program that shows such pages, or in a window of our own where there is none. A
// place within a page, as in "options.html#sounds", is always shown in our own, which stands over `over`;
// null is the main window.
void OpenHelpPage(Application& application, std::string_view place, QWidget* over = nullptr);

// The options window on that tab, and what follows its OK.
void ShowOptionsWindow(Application& application, OptionTab tab);

// The lines of two files beside each other, in a window over `over`. Returns when it is closed.
void ShowDifferences(Application& application, const PerSide<std::string>& paths, QWidget* over);

// What each method of comparison finds in two files, likewise.
void ShowCompareFiles(Application& application, const PerSide<std::string>& paths, QWidget* over);

// The bytes of a file, or of two beside each other where the right path is not empty, in a window over
// `over`. Returns when it is closed.
void ShowHexDumps(Application& application, const PerSide<std::string>& paths, QWidget* over);

// Asks about renames that an earlier run of the program did not bring to their end.
void OfferRenameRepair(Application& application);

// A click on one of the icons beside a path box.
void OnPathIconClicked(Application& application, Side side, PathIcon icon);

inline void InstallHandlers(Application& application) {
    InstallCompareCommands(application);
    InstallFolderCommands(application);
    InstallObjectCommands(application);
    InstallSelectionAndViewCommands(application);
    InstallOptionCommands(application);
    InstallHelpCommands(application);
    InstallOperationCommands(application);
    InstallFileDiffCommands(application);
    InstallHexDumpCommands(application);
    InstallDupeCommands(application);
    InstallPrintCommands(application);
    InstallRenameCommands(application);
}

}  // namespace vantrel
