#include "script_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantrel::testing {

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

std::size_t SlowLcs(const std::vector<std::string_view>& one, const std::vector<std::string_view>& two) {
    std::vector<std::size_t> row(two.size() + 1);
    for (const std::string_view line : one) {
        std::size_t diagonal = 0;
        for (std::size_t j = 1; j <= two.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = line == two[j - 1] ? diagonal + 1 : std::max(above, row[j - 1]);
            diagonal = above;
        }
    }
    return row.back();
}

std::string Apply(const std::vector<Hunk>& hunks, const PerSide<std::string_view>& texts) {
    PerSide<std::vector<std::string_view>> lines;
    for (const Side side : kBothSides) lines[side] = LinesOf(texts[side]);
    std::string made;
    std::size_t at = 0;
    for (const Hunk& hunk : hunks) {
        for (const Side side : kBothSides) {
            const LineRange& range = hunk.lines[side];
            std::string joined;
            for (LineNumber line = range.first; line < range.End(); ++line)
                joined += lines[side].at(static_cast<std::size_t>(line));
            EXPECT_EQ(joined, texts[side].substr(range.offset, range.size));
            if (side == Side::Right) continue;
            for (; at < static_cast<std::size_t>(range.first); ++at) made += lines[side].at(at);
            at += static_cast<std::size_t>(range.count);
        }
        const LineRange& right = hunk.lines[Side::Right];
        made += texts[Side::Right].substr(right.offset, right.size);
    }
    for (; at < lines[Side::Left].size(); ++at) made += lines[Side::Left][at];
    return made;
}

std::size_t LengthOf(const std::vector<Hunk>& hunks) {
    std::size_t length = 0;
    for (const Hunk& hunk : hunks)
        for (const Side side : kBothSides) length += static_cast<std::size_t>(hunk.lines[side].count);
    return length;
}

std::string RandomTexts::Line() {
    static const std::vector<std::string> words = {"", "a", "b", "c", "\r", "a\rb", "  a", "}", "\tint n;"};
    static const std::vector<std::string> ends = {"\n", "\n", "\n", "\r\n"};
    return words[Below(words.size())] + ends[Below(ends.size())];
}

PerSide<std::string> RandomTexts::Next() {
    std::vector<std::string> left(Below(12) == 0 ? 0 : Below(60));
    for (std::string& line : left) line = Line();
    std::vector<std::string> right = left;
    for (std::size_t edits = Below(12); edits > 0; --edits) {
        const auto place = right.begin() + static_cast<std::ptrdiff_t>(Below(right.size() + 1));
        const std::size_t room = static_cast<std::size_t>(right.end() - place);
        const auto some = static_cast<std::ptrdiff_t>(Below(std::min<std::size_t>(room, 6) + 1));
        if (Below(2) == 0)
            right.erase(place, place + some);
        else
            right.insert(place, Below(5), Line());
    }
    PerSide<std::string> texts;
    for (const std::string& line : left) texts[Side::Left] += line;
    for (const std::string& line : right) texts[Side::Right] += line;
    for (const Side side : kBothSides)
        if (Below(3) == 0 && !texts[side].empty()) texts[side].pop_back();
    return texts;
}

}  // namespace vantrel::testing
