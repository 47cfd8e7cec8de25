#include "dupes/dupe_set_up.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr const char* kImportant =
    "PLEASE READ\r\n\r\n"
    "Do not run any applications which may alter the contents of the folders being searched.\r\n\r\n"
    "Doing so will not damage your files but it may cause erroneous search results.\r\n\r\n"
    "Operations which should be avoided while scanning for duplicates include:\r\n\r\n"
    "Creating/deleting folders and creating/modifying/deleting files.\r\n\r\n"
    "Any background process, like a virus scanner, that can touch files should also be turned off.";

// What unchecking an option can lead to; empty: nothing to be warned of.
std::string WarningOf(IgnoreOption option) {
    switch (option) {
        case IgnoreOption::SystemFiles:
            return "Unchecking this option can expose critical System files to possible deletion.\r\n"
                   "Most System files SHOULD NOT BE DELETED.\r\n";
        case IgnoreOption::HiddenFiles:
            return "Unchecking this option can expose critical Hidden files to possible deletion.\r\n"
                   "Many Hidden files SHOULD NOT BE DELETED.\r\n";
        case IgnoreOption::FilesInWindowsDir:
            return "Unchecking this option can expose critical Windows files to possible deletion.\r\n"
                   "Most duplicate files found within the Windows folder tree SHOULD NOT BE DELETED.\r\n";
        case IgnoreOption::ZeroByteFiles:
            break;
    }
    return {};
}

void SetIgnored(clsDupeSettings& settings, IgnoreOption option, bool on) {
    switch (option) {
        case IgnoreOption::ZeroByteFiles:
            settings.SetIgnoreZeroByteFiles(on);
            break;
        case IgnoreOption::SystemFiles:
            settings.SetIgnoreSystemFiles(on);
            break;
        case IgnoreOption::HiddenFiles:
            settings.SetIgnoreHiddenFiles(on);
            break;
        case IgnoreOption::FilesInWindowsDir:
            settings.SetIgnoreFilesInWindowsDir(on);
            break;
    }
}

bool IsInList(const std::vector<std::string>& folders, const std::string& path) {
    return std::find(folders.begin(), folders.end(), path) != folders.end();
}

void TellIsInList(MessagePort& messages) {
    messages.Ask({.title = "Find Duplicates",
                  .text = "The specified folder is already in the list.",
                  .icon = MessageIcon::Warning});
}

std::string FolderOfList(const std::string& path) {
    return WithoutTrailingSlash(ProperCase(path));
}

}  // namespace

void TellImportantInformation(MessagePort& messages, clsDupeSettings& settings) {
    if (settings.DupesFormLoadedPreviously()) return;
    messages.Ask({.title = "IMPORTANT INFORMATION", .text = kImportant, .icon = MessageIcon::Information});
    settings.SetDupesFormLoadedPreviously(true);
}

bool IsIgnored(const clsDupeSettings& settings, IgnoreOption option) {
    switch (option) {
        case IgnoreOption::ZeroByteFiles:
            return settings.IgnoreZeroByteFiles();
        case IgnoreOption::SystemFiles:
            return settings.IgnoreSystemFiles();
        case IgnoreOption::HiddenFiles:
            return settings.IgnoreHiddenFiles();
        case IgnoreOption::FilesInWindowsDir:
            break;
    }
    return settings.IgnoreFilesInWindowsDir();
}

void FlipIgnoreOption(MessagePort& messages, clsDupeSettings& settings, IgnoreOption option) {
    const bool on = IsIgnored(settings, option);
    std::string warning = on ? WarningOf(option) : std::string();
    if (!warning.empty()) {
        if (option == IgnoreOption::FilesInWindowsDir)
            warning += "Deleting these files may cause your computer to become unstable or unusable.\r\n";
        warning +=
            "You are strongly discouraged from unchecking this option.\r\n"
            "Do you still want to uncheck this option?";
        if (messages.Ask({.title = "Warning!",
                          .text = warning,
                          .icon = MessageIcon::Warning,
                          .buttons = MessageButtons::YesNo,
                          .defaultAnswer = MessageAnswer::No}) != MessageAnswer::Yes)
            return;
    }
    SetIgnored(settings, option, !on);
}

bool AddSearchFolder(MessagePort& messages, clsDupeSettings& settings, const std::string& path) {
    std::vector<std::string> folders = settings.FolderPaths();
    const std::string folder = FolderOfList(path);
    if (IsInList(folders, folder)) {
        TellIsInList(messages);
        return false;
    }
    folders.push_back(folder);
    settings.SetFolderPaths(folders);
    return true;
}

bool EditSearchFolder(MessagePort& messages, clsDupeSettings& settings, std::size_t number) {
    std::vector<std::string> folders = settings.FolderPaths();
    const std::optional<std::string> answer = messages.AskForText(
        "Edit Folder Path", "Make the desired edits to the folder path then press the OK button.",
        folders[number]);
    if (!answer || answer->empty()) return false;
    const std::string folder = FolderOfList(*answer);
    if (folder == folders[number]) return false;
    if (IsInList(folders, folder)) {
        TellIsInList(messages);
        return false;
    }
    folders[number] = folder;
    settings.SetFolderPaths(folders);
    return true;
}

bool ChooseRemoveMethod(MessagePort& messages, clsDupeSettings& settings, RemovalMethod method) {
    if (method == RemovalMethod::MoveToOtherFolder) {
        const std::optional<std::string> folder = messages.PickDirectory(
            "Browse for Folder", "Specify the folder where the file(s) will be moved to.",
            settings.UserDefinedMoveFolderPath());
        if (!folder || folder->empty()) {
            messages.Ask({.title = "Change Remove Method",
                          .text = "No folder was selected.  Remove method not changed.",
                          .icon = MessageIcon::Warning});
            return false;
        }
        settings.SetUserDefinedMoveFolderPath(*folder);
    }
    settings.SetRemoveMethod(method);
    return true;
}

}  // namespace vantrel
