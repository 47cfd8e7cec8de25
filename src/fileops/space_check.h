#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"

namespace vantrel {

// Whether a copy or a move has room at its target. All sums are in bytes, of files and links as they are on
// the disk: a link counts with its own size, and no rule of sizes that are shown has a part in it.

// The sizes of the selected objects; a placeholder has none.
Currency GetSizeOfSelectedRows(const ResultList& list);
// The same without orphans and without rows that have no row opposite. The size is the row's own, never that
// of its counterpart.
Currency GetSizeOfSelectedRowsWithCounterpart(const ResultList& list, const ResultList& otherList);

// What of the selected objects exists in `dir` already, by its real size there. Throws ErrorException.
Currency GetSizeCurrencyOfComplimentFilesInSpecificDir(const Toolbox& tools, const ResultList& list,
                                                       std::string_view dir);
// The same for names; those of folders carry the folder marker.
Currency GetSizeCurrencyOfComplimentFilesInSpecificDirUsingCol(const Toolbox& tools,
                                                               const std::vector<std::string>& names,
                                                               std::string_view dir);

struct SpaceAnswer {
    bool enough = true;
    bool told = false;  // the user has been told why not
    Currency required, available;
    std::string drive;
};

// The drive of `folder`, what is free there, and whether that is enough for what is required. Throws
// ErrorException where the drive is not there.
void LookAtDrive(const Toolbox& tools, const std::string& folder, SpaceAnswer& answer);

// The way out that all space checks share: where `work` meets a permission denied there is enough, where it
// meets a path not found there is not, after a box with the title; every other error is reported under
// `routineName`, and stops nothing.
SpaceAnswer DecideOnSpace(const Toolbox& tools, std::string_view routineName, const std::string& troubleTitle,
                          const std::string& troubleText, const std::function<void(SpaceAnswer&)>& work);
inline constexpr std::string_view kTargetTrouble = "Problems accessing the target drive.";

// `folder` is that of the list, `otherFolder` that of the list opposite.
SpaceAnswer EnoughSpaceForCopyLvwToLvw(const Toolbox& tools, const ResultList& list,
                                       const ResultList& otherList, const std::string& folder,
                                       const std::string& otherFolder);
SpaceAnswer EnoughSpaceForMoveLvwToLvw(const Toolbox& tools, const ResultList& list,
                                       const ResultList& otherList, const std::string& folder,
                                       const std::string& otherFolder);
SpaceAnswer EnoughSpaceForCopyLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& folder, const std::string& dir);
SpaceAnswer EnoughSpaceForMoveLvwToSpecificDir(const Toolbox& tools, const ResultList& list,
                                               const std::string& folder, const std::string& dir);

// For objects dropped on `dir`, which need what they take together less what of them is there already.
// Reports under `routineName`.
SpaceAnswer EnoughSpaceForDrop(const Toolbox& tools, const std::vector<std::string>& paths,
                               const std::string& dir, std::string_view routineName);

// The box that says there is not enough.
void ShowInsufficientDiskSpace(const Toolbox& tools, const SpaceAnswer& answer);

}  // namespace vantrel
