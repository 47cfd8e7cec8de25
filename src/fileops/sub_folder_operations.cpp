#include "fileops/sub_folder_operations.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "core/row_texts.h"
#include "fileops/drive_warning.h"
#include "fileops/expectations.h"
#include "fileops/space_check.h"
#include "fileops/told_at_end.h"
#include "platform/files/sighting.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

enum class SubFolderVerb { Copy, Move, Delete, Recycle };

struct SubFolderOperations::Kind {
    SubFolderVerb verb;
    const char* routineName;
    const char* word;  // of the titles "Unable to ...", "Confirm ..." and "... Status"
    const char* about;
    const char* aboutEnd;
    const char* doing;
    const char* complete;
};

namespace {

void MakePlaceholder(ResultRow& row) {
    const std::uint32_t tag = row.tag;
    row = ResultRow();
    row.tag = tag;
}

}  // namespace

SubFolderOperations::Result SubFolderOperations::CopyFilesToOtherDir(Confirm confirm, PartOf partOf) {
    static constexpr Kind kind{SubFolderVerb::Copy,
                               "frmSubDirDiffs.CopyFilesToOtherDir",
                               "Copy",
                               "You are about to copy ",
                               " file(s).",
                               "Copying ",
                               "Copy complete."};
    return Operate(kind, confirm, partOf);
}

SubFolderOperations::Result SubFolderOperations::MoveFilesToOtherDir(Confirm confirm, PartOf partOf) {
    static constexpr Kind kind{SubFolderVerb::Move,
                               "frmSubDirDiffs.MoveFilesToOtherDir",
                               "Move",
                               "You are about to move ",
                               " file(s).",
                               "Moving ",
                               "Move complete."};
    return Operate(kind, confirm, partOf);
}

SubFolderOperations::Result SubFolderOperations::DeleteFiles(Confirm confirm, PartOf partOf) {
    static constexpr Kind kind{SubFolderVerb::Delete,
                               "frmSubDirDiffs.DeleteFiles",
                               "Delete",
                               "You are about to permanently delete ",
                               " file(s).",
                               "Deleting ",
                               "Delete complete."};
    return Operate(kind, confirm, partOf);
}

SubFolderOperations::Result SubFolderOperations::RecycleFiles(Confirm confirm, PartOf partOf) {
    static constexpr Kind kind{SubFolderVerb::Recycle,         "frmSubDirDiffs.RecycleFiles",  "Recycle",
                               "You are about to send ",       " file(s) to the Recycle Bin.", "Recycling ",
                               "Send to Recycle Bin complete."};
    return Operate(kind, confirm, partOf);
}

SubFolderOperations::Selection SubFolderOperations::SelectedItems(const Kind& kind) {
    const bool reachesOver = kind.verb == SubFolderVerb::Copy || kind.verb == SubFolderVerb::Move;
    const Side side = host_.CurrentListview();
    const PerSide<ResultList>& lists = host_.Lists();
    const std::string folder = host_.FolderPath(side), otherFolder = host_.FolderPath(Other(side));
    Selection selection;
    for (std::size_t i = 0; i < lists[side].Count(); ++i) {
        const ResultRow& row = lists[side][i];
        if (!row.selected || !row.IsReal() || row.realName.empty()) continue;
        const Elsewhere opposite =
            i < lists[Other(side)].Count() ? lists[Other(side)][i].elsewhere : Elsewhere::No;
        if (row.elsewhere != Elsewhere::No || (reachesOver && opposite != Elsewhere::No)) {
            ++selection.elsewhere;
            continue;
        }
        // A counterpart keeps its own letter case: it is the same file.
        const bool hasCounterpart = i < lists[Other(side)].Count() && lists[Other(side)][i].IsReal();
        const ResultRow& named = hasCounterpart ? lists[Other(side)][i] : row;
        Expectation expected{SightingOf(row), {}, {}};
        if (i < lists[Other(side)].Count()) expected.target = SightingOf(lists[Other(side)][i]);
        selection.items.push_back(
            {i, ObjectPath(folder, row), ObjectPath(otherFolder, named), std::move(expected)});
    }
    return selection;
}

SubFolderOperations::Result SubFolderOperations::Operate(const Kind& kind, Confirm confirm, PartOf partOf) {
    Run run{.kind = kind,
            .deleteForGood = kind.verb == SubFolderVerb::Delete,
            .roots = host_.Roots(),
            .result = {}};
    tools_.reporter.Guard(kind.routineName, [&] {
        const auto [items, elsewhere] = SelectedItems(kind);
        if (elsewhere > 0) TellLeftAlone(kind, elsewhere);
        if (items.empty()) {
            if (partOf == PartOf::Command && elsewhere == 0)
                tools_.messages.Ask({std::string("Unable to ") + kind.word,
                                     "No files selected.  Please select some files and try again. ",
                                     MessageIcon::Warning,
                                     MessageButtons::Ok,
                                     {}});
            return;
        }
        if (confirm == Confirm::Yes && !MayBegin(run, items.size())) return;
        if (!EnoughSpace(kind)) return;
        CarryOut(run, items);
        // What was not done has been told already; it is not called complete.
        if (confirm == Confirm::Yes && run.result.done == items.size()) TellComplete(run);
        if (partOf != PartOf::Command) return;
        TellNotKept(run);
        host_.CopyItemsFromHiddenLVWToVisibleLVW();
    });
    return run.result;
}

