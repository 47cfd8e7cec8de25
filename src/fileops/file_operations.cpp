#include "fileops/file_operations.h"

#include <algorithm>
#include <functional>

#include "core/row_texts.h"
#include "fileops/drive_warning.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr const char* kContinue = "\r\n\r\nDo you wish to continue?";

// The objects of the selected rows. A row without an object gives no path, so that none ever stands for the
// folder itself.
std::vector<std::string> SelectedPaths(const Toolbox& tools, const std::string& folder,
                                       const ResultList& rows, bool yield) {
    std::vector<std::string> paths;
    for (const ResultRow& row : rows) {
        if (yield) tools.loop.Yield();
        if (row.selected && row.IsReal() && !row.realName.empty()) paths.push_back(ObjectPath(folder, row));
    }
    return paths;
}

bool AnythingSelected(const ResultList& rows) {
    return std::ranges::any_of(rows, [](const ResultRow& row) { return row.selected; });
}

}  // namespace

// What tells copy and move apart.
struct FileOperations::Verb {
    const char* operation;
    const char* unable;
    const char* about;
    const char* confirmTitle;
    ShellResult (ShellWrappers::*run)(std::vector<std::string>, std::string_view, ShellWrappers::Options,
                                      bool&);
};

struct FileOperations::Job {
    std::string routineName;
    bool confirm = true;
    bool inSync = false;
    bool betweenSides = false;  // the target is the folder opposite
    std::function<SpaceAnswer()> space;
};

const FileOperations::Verb FileOperations::kCopy{"Copy", "Unable to Copy", "You are about to copy ",
                                                 "Confirm Copy", &ShellWrappers::CopyFiles};
const FileOperations::Verb FileOperations::kMove{"Move", "Unable to Move", "You are about to move ",
                                                 "Confirm Move", &ShellWrappers::MoveFiles};

ShellResult FileOperations::CopyFilesToOtherDirAndLVW(ListRef list, bool confirm, bool inSync) {
    const std::string target = host_.FolderPath(Other(list.side));
    return CopyOrMove(kCopy, list, target, {"frmMain.CopyFilesToOtherDirAndLVW", confirm, inSync, true, [&] {
                                                return EnoughSpaceForCopyLvwToLvw(tools_, *list.rows,
                                                                                  *list.otherRows, target);
                                            }});
}

ShellResult FileOperations::CopyFilesToSpecificDir(ListRef list, const std::string& dir, bool confirm) {
    return CopyOrMove(kCopy, list, dir,
                      {"frmMain.CopyFilesToSpecificDir", confirm, false, false,
                       [&] { return EnoughSpaceForCopyLvwToSpecificDir(tools_, *list.rows, dir); }});
}

ShellResult FileOperations::MoveFilesToOtherDirAndLVW(ListRef list, bool confirm) {
    const std::string folder = host_.FolderPath(list.side), target = host_.FolderPath(Other(list.side));
    return CopyOrMove(kMove, list, target, {"frmMain.MoveFilesToOtherDirAndLVW", confirm, false, true, [&] {
                                                return EnoughSpaceForMoveLvwToLvw(
                                                    tools_, *list.rows, *list.otherRows, folder, target);
                                            }});
}

ShellResult FileOperations::MoveFilesToSpecificDir(ListRef list, const std::string& dir, bool confirm) {
    const std::string folder = host_.FolderPath(list.side);
    return CopyOrMove(kMove, list, dir,
                      {"frmMain.MoveFilesToSpecificDir", confirm, false, false,
                       [&] { return EnoughSpaceForMoveLvwToSpecificDir(tools_, *list.rows, folder, dir); }});
}

ShellResult FileOperations::CopyOrMove(const Verb& verb, ListRef list, const std::string& target, Job job) {
    ShellResult result;
    tools_.reporter.Guard(job.routineName, [&] {
        const std::string folder = host_.FolderPath(list.side);
        const std::vector<std::string> paths = SelectedPaths(tools_, folder, *list.rows, false);
        if (paths.empty()) {
            if (!job.inSync)
                Warn(verb.unable, "No item(s) selected.  Please select some item(s) and try again. ");
            return;
        }
        if (job.confirm && !AskFirst(verb, paths, folder, target)) return;
        if (!job.inSync) {
            const SpaceAnswer space = job.space();
            if (!space.enough) {
                if (!space.told) ShowInsufficientDiskSpace(tools_, space);
                return;
            }
        }
        result = CarryOut(verb, paths, target, job);
    });
    return result;
}

ShellResult FileOperations::CarryOut(const Verb& verb, const std::vector<std::string>& paths,
                                     const std::string& target, const Job& job) {
    const BusyState::Wait wait(busy_);
    ShellWrappers::Options options;
    options.confirm = job.confirm;
    // Where both sides have the object, its name there can differ in letter case: it is the same object.
    options.ignoreLetterCase = job.betweenSides;
    ShellResult result = (wrappers_.*verb.run)(paths, target, options, cancelFlag_);
    if (!job.inSync) AutoCompareStep();
    return result;
}

ShellResult FileOperations::CopyOLEDropObjectsToDir(const std::vector<std::string>& paths,
                                                    const std::string& dir, bool confirm) {
    return CopyOrMoveDropped(kCopy, paths, dir, confirm, "frmMain.CopyOLEDropObjectsToDir");
}

