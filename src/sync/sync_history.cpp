#include "sync/sync_history.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/mod_date_time.h"
#include "platform/locale/numeric_text.h"

namespace vantrel {
namespace {

// Far above what 32,000 entries take, and still a bound.
constexpr std::size_t kLargestHistory = std::size_t{256} << 20;

void PutText(char* field, std::string_view text) {
    std::size_t length = std::min(text.size(), SyncHistory::kTextLength);
    // Not in the middle of a character: a continuation byte must not be the first one cut off.
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    std::memset(field, ' ', SyncHistory::kTextLength);
    std::memcpy(field, text.data(), length);
}

// No history is shorter than its newest record, wherever the number comes from.
std::int32_t Valid(std::int32_t limit) {
    return std::clamp(limit, 1, SyncHistory::kMostEntries);
}

std::string TakeText(const char* field) {
    std::string_view text(field, SyncHistory::kTextLength);
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

}  // namespace

std::string SyncHistory::Path() const {
    return tools_.folders.appPath + "SyncHist.Log";
}

std::array<char, SyncHistory::kRecordLength> SyncHistory::Encode(const SyncHistoryRecord& record) {
    static_assert(sizeof(double) == 8 && std::endian::native == std::endian::little);
    std::array<char, kRecordLength> bytes;
    std::memcpy(bytes.data(), &record.date, 8);
    PutText(bytes.data() + 8, record.leftFolder);
    PutText(bytes.data() + 8 + kTextLength, record.rightFolder);
    PutText(bytes.data() + 8 + 2 * kTextLength, record.result);
    return bytes;
}

SyncHistoryRecord SyncHistory::Decode(const char* bytes) {
    SyncHistoryRecord record;
    std::memcpy(&record.date, bytes, 8);
    record.leftFolder = TakeText(bytes + 8);
    record.rightFolder = TakeText(bytes + 8 + kTextLength);
    record.result = TakeText(bytes + 8 + 2 * kTextLength);
    return record;
}

Error SyncHistory::Count(std::int64_t& count) const {
    count = 0;
    FileInfo info;
    if (Error error = tools_.files.Stat(Path(), LinkPolicy::Follow, info); !error.IsOk())
        return error.Number() == ErrorNumber::FileNotFound ? Error() : error;
    count = static_cast<std::int64_t>((info.size + kRecordLength / 2) / kRecordLength);
    return {};
}

Error SyncHistory::Append(const std::string& leftFolder, const std::string& rightFolder,
                          std::string_view result, std::int32_t limit) const {
    limit = Valid(limit);
    const SyncHistoryRecord record{FileTimeToVBTime(tools_.clock.Now()), leftFolder, rightFolder,
                                   std::string(result)};
    const auto bytes = Encode(record);
    const std::string_view added(bytes.data(), bytes.size());

    std::int64_t count = 0;
    if (Error error = Count(count); !error.IsOk()) return error;
    FileInfo info;
    const bool exists = tools_.files.Stat(Path(), LinkPolicy::Follow, info).IsOk();
    if (count != limit && (!exists || info.size == static_cast<std::uint64_t>(count) * kRecordLength))
        return tools_.files.AppendToFile(Path(), added);

    // The ring is full, or the last record was torn by hand: the new file is made whole and put in place of
    // the old one.
    std::string content;
    if (Error error = tools_.files.ReadWholeFile(Path(), kLargestHistory, content); !error.IsOk())
        return error;
    content.resize(static_cast<std::size_t>(count) * kRecordLength, ' ');
    if (count == limit) content.erase(0, kRecordLength);
    content += added;
    return tools_.files.ReplaceFile(Path(), content);
}

Error SyncHistory::Read(std::vector<SyncHistoryRecord>& records) const {
    records.clear();
    if (!tools_.files.Exists(Path())) return tools_.files.AppendToFile(Path(), {});
    std::string content;
    if (Error error = tools_.files.ReadWholeFile(Path(), kLargestHistory, content); !error.IsOk())
        return error;
    for (std::size_t start = 0; start + kRecordLength <= content.size(); start += kRecordLength)
        records.push_back(Decode(content.data() + start));
    return {};
}

Error SyncHistory::Trim(std::int32_t limit) const {
    limit = Valid(limit);
    std::int64_t count = 0;
    if (Error error = Count(count); !error.IsOk()) return error;
    if (count <= limit) return {};
    std::string content;
    if (Error error = tools_.files.ReadWholeFile(Path(), kLargestHistory, content); !error.IsOk())
        return error;
    content.resize(static_cast<std::size_t>(count) * kRecordLength, ' ');
    content.erase(0, static_cast<std::size_t>(count - limit) * kRecordLength);
    if (Error error = tools_.files.ReplaceFile(Path(), content); !error.IsOk())
        return error.WithDescription("Unable to create temp file");
    return {};
}

std::string HistoryDateText(const SyncHistoryRecord& record, const LocaleFormats& locale) {
    // A damaged record can hold anything: what is no date of our calendar shows as nothing.
    constexpr double kEarliest = -657'434, kLatest = 2'958'466;  // years 100 and 10000
    if (!(record.date >= kEarliest && record.date < kLatest)) return {};
    constexpr double kDaysFrom1601 = 109'205;
    const double seconds = std::nearbyint((record.date + kDaysFrom1601) * 86'400);
    return locale.DateTime({static_cast<std::int64_t>(seconds) * FileTime::kTicksPerSecond});
}

void AdjustNumLogEntries(const Toolbox& tools, std::int32_t newLimit, bool prompt, std::int32_t& limit) {
    tools.reporter.Guard("frmSyncLog.AdjustNumLogEntries", [&] {
        newLimit = Valid(newLimit);
        const SyncHistory history(tools);
        std::int64_t count = 0;
        ThrowIfFailed(history.Count(count));
        if (count > newLimit) {
            const Message question{
                "Please confirm",
                "You are about to permanently remove some entries from the Synchronization "
                "Log.\r\n\r\nDo you wish to continue?",
                MessageIcon::Question, MessageButtons::YesNo, MessageAnswer::No};
            if (prompt && tools.messages.Ask(question) != MessageAnswer::Yes) return;
            ThrowIfFailed(history.Trim(newLimit));
        }
        limit = newLimit;
    });
}

bool ParseNumLogEntries(std::string_view text, std::int32_t& entries) {
    const auto number = NumericValue(text);
    if (!number) return false;
    const double rounded = std::nearbyint(*number);
    if (rounded < 1 || rounded > SyncHistory::kMostEntries) return false;
    entries = static_cast<std::int32_t>(rounded);
    return true;
}

std::string_view ShownHistoryField(std::string_view field) {
    const std::size_t blanks = field.find("   ");
    return blanks == 0 ? field : field.substr(0, blanks);
}

}  // namespace vantrel
