#include "sync/emptying.h"

#include <charconv>

#include "platform/line_end.h"

namespace vantrel {
namespace {

constexpr std::uint64_t kFewest = 20;  // deletes that a share limits
constexpr std::uint64_t kTenth = 10;

std::string Objects(std::uint64_t count) {
    return std::to_string(count) + (count == 1 ? " object" : " objects");
}

std::string FolderText(const SyncPlan& plan, Side side) {
    return std::string(side == Side::Left ? "left" : "right") + " folder \"" + plan.folders[side] + "\"";
}

std::string WouldDelete(const SyncPlan& plan, Side side, std::uint64_t deletes) {
    return "The synchronization would delete " + Objects(deletes) + " of " +
           std::to_string(plan.objects[side]) + " in the " + FolderText(plan, side) + ".";
}

void AddParagraph(std::string& text, const std::string& paragraph) {
    if (!text.empty() && !paragraph.empty()) text.append(kLineEnd).append(kLineEnd);
    text += paragraph;
}

bool Exceeds(std::uint64_t deletes, std::uint64_t held, const DeleteLimit& limit) {
    if (!limit.isPercent) return deletes > limit.number;
    constexpr std::uint64_t kAll = 100;
    return limit.number < kAll && deletes >= kFewest && deletes * kAll > held * limit.number;
}

}  // namespace

std::optional<DeleteLimit> ParseDeleteLimit(std::string_view text) {
    DeleteLimit limit;
    limit.isPercent = text.ends_with('%');
    if (limit.isPercent) text.remove_suffix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit.number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (limit.isPercent && limit.number > 100) return std::nullopt;
    return limit;
}

PerSide<std::uint64_t> ObjectsToDelete(const SyncPlan& plan) {
    PerSide<std::uint64_t> count;
    plan.ForEach([&](const PlannedAction& action) {
        if (action.action == SyncAction::Delete) count[action.side] += 1 + action.contents.objects;
    });
    return count;
}

std::string EmptyingRisk::Text() const {
    std::string text = emptied;
    AddParagraph(text, manyDeletes);
    return text;
}

EmptyingRisk RiskOfEmptying(const SyncPlan& plan, const std::optional<PerSide<std::uint64_t>>& heldBefore,
                            const EmptyingPermits& permits) {
    EmptyingRisk risk;
    const PerSide<std::uint64_t> deletes = ObjectsToDelete(plan);
    for (const Side side : kBothSides) {
        if (deletes[side] == 0) continue;
        const Side other = Other(side);
        const std::uint64_t holds = plan.objects[other];
        const std::uint64_t held = heldBefore ? (*heldBefore)[other] : 0;
        std::string found;
        if (holds == 0)
            found = "Nothing was found in the " + FolderText(plan, other) + ".";
        else if (holds * kTenth < held)
            found = "The " + FolderText(plan, other) + " holds " + Objects(holds) +
                    "; at the end of the last synchronization it held " + std::to_string(held) + ".";
        if (!permits.emptied && !found.empty())
            AddParagraph(risk.emptied, found + "  " + WouldDelete(plan, side, deletes[side]));
        else if (Exceeds(deletes[side], plan.objects[side], permits.deletes))
            AddParagraph(risk.manyDeletes, WouldDelete(plan, side, deletes[side]));
    }
    return risk;
}

}  // namespace vantrel
