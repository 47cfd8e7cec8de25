#include "dupes/dupe_removal.h"

#include <algorithm>
#include <utility>

#include "dupes/box_lines.h"
#include "dupes/same_contents.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr const char* kRemovalTitle = "Remove Files";

constexpr const char* kWarning =
    "Rule of thumb for deleting duplicate files: When in doubt, don't remove them.\r\n"
    "Some of the files which are reported as duplicates should not be removed.\r\n"
    "Remove only those duplicate files that are created by you.\r\n"
    "Do not remove System or Windows created duplicate files. Be sure to carefully analyze each\r\n"
    "duplicate file before making the decision to remove any of them.\r\n"
    "See the Help file for additional removal guidelines.\r\n"
    "Disclaimer: The user assumes all responsibilty for any damage which may result from files being "
    "removed.";

std::string FailureText(RemovalMethod method) {
    switch (method) {
        case RemovalMethod::Delete:
            return "Delete failed.";
        case RemovalMethod::Recycle:
            return "Send To Recycle Bin failed.";
        case RemovalMethod::MoveToDupesFolder:
            return "Move to DUPES folder failed.";
        case RemovalMethod::MoveToOtherFolder:
            break;
    }
    return {};
}

Sighting FoundAs(const DupeFile& file) {
    Sighting sighting;
    sighting.state = Sighting::State::Present;
    sighting.seen = file.seen;
    return sighting;
}

std::vector<std::uint32_t> MarkedOf(const DupeResults& results, std::uint32_t group, bool marked) {
    std::vector<std::uint32_t> files;
    for (const std::uint32_t file : results.Group(group).members)
        if (results.IsMarked(file) == marked) files.push_back(file);
    return files;
}

}  // namespace

struct DupeRemoval::Doing {
    DupeResults& results;
    const clsDupeSettings& settings;
    RemovalReport& report;
    std::vector<std::string> leftAlone;  // with the reasons
    std::vector<std::uint32_t> staying;  // of the group at hand
    std::int64_t dealtWith = 0, all = 0;
};

RemovalReport DupeRemoval::RemoveMarkedFiles(DupeResults& results, const std::vector<std::uint32_t>& groups,
                                             clsDupeSettings& settings) {
    RemovalReport report;
    tools_.loop.ResetCancel();
    tools_.reporter.GuardRun("frmFindDuplicates.RemoveMarkedFiles()", [&] {
        Doing doing{results, settings, report, {}, {}};
        for (const std::uint32_t group : groups)
            doing.all += static_cast<std::int64_t>(MarkedOf(results, group, true).size());
        if (doing.all == 0) {
            tools_.messages.Ask(
                {.title = kRemovalTitle,
                 .text = "No files have been checkmarked.\r\n\r\nTo checkmark a file for removal, "
                         "\r\nclick once in the box to the left of the file.",
                 .icon = MessageIcon::Warning});
            return;
        }
        if (!WarnedAndAgreed(settings) || !MayTakeLastCopies(results, groups)) return;
        report.begun = true;
        try {
            for (const std::uint32_t group : groups) RemoveFromGroup(doing, group);
        } catch (const Cancelled&) {
            report.cancelled = true;
        }
        progress_.SetBar(0, 0);
        progress_.SetStatus(results.StatusText());
        TellLeftAlone(doing);
    });
    return report;
}

void DupeRemoval::RemoveFromLists(DupeResults& results, const std::vector<std::uint32_t>& groups) {
    for (const std::uint32_t group : groups) results.Forget(group, MarkedOf(results, group, true));
    progress_.SetStatus(results.StatusText());
}

bool DupeRemoval::WarnedAndAgreed(clsDupeSettings& settings) {
    if (settings.RemoveWarningShown()) return true;
    settings.SetRemoveWarningShown(true);
    return tools_.messages.Ask({.title = kRemovalTitle,
                                .text = kWarning,
                                .icon = MessageIcon::Warning,
                                .buttons = MessageButtons::OkCancel,
                                .defaultAnswer = MessageAnswer::Cancel}) == MessageAnswer::Ok;
}

