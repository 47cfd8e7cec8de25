#include "core/sub_folder_analysis.h"

#include <algorithm>

#include "core/merged_names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// More message boxes than this about one comparison help nobody; the log has them all.
constexpr std::size_t kMostReports = 10;

}  // namespace

SubFolderAnalysis::SubFolderAnalysis(const ComparisonContext& context, PairComparison& pairs,
                                     const PerSide<const CDir*>& dirs)
    : context_(context), pairs_(pairs), dirs_(dirs), reportsLeft_(kMostReports) {
}

void SubFolderAnalysis::ShowAllSubFoldersInBothDirs(ComparisonResults& results) {
    const std::vector<MergedFolder> names = MergeSubDirs(dirs_, context_);
    context_.progress.SetBarValue(0);
    if (names.empty()) return;
    context_.progress.SetBarRange(static_cast<std::int64_t>(names.size()));

    PerSide<TreeWalk::Root> roots;
    for (const Side side : kBothSides) {
        roots[side].path = dirs_[side]->Path();
        ThrowIfFailed(context_.tools.files.Open(roots[side].path, roots[side].folder));
        for (const Side list : kBothSides) results.hold[list].SharePool(dirs_[side]->Texts());
    }
    const NameFilter filter = NameFilter::ForWalk(ScanOptions::Of(context_.compare));
    TreeWalk walk(context_, pairs_, filter, roots);
    const auto texts = std::make_shared<TextPool>();

    for (std::size_t i = 0; i < names.size(); ++i) {
        context_.progress.SetBarValue(static_cast<std::int64_t>(i) + 1);
        context_.ThrowIfCancelled();
        PerSide<std::string_view> real;
        for (const Side side : kBothSides)
            if (names[i].folder[side]) real[side] = names[i].folder[side]->RealName();
        CSubFolderDiffs diffs(std::string(names[i].text),
                              roots[Side::Left].path + std::string(real[Side::Left]), texts);
        const Answer answer = AreFoldersIdentical(walk, real, diffs);
        ReportUnlistedFolders(walk, i + 1, names.size());

        const bool pair = !real[Side::Left].empty() && !real[Side::Right].empty();
        ResultRow row;
        row.text = names[i].text;
        row.kind = RowKind::Folder;
        row.incomplete = !answer.walk.complete;
        row.holdsOtherFolder = answer.walk.holdsOtherFolder;
        row.type = !pair              ? ResultType::OrphanFolder
                   : answer.identical ? ResultType::IdenticalFolder
                                      : ResultType::DifferentFolder;
        for (const Side side : kBothSides) {
            row.realName = real[side];
            row.size = std::max(answer.walk.size[side], Currency());
            if (real[side].empty())
                results.hold[side].AddPlaceholder();
            else
                results.hold[side].Add(row);
        }
        if (pair && !answer.identical) results.SubFolderDiffs.Add(std::move(diffs));
    }
}

SubFolderAnalysis::Answer SubFolderAnalysis::AreFoldersIdentical(TreeWalk& walk,
                                                                 const PerSide<std::string_view>& names,
                                                                 CSubFolderDiffs& diffs) {
    Answer answer;
    const bool fine = context_.tools.reporter.Guard("modVantrel.AreFoldersIdentical", [&] {
        answer.walk = walk.Walk(names, diffs);
        answer.identical = answer.walk.complete && diffs.GetArrayDiffOneDimensions() == 0;
    });
    if (!fine) throw ComparisonCancelled();
    return answer;
}

void SubFolderAnalysis::ReportUnlistedFolders(TreeWalk& walk, std::size_t number, std::size_t count) {
    bool reported = false;
    for (const UnlistedFolder& unlisted : walk.TakeUnlistedFolders()) {
        if (reportsLeft_ == 0) break;
        --reportsLeft_;
        reported = true;
        context_.tools.reporter.ReportError(
            "modVantrel.GetFolderInfo", unlisted.error,
            "Analysis of folder failed.  Comparison results will be invalid!\r\n"
            "Correct the problem with this folder before attempting to sync it.\r\n\r\n"
            "Folder: " +
                unlisted.folder + "\r\nFile: " + unlisted.lastFile);
    }
    if (!reported) return;
    // A report takes the progress window away; the walk goes on, and so must the way to cancel it.
    context_.progress.Show();
    context_.progress.SetMessage(kComparingSubFolders);
    context_.progress.SetBarRange(static_cast<std::int64_t>(count));
    context_.progress.SetBarValue(static_cast<std::int64_t>(number));
}

}  // namespace vantrel
