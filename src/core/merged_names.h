#pragma once

#include <string_view>
#include <vector>

#include "core/cdir.h"
#include "core/side.h"

namespace vantrel {

// One name of either folder, with its file on each side. The text is that of the left side where it has one.
struct MergedFile {
    std::string_view text;
    PerSide<const CFile*> file;  // nullptr where that side lacks the name
};
struct MergedFolder {
    std::string_view text;  // with its marker
    PerSide<const CDir::SubDir*> folder;
};

// The names of both folders in the order of their keys, each key once. Names that either folder could not
// look at are left out on both sides. Throws ComparisonCancelled.
std::vector<MergedFile> MergeFiles(const PerSide<const CDir*>& dirs, const ComparisonContext& context);
std::vector<MergedFolder> MergeSubDirs(const PerSide<const CDir*>& dirs, const ComparisonContext& context);

}  // namespace vantrel
