#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "settings/option_table.h"

namespace vantrel {

// One record of "SyncHist.Log".
struct SyncHistoryRecord {
    double date = 0;  // days since 1899-12-30, local time
    std::string leftFolder;
    std::string rightFolder;
    std::string result;  // "Completed Successfully" or "Cancelled"
};

inline constexpr std::string_view kSyncCompleted = "Completed Successfully";
inline constexpr std::string_view kSyncCancelled = "Cancelled";

// The history of synchronisations: a file of records of 773 bytes without a header, the oldest first, kept as
// a ring of at most the wanted number of entries. Every change replaces the file by rename or appends in one
// write.
class SyncHistory {
  public:
    static constexpr std::size_t kRecordLength = 773;
    static constexpr std::size_t kTextLength = 255;
    static constexpr std::int32_t kMostEntries = kMostSyncLogEntries;

    explicit SyncHistory(const Toolbox& tools) : tools_(tools) {}
    std::string Path() const;

    // A limit below 1 is 1, one above kMostEntries is that.
    // Writes a record of now. A full ring (exactly `limit` records) loses its oldest one; a file that holds
    // more than the limit grows, until Trim.
    Error Append(const std::string& leftFolder, const std::string& rightFolder, std::string_view result,
                 std::int32_t limit) const;
    // All records, the oldest first. A missing file has none and is created; a torn record at the end is left
    // out.
    Error Read(std::vector<SyncHistoryRecord>& records) const;
    // File length divided by the record length, rounded.
    Error Count(std::int64_t& count) const;
    // Keeps the newest `limit` records. Raises "Unable to create temp file" when the new file cannot be
    // written.
    Error Trim(std::int32_t limit) const;

    // Exposed for tests and tools: the bytes of one record, and back.
    static std::array<char, kRecordLength> Encode(const SyncHistoryRecord& record);
    static SyncHistoryRecord Decode(const char* bytes);

  private:
    const Toolbox& tools_;
};

// The date of a record as the system's default date and time text.
std::string HistoryDateText(const SyncHistoryRecord& record, const LocaleFormats& locale);

// AdjustNumLogEntries: trims the history to `newLimit`, from 1 to kMostEntries, asking first where entries
// get lost and `prompt` is set. `limit` becomes `newLimit` unless the user says No. Errors are reported under
// "frmSyncLog.AdjustNumLogEntries".
void AdjustNumLogEntries(const Toolbox& tools, std::int32_t newLimit, bool prompt, std::int32_t& limit);

// The text of txtNumEntries as a number of entries: numeric and, rounded half to even, from 1 to 32000. False
// otherwise.
bool ParseNumLogEntries(std::string_view text, std::int32_t& entries);

// The part of a field that the history window shows: up to the first run of three blanks, unless that stands
// at the very beginning.
std::string_view ShownHistoryField(std::string_view field);

}  // namespace vantrel
