#include <unistd.h>

#include <array>
#include <string>
#include <utility>

#include "commands.h"
#include "compare_request.h"
#include "console_host.h"
#include "engine.h"
#include "exit_status.h"
#include "filetools/file_diff_engine.h"
#include "filetools/visible_text.h"
#include "output.h"
#include "platform/names/names.h"

namespace vantrel::cli {

namespace {

constexpr std::string_view kDiffNotes =
    "The text is that of 'diff': 'patch' makes FILE2 out of FILE1 with it. Text in UTF-16, and in an\n"
    "encoding that was given, is printed as UTF-8. On a terminal control characters and marks of\n"
    "direction are shown by stand-ins; otherwise each line is printed as it is.\n"
    "\n"
    "As JSON a line is {\"form\":\"c\",\"left\":[8,9],\"right\":[8,12]}: the first and the last line of a\n"
    "block that was changed (c), is only in FILE2 (a) or only in FILE1 (d). The side that has none\n"
    "of its lines has the line behind which they would stand, twice. Files that are no text give\n"
    "{\"form\":\"binary\"}, files whose text is the same and stored in different ways\n"
    "{\"form\":\"stored\"}.\n"
    "\n"
    "Exit status: 0 no differences, 1 differences, 2 trouble (a message is on standard error).\n";

struct DiffRequest {
    bool ignoreCase = false;
    bool ignoreWhitespace = false;
    bool unified = false;
    PerSide<std::string> encodings;
    OutputFormat format = OutputFormat::Text;
};

bool TakeEncodings(std::string_view text, PerSide<std::string>& encodings) {
    const std::size_t comma = text.find(',');
    const PerSide<std::string_view> names{
        {text.substr(0, comma), comma == std::string_view::npos ? text : text.substr(comma + 1)}};
    for (const Side side : kBothSides) {
        encodings[side] = names[side] == "auto" ? std::string() : KnownEncoding(names[side]);
        if (encodings[side].empty() && names[side] != "auto") return false;
    }
    return true;
}

std::vector<OptionSpec> OptionsOf(DiffRequest& request) {
    const auto flag = [](bool& to) {
        return [&to](std::string_view) {
            to = true;
            return true;
        };
    };
    return {
        {"--ignore-case", "", "letter case does not matter", flag(request.ignoreCase)},
        {"--ignore-whitespace", "", "blanks and tabs do not matter, wherever they stand",
         flag(request.ignoreWhitespace)},
        {"--encoding", "NAME[,NAME]",
         "of both files, or of each, as in UTF-8, windows-1252 or UTF-16LE;\n'auto' (default) finds out",
         [&](std::string_view text) { return TakeEncodings(text, request.encodings); }},
        {"--unified", "", "a unified diff with three lines of context", flag(request.unified)},
        {"--format", "text|json", "a script as that of 'diff' (default), or one JSON object a block",
         [&](std::string_view text) {
             request.format = text == "json" ? OutputFormat::Json : OutputFormat::Text;
             return text == "json" || text == "text";
         }},
    };
}

// Standard output; on a terminal nothing of what is written can do more than be seen.
class ScriptOutput {
  public:
    void Write(std::string_view piece) {
        if (!terminal_) {
            out_ << piece;
            return;
        }
        for (std::size_t end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
            line_.append(piece.substr(0, end));
            out_ << VisibleText(line_) << '\n';
            line_.clear();
            piece.remove_prefix(end + 1);
        }
        line_.append(piece);
    }
    // The errno value of the first write that failed, 0 where none did.
    int Finish() { return out_.Finish(); }

  private:
    Output out_;
    bool terminal_ = isatty(STDOUT_FILENO) != 0;
    std::string line_;  // begun
};

std::string JsonRange(const LineRange& range) {
    const LineNumber first = range.count == 0 ? range.first : range.first + 1;
    const LineNumber last = range.End();
    return "[" + std::to_string(first) + "," + std::to_string(last) + "]";
}

void WriteJson(const FileDiffEngine& engine, ScriptOutput& out) {
    if (engine.IsBinary() || engine.DiffersOnlyInForm()) {
        out.Write(engine.IsBinary() ? "{\"form\":\"binary\"}\n" : "{\"form\":\"stored\"}\n");
        return;
    }
    for (const Hunk& hunk : engine.Result()->hunks)
        out.Write(std::string(R"({"form":")") + hunk.Form() + R"(","left":)" +
                  JsonRange(hunk.lines[Side::Left]) + R"(,"right":)" + JsonRange(hunk.lines[Side::Right]) +
                  "}\n");
}

void WriteScript(const FileDiffEngine& engine, const DiffRequest& request,
                 const PerSide<std::string_view>& operands, ScriptOutput& out) {
    if (request.format == OutputFormat::Json) return WriteJson(engine, out);
    if (engine.IsBinary()) {
        out.Write(std::string("Binary files ")
                      .append(operands[Side::Left])
                      .append(" and ")
                      .append(operands[Side::Right])
                      .append(" differ\n"));
        return;
    }
    if (engine.DiffersOnlyInForm()) {
        out.Write(engine.OutputLine(0) + "\n");
        return;
    }
    const FileDiff& diff = *engine.Result();
    const TextSink sink = [&out](std::string_view piece) { out.Write(piece); };
    if (!request.unified) return WriteNormal(diff.hunks, diff.Views(), sink);
    PerSide<std::string> names;
    for (const Side side : kBothSides)
        names[side] = UnifiedName(PathFromUser(operands[side]), diff.texts[side].lastWrite);
    WriteUnified(diff.hunks, diff.Views(), names, sink);
}

int Compare(const DiffRequest& request, const PerSide<std::string_view>& operands) {
    ConsoleLoop::CatchSignals();
    Engine host{std::string()};
    FileDiffEngine engine(host.Tools());
    engine.IgnoreCase = request.ignoreCase;
    engine.IgnoreWhitespace = request.ignoreWhitespace;
    engine.Encodings = request.encodings;
    std::int32_t code = FileDiffEngine::kFailed;
    try {
        code = engine.CompareFiles(host.FullPath(operands[Side::Left]), host.FullPath(operands[Side::Right]));
    } catch (const Cancelled&) {
        host.Messages().Say("cancelled");
        return kTrouble;
    }
    ConsoleLoop::LeaveSignals();
    if (code == FileDiffEngine::kFailed) {
        host.Messages().Say(engine.OutputLine(0));
        return kTrouble;
    }
    if (code == FileDiffEngine::kIdentical) return kNoDifferences;
    ScriptOutput out;
    WriteScript(engine, request, operands, out);
    if (const int failure = out.Finish(); failure != 0) {
        host.Messages().Say("cannot write the result: " + GetErrorText(failure));
        return kTrouble;
    }
    return kDifferences;
}

}  // namespace

int RunDiff(const std::vector<std::string_view>& arguments) {
    DiffRequest request;
    const CommandSpec command{"diff", "FILE1 FILE2", "Compares two text files line by line.", kDiffNotes,
                              OptionsOf(request)};
    ParsedArguments parsed = ParseArguments(command, arguments, 2);
    if (parsed.error.empty() && request.unified && request.format == OutputFormat::Json)
        parsed.error = "--unified and --format json exclude each other";
    if (const std::optional<int> status = AnsweredAtOnce(command, parsed)) return *status;
    return Compare(request, {{parsed.operands[0], parsed.operands[1]}});
}

}  // namespace vantrel::cli
