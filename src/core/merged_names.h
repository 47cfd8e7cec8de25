#pragma once

#include <cstddef>
#include <cstdint>
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
    PerSide<const CFile*> file{};  // nullptr where that side has none
    PerSide<const CDir::Other*> other{};

    bool IsOccupied() const { return other[Side::Left] || other[Side::Right]; }
};
// Many of them, in little memory. The folders must outlive the object, and stay as they are.
class MergedFiles {
  public:
    explicit MergedFiles(const PerSide<const CDir*>& dirs);

    std::size_t Count() const { return places_.size(); }
    MergedFile operator[](std::size_t position) const;
    // Its files alone; nothing behind them is touched.
    PerSide<const CFile*> FilesAt(std::size_t position) const;
    void Reserve(std::size_t count) { places_.reserve(count); }
    // Its pointers must be those of the folders; its text is not looked at.
    void Add(const MergedFile& file);
    // Brings those from `first` on to where their keys belong among the others; both are in that order.
    void PutInOrder(std::size_t first);

  private:
    // Where each half stands among the files, or with kOther among the other entries, of its side.
    using Place = PerSide<std::uint32_t>;
    static constexpr std::uint32_t kNone = UINT32_MAX, kOther = std::uint32_t{1} << 31;
    std::string_view KeyOf(const Place& place) const;

    PerSide<const std::vector<CFile>*> files_;
    PerSide<const std::vector<CDir::Other>*> others_;
    std::vector<Place> places_;
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
MergedFiles MergeFiles(const PerSide<const CDir*>& dirs, const ComparisonContext& context);
std::vector<MergedFolder> MergeSubDirs(const PerSide<const CDir*>& dirs, const ComparisonContext& context);

}  // namespace vantrel
