#include "fileops/sub_folder_operations.h"

#include "core/row_texts.h"
#include "fileops/drive_warning.h"
#include "fileops/space_check.h"
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

// Makes the folders above `path` that are missing.
Error MakeFolders(const FileSystem& files, const std::string& path) {
    if (path.empty() || files.FolderExists(path)) return {};
    if (Error error = MakeFolders(files, GetParentFolderName(path)); !error.IsOk()) return error;
    return files.CreateFolder(path);
}

void MakePlaceholder(ResultRow& row) {
    const std::uint32_t tag = row.tag;
    row = {};
    row.tag = tag;
}

}  // namespace

std::size_t SubFolderOperations::CopyFilesToOtherDir(bool confirm, bool inSync) {
    static constexpr Kind kind{SubFolderVerb::Copy,
                               "frmSubDirDiffs.CopyFilesToOtherDir",
                               "Copy",
                               "You are about to copy ",
                               " file(s).",
                               "Copying ",
                               "Copy complete."};
    return Operate(kind, confirm, inSync);
}

std::size_t SubFolderOperations::MoveFilesToOtherDir(bool confirm, bool inSync) {
    static constexpr Kind kind{SubFolderVerb::Move,
                               "frmSubDirDiffs.MoveFilesToOtherDir",
                               "Move",
                               "You are about to move ",
                               " file(s).",
                               "Moving ",
                               "Move complete."};
    return Operate(kind, confirm, inSync);
}

std::size_t SubFolderOperations::DeleteFiles(bool confirm, bool inSync) {
    static constexpr Kind kind{SubFolderVerb::Delete,
                               "frmSubDirDiffs.DeleteFiles",
                               "Delete",
                               "You are about to permanently delete ",
                               " file(s).",
                               "Deleting ",
                               "Delete complete."};
    return Operate(kind, confirm, inSync);
}

std::size_t SubFolderOperations::RecycleFiles(bool confirm, bool inSync) {
    static constexpr Kind kind{SubFolderVerb::Recycle,         "frmSubDirDiffs.RecycleFiles",  "Recycle",
                               "You are about to send ",       " file(s) to the Recycle Bin.", "Recycling ",
                               "Send to Recycle Bin complete."};
    return Operate(kind, confirm, inSync);
}

std::vector<SubFolderOperations::Item> SubFolderOperations::SelectedItems() {
    const Side side = host_.CurrentListview();
    const PerSide<ResultList>& lists = host_.Lists();
    const std::string folder = host_.FolderPath(side), otherFolder = host_.FolderPath(Other(side));
    std::vector<Item> items;
    for (std::size_t i = 0; i < lists[side].Count(); ++i) {
        const ResultRow& row = lists[side][i];
        if (!row.selected || !row.IsReal() || row.realName.empty()) continue;
        // A counterpart keeps its own letter case: it is the same file.
        const bool hasCounterpart = i < lists[Other(side)].Count() && lists[Other(side)][i].IsReal();
        const ResultRow& named = hasCounterpart ? lists[Other(side)][i] : row;
        items.push_back({i, ObjectPath(folder, row), ObjectPath(otherFolder, named)});
    }
    return items;
}

std::size_t SubFolderOperations::Operate(const Kind& kind, bool confirm, bool inSync) {
    std::size_t done = 0;
    tools_.reporter.Guard(kind.routineName, [&] {
        cancelFlag_ = false;
        lastParent_.clear();
        const std::vector<Item> items = SelectedItems();
        if (items.empty()) {
            if (!inSync)
                tools_.messages.Ask({std::string("Unable to ") + kind.word,
                                     "No files selected.  Please select some files and try again. ",
                                     MessageIcon::Warning,
                                     MessageButtons::Ok,
                                     {}});
            return;
        }
        bool deleteForGood = kind.verb == SubFolderVerb::Delete;
        if (confirm && !MayBegin(kind, items.size(), deleteForGood)) return;
        if (!EnoughSpace(kind)) return;

        // Rows take over the texts of the row opposite, which must live as long.
        for (PerSide<ResultList>* lists : {&host_.Lists(), &host_.TwinLists()}) {
            for (const Side side : kBothSides) (*lists)[side].ShareTexts((*lists)[Other(side)]);
        }
        host_.ShowProgressPanel(true);
        host_.SetResultsOutOfDate();
        bool stop = false;
        for (const Item& item : items) {
            tools_.loop.Yield();
            if (stop) break;
            host_.SetProgressText(kind.doing +
                                  std::string(host_.Lists()[host_.CurrentListview()][item.row].text) + "...");
            if (!DoOne(kind, item, deleteForGood, stop)) continue;
            ++done;
            PutRowsRight(kind, item.row);
        }
        const Error synced = wrappers_.Shell().SyncCopies();
        host_.SetProgressText({});
        host_.ShowProgressPanel(false);
        ThrowIfFailed(synced);
        // What was not done has been told already; it is not called complete.
        if (confirm && done == items.size()) {
            const bool asDelete = deleteForGood && kind.verb == SubFolderVerb::Recycle;
            tools_.messages.Ask({asDelete ? "Delete Status" : kind.word + std::string(" Status"),
                                 asDelete ? "Delete complete." : kind.complete,
                                 MessageIcon::Information,
                                 MessageButtons::Ok,
                                 {}});
        }
        if (!inSync) host_.CopyItemsFromHiddenLVWToVisibleLVW();
    });
    return done;
}

