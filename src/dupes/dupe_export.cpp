#include "dupes/dupe_export.h"

#include "platform/names/csv_text.h"
#include "platform/names/json_text.h"

namespace vantrel {

namespace {

void WriteJson(const DupeResults& results, const DupeExportSink& sink) {
    const FoundFiles& files = results.Files();
    const auto text = [&](std::string_view key, std::string_view value) {
        sink(key);
        WriteJsonString(value, sink);
    };
    for (const std::uint32_t number : results.Shown()) {
        const DupeGroup& group = results.Group(number);
        text(R"({"label":)", group.label);
        sink(R"(,"size":)" + std::to_string(files[group.members[0]].size) + R"(,"files":[)");
        for (std::size_t i = 0; i < group.members.size(); ++i) {
            const DupeFile& file = files[group.members[i]];
            text(i == 0 ? R"({"path":)" : R"(,{"path":)", files.PathOf(file));
            sink(R"(,"size":)" + std::to_string(file.size));
            text(R"(,"modified":)", UtcText(file.LastModTime()));
            sink(R"(,"otherNames":[)");
            const std::vector<std::string>& others = files.OtherNamesOf(file);
            for (std::size_t n = 0; n < others.size(); ++n) text(n == 0 ? "" : ",", others[n]);
            sink("]}");
        }
        sink("]}\n");
    }
}

// Several other names stand in one field, with line ends between.
void WriteCsv(const DupeResults& results, const DupeExportSink& sink) {
    const FoundFiles& files = results.Files();
    sink("Group,Label,Path,Size,Modified,Marked,Other Names\r\n");
    for (const std::uint32_t number : results.Shown()) {
        const DupeGroup& group = results.Group(number);
        for (const std::uint32_t member : group.members) {
            const DupeFile& file = files[member];
            std::string others;
            for (const std::string& other : files.OtherNamesOf(file))
                others.append(others.empty() ? "" : "\n").append(other);
            sink(std::to_string(number + 1) + "," + CsvField(group.label) + "," +
                 CsvField(files.PathOf(file)) + "," + std::to_string(file.size) + "," +
                 UtcText(file.LastModTime()) + "," + (results.IsMarked(member) ? "yes" : "no") + "," +
                 CsvField(others) + "\r\n");
        }
    }
}

}  // namespace

void WriteGroups(const DupeResults& results, DupeExportFormat format, const DupeExportSink& sink) {
    if (format == DupeExportFormat::Json)
        WriteJson(results, sink);
    else
        WriteCsv(results, sink);
}

Error ExportGroups(const FileSystem& files, const DupeResults& results, DupeExportFormat format,
                   const std::string& path) {
    std::string content;
    WriteGroups(results, format, [&](std::string_view text) { content.append(text); });
    return files.ReplaceFile(path, content);
}

}  // namespace vantrel
