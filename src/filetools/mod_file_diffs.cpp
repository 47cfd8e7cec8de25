#include "filetools/mod_file_diffs.h"

#include <algorithm>

#include "filetools/visible_text.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

// Of what is behind it no paper shows anything.
constexpr std::size_t kLongestLine = 4096;  // bytes

class GridPages : public RowPages {
  public:
    GridPages(const PrintedGrid& grid, const PrintHeader& header, PageSize size, const FontMeasure& measure)
        : RowPages(size, measure, header,
                   {{0, 0, CutToWidth(measure, DisplayName(grid.path), size.width), false}},
                   static_cast<std::size_t>(std::max(0, grid.grids->Rows().LastRow()))),
          grid_(grid),
          width_(size.width) {}

  private:
    void AddRow(std::size_t row, double y, PrintedPage& page) const override {
        const auto gridRow = static_cast<std::int32_t>(row) + 1;  // row 0 is the fixed one
        std::string text = grid_.grids->CellText(grid_.side, gridRow, kLongestLine);
        if (text.empty()) return;
        page.push_back({0, y, CutToWidth(Measure(), VisibleText(text), width_),
                        grid_.grids->Rows().KindAt(gridRow) != GridRowKind::Same});
    }

    const PrintedGrid& grid_;
    double width_;
};

}  // namespace

std::unique_ptr<PrintedPages> PagesOfGrid(const PrintedGrid& grid, const PrintHeader& header, PageSize size,
                                          const FontMeasure& measure) {
    return std::make_unique<GridPages>(grid, header, size, measure);
}

bool PrintGrid(const Toolbox& tools, const PrintedGrid& grid, const PrintHeader& header, Paper& paper) {
    return tools.reporter.Guard("modFileDiffs.PrintGrid", [&] {
        paper.Print(*PagesOfGrid(grid, header, paper.Size(), paper.Measure()));
    });
}

bool PrintFileDiffs(const Toolbox& tools, const PerSide<PrintedGrid>& grids, const PerSide<bool>& wanted,
                    const PrintHeader& header, Paper& paper) {
    bool isPrinted = true;
    const bool ended = tools.reporter.Guard("modFileDiffs.PrintFileDiffs", [&] {
        for (const Side side : kBothSides)
            if (wanted[side]) isPrinted = isPrinted && PrintGrid(tools, grids[side], header, paper);
    });
    return ended && isPrinted;
}

}  // namespace vantrel
