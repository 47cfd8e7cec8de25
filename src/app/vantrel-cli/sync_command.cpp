#include <cstdio>
#include <optional>
#include <stdexcept>
#include <unordered_set>

#include "commands.h"
#include "console_host.h"
#include "console_shell.h"
#include "engine.h"
#include "exit_status.h"
#include "platform/files/system_calls.h"
#include "settings/options.h"
#include "sync/synchronization.h"
#include "sync_output.h"
#include "sync_request.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kNotes =
    "What is printed are the actions in the order in which they are carried out: deletes\n"
    "before copies, left before right, then the same below each sub-folder that differs. As\n"
    "JSON a line is {\"side\":\"left\",\"action\":\"Copy\",\"name\":\"a.txt\",\"size\":12}, with\n"
    "\"folder\" added below a sub-folder; the side is that of the object that is copied to the\n"
    "other side or deleted. After a run the lines are those of the actions that were done; the\n"
    "others are told on standard error with the reason.\n"
    "\n"
    "Objects of the two folders are deleted to the trash, files below a sub-folder that differs\n"
    "for good. Without --yes the plan is shown and a terminal asked before anything is done.\n"
    "Ctrl+C stops at the next safe point.\n"
    "\n"
    "Exit status: 0 all done, or nothing to do; 1 done with failures, cancelled, or parts of\n"
    "the folders were left alone, since they could not be looked into or lie elsewhere as\n"
    "well; 2 trouble before anything was done (a message is on standard error).\n";

constexpr int kDone = 0, kPartlyDone = 1;  // with kTrouble, the statuses of this command

// What the user decides before anything is done.
class ConsoleConfirmation : public SyncConfirmation {
  public:
    struct Parts {
        const SyncRequest& request;
        const EventLoopPort& loop;
        ConsoleShellQuestions& questions;
    };
    enum class Decision { None, GoOn, Declined, Refused };

    explicit ConsoleConfirmation(const Parts& parts) : parts_(parts) {}

    Decision Decided() const { return decision_; }

    bool ShowConfirmSync(const SyncPlan& plan) override {
        decision_ = Decide(plan);
        if (decision_ == Decision::GoOn) LeaveToReport(plan);
        return decision_ == Decision::GoOn;
    }

  private:
    Decision Decide(const SyncPlan& plan) {
        if (parts_.loop.CancelRequested()) return Decision::Declined;
        if (parts_.request.agreed || plan.IsEmpty()) return Decision::GoOn;
        if (!CanAskOnTerminal()) return Decision::Refused;
        Output terminal(2);
        WriteTextColumns(ActionsOf(plan), Told::Planned, terminal);
        if (terminal.Finish() != 0 || !AskOnTerminal("Continue? [y/N]")) return Decision::Declined;
        return parts_.loop.CancelRequested() ? Decision::Declined : Decision::GoOn;
    }

    void LeaveToReport(const SyncPlan& plan) {
        std::unordered_set<std::string> paths;
        plan.ForEach([&](const PlannedAction& action) {
            paths.insert(action.source);
            if (!action.target.empty()) paths.insert(action.target);
        });
        parts_.questions.LeaveToReport(std::move(paths));
    }

    Parts parts_;
    Decision decision_ = Decision::None;
};

// What the comparison could not look into, and so is in no plan.
bool TellUnknown(const ComparisonResults& results, ConsoleMessages& messages) {
    bool any = false;
    const auto tell = [&](Side side, std::string_view name) {
        any = true;
        messages.Say(std::string(side == Side::Left ? "left" : "right") + " '" + std::string(name) +
                     "' could not be looked into: what is in it is left alone");
    };
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs)
        for (const UnknownPlace& place : diffs.UnknownPlaces())
            tell(place.side, place.path.empty() ? diffs.Name() : diffs.Name() + "/" + place.path);
    for (const Side side : kBothSides)
        for (const ResultRow& row : results.hold[side])
            if (row.type == ResultType::OrphanFolder && row.incomplete) {
                any = true;
                messages.Say(std::string(side == Side::Left ? "left" : "right") + " '" +
                             std::string(row.text) + "' could not be looked into wholly: it is not deleted");
            }
    return any;
}

// False where it could not be written, which is told then.
bool Print(const SyncRequest& request, const Actions& actions, Told told, ConsoleMessages& messages) {
    Output out;
    if (request.compare.format == OutputFormat::Json)
        WriteJsonLines(actions, out);
    else
        WriteTextColumns(actions, told, out);
    const int failure = out.Finish();
    if (failure != 0) messages.Say("cannot write the result: " + GetErrorText(failure));
    return failure == 0;
}

// One run of the command, behind its arguments.
class SyncRun {
  public:
    SyncRun(const SyncRequest& request, Engine& engine)
        : request_(request),
          console_(engine.Messages()),
          engine_(engine),
          messages_(console_, request.agreed),
          ownTools_(engine.Tools().With(messages_)),
          tools_(ownTools_.Get()) {}

