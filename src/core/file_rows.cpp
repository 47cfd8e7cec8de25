#include "core/file_rows.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "core/level_contents.h"
#include "core/occupied_names.h"
#include "platform/fetch_ahead.h"
#include "platform/memory.h"

namespace vantrel {
namespace {

bool IsPair(const MergedFile& name) {
    return name.file[Side::Left] && name.file[Side::Right];
}

PerSide<ScannedFile> FilesOf(const MergedFile& name) {
    PerSide<ScannedFile> files;
    for (const Side side : kBothSides)
        if (name.file[side]) files[side] = {name.file[side]->Size(), name.file[side]->LastWrite()};
    return files;
}

std::string PathOf(const PerSide<const CDir*>& dirs, const MergedFile& name, Side side) {
    return dirs[side]->Path() + std::string(name.file[side]->FileName());
}

ResultRow RowFor(const MergedFile& name, const CFile& file, ResultType type) {
    ResultRow row;
    row.text = name.text;
    row.realName = file.FileName();
    row.size = std::max(file.Size(), Currency());
    row.lastWrite = file.LastWrite();
    row.type = type;
    row.kind = RowKind::File;
    row.isLink = file.IsLink();
    row.seen = file.ItselfSeen();
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

// The rows of the files, and what is read ahead for them.
class FileRows {
  public:
    FileRows(const MergedFiles& names, const PerSide<const CDir*>& dirs, PairComparison& pairs,
             const ComparisonContext& context)
        : names_(names), dirs_(dirs), pairs_(pairs), context_(context) {
        if (!pairs.ReadsContents()) return;
        // Files are opened relative to their folder. Where that does not go, each is opened by its path.
        bool areOpen = true;
        for (const Side side : kBothSides) {
            areOpen = context.Open(dirs[side]->Path(), folders_[side]).IsOk() && areOpen;
        }
        if (context.workers.Count() == 0 || !areOpen) return;
        contents_.emplace(pairs.Ahead(), PairRun::Folders{{folders_[Side::Left], folders_[Side::Right]}},
                          names.Count(),
                          [this](std::size_t i, PairToRead& pair) { return Describe(i, pair); });
    }

    void AddTo(ComparisonResults& found) {
        for (std::size_t i = 0; i < names_.Count(); ++i) {
            if (contents_)
                contents_->Advance();
            else
                Prefetch();
            FetchComing(i);
            const MergedFile name = names_[i];
            context_.progress.SetBarValue(static_cast<std::int64_t>(i) + 1);
            context_.ThrowIfCancelled();
            context_.progress.SetFileName(name.text);

            if (name.IsOccupied()) {
                AddOccupied(name, dirs_, context_, found);
                continue;
            }
            const PairTypes types = TypesOf(i);
            for (const Side side : kBothSides) {
                if (name.file[side])
                    found.hold[side].Add(
                        RowFor(name, *name.file[side], side == Side::Left ? types.left : types.right));
                else
                    found.hold[side].AddPlaceholder();
            }
        }
    }

  private:
    bool Describe(std::size_t i, PairToRead& pair) const {
        const MergedFile name = names_[i];
        if (!IsPair(name) || !pairs_.NeedsContents(FilesOf(name))) return false;
        for (const Side side : kBothSides) {
            const CFile& file = *name.file[side];
            pair[side] = {file.FileName(), file.ItselfSeen()->id.inode, file.IsLink(), file.Size()};
        }
        return true;
    }

    // Names and what was seen lie in the order of the listing, not in that of the names.
    void FetchComing(std::size_t i) const {
        if (i + kStepsAhead >= names_.Count()) return;
        const PerSide<const CFile*> coming = names_.FilesAt(i + kStepsAhead);
        for (const Side side : kBothSides) {
            if (!coming[side]) continue;
            FetchAhead(coming[side]->FileName().data());
            FetchAhead(coming[side]->ItselfSeen());
        }
    }

    PairTypes TypesOf(std::size_t i) {
        const MergedFile name = names_[i];
        if (!IsPair(name)) return {ResultType::Orphan, ResultType::Orphan};
        const PerSide<ScannedFile> files = FilesOf(name);
        if (contents_ && pairs_.NeedsContents(files)) {
            const PairVerdict verdict = pairs_.Take(*contents_, i, name.file[Side::Left]->FileName(), [this] {
                contents_->Advance();
                context_.ThrowIfCancelled();
            });
            if (verdict.kind != PairVerdict::Kind::LookCloser)
                return pairs_.ClassifyRead(files, verdict.kind != PairVerdict::Kind::Alike);
        }
        return pairs_.Classify(files, [&](Side side) { return PathOf(dirs_, name, side); });
    }

    // Where the one thread reads: the coming pairs, opened ahead.
    void Prefetch() {
        for (; pairs_.ReadsContents() && ahead_ < names_.Count() && pairs_.WantsPrefetch(); ++ahead_) {
            const MergedFile coming = names_[ahead_];
            if (!IsPair(coming) || !pairs_.NeedsContents(FilesOf(coming))) continue;
            context_.ThrowIfCancelled();
            PerSide<ReadFile> files;
            for (const Side side : kBothSides)
                if (folders_[side]->IsOpen())
                    (void)folders_[side]->OpenScannedFile(coming.file[side]->FileName(), files[side]);
            pairs_.Prefetch(PathOf(dirs_, coming, Side::Left), PathOf(dirs_, coming, Side::Right),
                            std::move(files));
        }
    }

    const MergedFiles& names_;
    const PerSide<const CDir*>& dirs_;
    PairComparison& pairs_;
    const ComparisonContext& context_;
    PerSide<std::shared_ptr<OpenFolder>> folders_;
    std::optional<LevelContents> contents_;  // where workers compare
    std::size_t ahead_ = 0;
};

}  // namespace

void ShowAllFilesInBothDirs(const MergedFiles& allFileNames, const PerSide<const CDir*>& dirs,
                            PairComparison& pairs, const ComparisonContext& context,
                            ComparisonResults& found) {
    HoldLists& hold = found.hold;
    context.progress.WaitUntilPainted();
    // The rows of a large folder are most of what is held then; what its listing needed is free.
    constexpr std::size_t kManyRows = 10'000;
    if (allFileNames.Count() >= kManyRows) ReturnFreedMemory();
    if (allFileNames.Count() != 0)
        context.progress.SetBarRange(static_cast<std::int64_t>(allFileNames.Count()));
    for (const Side list : kBothSides) {
        hold[list].Reserve(allFileNames.Count());
        for (const Side side : kBothSides) {
            hold[list].SharePool(dirs[side]->Texts());
            hold[list].SharePool(dirs[side]->SeenObjects());
        }
    }

    FileRows(allFileNames, dirs, pairs, context).AddTo(found);
}

}  // namespace vantrel
