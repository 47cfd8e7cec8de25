#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/comparison_results.h"
#include "core/toolbox.h"
#include "shell/shell_operations.h"

namespace vantrel {

// The trash folders of this user, as far as the two compared folders can meet them: that of the home folder
// and those of the volumes. They take part in nothing, whatever they are called.
struct TrashFolders {
    std::set<FileId> ids;
    // Paths of those that lie in the folder, relative to it.
    PerSide<std::vector<std::string>> below;
    PerSide<bool> around{};  // the folder is one of them or lies in one

    bool Is(const ResultRow& row) const { return row.seen && !row.isLink && ids.contains(row.seen->id); }
    // Whether the object at this path below the folder lies in one of them, is one or holds one.
    bool Touches(Side side, std::string_view path) const;
    // As they are seen from the sub-folders at these paths.
    TrashFolders Under(const PerSide<std::string>& subFolders) const;
};

// Asks the disk. Folders that cannot be looked at are left out: the shell service refuses them as well.
TrashFolders FindTrashFolders(const Toolbox& tools, const TrashPlaces& places,
                              const ComparisonResults& results);

}  // namespace vantrel
