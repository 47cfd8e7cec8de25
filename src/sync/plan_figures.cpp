#include "sync/plan_figures.h"

#include <algorithm>

namespace vantrel {

bool ReplacesNewer(const PlannedAction& action) {
    return action.action == SyncAction::Copy && action.type == ResultType::Older;
}

bool DeletesForGood(const PlannedAction& action) {
    return action.action == SyncAction::Delete && (action.forGood || !action.folder.empty());
}

std::uint64_t ObjectsOf(const PlannedAction& action) {
    // A copy passes over special objects.
    const std::uint64_t left = action.action == SyncAction::Copy ? action.contents.specialObjects : 0;
    return 1 + action.contents.objects - std::min(left, action.contents.objects);
}

PerSide<PlanFigures> FiguresOf(const SyncPlan& plan) {
    PerSide<PlanFigures> figures;
    plan.ForEach([&](const PlannedAction& action) {
        PlanFigures& of = figures[action.side];
        const std::uint64_t objects = ObjectsOf(action);
        if (action.action == SyncAction::Delete) {
            (DeletesForGood(action) ? of.deleted : of.recycled) += objects;
            return;
        }
        of.copied += objects;
        of.copiedBytes += action.room;
        if (ReplacesNewer(action)) of.overNewer += objects;
    });
    return figures;
}

}  // namespace vantrel
