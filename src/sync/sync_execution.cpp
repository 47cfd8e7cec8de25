#include "sync/sync_execution.h"

#include <unordered_map>

#include "fileops/told_at_end.h"
#include "platform/line_end.h"
#include "platform/names/paths.h"
#include "sync/plan_figures.h"

namespace vantrel {
namespace {

class Execution {
  public:
    Execution(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers, AfterFailure afterFailure)
        : plan_(plan), tools_(tools), wrappers_(wrappers), afterFailure_(afterFailure) {}

    SyncReport Run() {
        plan_.ForEach([&](const PlannedAction& action) { report_.actions.push_back({&action, {}, {}}); });
        for (Side side : kBothSides) Phase(plan_.deletes[side], [&](auto& phase) { Recycle(phase); });
        for (Side side : kBothSides) Phase(plan_.copies[side], [&](auto& phase) { Copy(phase); });
        if (MayGoOn()) SubFolders();
        for (const ActionOutcome& action : report_.actions)
            ++(action.outcome == ItemOutcome::Done ? report_.done : report_.notDone);
        Summarise();
        return std::move(report_);
    }

  private:
    using Outcomes = std::vector<ActionOutcome>::iterator;
    struct PhaseSpan {
        Outcomes first, last;
    };

    bool MayGoOn() const {
        return !stopped_ && !rootLost_ && (!report_.cancelled || afterFailure_ == AfterFailure::GoesOn);
    }

    // Takes the outcomes of as many actions as `actions` has, and runs the phase on them unless the run has
    // ended.
    template <typename Work>
    void Phase(const std::vector<PlannedAction>& actions, Work work) {
        PhaseSpan span{report_.actions.begin() + static_cast<std::ptrdiff_t>(position_), {}};
        position_ += actions.size();
        span.last = report_.actions.begin() + static_cast<std::ptrdiff_t>(position_);
        if (!actions.empty() && MayGoOn()) work(span);
    }

    void TakeOver(const ShellResult& result, const std::vector<Outcomes>& of) {
        for (std::size_t i = 0; i < of.size() && i < result.items.size(); ++i) {
            of[i]->outcome = result.items[i].outcome;
            of[i]->error = result.items[i].error;
        }
        TakeTroubles(result, of);
        Took(result);
        if (result.operation != ShellOperation::Copy) return;
        report_.summary.copied += result.objectsDone;
        report_.summary.copiedBytes += Currency::FromWhole(static_cast<std::int64_t>(result.bytesDone));
    }

    void Took(const ShellResult& result) {
        report_.cancelled |= !result.AllDone();
        report_.notKept += result.notKept;
        rootLost_ |= result.rootLost;
        stopped_ |= result.cancelled;
    }

    // What the phases have copied is in the summary already, for a folder can be copied in part.
    void Summarise() {
        OperationSummary& summary = report_.summary;
        for (const ActionOutcome& at : report_.actions) {
            const PlannedAction& action = *at.action;
            if (at.outcome == ItemOutcome::NotReached) ++summary.notReached;
            if (at.outcome != ItemOutcome::Done) continue;
            if (action.action == SyncAction::Delete) {
                (DeletesForGood(action) ? summary.deleted : summary.recycled) += ObjectsOf(action);
            } else if (!action.folder.empty()) {
                ++summary.copied;
                summary.copiedBytes += action.room;
            }
        }
        for (const SyncTrouble& trouble : report_.troubles) summary.AddNotDone(trouble.path, trouble.error);
    }

    // A trouble belongs to the action whose object, or target, it is or lies below.
    void TakeTroubles(const ShellResult& result, const std::vector<Outcomes>& of) {
        if (result.troubles.empty()) return;
        std::unordered_map<std::string_view, const PlannedAction*> byPath;
        for (const Outcomes& at : of) {
            byPath.emplace(at->action->source, at->action);
            if (!at->action->target.empty()) byPath.emplace(at->action->target, at->action);
        }
        for (const ShellItem& trouble : result.troubles) {
            const PlannedAction* action = nullptr;
            for (std::string path = trouble.path; !path.empty() && !action; path = GetParentFolderName(path))
                if (const auto found = byPath.find(path); found != byPath.end()) action = found->second;
            report_.troubles.push_back({action, trouble.path, trouble.error});
        }
    }