bool SubFolderOperations::MayBegin(const Kind& kind, std::size_t count, bool& deleteForGood) {
    MessageAnswer answer = tools_.messages.Ask(
        {std::string("Confirm ") + kind.word,
         kind.about + std::to_string(count) + kind.aboutEnd + "\r\n\r\nDo you wish to continue?",
         MessageIcon::Question,
         MessageButtons::YesNo,
         {}});
    if (answer != MessageAnswer::Yes) return false;
    if (kind.verb != SubFolderVerb::Recycle) return true;
    const DriveKind drive =
        tools_.volumes.GetDriveKind(tools_.volumes.GetDriveName(host_.FolderPath(host_.CurrentListview())));
    deleteForGood = drive == DriveKind::Removable || drive == DriveKind::Remote;
    return !deleteForGood || AskToDeleteForGood(tools_.messages, drive) == MessageAnswer::Yes;
}

bool SubFolderOperations::EnoughSpace(const Kind& kind) {
    const Side side = host_.CurrentListview();
    const ResultList &list = host_.Lists()[side], &otherList = host_.Lists()[Other(side)];
    const std::string folder = host_.FolderPath(side), otherFolder = host_.FolderPath(Other(side));
    SpaceAnswer space;
    if (kind.verb == SubFolderVerb::Copy)
        space = EnoughSpaceForCopyLvwToLvw(tools_, list, otherList, otherFolder);
    if (kind.verb == SubFolderVerb::Move)
        space = EnoughSpaceForMoveLvwToLvw(tools_, list, otherList, folder, otherFolder);
    if (!space.enough && !space.told) ShowInsufficientDiskSpace(tools_, space);
    return space.enough;
}

bool SubFolderOperations::DoOne(const Kind& kind, const Item& item, bool deleteForGood, bool& stop) {
    bool aborted = false;
    switch (kind.verb) {
        case SubFolderVerb::Copy:
            return CopyOne(item, stop);
        case SubFolderVerb::Move:
            return Took(wrappers_.MoveFiles({item.path}, item.target,
                                            {.confirm = false, .targetIsFullPath = true}, aborted),
                        stop);
        case SubFolderVerb::Recycle:
            if (deleteForGood) return DeleteOne(item, stop);
            return Took(wrappers_.RecycleFiles({item.path}, {.confirm = false}, aborted), stop);
        case SubFolderVerb::Delete:
            break;
    }
    return DeleteOne(item, stop);
}

bool SubFolderOperations::CopyOne(const Item& item, bool& stop) {
    const std::string parent = GetParentFolderName(item.target);
    if (!EqualIgnoringCase(parent, lastParent_)) {
        // Where this fails, the copy does, and tells why.
        static_cast<void>(MakeFolders(tools_.files, parent).IsOk());
        lastParent_ = parent;
    }
    if (wrappers_.Shell().CopyOneFile(item.path, item.target).IsOk()) return true;
    bool aborted = false;
    return Took(
        wrappers_.CopyFiles({item.path}, item.target, {.confirm = false, .targetIsFullPath = true}, aborted),
        stop);
}

bool SubFolderOperations::DeleteOne(const Item& item, bool& stop) {
    if (wrappers_.Shell().DeleteOneFile(item.path).IsOk()) return true;
    bool aborted = false;
    return Took(wrappers_.DeleteFilesPermanently({item.path}, {.confirm = false}, aborted), stop);
}

bool SubFolderOperations::Took(const ShellResult& result, bool& stop) {
    cancelFlag_ = cancelFlag_ || !result.AllDone();
    stop = stop || result.cancelled;
    return result.AllDone();
}

void SubFolderOperations::PutRowsRight(const Kind& kind, std::size_t index) {
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
