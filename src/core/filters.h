#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ccompare.h"

namespace vantrel {

// What a scan takes in.
struct ScanOptions {
    std::string includeFilters;  // comma-separated patterns; empty: all
    std::string excludeFilters;
    bool excludeSystemFiles = false;
    bool excludeHiddenFiles = false;
    bool excludeSystemFolders = false;
    bool excludeHiddenFolders = false;

    static ScanOptions Of(const CCompare& compare);
    // Whether the patterns let everything pass.
    bool HasNoFilters() const {
        return (includeFilters.empty() || includeFilters == "*") && excludeFilters.empty();
    }
};

// Decides by name and attributes what belongs to a scan.
class NameFilter {
  public:
    // For the two chosen folders: patterns as they stand, untrimmed. Sub-folders are tested by the patterns
    // when the list holds a folder pattern, that is, one that begins with the marker or with "/".
    static NameFilter ForScan(const ScanOptions& options);
    // For the trees below their sub-folders: patterns trimmed, folder patterns left out.
    static NameFilter ForWalk(const ScanOptions& options);

    // `attributes` are those of Attribute.
    bool KeepsFile(std::string_view name, std::uint8_t attributes) const;
    // `markedName` begins with the folder marker.
    bool KeepsFolder(std::string_view markedName, std::uint8_t attributes) const;

  private:
    using Patterns = std::vector<std::string>;
    static Patterns Split(std::string_view text, bool trimmed);
    static bool Matches(const Patterns& patterns, std::string_view name);

    bool noFilters_ = false;
    Patterns include_, exclude_;
    bool includeHoldsFolders_ = false;
    bool excludeHoldsFolders_ = false;
    std::uint8_t forbiddenFileAttributes_ = 0;
    std::uint8_t forbiddenFolderAttributes_ = 0;
};

}  // namespace vantrel
