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
    PerSide<std::vector<std::string>>
        below;  // paths of those that lie in the compared folder, relative to it

    bool Is(const ResultRow& row) const { return row.seen && !row.isLink && ids.contains(row.seen->id); }
    // Whether the object at this path below the folder lies in one of them, is one or holds one.
    bool Touches(Side side, std::string_view path) const;
};

// Asks the disk. Folders that cannot be looked at are left out: the shell service refuses them as well.
TrashFolders FindTrashFolders(const Toolbox& tools, const TrashPlaces& places,
                              const ComparisonResults& results);

}  // namespace vantrel
