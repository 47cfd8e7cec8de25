#include "shell/copy_engine.h"

#include <fcntl.h>

#include <cerrno>

#include "shell/copy_batch.h"
#include "shell/temporary_files.h"
#include "shell/trash_guard.h"

namespace vantrel::shell {
namespace {

Error InTheWay(const Place& to, const char* what) {
    return {ErrorNumber::FileAlreadyExists, std::string(what) + " \"" + to.Path() + "\" is in the way"};
}

Error TheSame(const Place& from, const Place& to) {
    return {ErrorNumber::FileAlreadyExists,
            "\"" + from.Path() + "\" and \"" + to.Path() + "\" are the same object"};
}

}  // namespace

std::string CopyRecord::KeyOf(const Place& from) {
    std::string key(reinterpret_cast<const char*>(&from.folder->id), sizeof from.folder->id);
    return key += from.name;
}

bool CopyRecord::Holds(const Place& from, const Statx& now) const {
    const auto found = copied_.find(KeyOf(from));
    return found != copied_.end() && IdOf(found->second) == IdOf(now) && SameSizeAndTime(found->second, now);
}

Error LookAtTarget(ShellRun& run, const Place& from, const Statx& source, const Place& to, int depth,
                   TargetLook& look) {
    look = {};
    int looked = Look(run.calls, to, LinkPolicy::DoNotFollow, look.stat);
    if (looked < 0 && looked != -ENOENT) return Error::FromErrno(-looked, to.Path());
    look.exists = looked == 0;
    if (depth == 0) {
        if (Error error = run.RefuseChanged(to, run.expected->target, look.Now()); !error.IsOk())
            return error;
    }
    if (!look.exists) return run.WasPlaced({}, to) ? InTheWay(to, "What was put there just now,") : Error();
    if (IdOf(look.stat) == IdOf(source)) return TheSame(from, to);

    Statx end = look.stat;
    bool leadsNowhere = false;
    if (IsLink(look.stat)) {
        looked = Look(run.calls, to, LinkPolicy::Follow, end);
        leadsNowhere = looked < 0;
        if (looked < 0) end = look.stat;
        if (looked == 0 && IdOf(end) == IdOf(source)) return TheSame(from, to);
    }
    bool standsForFolder = false;
    if (IsLink(source)) {
        // A link put over the very file that it leads to would be all that is left of that file.
        Statx leadsTo{};
        const bool leadsSomewhere = Look(run.calls, from, LinkPolicy::Follow, leadsTo) == 0;
        if (leadsSomewhere && IdOf(leadsTo) == IdOf(look.stat)) return TheSame(from, to);
        standsForFolder = leadsSomewhere && IsFolder(leadsTo);
    }
    look.isFolder = IsFolder(end);
    if (IsFolder(source)) {
        if (!look.isFolder) return InTheWay(to, "The file");
        return {};
    }
    if (IsFolder(look.stat)) return InTheWay(to, "The folder");
    // A link is shown as what it leads to: a file and a link to a folder are two objects, neither of which
    // was meant to replace the other. Links may replace links.
    if (IsFile(source) && IsLink(look.stat) && look.isFolder) return InTheWay(to, "The link to a folder");
    if (IsFile(look.stat) && standsForFolder) return InTheWay(to, "The file");
    // One that leads nowhere is not shown at all, so without a question nobody could know that it goes.
    if (IsFile(source) && IsLink(look.stat) && leadsNowhere && run.request.noConfirmation)
        return InTheWay(to, "The link that leads nowhere");
    if (!IsFile(look.stat) && !IsLink(look.stat)) return InTheWay(to, "The special file");
    if (run.WasPlaced(IdOf(look.stat), to)) return InTheWay(to, "What was put there just now,");
    return {};
}

Error RefuseIntoItself(SystemCalls& calls, const FileId& folder, const Folder& inside,
                       std::string_view path) {
    FileId at = inside.id;
    Descriptor climbed;
    int fd = inside.fd.Get();
    for (;;) {
        if (at == folder) {
            return {ErrorNumber::PathFileAccess,
                    "The folder \"" + std::string(path) + "\" cannot go into itself or below itself"};
        }
        const int above = calls.OpenAt(fd, "..", O_PATH | O_DIRECTORY | O_CLOEXEC, 0);
        if (above < 0) return Error::FromErrno(-above, inside.path);
        climbed = Descriptor(calls, above);
        fd = above;
        Statx stat{};
        if (const int looked = LookAtOpen(calls, fd, stat); looked < 0)
            return Error::FromErrno(-looked, inside.path);
        if (IdOf(stat) == at) return {};  // the root is its own parent
        at = IdOf(stat);
    }
}

ItemOutcome CopyEngine::Copy(const Place& from, const Place& to) {
    run_.ShowItem(from, &to);
    bool isFolder = false;
    bool mayReplace = false;
    bool passedOver = false;
    const ItemOutcome outcome = run_.Attempt(from, [&](ItemOutcome& result) -> Error {
        Statx source{};
        const int looked = Look(calls_, from, LinkPolicy::DoNotFollow, source);
        if (depth_ == 0 && (looked == 0 || looked == -ENOENT)) {
            const Statx* now = looked == 0 ? &source : nullptr;
            if (Error error = run_.RefuseChanged(from, run_.expected->source, now); !error.IsOk())
                return error;
        }
        if (looked < 0) return Error::FromErrno(-looked, from.Path());
        isFolder = IsFolder(source);
        if (isFolder) return {};
        if (IsFile(source) || IsLink(source)) return CopyFileOrLink(from, source, to, mayReplace, result);
        passedOver = depth_ > 0 && run_.request.passesOverSpecial;
        if (passedOver) return {};
        return {ErrorNumber::BadFileNameOrNumber,
                "\"" + from.Path() + "\" is a special file. Special files are not copied"};
    });
    if (isFolder && outcome == ItemOutcome::Done) return CopyFolder(from, to);
    if (outcome == ItemOutcome::Done && !passedOver) run_.CountObject();
    if (run_.shared.batch->IsFull()) run_.shared.batch->Publish();
    return outcome;
}

Error CopyEngine::CopyFileOrLink(const Place& from, const Statx& source, const Place& to, bool& mayReplace,
                                 ItemOutcome& outcome) {
    TargetLook look;
    if (Error error = LookAtTarget(run_, from, source, to, depth_, look); !error.IsOk()) return error;
    if (look.exists && !mayReplace) {
        outcome = run_.AskToOverwrite(from, source, to, look.stat);
        if (outcome != ItemOutcome::Done) return {};
        mayReplace = true;
    }
    CopiedFile copied;
    const std::uint64_t before = run_.result.bytesDone;
    Error error;
    if (IsLink(source)) {
        error = CopyLink(run_.shared, from, source, to, copied);
    } else {
        CopyFileOptions options;
        options.found = &source;
        options.verify = record_ != nullptr;
        options.onSlice = [&](std::uint64_t bytes) {
            run_.CountBytes(bytes);
            return !run_.CancelAsked();
        };
        options.onRestart = [&] { run_.TakeBackBytes(before); };
        error = CopyRegularFile(run_.shared, from, to, options, copied);
    }
    if (error.IsOk()) {
        run_.NotePlaced(copied.target, to);
        if (record_) record_->Add(from, copied.source);
        WaitingCopy waiting;
        waiting.written = std::move(copied.written);
        waiting.folder = to.folder->shared_from_this();
        waiting.name = to.name;
        if (look.exists) waiting.replaces = std::make_unique<Statx>(look.stat);
        waiting.source = from.Path();
        waiting.target = to.Path();
        waiting.bytes = run_.result.bytesDone - before;
        waiting.owner = run_.copies;
        waiting.item = run_.item;
        waiting.record = record_;
        run_.shared.batch->Add(std::move(waiting));
        return {};
    }
    run_.TakeBackBytes(before);
    if (error.SystemNumber() != ECANCELED) return error;
    outcome = ItemOutcome::NotReached;
    return {};
}

// Everything that can refuse comes before the target folder is made.
Error CopyEngine::OpenBoth(const Place& from, const Place& to, Folder& source, Folder& target,
                           Statx& sourceStat, FinalRights& final, bool& made,
                           std::vector<std::string>& names) {
    if (Error error = run_.RefuseTooDeep(from); !error.IsOk()) return error;
    if (Error error = OpenFolderAt(calls_, from, LinkPolicy::DoNotFollow, source); !error.IsOk())
        return error;
    if (const int looked = LookAtOpen(calls_, source.fd.Get(), sourceStat); looked < 0)
        return Error::FromErrno(-looked, source.path);
    if (Error error = RefuseTrash(run_.shared, source); !error.IsOk()) return error;
    if (run_.targetFolders.contains(source.id)) {
        return {ErrorNumber::PathFileAccess,
                "The folder \"" + source.path + "\" cannot go into itself or below itself"};
    }
    if (depth_ == 0) {
        if (Error error = RefuseIntoItself(calls_, source.id, *to.folder, source.path); !error.IsOk())
            return error;
    }
    TargetLook look;
    if (Error error = LookAtTarget(run_, from, sourceStat, to, depth_, look); !error.IsOk()) return error;
    if (depth_ == 0) {
        if (Error error = run_.RefuseChanged(from, run_.expected->source, &sourceStat); !error.IsOk())
            return error;
    }
    names.clear();
    if (const int listed = ListNames(calls_, source, names); listed < 0)
        return Error::FromErrno(-listed, source.path);

    if (!look.exists) {
        Error error = MakeFolderLike(run_.shared, source, sourceStat, to, final);
        if (!error.IsOk()) return error;
        made = true;
    }
    Error error = OpenFolderAt(calls_, to, made ? LinkPolicy::DoNotFollow : LinkPolicy::Follow, target);
    if (!error.IsOk()) return error;
    if (made) return {};
    if (error = RefuseTrash(run_.shared, target); !error.IsOk()) return error;
    if (!run_.request.ignoreLetterCase) return {};
    const int learned = LearnNames(calls_, target);
    return learned < 0 ? Error::FromErrno(-learned, target.path) : Error();
}

ItemOutcome CopyEngine::CopyFolder(const Place& from, const Place& to) {
    const ShellRun::Level level(run_);
    Folder source;
    const auto shared = std::make_shared<Folder>();
    Folder& target = *shared;
    Statx sourceStat{};
    FinalRights final;
    std::vector<std::string> names;
    bool made = false;
    ItemOutcome outcome = run_.Attempt(from, [&](ItemOutcome&) {
        return OpenBoth(from, to, source, target, sourceStat, final, made, names);
    });
    if (outcome != ItemOutcome::Done) {
        if (made) calls_.UnlinkAt(to.Fd(), to.name.c_str(), AT_REMOVEDIR);
        return outcome;
    }
    run_.targetFolders.insert(target.id);
    if (!made) SweepTemporaryFiles(run_.shared, target);

    ++depth_;
    for (const std::string& name : names) {
        const ItemOutcome child = Copy({&source, name}, TargetPlace(calls_, target, name));
        outcome = Worse(outcome, child);
        if (child == ItemOutcome::NotReached) break;
    }
    --depth_;
    // The times come after the content, which changes them.
    if (made) run_.shared.batch->AddTimes(shared, sourceStat, final);
    if (outcome == ItemOutcome::Done) {
        run_.CountObject();
        if (record_) record_->Add(from, sourceStat);
    }
    return outcome;
}

void CountTree(ShellRun& run, const Place& place, bool withBytes, ShellProgress::Totals& totals) {
    const ShellRun::Level level(run);
    if (run.CancelAsked() || !run.RefuseTooDeep(place).IsOk()) return;
    Statx stat{};
    if (Look(run.calls, place, LinkPolicy::DoNotFollow, stat) < 0) return;
    ++totals.objects;
    if (withBytes && IsFile(stat)) totals.bytes += stat.stx_size;
    if (!IsFolder(stat)) return;
    Folder folder;
    std::vector<std::string> names;
    const Error error = OpenFolderAt(run.calls, place, LinkPolicy::DoNotFollow, folder);
    if (!error.IsOk() || ListNames(run.calls, folder, names) < 0) return;
    for (const std::string& name : names) CountTree(run, {&folder, name}, withBytes, totals);
}

}  // namespace vantrel::shell
