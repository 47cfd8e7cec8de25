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

// Of two names that the target's file system takes for one the second is left out: it would go over the
// first, or a folder into it.
Error RefuseTwin(ShellRun& run, const Place& to) {
    if (!run.names->HasTwinOf(to)) return {};
    const int result = TakesTwinsForOne(run.shared, to);
    if (result < 0) return Error::FromErrno(-result, to.Path());
    if (result == 0) return {};
    return {ErrorNumber::FileAlreadyExists,
            "\"" + to.Path() +
                "\" is left out: the file system takes this name for that of another object, put there just "
                "now, which differs in letter case"};
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

Error OpenTargetFolder(const ShellRun& run, const Place& to, Folder& out) {
    const LinkPolicy links = run.request.roots.empty() ? LinkPolicy::Follow : LinkPolicy::DoNotFollow;
    return OpenFolderAt(run.calls, to, links, out);
}

Error LookAtTarget(ShellRun& run, const Place& from, const Statx& source, const Place& to, int depth,
                   TargetLook& look) {
    look = {};
    int looked = Look(run.calls, to, LinkPolicy::DoNotFollow, look.stat);
    if (looked < 0 && looked != -ENOENT) return Error::FromErrno(-looked, to.Path());
    look.exists = looked == 0;
    if (Error error = RefuseTwin(run, to); !error.IsOk()) return error;
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

ToldCopy CopyEngine::Told(const Place& from, const Place& to, std::uint64_t objects,
                          std::uint64_t bytes) const {
    return {from.Path(), to.Path(), objects, bytes, run_.copies, run_.item, record_};
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
        static_cast<ToldCopy&>(waiting) = Told(from, to, 1, run_.result.bytesDone - before);
        waiting.written = std::move(copied.written);
        waiting.folder = to.folder->shared_from_this();
        waiting.name = to.name;
        if (look.exists) waiting.replaces = std::make_unique<Statx>(look.stat);
        run_.shared.batch->Add(std::move(waiting));
        return {};
    }
    run_.TakeBackBytes(before);
    if (error.SystemNumber() != ECANCELED) return error;
    outcome = ItemOutcome::NotReached;
    return {};
}

// Everything that can refuse comes before the target folder is made.
Error CopyEngine::OpenBoth(const Place& from, const Place& to, Opened& opened) {
    Folder& source = opened.source;
    opened.made = {};
    if (Error error = run_.RefuseTooDeep(from); !error.IsOk()) return error;
    if (Error error = OpenFolderAt(calls_, from, LinkPolicy::DoNotFollow, source); !error.IsOk())
        return error;
    if (const int looked = LookAtOpen(calls_, source.fd.Get(), opened.stat); looked < 0)
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
    // Two folders of one name, from different places, become one.
    if (run_.shared.batch->HoldsFolder(to)) run_.shared.batch->Publish();
    TargetLook look;
    if (Error error = LookAtTarget(run_, from, opened.stat, to, depth_, look); !error.IsOk()) return error;
    if (depth_ == 0) {
        if (Error error = run_.RefuseChanged(from, run_.expected->source, &opened.stat); !error.IsOk())
            return error;
    }
    opened.names.clear();
    if (const int listed = ListNames(calls_, source, opened.names); listed < 0)
        return Error::FromErrno(-listed, source.path);

    if (!look.exists) {
        Error error =
            MakeFolderLike(run_.shared, source, opened.stat, to, NameComes::WithRights, opened.made);
        opened.target = opened.made.folder;
        return error;
    }
    const auto target = std::make_shared<Folder>();
    opened.target = target;
    Error error = OpenTargetFolder(run_, to, *target);
    if (!error.IsOk()) return error;
    if (error = RefuseTrash(run_.shared, *target); !error.IsOk()) return error;
    if (!run_.request.ignoreLetterCase) return {};
    const int learned = LearnNames(calls_, *target);
    return learned < 0 ? Error::FromErrno(-learned, target->path) : Error();
}

ItemOutcome CopyEngine::CopyFolder(const Place& from, const Place& to) {
    const ShellRun::Level level(run_);
    Opened opened;
    ItemOutcome outcome = run_.Attempt(from, [&](ItemOutcome&) { return OpenBoth(from, to, opened); });
    if (outcome != ItemOutcome::Done) return outcome;
    const bool made = opened.made.folder != nullptr;
    run_.targetFolders.insert(opened.target->id);
    run_.NoteFolder(to);
    if (!made) SweepTemporaryFiles(run_.shared, *opened.target);

    ++depth_;
    for (const std::string& name : opened.names) {
        const ItemOutcome child = Copy({&opened.source, name}, TargetPlace(calls_, *opened.target, name));
        outcome = Worse(outcome, child);
        if (child == ItemOutcome::NotReached) break;
    }
    --depth_;
    if (made) {
        WaitingFolder folder;
        static_cast<ToldCopy&>(folder) = Told(from, to, outcome == ItemOutcome::Done ? 1 : 0, 0);
        folder.made = std::move(opened.made);
        folder.like = opened.stat;
        run_.shared.batch->Add(std::move(folder));
    }
    if (outcome == ItemOutcome::Done) {
        run_.CountObject();
        if (record_) record_->Add(from, opened.stat);
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
