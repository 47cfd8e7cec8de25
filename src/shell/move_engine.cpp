#include "shell/move_engine.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/copy_batch.h"
#include "shell/delete_engine.h"
#include "shell/roots.h"
#include "shell/temporary_files.h"
#include "shell/trash_guard.h"

namespace vantrel::shell {
namespace {

constexpr std::size_t kBatchObjects = 2'000;
constexpr std::uint64_t kBatchBytes = std::uint64_t{512} << 20;

// The last look at both before one is renamed over the other; a question may have stood in between.
Error RefuseChangedNow(ShellRun& run, const Place& from, const Statx& source, const Place& to,
                       const TargetLook& look) {
    if (!look.exists) return {};
    Statx now{};
    int looked = Look(run.calls, from, LinkPolicy::DoNotFollow, now);
    if (looked < 0) return Error::FromErrno(-looked, from.Path());
    if (Error error = run.RefuseChanged(from, SightingOf(source), &now); !error.IsOk()) return error;
    looked = Look(run.calls, to, LinkPolicy::DoNotFollow, now);
    if (looked < 0 && looked != -ENOENT) return Error::FromErrno(-looked, to.Path());
    return run.RefuseChanged(to, SightingOf(look.stat), looked == 0 ? &now : nullptr);
}

}  // namespace

ItemOutcome MoveEngine::Move(std::size_t item, const Place& from, const Place& to) {
    run_.ShowItem(from, &to);
    Way way = Way::Renamed;
    ItemOutcome outcome = RenameOrTellWay(from, to, way);
    if (outcome != ItemOutcome::Done || way == Way::Renamed) return outcome;
    if (way == Way::Merge) return MergeFolder(from, to);
    // What is not wholly copied keeps its whole source.
    outcome = CopyEngine(run_, &record_).Copy(from, to);
    if (outcome == ItemOutcome::Done) pending_.push_back({item, from.Path()});
    return outcome;
}

bool MoveEngine::BatchIsFull() const {
    return record_.Count() >= kBatchObjects || run_.result.bytesDone - bytesAtLastSync_ >= kBatchBytes;
}

void MoveEngine::FinishPending(std::vector<ShellItem>& items) {
    if (pending_.empty()) return;
    const Error synced = run_.shared.batch->Finish(*run_.copies);
    for (const Pending& pending : pending_) {
        ShellItem& item = items[pending.item];
        if (run_.lostItems.contains(pending.item)) continue;
        if (!synced.IsOk()) {
            run_.RecordFailure(pending.path, synced);
            item.outcome = ItemOutcome::Failed;
            item.error = synced;
            continue;
        }
        const std::size_t troublesBefore = run_.result.troubles.size();
        Folder holder, shown;
        shown.path = GetParentFolderName(pending.path);
        Place place{&holder, {}};
        item.outcome = run_.Attempt(
            {&shown, NameToSystem(GetLastItemInPath(pending.path))},
            [&](ItemOutcome&) { return run_.roots->OpenHolder(pending.path, holder, place.name); });
        if (item.outcome == ItemOutcome::Done) item.outcome = DeleteEngine(run_, &record_).Delete(place);
        if (run_.result.troubles.size() > troublesBefore)
            item.error = run_.result.troubles[troublesBefore].error;
    }
    pending_.clear();
    record_ = {};
    bytesAtLastSync_ = run_.result.bytesDone;
}

ItemOutcome MoveEngine::RenameOrTellWay(const Place& from, const Place& to, Way& way) {
    bool mayReplace = false;
    const ItemOutcome outcome =
        run_.Attempt(from, [&](ItemOutcome& result) { return TryRename(from, to, mayReplace, way, result); });
    if (outcome == ItemOutcome::Done && way == Way::Renamed) run_.CountObject();
    return outcome;
}

Error MoveEngine::TryRename(const Place& from, const Place& to, bool& mayReplace, Way& way,
                            ItemOutcome& outcome) {
    Statx source{};
    int looked = Look(calls_, from, LinkPolicy::DoNotFollow, source);
    if (depth_ == 0 && (looked == 0 || looked == -ENOENT)) {
        const Statx* now = looked == 0 ? &source : nullptr;
        if (Error error = run_.RefuseChanged(from, run_.expected->source, now); !error.IsOk()) return error;
    }
    if (looked < 0) return Error::FromErrno(-looked, from.Path());
    if (IsFolder(source) && depth_ == 0) {
        if (Error error = RefuseTrashWithin(run_.shared, from); !error.IsOk()) return error;
        if (Error error = RefuseChangedBelow(run_, from); !error.IsOk()) return error;
        if (Error error = RefuseIntoItself(calls_, IdOf(source), *to.folder, from.Path()); !error.IsOk())
            return error;
    }
    TargetLook look;
    if (Error error = LookAtTarget(run_, from, source, to, depth_, look); !error.IsOk()) return error;
    if (look.exists && IsFolder(source)) {
        Statx target{};
        looked = Look(calls_, to, LinkPolicy::Follow, target);
        if (looked < 0) return Error::FromErrno(-looked, to.Path());
        way = MountOf(source) == MountOf(target) ? Way::Merge : Way::Copy;
        return {};
    }
    if (look.exists && !mayReplace && MountOf(source) == to.folder->mount) {
        outcome = run_.AskToOverwrite(from, source, to, look.stat);
        if (outcome != ItemOutcome::Done) return {};
        mayReplace = true;
    }
    if (Error error = RefuseChangedNow(run_, from, source, to, look); !error.IsOk()) return error;
    const int result = look.exists
                           ? calls_.RenameAt(from.Fd(), from.name.c_str(), to.Fd(), to.name.c_str(), 0)
                           : RenameWithoutReplacing(calls_, from, to);
    if (result == -EXDEV) {
        way = Way::Copy;
        return {};
    }
    if (result < 0) return Error::FromErrno(-result, (result == -EEXIST ? to : from).Path());
    run_.shared.NoteRenamed(source);
    if (look.exists) run_.shared.NoteRenamed(look.stat);
    run_.NotePlaced(IdOf(source), to);
    run_.shared.batch->GiveTimesAgain(*to.folder);
    return {};
}

// Inside a folder that is being merged nothing can wait: the folder itself is to go when it is empty.
ItemOutcome MoveEngine::MoveInside(const Place& from, const Place& to) {
    run_.ShowItem(from, &to);
    Way way = Way::Renamed;
    ItemOutcome outcome = RenameOrTellWay(from, to, way);
    if (outcome != ItemOutcome::Done || way == Way::Renamed) return outcome;
    if (way == Way::Merge) return MergeFolder(from, to);
    CopyRecord record;
    outcome = CopyEngine(run_, &record).Copy(from, to);
    if (outcome != ItemOutcome::Done) return outcome;
    const Error synced = run_.shared.batch->Finish(*run_.copies);
    if (record.HasLoss()) return run_.result.cancelled ? ItemOutcome::NotReached : ItemOutcome::Failed;
    if (!synced.IsOk()) {
        run_.RecordFailure(from.Path(), synced);
        return ItemOutcome::Failed;
    }
    return DeleteEngine(run_, &record).Delete(from);
}

ItemOutcome MoveEngine::MergeFolder(const Place& from, const Place& to) {
    const ShellRun::Level level(run_);
    Folder source;
    const auto shared = std::make_shared<Folder>();
    Folder& target = *shared;
    std::vector<std::string> names;
    ItemOutcome outcome = run_.Attempt(from, [&](ItemOutcome&) -> Error {
        if (Error error = run_.RefuseTooDeep(from); !error.IsOk()) return error;
        if (Error error = OpenFolderAt(calls_, from, LinkPolicy::DoNotFollow, source); !error.IsOk())
            return error;
        if (Error error = OpenTargetFolder(run_, to, target); !error.IsOk()) return error;
        if (run_.request.ignoreLetterCase) {
            if (const int learned = LearnNames(calls_, target); learned < 0)
                return Error::FromErrno(-learned, target.path);
        }
        if (run_.targetFolders.contains(source.id) || source.id == target.id)
            return {ErrorNumber::PathFileAccess, "The folder \"" + source.path + "\" cannot go into itself"};
        names.clear();
        const int listed = ListNames(calls_, source, names);
        return listed < 0 ? Error::FromErrno(-listed, source.path) : Error();
    });
    if (outcome != ItemOutcome::Done) return outcome;
    run_.targetFolders.insert(target.id);
    run_.NoteFolder(to);
    SweepTemporaryFiles(run_.shared, target);
    ++depth_;
    for (const std::string& name : names) {
        const ItemOutcome child = MoveInside({&source, name}, TargetPlace(calls_, target, name));
        outcome = Worse(outcome, child);
        if (child == ItemOutcome::NotReached) break;
    }
    --depth_;
    if (outcome != ItemOutcome::Done) return outcome;
    return run_.Attempt(from, [&](ItemOutcome&) -> Error {
        const int removed = calls_.UnlinkAt(from.Fd(), from.name.c_str(), AT_REMOVEDIR);
        return removed < 0 ? Error::FromErrno(-removed, from.Path()) : Error();
    });
}

ItemOutcome RenameObject(ShellRun& run, const Place& from, const Place& to) {
    const ItemOutcome outcome = run.Attempt(from, [&](ItemOutcome&) -> Error {
        Statx source{}, target{};
        if (const int looked = Look(run.calls, from, LinkPolicy::DoNotFollow, source); looked < 0)
            return Error::FromErrno(-looked, from.Path());
        if (Error error = run.RefuseChanged(from, run.expected->source, &source); !error.IsOk()) return error;
        const int looked = Look(run.calls, to, LinkPolicy::DoNotFollow, target);
        if (looked < 0 && looked != -ENOENT) return Error::FromErrno(-looked, to.Path());
        // One file with one name that answers to both: the file system does not tell letter cases apart.
        const bool otherCaseOfItself = looked == 0 && IdOf(source) == IdOf(target) &&
                                       from.folder->id == to.folder->id && from.name != to.name &&
                                       (source.stx_nlink == 1 || IsFolder(source)) &&
                                       EqualIgnoringCase(NameFromSystem(from.name), NameFromSystem(to.name));
        if (looked == 0 && !otherCaseOfItself) return Error::FromErrno(EEXIST, to.Path());
        const int result = otherCaseOfItself
                               ? run.calls.RenameAt(from.Fd(), from.name.c_str(), to.Fd(), to.name.c_str(), 0)
                               : RenameWithoutReplacing(run.calls, from, to);
        return result < 0 ? Error::FromErrno(-result, (result == -EEXIST ? to : from).Path()) : Error();
    });
    if (outcome == ItemOutcome::Done) run.CountObject();
    return outcome;
}

}  // namespace vantrel::shell
