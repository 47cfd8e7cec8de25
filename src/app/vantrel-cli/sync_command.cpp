#include <optional>
#include <stdexcept>

#include "commands.h"
#include "console_host.h"
#include "console_shell.h"
#include "engine.h"
#include "exit_status.h"
#include "platform/files/system_calls.h"
#include "settings/options.h"
#include "sync/synced_pairs.h"
#include "sync/synchronization.h"
#include "sync_output.h"
#include "sync_request.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kSyncNotes =
    "What is printed are the actions in the order in which they are carried out: deletes\n"
    "before copies, left before right, then the same below each sub-folder that differs. As\n"
    "JSON a line is {\"side\":\"left\",\"action\":\"Copy\",\"name\":\"a.txt\",\"size\":12}, with\n"
    "\"folder\" added below a sub-folder; the side is that of the object that is copied to the\n"
    "other side or deleted. \"replaces\" tells of a copy that puts a link in a file's place\n"
    "(FileByLink) or the reverse (LinkByFile). After a run the lines are those of the actions\n"
    "that were done; the others are told on standard error with the reason.\n"
    "\n"
    "Objects of the two folders are deleted to the trash, files below a sub-folder that differs\n"
    "for good. Without --yes the plan is shown and a terminal asked before anything is done.\n"
    "Ctrl+C stops at the next safe point.\n"
    "\n"
    "A run is refused where a folder is empty, or holds less than a tenth of what it held at\n"
    "the end of the last run, and objects of the other would be deleted; and where more than\n"
    "half of a folder, and at least 20 objects, would be deleted. --yes does not permit that.\n"
    "--plan tells of it.\n"
    "\n"
    "Exit status: 0 all done, or nothing to do; 1 done with failures, cancelled, or parts of\n"
    "the folders were left alone, since they could not be looked into or lie elsewhere as\n"
    "well, or a plan that would be refused; 2 trouble before anything was done, or refused (a\n"
    "message is on standard error).\n";

constexpr int kDone = 0, kPartlyDone = 1;  // with kTrouble, the statuses of this command

// What the user decides before anything is done.
class ConsoleConfirmation : public SyncConfirmation {
  public:
    ConsoleConfirmation(const SyncRequest& request, const EventLoopPort& loop, ConsoleMessages& console)
        : request_(request), loop_(loop), console_(console) {}

    enum class Decision { None, GoOn, Declined, Refused };
    Decision Decided() const { return decision_; }

    bool ShowConfirmSync(const SyncPlan& plan) override {
        decision_ = Decide(plan);
        return decision_ == Decision::GoOn;
    }

    bool MayEmpty(const EmptyingRisk& risk) override {
        SayRefused(risk, "nothing was done", console_);
        decision_ = Decision::Refused;
        return false;
    }

    static void SayRefused(const EmptyingRisk& risk, const std::string& what, ConsoleMessages& console) {
        std::string text = "refused: " + what + "\n" + risk.Text();
        if (!risk.emptied.empty()) text += "\n--allow-emptied permits what an emptied folder leads to";
        if (!risk.manyDeletes.empty()) text += "\n--max-delete N or P% permits more deletes";
        console.Say(text);
    }

  private:
    Decision Decide(const SyncPlan& plan) {
        if (loop_.CancelRequested()) return Decision::Declined;
        if (request_.agreed || plan.IsEmpty()) return Decision::GoOn;
        if (!CanAskOnTerminal()) {
            console_.Say("there is no terminal to ask on: nothing was done. Use --yes, or look with --plan");
            return Decision::Refused;
        }
        Output terminal(2);
        WriteTextColumns(ActionsOf(plan), Told::Planned, terminal);
        if (const std::string notes = DescribeNotes(plan); !notes.empty()) console_.Say(notes);
        if (terminal.Finish() != 0 || !AskOnTerminal("Continue? [y/N]")) return Decision::Declined;
        return loop_.CancelRequested() ? Decision::Declined : Decision::GoOn;
    }

