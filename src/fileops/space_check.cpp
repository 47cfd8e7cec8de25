#include "fileops/space_check.h"

#include "fileops/tree_size.h"
#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// The drive of the target and what is free there.
void LookAtDrive(const Toolbox& tools, const std::string& folder, SpaceAnswer& answer) {
    answer.drive = tools.volumes.GetDriveName(folder);
    if (answer.drive.empty() || !tools.volumes.IsReady(answer.drive))
        throw ErrorException(Error(ErrorNumber::PathNotFound, "Path not found \"" + folder + "\""));
    answer.available = tools.volumes.GetAvailableDriveSpace(answer.drive);
    answer.enough = answer.available - answer.required >= Currency();
}

// The way out that all space checks share: what cannot be known stops nothing, a drive that is gone does.
template <typename Work>
SpaceAnswer Decide(const Toolbox& tools, std::string_view routineName, const std::string& troubleTitle,
                   const std::string& troubleText, Work work) {
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

constexpr const char* kTargetTrouble = "Problems accessing the target drive.";

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
        if (row.selected && row.IsReal()) sum += row.size;
    }
    return sum;
}

Currency GetSizeOfSelectedRowsWithCounterpart(const ResultList& list, const ResultList& otherList) {
    Currency sum;
    for (std::size_t i = 0; i < list.Count() && i < otherList.Count(); ++i) {
        const ResultRow& row = list[i];
        const bool orphan = row.type == ResultType::Orphan || row.type == ResultType::OrphanFolder;
        if (row.selected && row.IsReal() && !orphan) sum += row.size;
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
                                       const ResultList& otherList, const std::string& otherFolder) {
    return Decide(tools, "modVantrel.EnoughSpaceForCopyLvwToLvw", "Copy", kTargetTrouble,
                  [&](SpaceAnswer& answer) {
                      answer.required =
                          GetSizeOfSelectedRows(list) - GetSizeOfSelectedRowsWithCounterpart(list, otherList);
                      if (answer.required >= Currency::FromWhole(1)) LookAtDrive(tools, otherFolder, answer);
                  });
}

SpaceAnswer EnoughSpaceForMoveLvwToLvw(const Toolbox& tools, const ResultList& list,
                                       const ResultList& otherList, const std::string& folder,
                                       const std::string& otherFolder) {
    return Decide(tools, "modVantrel.EnoughSpaceForMoveLvwToLvw", "Move", kTargetTrouble,
                  [&](SpaceAnswer& answer) {
                      if (EqualIgnoringCase(tools.volumes.GetDriveName(folder),
                                            tools.volumes.GetDriveName(otherFolder)))
                          return;
                      answer.required =
                          GetSizeOfSelectedRows(list) - GetSizeOfSelectedRowsWithCounterpart(list, otherList);
                      if (answer.required >= Currency::FromWhole(1)) LookAtDrive(tools, otherFolder, answer);
                  });
}

SpaceAnswer EnoughSpaceForCopyLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& dir) {
    return Decide(tools, "modVantrel.EnoughSpaceForCopyLvwToSpecificDir", "Copy", kTargetTrouble,
                  [&](SpaceAnswer& answer) {
                      answer.required = GetSizeOfSelectedRows(list) -
                                        GetSizeCurrencyOfComplimentFilesInSpecificDir(tools, list, dir);
                      if (answer.required >= Currency::FromWhole(1)) LookAtDrive(tools, dir, answer);
                  });
}

SpaceAnswer EnoughSpaceForMoveLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& folder, const std::string& dir) {
    return Decide(tools, "modVantrel.EnoughSpaceForMoveLvwToSpecificDir", "Move", kTargetTrouble,
                  [&](SpaceAnswer& answer) {
                      if (tools.volumes.GetDriveName(folder) == tools.volumes.GetDriveName(dir)) return;
                      answer.required = GetSizeOfSelectedRows(list) -
                                        GetSizeCurrencyOfComplimentFilesInSpecificDir(tools, list, dir);
                      if (answer.required >= Currency::FromWhole(1)) LookAtDrive(tools, dir, answer);
                  });
}

SpaceAnswer EnoughSpaceForDrop(const Toolbox& tools, const std::vector<std::string>& paths,
                               const std::string& dir, std::string_view routineName) {
    return Decide(
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
