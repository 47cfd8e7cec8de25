#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ccompare.h"
#include "core/side.h"
#include "core/toolbox.h"

namespace vantrel {

class Workers;

// The ways in which two files are compared, in the order of their rows.
enum class FileMethod : std::uint8_t { Size, DateTime, Attributes, Version, Contents, Crc32, Sha1 };
inline constexpr std::array kFileMethods = {FileMethod::Size,    FileMethod::DateTime, FileMethod::Attributes,
                                            FileMethod::Version, FileMethod::Contents, FileMethod::Crc32,
                                            FileMethod::Sha1};
// "Size", "Date/Time", "Attributes", "Version", "Binary Contents", "CRC32", "SHA1".
std::string_view FileMethodCaption(FileMethod method);
// Whether this machine can compare so at all: SHA-1 only where its library has it.
bool IsAvailable(FileMethod method);

// What one method says of two files.
struct FileFinding {
    FileMethod method{};
    PerSide<std::string> shown;  // what it found in each
    std::string result;          // in words
    bool differs = false;
};

// What a window shows while two files are compared. A run without one has the same findings.
class TwoFileDisplay {
  public:
    virtual ~TwoFileDisplay() = default;
    // Both paths name files: findings follow, and those of an earlier run go.
    virtual void Begin() = 0;
    virtual void SetStatus(std::string_view text) = 0;
    // A long step that can be cancelled begins, with its bar at 0, or ends.
    virtual void SetCancellable(bool on) = 0;
    virtual void SetPercentage(int percentage) = 0;
    // Also of one file before the other: `result` is then empty, and the whole finding follows.
    virtual void ShowFinding(const FileFinding& finding) = 0;
};

enum class TwoFileOutcome : std::uint8_t { Completed, NotFound, Cancelled };

struct TwoFileReport {
    TwoFileOutcome outcome = TwoFileOutcome::Completed;
    std::vector<FileFinding> findings;  // as far as they were come to
    Error unlogged;                     // what kept ERRORLOG.TXT from being written
};

// Whether both paths name files; the user is told of the first that does not.
bool AreExistingFiles(const Toolbox& tools, const PerSide<std::string>& paths);

// Compares two files by the methods given, in the order of their rows. A path that names no file is told to
// the user, and a cancel as well. Whether errors went to the log stands in ErrorsDuringCompare. Throws
// ErrorException where a file cannot be looked at or read.
//
// Sizes are those of the rule in `compare`: by SizeRule::Words a file of 2 GiB or more has one that is not
// its own, and what follows from it is kept. Files whose sizes differ so are different by contents without
// being read.
class TwoFileComparison {
  public:
    // All must outlive the object. `workers` compare the contents in stretches, and make the hashes of both
    // files beside each other. With none of them the one thread does it all.
    TwoFileComparison(const Toolbox& tools, CCompare& compare, Workers& workers, TwoFileDisplay& display)
        : tools_(tools), compare_(compare), workers_(workers), display_(display) {}

    TwoFileReport Compare(const PerSide<std::string>& paths, const std::vector<FileMethod>& methods);

  private:
    struct Files;

    FileFinding Find(FileMethod method, const Files& files);
    FileFinding BySize(const Files& files) const;
    FileFinding ByDateTime(const Files& files) const;
    FileFinding ByAttributes(const Files& files) const;
    FileFinding ByVersion(const Files& files) const;
    FileFinding ByContents(const Files& files);
    FileFinding ByHash(FileMethod method, const Files& files);
    bool ContentsDiffer(const Files& files);
    std::optional<bool> DifferByWorkers(const Files& files);
    PerSide<std::string> HashBoth(FileMethod method, const Files& files);
    std::string HashHere(FileMethod method, const std::string& path);
    void ThrowIfCancelled() const;

    const Toolbox& tools_;
    CCompare& compare_;
    Workers& workers_;
    TwoFileDisplay& display_;
};

// The bytes of a text as eight binary digits each, with a blank between them.
std::string ConvertTextToBinaryDigits(std::string_view text);

// Whether two texts of the same length are equal, without regard to the case of ASCII letters or exactly.
enum class ExactCompare : std::uint8_t { Exact, IgnoreCase };
bool CompareStringsExact(std::string_view one, std::string_view two, ExactCompare how);

}  // namespace vantrel
