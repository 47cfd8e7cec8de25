#include "sync_output.h"

#include <algorithm>
#include <unordered_set>

#include "display_width.h"
#include "fileops/told_at_end.h"
#include "json_lines.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel::cli {

namespace {

std::string_view SideText(Side side) {
    return side == Side::Left ? "left" : "right";
}

std::string_view ActionText(SyncAction action) {
    return action == SyncAction::Delete ? "Delete" : "Copy";
}

// For a person: which way a copy goes.
std::string_view Arrow(const PlannedAction& action) {
    if (action.action == SyncAction::Delete) return "Delete";
    return action.side == Side::Left ? "Copy -->" : "<-- Copy";
}

std::string ShownName(const PlannedAction& action) {
    return DisplayName(action.folder.empty() ? action.name : JoinPath(action.folder, action.name));
}

std::string_view LinkText(LinkChange change) {
    switch (change) {
        case LinkChange::LinkForFile:
            return "  (a link in a file's place)";
        case LinkChange::FileForLink:
            return "  (a file in a link's place)";
        case LinkChange::None:
            break;
    }
    return {};
}

std::string SizeText(const PlannedAction& action) {
    return std::to_string(action.size.Whole());
}

std::string Sentence(const PlannedAction& action, std::string_view path) {
    return std::string(SideText(action.side)) + " " + std::string(ActionText(action.action)) + " '" +
           std::string(path) + "'";
}

std::string ReasonText(const Error& error) {
    return error.IsOk() ? "passed over" : WithSystemReason(error);
}

}  // namespace

Actions ActionsOf(const SyncPlan& plan) {
    Actions actions;
    plan.ForEach([&](const PlannedAction& action) { actions.push_back(&action); });
    return actions;
}

Actions ActionsDone(const SyncReport& report) {
    Actions actions;
    for (const ActionOutcome& each : report.actions)
        if (each.outcome == ItemOutcome::Done) actions.push_back(each.action);
    return actions;
}

void WriteJsonLines(const Actions& actions, Output& out) {
    for (const PlannedAction* action : actions) {
        out << R"({"side":")" << SideText(action->side) << R"(","action":")" << ActionText(action->action)
            << R"(","name":)";
        WriteJsonString(action->name, out);
        out << R"(,"size":)" << action->size.Whole();
        if (!action->folder.empty()) {
            out << R"(,"folder":)";
            WriteJsonString(action->folder, out);
        }
        if (action->linkChange == LinkChange::LinkForFile) out << R"(,"replaces":"FileByLink")";
        if (action->linkChange == LinkChange::FileForLink) out << R"(,"replaces":"LinkByFile")";
        out << "}\n";
    }
}

void WriteTextColumns(const Actions& actions, Told told, Output& out) {
    std::size_t width = 4;
    std::int64_t deletes = 0, copies = 0;
    Currency bytes;
    for (const PlannedAction* action : actions) {
        width = std::max(width, SizeText(*action).size());
        ++(action->action == SyncAction::Delete ? deletes : copies);
        if (action->action == SyncAction::Copy) bytes += action->size;
    }
    const auto line = [&](std::string_view side, std::string_view what, std::string_view size,
                          std::string_view name) {
        out << side;
        out.Fill(7 - side.size(), ' ');
        out << what;
        out.Fill(10 - what.size() + width - size.size(), ' ');
        out << size << "  " << name;
        out.EndLine();
    };
    if (!actions.empty()) line("Side", "Action", "Size", "Name");
    for (const PlannedAction* action : actions)
        line(SideText(action->side), Arrow(*action), SizeText(*action),
             ShownName(*action).append(LinkText(action->linkChange)));
    if (!actions.empty()) out << '\n';
    const bool done = told == Told::Done;
    out << (done ? "Done: " : "Plan: ");
    if (actions.empty())
        out << "nothing";
    else
        out << deletes << (done ? " deleted, " : " to delete, ") << copies
            << (done ? " copied (" : " to copy (") << ConvertBytesToCorrectByteTypeString(bytes) << ')';
    out << '\n';
}

void TellNotDone(const SyncReport& report, bool cancelledByUser,
                 const std::function<void(const std::string&)>& say) {
    constexpr std::size_t kMostNamed = 20;
    std::unordered_set<const PlannedAction*> told;
    for (const SyncTrouble& trouble : report.troubles) {
        const std::string what =
            trouble.action ? Sentence(*trouble.action, trouble.path) : "'" + trouble.path + "'";
        say("failed: " + what + ": " + ReasonText(trouble.error));
        if (trouble.action) told.insert(trouble.action);
    }
    std::size_t notReached = 0;
    for (const ActionOutcome& each : report.actions) {
        const std::string what = Sentence(*each.action, each.action->source);
        switch (each.outcome) {
            case ItemOutcome::Done:
                break;
            case ItemOutcome::Failed:
            case ItemOutcome::Skipped:
                if (!told.contains(each.action)) say("failed: " + what + ": " + ReasonText(each.error));
                break;
            case ItemOutcome::NotReached:
                if (++notReached <= kMostNamed)
                    say("not done: " + what + ": " +
                        (cancelledByUser ? "cancelled" : "something before it failed"));
                break;
        }
    }
    if (notReached > kMostNamed)
        say("not done: " + std::to_string(notReached - kMostNamed) + " more for the same reason");
    if (const std::string notKept = DescribeNotKept(report.notKept); !notKept.empty()) say(notKept);
}

}  // namespace vantrel::cli
