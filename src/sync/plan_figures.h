#pragma once

#include <cstdint>

#include "platform/currency.h"
#include "sync/sync_plan.h"

namespace vantrel {

// What a plan does with the objects of one side, in figures. What lies in folders that go whole counts.
struct PlanFigures {
    std::uint64_t copied = 0;
    Currency copiedBytes;
    std::uint64_t overNewer = 0;  // of these, over something that is newer
    std::uint64_t recycled = 0;   // to the bin
    std::uint64_t deleted = 0;    // for good
};

PerSide<PlanFigures> FiguresOf(const SyncPlan& plan);

// Whether a copy replaces something that is newer.
bool ReplacesNewer(const PlannedAction& action);
// A deletion that no bin gives back: of a file inside a sub-folder, or from the window of its differences.
bool DeletesForGood(const PlannedAction& action);
// The objects that the action is about: its own, and what goes with it.
std::uint64_t ObjectsOf(const PlannedAction& action);

}  // namespace vantrel
