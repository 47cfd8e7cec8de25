#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/result_row.h"
#include "core/toolbox.h"
#include "fileops/operation_summary.h"
#include "fileops/rename_rules.h"
#include "shell/rename_batch.h"

namespace vantrel {

// One selected row of a pane.
struct ObjectToRename {
    std::string name;  // as on the disk, without a marker
    Sighting::Kind kind = Sighting::Kind::File;

    static ObjectToRename Of(const ResultRow& row);
};

// Renames of many objects of a folder as one batch, and the way back: the last one of this run of the program
// can be undone, and one that a kill has cut short can be put right at the next start. Journals stand in the
// program's folder.
class MultipleRename {
  public:
    explicit MultipleRename(const Toolbox& tools)
        : tools_(tools), renames_(tools.files, tools.clock, tools.loop, tools.folders.appPath) {}

    // Every name of the folder, whatever bears it.
    static Error ReadNames(const FileSystem& files, std::string_view folder, NamesInFolder& names);

    RenameResult Rename(const ShellRoot& folder, std::vector<RenameStep> steps,
                        const BatchRenames::Progress& progress);

    // The folder of the batch that can be undone; nothing where there is none.
    std::optional<std::string> UndoFolder() const;
    // What was renamed by the last batch gets its old names; that is a batch too.
    RenameResult Undo(const BatchRenames::Progress& progress);

    // Asks about each batch that was cut short: whether it is to be finished or put back. Cancel leaves it
    // for the next start.
    void OfferRepair();

  private:
    RenameResult Run(RenameBatch batch, const BatchRenames::Progress& progress);

    const Toolbox& tools_;
    BatchRenames renames_;
    std::optional<RenameBatch> back_;  // from the last batch
};

// The figures of a batch, for the line that tells what was done. `names` as below.
OperationSummary SummaryOf(const RenameResult& result, const std::vector<std::string>& names);
// What the user is told of a batch; empty where all went well. `names` are the names it began with.
std::string DescribeProblems(const RenameResult& result, const std::vector<std::string>& names);

}  // namespace vantrel
