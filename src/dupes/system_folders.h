#pragma once

#include <string_view>

namespace vantrel {

// Whether a full path is one of the system's own folders ("/usr", "/etc", "/lib..." and their like), or lies
// below one. Letter case is ignored.
bool IsInSystemFolder(std::string_view path);

// Whether a full path is a trash folder or lies in one: `homeTrash`, or a ".Trash" or ".Trash-USER" anywhere.
bool IsInTrash(std::string_view path, std::string_view homeTrash);

// Whether `path` is `folder` or lies below it. Letter case is ignored; a "/" at the end of either says
// nothing.
bool IsBelowFolder(std::string_view path, std::string_view folder);

}  // namespace vantrel
