#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/comparison_results.h"
#include "platform/files/file_system.h"

namespace vantrel {

// How many objects each of two folders held when they were last brought into line: "SyncPairs.Log" beside the
// history, a line of text for each pair, the one brought into line last at the end. At most kMostPairs are
// kept. The file is replaced by rename; lines that cannot be read are dropped.
class SyncedPairs {
  public:
    static constexpr std::size_t kMostPairs = 1'000;

    // `programFolder` ends in "/".
    SyncedPairs(const FileSystem& files, const std::string& programFolder)
        : files_(files), path_(programFolder + "SyncPairs.Log") {}

    // What the two folders of `results` held, as this comparison took them in: another filter counts others.
    // Left and right may have been the other way round. Nothing where that is not known.
    std::optional<PerSide<std::uint64_t>> Find(const ComparisonResults& results) const;
    Error Remember(const ComparisonResults& results, const PerSide<std::uint64_t>& objects) const;

  private:
    Error Read(std::string& content) const;

    const FileSystem& files_;
    std::string path_;
};

}  // namespace vantrel
