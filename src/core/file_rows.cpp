#include "core/file_rows.h"

#include <algorithm>

#include "core/occupied_names.h"

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
    row.isLink = file.isLink;
    row.seen = file.seen;
    return row;
}

ResultRow RowFor(const MergedFile& name, const CDir::Other& other, ResultType type) {
    ResultRow row;
    row.text = name.text;
    row.realName = other.name;
    row.lastWrite = other.lastWrite;
    row.type = type;
    row.kind = RowKind::File;
    row.isLink = other.isLink;
    row.seen = other.seen;
    return row;
}

OccupiedName HalvesOf(const MergedFile& name) {
    OccupiedName occupied;
    for (const Side side : kBothSides) {
        if (const CDir::Other* other = name.other[side])
            occupied.halves[side] = {true, other->reason, other->isLink, other->keptAsFile};
        else
            occupied.halves[side].exists = name.file[side] != nullptr;
    }
    return occupied;
}

// The rows of a name that is occupied on a side by what is no file and no folder.
void AddOccupied(const MergedFile& name, const PerSide<const CDir*>& dirs, const ComparisonContext& context,
                 ComparisonResults& found) {
    const OccupiedName occupied = HalvesOf(name);
    const OccupiedVerdict verdict = Judge(occupied, [&] {
        PerSide<OpenFolder> folders;
        for (const Side side : kBothSides) (void)context.tools.files.Open(dirs[side]->Path(), folders[side]);
        return HoldSameText({{&folders[Side::Left], &folders[Side::Right]}},
                            {{name.other[Side::Left]->name, name.other[Side::Right]->name}});
    });
    if (verdict == OccupiedVerdict::Ignored) {
        found.specialObjects += SpecialObjects(occupied);
        return;
    }
    for (const Side side : kBothSides) {
        const CDir::Other* const other = name.other[side];
        if (!other && !name.file[side]) {
            found.hold[side].AddPlaceholder();
            continue;
        }
        const ResultType type = verdict == OccupiedVerdict::OrphanLink   ? ResultType::Orphan
                                : verdict == OccupiedVerdict::EqualLinks ? ResultType::Same
                                                                         : ResultType::None;
        ResultRow row = other ? RowFor(name, *other, type) : RowFor(name, *name.file[side], type);
        if (verdict == OccupiedVerdict::Unknown) {
            row.kind = RowKind::Unknown;
            row.reason = occupied.halves[side].reason;
            NoteUnknown(context, dirs[side]->Path() + std::string(row.realName), row.reason);
        }
        found.hold[side].Add(row);
    }
}

}  // namespace

void ShowAllFilesInBothDirs(const std::vector<MergedFile>& allFileNames, const PerSide<const CDir*>& dirs,
                            PairComparison& pairs, const ComparisonContext& context,
                            ComparisonResults& found) {
    HoldLists& hold = found.hold;
    context.progress.WaitUntilPainted();
    if (!allFileNames.empty()) context.progress.SetBarRange(static_cast<std::int64_t>(allFileNames.size()));
    for (const Side list : kBothSides) {
        hold[list].Reserve(allFileNames.size());
        for (const Side side : kBothSides) {
            hold[list].SharePool(dirs[side]->Texts());
            hold[list].SharePool(dirs[side]->SeenObjects());
        }
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

        if (name.IsOccupied()) {
            AddOccupied(name, dirs, context, found);
            continue;
        }
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
