#include <algorithm>
#include <array>

#include "commands.h"
#include "display_width.h"
#include "engine.h"
#include "exit_status.h"
#include "json_lines.h"
#include "output.h"
#include "platform/names/names.h"
#include "sync/sync_history.h"
#include "sync_request.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kHistoryNotes =
    "The records are those of 'vantrel-cli sync' and of the window, the oldest first. As JSON a\n"
    "line is "
    "{\"date\":\"2020-09-13T12:26:40\",\"left\":\"/a/\",\"right\":\"/b/\",\"result\":\"Cancelled\"},\n"
    "the date in local time, or null where it cannot be read.\n"
    "\n"
    "Exit status: 0, or 2 when the history cannot be read.\n";

// The bytes of a damaged record in a form that can be written.
std::string Whole(const std::string& field) {
    return IsPlainName(field) || field.starts_with('~') ? field : PathFromUser(field);
}

void WriteJson(const std::vector<SyncHistoryRecord>& records, const LocaleFormats& locale, Output& out) {
    for (const SyncHistoryRecord& record : records) {
        std::string date = HistoryDateText(record, locale);
        std::replace(date.begin(), date.end(), ' ', 'T');
        out << R"({"date":)";
        if (date.empty())
            out << "null";
        else
            WriteJsonString(date, out);
        out << R"(,"left":)";
        WriteJsonString(Whole(record.leftFolder), out);
        out << R"(,"right":)";
        WriteJsonString(Whole(record.rightFolder), out);
        out << R"(,"result":)";
        WriteJsonString(Whole(record.result), out);
        out << "}\n";
    }
}

void WriteText(const std::vector<SyncHistoryRecord>& records, const LocaleFormats& locale, Output& out) {
    constexpr std::size_t kColumns = 4;
    using Line = std::array<std::string, kColumns>;
    std::vector<Line> lines = {{"Date", "Result", "Left", "Right"}};
    for (const SyncHistoryRecord& record : records)
        lines.push_back({HistoryDateText(record, locale), DisplayName(Whole(record.result)),
                         DisplayName(Whole(record.leftFolder)), DisplayName(Whole(record.rightFolder))});
    std::array<std::size_t, kColumns> widths{};
    for (const Line& line : lines)
        for (std::size_t column = 0; column < kColumns; ++column)
            widths[column] = std::max(widths[column], DisplayWidth(line[column]));
    for (const Line& line : lines) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            out << line[column];
            out.Fill(widths[column] - DisplayWidth(line[column]) + 2, ' ');
        }
        out.EndLine();
    }
}

int Print(const std::string& programFolder, OutputFormat format) {
    Engine engine(FullProgramFolder(programFolder));
    const SyncHistory history(engine.Tools());
    std::vector<SyncHistoryRecord> records;
    // Only looking leaves no empty file behind.
    if (engine.Tools().files.Exists(history.Path())) {
        if (const Error error = history.Read(records); !error.IsOk()) {
            engine.Messages().Say(error.Description());
            return kTrouble;
        }
    }
    Output out;
    if (format == OutputFormat::Json)
        WriteJson(records, LocaleFormats("C"), out);
    else if (!records.empty())
        WriteText(records, engine.Tools().locale, out);
    else
        engine.Messages().Say("there is no synchronization in the history");
    if (const int failure = out.Finish(); failure != 0) {
        engine.Messages().Say("cannot write the result: " + GetErrorText(failure));
        return kTrouble;
    }
    return 0;
}

}  // namespace

int RunHistory(const std::vector<std::string_view>& arguments) {
    std::string programFolder;
    OutputFormat format = OutputFormat::Text;
    CommandSpec command{"history",
                        "",
                        "Prints the history of synchronizations.",
                        kHistoryNotes,
                        {ProgramFolderOption(programFolder), FormatOption(format)}};
    const ParsedArguments parsed = ParseArguments(command, arguments, 0);
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return Print(programFolder, format);
}

}  // namespace vantrel::cli
