#pragma once

#include <functional>
#include <string>

#include "core/side.h"
#include "main/command_table.h"
#include "main/option_boxes.h"
#include "views/aligned_panes.h"

class QWidget;

namespace vantrel {

class Application;
struct SyncedPair;

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
void InstallFilterCommands(Application& application);
void InstallSessionCommands(Application& application);
void InstallPrintCommands(Application& application);
void InstallRenameCommands(Application& application);
void InstallSubFolderCommands(Application& application);

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

// What each method of comparison finds in two files, likewise. Two files that are made alike from there are
// brought into line in the rows of the main window, or told to `whenSynced`.
void ShowCompareFiles(Application& application, const PerSide<std::string>& paths, QWidget* over);
using WhenSynced = std::function<void(const PerSide<std::string>& paths, const SyncedPair& synced)>;
void ShowCompareFiles(Application& application, const PerSide<std::string>& paths, QWidget* over,
                      const WhenSynced& whenSynced);
// The rows of the pair that is selected in `panes`, where it is the pair of these two files.
void BringRowsIntoLine(const Application& application, AlignedPanes& panes,
                       const PerSide<std::string>& folders, const PerSide<std::string>& paths,
                       const SyncedPair& synced);

// The bytes of a file, or of two beside each other where the right path is not empty, in a window over
// `over`. Returns when it is closed.
void ShowHexDumps(Application& application, const PerSide<std::string>& paths, QWidget* over);

// Asks about renames that an earlier run of the program did not bring to their end.
void OfferRenameRepair(Application& application);

// Whether the settings in force are saved as a session first, if the user wants that.
enum class SaveFirst { No, IfWanted };
// Puts the session `path` in the place of the settings, which are kept as the previous ones. A file that is
// no session is refused with a message, and nothing is changed.
void OpenSession(Application& application, const std::string& path, SaveFirst saveFirst);
// The same for a request of another process, which can come at any time: while a job runs or a window waits
// for an answer nothing is opened, and the status bar says so.
void OpenSessionFromOutside(Application& application, const std::string& path);

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
    InstallFilterCommands(application);
    InstallSessionCommands(application);
    InstallPrintCommands(application);
    InstallRenameCommands(application);
    InstallSubFolderCommands(application);
}

}  // namespace vantrel
