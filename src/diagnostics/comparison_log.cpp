#include "diagnostics/comparison_log.h"

#include "platform/line_end.h"
#include "platform/ports.h"

namespace vantrel {

std::string ComparisonLog::Path() const {
    return folders_.appPath + "ERRORLOG.TXT";
}

Error ComparisonLog::Recreate() {
    failure_ = {};
    return files_.ReplaceFile(Path(), {});
}

void ComparisonLog::Append(std::initializer_list<std::string_view> lines) {
    std::string entry(kLineEnd);
    entry.append(locale_.DateTime(FileTimeToLocalFileTime(clock_.Now()))).append(kLineEnd);
    entry.append("Errors encountered during comparison").append(kLineEnd);
    for (const std::string_view line : lines) entry.append(line).append(kLineEnd);
    Write(entry);
}

void ComparisonLog::AppendNote(std::string_view line) {
    Write(std::string(line).append(kLineEnd));
}

void ComparisonLog::Write(const std::string& text) {
    Error error = files_.AppendToFile(Path(), text);
    if (failure_.IsOk()) failure_ = std::move(error);
}

}  // namespace vantrel