bool DupeRemoval::MayTakeLastCopies(const DupeResults& results, const std::vector<std::uint32_t>& groups) {
    std::vector<std::string> whole;
    for (const std::uint32_t group : groups) {
        const bool isWhole = MarkedOf(results, group, false).empty();
        if (isWhole && !results.Group(group).members.empty()) whole.push_back(results.Group(group).Line());
    }
    if (whole.empty()) return true;
    return tools_.messages.Ask(
               {.title = kRemovalTitle,
                .text = "All files of these groups are checkmarked.  No copy of them will remain:\r\n" +
                        BoxLines(whole) + "\r\n\r\nDo you still want to remove the files?",
                .icon = MessageIcon::Warning,
                .buttons = MessageButtons::YesNo,
                .defaultAnswer = MessageAnswer::No}) == MessageAnswer::Yes;
}

void DupeRemoval::RemoveFromGroup(Doing& doing, std::uint32_t group) {
    // Rows follow what was done, also where a cancel ends it.
    struct Gone {
        Doing& doing;
        std::uint32_t group;
        std::vector<std::uint32_t> files;
        ~Gone() { doing.results.Forget(group, files); }
    } gone{doing, group, {}};
    doing.staying = MarkedOf(doing.results, group, false);
    for (const std::uint32_t file : MarkedOf(doing.results, group, true)) {
        Yield();
        progress_.SetBar(doing.dealtWith, doing.all);
        progress_.SetFigures({.files = static_cast<std::uint64_t>(doing.dealtWith++)});
        switch (RemoveFile(doing, file)) {
            case Done::Removed:
                ++doing.report.removed;
                gone.files.push_back(file);
                break;
            case Done::Skipped:
                ++doing.report.skipped;
                break;
            case Done::Failed:
                ++doing.report.failed;
                break;
            case Done::LeftAlone:
                ++doing.report.leftAlone;
                break;
        }
    }
}

DupeRemoval::Done DupeRemoval::RemoveFile(Doing& doing, std::uint32_t file) {
    const FoundFiles& files = doing.results.Files();
    const std::string path = files.PathOf(file);
    if (const std::string why = WhyNotRemoved(doing, file); !why.empty()) {
        doing.leftAlone.push_back(path + ": " + why);
        return Done::LeftAlone;
    }
    ShellRequest request;
    request.sources = {path};
    request.noConfirmation = request.noErrorUi = true;
    request.expected = {{FoundAs(files[file]), Sighting::Nothing(), nullptr}};
    request.targetIsFullPath = true;
    switch (doing.settings.RemoveMethod()) {
        case RemovalMethod::Delete:
            request.operation = ShellOperation::Delete;
            break;
        case RemovalMethod::Recycle:
            request.operation = ShellOperation::Recycle;
            request.silent = true;
            break;
        case RemovalMethod::MoveToDupesFolder:
            request.operation = ShellOperation::Move;
            request.target = dupes_.PlaceFor(path);
            if (const Error error = dupes_.Note(path, request.target); !error.IsOk()) {
                TellFailure(doing.settings.RemoveMethod(), path, error);
                return Done::Failed;
            }
            break;
        case RemovalMethod::MoveToOtherFolder:
            request.operation = ShellOperation::Move;
            return MoveToOtherFolder(doing, std::move(request));
    }
    return Run(doing, request);
}

// Empty: it may go.
std::string DupeRemoval::WhyNotRemoved(Doing& doing, std::uint32_t file) {
    const FoundFiles& files = doing.results.Files();
    const std::string path = files.PathOf(file);
    constexpr const char* kNotAsFound = "it is gone, cannot be read, or is not what was found any more";
    ReadFile now;
    if (!tools_.files.OpenForReading(path, now).IsOk() || now.Seen() != files[file].seen) return kNotAsFound;
    now = ReadFile();
    const bool compares = doing.results.Criteria().contents || doing.settings.CheckBeforeRemoval();
    if (!compares || doing.staying.empty()) return {};
    bool differs = false;
    for (const std::uint32_t staying : doing.staying) {
        switch (CompareContents(tools_.files, path, files[file].seen, files.PathOf(staying),
                                [this] { Yield(); })) {
            case SameContents::Same:
                return {};
            case SameContents::FirstUnreadable:
                return kNotAsFound;
            case SameContents::Different:
                differs = true;
                break;
            case SameContents::SecondUnreadable:
                break;
        }
    }
    return differs ? "its contents differ from those of the files of its group that stay"
                   : "no file of its group that stays can be read";
}

