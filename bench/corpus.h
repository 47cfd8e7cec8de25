#pragma once

#include <cstddef>
#include <string>

namespace vantrel::bench {

// Pairs of folders to measure with. Each routine makes FOLDER/left and FOLDER/right; the same arguments make
// the same bytes and times.

// `files` small files a side, straight in the two folders.
void MakeFlatPair(const std::string& folder, std::size_t files);

// `files` files of 0 to 16 KiB a side in `folders` folders, two levels deep. Of a hundred files one is newer
// on the left, one is missing on each side in turn, and one has other bytes of the same size and date.
void MakeTreePair(const std::string& folder, std::size_t files, std::size_t folders);

// `files` files of 0 to 4 KiB a side, ten in a folder, eight levels deep, with the differences of the pair of
// trees.
void MakeDeepPair(const std::string& folder, std::size_t files);

// `files` files a side in folders of 50: 95 % of 0 to 16 KiB, the rest of 1 to 50 MiB; of these one in ten
// differs at its end.
void MakeMixedPair(const std::string& folder, std::size_t files);

// `files` equal files of `size` bytes a side.
void MakeLargePair(const std::string& folder, std::size_t files, std::size_t size);

}  // namespace vantrel::bench
