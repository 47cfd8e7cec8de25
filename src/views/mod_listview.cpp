#include "views/mod_listview.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/row_texts.h"
#include "platform/files/replace_file.h"
#include "platform/line_end.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

struct Marks {
    std::string_view onPaper, inFile;
};
constexpr std::string_view kTick = " \u2713";
constexpr std::array<Marks, kResultTypeCount + 1> kMarks{{{"  ", "  "},
                                                          {"+ ", "+ "},
                                                          {"- ", "- "},
                                                          {kTick, "= "},
                                                          {"O ", "O "},
                                                          {"? ", "? "},
                                                          {kTick, "= "},
                                                          {"X ", "X "},
                                                          {"O ", "O "}}};

// Where the columns of a list stand in its part of the page.
struct Columns {
    double nameWidth, sizeStart, sizeWidth, dateStart;
};

// The date column is as wide as the date of the first row says.
Columns ColumnsOf(const ResultList& rows, const LocaleFormats& locale, double width,
                  const FontMeasure& measure) {
    std::string date = rows.IsEmpty() ? std::string() : DateText(rows[0], locale);
    const double dateWidth =
        measure.TextWidth(date.empty() ? "55/55/55 55:55:55 PM  " : date.append("     "));
    const double left = std::max(0.0, width - dateWidth);
    Columns columns{};
    columns.nameWidth = std::floor(left * 0.55);
    columns.sizeStart = columns.nameWidth + 1;
    columns.sizeWidth = std::floor(left * 0.3);
    columns.dateStart = columns.sizeStart + columns.sizeWidth + 1;
    return columns;
}

// Aligned to the right with blanks, as far as they fit.
std::string RightAligned(std::string text, double width, const FontMeasure& measure) {
    const double room = (width - measure.TextWidth(text)) / measure.TextWidth(" ");
    if (room >= 1) text.insert(0, static_cast<std::size_t>(room), ' ');
    return text;
}

// One list or two beside each other: `lists` may hold one only.
class ListPages : public RowPages {
  public:
    ListPages(std::span<const PrintedList> lists, const PrintHeader& header, const LocaleFormats& locale,
              PageSize size, const FontMeasure& measure)
        : RowPages(size, measure, header, Headings(lists, size.width, measure), Rows(lists)),
          lists_(lists),
          locale_(locale),
          width_(size.width / static_cast<double>(lists.size())),
          columns_(ColumnsOf(*lists[0].rows, locale, width_, measure)) {}

  private:
    static std::size_t Rows(std::span<const PrintedList> lists) {
        std::size_t rows = 0;
        for (const PrintedList& list : lists) rows = std::max(rows, list.rows->Count());
        return rows;
    }
    static PrintedPage Headings(std::span<const PrintedList> lists, double width,
                                const FontMeasure& measure) {
        const double part = width / static_cast<double>(lists.size());
        PrintedPage headings;
        for (const PrintedList& list : lists)
            headings.push_back({part * static_cast<double>(headings.size()), 0,
                                CutToWidth(measure, DisplayName(list.folder), part,
                                           lists.size() > 1 ? " " : std::string_view()),
                                false});
        return headings;
    }
    void AddRow(std::size_t row, double y, PrintedPage& page) const override {
        double x = 0;
        for (const PrintedList& list : lists_) {
            if (row < list.rows->Count()) AddRowOf((*list.rows)[row], x, y, page);
            x += width_;
        }
    }
    void AddRowOf(const ResultRow& row, double x, double y, PrintedPage& page) const {
        const std::string mark(MarkOnPaper(row.type));
        page.push_back({x, y, mark, true});
        if (row.text.empty()) return;
        // The name goes on behind the mark, for which two blanks are kept free in its column.
        page.push_back({x + Measure().TextWidth("  "), y,
                        CutToWidth(Measure(), DisplayName(row.text), columns_.nameWidth, "  "), false});
        if (const std::string size = SizeText(row, locale_); !size.empty())
            page.push_back(
                {x + columns_.sizeStart, y, RightAligned(size, columns_.sizeWidth, Measure()), false});
        if (std::string date = DateText(row, locale_); !date.empty())
            page.push_back({x + columns_.dateStart, y, std::move(date), false});
    }

    std::span<const PrintedList> lists_;
    const LocaleFormats& locale_;
    double width_;  // of the part of a page that a list has
    Columns columns_;
};

