#include "core/sub_folder_analysis.h"

#include <algorithm>

#include "core/merged_names.h"
#include "core/occupied_names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

PerSide<std::string_view> RealNames(const MergedFolder& name) {
    PerSide<std::string_view> real;
    for (const Side side : kBothSides)
        if (name.folder[side]) real[side] = name.folder[side]->RealName();
    return real;
}

// Of those that will be walked.
std::vector<PerSide<std::string>> RealNames(const std::vector<MergedFolder>& names) {
    std::vector<PerSide<std::string>> all;
    for (const MergedFolder& name : names) {
        if (name.IsOccupied()) continue;
        const PerSide<std::string_view> real = RealNames(name);
        all.push_back({{std::string(real[Side::Left]), std::string(real[Side::Right])}});
    }
    return all;
}

// The rows of a folder whose name is occupied on the other side by what is no file and no folder.
void AddOccupied(const MergedFolder& name, const PerSide<const CDir*>& dirs, const ComparisonContext& context,
                 ComparisonResults& results) {
    for (const Side side : kBothSides) {
        ResultRow row;
        row.text = name.text;
        row.kind = RowKind::Unknown;
        const CDir::Other* const other = name.other[side];
        row.realName = other ? other->name : name.folder[side]->RealName();
        row.isLink = other ? other->isLink : name.folder[side]->isLink;
        row.seen = other ? other->seen : name.folder[side]->seen;
        if (other) row.reason = other->reason;
        NoteUnknown(context, dirs[side]->Path() + std::string(row.realName), row.reason);
        results.hold[side].Add(row);
    }
}

}  // namespace

SubFolderAnalysis::SubFolderAnalysis(const ComparisonContext& context, PairComparison& pairs,
                                     const PerSide<const CDir*>& dirs)
    : context_(context), pairs_(pairs), dirs_(dirs) {
}

void SubFolderAnalysis::ShowAllSubFoldersInBothDirs(ComparisonResults& results) {
    const std::vector<MergedFolder> names = MergeSubDirs(dirs_, context_);
    context_.progress.SetBarValue(0);
    if (names.empty()) return;
    context_.progress.SetBarRange(static_cast<std::int64_t>(names.size()));

    PerSide<TreeWalk::Root> roots;
    for (const Side side : kBothSides) {
        roots[side].path = dirs_[side]->Path();
        ThrowIfFailed(context_.Open(roots[side].path, roots[side].folder));
        for (const Side list : kBothSides) {
            results.hold[list].SharePool(dirs_[side]->Texts());
            results.hold[list].SharePool(dirs_[side]->SeenObjects());
        }
    }
    TreeWalk walk(context_, pairs_,
                  std::make_shared<const NameFilter>(NameFilter::ForWalk(ScanOptions::Of(context_.compare))),
                  roots);
    walk.Announce(RealNames(names));
    const auto texts = std::make_shared<TextPool>();

    for (std::size_t i = 0; i < names.size(); ++i) {
        context_.progress.SetBarValue(static_cast<std::int64_t>(i) + 1);
        context_.ThrowIfCancelled();
        if (names[i].IsOccupied()) {
            AddOccupied(names[i], dirs_, context_, results);
            continue;
        }
        const PerSide<std::string_view> real = RealNames(names[i]);
        CSubFolderDiffs diffs(std::string(names[i].text),
                              roots[Side::Left].path + std::string(real[Side::Left]), texts);
        const Answer answer = AreFoldersIdentical(walk, real, diffs);

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
            if (const CDir::SubDir* folder = names[i].folder[side]) {
                row.realName = folder->RealName();
                row.isLink = folder->isLink;
                row.seen = folder->seen;
            }
            row.size = std::max(answer.walk.size[side], Currency());
            results.objects[side] += answer.walk.objects[side];
            if (real[side].empty())
                results.hold[side].AddPlaceholder();
            else
                results.hold[side].Add(row);
        }
        if (pair && !answer.identical) results.SubFolderDiffs.Add(std::move(diffs));
        results.specialObjects += answer.walk.specialObjects;
    }
    results.unlisted = walk.TakeUnlistedFolders();
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

}  // namespace vantrel
