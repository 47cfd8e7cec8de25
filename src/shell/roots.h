#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/copy_batch.h"
#include "shell/shell_run.h"

namespace vantrel::shell {

// How the folders above a target are made where they are missing.
struct FolderMaking {
    // The folder of the source that stands for the target's: what lies as deep below its root as a missing
    // folder below its own gives that one owner, mode, attributes and times.
    std::string like;
    CopyOwner* owner = nullptr;  // who is told; never null
    std::size_t item = 0;
    NameComes nameComes = NameComes::WithRights;
};

// The folders of a request that were compared, held open. What lies below one of them is reached from there,
// part by part and through no link; all else is reached by its path.
class Roots {
  public:
    Roots(Shared& shared, std::vector<ShellRoot> roots)
        : shared_(shared), files_(shared.files), given_(std::move(roots)) {}
    const std::vector<ShellRoot>& Given() const { return given_; }

    // Opens all of them. An error tells of one that is gone or is another folder than the one compared.
    Error Open();
    // Whether each path still leads to the folder that is held open.
    Error Verify() const;

    // The folder that holds the last part of `path`, and that part, as shell::OpenHolder gives them.
    Error OpenHolder(std::string_view path, Folder& holder, std::string& name) const;
    // The folder `path`, which is made with its parents where it is missing.
    Error OpenOrMakeFolder(std::string_view path, const FolderMaking& making,
                           std::shared_ptr<Folder>& out) const;

  private:
    struct Root {
        Folder folder;
        std::string start;  // the path with "/" at its end
    };
    const Root* RootOf(std::string_view path) const;
    // `making` is null where what is missing is an error.
    Error Walk(const Root& root, std::string_view path, const FolderMaking* making,
               std::shared_ptr<Folder>& out) const;
    Error OpenPart(const Place& place, Folder& out) const;
    Error MakePart(const Place& place, const std::string& like, const FolderMaking& making) const;
    // The counterparts of the folders on the way to `path`, the root's own first; empty: there are none.
    std::vector<std::string> Counterparts(std::string_view path, std::string_view like) const;

    Shared& shared_;
    const FileSystem& files_;
    std::vector<ShellRoot> given_;
    std::vector<Root> roots_;
};

}  // namespace vantrel::shell
