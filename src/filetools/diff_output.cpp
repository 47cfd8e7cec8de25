#include "filetools/diff_output.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

#include "platform/error.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr std::string_view kIncomplete = "\\ No newline at end of file";
constexpr PerSide<std::string_view> kSideMarks{{"< ", "> "}};
constexpr LineNumber kContextLines = 3;

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// Where the line at `offset` ends, its LF included.
std::uint64_t EndOfLine(std::string_view text, std::uint64_t offset) {
    const void* const end = std::memchr(text.data() + offset, '\n', text.size() - offset);
    return end == nullptr ? text.size()
                          : static_cast<std::uint64_t>(static_cast<const char*>(end) - text.data()) + 1;
}

// Writes the lines of `text` from `offset` to `end`, each behind `mark`.
void WriteLines(std::string_view text, std::uint64_t offset, std::uint64_t end, std::string_view mark,
                const TextSink& sink) {
    while (offset < end) {
        const std::uint64_t next = EndOfLine(text, offset);
        sink(mark);
        sink(text.substr(offset, next - offset));
        offset = next;
    }
    if (end > 0 && end == text.size() && text[end - 1] != '\n') {
        sink("\n");
        sink(kIncomplete);
        sink("\n");
    }
}

}  // namespace

std::int32_t DiffOutput::NextHeader(std::int32_t from) const {
    const std::int32_t count = OutputLineCount();
    while (from < count) {
        const std::string line = OutputLine(from);
        if (!line.empty() && IsDigit(line.front())) break;
        ++from;
    }
    return std::min(from, count);
}

HunkOutput::HunkOutput(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts)
    : hunks_(&hunks), texts_(texts) {
    starts_.reserve(hunks.size() + 1);
    std::int64_t lines = 0;
    for (const Hunk& hunk : hunks) {
        starts_.push_back(static_cast<std::int32_t>(lines));
        lines += LinesOf(hunk);
        if (lines > std::numeric_limits<std::int32_t>::max())
            throw ErrorException(Error(ErrorNumber::Overflow, "There are too many lines that differ"));
    }
    starts_.push_back(static_cast<std::int32_t>(lines));
}

bool HunkOutput::EndsIncomplete(const LineRange& range, Side side) const {
    return range.count > 0 && range.offset + range.size == texts_[side].size() && texts_[side].back() != '\n';
}

std::int64_t HunkOutput::LinesOf(const Hunk& hunk) const {
    std::int64_t lines = hunk.Form() == 'c' ? 2 : 1;
    for (const Side side : kBothSides)
        lines += hunk.lines[side].count + static_cast<std::int64_t>(EndsIncomplete(hunk.lines[side], side));
    return lines;
}

std::string HunkOutput::TextLine(const Hunk& hunk, Side side, LineNumber line) const {
    Place& place = places_[side];
    if (place.line < hunk.lines[side].first || place.line > line)
        place = {hunk.lines[side].first, hunk.lines[side].offset};
    for (; place.line < line; ++place.line) place.offset = EndOfLine(texts_[side], place.offset);
    std::string_view text = texts_[side].substr(place.offset);
    text = text.substr(0, EndOfLine(text, 0));
    if (text.ends_with('\n')) text.remove_suffix(1);
    return std::string(kSideMarks[side]).append(text);
}

std::string HunkOutput::OutputLine(std::int32_t index) const {
    if (index < 0 || index >= OutputLineCount()) return {};
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), index);
    const Hunk& hunk = (*hunks_)[static_cast<std::size_t>(behind - starts_.begin()) - 1];
    std::int32_t inside = index - *(behind - 1);
    if (inside-- == 0) return HunkHeader(hunk);
    for (const Side side : kBothSides) {
        const LineRange& range = hunk.lines[side];
        if (inside < range.count) return TextLine(hunk, side, range.first + inside);
        inside -= range.count;
        if (EndsIncomplete(range, side) && inside-- == 0) return std::string(kIncomplete);
        if (side == Side::Left && hunk.Form() == 'c' && inside-- == 0) return "---";
    }
    return {};
}

std::int32_t HunkOutput::NextHeader(std::int32_t from) const {
    const auto found = std::lower_bound(starts_.begin(), starts_.end(), from);
    return found == starts_.end() ? OutputLineCount() : *found;
}

void WriteNormal(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts,
                 const TextSink& sink) {
    for (const Hunk& hunk : hunks) {
        sink(HunkHeader(hunk));
        sink("\n");
        for (const Side side : kBothSides) {
            const LineRange& range = hunk.lines[side];
            if (side == Side::Right && hunk.Form() == 'c') sink("---\n");
            if (range.count > 0)
                WriteLines(texts[side], range.offset, range.offset + range.size, kSideMarks[side], sink);
        }
    }
}

