#include "sync/synced_pairs.h"

#include <array>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/hashes.h"

namespace vantrel {
namespace {

// Far above what kMostPairs take, and still a bound.
constexpr std::size_t kLargestPairsFile = std::size_t{64} << 20;

// A line: what was taken in, the two counts, the two folders, with tabs between, which no name holds.
constexpr std::size_t kFields = 5;
enum Field : std::uint8_t { kTaken, kLeftCount, kRightCount, kLeftFolder, kRightFolder };
using Fields = std::array<std::string_view, kFields>;

bool Split(std::string_view line, Fields& fields) {
    for (std::size_t i = 0; i < kFields; ++i) {
        const std::size_t end = line.find('\t');
        if ((end == std::string_view::npos) != (i + 1 == kFields)) return false;
        fields[i] = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    }
    return true;
}

bool Number(std::string_view text, std::uint64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

std::vector<std::string_view> Lines(std::string_view content) {
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const std::size_t end = content.find('\n');
        if (end == std::string_view::npos) break;  // torn
        lines.push_back(content.substr(0, end));
        content.remove_prefix(end + 1);
    }
    return lines;
}

std::string TakenText(const ComparisonResults& results) {
    const ScanOptions& taken = results.taken;
    std::string text = taken.includeFilters + "\n" + taken.excludeFilters + "\n";
    for (const bool flag : {taken.excludeSystemFiles, taken.excludeHiddenFiles, taken.excludeSystemFolders,
                            taken.excludeHiddenFolders, results.subFolders})
        text += flag ? '1' : '0';
    Crc32 crc;
    crc.Add(text.data(), text.size());
    return std::to_string(crc.Value());
}

enum class Match : std::uint8_t { No, Same, Swapped };

Match MatchOf(const Fields& fields, const ComparisonResults& results, std::string_view taken) {
    const auto& [left, right] = std::pair(fields[kLeftFolder], fields[kRightFolder]);
    if (fields[kTaken] != taken) return Match::No;
    if (left == results.folders[Side::Left] && right == results.folders[Side::Right]) return Match::Same;
    if (left == results.folders[Side::Right] && right == results.folders[Side::Left]) return Match::Swapped;
    return Match::No;
}

}  // namespace

Error SyncedPairs::Read(std::string& content) const {
    content.clear();
    if (!files_.Exists(path_)) return {};
    return files_.ReadWholeFile(path_, kLargestPairsFile, content);
}

std::optional<PerSide<std::uint64_t>> SyncedPairs::Find(const ComparisonResults& results) const {
    std::string content;
    // One that cannot be read knows nothing; it is told when it is to be written.
    if (!Read(content).IsOk()) return std::nullopt;
    const std::string taken = TakenText(results);
    std::optional<PerSide<std::uint64_t>> found;
    for (const std::string_view line : Lines(content)) {
        Fields fields;
        PerSide<std::uint64_t> counts;
        if (!Split(line, fields)) continue;
        const Match match = MatchOf(fields, results, taken);
        if (match == Match::No || !Number(fields[kLeftCount], counts[Side::Left]) ||
            !Number(fields[kRightCount], counts[Side::Right]))
            continue;
        if (match == Match::Swapped) std::swap(counts[Side::Left], counts[Side::Right]);
        found = counts;
    }
    return found;
}

Error SyncedPairs::Remember(const ComparisonResults& results, const PerSide<std::uint64_t>& objects) const {
    std::string content;
    if (Error error = Read(content); !error.IsOk()) return error;
    const std::string taken = TakenText(results);
    std::vector<std::string_view> kept;
    for (const std::string_view line : Lines(content)) {
        Fields fields;
        if (Split(line, fields) && MatchOf(fields, results, taken) == Match::No) kept.push_back(line);
    }
    const std::size_t first = kept.size() < kMostPairs ? 0 : kept.size() - kMostPairs + 1;
    std::string written;
    for (std::size_t i = first; i < kept.size(); ++i) written.append(kept[i]).append("\n");
    written.append(taken).append("\t");
    for (const Side side : kBothSides) written.append(std::to_string(objects[side])).append("\t");
    written.append(results.folders[Side::Left]).append("\t");
    written.append(results.folders[Side::Right]).append("\n");
    return files_.ReplaceFile(path_, written);
}

}  // namespace vantrel
