#include "fileops/operation_summary.h"

#include "fileops/told_at_end.h"
#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

std::uint64_t& CountOf(ShellOperation operation, OperationSummary& summary) {
    switch (operation) {
        case ShellOperation::Move:
            return summary.moved;
        case ShellOperation::Delete:
            return summary.deleted;
        case ShellOperation::Recycle:
            return summary.recycled;
        case ShellOperation::Rename:
            return summary.renamed;
        case ShellOperation::Copy:
            break;
    }
    return summary.copied;
}

}  // namespace

bool OperationSummary::IsEmpty() const {
    return IsWhole() && copied + moved + renamed + stamped + recycled + deleted == 0;
}

OperationSummary& OperationSummary::operator+=(const OperationSummary& other) {
    for (const auto figure :
         {&OperationSummary::copied, &OperationSummary::moved, &OperationSummary::renamed,
          &OperationSummary::stamped, &OperationSummary::recycled, &OperationSummary::deleted,
          &OperationSummary::skipped, &OperationSummary::failed, &OperationSummary::notReached})
        this->*figure += other.*figure;
    copiedBytes += other.copiedBytes;
    notDone.insert(notDone.end(), other.notDone.begin(), other.notDone.end());
    return *this;
}

void OperationSummary::AddNotDone(const std::string& path, const Error& error) {
    ++(error.IsOk() ? skipped : failed);
    notDone.push_back({path, error.IsOk() ? "skipped" : WithSystemReason(error)});
}

OperationSummary SummaryOf(const ShellResult& result) {
    OperationSummary summary;
    CountOf(result.operation, summary) = result.objectsDone;
    if (result.operation == ShellOperation::Copy)
        summary.copiedBytes = Currency::FromWhole(static_cast<std::int64_t>(result.bytesDone));
    for (const ShellItem& trouble : result.troubles) summary.AddNotDone(trouble.path, trouble.error);
    for (const ShellItem& item : result.items)
        if (item.outcome == ItemOutcome::NotReached) ++summary.notReached;
    return summary;
}

std::string DescribeSummary(const OperationSummary& summary, const LocaleFormats& locale) {
    std::string text;
    const auto add = [&](const char* what, std::uint64_t count, const char* where = "") {
        if (count == 0) return false;
        text.append(text.empty() ? "" : ", ").append(what).append(" ");
        text.append(locale.Number(Currency::FromWhole(static_cast<std::int64_t>(count)))).append(where);
        return true;
    };
    if (add("copied", summary.copied) && summary.copiedBytes > Currency())
        text.append(" (").append(ConvertBytesToCorrectByteTypeString(summary.copiedBytes)).append(")");
    add("moved", summary.moved);
    add("renamed", summary.renamed);
    add("set the time of", summary.stamped);
    add("sent", summary.recycled, " to the Recycle Bin");
    add("deleted", summary.deleted);
    add("skipped", summary.skipped);
    add("failed", summary.failed);
    add("not done", summary.notReached);
    if (text.empty()) return "Nothing was done";
    text.front() = static_cast<char>(text.front() - ('a' - 'A'));
    return text;
}

std::string ListNotDone(const OperationSummary& summary) {
    std::string text;
    for (const OperationSummary::NotDone& object : summary.notDone)
        text.append(DisplayName(object.path)).append(": ").append(object.reason).append(kLineEnd);
    return text;
}

}  // namespace vantrel
