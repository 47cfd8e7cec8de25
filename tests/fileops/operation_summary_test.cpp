#include "fileops/operation_summary.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(OperationSummaryTest, TellsWhatWasDoneAndListsWhatWasNot) {
    const LocaleFormats locale("C");
    EXPECT_EQ("Nothing was done", DescribeSummary({}, locale));

    ShellResult result;
    result.objectsDone = 1'234;
    result.bytesDone = std::uint64_t{1} << 30;
    result.items = {{"/l/a", ItemOutcome::Done, {}},
                    {"/l/b", ItemOutcome::Failed, {}},
                    {"/l/c", ItemOutcome::NotReached, {}}};
    result.troubles = {{"/l/b/deep", ItemOutcome::Failed, Error(ErrorNumber::DiskFull, "Disk full")},
                       {"/l/b/kept", ItemOutcome::Skipped, {}}};
    const OperationSummary summary = SummaryOf(result);
    EXPECT_EQ("Copied 1,234 (1 GB), skipped 1, failed 1, not done 1", DescribeSummary(summary, locale));
    EXPECT_EQ("/l/b/deep: Disk full\r\n/l/b/kept: skipped\r\n", ListNotDone(summary));
    EXPECT_FALSE(summary.IsWhole());

    for (const auto& [operation, text] : {std::pair{ShellOperation::Move, "Moved 1,234"},
                                          {ShellOperation::Delete, "Deleted 1,234"},
                                          {ShellOperation::Recycle, "Sent 1,234 to the Recycle Bin"},
                                          {ShellOperation::Rename, "Renamed 1,234"}}) {
        ShellResult other;
        other.operation = operation;
        other.objectsDone = 1'234;
        EXPECT_EQ(text, DescribeSummary(SummaryOf(other), locale));
        EXPECT_TRUE(SummaryOf(other).IsWhole());
    }
}

}  // namespace
}  // namespace vantrel
