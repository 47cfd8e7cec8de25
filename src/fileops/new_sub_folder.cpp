#include "fileops/new_sub_folder.h"

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

std::string MakeSubFolder(const FileSystem& files, std::string_view parent, std::string_view name) {
    // With a "/" it would be another place.
    if (name.find('/') != std::string_view::npos || name == "." || name == "..")
        return "The name of a folder cannot contain \"/\", and cannot be \".\" or \"..\".";
    const std::string path = JoinPath(parent, name);
    const Error error = files.CreateFolder(path);
    if (error.IsOk()) return {};
    // Whether there is one is the file system's to say: it knows what it takes for the same name.
    const std::string quoted = "\"" + std::string(name) + "\"";
    if (files.FolderExists(path)) return "A folder named " + quoted + "already exists.";
    if (files.Exists(path)) return "A file named " + quoted + " already exists.";
    return "The folder " + quoted + " could not be created: " + error.Description();
}

std::string NameFromUser(std::string_view typed) {
    // "~/" at the head of a path is the home folder, and nothing of that kind in a name.
    return typed.starts_with('~') ? "~" + PathFromUser(typed.substr(1)) : PathFromUser(typed);
}

}  // namespace vantrel