ShellResult FileOperations::MoveOLEDropObjectsToDir(const std::vector<std::string>& paths,
                                                    const std::string& dir, bool confirm) {
    return CopyOrMoveDropped(kMove, paths, dir, confirm, "frmMain.MoveOLEDropObjectsToDir");
}

ShellResult FileOperations::CopyOrMoveDropped(const Verb& verb, const std::vector<std::string>& paths,
                                              const std::string& dir, bool confirm,
                                              const std::string& routineName) {
    ShellResult result;
    tools_.reporter.Guard(routineName, [&] {
        if (paths.empty()) {
            Warn(verb.unable, "No item(s) selected.  Please select some item(s) and try again. ");
            return;
        }
        const std::string source = GetParentFolderName(paths.front());
        if (confirm && !AskFirst(verb, paths, source, dir)) return;
        const bool staysOnDrive =
            &verb == &kMove && tools_.volumes.GetDriveName(source) == tools_.volumes.GetDriveName(dir);
        if (!staysOnDrive) {
            const SpaceAnswer space = EnoughSpaceForDrop(tools_, paths, dir, routineName);
            if (!space.enough) {
                if (!space.told) ShowInsufficientDiskSpace(tools_, space);
                return;
            }
        }
        result = CarryOut(verb, paths, dir, {routineName, confirm, false, false, {}});
    });
    return result;
}

ShellResult FileOperations::DeleteFilesFromLVW(ListRef list, bool confirm, bool inSync) {
    ShellResult result;
    tools_.reporter.Guard("frmMain.DeleteFilesFromLVW", [&] {
        const std::string folder = host_.FolderPath(list.side);
        if (!AnythingSelected(*list.rows)) {
            if (!inSync)
                Warn("Unable to Delete", "No item(s) selected. Please select some item(s) and try again.");
            return;
        }
        const std::vector<std::string> paths = SelectedPaths(tools_, folder, *list.rows, true);
        if (paths.empty()) {
            tools_.messages.ShowInformationMessage(
                "Unable to Delete", "No item(s) selected. Please select some item(s), and try again.");
            return;
        }
        DriveKind kind = DriveKind::Unknown;
        if (confirm) {
            const MessageAnswer answer =
                tools_.messages.Confirm({"Confirm Delete",
                                         "You are about to send " + std::to_string(paths.size()) +
                                             " item(s) to the Recycle Bin." + kContinue,
                                         "Delete", paths, folder, ""});
            tools_.loop.Yield();
            if (answer != MessageAnswer::Yes) return;
            kind = tools_.volumes.GetDriveKind(tools_.volumes.GetDriveName(folder));
            if (AskToDeleteForGood(tools_.messages, kind) != MessageAnswer::Yes) return;
        } else {
            tools_.loop.Yield();
        }
        if (kind == DriveKind::Removable || kind == DriveKind::Remote) {
            result = DeletePermanentlyFilesFromLVW(list, confirm, true);
            return;
        }
        const BusyState::Wait wait(busy_);
        result = wrappers_.RecycleFiles(paths, {.confirm = confirm}, cancelFlag_);
        if (!inSync) AutoCompareStep();
    });
    return result;
}

ShellResult FileOperations::DeletePermanentlyFilesFromLVW(ListRef list, bool confirm, bool quiet) {
    ShellResult result;
    tools_.reporter.Guard("frmMain.DeletePermanentlyFilesFromLVW", [&] {
        const std::string folder = host_.FolderPath(list.side);
        if (!AnythingSelected(*list.rows)) {
            if (!quiet)
                Warn("Unable to Delete", "No item(s) selected. Please select some item(s) and try again.");
            return;
        }
        const std::vector<std::string> paths = SelectedPaths(tools_, folder, *list.rows, true);
        if (paths.empty()) {
            if (!quiet)
                tools_.messages.ShowInformationMessage(
                    "Unable to Delete", "No item(s) selected. Please select some item(s), and try again.");
            return;
        }
        if (confirm && !quiet) {
            const MessageAnswer answer =
                tools_.messages.Confirm({"Confirm Delete",
                                         "You are about to permanently delete " +
                                             std::to_string(paths.size()) + " item(s)." + kContinue,
                                         "Delete", paths, folder, ""});
            if (answer != MessageAnswer::Yes) return;
        }
        tools_.loop.Yield();
        const BusyState::Wait wait(busy_);
        result = wrappers_.DeleteFilesPermanently(paths, {.confirm = confirm}, cancelFlag_);
        AutoCompareStep();
    });
    return result;
}

bool FileOperations::AskFirst(const Verb& verb, const std::vector<std::string>& paths,
                              const std::string& source, const std::string& target) {
    const MessageAnswer answer = tools_.messages.Confirm(
        {verb.confirmTitle, verb.about + std::to_string(paths.size()) + " objects(s)." + kContinue,
         verb.operation, paths, source, target});
    tools_.loop.Yield();
    return answer == MessageAnswer::Yes;
}

void FileOperations::Warn(const std::string& title, const std::string& text) {
    tools_.messages.Ask({title, text, MessageIcon::Warning, MessageButtons::Ok, {}});
}

void FileOperations::AutoCompareStep() {
    if (host_.AutoCompareAfterFileOp()) {
        host_.CompareDirs();
    } else {
        host_.RemoveListItemsAndShowNoCompareMsg();
    }
}

}  // namespace vantrel
