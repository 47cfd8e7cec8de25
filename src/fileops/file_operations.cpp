#include "fileops/file_operations.h"

#include <algorithm>
#include <functional>

#include "core/row_texts.h"
#include "fileops/confirmation_details.h"
#include "fileops/drive_warning.h"
#include "fileops/expectations.h"
#include "fileops/told_at_end.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr const char* kContinue = "\r\n\r\nDo you wish to continue?";

enum class EachRow { AtOnce, Yields };

// The objects of the selected rows. A row without an object gives no path, so that none ever stands for the
// folder itself.
std::vector<std::string> SelectedPaths(const Toolbox& tools, const ListRef& list, EachRow eachRow) {
    std::vector<std::string> paths;
    for (const ResultRow& row : list.rows) {
        if (eachRow == EachRow::Yields) tools.loop.Yield();
        if (row.selected && row.IsReal() && !row.realName.empty())
            paths.push_back(ObjectPath(list.folder, row));
    }
    return paths;
}

enum class Target { None, FolderOpposite, AnotherFolder };

// What is expected of the objects that SelectedPaths gives. A folder that goes as a whole goes with what is
// in it when the user is asked, and that is now.
std::vector<Expectation> ExpectedOfSelected(const Toolbox& tools, const ListRef& list, Target target) {
    std::vector<Expectation> expected;
    for (std::size_t i = 0; i < list.rows.Count(); ++i) {
        const ResultRow& row = list.rows[i];
        if (!row.selected || !row.IsReal() || row.realName.empty()) continue;
        Expectation& of = expected.emplace_back();
        of.source = SightingOf(row);
        if (target == Target::FolderOpposite && i < list.otherRows.Count())
            of.target = SightingOf(list.otherRows[i]);
        if (target == Target::None && row.kind == RowKind::Folder && !row.isLink) {
            // What cannot be looked at now is told when the folder's turn comes.
            static_cast<void>(LookBelow(tools.files, ObjectPath(list.folder, row), of.below).IsOk());
        }
    }
    return expected;
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
    ShellResult (ShellWrappers::*run)(std::vector<std::string>, std::string_view, ShellWrappers::Options);
};

struct FileOperations::Objects {
    std::vector<std::string> paths;
    std::vector<Expectation> expected{};
    std::vector<ShellRoot> roots{};
};

struct FileOperations::Job {
    std::string routineName;
    Confirm confirm = Confirm::Yes;
    PartOf partOf = PartOf::Command;
    bool betweenSides = false;  // the target is the folder opposite
    std::function<SpaceAnswer()> space;
};

const FileOperations::Verb FileOperations::kCopy{"Copy", "Unable to Copy", "You are about to copy ",
                                                 "Confirm Copy", &ShellWrappers::CopyFiles};
const FileOperations::Verb FileOperations::kMove{"Move", "Unable to Move", "You are about to move ",
                                                 "Confirm Move", &ShellWrappers::MoveFiles};

ShellResult FileOperations::CopyFilesToOtherDirAndLVW(const ListRef& list, Confirm confirm, PartOf partOf) {
    return CopyOrMove(kCopy, list, list.otherFolder,
                      {.routineName = "frmMain.CopyFilesToOtherDirAndLVW",
                       .confirm = confirm,
                       .partOf = partOf,
                       .betweenSides = true,
                       .space = [&] {
                           return EnoughSpaceForCopyLvwToLvw(tools_, list.rows, list.otherRows, list.folder,
                                                             list.otherFolder);
                       }});
}

ShellResult FileOperations::CopyFilesToSpecificDir(const ListRef& list, const std::string& dir,
                                                   Confirm confirm) {
    return CopyOrMove(kCopy, list, dir,
                      {.routineName = "frmMain.CopyFilesToSpecificDir", .confirm = confirm, .space = [&] {
                           return EnoughSpaceForCopyLvwToSpecificDir(tools_, list.rows, list.folder, dir);
                       }});
}

ShellResult FileOperations::MoveFilesToOtherDirAndLVW(const ListRef& list, Confirm confirm) {
    return CopyOrMove(kMove, list, list.otherFolder,
                      {.routineName = "frmMain.MoveFilesToOtherDirAndLVW",
                       .confirm = confirm,
                       .betweenSides = true,
                       .space = [&] {
                           return EnoughSpaceForMoveLvwToLvw(tools_, list.rows, list.otherRows, list.folder,
                                                             list.otherFolder);
                       }});
}

