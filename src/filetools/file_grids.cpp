#include "filetools/file_grids.h"

#include <algorithm>
#include <utility>

#include "platform/names/fold.h"
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
    const std::string_view line = Line(side, row);
    AppendLine(line, limit, text);
    if (text.size() < line.size()) CutBetweenCharacters(text);
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

// Looks for a folded text in the cells of one grid. What the text cannot begin or end with in the number is
// not looked for there.
class CellSearch {
  public:
    CellSearch(const FileGrids& grids, std::string_view text) : grids_(grids), wanted_(FoldCase(text)) {}

    bool IsIn(Side side, std::int32_t row) {
        const LineNumber line = grids_.Rows().LineAt(side, row);
        if (line == 0) return false;
        const std::string_view text = grids_.Line(side, row);
        cell_.assign(1, ' ').append(std::to_string(line)).append(1, '.');
        for (const char letter : text) {
            if (letter == '\t')
                cell_.append(kTab);
            else
                cell_.push_back(letter);
        }
        folded_.clear();
        AppendFolded(cell_, folded_);
        return folded_.find(wanted_) != std::string::npos;
    }

  private:
    const FileGrids& grids_;
    std::string wanted_;
    std::string cell_, folded_;
};

}  // namespace

std::optional<std::int32_t> FileGrids::Find(std::string_view text, FindDirection direction,
                                            std::int32_t current, const CancelCheck& check) const {
    if (text.empty()) return std::nullopt;
    if (direction == FindDirection::Both) {
        const auto found = Find(text, FindDirection::Next, current, check);
        return found ? found : Find(text, FindDirection::Previous, current, check);
    }
    const bool next = direction == FindDirection::Next;
    const std::int32_t step = next ? 1 : -1;
    const std::int32_t end = next ? rows_.LastRow() + 1 : 0;
    CellSearch search(*this, text);
    PacedCheck pace(check, std::size_t{1} << 20);
    for (const Side side : kBothSides) {
        for (std::int32_t row = current + step; next ? row < end : row > end; row += step) {
            pace.Count(64);
            if (search.IsIn(side, row)) return row;
        }
    }
    return std::nullopt;
}

}  // namespace vantrel