std::string UnifiedName(std::string_view path, FileTime lastWrite) {
    const std::string bytes = NameToSystem(path);
    std::string name;
    const auto needsQuotes = [](char letter) {
        return letter == ' ' || letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
    };
    if (std::none_of(bytes.begin(), bytes.end(), needsQuotes)) {
        name = bytes;
    } else {
        name = '"';
        for (const char letter : bytes) {
            const auto code = static_cast<unsigned char>(letter);
            if (letter == '"' || letter == '\\')
                name.append({'\\', letter});
            else if (code < 0x20)
                name.append(
                    {'\\', '0', static_cast<char>('0' + code / 8), static_cast<char>('0' + code % 8)});
            else
                name += letter;
        }
        name += '"';
    }
    // "2020-09-13T12:26:40.0000000Z"
    std::string time = UtcText(lastWrite);
    std::replace(time.begin(), time.end(), 'T', ' ');
    if (time.ends_with('Z')) time.pop_back();
    return name + "\t" + time + "00 +0000";
}

namespace {

// Hunks that stand so near to each other that they are written under one header.
class UnifiedGroup {
  public:
    UnifiedGroup(std::span<const Hunk> hunks, const PerSide<std::string_view>& texts)
        : hunks_(hunks), texts_(texts) {
        for (const Side side : kBothSides) {
            const LineRange& range = hunks.front().lines[side];
            first_[side] = range.first;
            end_[side] = hunks.back().lines[side].End();
        }
        from_ = hunks.front().lines[Side::Left].offset;
        const LineRange& last = hunks.back().lines[Side::Left];
        to_ = last.offset + last.size;
        for (LineNumber line = 0; line < kContextLines && from_ > 0; ++line) {
            const std::size_t before =
                from_ < 2 ? std::string_view::npos : texts[Side::Left].rfind('\n', from_ - 2);
            from_ = before == std::string_view::npos ? 0 : before + 1;
            for (const Side side : kBothSides) --first_[side];
        }
        for (LineNumber line = 0; line < kContextLines && to_ < texts[Side::Left].size(); ++line) {
            to_ = EndOfLine(texts[Side::Left], to_);
            for (const Side side : kBothSides) ++end_[side];
        }
    }

    void Write(const TextSink& sink) const {
        std::string header = "@@";
        for (const Side side : kBothSides) {
            const LineNumber count = end_[side] - first_[side];
            header.append(side == Side::Left ? " -" : " +")
                .append(std::to_string(count == 0 ? first_[side] : first_[side] + 1));
            if (count != 1) header.append(",").append(std::to_string(count));
        }
        sink(header + " @@\n");
        std::uint64_t at = from_;
        for (const Hunk& hunk : hunks_) {
            const LineRange& left = hunk.lines[Side::Left];
            const LineRange& right = hunk.lines[Side::Right];
            WriteLinesUpTo(at, left.offset, " ", sink);
            if (left.count > 0)
                WriteLines(texts_[Side::Left], left.offset, left.offset + left.size, "-", sink);
            if (right.count > 0)
                WriteLines(texts_[Side::Right], right.offset, right.offset + right.size, "+", sink);
            at = left.offset + left.size;
        }
        WriteLinesUpTo(at, to_, " ", sink);
    }

  private:
    void WriteLinesUpTo(std::uint64_t from, std::uint64_t to, std::string_view mark,
                        const TextSink& sink) const {
        if (from < to) WriteLines(texts_[Side::Left], from, to, mark, sink);
    }

    std::span<const Hunk> hunks_;
    const PerSide<std::string_view>& texts_;
    PerSide<LineNumber> first_, end_;
    std::uint64_t from_ = 0, to_ = 0;  // in the left text
};

}  // namespace

void WriteUnified(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts,
                  const PerSide<std::string>& names, const TextSink& sink) {
    if (hunks.empty()) return;
    sink("--- " + names[Side::Left] + "\n+++ " + names[Side::Right] + "\n");
    for (std::size_t first = 0; first < hunks.size();) {
        std::size_t end = first + 1;
        while (end < hunks.size() &&
               hunks[end].lines[Side::Left].first - hunks[end - 1].lines[Side::Left].End() <=
                   2 * kContextLines)
            ++end;
        UnifiedGroup(std::span(hunks).subspan(first, end - first), texts).Write(sink);
        first = end;
    }
}

}  // namespace vantrel
