#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/files/file_system.h"

namespace vantrel {

// The patterns of what a comparison takes in and of what it leaves out, as lists.
struct FilterList {
    std::vector<std::string> include, exclude;

    friend bool operator==(const FilterList&, const FilterList&) = default;
};

// The patterns of a text with commas between them, as they stand; empty ones are left out.
std::vector<std::string> FillFilterTypeList(std::string_view text);
// The way back. A pattern that holds a comma comes back as several.
std::string CreateStringFromList(const std::vector<std::string>& patterns);

// Files of filter lists ("*.lst"): two lines of UTF-8, the patterns to include and those to exclude.
inline constexpr std::string_view kFilterListFiles = "Filter List Files (*.lst)|*.lst";
inline constexpr std::size_t kMostFilterListBytes = std::size_t{256} << 10;

// Takes the text of such a file. Where it is none, `list` is left alone and the result says why, as the end
// of a sentence; otherwise it is empty.
std::string_view ParseFilterList(std::string_view text, FilterList& list);
std::string FilterListText(const FilterList& list);

// The same from and to a file. A file that is no list gives InvalidPropertyValue with the reason as its text;
// any other error is the system's. `list` changes on success only.
Error ReadFilterList(const FileSystem& files, std::string_view path, FilterList& list);
// The file there is replaced whole, or left as it was.
Error WriteFilterList(const FileSystem& files, std::string_view path, const FilterList& list);

}  // namespace vantrel
