#include "sync/sync_execution.h"

#include <unordered_set>

#include "platform/names/paths.h"

namespace vantrel {
namespace {

class Execution {
  public:
    Execution(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers)
        : plan_(plan), tools_(tools), wrappers_(wrappers) {}

    SyncReport Run() {
        plan_.ForEach([&](const PlannedAction& action) { report_.actions.push_back({&action, {}, {}}); });
        for (Side side : kBothSides) Phase(plan_.deletes[side], [&](auto& phase) { Recycle(phase); });
        for (Side side : kBothSides) Phase(plan_.copies[side], [&](auto& phase) { Copy(phase); });
        if (!report_.cancelled) SubFolders();
        for (const ActionOutcome& action : report_.actions)
            ++(action.outcome == ItemOutcome::Done ? report_.done : report_.notDone);
        return std::move(report_);
    }

  private:
    using Outcomes = std::vector<ActionOutcome>::iterator;
    struct PhaseSpan {
        Outcomes first, last;
    };

    // Takes the outcomes of as many actions as `actions` has, and runs the phase on them unless the run was
    // aborted.
    template <typename Work>
    void Phase(const std::vector<PlannedAction>& actions, Work work) {
        PhaseSpan span{report_.actions.begin() + static_cast<std::ptrdiff_t>(position_), {}};
        position_ += actions.size();
        span.last = report_.actions.begin() + static_cast<std::ptrdiff_t>(position_);
        if (!actions.empty() && !report_.cancelled) work(span);
    }

    void TakeOver(const ShellResult& result, const std::vector<Outcomes>& of) {
        for (std::size_t i = 0; i < of.size() && i < result.items.size(); ++i) {
            of[i]->outcome = result.items[i].outcome;
            of[i]->error = result.items[i].error;
        }
        report_.cancelled |= !result.AllDone();
        rootLost_ |= result.rootLost;
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
    Objects WithoutConfirmation() const { return {{}, {.confirm = false, .roots = plan_.roots}, {}}; }
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
            if (report_.cancelled) return;
            TakeOver(wrappers_.CopyFiles({at->action->source}, at->action->target, Alone(*at->action)), {at});
        }
    }

    void SubFolders() {
        for (const SyncPlan::SubFolder& folder : plan_.subFolders) {
            tools_.loop.Yield();
            // Where the next folder's outcomes begin, however this one ends.
            const std::size_t next = position_ + ActionCount(folder);
            if (!tools_.reporter.Guard("modVantrel.SyncSubFolder", [&] { SyncSubFolder(folder); }))
                report_.cancelled = true;
            position_ = next;
        }
        // The copies above become safe on the disk here, and count as done only now.
        if (const Error error = wrappers_.Shell().SyncCopies(); !error.IsOk()) {
            for (ActionOutcome& at : report_.actions) {
                if (at.action->folder.empty() || at.action->action != SyncAction::Copy) continue;
                if (at.outcome == ItemOutcome::Done) Fail(at, error);
            }
            tools_.reporter.ReportError("modVantrel.SyncSubFolders", error);
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
        report_.cancelled |= !result.AllDone();
        rootLost_ |= result.rootLost;
        stopped_ |= result.cancelled;
    }

    void Fail(ActionOutcome& at, const Error& error) {
        at.outcome = ItemOutcome::Failed;
        at.error = error;
        report_.cancelled = true;
    }

    // The user's cancel stops the passes, and so does a root that is gone; what is left stays as it is.
    bool Stopped() {
        tools_.loop.Yield();
        stopped_ |= tools_.loop.CancelRequested();
        report_.cancelled |= stopped_;
        return stopped_ || rootLost_;
    }

    const SyncPlan& plan_;
    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    SyncReport report_;
    bool stopped_ = false;      // by the user
    bool rootLost_ = false;     // one of the two folders is not there any more
    std::size_t position_ = 0;  // of the next action in report_.actions
};

}  // namespace

SyncReport CarryOutSync(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers) {
    return Execution(plan, tools, wrappers).Run();
}

}  // namespace vantrel
