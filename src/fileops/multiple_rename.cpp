#include "fileops/multiple_rename.h"

#include <utility>

#include "fileops/expectations.h"
#include "fileops/told_at_end.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

constexpr std::size_t kMostNamed = 10;
constexpr const char* kTitle = "Multiple Rename";

std::string Question(const LeftRename& left) {
    return "A multiple rename in the folder \"" + DisplayName(left.folder) +
           "\" was cut short when the program ended.\r\n\r\nOf " + std::to_string(left.objects) +
           " object(s) " + std::to_string(left.renamed) + " have their new names, " +
           std::to_string(left.untouched) + " their old ones, and " + std::to_string(left.temporaries) +
           " stand under temporary names (vt_tempname...).\r\n\r\nYes gives all of them their new names, No "
           "their old ones.  Cancel leaves them as they are until the next start.";
}

}  // namespace

ObjectToRename ObjectToRename::Of(const ResultRow& row) {
    ObjectToRename object{std::string(row.realName), Sighting::Kind::File};
    if (row.kind == RowKind::Folder) object.kind = Sighting::Kind::Folder;
    if (row.isLink) object.kind = Sighting::Kind::Link;
    return object;
}

Error MultipleRename::ReadNames(const FileSystem& files, std::string_view folder, NamesInFolder& names) {
    OpenFolder opened;
    if (Error error = files.Open(folder, opened); !error.IsOk()) return error;
    return opened.ForEach(
        [&names](const FolderEntry& entry) {
            names.Add(entry.name);
            return true;
        },
        StatPolicy::NonFilesOnly);
}

RenameResult MultipleRename::Rename(const ShellRoot& folder, std::vector<RenameStep> steps,
                                    const BatchRenames::Progress& progress) {
    return Run({folder, std::move(steps)}, progress);
}

RenameResult MultipleRename::Run(RenameBatch batch, const BatchRenames::Progress& progress) {
    tools_.loop.ResetCancel();
    RenameResult result = renames_.Run(batch, progress);
    RenameBatch back{batch.folder, {}};
    for (std::size_t i = 0; i < result.objects.size(); ++i) {
        const RenamedObject& object = result.objects[i];
        if (object.outcome != ItemOutcome::Done) continue;
        const RenameStep& step = batch.steps[i];
        back.steps.push_back({step.to, step.from, step.kind, object.inode, object.made});
    }
    if (!back.steps.empty()) back_ = std::move(back);
    return result;
}

std::optional<std::string> MultipleRename::UndoFolder() const {
    if (!back_) return std::nullopt;
    return back_->folder.path;
}

RenameResult MultipleRename::Undo(const BatchRenames::Progress& progress) {
    return back_ ? Run(*back_, progress) : RenameResult();
}

void MultipleRename::OfferRepair() {
    for (const LeftRename& left : renames_.FindLeft()) {
        const MessageAnswer answer = tools_.messages.Ask({.title = kTitle,
                                                          .text = Question(left),
                                                          .icon = MessageIcon::Question,
                                                          .buttons = MessageButtons::YesNoCancel,
                                                          .defaultAnswer = MessageAnswer::Cancel});
        if (answer == MessageAnswer::Cancel) continue;
        tools_.loop.ResetCancel();
        const RenameResult result =
            renames_.Repair(left, answer == MessageAnswer::Yes ? RepairWay::Finish : RepairWay::PutBack);
        ThrowIfFailed(result.notBegun);
        std::vector<std::string> names;
        for (const RenamedObject& object : result.objects) names.push_back(object.standsAs);
        if (const std::string problems = DescribeProblems(result, names); !problems.empty())
            tools_.messages.Ask({.title = kTitle, .text = problems, .icon = MessageIcon::Warning});
    }
}

OperationSummary SummaryOf(const RenameResult& result, const std::vector<std::string>& names) {
    OperationSummary summary;
    for (std::size_t i = 0; i < result.objects.size(); ++i) {
        const RenamedObject& object = result.objects[i];
        if (object.outcome == ItemOutcome::Done)
            ++summary.renamed;
        else if (object.outcome == ItemOutcome::NotReached)
            ++summary.notReached;
        else
            summary.AddNotDone(names.at(i), object.error);
    }
    return summary;
}

std::string DescribeProblems(const RenameResult& result, const std::vector<std::string>& names) {
    std::string text, reasons;
    std::size_t failed = 0;
    for (std::size_t i = 0; i < result.objects.size(); ++i) {
        const RenamedObject& object = result.objects[i];
        if (object.outcome != ItemOutcome::Failed || ++failed > kMostNamed) continue;
        reasons.append("\r\n").append(DisplayName(names.at(i))).append(": ");
        reasons.append(WithSystemReason(object.error));
        if (object.standsAs != names[i])
            reasons.append(" (it stands as \"").append(DisplayName(object.standsAs)).append("\")");
    }
    if (failed > 0) text = "There were problems.  Some objects' names were not changed.\r\n" + reasons;
    if (failed > kMostNamed) text += "\r\n... and " + std::to_string(failed - kMostNamed) + " more";
    if (!result.notClosed.IsOk()) {
        if (!text.empty()) text += "\r\n\r\n";
        text += "The new names could not be made safe on the disk: " + WithSystemReason(result.notClosed);
    }
    return text;
}

}  // namespace vantrel
