#include "filetools/file_grids.h"

#include <algorithm>
#include <utility>

#include "filetools/text_search.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::string_view kTab = "   ";

// `text` with its tabs as blanks behind what `cell` holds, at most `limit` bytes in all.
void AppendLine(std::string_view text, std::size_t limit, std::string& cell) {
    for (const char letter : text) {
        if (cell.size() >= limit) break;
        if (letter == '\t')
            cell.append(kTab);
        else
            cell.push_back(letter);
    }
    if (cell.size() <= limit) return;
    cell.resize(limit);
}

// Takes a character that was cut in two off the end.
void CutBetweenCharacters(std::string& cell) {
    std::size_t end = cell.size();
    while (end > 0 && cell.size() - end < 4 && (static_cast<unsigned char>(cell[end - 1]) & 0xC0) == 0x80)
        --end;
    if (end == 0 || static_cast<unsigned char>(cell[end - 1]) < 0xC0) return;
    const auto lead = static_cast<unsigned char>(cell[end - 1]);
    const std::size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (cell.size() - end + 1 < wanted) cell.resize(end - 1);
}

}  // namespace

FileGrids::FileGrids(std::shared_ptr<const FileDiff> diff, const CancelCheck& check)
    : diff_(std::move(diff)) {
    PerSide<LineNumber> counts;
    for (const Side side : kBothSides) {
        lines_[side] = LineIndex(diff_->texts[side].Text(), check);
        counts[side] = lines_[side].Count();
    }
    rows_ = AlignedRows(counts);
}

std::string_view FileGrids::Line(Side side, std::int32_t row) const {
    const LineNumber line = rows_.LineAt(side, row);
    return line == 0 ? std::string_view() : lines_[side].Line(line - 1);
}

std::string FileGrids::LineText(Side side, std::int32_t row, std::size_t limit) const {
    std::string text;
    AppendLine(Line(side, row), limit, text);
    if (text.size() == limit) CutBetweenCharacters(text);
    return text;
}

std::string FileGrids::CellText(Side side, std::int32_t row, std::size_t limit) const {
    const LineNumber line = rows_.LineAt(side, row);
    if (line == 0) return {};
    std::string cell = " " + std::to_string(line) + ".";
    AppendLine(lines_[side].Line(line - 1), limit, cell);
    if (cell.size() == limit) CutBetweenCharacters(cell);
    return cell;
}

namespace {

// Looks for a folded text in the cells of one grid, made one by one.
class CellSearch {
  public:
    CellSearch(const FileGrids& grids, Side side, std::string_view text)
        : grids_(grids), side_(side), wanted_(FoldCase(text)) {}

    bool IsIn(std::int32_t row) {
        folded_.clear();
        AppendFolded(grids_.CellText(side_, row), folded_);
        return folded_.find(wanted_) != std::string::npos;
    }
    std::optional<std::int32_t> First(std::int32_t from, std::int32_t end, std::int32_t step,
                                      PacedCheck& pace) {
        for (std::int32_t row = from; row != end; row += step) {
            if (IsIn(row)) return row;
            pace.Count(64 + folded_.size());
        }
        return std::nullopt;
    }

  private:
    const FileGrids& grids_;
    Side side_;
    std::string wanted_, folded_;
};

// Of a search in the text itself, a stretch of lines at a time: the first line that has a hit in the lines
// from `from` to `end`, or the last one.
std::optional<LineNumber> SearchLines(const LineIndex& lines, const TextSearch& search, LineNumber from,
                                      LineNumber end, bool forward, PacedCheck& pace) {
    constexpr LineNumber kStretch = 4'096;
    while (from < end) {
        const LineNumber begin = forward ? from : std::max(from, end - kStretch);
        const LineNumber stop = forward ? std::min(end, from + kStretch) : end;
        std::optional<LineNumber> found;
        const std::uint64_t textEnd = lines.Offset(stop);
        for (std::size_t at = lines.Offset(begin);;) {
            at = search.FindIn(lines.Text(), at, textEnd);
            if (at == std::string_view::npos) break;
            found = lines.LineOf(at);
            if (forward) break;
            at = lines.Offset(*found + 1);
        }
        if (found) return found;
        pace.Count(textEnd - lines.Offset(begin));
        (forward ? from : end) = forward ? stop : begin;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::int32_t> FileGrids::FindOnSide(Side side, std::string_view text, FindDirection direction,
                                                  std::int32_t current, const CancelCheck& check) const {
    PacedCheck pace(check, std::size_t{4} << 20);
    const bool forward = direction == FindDirection::Next;
    const std::int32_t row = std::clamp(current, 0, rows_.LastRow() + 1);
    if (const std::optional<TextSearch> search = TextSearch::Make(text, lines_[side].Text())) {
        const LineNumber from = forward ? rows_.LinesBefore(side, row + 1) : 0;
        const LineNumber end = forward ? lines_[side].Count() : rows_.LinesBefore(side, row);
        const std::optional<LineNumber> line = SearchLines(lines_[side], *search, from, end, forward, pace);
        if (!line) return std::nullopt;
        return rows_.RowOfLine(side, *line + 1);
    }
    CellSearch search(*this, side, text);
    if (forward) return search.First(std::min(row, rows_.LastRow()) + 1, rows_.LastRow() + 1, 1, pace);
    return search.First(std::max(row, 1) - 1, 0, -1, pace);
}

std::optional<std::int32_t> FileGrids::Find(std::string_view text, FindDirection direction,
                                            std::int32_t current, const CancelCheck& check) const {
    if (text.empty()) return std::nullopt;
    if (direction == FindDirection::Both) {
        const auto found = Find(text, FindDirection::Next, current, check);
        return found ? found : Find(text, FindDirection::Previous, current, check);
    }
    for (const Side side : kBothSides)
        if (const auto found = FindOnSide(side, text, direction, current, check)) return found;
    return std::nullopt;
}

}  // namespace vantrel
