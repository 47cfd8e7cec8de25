#pragma once

#include <QStringList>
#include <string>

namespace vantrel {

// Where the desktop keeps which program opens what, the most important folder first.
struct DesktopFolders {
    QStringList settings;      // hold "mimeapps.list"
    QStringList applications;  // hold ".desktop" files, "mimeapps.list" and "mimeinfo.cache"
    QStringList desktops;      // names of the running desktop, in small letters

    // By the variables of the XDG base directories.
    static DesktopFolders OfThisUser();
};

// The command, program first, that opens `path` with the user's program for plain text: the one that is set
// for it, otherwise the first one installed that says it can. Programs that need a terminal do not count.
// Empty where there is none.
QStringList TextEditorCommand(const DesktopFolders& folders, const std::string& path);

}  // namespace vantrel
