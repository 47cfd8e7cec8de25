#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"

namespace vantrel {

// One list of an aligned pair: the visible panes, or the hold lists. Commands act on its selected rows.
struct ListRef {
    const PerSide<ResultList>* lists = nullptr;
    Side side = Side::Left;

    const ResultList& Rows() const { return (*lists)[side]; }
    const ResultList& OtherRows() const { return (*lists)[Other(side)]; }
};

// What the file operations need of the main window, or of the console in its place.
class FileOperationsHost {
  public:
    virtual ~FileOperationsHost() = default;
    virtual std::string FolderPath(Side side) const = 0;  // of the side's CDir
    virtual void SetBusyPointer(bool busy) = 0;
    virtual bool AutoCompareAfterFileOp() const = 0;
    virtual void CompareDirs() = 0;  // silently: both arguments false
    virtual void RemoveListItemsAndShowNoCompareMsg() = 0;
};

// Copy, move, delete and recycle of selected rows and of dropped objects, on the main window. Each routine
// catches and reports its own errors, and gives what the shell service did: a result without items means that
// nothing was begun (nothing selected, the user said No, no space).
class FileOperations {
  public:
    FileOperations(const Toolbox& tools, ShellWrappers& wrappers, FileOperationsHost& host)
        : tools_(tools), wrappers_(wrappers), host_(host) {}

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
    struct Wording;
    struct SpaceAnswer;
    ShellResult CopyOrMove(const Wording& wording, ListRef list, const std::string& dir, bool toOther,
                           bool confirm, bool inSync);
    ShellResult CopyOrMoveDropped(const Wording& wording, const std::vector<std::string>& paths,
                                  const std::string& dir, bool confirm);
    ShellResult CarryOut(const Wording& wording, std::vector<std::string> paths, const std::string& target,
                         bool confirm, bool inSync);
    void AutoCompareStep();

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    FileOperationsHost& host_;
    bool cancelFlag_ = false;
};

}  // namespace vantrel
