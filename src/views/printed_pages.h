#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// What goes on paper, as data. Lengths are twips (1/1440 inch), from the upper left corner of what a printer
// can reach. Nothing here knows a printer or a window.

// A text in one line. `y` is the upper edge of its line.
struct PrintedText {
    double x = 0;
    double y = 0;
    std::string text;
    bool isBold = false;
    friend bool operator==(const PrintedText&, const PrintedText&) = default;
};
using PrintedPage = std::vector<PrintedText>;

struct PageSize {
    double width = 0;
    double height = 0;
};

// How wide a text comes out in the font of the pages, which is of one size. Tests have one of their own.
class FontMeasure {
  public:
    virtual ~FontMeasure() = default;
    virtual double TextWidth(std::string_view text) const = 0;
    virtual double LineHeight() const = 0;
};

// Pages that are made when they are asked for, so that a long list takes no memory for them.
class PrintedPages {
  public:
    virtual ~PrintedPages() = default;
    virtual std::size_t Count() const = 0;  // at least 1
    // Numbers are from 1.
    virtual PrintedPage Page(std::size_t number) const = 0;
};

// Where pages go: a printer, a file, a preview.
class Paper {
  public:
    virtual ~Paper() = default;
    virtual PageSize Size() const = 0;
    virtual const FontMeasure& Measure() const = 0;
    // Prints all of them, behind what was printed before, and begins with a page of their own. Lets events
    // through between pages. Throws ErrorException where that fails, Cancelled where the user had enough.
    virtual void Print(const PrintedPages& pages) = 0;
};

// What stands at the head of each page.
struct PrintHeader {
    bool hasPageNumber = false;
    bool hasDateTime = false;
    std::string now;  // the date at which the job began, as it is shown
};
std::string HeaderText(const PrintHeader& header, std::size_t page);

// The head of `text` that is no wider than `width` with `behind` after it. Cut between code points.
std::string CutToWidth(const FontMeasure& measure, std::string text, double width,
                       std::string_view behind = {});

// Pages of rows of one height below a header: a bold line at the top, then from 5 % of the height on the line
// of the headings and an empty one, then rows until 90 % of the height are reached.
class RowPages : public PrintedPages {
  public:
    std::size_t Count() const override;
    PrintedPage Page(std::size_t number) const override;

  protected:
    // `measure` must outlive the pages. The headings bear their x; their y is set here.
    RowPages(PageSize size, const FontMeasure& measure, PrintHeader header, PrintedPage headings,
             std::size_t rows);
    const FontMeasure& Measure() const { return measure_; }

  private:
    // Adds what stands in the row, from 0, whose line begins at y.
    virtual void AddRow(std::size_t row, double y, PrintedPage& page) const = 0;

    const FontMeasure& measure_;
    PrintHeader header_;
    PrintedPage headings_;
    std::size_t rows_;
    double firstRowY_;
    std::size_t rowsOfPage_;
};

}  // namespace vantrel
