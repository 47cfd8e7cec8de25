#include "filetools/file_diffs.h"

#include <string>

#include "filetools/ascii_percent.h"
#include "platform/line_end.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

CancelCheck CheckOf(const Toolbox& tools) {
    return [&tools] {
        tools.loop.Yield();
        if (tools.loop.CancelRequested()) throw Cancelled();
    };
}

// Two lines on how much of the files is ASCII; empty where all of both is.
std::string PercentLines(const Toolbox& tools, const PerSide<std::string>& paths) {
    const CancelCheck check = CheckOf(tools);
    const std::int32_t one = GetAsciiPercent(tools.files, paths[Side::Left], check);
    const std::int32_t two = GetAsciiPercent(tools.files, paths[Side::Right], check);
    if (one == 100 && two == 100) return {};
    return "File 1 is " + std::to_string(one) + "% ASCII text" + std::string(kLineEnd) + "File 2 is " +
           std::to_string(two) + "% ASCII text";
}

void Show(const Toolbox& tools, std::string text, MessageIcon icon) {
    tools.messages.Ask({.title = "Compare Files", .text = std::move(text), .icon = icon});
}

bool SayThatBinaryFilesDiffer(const Toolbox& tools, const PerSide<std::string>& paths) {
    const std::string lineEnd(kLineEnd);
    std::string text = "The files differ but the differences are not viewable." + lineEnd +
                       "Only differences between ASCII text files can be viewed. " + lineEnd + lineEnd;
    const std::string percents = PercentLines(tools, paths);
    if (!percents.empty()) text += percents + lineEnd + lineEnd;
    Show(tools, text + "See the View File Differences topic in the Help file for details.",
         MessageIcon::Information);
    return false;
}

bool ShowOutcome(const Toolbox& tools, const FileDiffEngine& engine, std::int32_t code,
                 const PerSide<std::string>& paths) {
    switch (code) {
        case FileDiffEngine::kIdentical:
            Show(tools, "The files are identical", MessageIcon::Information);
            return false;
        case FileDiffEngine::kDiffer: {
            const std::string binary =
                "Binary files " + paths[Side::Left] + " " + paths[Side::Right] + " differ";
            if (engine.IsBinary() &&
                FoldCase(engine.OutputLine(0)).find(FoldCase(binary)) != std::string::npos)
                return SayThatBinaryFilesDiffer(tools, paths);
            if (!engine.DiffersOnlyInForm()) return true;
            Show(tools, engine.OutputLine(0), MessageIcon::Information);
            return false;
        }
        case FileDiffEngine::kFailed:
            Show(tools,
                 "Errors encountered comparing the files" + std::string(kLineEnd) + std::string(kLineEnd) +
                     engine.OutputLine(0),
                 MessageIcon::Warning);
            return false;
        default:
            return false;
    }
}

// Rows for the headers of an output; false where one is none or does not fit.
bool AlignRows(const DiffOutput& output, const CancelCheck& check, AlignedRows& rows) {
    PacedCheck pace(check, 10'000);
    const std::int32_t count = output.OutputLineCount();
    for (std::int32_t index = output.NextHeader(0); index < count; index = output.NextHeader(index + 1)) {
        Hunk hunk;
        if (!ParseHunkHeader(output.OutputLine(index), hunk) || !rows.Add(hunk)) return false;
        pace.Count();
    }
    return rows.IsConsistent();
}

}  // namespace

bool CompareFilesAndStoreResultsInGlobalDiffObject(const Toolbox& tools, const cViewFileDiffsOptions& options,
                                                   FileDiffEngine& globalDiffObject) {
    bool differencesToShow = false;
    tools.reporter.Guard("frmFileDiffs.CompareFilesAndStoreResultsInGlobalDiffObject", [&] {
        globalDiffObject.IgnoreCase = options.IgnoreCase();
        globalDiffObject.IgnoreWhitespace = options.IgnoreWhitespace();
        globalDiffObject.Encodings = options.Encodings;
        globalDiffObject.Form = TextForm::ForReading;
        const PerSide<std::string> paths{{options.FileOne, options.FileTwo}};
        const std::int32_t code = globalDiffObject.CompareFiles(paths[Side::Left], paths[Side::Right]);
        differencesToShow = ShowOutcome(tools, globalDiffObject, code, paths);
    });
    return differencesToShow;
}

bool LoadFilesIntoGrids(const Toolbox& tools, const FileDiffEngine& globalDiffObject, FileGrids& grids) {
    return tools.reporter.Guard("frmFileDiffs.LoadFilesIntoGrids", [&] {
        grids = {};
        if (globalDiffObject.Result() != nullptr)
            grids = FileGrids(globalDiffObject.Result(), CheckOf(tools));
    });
}

bool AlignGridsToDiffOutput(const Toolbox& tools, const DiffOutput& output, const PerSide<std::string>& paths,
                            FileGrids& grids) {
    AlignedRows rows(PerSide<LineNumber>{{grids.LineCount(Side::Left), grids.LineCount(Side::Right)}});
    if (AlignRows(output, CheckOf(tools), rows)) {
        grids.SetRows(std::move(rows));
        return true;
    }
    tools.reporter.Guard("frmFileDiffs.AlignGridsToDiffOutput", [&] {
        const std::string lineEnd(kLineEnd);
        std::string text = "Not able to compute the file differences.";
        const std::string percents = PercentLines(tools, paths);
        if (!percents.empty())
            text += lineEnd + lineEnd + "This can happen if the files are not fully ASCII-based." + lineEnd +
                    lineEnd + percents;
        tools.messages.Ask({.title = "Show File Differences", .text = text, .icon = MessageIcon::Stop});
    });
    return false;
}

}  // namespace vantrel
