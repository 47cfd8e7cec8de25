#include "views/result_summary.h"

#include <cstdio>
#include <numeric>

namespace vantrel {

std::uint32_t FileTypeCounts::Total() const {
    return std::accumulate(of.begin(), of.end(), std::uint32_t{});
}

double FileTypeCounts::Percentage(ResultType type) const {
    const std::uint32_t total = Total();
    return total == 0 ? 0 : static_cast<double>(Of(type)) / total * 100;
}

PerSide<FileTypeCounts> GetFileTypeCounts(const HoldLists& hold) {
    PerSide<FileTypeCounts> counts;
    for (const Side side : kBothSides)
        for (const ResultRow& row : hold[side])
            if (row.type != ResultType::None) ++counts[side].of.at(static_cast<std::size_t>(row.type));
    return counts;
}

std::string_view SummaryText(ResultType type) {
    static constexpr std::array<std::string_view, kResultTypeCount + 1> kTexts{
        "",
        "Newer Files",
        "Older Files",
        "Identical Files",
        "Orphan Files",
        "Different but same date/time Files",
        "Identical Folders",
        "Different Folders",
        "Orphan Folders",
    };
    return kTexts.at(static_cast<std::size_t>(type));
}

std::string PercentageText(double percentage) {
    constexpr double kLeast = 0.1, kMost = 99.9;
    if (percentage > 0 && percentage < kLeast) return "less than 0.1%";
    if (percentage > kMost && percentage < 100) return "more than 99.9%";
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f", percentage);
    std::string rounded = text.data();
    if (rounded.ends_with(".0")) rounded.resize(rounded.size() - 2);
    return rounded + "%";
}

std::string SliceText(const FileTypeCounts& counts, ResultType type) {
    return std::string(SummaryText(type)) + ": " + std::to_string(counts.Of(type)) + " (" +
           PercentageText(counts.Percentage(type)) + ")";
}

std::string SpokenSummary(const FileTypeCounts& counts) {
    std::string text;
    for (const ResultType type : kTypesInList)
        if (counts.Of(type) != 0) text += (text.empty() ? "" : ", ") + SliceText(counts, type);
    return text.empty() ? "No objects" : text;
}

std::vector<PieSlice> SlicesOf(const FileTypeCounts& counts) {
    std::vector<PieSlice> slices;
    double start = kFirstOfPie;
    for (const ResultType type : kTypesInList) {
        if (counts.Of(type) == 0) continue;
        double end = start + counts.Percentage(type);
        if (end >= kLastOfPie) end = kLastOfPie;
        const bool whole = start == kFirstOfPie && end == kLastOfPie;
        slices.push_back({type, start, end, whole});
        if (whole) break;
        start = end;
    }
    return slices;
}

SliceColour ColourOf(ResultType type) {
    static constexpr std::array<SliceColour, kResultTypeCount + 1> kColours{{{0, 0, 0},
                                                                             {46, 137, 179},
                                                                             {206, 42, 110},
                                                                             {0, 191, 0},
                                                                             {224, 128, 48},
                                                                             {143, 48, 224},
                                                                             {176, 235, 47},
                                                                             {57, 56, 51},
                                                                             {247, 192, 6}}};
    return kColours.at(static_cast<std::size_t>(type));
}

}  // namespace vantrel
