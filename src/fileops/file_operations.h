#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "fileops/operation_mode.h"
#include "fileops/shell_wrappers.h"
#include "fileops/space_check.h"
#include "platform/busy_state.h"

namespace vantrel {

// One list of a pair, a visible pane or a hold list, with the list opposite and the folders of both. Commands
// act on its selected rows.
struct ListRef {
    const ResultList& rows;
    const ResultList& otherRows;
    std::string folder, otherFolder;
    std::vector<ShellRoot> roots{};  // which folders the rows tell of
};

// Copy, move, delete and recycle of selected rows and of dropped objects, on the main window. Each routine
// catches and reports its own errors, and gives what the shell service did (whether all of it: AllDone): a
// result without items means that nothing was begun (nothing selected, the user said No, no space).
class FileOperations {
  public:
    // `autoCompareStep` follows an operation: the panes are compared again, or emptied.
    FileOperations(const Toolbox& tools, ShellWrappers& wrappers, BusyState& busy,
                   std::function<void()> autoCompareStep)
        : tools_(tools), wrappers_(wrappers), busy_(busy), autoCompareStep_(std::move(autoCompareStep)) {}

    ShellResult CopyFilesToOtherDirAndLVW(const ListRef& list, Confirm confirm, PartOf partOf);
    ShellResult CopyFilesToSpecificDir(const ListRef& list, const std::string& dir, Confirm confirm);
    ShellResult CopyOLEDropObjectsToDir(const std::vector<std::string>& paths, const std::string& dir,
                                        Confirm confirm);
    ShellResult MoveFilesToOtherDirAndLVW(const ListRef& list, Confirm confirm);
    ShellResult MoveFilesToSpecificDir(const ListRef& list, const std::string& dir, Confirm confirm);
    ShellResult MoveOLEDropObjectsToDir(const std::vector<std::string>& paths, const std::string& dir,
                                        Confirm confirm);
    // `list` is CurrentListview.
    ShellResult DeleteFilesFromLVW(const ListRef& list, Confirm confirm, PartOf partOf);
    ShellResult DeletePermanentlyFilesFromLVW(const ListRef& list, Confirm confirm, Prompts prompts);

  private:
    struct Verb;
    struct Job;
    static const Verb kCopy, kMove;

    ShellResult CopyOrMove(const Verb& verb, const ListRef& list, const std::string& target, const Job& job);
    ShellResult CopyOrMoveDropped(const Verb& verb, const std::vector<std::string>& paths,
                                  const std::string& dir, Confirm confirm, const std::string& routineName);
    struct Objects;
    ShellResult CarryOut(const Verb& verb, Objects objects, const std::string& target, const Job& job);
    ShellWrappers::Options OptionsFor(const ListRef& list, Confirm confirm) const;
    bool AskFirst(const Verb& verb, const std::vector<std::string>& paths, const std::string& source,
                  const std::string& target);
    void TellNotKept(const NotKept& notKept);
    void Warn(const std::string& title, const std::string& text);

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    BusyState& busy_;
    std::function<void()> autoCompareStep_;
};

}  // namespace vantrel
