#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/toolbox.h"

namespace vantrel {

// The fixed part of a version resource (VS_FIXEDFILEINFO), as far as it is used here.
struct VersionRecord {
    std::uint32_t dwFileVersionMS = 0;  // two parts of 16 bits, and the two that follow
    std::uint32_t dwFileVersionLS = 0;
    std::uint32_t dwFileFlags = 0;

    friend bool operator==(const VersionRecord&, const VersionRecord&) = default;
};

// How two records stand to each other, with the numbers that CompareVersionRecords gives.
enum class VersionOrder { FirstIsGreater = 0, FirstIsLess = 1, Equal = 2 };

// Reads the version resource of a PE file (Microsoft's PE Format: 32 bit, magic 0x10B, and 64 bit, 0x20B):
// the first language of resource 1, or of the first one, of type 16. False where there is none, where
// anything about it is damaged, and where the file cannot be read: no matter what the file says of its own
// structure, no more than some hundred kilobytes are read, in a bounded number of steps.
bool GetVersionRecord(const FileSystem& files, std::string_view path, VersionRecord& record);

// Compares the four parts in order, each as a signed number: one of 32,768 or more counts as negative.
VersionOrder CompareVersionRecords(const VersionRecord& first, const VersionRecord& second);

// "1.2.3.4", with "*" behind it where the file is marked as patched; "No version information is available"
// where there is none. The first part of each pair is the signed double word divided by 65,536 and rounded,
// half to even: a second part of more than 32,768 carries it up by one. Reports as
// "modVersionStamp.GetFileVersionString".
std::string GetFileVersionString(const Toolbox& tools, std::string_view path);
// The same of a record that was read.
std::string VersionText(const VersionRecord& record);

}  // namespace vantrel
