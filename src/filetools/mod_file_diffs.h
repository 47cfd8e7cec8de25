#pragma once

#include <memory>
#include <string>

#include "core/toolbox.h"
#include "filetools/file_grids.h"
#include "views/printed_pages.h"

namespace vantrel {

// The two grids of the difference viewer on paper.

struct PrintedGrid {
    const FileGrids* grids = nullptr;  // must outlive the job
    Side side = Side::Left;
    std::string path;  // of the file, the heading of each page
};

// Its lines at the left margin, those that differ in bold. All arguments must outlive the pages.
std::unique_ptr<PrintedPages> PagesOfGrid(const PrintedGrid& grid, const PrintHeader& header, PageSize size,
                                          const FontMeasure& measure);

// Prints one grid. Reports under its own name, and gives false where that failed. A cancel passes through.
bool PrintGrid(const Toolbox& tools, const PrintedGrid& grid, const PrintHeader& header, Paper& paper);

// The grids that are wanted, the left one first. The right one is left out where the left one failed.
bool PrintFileDiffs(const Toolbox& tools, const PerSide<PrintedGrid>& grids, const PerSide<bool>& wanted,
                    const PrintHeader& header, Paper& paper);

}  // namespace vantrel
