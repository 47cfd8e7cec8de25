#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"
#include "fileops/space_check.h"
#include "platform/busy_state.h"
#include "views/result_panes.h"

namespace vantrel {

// One list of a pair: a visible pane or a hold list, with the list opposite. Commands act on its selected
// rows.
struct ListRef {
    ListRef(const PerSide<ResultList>& lists, Side ofSide)
        : side(ofSide), rows(&lists[ofSide]), otherRows(&lists[Other(ofSide)]) {}
    ListRef(const ResultPanes& panes, Side ofSide)
        : side(ofSide), rows(&panes.Pane(ofSide).Rows()), otherRows(&panes.Pane(Other(ofSide)).Rows()) {}

    Side side;
    const ResultList* rows;
    const ResultList* otherRows;
};

// What the file operations need of the main window, or of the console in its place.
class FileOperationsHost {
  public:
    virtual ~FileOperationsHost() = default;
    virtual std::string FolderPath(Side side) const = 0;  // of the side's CDir
    virtual bool AutoCompareAfterFileOp() const = 0;
    virtual void CompareDirs() = 0;  // silently: both arguments false
    virtual void RemoveListItemsAndShowNoCompareMsg() = 0;
};

// Copy, move, delete and recycle of selected rows and of dropped objects, on the main window. Each routine
// catches and reports its own errors, and gives what the shell service did: a result without items means that
// nothing was begun (nothing selected, the user said No, no space).
class FileOperations {
  public:
    FileOperations(const Toolbox& tools, ShellWrappers& wrappers, BusyState& busy, FileOperationsHost& host)
        : tools_(tools), wrappers_(wrappers), busy_(busy), host_(host) {}

    // Within a synchronisation (`inSync`) nothing selected is no message, the space is not checked here, and
    // the panes are left to the caller.
    ShellResult CopyFilesToOtherDirAndLVW(ListRef list, bool confirm, bool inSync);
    ShellResult CopyFilesToSpecificDir(ListRef list, const std::string& dir, bool confirm);
    ShellResult CopyOLEDropObjectsToDir(const std::vector<std::string>& paths, const std::string& dir,
                                        bool confirm);
    ShellResult MoveFilesToOtherDirAndLVW(ListRef list, bool confirm);
    ShellResult MoveFilesToSpecificDir(ListRef list, const std::string& dir, bool confirm);
    ShellResult MoveOLEDropObjectsToDir(const std::vector<std::string>& paths, const std::string& dir,
                                        bool confirm);
    // `list` is CurrentListview.
    ShellResult DeleteFilesFromLVW(ListRef list, bool confirm, bool inSync);
    ShellResult DeletePermanentlyFilesFromLVW(ListRef list, bool confirm, bool quiet);

    // The cancel flag: set by every shell call here that was aborted or failed, cleared by one that was not.
    bool& CancelFlag() { return cancelFlag_; }

  private:
    struct Verb;
    struct Job;
    static const Verb kCopy, kMove;

    ShellResult CopyOrMove(const Verb& verb, ListRef list, const std::string& target, Job job);
    ShellResult CopyOrMoveDropped(const Verb& verb, const std::vector<std::string>& paths,
                                  const std::string& dir, bool confirm, const std::string& routineName);
    ShellResult CarryOut(const Verb& verb, const std::vector<std::string>& paths, const std::string& target,
                         const Job& job);
    bool AskFirst(const Verb& verb, const std::vector<std::string>& paths, const std::string& source,
                  const std::string& target);
    void Warn(const std::string& title, const std::string& text);
    void AutoCompareStep();

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    BusyState& busy_;
    FileOperationsHost& host_;
    bool cancelFlag_ = false;
};

}  // namespace vantrel