    int Run(const PerSide<std::string_view>& operands) {
        if (const Error error = MakeOptions(engine_, request_.compare, options_); !error.IsOk())
            return Trouble(error.Description());
        if (const std::string wrong = TakeSyncMethod(engine_, request_, settings_); !wrong.empty())
            return Trouble(wrong);
        if (!Compare(operands)) return kTrouble;
        std::string unknown;
        SelectedTexts selected = FindSelected(results_, request_.select, unknown);
        if (!unknown.empty()) return Trouble("there is no object '" + unknown + "' to select");
        if (TellUnknown(results_, console_)) complete_ = false;
        return request_.planOnly ? ShowPlan(selected) : CarryOut(std::move(selected));
    }

  private:
    int Trouble(const std::string& text) {
        console_.Say(text);
        return kTrouble;
    }

    bool Compare(const PerSide<std::string_view>& operands) {
        compare_.TakeOptions(options_);
        PerSide<std::string> paths;
        for (const Side side : kBothSides) paths[side] = engine_.FullPath(operands[side]);
        ComparisonReport report = CompareOnConsole(engine_, tools_, compare_, paths);
        if (compare_.ErrorsDuringCompare) complete_ = false;
        if (tools_.loop.CancelRequested()) {
            console_.Say("cancelled");
            return false;
        }
        std::swap(results_, report.results);
        return report.outcome == CompareOutcome::Completed;
    }

    int ShowPlan(const SelectedTexts& selected) {
        SyncPlan plan = GetListOfFilesAffectedBySync(results_, settings_, selected);
        LookAtWholeFolders(tools_.files, plan);
        if (const std::string spared = DescribeSpared(plan); !spared.empty()) {
            complete_ = false;
            console_.Say(spared);
        }
        if (!Print(request_, ActionsOf(plan), Told::Planned, console_)) return kTrouble;
        return complete_ ? kDone : kPartlyDone;
    }

    int CarryOut(SelectedTexts selected) {
        ConsoleShellProgress progress(engine_.Progress(), tools_.loop);
        ConsoleShellQuestions questions(console_);
        SystemShellOperations shell(
            {tools_.files, tools_.volumes, tools_.clock, tools_.loop, progress, questions});
        ShellWrappers wrappers(shell, messages_);
        ConsoleConfirmation confirmation({request_, tools_.loop, questions});
        BusyState busy;
        Synchronization sync(tools_, wrappers, busy);
        const std::size_t warnings = messages_.Warnings();
        const std::optional<SyncReport> report = sync.AutoSync(
            {results_, settings_, std::move(selected), HistoryLengthOf(tools_, options_)}, &confirmation);
        const bool cancelledByUser = tools_.loop.CancelRequested();
        ConsoleLoop::LeaveSignals();

        if (confirmation.Decided() == ConsoleConfirmation::Decision::Refused)
            return Trouble(
                "there is no terminal to ask on: nothing was done. Use --yes, or look with --plan");
        if (!report) {
            console_.Say("cancelled");
            return confirmation.Decided() == ConsoleConfirmation::Decision::None ? kTrouble : kPartlyDone;
        }
        const bool printed = Print(request_, ActionsDone(*report), Told::Done, console_);
        TellNotDone(*report, cancelledByUser, [this](const std::string& text) { console_.Say(text); });
        const bool wholly = !report->cancelled && report->notDone == 0 && printed && complete_ &&
                            messages_.Warnings() == warnings;
        return wholly ? kDone : kPartlyDone;
    }

    const SyncRequest& request_;
    ConsoleMessages& console_;
    Engine& engine_;
    AskingMessages messages_;
    OwnedToolbox ownTools_;
    const Toolbox& tools_;
    Options options_;
    CSyncSettings settings_{options_};
    CCompare compare_;
    ComparisonResults results_;
    bool complete_ = true;  // the comparison saw everything
};

int Synchronize(const SyncRequest& request, const PerSide<std::string_view>& operands) {
    // A plan changes nothing: its logs go again.
    std::optional<PrivateFolder> logs;
    if (request.planOnly) logs.emplace();
    if (logs && logs->Path().empty()) throw std::runtime_error("there is no folder for temporary files");
    const std::string own = FullProgramFolder(request.programFolder);
    Engine engine(logs ? logs->Path() : own);
    ConsoleLoop::CatchSignals();
    TakeWriteErrorsAsValues();
    const int status = SyncRun(request, engine).Run(operands);
    ConsoleLoop::LeaveSignals();
    return status;
}

}  // namespace

int RunSync(const std::vector<std::string_view>& arguments) {
    SyncRequest request;
    CommandSpec command{"sync", "LEFT RIGHT", "Compares two folders and brings them into line by a method.",
                        kNotes, SyncOptions(request)};
    const ParsedArguments parsed = ParseArguments(command, arguments, 2);
    if (parsed.helpWanted) {
        std::fputs(HelpText(command).c_str(), stdout);
        return 0;
    }
    if (!parsed.error.empty()) {
        std::fprintf(stderr, "vantrel-cli: %s\nSee 'vantrel-cli sync --help'.\n", parsed.error.c_str());
        return kTrouble;
    }
    return Synchronize(request, {{parsed.operands[0], parsed.operands[1]}});
}

}  // namespace vantrel::cli
