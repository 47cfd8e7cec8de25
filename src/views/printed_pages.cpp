#include "views/printed_pages.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel {

namespace {

constexpr double kHeadingsAt = 0.05, kBreakAt = 0.9;  // of the height of a page

// Where the code points of a text begin, and its end.
std::vector<std::size_t> CodePointBorders(std::string_view text) {
    std::vector<std::size_t> borders;
    for (std::size_t i = 0; i < text.size(); ++i)
        if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) borders.push_back(i);
    borders.push_back(text.size());
    return borders;
}

}  // namespace

std::string HeaderText(const PrintHeader& header, std::size_t page) {
    std::string text = "Vantrel - ";
    if (header.hasPageNumber) text += "Page " + std::to_string(page);
    if (header.hasDateTime) text += "  [" + header.now + "]";
    return text;
}

std::string CutToWidth(const FontMeasure& measure, std::string text, double width, std::string_view behind) {
    const auto isTooWide = [&](std::size_t length) {
        return measure.TextWidth(text.substr(0, length).append(behind)) > width;
    };
    if (!isTooWide(text.size())) return text;
    // Taking off one character after the other measures a long name a hundred times.
    const std::vector<std::size_t> borders = CodePointBorders(text);
    const auto first = std::partition_point(borders.begin() + 1, borders.end(),
                                            [&](std::size_t length) { return !isTooWide(length); });
    text.resize(*(first - 1));
    return text;
}

RowPages::RowPages(PageSize size, const FontMeasure& measure, PrintHeader header, PrintedPage headings,
                   std::size_t rows)
    : measure_(measure), header_(std::move(header)), headings_(std::move(headings)), rows_(rows) {
    const double headingsY = size.height * kHeadingsAt;
    for (PrintedText& heading : headings_) heading.y = headingsY;
    firstRowY_ = headingsY + 2 * measure.LineHeight();
    // The row that begins at the limit or below goes to the next page. However low a page is, it has a row.
    const double room = (size.height * kBreakAt - firstRowY_) / measure.LineHeight();
    rowsOfPage_ = static_cast<std::size_t>(std::max(1.0, std::ceil(room)));
}

std::size_t RowPages::Count() const {
    return std::max<std::size_t>(1, (rows_ + rowsOfPage_ - 1) / rowsOfPage_);
}

PrintedPage RowPages::Page(std::size_t number) const {
    PrintedPage page{{0, 0, HeaderText(header_, number), true}};
    page.insert(page.end(), headings_.begin(), headings_.end());
    const std::size_t first = (number - 1) * rowsOfPage_, end = std::min(rows_, first + rowsOfPage_);
    for (std::size_t row = first; row < end; ++row)
        AddRow(row, firstRowY_ + static_cast<double>(row - first) * measure_.LineHeight(), page);
    return page;
}

}  // namespace vantrel
