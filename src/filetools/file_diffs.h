#pragma once

#include <string_view>

#include "core/toolbox.h"
#include "filetools/cview_file_diffs_options.h"
#include "filetools/file_diff_engine.h"
#include "filetools/file_grids.h"

namespace vantrel {

// The steps of one comparison for the window, in the order in which it runs them. Each catches its errors,
// reports them under its name and gives false then; a cancel passes through.

// Compares the two files of `options`, for reading, and says in a message what there is nothing to show of.
// True when there are differences to show in `globalDiffObject`.
bool CompareFilesAndStoreResultsInGlobalDiffObject(const Toolbox& tools, const cViewFileDiffsOptions& options,
                                                   FileDiffEngine& globalDiffObject);

// Fills `grids` with the two texts that were compared, each line in the row of its number.
bool LoadFilesIntoGrids(const Toolbox& tools, const FileDiffEngine& globalDiffObject, FileGrids& grids);

// Sets the rows of `grids` from the headers of `output`. Where they do not fit the lines of the grids a
// message says so. `paths` are those of the two files.
bool AlignGridsToDiffOutput(const Toolbox& tools, const DiffOutput& output, const PerSide<std::string>& paths,
                            FileGrids& grids);

}  // namespace vantrel
