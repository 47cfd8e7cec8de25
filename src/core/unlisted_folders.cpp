#include "core/unlisted_folders.h"

#include <string>

namespace vantrel {

void ReportUnlistedFolders(ErrorReporter& reporter, const std::vector<UnlistedFolder>& unlisted) {
    if (unlisted.empty()) return;
    std::string text =
        "Analysis of folder failed.  Comparison results will be invalid!\r\n"
        "Correct the problem with this folder before attempting to sync it.";
    for (const UnlistedFolder& folder : unlisted)
        text += "\r\n\r\nFolder: " + folder.folder + "\r\nFile: " + folder.lastFile;
    reporter.ReportError("modVantrel.GetFolderInfo", unlisted.front().error, text);
}

}  // namespace vantrel