// Lines with tab stops, handed on in large pieces.
class ReportWriter {
  public:
    explicit ReportWriter(const std::function<void(std::string_view)>& sink) : sink_(sink) {
        buffer_.reserve(kFlushAt + (std::size_t{4} << 10));
    }
    void Put(std::string_view text) { buffer_.append(text); }
    std::string& Buffer() { return buffer_; }
    void EndLine() {
        buffer_.append(kLineEnd);
        if (buffer_.size() >= kFlushAt) Flush();
        lineStart_ = buffer_.size();
    }
    // Columns are from 1. One that is passed already stands in the next line.
    void TabTo(std::size_t column) {
        std::size_t position = Position();
        if (position > column) {
            EndLine();
            position = 1;
        }
        buffer_.append(column - position, ' ');
    }
    void Flush() {
        if (!buffer_.empty()) sink_(buffer_);
        buffer_.clear();
    }

  private:
    static constexpr std::size_t kFlushAt = std::size_t{64} << 10;
    // Where the next character of the line goes.
    std::size_t Position() const {
        const auto isBeginning = [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
        };
        return 1 +
               static_cast<std::size_t>(std::count_if(
                   buffer_.begin() + static_cast<std::ptrdiff_t>(lineStart_), buffer_.end(), isBeginning));
    }

    const std::function<void(std::string_view)>& sink_;
    std::string buffer_;
    std::size_t lineStart_ = 0;
};

void WriteRow(const ResultRow& row, const LocaleFormats& locale, ReportWriter& out) {
    constexpr std::size_t kSizeColumn = 40, kDateColumn = 60;
    out.Put(MarkInFile(row.type));
    out.Put(" ");
    out.Put(DisplayName(row.text));
    out.TabTo(kSizeColumn);
    // As SizeText and DateText, without a text of their own for each row.
    if (row.IsReal()) locale.AppendNumber(std::max(row.size, Currency()), out.Buffer());
    out.TabTo(kDateColumn);
    if (row.kind == RowKind::File)
        locale.AppendDateTime(FileTimeToLocalFileTime(row.lastWrite), out.Buffer());
    out.EndLine();
}

}  // namespace

std::string_view MarkOnPaper(ResultType type) {
    return kMarks[static_cast<std::size_t>(type)].onPaper;
}

std::string_view MarkInFile(ResultType type) {
    return kMarks[static_cast<std::size_t>(type)].inFile;
}

std::unique_ptr<PrintedPages> PagesOfListview(const PrintedList& list, const PrintHeader& header,
                                              const LocaleFormats& locale, PageSize size,
                                              const FontMeasure& measure) {
    return std::make_unique<ListPages>(std::span(&list, 1), header, locale, size, measure);
}

std::unique_ptr<PrintedPages> PagesOfListviewsSideBySide(const PerSide<PrintedList>& lists,
                                                         const PrintHeader& header,
                                                         const LocaleFormats& locale, PageSize size,
                                                         const FontMeasure& measure) {
    return std::make_unique<ListPages>(lists.values, header, locale, size, measure);
}

bool PrintListview(const Toolbox& tools, const PrintedList& list, const PrintHeader& header, Paper& paper) {
    return tools.reporter.Guard("modListviews.PrintListview", [&] {
        paper.Print(*PagesOfListview(list, header, tools.locale, paper.Size(), paper.Measure()));
    });
}

bool PrintListviewsSideBySide(const Toolbox& tools, const PerSide<PrintedList>& lists,
                              const PrintHeader& header, Paper& paper) {
    return tools.reporter.Guard("modListviews.PrintListviewsSideBySide", [&] {
        paper.Print(*PagesOfListviewsSideBySide(lists, header, tools.locale, paper.Size(), paper.Measure()));
    });
}

void WriteListview(const PrintedList& list, bool isNewFile, std::string_view now, const LocaleFormats& locale,
                   const std::function<void(std::string_view piece)>& sink) {
    ReportWriter out(sink);
    if (!isNewFile) {
        out.EndLine();
        out.EndLine();
    } else if (!now.empty()) {
        out.Put("Vantrel - [");
        out.Put(now);
        out.Put("]");
        out.EndLine();
    }
    out.EndLine();
    out.Put(DisplayName(list.folder));
    out.EndLine();
    out.Put(std::string(80, '_'));
    out.EndLine();
    out.EndLine();
    for (const ResultRow& row : *list.rows) WriteRow(row, locale, out);
    out.Flush();
}

void PrintListviewToFile(const Toolbox& tools, std::span<const PrintedList> lists, const std::string& path,
                         std::string_view now) {
    ThrowIfFailed(ReplaceFileInPieces(tools.files, path, [&](const PieceSink& sink) {
        for (std::size_t i = 0; i < lists.size(); ++i)
            WriteListview(lists[i], i == 0, now, tools.locale, [&](std::string_view piece) {
                sink(piece);
                tools.loop.Yield();
            });
    }));
}

}  // namespace vantrel
