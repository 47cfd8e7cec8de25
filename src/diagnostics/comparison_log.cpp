#include "diagnostics/comparison_log.h"

#include "platform/ports.h"

namespace vantrel {

std::string ComparisonLog::Path() const {
    return folders_.appPath + "ERRORLOG.TXT";
}

Error ComparisonLog::Recreate() {
    return files_.ReplaceFile(Path(), {});
}

Error ComparisonLog::Append(std::initializer_list<std::string_view> lines) {
    std::string entry(kLineEnd);
    entry.append(locale_.DateTime(FileTimeToLocalFileTime(clock_.Now()))).append(kLineEnd);
    entry.append("Errors encountered during comparison").append(kLineEnd);
    for (const std::string_view line : lines) entry.append(line).append(kLineEnd);
    return files_.AppendToFile(Path(), entry);
}

Error ComparisonLog::AppendNote(std::string_view line) {
    return files_.AppendToFile(Path(), std::string(line).append(kLineEnd));
}

}  // namespace vantrel
