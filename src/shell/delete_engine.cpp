#include "shell/delete_engine.h"

#include <fcntl.h>

#include <cerrno>

namespace vantrel::shell {

ItemOutcome DeleteEngine::Delete(const Place& place) {
    if (!record_) run_.ShowItem(place, nullptr);
    Statx stat{};
    const ItemOutcome outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        if (const int looked = Look(calls_, place, LinkPolicy::DoNotFollow, stat); looked < 0)
            return Error::FromErrno(-looked, place.Path());
        if (IsFolder(stat)) return {};
        if (record_ && !record_->Holds(place, stat)) {
            return {ErrorNumber::PathFileAccess,
                    "\"" + place.Path() + "\" changed after it was copied, and stays"};
        }
        const int removed = calls_.UnlinkAt(place.Fd(), place.name.c_str(), 0);
        return removed < 0 ? Error::FromErrno(-removed, place.Path()) : Error();
    });
    if (outcome != ItemOutcome::Done) return outcome;
    if (IsFolder(stat)) return DeleteFolder(place, stat);
    if (!record_) run_.CountObject();
    return outcome;
}

ItemOutcome DeleteEngine::DeleteFolder(const Place& place, const Statx& listed) {
    const ShellRun::Level level(run_);
    Folder folder;
    std::vector<std::string> names;
    ItemOutcome outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        if (Error error = run_.RefuseTooDeep(place); !error.IsOk()) return error;
        if (Error error = OpenFolderAt(calls_, place, LinkPolicy::DoNotFollow, folder); !error.IsOk())
            return error;
        if (folder.id != IdOf(listed)) return Error::FromErrno(ESTALE, folder.path);
        if (folder.mount != place.folder->mount) {
            return {ErrorNumber::PermissionDenied,
                    "\"" + folder.path + "\" belongs to another file system that is mounted there"};
        }
        names.clear();
        const int result = ListNames(calls_, folder, names);
        return result < 0 ? Error::FromErrno(-result, folder.path) : Error();
    });
    if (outcome != ItemOutcome::Done) return outcome;
    for (const std::string& name : names) {
        const ItemOutcome child = Delete({&folder, name});
        outcome = Worse(outcome, child);
        if (child == ItemOutcome::NotReached) break;
    }
    if (outcome != ItemOutcome::Done) return outcome;
    outcome = run_.Attempt(place, [&](ItemOutcome&) -> Error {
        const int removed = calls_.UnlinkAt(place.Fd(), place.name.c_str(), AT_REMOVEDIR);
        return removed < 0 ? Error::FromErrno(-removed, folder.path) : Error();
    });
    if (outcome == ItemOutcome::Done && !record_) run_.CountObject();
    return outcome;
}

}  // namespace vantrel::shell
