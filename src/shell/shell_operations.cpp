#include "shell/shell_operations.h"

#include <cerrno>
#include <utility>

#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/copy_engine.h"
#include "shell/delete_engine.h"
#include "shell/move_engine.h"
#include "shell/shell_run.h"
#include "shell/temporary_files.h"
#include "shell/trash.h"

namespace vantrel {

using namespace shell;

struct SystemShellOperations::State : Shared {
    using Shared::Shared;
};

namespace {

// The work of one request: opens what the items need and hands each to its engine.
class Dispatcher {
  public:
    Dispatcher(Shared& shared, const ShellRequest& request, ShellResult& result)
        : run_(shared, request, result), mover_(run_), request_(request), result_(result) {}

    void Work() {
        for (const std::string& source : request_.sources) result_.items.push_back({source, {}, {}});
        const Shown shown(request_.silent ? nullptr : &run_.shared.parts.progress, request_.operation);
        if (!request_.silent) run_.shared.parts.progress.SetTotals(Count());
        for (std::size_t i = 0; i < request_.sources.size(); ++i) {
            WorkOn(i);
            if (mover_.BatchIsFull()) mover_.FinishPending(result_.items);
        }
        mover_.FinishPending(result_.items);
        SyncAtTheEnd();
    }

  private:
    struct Shown {
        Shown(ShellProgress* shownProgress, ShellOperation operation) : progress(shownProgress) {
            if (progress) progress->Begin(operation);
        }
        ~Shown() {
            if (progress) progress->End();
        }
        ShellProgress* progress;
    };
    // Opens the folder that holds `path` anew only when it is another than last time.
    Error OpenSource(const std::string& path, Place& place) {
        const std::string_view name = GetLastItemInPath(path);
        if (holder_.fd.IsOpen() && !name.empty() && name != "." && name != ".." &&
            path.size() > name.size() && GetParentFolderName(path) == holder_.path) {
            place.name = NameToSystem(name);
        } else {
            holder_ = Folder();
            if (Error error = OpenHolder(run_.shared.files, path, holder_, place.name); !error.IsOk()) {
                holder_ = Folder();
                return error;
            }
        }
        place.folder = &holder_;
        return {};
    }

    Error OpenTarget(const Place& source, Place& target) {
        const bool full = request_.operation == ShellOperation::Rename || request_.targetIsFullPath;
        if (full && request_.sources.size() != 1)
            return {ErrorNumber::BadFileNameOrNumber, "One target path serves one object only"};
        target.folder = &target_;
        target.name = full ? NameToSystem(GetLastItemInPath(request_.target)) : source.name;
        if (full && (target.name.empty() || target.name == "." || target.name == ".."))
            return {ErrorNumber::PathNotFound, "\"" + request_.target + "\" is no path of an object"};
        if (target_.fd.IsOpen()) {
            if (!full) target = TargetPlace(run_.calls, target_, source.name);
            return {};
        }
        const std::string folder = full ? GetParentFolderName(request_.target) : request_.target;
        if (folder.empty() || folder.front() != '/')
            return {ErrorNumber::PathNotFound, "\"" + request_.target + "\" is no full path"};
        Folder opened;
        if (Error error = OpenOrMakeFolder(run_.shared.files, folder, opened); !error.IsOk()) return error;
        if (!full && request_.ignoreLetterCase) {
            if (const int learned = LearnNames(run_.calls, opened); learned < 0)
                return Error::FromErrno(-learned, folder);
        }
        target_ = std::move(opened);
        if (!full) target = TargetPlace(run_.calls, target_, source.name);
        run_.targetFolders.insert(target_.id);
        if (request_.operation != ShellOperation::Rename) SweepTemporaryFiles(run_.shared, target_);
        return {};
    }

    void WorkOn(std::size_t i) {
        ShellItem& item = result_.items[i];
        const std::size_t troublesBefore = result_.troubles.size();
        Folder nowhere;
        nowhere.path = GetParentFolderName(item.path);
        Place from{&nowhere, NameToSystem(GetLastItemInPath(item.path))};
        Place to;
        const bool hasTarget =
            request_.operation != ShellOperation::Delete && request_.operation != ShellOperation::Recycle;
        const ItemOutcome opened = run_.Attempt(from, [&](ItemOutcome&) -> Error {
            if (Error error = OpenSource(item.path, from); !error.IsOk()) return error;
            return hasTarget ? OpenTarget(from, to) : Error();
        });
        item.outcome = opened == ItemOutcome::Done ? HandOver(i, from, to) : opened;
        if (result_.troubles.size() > troublesBefore) item.error = result_.troubles[troublesBefore].error;
    }