    // The objects of `actions` with what was seen of them.
    struct Objects {
        std::vector<std::string> sources;
        ShellWrappers::Options options;
        std::vector<Outcomes> of;
    };
    void Add(Outcomes at, Objects& objects) const {
        objects.sources.push_back(at->action->source);
        objects.options.expected.push_back(at->action->expected);
        objects.of.push_back(at);
    }
    Objects WithoutConfirmation() const {
        return {{}, {.confirm = false, .passesOverSpecial = true, .roots = plan_.roots}, {}};
    }
    ShellWrappers::Options Alone(const PlannedAction& action) const {
        return {
            .confirm = false, .targetIsFullPath = true, .expected = {action.expected}, .roots = plan_.roots};
    }

    void Recycle(PhaseSpan span) {
        Objects all = WithoutConfirmation();
        for (auto at = span.first; at != span.last; ++at) Add(at, all);
        TakeOver(wrappers_.RecycleFiles(std::move(all.sources), std::move(all.options)), all.of);
    }

    // One operation for all that keep their name, and one for each whose counterpart differs in letter case:
    // a copy goes over its counterpart, never beside it.
    void Copy(PhaseSpan span) {
        Objects keepingName = WithoutConfirmation();
        std::vector<Outcomes> renamed;
        for (auto at = span.first; at != span.last; ++at) {
            const PlannedAction& action = *at->action;
            if (GetLastItemInPath(action.source) == GetLastItemInPath(action.target))
                Add(at, keepingName);
            else
                renamed.push_back(at);
        }
        if (!keepingName.sources.empty()) {
            const std::string target = plan_.folders[Other(span.first->action->side)];
            TakeOver(
                wrappers_.CopyFiles(std::move(keepingName.sources), target, std::move(keepingName.options)),
                keepingName.of);
        }
        for (const Outcomes& at : renamed) {
            if (!MayGoOn()) return;
            TakeOver(wrappers_.CopyFiles({at->action->source}, at->action->target, Alone(*at->action)), {at});
        }
    }

    // What is done in the sub-folders, all of it.
    ShellOperations::Series SubFolderSeries() const {
        ShellOperations::Series series{ShellOperation::Copy, "Synchronizing the sub-folders...", {}};
        for (auto at = report_.actions.begin() + static_cast<std::ptrdiff_t>(position_);
             at != report_.actions.end(); ++at) {
            ++series.totals.objects;
            const std::int64_t bytes = at->action->room.Whole();
            if (at->action->action == SyncAction::Copy && bytes > 0)
                series.totals.bytes += static_cast<std::uint64_t>(bytes);
        }
        return series;
    }

    void SubFolders() {
        if (position_ == report_.actions.size()) return;
        const ShellSeries shown(wrappers_.Shell(), SubFolderSeries());
        for (const SyncPlan::SubFolder& folder : plan_.subFolders) {
            tools_.loop.Yield();
            // Where the next folder's outcomes begin, however this one ends.
            const std::size_t next = position_ + ActionCount(folder);
            if (!tools_.reporter.Guard("modVantrel.SyncSubFolder", [&] { SyncSubFolder(folder); }))
                report_.cancelled = true;
            position_ = next;
        }
        FinishCopies();
    }

