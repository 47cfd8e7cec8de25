#pragma once

#include <string_view>
#include <vector>

#include "core/cdir.h"
#include "core/side.h"

namespace vantrel {

// A name of either folder with what bears it on each side, or two names that differ in letter case only and
// are a pair. Where `other` is set on a side the name is occupied there by what is no file and no folder. The
// text is that of the left side where it has one.
struct MergedFile {
    std::string_view text;
    PerSide<const CFile*> file;  // nullptr where that side has none
    PerSide<const CDir::Other*> other{};

    bool IsOccupied() const { return other[Side::Left] || other[Side::Right]; }
};
struct MergedFolder {
    std::string_view text;  // with its marker
    PerSide<const CDir::SubDir*> folder;
    PerSide<const CDir::Other*> other{};

    bool IsOccupied() const { return other[Side::Left] || other[Side::Right]; }
};

// The names of both folders in the order of their keys, each once; every file, folder and other entry is in
// exactly one of them. Equal names pair first, and what is left of names that fold alike as PairNames has it.
// Other entries are among the folders where their counterpart is one, and else among the files. Throws
// ComparisonCancelled.
std::vector<MergedFile> MergeFiles(const PerSide<const CDir*>& dirs, const ComparisonContext& context);
std::vector<MergedFolder> MergeSubDirs(const PerSide<const CDir*>& dirs, const ComparisonContext& context);

}  // namespace vantrel
