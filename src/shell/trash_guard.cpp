#include "shell/trash_guard.h"

#include <cerrno>

#include "platform/names/paths.h"
#include "shell/copy_engine.h"

namespace vantrel::shell {
namespace {

Error IsTrash(const std::string& path) {
    return {ErrorNumber::PermissionDenied, "\"" + path + "\" is your trash folder and is left alone"};
}

// Where nothing stands there is no trash; what cannot be looked at could be one.
Error LearnOne(Shared& shared, const std::string& path) {
    Folder trash;
    Error error = OpenExistingFolder(shared.files, path, trash);
    if (error.SystemNumber() == ENOENT || error.SystemNumber() == ENOTDIR) return {};
    if (!error.IsOk()) return error;
    if (shared.trashes.ids.insert(trash.id).second) shared.trashes.paths.push_back(path);
    return {};
}

// The trash of the home folder, and those of the volume that `folder` is on.
Error Learn(Shared& shared, const Folder& folder) {
    if (shared.trashes.mounts.contains(folder.mount)) return {};
    const std::string user = std::to_string(shared.parts.trash.user);
    if (const std::string& home = shared.parts.trash.homeTrash; !home.empty()) {
        if (Error error = LearnOne(shared, home); !error.IsOk()) return error;
    }
    if (const std::string top = shared.parts.volumes.GetDriveName(folder.path); !top.empty()) {
        for (const std::string& name : {".Trash-" + user, ".Trash/" + user}) {
            if (Error error = LearnOne(shared, JoinPath(top, name)); !error.IsOk()) return error;
        }
    }
    shared.trashes.mounts.insert(folder.mount);
    return {};
}

}  // namespace

Error RefuseTrash(Shared& shared, const Folder& folder) {
    if (Error error = Learn(shared, folder); !error.IsOk()) return error;
    return shared.trashes.ids.contains(folder.id) ? IsTrash(folder.path) : Error();
}

Error RefuseTrashWithin(Shared& shared, const Place& place) {
    Folder folder;
    if (Error error = OpenFolderOnTheWay(shared.calls, place, folder); !error.IsOk()) return error;
    if (Error error = Learn(shared, folder); !error.IsOk()) return error;
    for (const std::string& path : shared.trashes.paths) {
        Folder trash;
        if (!OpenExistingFolder(shared.files, path, trash).IsOk()) continue;
        if (!RefuseIntoItself(shared.calls, folder.id, trash, path).IsOk()) return IsTrash(path);
    }
    return {};
}

}  // namespace vantrel::shell
