#include "shell/delete_engine.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/names/names.h"
#include "platform/names/temporary_names.h"
#include "shell/trash_guard.h"

namespace vantrel::shell {

namespace {

bool IsInLeftover(std::string_view path) {
    for (;;) {
        const std::size_t slash = path.rfind('/');
        if (IsTemporaryCopyName(path.substr(slash + 1))) return true;
        if (slash == std::string_view::npos) return false;
        path = path.substr(0, slash);
    }
}

// What was seen at a path below the source: what is not in the list was not there.
const Sighting& SeenAt(const ShellRun& run, const std::string& below) {
    static const Sighting kNotKnown, kNothing = Sighting::Nothing();
    if (below.empty()) return run.expected->source;
    // Our own leftovers, and what is in them, are in no list.
    if (!run.expected->below || IsInLeftover(below)) return kNotKnown;
    const auto found = run.expected->below->find(below);
    return found == run.expected->below->end() ? kNothing : found->second;
}

std::string Below(const std::string& folder, const std::string& name) {
    const std::string shown = NameFromSystem(name);
    return folder.empty() ? shown : folder + "/" + shown;
}

Error RefuseChangedIn(ShellRun& run, const Place& place, const std::string& below) {
    const ShellRun::Level level(run);
    Folder folder;
    std::vector<std::string> names;
    if (Error error = run.RefuseTooDeep(place); !error.IsOk()) return error;
    if (Error error = OpenFolderAt(run.calls, place, LinkPolicy::DoNotFollow, folder); !error.IsOk())
        return error;
    if (const int listed = ListNames(run.calls, folder, names); listed < 0)
        return Error::FromErrno(-listed, folder.path);
    for (const std::string& name : names) {
        const Place child{&folder, name};
        const std::string path = Below(below, name);
        Statx stat{};
        if (const int looked = Look(run.calls, child, LinkPolicy::DoNotFollow, stat); looked < 0)
            return Error::FromErrno(-looked, child.Path());
        if (Error error = run.RefuseChanged(child, SeenAt(run, path), &stat); !error.IsOk()) return error;
        if (!IsFolder(stat)) continue;
        if (Error error = RefuseChangedIn(run, child, path); !error.IsOk()) return error;
    }
    return {};
}

}  // namespace

Error RefuseChangedBelow(ShellRun& run, const Place& place) {
    return run.expected->below ? RefuseChangedIn(run, place, {}) : Error();
}

ItemOutcome DeleteEngine::Delete(const Place& place) {
    return DeleteAt(place, {});
}

Error DeleteEngine::LookAgain(const Place& place, const std::string& below, Statx& stat) const {
    const int looked = Look(calls_, place, LinkPolicy::DoNotFollow, stat);
    if (!record_ && (looked == 0 || looked == -ENOENT)) {
        const Sighting& seen = SeenAt(run_, below);
        if (Error error = run_.RefuseChanged(place, seen, looked == 0 ? &stat : nullptr); !error.IsOk())
            return error;
    }
    if (looked < 0) return Error::FromErrno(-looked, place.Path());
    if (!record_ || IsFolder(stat) || record_->Holds(place, stat)) return {};
    return {ErrorNumber::PathFileAccess, "\"" + place.Path() + "\" changed after it was copied, and stays"};
}

ItemOutcome DeleteEngine::DeleteAt(const Place& place, const std::string& below) {
    if (!record_) run_.ShowItem(place, nullptr);
    Statx stat{};
    const ItemOutcome outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        if (Error error = LookAgain(place, below, stat); !error.IsOk()) return error;
        if (IsFolder(stat)) return {};
        const int removed = calls_.UnlinkAt(place.Fd(), place.name.c_str(), 0);
        if (removed < 0) return Error::FromErrno(-removed, place.Path());
        run_.shared.NoteRenamed(stat);
        return {};
    });
    if (outcome != ItemOutcome::Done) return outcome;
    if (IsFolder(stat)) return DeleteFolder(place, stat, below);
    if (!record_) run_.CountObject();
    return outcome;
}

ItemOutcome DeleteEngine::DeleteFolder(const Place& place, const Statx& listed, const std::string& below) {
    const ShellRun::Level level(run_);
    Folder folder;
    std::vector<std::string> names;
    ItemOutcome outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        if (Error error = run_.RefuseTooDeep(place); !error.IsOk()) return error;
        if (Error error = OpenFolderAt(calls_, place, LinkPolicy::DoNotFollow, folder); !error.IsOk())
            return error;
        if (folder.id != IdOf(listed)) return ChangedSinceSeen(folder.path);
        if (folder.mount != place.folder->mount) {
            return {ErrorNumber::PermissionDenied,
                    "\"" + folder.path + "\" belongs to another file system that is mounted there"};
        }
        if (Error error = RefuseTrash(run_.shared, folder); !error.IsOk()) return error;
        names.clear();
        const int result = ListNames(calls_, folder, names);
        return result < 0 ? Error::FromErrno(-result, folder.path) : Error();
    });
    if (outcome != ItemOutcome::Done) return outcome;
    for (const std::string& name : names) {
        const ItemOutcome child = DeleteAt({&folder, name}, Below(below, name));
        outcome = Worse(outcome, child);
        if (child == ItemOutcome::NotReached) break;
    }
    if (outcome != ItemOutcome::Done) return outcome;
    outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        Statx now{};
        if (const int looked = Look(calls_, place, LinkPolicy::DoNotFollow, now); looked < 0)
            return Error::FromErrno(-looked, folder.path);
        if (!IsFolder(now) || IdOf(now) != folder.id) return ChangedSinceSeen(folder.path);
        const int removed = calls_.UnlinkAt(place.Fd(), place.name.c_str(), AT_REMOVEDIR);
        return removed < 0 ? Error::FromErrno(-removed, folder.path) : Error();
    });
    if (outcome == ItemOutcome::Done && !record_) run_.CountObject();
    return outcome;
}

}  // namespace vantrel::shell
