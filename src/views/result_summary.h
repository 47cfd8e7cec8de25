#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"

namespace vantrel {

// The rows of one side by result type, whatever the view shows.
struct FileTypeCounts {
    std::array<std::uint32_t, kResultTypeCount + 1> of{};  // by the number of the type; of[0] stays 0

    std::uint32_t Of(ResultType type) const { return of.at(static_cast<std::size_t>(type)); }
    std::uint32_t Total() const;
    // In percent of the total; 0 where that is 0.
    double Percentage(ResultType type) const;
};
PerSide<FileTypeCounts> GetFileTypeCounts(const HoldLists& hold);

// The types in the order in which they are listed and drawn, and as they are named there.
inline constexpr std::array kTypesInList{
    ResultType::Newer,  ResultType::Older,           ResultType::Binary,          ResultType::Same,
    ResultType::Orphan, ResultType::DifferentFolder, ResultType::IdenticalFolder, ResultType::OrphanFolder};
std::string_view SummaryText(ResultType type);  // "Newer Files"
// "34.5%"; "less than 0.1%" and "more than 99.9%" for what is not none and not all.
std::string PercentageText(double percentage);
// "Newer Files: 12 (34.5%)".
std::string SliceText(const FileTypeCounts& counts, ResultType type);
// All types that occur, for those who do not see the pie.
std::string SpokenSummary(const FileTypeCounts& counts);

// A slice of the pie, in percent of the full turn, which begins at three o'clock and goes against the clock.
struct PieSlice {
    ResultType type = ResultType::None;
    double start = 0, end = 0;
    bool whole = false;  // the one type there is: a full circle without a radius
};
// In the order in which they are drawn; none where the counts are all 0. The offsets at both ends keep the
// angles away from zero and from the full turn: between those a sector has two radii.
inline constexpr double kFirstOfPie = 0.001;
inline constexpr double kLastOfPie = 99.999;
std::vector<PieSlice> SlicesOf(const FileTypeCounts& counts);

struct SliceColour {
    std::uint8_t red, green, blue;
};
SliceColour ColourOf(ResultType type);

}  // namespace vantrel
