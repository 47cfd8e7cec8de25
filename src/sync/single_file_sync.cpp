#include "sync/single_file_sync.h"

#include "fileops/space_check.h"
#include "fileops/told_at_end.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr const char* kTitle = "File Sync";

}  // namespace

SingleFileSync::SingleFileSync(const Toolbox& tools, ShellWrappers& shell, PerSide<std::string> paths)
    : tools_(tools), shell_(shell), paths_(std::move(paths)) {
    for (const Side side : kBothSides) seen_[side] = LookAt(paths_[side]);
}

SingleFileSync::Look SingleFileSync::LookAt(const std::string& path) const {
    Look look;
    look.folder.path = GetParentFolderName(path);
    OpenFolder folder;
    look.error = tools_.files.Open(look.folder.path, folder);
    if (!look.error.IsOk()) return look;
    look.folder.id = folder.Id();
    look.folder.made = folder.Made();
    FolderEntry entry;
    look.object = folder.LookAt(GetLastItemInPath(path), entry) ? SightingOf(entry) : Sighting::Nothing();
    if (look.object.state == Sighting::State::NotKnown)
        look.error = Error(ErrorNumber::PathFileAccess, "Path/File access error \"" + path + "\"");
    return look;
}

void SingleFileSync::Tell(const std::string& text, MessageIcon icon) const {
    tools_.messages.Ask({.title = kTitle, .text = text, .icon = icon, .defaultAnswer = {}});
}

bool SingleFileSync::AreOneFile(const FileInfo& source, Side target) const {
    FileInfo info;
    return tools_.files.Stat(paths_[target], LinkPolicy::Follow, info).IsOk() && info.id == source.id;
}

Currency SingleFileSync::SpaceNeeded(Side target) const {
    PerSide<FileInfo> infos;
    for (const Side side : kBothSides) {
        Error error = tools_.files.Stat(paths_[side], LinkPolicy::DoNotFollow, infos[side]);
        const bool missing = error.Number() == ErrorNumber::FileNotFound;
        if (side != target || !missing) ThrowIfFailed(std::move(error));
    }
    return Currency::FromWhole(static_cast<std::int64_t>(infos[Other(target)].size)) -
           Currency::FromWhole(static_cast<std::int64_t>(infos[target].size));
}

// Whether the target's drive has room for what it grows by.
bool SingleFileSync::HasSpace(Side target) const {
    try {
        SpaceAnswer answer;
        answer.required = SpaceNeeded(target);
        if (answer.required < Currency::FromWhole(1)) return true;
        LookAtDrive(tools_, GetParentFolderName(paths_[target]), answer);
        if (answer.enough) return true;
        Tell("Not enough space on drive " + answer.drive + " to synchronize files.", MessageIcon::Warning);
    } catch (const ErrorException& error) {
        if (error.Get().Number() == ErrorNumber::PermissionDenied) return true;
        if (error.Get().Number() != ErrorNumber::PathNotFound) throw;
        Tell(std::string(kTargetTrouble), MessageIcon::Stop);
    }
    return false;
}

std::optional<SyncedPair> SingleFileSync::Replace(Side target) {
    const Side source = Other(target);
    for (const Side side : kBothSides) ThrowIfFailed(seen_[side].error);
    FileInfo info;
    ThrowIfFailed(tools_.files.Stat(paths_[source], LinkPolicy::Follow, info));
    if (AreOneFile(info, target)) {
        Tell("File 1 and File 2 are the same file.", MessageIcon::Warning);
        return std::nullopt;
    }
    if (!HasSpace(target)) return std::nullopt;
    Expectation expected{seen_[source].object, seen_[target].object, nullptr};
    // Where the target has gone meanwhile there is nothing that could be lost.
    if (!tools_.files.Exists(paths_[target])) expected.target = Sighting::Nothing();
    const ShellResult result = shell_.CopyFiles({paths_[source]}, paths_[target],
                                                {.confirm = false,
                                                 .targetIsFullPath = true,
                                                 .expected = {expected},
                                                 .roots = {seen_[source].folder, seen_[target].folder}});
    if (!result.AllDone()) return std::nullopt;
    tools_.messages.ShowInformationMessage(kTitle, "File synchronization completed successfully.");
    if (const std::string text = DescribeNotKept(result.notKept); !text.empty())
        Tell(text, MessageIcon::Information);
    SyncedPair pair{info.size, info.lastWrite, {}};
    for (const Side side : kBothSides) pair.seen[side] = LookAt(paths_[side]).object;
    return pair;
}

}  // namespace vantrel
