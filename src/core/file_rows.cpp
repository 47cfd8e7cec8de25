#include "core/file_rows.h"

#include <algorithm>

namespace vantrel {
namespace {

bool IsPair(const MergedFile& name) {
    return name.file[Side::Left] && name.file[Side::Right];
}

PerSide<ScannedFile> FilesOf(const MergedFile& name) {
    PerSide<ScannedFile> files;
    for (const Side side : kBothSides)
        if (name.file[side]) files[side] = {name.file[side]->Size, name.file[side]->LastWrite};
    return files;
}

std::string PathOf(const PerSide<const CDir*>& dirs, const MergedFile& name, Side side) {
    return dirs[side]->Path() + std::string(name.file[side]->FileName);
}

ResultRow RowFor(const MergedFile& name, const CFile& file, ResultType type) {
    ResultRow row;
    row.text = name.text;
    row.realName = file.FileName;
    row.size = std::max(file.Size, Currency());
    row.lastWrite = file.LastWrite;
    row.type = type;
    row.kind = RowKind::File;
    return row;
}

}  // namespace

void ShowAllFilesInBothDirs(const std::vector<MergedFile>& allFileNames, const PerSide<const CDir*>& dirs,
                            PairComparison& pairs, const ComparisonContext& context, HoldLists& hold) {
    context.progress.WaitUntilPainted();
    if (!allFileNames.empty()) context.progress.SetBarRange(static_cast<std::int64_t>(allFileNames.size()));
    for (const Side list : kBothSides) {
        hold[list].Reserve(allFileNames.size());
        for (const Side side : kBothSides) hold[list].SharePool(dirs[side]->Texts());
    }

    // Files are opened relative to their folder. Where that does not go, each is opened by its path.
    PerSide<OpenFolder> folders;
    for (const Side side : kBothSides)
        if (pairs.ReadsContents()) (void)context.tools.files.Open(dirs[side]->Path(), folders[side]);
    std::size_t ahead = 0;
    for (std::size_t i = 0; i < allFileNames.size(); ++i) {
        for (; pairs.ReadsContents() && ahead < allFileNames.size() && pairs.WantsPrefetch(); ++ahead) {
            const MergedFile& coming = allFileNames[ahead];
            if (!IsPair(coming) || !pairs.NeedsContents(FilesOf(coming))) continue;
            context.ThrowIfCancelled();
            PerSide<ReadFile> files;
            for (const Side side : kBothSides)
                if (folders[side].IsOpen())
                    (void)folders[side].OpenScannedFile(coming.file[side]->FileName, files[side]);
            pairs.Prefetch(PathOf(dirs, coming, Side::Left), PathOf(dirs, coming, Side::Right),
                           std::move(files));
        }
        const MergedFile& name = allFileNames[i];
        context.progress.SetBarValue(static_cast<std::int64_t>(i) + 1);
        context.ThrowIfCancelled();
        context.progress.SetFileName(name.text);

        PairTypes types{ResultType::Orphan, ResultType::Orphan};
        if (IsPair(name))
            types = pairs.Classify(FilesOf(name), [&](Side side) { return PathOf(dirs, name, side); });
        for (const Side side : kBothSides) {
            if (name.file[side])
                hold[side].Add(RowFor(name, *name.file[side], side == Side::Left ? types.left : types.right));
            else
                hold[side].AddPlaceholder();
        }
    }
}

}  // namespace vantrel