void SubFolderOperations::CarryOut(Run& run, const std::vector<Item>& items) {
    // Rows take over the texts of the row opposite, which must live as long.
    seen_ = std::make_shared<SeenPool>();
    for (PerSide<ResultList>* lists : {&host_.Lists(), &host_.TwinLists()}) {
        for (const Side side : kBothSides) {
            (*lists)[side].ShareTexts((*lists)[Other(side)]);
            (*lists)[side].SharePool(seen_);
        }
    }
    host_.ShowProgressPanel(true);
    host_.SetResultsOutOfDate();
    for (const Item& item : items) {
        tools_.loop.Yield();
        if (run.result.ended) break;
        host_.SetProgressText(run.kind.doing +
                              std::string(host_.Lists()[host_.CurrentListview()][item.row].text) + "...");
        if (DoOne(run, item)) CountAsDone(run, item);
    }
    FinishCopies(run);
    OperationSummary& summary = run.result.summary;
    summary.notReached = items.size() - run.result.done - summary.failed - summary.skipped;
    host_.SetProgressText({});
    host_.ShowProgressPanel(false);
}

void SubFolderOperations::CountAsDone(Run& run, const Item& item) {
    ++run.result.done;
    OperationSummary& summary = run.result.summary;
    switch (run.deleteForGood ? SubFolderVerb::Delete : run.kind.verb) {
        case SubFolderVerb::Copy:
            ++summary.copied;
            summary.copiedBytes +=
                std::max(host_.Lists()[host_.CurrentListview()][item.row].size, Currency());
            break;
        case SubFolderVerb::Move:
            ++summary.moved;
            break;
        case SubFolderVerb::Delete:
            ++summary.deleted;
            break;
        case SubFolderVerb::Recycle:
            ++summary.recycled;
            break;
    }
    const bool reachesOver = run.kind.verb == SubFolderVerb::Copy || run.kind.verb == SubFolderVerb::Move;
    PutRowsRight(run.kind, item.row, reachesOver ? LookAtTarget(item) : nullptr);
}

const Seen* SubFolderOperations::LookAtTarget(const Item& item) {
    OpenFolder folder;
    FolderEntry entry;
    if (!tools_.files.Open(GetParentFolderName(item.target), folder).IsOk() ||
        !folder.LookAt(GetLastItemInPath(item.target), entry))
        return nullptr;
    const Sighting sighting = SightingOf(entry);
    return sighting.state == Sighting::State::Present ? seen_->Add(sighting.seen) : nullptr;
}

void SubFolderOperations::FinishCopies(Run& run) {
    const ShellOperations::FinishedCopies finished = wrappers_.Shell().FinishCopies();
    run.result.notKept += finished.notKept;
    std::unordered_set<std::string_view> failed;
    for (const ShellOperations::FailedCopy& copy : finished.failed) {
        failed.insert(copy.target);
        run.result.summary.AddNotDone(copy.target, copy.error);
    }
    for (const Item* item : run.waiting)
        if (!failed.contains(item->target)) CountAsDone(run, *item);
    if (finished.failed.empty()) return;
    run.result.cancelled = true;
    tools_.messages.Ask({run.kind.word + std::string(" Status"),
                         DescribeFailedCopies(finished.failed),
                         MessageIcon::Warning,
                         MessageButtons::Ok,
                         {}});
}

void SubFolderOperations::TellNotKept(const Run& run) {
    if (const std::string text = DescribeNotKept(run.result.notKept); !text.empty())
        tools_.messages.Ask(
            {TitleOf(run.result.notKept), text, MessageIcon::Information, MessageButtons::Ok, {}});
}

void SubFolderOperations::TellLeftAlone(const Kind& kind, std::size_t count) {
    tools_.messages.Ask(
        {std::string("Unable to ") + kind.word,
         std::to_string(count) +
             " of the selected files lie behind a link to a folder, or belong to both compared "
             "folders.  They are left alone.",
         MessageIcon::Warning,
         MessageButtons::Ok,
         {}});
}

void SubFolderOperations::TellComplete(const Run& run) {
    const bool asDelete = run.deleteForGood && run.kind.verb == SubFolderVerb::Recycle;
    tools_.messages.Ask({asDelete ? "Delete Status" : run.kind.word + std::string(" Status"),
                         asDelete ? "Delete complete." : run.kind.complete,
                         MessageIcon::Information,
                         MessageButtons::Ok,
                         {}});
}

