#include "core/comparison_support.h"

#include <gtest/gtest.h>

namespace vantrel::testing {
namespace {

std::string Describe(const ResultRow& row) {
    switch (row.kind) {
        case RowKind::File:
            return DescribeFile(row.text, row.realName, row.size.Whole(), row.lastWrite, row.type,
                                row.isLink);
        case RowKind::Folder:
            return DescribeFolder(row.text, row.realName, row.size.Whole(), row.type, row.incomplete,
                                  row.isLink);
        case RowKind::Sentinel:
            return "sentinel";
        case RowKind::Unknown:
            return DescribeUnknown(row.text, row.realName, row.reason);
        case RowKind::Placeholder:
            break;
    }
    return {};
}

std::string Describe(const SubFolderRecord& record) {
    if (record.IsBlank()) return {};
    if (record.unknown) return DescribeUnknown(record.name, record.realName, record.reason);
    return DescribeFile(record.name, record.realName, record.size.Whole(), record.lastWrite, record.type,
                        record.isLink);
}

}  // namespace

std::string DescribeFile(std::string_view text, std::string_view realName, std::int64_t size, FileTime time,
                         ResultType type, bool isLink) {
    std::string line(text);
    line.append("|").append(realName).append("|").append(std::to_string(size)).append("|");
    line.append(std::to_string(time.ticks)).append("|").append(ResultTypeText(type));
    return line.append(isLink ? "|link" : "");
}

std::string DescribeUnknown(std::string_view text, std::string_view realName, UnknownReason reason) {
    constexpr std::array<std::string_view, 4> kReasons{"", "special", "nowhere", "not told"};
    std::string line(text);
    return line.append("|")
        .append(realName)
        .append("|Unknown|")
        .append(kReasons.at(static_cast<std::size_t>(reason)));
}

std::string DescribeFolder(std::string_view text, std::string_view realName, std::int64_t size,
                           ResultType type, bool incomplete, bool isLink) {
    std::string line(text);
    line.append("|").append(realName).append("|").append(std::to_string(size)).append("|");
    return line.append(ResultTypeText(type))
        .append(incomplete ? "|incomplete" : "")
        .append(isLink ? "|link" : "");
}

CompareOutcome ComparisonBench::Run() {
    const PerSide<std::string> paths = display.paths;
    ComparisonReport report = comparison.Compare(paths, &display);
    unlogged = report.unlogged;
    // Only a completed run gives results.
    if (report.outcome != CompareOutcome::Completed) {
        EXPECT_FALSE(report.results.HasResult() || !report.results.SubFolderDiffs.IsEmpty());
    }
    if (report.outcome == CompareOutcome::NoResult) {
        results = {};
        for (const Side side : kBothSides) results.hold[side].SetToSentinel();
    }
    if (report.outcome == CompareOutcome::Completed) std::swap(results, report.results);
    progress.Unload();
    return report.outcome;
}

std::vector<std::string> ComparisonBench::Rows() const {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < results.hold[Side::Left].Count(); ++i)
        lines.push_back(Describe(results.hold[Side::Left][i]) + std::string(kBetweenSides) +
                        Describe(results.hold[Side::Right][i]));
    return lines;
}

std::vector<std::string> ComparisonBench::Records() const {
    std::vector<std::string> lines;
    for (const CSubFolderDiffs& diffs : results.SubFolderDiffs)
        for (std::size_t i = 1; i <= diffs.GetArrayDiffOneDimensions(); ++i)
            lines.push_back(diffs.Name() + ": " + Describe(diffs.GetUDTFromArrayDiffOne(i)) +
                            std::string(kBetweenSides) + Describe(diffs.GetUDTFromArrayDiffTwo(i)));
    return lines;
}

}  // namespace vantrel::testing
