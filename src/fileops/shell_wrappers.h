#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ports.h"
#include "shell/shell_operations.h"

namespace vantrel {

// The doors through which every change of objects on the user's command goes: one call of the shell service,
// and the box that tells what became of it.
class ShellWrappers {
  public:
    ShellWrappers(ShellOperations& shell, MessagePort& messages) : shell_(shell), messages_(messages) {}

    struct Options {
        bool confirm = true;             // ask before overwriting, and say at the end that it was done
        bool silent = false;             // no progress, no error boxes
        bool targetIsFullPath = false;   // CopyFiles, MoveFiles: a pair of paths instead of a target folder
        bool ignoreLetterCase = false;   // CopyFiles, MoveFiles: see ShellRequest
        bool passesOverSpecial = false;  // CopyFiles: see ShellRequest
        std::vector<Expectation> expected{};  // one for each source, or none
        std::vector<ShellRoot> roots{};
    };

    struct RenameOptions {
        bool confirm = true;     // ask where the service would
        bool showErrors = true;  // boxes for what goes wrong
    };

    // Each gives the service's result; where it is not AllDone, anything was cancelled, skipped or failed.
    ShellResult CopyFiles(std::vector<std::string> sources, std::string_view target, Options options);
    ShellResult MoveFiles(std::vector<std::string> sources, std::string_view target, Options options);
    ShellResult RecycleFiles(std::vector<std::string> sources, Options options);
    ShellResult DeleteFilesPermanently(std::vector<std::string> sources, Options options);
    // `source` and `target` are full paths. An object that stands at `target` is never replaced.
    ShellResult RenameFile(std::string_view source, std::string_view target, RenameOptions options);

    ShellOperations& Shell() const { return shell_; }

  private:
    ShellResult Finish(ShellRequest request, Options options, const std::string& successText,
                       const std::string& successTitle);
    void ShowApiError(const ShellResult& result);

    ShellOperations& shell_;
    MessagePort& messages_;
};

}  // namespace vantrel
