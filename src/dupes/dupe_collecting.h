#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "dupes/cls_dupe_settings.h"
#include "dupes/dupe_progress.h"
#include "dupes/found_files.h"
#include "platform/workers.h"

namespace vantrel {

// Called in long work of the one thread; throws Cancelled where the user asked for that.
using DupeCheck = std::function<void()>;

// A folder that could not be listed to its end: nothing of it was taken.
struct UnsearchedFolder {
    std::string path;
    Error error;
};

struct DupeCollection {
    FoundFiles files;  // every object once
    std::vector<UnsearchedFolder> unsearched;
};

// Lists the folders of the order, all of them side by side, each folder once for each way to it. Links are
// not followed, what is no regular file is passed over, and so are the file systems in which the kernel shows
// itself. The result is the same with any number of workers. Throws what `check` throws.
DupeCollection CollectDupeFiles(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order,
                                DupeProgress& progress, const DupeCheck& check);

// Where removed duplicates are kept, in the program's folder; without "/" at its end.
std::string DupesFolderPath(const ProgramFolders& folders);

}  // namespace vantrel
