#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "dupes/dupe_results.h"

namespace vantrel {

enum class DupeExportFormat : std::uint8_t { Csv, Json };

// Takes the text of an export, a stretch at a time.
using DupeExportSink = std::function<void(std::string_view text)>;

// The groups that are shown, in the order shown. As JSON a line for each group:
// {"label":"...","size":12,"files":[{"path":"...","size":12,"modified":"...","otherNames":["..."]}]}
// where the size of the group is that of its first file. As CSV (RFC 4180) a line for each file below a line
// of headings. Paths are in the engine's form, times are UTC.
void WriteGroups(const DupeResults& results, DupeExportFormat format, const DupeExportSink& sink);

// The same into a file, which is replaced as a whole.
Error ExportGroups(const FileSystem& files, const DupeResults& results, DupeExportFormat format,
                   const std::string& path);

}  // namespace vantrel
