#pragma once

#include "core/comparison_context.h"
#include "core/side.h"
#include "platform/files/file_system.h"

namespace vantrel {

// What bears a name of which at least one side is no file and no folder, as a comparison judges it.
struct OccupiedName {
    struct Half {
        bool exists = false;
        UnknownReason reason = UnknownReason::None;  // None: a file or a folder
        bool isLink = false;
        bool keptAsFile = false;  // a file of this name would be taken in
    };
    PerSide<Half> halves;
};

enum class OccupiedVerdict : std::uint8_t {
    Ignored,     // nothing is to be told but the special objects in it
    OrphanLink,  // a link without a counterpart, to whatever: an object like any other
    EqualLinks,  // two links to nowhere that say the same
    Unknown,     // nothing may be concluded, for neither side
};

// `sameTarget` says whether two links hold the same text; it is asked only of a pair of links.
template <typename SameTarget>
OccupiedVerdict Judge(const OccupiedName& name, const SameTarget& sameTarget) {
    const OccupiedName::Half& left = name.halves[Side::Left];
    const OccupiedName::Half& right = name.halves[Side::Right];
    if (left.exists && right.exists) {
        constexpr auto kSpecial = UnknownReason::SpecialObject;
        if (left.reason == kSpecial && right.reason == kSpecial) return OccupiedVerdict::Ignored;
        const bool links = left.isLink && right.isLink && left.reason == right.reason;
        return links && sameTarget() ? OccupiedVerdict::EqualLinks : OccupiedVerdict::Unknown;
    }
    const OccupiedName::Half& alone = left.exists ? left : right;
    if (alone.isLink) return alone.keptAsFile ? OccupiedVerdict::OrphanLink : OccupiedVerdict::Ignored;
    return alone.reason == UnknownReason::SpecialObject ? OccupiedVerdict::Ignored : OccupiedVerdict::Unknown;
}

// Special objects of a pair that is ignored.
inline std::size_t SpecialObjects(const OccupiedName& name) {
    std::size_t count = 0;
    for (const Side side : kBothSides)
        if (name.halves[side].exists && name.halves[side].reason == UnknownReason::SpecialObject) ++count;
    return count;
}

// Whether `names`, links in these folders, hold the same text. False where one cannot be read.
bool HoldSameText(const PerSide<const OpenFolder*>& folders, const PerSide<std::string_view>& names);

// Says in the log why nothing is concluded from the object at `path`, and with NotTold that there was an
// error.
void NoteUnknown(const ComparisonContext& context, const std::string& path, UnknownReason reason);

// A sentence on what is in the way, for a tool tip; empty for None.
std::string_view DescribeReason(UnknownReason reason);

}  // namespace vantrel
