#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sync/sync_plan.h"

namespace vantrel {

// A plan that deletes much because a side holds little is more often a drive that is not mounted, or a folder
// chosen by mistake, than what somebody wants.

// How many objects of a side a plan may delete: a number of them, or a share of what the side holds, which
// limits nothing below 20 objects.
struct DeleteLimit {
    std::uint64_t number = 50;
    bool isPercent = true;
};
// "250" or "80%", from 0 and up to 100%. Nothing where it is neither.
std::optional<DeleteLimit> ParseDeleteLimit(std::string_view text);

// What a run permits.
struct EmptyingPermits {
    bool emptied = false;  // an emptied side may empty the other
    DeleteLimit deletes;
};

// Objects of each side that the plan names for deletion, with all that lies in folders that go whole.
PerSide<std::uint64_t> ObjectsToDelete(const SyncPlan& plan);

// What a plan is not carried out for without somebody who says so, in words with the numbers; both are empty
// where nothing is wrong.
struct EmptyingRisk {
    std::string emptied;      // a side holds nothing, or next to nothing of what it held
    std::string manyDeletes;  // too large a part of a side goes

    bool IsNone() const { return emptied.empty() && manyDeletes.empty(); }
    std::string Text() const;  // of both
};
// `heldBefore` is what the sides held at the end of the last run; nothing where there was none.
EmptyingRisk RiskOfEmptying(const SyncPlan& plan, const std::optional<PerSide<std::uint64_t>>& heldBefore,
                            const EmptyingPermits& permits);

}  // namespace vantrel
