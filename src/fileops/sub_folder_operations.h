#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/result_list.h"
#include "core/seen_pool.h"
#include "core/toolbox.h"
#include "fileops/operation_mode.h"
#include "fileops/operation_summary.h"
#include "fileops/shell_wrappers.h"

namespace vantrel {

// What the file operations need of the window of sub-folder differences.
class SubFolderHost {
  public:
    virtual ~SubFolderHost() = default;
    virtual std::string FolderPath(Side side) const = 0;
    // The two folders that were compared, above those of FolderPath.
    virtual std::vector<ShellRoot> Roots() const = 0;
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
// what was done put right.
class SubFolderOperations {
  public:
    struct Result {
        std::size_t done = 0;    // objects
        bool cancelled = false;  // anything was aborted or failed
        bool ended = false;      // by the user, or since a compared folder is gone
        NotKept notKept;
        OperationSummary summary;
    };

    SubFolderOperations(const Toolbox& tools, ShellWrappers& wrappers, SubFolderHost& host)
        : tools_(tools), wrappers_(wrappers), host_(host) {}

    Result CopyFilesToOtherDir(Confirm confirm, PartOf partOf);
    Result MoveFilesToOtherDir(Confirm confirm, PartOf partOf);
    Result DeleteFiles(Confirm confirm, PartOf partOf);
    Result RecycleFiles(Confirm confirm, PartOf partOf);

  private:
    struct Kind;
    struct Item {
        std::size_t row;
        std::string path, target;
        Expectation expected;
    };
    // One operation and how it stands.
    struct Run {
        const Kind& kind;
        bool deleteForGood = false;
        std::vector<ShellRoot> roots;
        Result result;
        std::vector<const Item*> waiting{};  // copies that get their names, and count as done, at the end
    };
    Result Operate(const Kind& kind, Confirm confirm, PartOf partOf);
    void CarryOut(Run& run, const std::vector<Item>& items);
    bool MayBegin(Run& run, std::size_t count);
    void FinishCopies(Run& run);
    void CountAsDone(Run& run, const Item& item);
    void TellComplete(const Run& run);
    void TellNotKept(const Run& run);
    bool EnoughSpace(const Kind& kind);
    // Whether it was done; of a copy that waits for its name, not yet.
    bool DoOne(Run& run, const Item& item);
    bool CopyOne(Run& run, const Item& item);
    bool DeleteOne(Run& run, const Item& item);
    static ShellWrappers::Options Alone(const Run& run, const Item& item);
    static bool Took(Run& run, const Item& item, const ShellResult& result);
    void PutRowsRight(const Kind& kind, std::size_t row, const Seen* copied);
    // What the other side has now; null where that cannot be told.
    const Seen* LookAtTarget(const Item& item);
    // The selected files that may be acted on, and how many may not, since they lie elsewhere as well.
    struct Selection {
        std::vector<Item> items{};
        std::size_t elsewhere = 0;
    };
    Selection SelectedItems(const Kind& kind);
    void TellLeftAlone(const Kind& kind, std::size_t count);

    const Toolbox& tools_;
    ShellWrappers& wrappers_;
    SubFolderHost& host_;
    std::shared_ptr<SeenPool> seen_;  // of the run, shared by the lists
};

}  // namespace vantrel