    // The copies above become safe on the disk here, and get their names; only now they count as done.
    void FinishCopies() {
        const ShellOperations::FinishedCopies finished = wrappers_.Shell().FinishCopies();
        report_.notKept += finished.notKept;
        if (finished.failed.empty()) return;
        std::unordered_map<std::string_view, ActionOutcome*> byTarget;
        for (ActionOutcome& at : report_.actions)
            if (!at.action->folder.empty() && at.outcome == ItemOutcome::Done)
                byTarget.emplace(at.action->target, &at);
        for (const ShellOperations::FailedCopy& failed : finished.failed) {
            report_.cancelled = true;
            const auto found = byTarget.find(failed.target);
            const PlannedAction* action = nullptr;
            if (found != byTarget.end()) {
                action = found->second->action;
                found->second->outcome = ItemOutcome::Failed;
                found->second->error = failed.error;
            }
            report_.troubles.push_back({action, failed.target, failed.error, false});
        }
    }

    static std::size_t ActionCount(const SyncPlan::SubFolder& folder) {
        std::size_t count = 0;
        for (Side side : kBothSides) count += folder.deletes[side].size() + folder.copies[side].size();
        return count;
    }

    void SyncSubFolder(const SyncPlan::SubFolder& folder) {
        for (Side side : kBothSides)
            for (std::size_t i = 0; i < folder.deletes[side].size(); ++i)
                DeleteOne(report_.actions[position_++]);
        for (Side side : kBothSides)
            for (std::size_t i = 0; i < folder.copies[side].size(); ++i)
                CopyOne(report_.actions[position_++]);
    }

    OneFile ToOneFile(const PlannedAction& action) const {
        return {action.source, action.target, action.expected, plan_.roots, true};
    }

    // What fails goes the shell's own way, with its error box, and is held against the same that was seen.
    void DeleteOne(ActionOutcome& at) {
        if (Stopped()) return;
        if (wrappers_.Shell().DeleteOneFile(ToOneFile(*at.action)).IsOk())
            at.outcome = ItemOutcome::Done;
        else
            Aside(wrappers_.DeleteFilesPermanently({at.action->source}, Alone(*at.action)), at);
    }

    void CopyOne(ActionOutcome& at) {
        if (Stopped()) return;
        const PlannedAction& action = *at.action;
        if (wrappers_.Shell().CopyOneFile(ToOneFile(action)).IsOk())
            at.outcome = ItemOutcome::Done;
        else
            Aside(wrappers_.CopyFiles({action.source}, action.target, Alone(action)), at);
    }

    void Aside(const ShellResult& result, ActionOutcome& at) {
        if (!result.items.empty()) {
            at.outcome = result.items.front().outcome;
            at.error = result.items.front().error;
        }
        for (const ShellItem& trouble : result.troubles)
            report_.troubles.push_back({at.action, trouble.path, trouble.error});
        Took(result);
    }

    // The user's cancel stops the passes, and so does a root that is gone; what is left stays as it is.
    bool Stopped() {
        tools_.loop.Yield();
        stopped_ |= tools_.loop.CancelRequested() || wrappers_.Shell().SeriesCancelled();
        report_.cancelled |= stopped_;
        return stopped_ || rootLost_;
    }

    const SyncPlan& plan_;
    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    AfterFailure afterFailure_;
    SyncReport report_;
    bool stopped_ = false;      // by the user
    bool rootLost_ = false;     // one of the two folders is not there any more
    std::size_t position_ = 0;  // of the next action in report_.actions
};

}  // namespace

SyncReport CarryOutSync(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers,
                        AfterFailure afterFailure) {
    SyncReport report = Execution(plan, tools, wrappers, afterFailure).Run();
    report.leftOut = !plan.leftOut.IsEmpty();
    return report;
}

std::string DescribeEnd(const SyncReport& report) {
    std::vector<ShellOperations::FailedCopy> failed;
    for (const SyncTrouble& trouble : report.troubles)
        if (!trouble.told) failed.push_back({{}, trouble.path, trouble.error});
    std::string text = DescribeFailedCopies(failed);
    const std::string notKept = DescribeNotKept(report.notKept);
    if (!text.empty() && !notKept.empty()) text.append(kLineEnd).append(kLineEnd);
    return text + notKept;
}

}  // namespace vantrel
