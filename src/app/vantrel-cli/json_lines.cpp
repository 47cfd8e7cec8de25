#include "json_lines.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "compare_output.h"

namespace vantrel::cli {

namespace {

// A half of a pair or of a record, whatever it was made from.
struct Half {
    std::string_view name;
    Currency size;
    FileTime modified;
    ResultType type = ResultType::None;
    bool isFolder = false;
};

void WriteHalf(const Half& half, Output& out) {
    if (half.type == ResultType::None) {
        out << "null";
        return;
    }
    out << R"({"name":)";
    WriteJsonString(half.name, out);
    out << R"(,"size":)" << std::max<std::int64_t>(half.size.Whole(), 0);
    if (!half.isFolder) {
        out << R"(,"modified":)";
        WriteJsonTime(half.modified, out);
    }
    out << R"(,"type":")" << ResultTypeText(half.type) << R"("})";
}

void WritePair(const Half& left, const Half& right, Output& out) {
    out << R"("left":)";
    WriteHalf(left, out);
    out << R"(,"right":)";
    WriteHalf(right, out);
    out << "}\n";
}

Half HalfOf(const ResultRow& row) {
    return {row.text, row.size, row.lastWrite, row.type, row.kind == RowKind::Folder};
}

Half HalfOf(const SubFolderRecord& record) {
    return {record.name, record.size, record.lastWrite, record.type, false};
}

bool NeedsEscape(char letter) {
    return letter == '"' || letter == '\\' || static_cast<unsigned char>(letter) < 0x20;
}

}  // namespace

void WriteJsonString(std::string_view text, Output& out) {
    out << '"';
    while (!text.empty()) {
        const auto plain =
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), NeedsEscape) - text.begin());
        out << text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        if (text[0] == '"' || text[0] == '\\') {
            out << '\\' << text[0];
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(text[0]));
            out << escape;
        }
        text.remove_prefix(1);
    }
    out << '"';
}

void WriteJsonTime(FileTime utc, Output& out) {
    using namespace std::chrono;
    using Ticks = duration<std::int64_t, std::ratio<1, FileTime::kTicksPerSecond>>;
    const sys_days epoch = year{1601} / January / 1;
    const auto whole = floor<days>(Ticks(utc.ticks));
    const year_month_day date(epoch + whole);
    const hh_mm_ss<Ticks> time(Ticks(utc.ticks) - whole);
    char text[64];
    const int length = std::snprintf(
        text, sizeof text, "\"%04d-%02u-%02uT%02d:%02d:%02d.%07dZ\"", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
    out << std::string_view(text, static_cast<std::size_t>(length));
}

void WriteJsonLines(const CompareReport& report, Output& out) {
    for (std::size_t row = 0; row < report.results.hold[Side::Left].Count(); ++row) {
        if (!report.Shows(row)) continue;
        out << '{';
        WritePair(HalfOf(report.Row(Side::Left, row)), HalfOf(report.Row(Side::Right, row)), out);
    }
    if (!report.ShowsSubFolderRecords()) return;
    for (const CSubFolderDiffs& diffs : report.results.SubFolderDiffs) {
        const auto& left = diffs.Records(Side::Left);
        const auto& right = diffs.Records(Side::Right);
        for (std::size_t record = 0; record < left.size(); ++record) {
            out << R"({"folder":)";
            WriteJsonString(diffs.Name(), out);
            out << ',';
            WritePair(HalfOf(left[record]), HalfOf(right[record]), out);
        }
    }
}

}  // namespace vantrel::cli
