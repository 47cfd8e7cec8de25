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

// What stands between the halves.
std::string_view Marker(ResultType left, ResultType right) {
    switch (left) {
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
    return right == ResultType::None ? "" : "right only";
}
constexpr std::size_t kMarkerWidth = 10;

// Of a pair as it is, also where the view hides one half; empty where the view hides both.
std::string_view MarkerOfRow(const CompareReport& report, std::size_t row) {
    const HoldLists& hold = report.results.hold;
    return report.Shows(row) ? Marker(hold[Side::Left][row].type, hold[Side::Right][row].type) : "";
}

// The same for rows and for records of a sub-folder.
class HalfMaker {
  public:
    explicit HalfMaker(const LocaleFormats& locale) : locale_(locale) {}

    void Make(const ResultRow& row, Half& half) const {
        half = {};
        if (!row.IsReal()) return;
        half.name = DisplayName(row.text);
        locale_.AppendNumber(row.size, half.size);
        if (row.kind == RowKind::File)
            locale_.AppendDateTime(FileTimeToLocalFileTime(row.lastWrite), half.date);
    }
    void Make(const SubFolderRecord& record, Half& half) const {
        half = {};
        if (record.IsBlank()) return;
        half.name = DisplayName(record.name);
        locale_.AppendNumber(std::max(record.size, Currency()), half.size);
        locale_.AppendDateTime(FileTimeToLocalFileTime(record.lastWrite), half.date);
    }

  private:
    const LocaleFormats& locale_;
};

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

// Two passes over `count` lines: the widths of the columns, then the lines. `row(side, line)` gives what
// HalfMaker makes a half of, `marker(line)` what stands between them; a line without a marker is left out.
template <typename Row, typename MarkerOf>
void WriteTable(std::size_t count, const Row& row, const MarkerOf& marker, const HalfMaker& maker,
                Output& out) {
    const PerSide<Half> header{{Half{"Name", "Size", "Modified"}, Half{"Name", "Size", "Modified"}}};
    PerSide<Widths> widths;
    Half half;
    for (const Side side : kBothSides) {
        widths[side].Cover(header[side]);
        for (std::size_t line = 0; line < count; ++line) {
            if (marker(line).empty()) continue;
            maker.Make(row(side, line), half);
            widths[side].Cover(half);
        }
    }
    WriteLine(header[Side::Left], "", header[Side::Right], widths, out);
    Half other;
    for (std::size_t line = 0; line < count; ++line) {
        if (marker(line).empty()) continue;
        maker.Make(row(Side::Left, line), half);
        maker.Make(row(Side::Right, line), other);
        WriteLine(half, marker(line), other, widths, out);
    }
}

void WriteTotals(const CompareReport& report, Output& out) {
    constexpr std::array<std::string_view, 2> kNames = {"Left:  ", "Right: "};
    for (const Side side : kBothSides) {
        std::int64_t objects = 0;
        Currency bytes;
        for (std::size_t row = 0; row < report.results.hold[side].Count(); ++row) {
            const ResultRow& object = report.Row(side, row);
            if (!object.IsReal()) continue;
            ++objects;
            bytes += object.size;
        }
        out << kNames[Index(side)] << "Total " << objects << " object(s)  ("
            << ConvertBytesToCorrectByteTypeString(bytes) << ")\n";
    }
}

// How many pairs of each kind there are, under the words of the lines.
void WriteCounts(const CompareReport& report, Output& out) {
    constexpr std::array<std::string_view, 6> kMarkers = {"same",   "newer >",   "< newer",
                                                          "differ", "left only", "right only"};
    std::array<std::int64_t, kMarkers.size()> counts{};
    for (std::size_t row = 0; row < report.results.hold[Side::Left].Count(); ++row) {
        const auto* const marker = std::find(kMarkers.begin(), kMarkers.end(), MarkerOfRow(report, row));
        if (marker != kMarkers.end()) ++counts[static_cast<std::size_t>(marker - kMarkers.begin())];
    }
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

void WriteTextColumns(const CompareReport& report, Output& out) {
    const ComparisonResults& results = report.results;
    const HalfMaker maker(report.locale);
    out << "Left:  " << DisplayName(results.folders[Side::Left])
        << "\nRight: " << DisplayName(results.folders[Side::Right]) << "\n\n";
    WriteTable(
        results.hold[Side::Left].Count(),
        [&](Side side, std::size_t line) -> const ResultRow& { return report.Row(side, line); },
        [&](std::size_t line) { return MarkerOfRow(report, line); }, maker, out);
    if (report.ShowsSubFolderRecords()) {
        for (const CSubFolderDiffs& diffs : results.SubFolderDiffs) {
            out << "\nBelow " << DisplayName(diffs.Name()) << ":\n";
            WriteTable(
                diffs.Records(Side::Left).size(),
                [&](Side side, std::size_t line) -> const SubFolderRecord& {
                    return diffs.Records(side)[line];
                },
                [&](std::size_t line) {
                    return Marker(diffs.Records(Side::Left)[line].type,
                                  diffs.Records(Side::Right)[line].type);
                },
                maker, out);
        }
    }
    out << '\n';
    WriteTotals(report, out);
    WriteCounts(report, out);
}

}  // namespace vantrel::cli
