#pragma once

#include <string>
#include <vector>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "fileops/shell_wrappers.h"

namespace vantrel {

// What the file operations need of the window of sub-folder differences.
class SubFolderHost {
  public:
    virtual ~SubFolderHost() = default;
    virtual std::string FolderPath(Side side) const = 0;
    // The list that is acted on: the one last pressed.
    virtual Side CurrentListview() const = 0;
    // The pair of lists with the selection, and its twins: row i of the one is row i of the other. The twins
    // are the hidden lists when the visible ones are acted on; during a synchronisation it is the reverse.
    virtual PerSide<ResultList>& Lists() = 0;
    virtual PerSide<ResultList>& TwinLists() = 0;
    // The panel of the status bar that grows while something runs; empty text at the end.
    virtual void ShowProgressPanel(bool shown) = 0;
    virtual void SetProgressText(const std::string& text) = 0;
    virtual void CopyItemsFromHiddenLVWToVisibleLVW() = 0;
    virtual void SetResultsOutOfDate() = 0;
};

// Copy, move, delete and recycle in the window of sub-folder differences: file by file, with the rows of
// what was done put right. Each gives the number of objects that were done.
class SubFolderOperations {
  public:
    SubFolderOperations(const Toolbox& tools, ShellWrappers& wrappers, SubFolderHost& host)
        : tools_(tools), wrappers_(wrappers), host_(host) {}

    std::size_t CopyFilesToOtherDir(bool confirm, bool inSync);
    std::size_t MoveFilesToOtherDir(bool confirm, bool inSync);
    std::size_t DeleteFiles(bool confirm, bool inSync);
    std::size_t RecycleFiles(bool confirm, bool inSync);

    // Set by everything that was aborted or failed, cleared at the start of each operation.
    bool& CancelFlag() { return cancelFlag_; }

  private:
    struct Kind;
    struct Item {
        std::size_t row;
        std::string path, target;
    };
    std::size_t Operate(const Kind& kind, bool confirm, bool inSync);
    bool MayBegin(const Kind& kind, std::size_t count, bool& deleteForGood);
    bool EnoughSpace(const Kind& kind);
    // Whether it was done; `stop` when the user wants no more of it.
    bool DoOne(const Kind& kind, const Item& item, bool deleteForGood, bool& stop);
    bool CopyOne(const Item& item, bool& stop);
    bool DeleteOne(const Item& item, bool& stop);
    bool Took(const ShellResult& result, bool& stop);
    void PutRowsRight(const Kind& kind, std::size_t row);
    std::vector<Item> SelectedItems();

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    SubFolderHost& host_;
    std::string lastParent_;
    bool cancelFlag_ = false;
};

}  // namespace vantrel
