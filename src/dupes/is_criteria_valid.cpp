#include "dupes/is_criteria_valid.h"

#include <functional>
#include <string>
#include <vector>

#include "platform/names/names.h"

namespace vantrel {

namespace {

constexpr const char* kSearchTitle = "Find Duplicates";

bool Refuse(const Toolbox& tools, const std::string& text) {
    tools.messages.Ask({.title = kSearchTitle, .text = text, .icon = MessageIcon::Warning});
    return false;
}

bool FoldersExist(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order) {
    JobQueue<bool> jobs(workers, {.jobs = order.folders.size() + 1});
    for (const std::string& folder : order.folders)
        jobs.Add([&files = tools.files, folder](const StopFlag&) { return files.FolderExists(folder); });
    for (const std::string& folder : order.folders) {
        const bool exists = jobs.TakeNext([&] {
            tools.loop.Yield();
            if (tools.loop.CancelRequested()) throw Cancelled();
        });
        if (exists) continue;
        return Refuse(tools,
                      "Problem accessing folder:\r\n" + folder +
                          "\r\nMake sure that the folder exists and that you have permission to access it.");
    }
    return true;
}

// A test of texts: also "/data" and "/database".
bool OneHoldsAnother(const std::vector<std::string>& folders) {
    std::vector<std::string> folded;
    folded.reserve(folders.size());
    for (const std::string& folder : folders) folded.push_back(FoldCase(folder));
    for (std::size_t a = 0; a < folded.size(); ++a)
        for (std::size_t b = 0; b < folded.size(); ++b)
            if (a != b && folded[a].find(folded[b]) != std::string::npos) return true;
    return false;
}

bool Check(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order) {
    const DupeCriteria& chosen = order.criteria;
    if (chosen == DupeCriteria{false, false, false, false, false, false})
        return Refuse(tools, "Select the duplicate criteria to be used.");
    if (!chosen.names && !chosen.sizes)
        return Refuse(tools, "Name or Size must be one of the duplicate criteria selected.");
    if (order.folders.empty()) return Refuse(tools, "Enter a folder path to check for duplicates.");
    if (!FoldersExist(tools, workers, order)) return false;
    if (order.includeSubFolders && OneHoldsAnother(order.folders))
        return Refuse(
            tools,
            "One of the folders in the list is a subfolder of another one of the folders.\r\nUncheck the "
            "Include Sub Folders checkbox, if you wish to scan both of the folders anyways.");
    return true;
}

}  // namespace

bool IsCriteriaValid(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order) {
    bool valid = false;
    tools.reporter.Guard("frmFindDuplicates.IsCriteriaValid()",
                         [&] { valid = Check(tools, workers, order); });
    return valid;
}

}  // namespace vantrel
