#include "sync/sync_execution.h"

#include <unordered_set>

#include "core/cdir.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr ShellWrappers::Options kWithoutConfirmation{.confirm = false};
constexpr ShellWrappers::Options kPairWithoutConfirmation{.confirm = false, .targetIsFullPath = true};

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
    }

    void Recycle(PhaseSpan span) {
        std::vector<std::string> sources;
        std::vector<Outcomes> of;
        for (auto at = span.first; at != span.last; ++at) {
            sources.push_back(at->action->source);
            of.push_back(at);
        }
        TakeOver(wrappers_.RecycleFiles(std::move(sources), kWithoutConfirmation), of);
    }

    // One operation for all that keep their name, and one for each whose counterpart differs in letter case:
    // a copy goes over its counterpart, never beside it.
    void Copy(PhaseSpan span) {
        std::vector<std::string> sources;
        std::vector<Outcomes> keepingName, renamed;
        for (auto at = span.first; at != span.last; ++at) {
            const PlannedAction& action = *at->action;
            if (GetLastItemInPath(action.source) == GetLastItemInPath(action.target)) {
                sources.push_back(action.source);
                keepingName.push_back(at);
            } else {
                renamed.push_back(at);
            }
        }
        if (!sources.empty()) {
            const std::string target = plan_.folders[Other(span.first->action->side)];
            TakeOver(wrappers_.CopyFiles(std::move(sources), target, kWithoutConfirmation), keepingName);
        }
        for (const Outcomes& at : renamed) {
            if (report_.cancelled) return;
            TakeOver(wrappers_.CopyFiles({at->action->source}, at->action->target, kPairWithoutConfirmation),
                     {at});
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
        for (Side side : kBothSides) {
            std::string lastParent;
            for (std::size_t i = 0; i < folder.copies[side].size(); ++i)
                CopyOne(report_.actions[position_++], lastParent);
        }
    }

    void DeleteOne(ActionOutcome& at) {
        if (Stopped()) return;
        if (wrappers_.Shell().DeleteOneFile(at.action->source).IsOk()) {
            at.outcome = ItemOutcome::Done;
            return;
        }
        // The shell's own way, with its error box.
        Aside(wrappers_.DeleteFilesPermanently({at.action->source}, kWithoutConfirmation), at);
    }

    void CopyOne(ActionOutcome& at, std::string& lastParent) {
        if (Stopped()) return;
        const std::string parent = GetParentFolderName(at.action->target);
        if (!EqualIgnoringCase(parent, lastParent)) {
            lastParent = parent;
            if (!tools_.files.FolderExists(parent)) CDir(tools_).CreateNestedFoldersByPath(parent);
        }
        if (wrappers_.Shell().CopyOneFile(at.action->source, at.action->target).IsOk()) {
            at.outcome = ItemOutcome::Done;
            return;
        }
        Aside(wrappers_.CopyFiles({at.action->source}, at.action->target, kPairWithoutConfirmation), at);
    }

    void Aside(const ShellResult& result, ActionOutcome& at) {
        if (!result.items.empty()) {
            at.outcome = result.items.front().outcome;
            at.error = result.items.front().error;
        }
        report_.cancelled |= !result.AllDone();
    }

    void Fail(ActionOutcome& at, const Error& error) {
        at.outcome = ItemOutcome::Failed;
        at.error = error;
        report_.cancelled = true;
    }

    // The user's cancel stops the passes; what is left stays as it is.
    bool Stopped() {
        tools_.loop.Yield();
        if (tools_.loop.CancelRequested()) report_.cancelled = true;
        return tools_.loop.CancelRequested();
    }

    const SyncPlan& plan_;
    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    SyncReport report_;
    std::size_t position_ = 0;  // of the next action in report_.actions
};

}  // namespace

SyncReport CarryOutSync(const SyncPlan& plan, const Toolbox& tools, ShellWrappers& wrappers) {
    return Execution(plan, tools, wrappers).Run();
}

}  // namespace vantrel
