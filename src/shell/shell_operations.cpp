#include "shell/shell_operations.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/copy_batch.h"
#include "shell/copy_engine.h"
#include "shell/delete_engine.h"
#include "shell/move_engine.h"
#include "shell/roots.h"
#include "shell/shell_run.h"
#include "shell/temporary_files.h"
#include "shell/trash.h"

namespace vantrel {

using namespace shell;

// Copies of single files wait for FinishCopies, which tells what became of them.
struct SystemShellOperations::State : Shared, CopyOwner {
    using Shared::Shared;
    Error MayPublish() override { return roots ? roots->Verify() : Error(); }
    bool CancelAsked() override { return false; }
    bool TriesAgain(const ToldCopy&, const Error&) override { return false; }
    void Lost(const ToldCopy& copy, Loss, const Error& error) override {
        failed.push_back({copy.source, copy.target, error});
    }

    // Counts what is over, whatever became of it, where a series is under way.
    void NoteInSeries(std::uint64_t objects, std::uint64_t bytes) {
        if (!series) return;
        series->done.objects += objects;
        series->done.bytes += bytes;
        parts.progress.Advance(series->done);
    }

    // All that waits is to get its name below the same roots.
    Error OpenRoots(const std::vector<ShellRoot>& wanted) {
        const auto same = [](const ShellRoot& one, const ShellRoot& other) {
            return one.path == other.path && one.id == other.id;
        };
        if (roots && std::ranges::equal(roots->Given(), wanted, same)) return roots->Verify();
        if (roots) CloseRoots();
        auto opening = std::make_unique<Roots>(*this, wanted);
        if (Error error = opening->Open(); !error.IsOk()) return error;
        roots = std::move(opening);
        return {};
    }
    void CloseRoots() {
        const Error synced = batch->Finish(*this);
        batch->Forget(*this);
        roots.reset();
        names.Clear();
        takesTwinsForOne.clear();
        if (!synced.IsOk() && failed.empty()) failed.push_back({{}, {}, synced});
    }

    std::unique_ptr<Roots> roots;  // of the single copies; null: there were none since FinishCopies
    GivenNames names;              // as long
    std::vector<FailedCopy> failed;
};

namespace {

// Copies of one request.
class RunCopies : public CopyOwner {
  public:
    RunCopies(ShellRun& run, const Roots& roots) : run_(run), roots_(roots) {}
    Error MayPublish() override { return roots_.Verify(); }
    bool CancelAsked() override { return run_.CancelAsked(); }
    bool TriesAgain(const ToldCopy& copy, const Error& error) override {
        return run_.AnswerTrouble(copy.source, error) == ErrorAnswer::Retry;
    }
    void Lost(const ToldCopy& copy, Loss loss, const Error& error) override {
        run_.TakeBack(copy.objects, copy.bytes);
        if (copy.record) copy.record->NoteLoss();
        if (loss == Loss::NotSafe) {
            run_.RecordFailure(copy.source, error);
            if (notSafe.IsOk()) notSafe = error;
        }
        const ItemOutcome outcome = loss == Loss::Cancelled ? ItemOutcome::NotReached : ItemOutcome::Failed;
        const auto known = run_.lostItems.try_emplace(copy.item, outcome, error).first;
        known->second.first = Worse(known->second.first, outcome);
        if (known->second.second.IsOk()) known->second.second = error;
    }

    Error notSafe;  // the first one

  private:
    ShellRun& run_;
    const Roots& roots_;
};

// The work of one request: opens what the items need and hands each to its engine.
class Dispatcher {
  public:
    Dispatcher(Shared& shared, const ShellRequest& request, ShellResult& result)
        : run_(shared, request, result),
          mover_(run_),
          roots_(shared, request.roots),
          copies_(run_, roots_),
          request_(request),
          result_(result) {
        run_.roots = &roots_;
        run_.copies = &copies_;
    }