ShellResult FileOperations::MoveFilesToSpecificDir(const ListRef& list, const std::string& dir,
                                                   Confirm confirm) {
    return CopyOrMove(kMove, list, dir,
                      {.routineName = "frmMain.MoveFilesToSpecificDir", .confirm = confirm, .space = [&] {
                           return EnoughSpaceForMoveLvwToSpecificDir(tools_, list.rows, list.folder, dir);
                       }});
}

ShellResult FileOperations::CopyOrMove(const Verb& verb, const ListRef& list, const std::string& target,
                                       const Job& job) {
    ShellResult result;
    tools_.reporter.Guard(job.routineName, [&] {
        const std::vector<std::string> paths = SelectedPaths(tools_, list, EachRow::AtOnce);
        if (paths.empty()) {
            if (job.partOf == PartOf::Command)
                Warn(verb.unable, "No item(s) selected.  Please select some item(s) and try again. ");
            return;
        }
        if (job.confirm == Confirm::Yes && !AskFirst(verb, paths, list.folder, target)) return;
        if (job.partOf == PartOf::Command) {
            const SpaceAnswer space = job.space();
            if (!space.enough) {
                if (!space.told) ShowInsufficientDiskSpace(tools_, space);
                return;
            }
        }
        const Target kind = job.betweenSides ? Target::FolderOpposite : Target::AnotherFolder;
        result = CarryOut(verb, {paths, ExpectedOfSelected(tools_, list, kind), list.roots}, target, job);
    });
    return result;
}

ShellResult FileOperations::CarryOut(const Verb& verb, Objects objects, const std::string& target,
                                     const Job& job) {
    const BusyState::Wait wait(busy_);
    ShellWrappers::Options options;
    options.confirm = job.confirm == Confirm::Yes;
    // Where both sides have the object, its name there can differ in letter case: it is the same object.
    options.ignoreLetterCase = job.betweenSides;
    options.expected = std::move(objects.expected);
    options.roots = std::move(objects.roots);
    ShellResult result = (wrappers_.*verb.run)(std::move(objects.paths), target, std::move(options));
    if (job.partOf == PartOf::Command) {
        TellNotKept(result.notKept);
        autoCompareStep_();
    }
    return result;
}

ShellResult FileOperations::CopyOLEDropObjectsToDir(const std::vector<std::string>& paths,
                                                    const std::string& dir, Confirm confirm) {
    return CopyOrMoveDropped(kCopy, paths, dir, confirm, "frmMain.CopyOLEDropObjectsToDir");
}

ShellResult FileOperations::MoveOLEDropObjectsToDir(const std::vector<std::string>& paths,
                                                    const std::string& dir, Confirm confirm) {
    return CopyOrMoveDropped(kMove, paths, dir, confirm, "frmMain.MoveOLEDropObjectsToDir");
}

ShellResult FileOperations::CopyOrMoveDropped(const Verb& verb, const std::vector<std::string>& paths,
                                              const std::string& dir, Confirm confirm,
                                              const std::string& routineName) {
    ShellResult result;
    tools_.reporter.Guard(routineName, [&] {
        if (paths.empty()) {
            Warn(verb.unable, "No item(s) selected.  Please select some item(s) and try again. ");
            return;
        }
        const std::string source = GetParentFolderName(paths.front());
        if (confirm == Confirm::Yes && !AskFirst(verb, paths, source, dir)) return;
        const bool staysOnDrive =
            &verb == &kMove && tools_.volumes.GetDriveName(source) == tools_.volumes.GetDriveName(dir);
        if (!staysOnDrive) {
            const SpaceAnswer space = EnoughSpaceForDrop(tools_, paths, dir, routineName);
            if (!space.enough) {
                if (!space.told) ShowInsufficientDiskSpace(tools_, space);
                return;
            }
        }
        result = CarryOut(verb, {paths}, dir, {.routineName = routineName, .confirm = confirm, .space = {}});
    });
    return result;
}

