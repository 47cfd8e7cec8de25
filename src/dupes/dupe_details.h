#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"
#include "dupes/dupe_progress.h"
#include "dupes/dupe_results.h"
#include "fileops/shell_wrappers.h"

namespace vantrel {

// The columns of lvwDupeDetails.
enum class DupeColumn : std::uint8_t {
    Name,
    Path,
    Size,
    CreateTime,
    LastModTime,
    Attributes,
    VersionStamp,
    Crc32
};
inline constexpr std::size_t kDupeColumnCount = 8;
using DupeRow = std::array<std::string, kDupeColumnCount>;

std::string_view DupeColumnCaption(DupeColumn column);

// The row of a file, as it is now; Crc32 is "Not calculated".
DupeRow DetailsOf(const Toolbox& tools, const FoundFiles& found, const DupeFile& file);

// The CRC-32 of a file as the column shows it. The status tells of it, and is put back by the caller. Throws
// ErrorException where the file cannot be read, and Cancelled.
std::string CalculateCrc32(const Toolbox& tools, const FoundFiles& found, const DupeFile& file,
                           DupeProgress& progress);

// Adds the name to the files to exclude and says so, or that it stands there already.
void AddFileToExcludeList(const Toolbox& tools, clsDupeSettings& settings, std::string_view name);

enum class DupeRename : std::uint8_t {
    NotDone,    // no new name was given, or it failed and was told
    Renamed,    // the row shows the new name
    LeftGroup,  // renamed, and since names must match it is no duplicate any more: it left the lists
};
// Asks for a new name and renames the file in its folder.
DupeRename RenameDupeFile(const Toolbox& tools, ShellWrappers& wrappers, DupeResults& results,
                          std::uint32_t group, std::uint32_t file);

}  // namespace vantrel
