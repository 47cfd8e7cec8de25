#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "core/comparison_results.h"
#include "platform/files/file_system.h"
#include "shell/shell_operations.h"

namespace vantrel {

// What a comparison saw, in the form in which the shell service holds it against the disk before it acts.

// Of the object of a row. A placeholder stands for nothing; of a row that tells of an object and not what was
// seen of it nothing is expected.
Sighting SightingOf(const ResultRow& row);
Sighting SightingOf(const SubFolderRecord& record);  // the same; a blank one stands for nothing

// The folders that were compared; none where they are not known.
std::vector<ShellRoot> RootsOf(const ComparisonResults& results);

// Calls `visit(path, entry)` for all that lies below the folder `path`, each folder before what is in it, by
// its path relative to that folder ("deep/file"). Enters no link. An error tells of the first part that could
// not be looked at; the rest is visited all the same.
using VisitBelow = std::function<void(const std::string& path, const FolderEntry& entry)>;
Error WalkBelow(const FileSystem& files, const std::string& path, const VisitBelow& visit);

// What lies below the folder `path` at this moment. A comparison keeps no list of what is in an orphan
// folder, so this is asked for in the moment when the user is asked about the folder. An error tells of a
// part that could not be looked at; what is in `below` then is not all.
Error LookBelow(const FileSystem& files, const std::string& path, std::shared_ptr<const SeenBelow>& below);

}  // namespace vantrel
