#include <algorithm>
#include <array>
#include <string>

#include "compare_output.h"
#include "display_width.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel::cli {

namespace {

// A longer name pushes the rest of its line, instead of the columns of all lines.
constexpr std::size_t kWidestName = 50;

// The texts of one half of a line; empty for a missing half.
struct Half {
    std::string name, size, date;
};

struct Widths {
    std::size_t name = 0, size = 0, date = 0;

    void Cover(const Half& half) {
        name = std::max(name, std::min(DisplayWidth(half.name), kWidestName));
        size = std::max(size, DisplayWidth(half.size));
        date = std::max(date, DisplayWidth(half.date));
    }
};

// What stands between the halves: what the pair is, also where the view hides one of them.
std::string_view Marker(const ShownPair& pair) {
    if (pair[Side::Left].unknown || pair[Side::Right].unknown) return "Unknown";
    switch (pair[Side::Left].type) {
        case ResultType::Newer:
            return "newer >";
        case ResultType::Older:
            return "< newer";
        case ResultType::Same:
        case ResultType::IdenticalFolder:
            return "same";
        case ResultType::Binary:
        case ResultType::DifferentFolder:
            return "differ";
        case ResultType::Orphan:
        case ResultType::OrphanFolder:
            return "left only";
        case ResultType::None:
            break;
    }
    return pair[Side::Right].type == ResultType::None ? "" : "right only";
}
constexpr std::size_t kMarkerWidth = 10;

void MakeTexts(const ShownHalf& half, const LocaleFormats& locale, Half& texts) {
    locale.AppendNumber(half.size, texts.size);
    if (half.modified) locale.AppendDateTime(FileTimeToLocalFileTime(*half.modified), texts.date);
    if (half.incomplete) texts.date = "incomplete";
}

// Most pairs are of files that are alike in size and time, and their texts are most of the work of a table.
void MakeTexts(const ShownPair& pair, const LocaleFormats& locale, PerSide<Half>& texts) {
    const ShownHalf& left = pair[Side::Left];
    const ShownHalf& right = pair[Side::Right];
    const bool alike = left.shown && right.shown && !left.unknown && !right.unknown &&
                       left.size == right.size && left.modified == right.modified &&
                       left.incomplete == right.incomplete;
    for (const Side side : kBothSides) {
        Half& half = texts[side];
        half.name.clear();
        half.size.clear();
        half.date.clear();
        if (!pair[side].shown) continue;
        half.name = DisplayName(pair[side].name);
        if (pair[side].unknown) continue;
        if (side == Side::Right && alike) {
            half.size = texts[Side::Left].size;
            half.date = texts[Side::Left].date;
        } else {
            MakeTexts(pair[side], locale, half);
        }
    }
}

void WriteColumn(std::string_view text, std::size_t width, bool right, Output& out) {
    const std::size_t used = DisplayWidth(text);
    const std::size_t blanks = used < width ? width - used : 0;
    if (right) out.Fill(blanks, ' ');
    out << text;
    if (!right) out.Fill(blanks, ' ');
}

void WriteHalf(const Half& half, const Widths& widths, Output& out) {
    WriteColumn(half.name, widths.name, false, out);
    out << "  ";
    WriteColumn(half.size, widths.size, true, out);
    out << "  ";
    WriteColumn(half.date, widths.date, false, out);
}

void WriteLine(const Half& left, std::string_view marker, const Half& right, const PerSide<Widths>& widths,
               Output& out) {
    WriteHalf(left, widths[Side::Left], out);
    out << "  ";
    WriteColumn(marker, kMarkerWidth, false, out);
    out << "  ";
    WriteHalf(right, widths[Side::Right], out);
    out.EndLine();
}

// Two passes over the pairs: the widths of the columns, then the lines.
void WriteTable(const ReportPart& part, const LocaleFormats& locale, Output& out) {
    const Half header{"Name", "Size", "Modified"};
    PerSide<Widths> widths;
    PerSide<Half> texts;
    for (const Side side : kBothSides) widths[side].Cover(header);
    part.ForEach([&](const ShownPair& pair) {
        MakeTexts(pair, locale, texts);
        for (const Side side : kBothSides) widths[side].Cover(texts[side]);
    });
    WriteLine(header, "", header, widths, out);
    part.ForEach([&](const ShownPair& pair) {
        MakeTexts(pair, locale, texts);
        WriteLine(texts[Side::Left], Marker(pair), texts[Side::Right], widths, out);
    });
}

void WriteTotals(const ReportPart& part, Output& out) {
    constexpr PerSide<std::string_view> kNames{{"Left:  ", "Right: "}};
    PerSide<std::int64_t> objects{};
    PerSide<Currency> bytes;
    part.ForEach([&](const ShownPair& pair) {
        for (const Side side : kBothSides) {
            if (!pair[side].shown || pair[side].unknown) continue;
            ++objects[side];
            bytes[side] += pair[side].size;
        }
    });
    for (const Side side : kBothSides)
        out << kNames[side] << "Total " << objects[side] << " object(s)  ("
            << ConvertBytesToCorrectByteTypeString(bytes[side]) << ")\n";
}

// How many pairs of each kind there are, under the words of the lines.
void WriteCounts(const ReportPart& part, Output& out) {
    constexpr std::array<std::string_view, 7> kMarkers = {"same",      "newer >",    "< newer", "differ",
                                                          "left only", "right only", "Unknown"};
    std::array<std::int64_t, kMarkers.size()> counts{};
    part.ForEach([&](const ShownPair& pair) {
        const auto* const marker = std::find(kMarkers.begin(), kMarkers.end(), Marker(pair));
        if (marker != kMarkers.end()) ++counts[static_cast<std::size_t>(marker - kMarkers.begin())];
    });
    std::string_view separator = "Pairs: ";
    for (std::size_t index = 0; index < counts.size(); ++index) {
        if (counts[index] == 0) continue;
        out << separator << counts[index] << ' ' << kMarkers[index];
        separator = ", ";
    }
    if (separator != ", ") out << "Pairs: none";
    out << '\n';
}

}  // namespace

void WriteTextColumns(const ResultsReport& report, const LocaleFormats& locale, Output& out) {
    out << "Left:  " << DisplayName(report.folders[Side::Left])
        << "\nRight: " << DisplayName(report.folders[Side::Right]) << "\n\n";
    for (const ReportPart& part : report.parts) {
        if (!part.SubFolder().empty()) out << "\nBelow " << DisplayName(part.SubFolder()) << ":\n";
        WriteTable(part, locale, out);
    }
    out << '\n';
    // The sums are those of the two folders; their rows hold what is below.
    WriteTotals(report.parts.front(), out);
    WriteCounts(report.parts.front(), out);
}

}  // namespace vantrel::cli