    const SyncRequest& request_;
    const EventLoopPort& loop_;
    ConsoleMessages& console_;
    Decision decision_ = Decision::None;
};

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

    int Run(const std::vector<std::string_view>& operands) {
        if (const Error error = MakeOptions(engine_, request_.compare, options_); !error.IsOk())
            return Trouble(error.Description());
        if (const std::string wrong = TakeSyncMethod(engine_, request_, settings_); !wrong.empty())
            return Trouble(wrong);
        if (!Compare(operands)) return kTrouble;
        std::string wrong;
        SelectedTexts selected = FindSelected(results_, request_.select, wrong);
        if (!wrong.empty()) return Trouble(wrong);
        options_.goOnAfterFailure |= request_.keepGoing;
        const SyncOrder order{.results = results_,
                              .settings = settings_,
                              .selected = std::move(selected),
                              .numSyncLogEntries = HistoryLengthOf(tools_, options_),
                              .permits = request_.permits,
                              .jobs = compare_.Jobs};
        return request_.planOnly ? ShowPlan(order) : CarryOut(order);
    }

  private:
    int Trouble(const std::string& text) {
        console_.Say(text);
        return kTrouble;
    }

    bool Compare(const std::vector<std::string_view>& operands) {
        compare_.TakeOptions(options_);
        Error error;
        const PerSide<std::string> paths = FoldersOf(engine_, request_.compare, operands, error);
        if (!error.IsOk()) {
            console_.Say(error.Description());
            return false;
        }
        ComparisonReport report = CompareOnConsole(engine_, tools_, compare_, paths);
        if (compare_.ErrorsDuringCompare) complete_ = false;
        if (tools_.loop.CancelRequested()) {
            console_.Say("cancelled");
            return false;
        }
        std::swap(results_, report.results);
        return report.outcome == CompareOutcome::Completed;
    }

    int ShowPlan(const SyncOrder& order) {
        const SyncPlan plan = MakeSyncPlan(tools_, order);
        if (const std::string leftOut = plan.leftOut.Describe(); !leftOut.empty()) {
            complete_ = false;
            console_.Say(leftOut);
        }
        if (!Print(request_, ActionsOf(plan), Told::Planned, console_)) return kTrouble;
        if (const std::string notes = DescribeNotes(plan); !notes.empty()) console_.Say(notes);
        const ProgramFolders own =
            FindProgramFolders(tools_.files, FullProgramFolder(request_.programFolder), MissingFolder::Left);
        const SyncedPairs pairs(tools_.files, own.appPath);
        const EmptyingRisk risk = RiskOfEmptying(plan, pairs.Find(results_), order.permits);
        if (risk.IsNone()) return complete_ ? kDone : kPartlyDone;
        ConsoleConfirmation::SayRefused(risk, "a run would end here", console_);
        return kPartlyDone;
    }

    int CarryOut(const SyncOrder& order) {
        ConsoleShellProgress progress(engine_.Progress(), tools_.loop);
        ConsoleShellQuestions questions(console_);
        SystemShellOperations shell({tools_.files, tools_.volumes, tools_.clock, tools_.loop, progress,
                                     questions, TrashPlaces::OfThisUser(), &compare_.Jobs});
        ShellWrappers wrappers(shell, messages_);
        ConsoleConfirmation confirmation(request_, tools_.loop, console_);
        BusyState busy;
        Synchronization sync(tools_, wrappers, busy);
        const std::size_t warnings = messages_.Warnings();
        const std::optional<SyncReport> report = sync.AutoSync(order, confirmation);
        const bool cancelledByUser = tools_.loop.CancelRequested();
        ConsoleLoop::LeaveSignals();

        if (confirmation.Decided() == ConsoleConfirmation::Decision::Refused) return kTrouble;
        if (!report) {
            console_.Say("cancelled");
            return confirmation.Decided() == ConsoleConfirmation::Decision::None ? kTrouble : kPartlyDone;
        }
        const bool printed = Print(request_, ActionsDone(*report), Told::Done, console_);
        TellNotDone(*report, cancelledByUser, [this](const std::string& text) { console_.Say(text); });
        const bool wholly = report->IsWhole() && report->notDone == 0 && printed && complete_ &&
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

int Synchronize(const SyncRequest& request, const std::vector<std::string_view>& operands) {
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
    CommandSpec command{
        "sync",     "LEFT RIGHT",         "Compares two folders and brings them into line by a method.",
        kSyncNotes, SyncOptions(request), [&request] { return !request.compare.sessionFile.empty(); }};
    const ParsedArguments parsed = ParseArguments(command, arguments, 2);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return Synchronize(request, parsed.operands);
}

}  // namespace vantrel::cli