bool SubFolderOperations::MayBegin(Run& run, std::size_t count) {
    MessageAnswer answer = tools_.messages.Ask(
        {std::string("Confirm ") + run.kind.word,
         run.kind.about + std::to_string(count) + run.kind.aboutEnd + "\r\n\r\nDo you wish to continue?",
         MessageIcon::Question,
         MessageButtons::YesNo,
         {}});
    if (answer != MessageAnswer::Yes) return false;
    if (run.kind.verb != SubFolderVerb::Recycle) return true;
    const DriveKind drive =
        tools_.volumes.GetDriveKind(tools_.volumes.GetDriveName(host_.FolderPath(host_.CurrentListview())));
    run.deleteForGood = drive == DriveKind::Removable || drive == DriveKind::Remote;
    return !run.deleteForGood || AskToDeleteForGood(tools_.messages, drive) == MessageAnswer::Yes;
}

bool SubFolderOperations::EnoughSpace(const Kind& kind) {
    const Side side = host_.CurrentListview();
    const ResultList &list = host_.Lists()[side], &otherList = host_.Lists()[Other(side)];
    const std::string folder = host_.FolderPath(side), otherFolder = host_.FolderPath(Other(side));
    SpaceAnswer space;
    if (kind.verb == SubFolderVerb::Copy)
        space = EnoughSpaceForCopyLvwToLvw(tools_, list, otherList, folder, otherFolder);
    if (kind.verb == SubFolderVerb::Move)
        space = EnoughSpaceForMoveLvwToLvw(tools_, list, otherList, folder, otherFolder);
    if (!space.enough && !space.told) ShowInsufficientDiskSpace(tools_, space);
    return space.enough;
}

bool SubFolderOperations::DoOne(Run& run, const Item& item) {
    switch (run.kind.verb) {
        case SubFolderVerb::Copy:
            return CopyOne(run, item);
        case SubFolderVerb::Move:
            return Took(run, item, wrappers_.MoveFiles({item.path}, item.target, Alone(run, item)));
        case SubFolderVerb::Recycle:
            if (run.deleteForGood) return DeleteOne(run, item);
            return Took(run, item, wrappers_.RecycleFiles({item.path}, Alone(run, item)));
        case SubFolderVerb::Delete:
            break;
    }
    return DeleteOne(run, item);
}

ShellWrappers::Options SubFolderOperations::Alone(const Run& run, const Item& item) {
    return {.confirm = false, .targetIsFullPath = true, .expected = {item.expected}, .roots = run.roots};
}

// What fails goes the shell's own way, with its error box, and is held against the same that was seen.
bool SubFolderOperations::CopyOne(Run& run, const Item& item) {
    if (wrappers_.Shell().CopyOneFile({item.path, item.target, item.expected, run.roots, true}).IsOk()) {
        run.waiting.push_back(&item);
        return false;
    }
    return Took(run, item, wrappers_.CopyFiles({item.path}, item.target, Alone(run, item)));
}

bool SubFolderOperations::DeleteOne(Run& run, const Item& item) {
    if (wrappers_.Shell().DeleteOneFile({item.path, {}, item.expected, run.roots}).IsOk()) return true;
    return Took(run, item, wrappers_.DeleteFilesPermanently({item.path}, Alone(run, item)));
}

bool SubFolderOperations::Took(Run& run, const Item& item, const ShellResult& result) {
    if (!result.AllDone() && !result.cancelled)
        run.result.summary.AddNotDone(item.path,
                                      result.troubles.empty() ? Error() : result.troubles.front().error);
    run.result.cancelled = run.result.cancelled || !result.AllDone();
    run.result.ended = run.result.ended || result.cancelled || result.rootLost;
    run.result.notKept += result.notKept;
    return result.AllDone();
}

// The row of a file that was copied or moved tells of the one that is there now, so that the next operation
// knows it again. Where that could not be looked at, it tells of the source, and the next one leaves it
// alone.
void SubFolderOperations::PutRowsRight(const Kind& kind, std::size_t index, const Seen* copied) {
    const Side side = host_.CurrentListview();
    for (PerSide<ResultList>* lists : {&host_.Lists(), &host_.TwinLists()}) {
        if (index >= (*lists)[side].Count() || index >= (*lists)[Other(side)].Count()) continue;
        ResultRow& row = (*lists)[side][index];
        ResultRow& opposite = (*lists)[Other(side)][index];
        row.selected = false;
        if (kind.verb == SubFolderVerb::Copy || kind.verb == SubFolderVerb::Move) {
            const std::uint32_t tag = opposite.tag;
            const std::string_view keptName = opposite.IsReal() ? opposite.realName : row.realName;
            opposite = row;
            opposite.tag = tag;
            opposite.realName = keptName;
            if (copied != nullptr) opposite.seen = copied;
        } else if (opposite.IsReal()) {
            opposite.type = ResultType::Orphan;
        }
        if (kind.verb == SubFolderVerb::Copy) {
            row.type = opposite.type = ResultType::Same;
        } else {
            MakePlaceholder(row);
        }
    }
}

}  // namespace vantrel