DupeRemoval::Done DupeRemoval::MoveToOtherFolder(Doing& doing, ShellRequest request) {
    const std::string& path = request.sources[0];
    const std::string& folder = doing.settings.UserDefinedMoveFolderPath();
    const std::string name(GetLastItemInPath(path));
    const auto fail = [&](const Error& error) {
        TellFailure(RemovalMethod::MoveToOtherFolder, path, error);
        return Done::Failed;
    };
    if (folder.empty()) return fail(Error(ErrorNumber::PathNotFound, "Path not found"));
    request.target = JoinPath(folder, name);
    if (!tools_.files.Exists(request.target)) return Run(doing, request);
    OpenFolder opened;
    FolderEntry entry;
    if (Error error = tools_.files.Open(folder, opened); !error.IsOk()) return fail(error);
    if (opened.LookAt(name, entry)) {
        if (entry.seen.id == request.expected[0].source.seen.id)
            return fail(Error(ErrorNumber::FileAlreadyExists, "File already exists"));
        const MessageAnswer answer =
            tools_.messages.Ask({.title = "File Already Exists",
                                 .text = "A problem was encountered moving the file\r\n\r\nProblem: A file "
                                         "with this name already exists "
                                         "in the destination folder.\r\nFileName: " +
                                         name + "\r\nDestination Folder: " + folder +
                                         "\r\n\r\nDo you wish to overwrite this file?",
                                 .icon = MessageIcon::Warning,
                                 .buttons = MessageButtons::YesNo,
                                 .defaultAnswer = MessageAnswer::No});
        if (answer != MessageAnswer::Yes) return Done::Skipped;
        request.expected[0].target = SightingOf(entry);
    }
    return Run(doing, request);
}

DupeRemoval::Done DupeRemoval::Run(Doing& doing, const ShellRequest& request) {
    const ShellResult result = shell_.Run(request);
    if (!result.items.empty() && result.items[0].outcome == ItemOutcome::Done) return Done::Removed;
    if (result.cancelled) throw Cancelled();
    const Error error = result.items.empty() ? Error() : result.items[0].error;
    if (error.Number() == kChangedSinceSeen) {
        doing.leftAlone.push_back(request.sources[0] + ": " + error.Description());
        return Done::LeftAlone;
    }
    // What failed behind the step that took the file away has taken it all the same.
    const bool moved = request.operation != ShellOperation::Move || tools_.files.Exists(request.target);
    if (!tools_.files.Exists(request.sources[0]) && moved) return Done::Removed;
    TellFailure(doing.settings.RemoveMethod(), request.sources[0], error);
    return Done::Failed;
}

void DupeRemoval::TellFailure(RemovalMethod method, const std::string& path, const Error& error) {
    const int code = error.SystemNumber();
    const std::string number = code != 0 ? std::to_string(code) : std::to_string(error.NumberAsValue());
    tools_.messages.Ask({.title = "Removal Failed",
                         .text = FailureText(method) + "\r\nFile: " + path + "\r\nError #: " + number +
                                 "\r\nError Desc: " + (code != 0 ? GetErrorText(code) : error.Description()),
                         .icon = MessageIcon::Stop});
}

void DupeRemoval::TellLeftAlone(const Doing& doing) {
    if (doing.leftAlone.empty()) return;
    tools_.messages.Ask({.title = kRemovalTitle,
                         .text = "These files were not removed:\r\n" + BoxLines(doing.leftAlone),
                         .icon = MessageIcon::Warning});
}

void DupeRemoval::Yield() {
    tools_.loop.Yield();
    if (tools_.loop.CancelRequested()) throw Cancelled();
}

}  // namespace vantrel
