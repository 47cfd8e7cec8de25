#include "fileops/space_check.h"

#include "fileops/tree_size.h"
#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

SpaceAnswer DecideOnSpace(const Toolbox& tools, std::string_view routineName, const std::string& troubleTitle,
                          const std::string& troubleText, const std::function<void(SpaceAnswer&)>& work) {
    SpaceAnswer answer;
    tools.reporter.Guard(routineName, [&] {
        try {
            work(answer);
        } catch (const ErrorException& error) {
            answer.enough = true;
            if (error.Get().Number() == ErrorNumber::PermissionDenied) return;
            if (error.Get().Number() != ErrorNumber::PathNotFound) throw;
            tools.messages.Ask({troubleTitle, troubleText, MessageIcon::Stop, MessageButtons::Ok, {}});
            answer.enough = false;
            answer.told = true;
        }
    });
    return answer;
}

void LookAtDrive(const Toolbox& tools, const std::string& folder, SpaceAnswer& answer) {
    answer.drive = tools.volumes.GetDriveName(folder);
    if (answer.drive.empty() || !tools.volumes.IsReady(answer.drive))
        throw ErrorException(Error(ErrorNumber::PathNotFound, "Path not found \"" + folder + "\""));
    answer.available = tools.volumes.GetAvailableDriveSpace(answer.drive);
    answer.enough = answer.available - answer.required >= Currency();
}

namespace {

// Of the object itself, where the listing looked at it.
Currency SizeOf(const ResultRow& row) {
    if (!row.seen || (row.kind == RowKind::Folder && !row.isLink)) return row.size;
    return Currency::FromWhole(static_cast<std::int64_t>(row.seen->size));
}

bool HasCounterpart(const ResultRow& row) {
    return row.type != ResultType::Orphan && row.type != ResultType::OrphanFolder;
}

// A list whose selected objects go to `target`, and what counts of it.
struct Going {
    const ResultList& list;
    const std::string& folder;
    const std::string& target;
    bool orphansOnly;
};

// The size of a folder's row tells of what its links lead to as well. Only where it would not suffice it is
// worth a look at what the folders take themselves.
void LookAtDriveFor(const Toolbox& tools, const Going& going, SpaceAnswer& answer) {
    if (answer.required < Currency::FromWhole(1)) return;
    LookAtDrive(tools, going.target, answer);
    if (answer.enough) return;
    for (const ResultRow& row : going.list) {
        if (!row.selected || row.kind != RowKind::Folder || row.isLink) continue;
        if (going.orphansOnly && HasCounterpart(row)) continue;
        TreeSize size;
        if (!CountTreeSize(tools, JoinPath(going.folder, row.realName), size).IsOk()) continue;
        answer.required -= SizeOf(row) - size.bytes;
    }
    answer.enough = answer.available - answer.required >= Currency();
}

// What `names` take in `dir`; "folders" are those with a marker.
Currency SizeThere(const Toolbox& tools, std::string_view dir, std::string_view name) {
    const bool wantsFolder = name.starts_with(kFolderMarker);
    if (wantsFolder) name.remove_prefix(1);
    if (name.empty()) return {};
    const std::string path = JoinPath(dir, name);
    if (wantsFolder ? !tools.files.FolderExists(path) : !tools.files.FileExists(path)) return {};
    TreeSize size;
    ThrowIfFailed(CountTreeSize(tools, path, size));
    return size.bytes;
}

}  // namespace

Currency GetSizeOfSelectedRows(const ResultList& list) {
    Currency sum;
    for (const ResultRow& row : list) {
        if (row.selected && row.IsReal()) sum += SizeOf(row);
    }
    return sum;
}

Currency GetSizeOfSelectedRowsWithCounterpart(const ResultList& list, const ResultList& otherList) {
    Currency sum;
    for (std::size_t i = 0; i < list.Count() && i < otherList.Count(); ++i) {
        const ResultRow& row = list[i];
        if (row.selected && row.IsReal() && HasCounterpart(row)) sum += SizeOf(row);
    }
    return sum;
}

Currency GetSizeCurrencyOfComplimentFilesInSpecificDir(const Toolbox& tools, const ResultList& list,
                                                       std::string_view dir) {
    Currency sum;
    for (const ResultRow& row : list) {
        if (!row.selected || !row.IsReal()) continue;
        const std::string marker(row.kind == RowKind::Folder ? 1 : 0, kFolderMarker);
        sum += SizeThere(tools, dir, marker + std::string(row.realName));
    }
    return sum;
}

