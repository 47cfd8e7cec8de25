#include "core/unlisted_folders.h"

#include <string>

#include "diagnostics/error_detail.h"

namespace vantrel {
namespace {

constexpr std::string_view kRoutine = "modVantrel.GetFolderInfo";

std::string DetailText(const std::vector<UnlistedFolder>& unlisted) {
    std::string text =
        "Analysis of folder failed.  Comparison results will be invalid!\r\n"
        "Correct the problem with this folder before attempting to sync it.";
    for (const UnlistedFolder& folder : unlisted)
        text += "\r\n\r\nFolder: " + folder.folder + "\r\nFile: " + folder.lastFile;
    return text;
}

}  // namespace

void ReportUnlistedFolders(ErrorReporter& reporter, const std::vector<UnlistedFolder>& unlisted) {
    if (!unlisted.empty()) reporter.ReportError(kRoutine, unlisted.front().error, DetailText(unlisted));
}

Error RecordUnlistedFolders(const Toolbox& tools, const std::vector<UnlistedFolder>& unlisted) {
    if (unlisted.empty()) return {};
    return AppendErrorDetail({tools.files, tools.folders, tools.clock, tools.locale}, kRoutine,
                             unlisted.front().error, DetailText(unlisted));
}

}  // namespace vantrel