ShellResult FileOperations::DeleteFilesFromLVW(const ListRef& list, Confirm confirm, PartOf partOf) {
    ShellResult result;
    tools_.reporter.Guard("frmMain.DeleteFilesFromLVW", [&] {
        if (!AnythingSelected(list.rows)) {
            if (partOf == PartOf::Command)
                Warn("Unable to Delete", "No item(s) selected. Please select some item(s) and try again.");
            return;
        }
        const std::vector<std::string> paths = SelectedPaths(tools_, list, EachRow::Yields);
        if (paths.empty()) {
            tools_.messages.ShowInformationMessage(
                "Unable to Delete", "No item(s) selected. Please select some item(s), and try again.");
            return;
        }
        ShellWrappers::Options options = OptionsFor(list, confirm);
        DriveKind kind = DriveKind::Unknown;
        if (confirm == Confirm::Yes) {
            const MessageAnswer answer =
                tools_.messages.Confirm({"Confirm Delete",
                                         "You are about to send " + std::to_string(paths.size()) +
                                             " item(s) to the Recycle Bin." + kContinue,
                                         "Delete", paths, list.folder, ""});
            tools_.loop.Yield();
            if (answer != MessageAnswer::Yes) return;
            kind = tools_.volumes.GetDriveKind(tools_.volumes.GetDriveName(list.folder));
            if (AskToDeleteForGood(tools_.messages, kind) != MessageAnswer::Yes) return;
        } else {
            tools_.loop.Yield();
        }
        if (kind == DriveKind::Removable || kind == DriveKind::Remote) {
            result = DeletePermanentlyFilesFromLVW(list, confirm, Prompts::Quiet);
            return;
        }
        const BusyState::Wait wait(busy_);
        result = wrappers_.RecycleFiles(paths, std::move(options));
        if (partOf == PartOf::Command) autoCompareStep_();
    });
    return result;
}

ShellResult FileOperations::DeletePermanentlyFilesFromLVW(const ListRef& list, Confirm confirm,
                                                          Prompts prompts) {
    ShellResult result;
    tools_.reporter.Guard("frmMain.DeletePermanentlyFilesFromLVW", [&] {
        if (!AnythingSelected(list.rows)) {
            if (prompts == Prompts::Shown)
                Warn("Unable to Delete", "No item(s) selected. Please select some item(s) and try again.");
            return;
        }
        const std::vector<std::string> paths = SelectedPaths(tools_, list, EachRow::Yields);
        if (paths.empty()) {
            if (prompts == Prompts::Shown)
                tools_.messages.ShowInformationMessage(
                    "Unable to Delete", "No item(s) selected. Please select some item(s), and try again.");
            return;
        }
        ShellWrappers::Options options = OptionsFor(list, confirm);
        if (confirm == Confirm::Yes && prompts == Prompts::Shown) {
            const MessageAnswer answer = tools_.messages.Confirm(
                {"Confirm Delete",
                 std::string(kAboutToDeleteForGood) + std::to_string(paths.size()) + " item(s)." + kContinue,
                 "Delete", paths, list.folder, ""});
            if (answer != MessageAnswer::Yes) return;
        }
        tools_.loop.Yield();
        const BusyState::Wait wait(busy_);
        result = wrappers_.DeleteFilesPermanently(paths, std::move(options));
        autoCompareStep_();
    });
    return result;
}

// For the removal of what is selected, before the user is asked about it.
ShellWrappers::Options FileOperations::OptionsFor(const ListRef& list, Confirm confirm) const {
    return {.confirm = confirm == Confirm::Yes,
            .expected = ExpectedOfSelected(tools_, list, Target::None),
            .roots = list.roots};
}

bool FileOperations::AskFirst(const Verb& verb, const std::vector<std::string>& paths,
                              const std::string& source, const std::string& target) {
    const MessageAnswer answer = tools_.messages.Confirm(
        {verb.confirmTitle, verb.about + std::to_string(paths.size()) + " objects(s)." + kContinue,
         verb.operation, paths, source, target});
    tools_.loop.Yield();
    return answer == MessageAnswer::Yes;
}

void FileOperations::TellNotKept(const NotKept& notKept) {
    if (const std::string text = DescribeNotKept(notKept); !text.empty())
        tools_.messages.Ask({TitleOf(notKept), text, MessageIcon::Information, MessageButtons::Ok, {}});
}

void FileOperations::Warn(const std::string& title, const std::string& text) {
    tools_.messages.Ask({title, text, MessageIcon::Warning, MessageButtons::Ok, {}});
}

}  // namespace vantrel