Currency GetSizeCurrencyOfComplimentFilesInSpecificDirUsingCol(const Toolbox& tools,
                                                               const std::vector<std::string>& names,
                                                               std::string_view dir) {
    Currency sum;
    for (const std::string& name : names) sum += SizeThere(tools, dir, name);
    return sum;
}

SpaceAnswer EnoughSpaceForCopyLvwToLvw(const Toolbox& tools, const ResultList& list,
                                       const ResultList& otherList, const std::string& folder,
                                       const std::string& otherFolder) {
    return DecideOnSpace(tools, "modVantrel.EnoughSpaceForCopyLvwToLvw", "Copy", std::string(kTargetTrouble),
                         [&](SpaceAnswer& answer) {
                             answer.required = GetSizeOfSelectedRows(list) -
                                               GetSizeOfSelectedRowsWithCounterpart(list, otherList);
                             LookAtDriveFor(tools, {list, folder, otherFolder, true}, answer);
                         });
}

SpaceAnswer EnoughSpaceForMoveLvwToLvw(const Toolbox& tools, const ResultList& list,
                                       const ResultList& otherList, const std::string& folder,
                                       const std::string& otherFolder) {
    return DecideOnSpace(tools, "modVantrel.EnoughSpaceForMoveLvwToLvw", "Move", std::string(kTargetTrouble),
                         [&](SpaceAnswer& answer) {
                             if (EqualIgnoringCase(tools.volumes.GetDriveName(folder),
                                                   tools.volumes.GetDriveName(otherFolder)))
                                 return;
                             answer.required = GetSizeOfSelectedRows(list) -
                                               GetSizeOfSelectedRowsWithCounterpart(list, otherList);
                             LookAtDriveFor(tools, {list, folder, otherFolder, true}, answer);
                         });
}

SpaceAnswer EnoughSpaceForCopyLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& folder, const std::string& dir) {
    return DecideOnSpace(tools, "modVantrel.EnoughSpaceForCopyLvwToSpecificDir", "Copy",
                         std::string(kTargetTrouble), [&](SpaceAnswer& answer) {
                             answer.required =
                                 GetSizeOfSelectedRows(list) -
                                 GetSizeCurrencyOfComplimentFilesInSpecificDir(tools, list, dir);
                             LookAtDriveFor(tools, {list, folder, dir, false}, answer);
                         });
}

SpaceAnswer EnoughSpaceForMoveLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& folder, const std::string& dir) {
    return DecideOnSpace(tools, "modVantrel.EnoughSpaceForMoveLvwToSpecificDir", "Move",
                         std::string(kTargetTrouble), [&](SpaceAnswer& answer) {
                             if (tools.volumes.GetDriveName(folder) == tools.volumes.GetDriveName(dir))
                                 return;
                             answer.required =
                                 GetSizeOfSelectedRows(list) -
                                 GetSizeCurrencyOfComplimentFilesInSpecificDir(tools, list, dir);
                             LookAtDriveFor(tools, {list, folder, dir, false}, answer);
                         });
}

SpaceAnswer EnoughSpaceForDrop(const Toolbox& tools, const std::vector<std::string>& paths,
                               const std::string& dir, std::string_view routineName) {
    return DecideOnSpace(
        tools, routineName, "Insufficient Disk Space", "Problems accessing drive.", [&](SpaceAnswer& answer) {
            std::vector<std::string> names;
            for (const std::string& path : paths) {
                FileInfo info;
                ThrowIfFailed(tools.files.Stat(path, LinkPolicy::DoNotFollow, info));
                const std::string marker(info.kind == EntryKind::Folder ? 1 : 0, kFolderMarker);
                names.push_back(marker + std::string(GetLastItemInPath(path)));
                TreeSize size;
                ThrowIfFailed(CountTreeSize(tools, path, size));
                answer.required += size.bytes;
            }
            answer.required -= GetSizeCurrencyOfComplimentFilesInSpecificDirUsingCol(tools, names, dir);
            LookAtDrive(tools, dir, answer);
        });
}

void ShowInsufficientDiskSpace(const Toolbox& tools, const SpaceAnswer& answer) {
    const std::string end(kLineEnd);
    tools.messages.Ask({"Insufficient Disk Space",
                        "Not enough space available on target drive." + end + end +
                            "Target Drive: " + answer.drive + end +
                            "Space Required: " + ConvertBytesToCorrectByteTypeString(answer.required) + end +
                            "Space Available: " + ConvertBytesToCorrectByteTypeString(answer.available),
                        MessageIcon::Stop,
                        MessageButtons::Ok,
                        {}});
}

}  // namespace vantrel