    // Where a port has thrown, copies may still wait.
    ~Dispatcher() { run_.shared.batch->Forget(copies_); }
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    void Work() {
        for (const std::string& source : request_.sources) result_.items.push_back({source, {}, {}});
        // A series is shown already, with totals of its own.
        const bool shows = !request_.silent && !run_.shared.series;
        const Shown shown(shows ? &run_.shared.parts.progress : nullptr, request_.operation);
        if (RootLost(roots_.Open())) return;
        if (shows) run_.shared.parts.progress.SetTotals(Count());
        for (std::size_t i = 0; i < request_.sources.size() && !RootLost(roots_.Verify()); ++i) {
            WorkOn(i);
            if (mover_.BatchIsFull()) mover_.FinishPending(result_.items);
        }
        mover_.FinishPending(result_.items);
        SyncAtTheEnd();
        result_.notKept = std::exchange(run_.shared.notKept, {});
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
    // Told once, with no way to try again: what was to be done was thought of for another folder.
    bool RootLost(const Error& error) {
        if (error.IsOk()) return false;
        result_.rootLost = true;
        run_.RecordFailure(request_.target.empty() ? request_.sources.front() : request_.target, error);
        if (!request_.noErrorUi) {
            run_.shared.parts.questions.AskAboutError({request_.operation, request_.target, error});
            result_.anyOperationsAborted = true;
        }
        return true;
    }

    // Opens the folder that holds `path` anew only when it is another than last time.
    Error OpenSource(const std::string& path, Place& place) {
        const std::string_view name = GetLastItemInPath(path);
        if (holder_.fd.IsOpen() && !name.empty() && name != "." && name != ".." &&
            path.size() > name.size() && GetParentFolderName(path) == holder_.path) {
            place.name = NameToSystem(name);
        } else {
            holder_ = Folder();
            if (Error error = roots_.OpenHolder(path, holder_, place.name); !error.IsOk()) {
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
        target.name = full ? NameToSystem(GetLastItemInPath(request_.target)) : source.name;
        if (full && (target.name.empty() || target.name == "." || target.name == ".."))
            return {ErrorNumber::PathNotFound, "\"" + request_.target + "\" is no path of an object"};
        if (target_) {
            target =
                full ? Place{target_.get(), target.name} : TargetPlace(run_.calls, *target_, source.name);
            return {};
        }
        const std::string folder = full ? GetParentFolderName(request_.target) : request_.target;
        if (folder.empty() || folder.front() != '/')
            return {ErrorNumber::PathNotFound, "\"" + request_.target + "\" is no full path"};
        const FolderMaking making{
            source.folder->path, &copies_, run_.item,
            request_.operation == ShellOperation::Copy ? NameComes::WithRights : NameComes::AtOnce};
        std::shared_ptr<Folder> opening;
        if (Error error = roots_.OpenOrMakeFolder(folder, making, opening); !error.IsOk()) return error;
        Folder& opened = *opening;
        if (!full && request_.ignoreLetterCase) {
            if (const int learned = LearnNames(run_.calls, opened); learned < 0)
                return Error::FromErrno(-learned, folder);
        }
        target_ = opening;
        target = full ? Place{&opened, target.name} : TargetPlace(run_.calls, opened, source.name);
        run_.targetFolders.insert(opened.id);
        if (request_.operation != ShellOperation::Rename) SweepTemporaryFiles(run_.shared, opened);
        return {};
    }

    void WorkOn(std::size_t i) {
        ShellItem& item = result_.items[i];
        run_.item = i;
        run_.expected = i < request_.expected.size() ? &request_.expected[i] : &run_.kNothingExpected;
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

    // A full disk can show only here: then nothing of the last batch is known to be safe.
    void SyncAtTheEnd() {
        const Error synced = run_.shared.batch->Finish(copies_);
        for (const auto& [item, lost] : run_.lostItems) {
            ShellItem& at = result_.items[item];
            at.outcome = Worse(at.outcome, lost.first);
            if (at.error.IsOk()) at.error = lost.second;
        }
        const Error& error = copies_.notSafe.IsOk() ? synced : copies_.notSafe;
        if (error.IsOk()) return;
        for (ShellItem& item : result_.items) {
            if (synced.IsOk() || item.outcome != ItemOutcome::Done ||
                request_.operation != ShellOperation::Copy)
                continue;
            run_.RecordFailure(item.path, synced);
            item.error = synced;
            item.outcome = ItemOutcome::Failed;
        }
        if (result_.code == 0) run_.RecordFailure(request_.target, error);
        if (!request_.noErrorUi) {
            // Trying again would only hide it: the system tells such an error once.
            run_.shared.parts.questions.AskAboutError({request_.operation, request_.target, error});
            result_.anyOperationsAborted = true;
        }
    }

    ShellRun run_;
    MoveEngine mover_;
    Roots roots_;
    RunCopies copies_;
    const ShellRequest& request_;
    ShellResult& result_;
    Folder holder_;
    std::shared_ptr<Folder> target_;  // null: not open yet
};

}  // namespace

SystemShellOperations::SystemShellOperations(const Parts& parts) : state_(std::make_unique<State>(parts)) {
}
SystemShellOperations::~SystemShellOperations() = default;

ShellResult SystemShellOperations::Run(const ShellRequest& request) {
    const ManyOpenFiles manyOpenFiles;
    // What is read, removed or renamed may be what waits for its name.
    state_->batch->Publish();
    if (request.operation != ShellOperation::Copy) state_->batch->NameKept(*state_);
    state_->takesTwinsForOne.clear();
    ShellResult result;
    result.operation = request.operation;
    Dispatcher(*state_, request, result).Work();
    state_->NoteInSeries(request.sources.size(), result.bytesDone);
    return result;
}

Error SystemShellOperations::CopyOneFile(const OneFile& file) {
    if (Error error = state_->OpenRoots(file.roots); !error.IsOk()) return error;
    const Roots& roots = *state_->roots;
    Folder fromHolder;
    auto toHolder = std::make_shared<Folder>();
    Place source{&fromHolder, {}}, target;
    if (Error error = roots.OpenHolder(file.path, fromHolder, source.name); !error.IsOk()) return error;
    if (file.makesFolders) {
        const std::string above = GetParentFolderName(file.target);
        const FolderMaking making{GetParentFolderName(file.path), state_.get()};
        if (Error error = roots.OpenOrMakeFolder(above, making, toHolder); !error.IsOk()) return error;
        target.name = NameToSystem(GetLastItemInPath(file.target));
    } else if (Error error = roots.OpenHolder(file.target, *toHolder, target.name); !error.IsOk()) {
        return error;
    }
    target.folder = toHolder.get();
    SweepTemporaryFiles(*state_, *toHolder);
    if (state_->batch->Holds(source) || state_->batch->Holds(target)) state_->batch->Publish();
    ShellRequest request;
    request.noConfirmation = request.noErrorUi = true;
    request.silent = !state_->series;
    ShellResult result;
    ShellRun run(*state_, request, result);
    run.expected = &file.expected;
    run.copies = state_.get();
    run.names = &state_->names;
    Statx stat{};
    if (const int looked = Look(state_->calls, source, LinkPolicy::DoNotFollow, stat); looked < 0)
        return Error::FromErrno(-looked, file.path);
    if (IsFolder(stat)) return Error::FromErrno(EISDIR, file.path);
    const ItemOutcome outcome = CopyEngine(run).Copy(source, target);
    if (outcome == ItemOutcome::Done) {
        state_->NoteInSeries(1, result.bytesDone);
        return {};
    }
    if (!result.troubles.empty()) return result.troubles.front().error;
    return Error::FromErrno(ECANCELED, file.path);
}

ShellOperations::FinishedCopies SystemShellOperations::FinishCopies() {
    state_->CloseRoots();
    FinishedCopies finished;
    finished.failed = std::exchange(state_->failed, {});
    finished.notKept = std::exchange(state_->notKept, {});
    return finished;
}

Error SystemShellOperations::DeleteOneFile(const OneFile& file) {
    if (state_->series) state_->parts.progress.Item(file.path, {});
    Roots roots(*state_, file.roots);
    if (Error error = roots.Open(); !error.IsOk()) return error;
    Folder holder;
    Place place{&holder, {}};
    if (Error error = roots.OpenHolder(file.path, holder, place.name); !error.IsOk()) return error;
    if (state_->batch->Holds(place)) state_->batch->Publish();
    Statx stat{};
    const int looked = Look(state_->calls, place, LinkPolicy::DoNotFollow, stat);
    const Statx* now = looked == 0 ? &stat : nullptr;
    if (looked == 0 || looked == -ENOENT) {
        Error error = RefuseChanged(state_->calls, place, file.expected.source, now, state_->renamed);
        if (!error.IsOk()) return error;
    }
    if (looked < 0) return Error::FromErrno(-looked, file.path);
    const int removed = state_->calls.UnlinkAt(place.Fd(), place.name.c_str(), 0);
    if (removed == 0) state_->NoteRenamed(stat);
    if (removed == 0) state_->NoteInSeries(1, 0);
    return Error::FromErrno(-removed, file.path);
}

void SystemShellOperations::BeginSeries(const Series& series) {
    state_->series.emplace();
    ShellProgress& progress = state_->parts.progress;
    progress.Begin(series.operation);
    progress.SetTitle(series.title);
    progress.SetTotals(series.totals);
}

void SystemShellOperations::EndSeries() {
    state_->series.reset();
    state_->parts.progress.End();
}

bool SystemShellOperations::SeriesCancelled() {
    return state_->series && state_->parts.progress.CancelAsked();
}

}  // namespace vantrel
