#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/shell_run.h"

namespace vantrel::shell {

// The folders of a request that were compared, held open. What lies below one of them is reached from there,
// part by part and through no link; all else is reached by its path.
class Roots {
  public:
    Roots(const FileSystem& files, const std::vector<ShellRoot>& roots) : files_(files), given_(roots) {}

    // Opens all of them. An error tells of one that is gone or is another folder than the one compared.
    Error Open();
    // Whether each path still leads to the folder that is held open.
    Error Verify() const;

    // The folder that holds the last part of `path`, and that part, as shell::OpenHolder gives them.
    Error OpenHolder(std::string_view path, Folder& holder, std::string& name) const;
    // The folder `path`, which is made with its parents where it is missing.
    Error OpenOrMakeFolder(std::string_view path, Folder& out) const;

  private:
    struct Root {
        Folder folder;
        std::string start;  // the path with "/" at its end
    };
    const Root* RootOf(std::string_view path) const;
    enum class Missing { IsAnError, IsMade };
    Error Walk(const Root& root, std::string_view path, Missing missing, Folder& out) const;

    const FileSystem& files_;
    const std::vector<ShellRoot>& given_;
    std::vector<Root> roots_;
};

}  // namespace vantrel::shell