    ItemOutcome HandOver(std::size_t i, const Place& from, const Place& to) {
        switch (request_.operation) {
            case ShellOperation::Copy:
                return CopyEngine(run_).Copy(from, to);
            case ShellOperation::Move:
                return mover_.Move(i, from, to);
            case ShellOperation::Delete:
                return DeleteEngine(run_).Delete(from);
            case ShellOperation::Recycle:
                return Trash(run_).Recycle(from);
            case ShellOperation::Rename:
                return RenameObject(run_, from, to);
        }
        return ItemOutcome::Failed;
    }

    ShellProgress::Totals Count() {
        ShellProgress::Totals totals;
        const bool walks = request_.operation == ShellOperation::Copy ||
                           request_.operation == ShellOperation::Delete ||
                           (request_.operation == ShellOperation::Move && !request_.sources.empty() &&
                            !run_.shared.parts.volumes.OnSameDrive(
                                GetParentFolderName(request_.sources.front()), request_.target));
        if (!walks) return {request_.sources.size(), 0};
        for (const std::string& source : request_.sources) {
            Place place;
            const Error error = OpenSource(source, place);
            if (error.IsOk()) CountTree(run_, place, request_.operation != ShellOperation::Delete, totals);
        }
        return totals;
    }

    // A full disk can show only here: then nothing of this batch is known to be safe.
    void SyncAtTheEnd() {
        const Error synced = run_.shared.Sync();
        if (synced.IsOk()) return;
        for (ShellItem& item : result_.items) {
            if (item.outcome == ItemOutcome::NotReached || request_.operation != ShellOperation::Copy)
                continue;
            if (item.outcome == ItemOutcome::Done) {
                run_.RecordFailure(item.path, synced);
                item.error = synced;
            }
            item.outcome = ItemOutcome::Failed;
        }
        if (result_.code == 0) run_.RecordFailure(request_.target, synced);
        if (!request_.noErrorUi) {
            // Trying again would only hide it: the system tells such an error once.
            run_.shared.parts.questions.AskAboutError({request_.operation, request_.target, synced});
            result_.anyOperationsAborted = true;
        }
    }

    ShellRun run_;
    MoveEngine mover_;
    const ShellRequest& request_;
    ShellResult& result_;
    Folder holder_, target_;
};

}  // namespace

SystemShellOperations::SystemShellOperations(const Parts& parts) : state_(std::make_unique<State>(parts)) {
}
SystemShellOperations::~SystemShellOperations() = default;

ShellResult SystemShellOperations::Run(const ShellRequest& request) {
    const ManyOpenFiles manyOpenFiles;
    ShellResult result;
    Dispatcher(*state_, request, result).Work();
    return result;
}

Error SystemShellOperations::CopyOneFile(std::string_view from, std::string_view to) {
    Folder fromHolder, toHolder;
    Place source{&fromHolder, {}}, target{&toHolder, {}};
    if (Error error = OpenHolder(state_->files, from, fromHolder, source.name); !error.IsOk()) return error;
    if (Error error = OpenHolder(state_->files, to, toHolder, target.name); !error.IsOk()) return error;
    SweepTemporaryFiles(*state_, toHolder);
    ShellRequest request;
    request.noConfirmation = request.silent = request.noErrorUi = true;
    ShellResult result;
    ShellRun run(*state_, request, result);
    Statx stat{};
    if (const int looked = Look(state_->calls, source, LinkPolicy::DoNotFollow, stat); looked < 0)
        return Error::FromErrno(-looked, from);
    if (IsFolder(stat)) return Error::FromErrno(EISDIR, from);
    const ItemOutcome outcome = CopyEngine(run).Copy(source, target);
    if (outcome == ItemOutcome::Done) {
        state_->singleCopiesWait = true;
        return {};
    }
    if (!result.troubles.empty()) return result.troubles.front().error;
    return Error::FromErrno(ECANCELED, from);
}

Error SystemShellOperations::SyncCopies() {
    const Error synced = state_->Sync();
    state_->singleCopiesWait = false;
    const Error earlier = std::exchange(state_->failedSync, {});
    return synced.IsOk() ? earlier : synced;
}

Error SystemShellOperations::DeleteOneFile(std::string_view path) {
    Folder holder;
    std::string name;
    if (Error error = OpenHolder(state_->files, path, holder, name); !error.IsOk()) return error;
    const int removed = state_->calls.UnlinkAt(holder.fd.Get(), name.c_str(), 0);
    return removed < 0 ? Error::FromErrno(-removed, path) : Error();
}

}  // namespace vantrel
