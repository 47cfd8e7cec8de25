#pragma once

#include <algorithm>

#include "views/printed_pages.h"

namespace vantrel::testing {

// Every code point is 100 twips wide, every line 200 high.
class FixedMeasure : public FontMeasure {
  public:
    double TextWidth(std::string_view text) const override {
        return 100.0 * static_cast<double>(std::count_if(text.begin(), text.end(), [](char byte) {
                   return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
               }));
    }
    double LineHeight() const override { return 200; }
};

// Keeps the pages that were printed on it, each part's behind those before.
class KeptPaper : public Paper {
  public:
    explicit KeptPaper(PageSize size) : size_(size) {}
    PageSize Size() const override { return size_; }
    const FontMeasure& Measure() const override { return measure_; }
    void Print(const PrintedPages& printed) override {
        for (std::size_t number = 1; number <= printed.Count(); ++number)
            pages.push_back(printed.Page(number));
    }

    std::vector<PrintedPage> pages;

  private:
    PageSize size_;
    FixedMeasure measure_;
};

}  // namespace vantrel::testing
