// What holds for more than one object: answers to all, and series that are shown as one operation.
#include <cerrno>

#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace {

using enum ShellOperation;

using ShellSeriesTest = ShellTest;

TEST_F(ShellSeriesTest, WhatIsSaidToAllHoldsForTheRest) {
    for (const char* name : {"a", "b", "c"}) {
        drop.Write(std::string("left/") + name, "new");
        drop.Write(std::string("right/") + name, "old");
    }
    const std::vector<std::string> all{Left("a"), Left("b"), Left("c")};
    questions.overwriteAnswers = {OverwriteAnswer::Yes, OverwriteAnswer::NoToAll};
    ShellResult result = Run(Copy, all, drop / "right");
    EXPECT_EQ(2U, questions.overwrites.size());
    EXPECT_EQ((std::vector<std::string>{"new", "old", "old"}), Contents(TreeOf(drop / "right/")));
    EXPECT_EQ(2U, result.troubles.size());
    EXPECT_FALSE(result.cancelled);

    questions.overwriteAnswers = {OverwriteAnswer::YesToAll};
    calls.FailAll(Call::Rename, EACCES);
    questions.errorAnswers = {ErrorAnswer::Skip, ErrorAnswer::SkipAll};
    result = Run(Copy, all, drop / "right");
    EXPECT_EQ(2U, questions.troubles.size());
    EXPECT_EQ(3U, result.troubles.size());
    EXPECT_TRUE(result.anyOperationsAborted && !result.cancelled);
}

TEST_F(ShellSeriesTest, ASeriesIsShownAsOneOperationAndKeepsItsAnswers) {
    for (const char* name : {"one", "two", "three", "gone"}) drop.Write(std::string("left/") + name, "12345");
    SystemShellOperations shell = Service();
    {
        const ShellSeries series(shell, {Copy, "Together", {6, 20}});
        EXPECT_TRUE(shell.CopyOneFile(Left("one"), Right("one")).IsOk());
        EXPECT_EQ(1U, progress.last.objects);
        EXPECT_TRUE(shell.DeleteOneFile(Left("gone")).IsOk());
        ShellRequest request;
        request.sources = {Left("two"), Left("three")};
        request.target = drop / "right";
        EXPECT_TRUE(shell.Run(request).AllDone());
        EXPECT_EQ(4U, progress.last.objects);
        EXPECT_EQ(15U, progress.last.bytes);
        EXPECT_EQ(20U, progress.totals.bytes) << "those of the series stand";
        EXPECT_EQ((std::vector<std::string>{Left("one"), Left("gone"), Left("two"), Left("three")}),
                  progress.items);
        request.sources = {Left("missing")};
        questions.errorAnswers = {ErrorAnswer::SkipAll};
        for (int i = 0; i < 3; ++i) EXPECT_FALSE(shell.Run(request).AllDone());
        EXPECT_EQ(1U, questions.troubles.size());
        EXPECT_EQ(0, progress.ended);
        progress.cancelAt = progress.asked + 1;
        EXPECT_TRUE(shell.SeriesCancelled());
    }
    EXPECT_EQ(1, progress.begun);
    EXPECT_EQ(1, progress.ended);
    EXPECT_FALSE(shell.SeriesCancelled());
    ShellRequest request;
    request.sources = {Left("missing")};
    request.target = drop / "right";
    EXPECT_FALSE(shell.Run(request).AllDone());
    EXPECT_EQ(2U, questions.troubles.size()) << "asks again";
}

}  // namespace
}  // namespace vantrel::testing
