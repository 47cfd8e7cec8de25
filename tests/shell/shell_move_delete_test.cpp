#include <sys/stat.h>

#include <filesystem>

#include "platform/names/names.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellMoveTest : public ShellTest, public ::testing::WithParamInterface<bool> {
  public:
    ShellMoveTest() {
        if (GetParam()) SeparateDrives();
    }
    void MakeTree() {
        drop.Write("left/Sub/a", "alpha");
        drop.Write("left/Sub/deep/b", "beta");
        drop.MakeFolder("left/Sub/nothing");
        fs::create_symlink("a", Left("Sub/link"));
        drop.Write("left/file", "content");
    }
};
INSTANTIATE_TEST_SUITE_P(Drives, ShellMoveTest, ::testing::Bool(),
                         [](const auto& given) { return given.param ? "Two" : "One"; });

TEST_P(ShellMoveTest, MovesWithinADriveAndAcross) {
    MakeTree();
    const Tree before = TreeOf(drop / "left/");
    const ShellResult result = Run(Move, {Left("Sub"), Left("file")}, drop / "right");
    EXPECT_TRUE(result.AllDone());
    for (const ShellItem& item : result.items) EXPECT_EQ(Done, item.outcome);
    EXPECT_EQ(before, TreeOf(drop / "right/"));
    EXPECT_TRUE(TreeOf(drop / "left/").empty());
}

TEST_P(ShellMoveTest, MergesAndKeepsWhatIsNotToBeOverwritten) {
    MakeTree();
    drop.Write("right/Sub/a", "old a");
    drop.Write("right/Sub/deep/b", "old b");
    questions.overwriteAnswers = {OverwriteAnswer::No, OverwriteAnswer::No};
    ShellResult result = Run(Move, {Left("Sub")}, drop / "right");
    EXPECT_EQ(Skipped, result.items.at(0).outcome);
    EXPECT_EQ("alpha", drop.Read("left/Sub/a"));
    EXPECT_EQ("old a", drop.Read("right/Sub/a"));
    result = Run(Move, {Left("Sub")}, drop / "right");
    EXPECT_TRUE(result.AllDone());
    EXPECT_FALSE(drop.Exists("left/Sub"));
    EXPECT_EQ("alpha", drop.Read("right/Sub/a"));
    EXPECT_EQ("beta", drop.Read("right/Sub/deep/b"));
    EXPECT_TRUE(fs::is_symlink(Right("Sub/link")));
}

TEST_F(ShellTest, WhatChangesAfterItWasCopiedKeepsItsSource) {
    SeparateDrives();
    drop.Write("left/Sub/a", "alpha");
    drop.Write("left/Sub/b", "beta");
    bool done = false;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call != Call::Syncfs || std::exchange(done, true)) return;
        drop.Write("left/Sub/a", "alpha, changed");
        drop.Write("left/Sub/late", "late");
    };
    const ShellResult result = Run(Move, {Left("Sub")}, drop / "right");
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ("alpha, changed", drop.Read("left/Sub/a"));
    EXPECT_EQ("late", drop.Read("left/Sub/late"));
    EXPECT_FALSE(drop.Exists("left/Sub/b"));
    EXPECT_EQ("alpha", drop.Read("right/Sub/a"));
}

TEST_F(ShellTest, NothingOfAMoveIsRemovedBeforeItIsSafe) {
    SeparateDrives();
    for (int i = 0; i < 5; ++i) drop.Write("left/" + std::to_string(i), "content " + std::to_string(i));
    const Tree before = TreeOf(drop / "left/");
    int syncs = 0;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call == Call::Syncfs) {
            ++syncs;
            EXPECT_EQ(before, TreeOf(drop / "left/"));
        }
        if (at.call == Call::Unlink) {
            EXPECT_EQ(2, syncs);
        }
    };
    EXPECT_TRUE(Run(Move, {Left("0"), Left("1"), Left("2"), Left("3"), Left("4")}, drop / "right").AllDone());
    EXPECT_EQ(before, TreeOf(drop / "right/"));
    EXPECT_EQ(2, syncs);  // of the contents, and of the names
}

TEST_F(ShellTest, AnErrorThatASyncToldOnceIsKeptForTheCopiesThatWaited) {
    drop.Write("left/a", "alpha");
    drop.Write("left/b", "beta");
    calls.FailAt(Call::Syncfs, 1, EIO);
    drop.Write("right/a", "old");
    SystemShellOperations shell = Service();
    ShellRequest request;
    request.sources = {Left("b")};
    request.target = drop / "right";
    EXPECT_TRUE(shell.CopyOneFile(Left("a"), Right("a")).IsOk());
    // A request first gives their names to the copies that wait: the error is theirs, not the request's.
    EXPECT_EQ(Done, shell.Run(request).items.at(0).outcome);
    EXPECT_EQ(EIO, shell.FinishCopies().First().SystemNumber());
    EXPECT_TRUE(shell.FinishCopies().First().IsOk());
    // What could not be made safe has not replaced anything.
    EXPECT_EQ((Tree{{"a", "f:old"}, {"b", "f:beta"}}), TreeOf(drop / "right/"));
}

TEST_F(ShellTest, DeletesWhatWasListedAndFollowsNoLink) {
    drop.Write("left/Sub/deep/a", "a");
    drop.Write("left/Sub/odd \xff\n", "odd");
    drop.Write("right/precious", "stays");
    fs::create_directory_symlink(drop / "right", Left("Sub/link"));
    fs::create_directory_symlink(drop / "right", Left("outer link"));
    ASSERT_EQ(0, mkfifo(Left("Sub/pipe").c_str(), 0600));
    EXPECT_TRUE(Run(Delete, {Left("Sub"), Left("outer link")}).AllDone());
    EXPECT_TRUE(TreeOf(drop / "left/").empty());
    EXPECT_EQ("stays", drop.Read("right/precious"));

    // What appears after the listing keeps its folder standing.
    drop.Write("left/Sub/a", "a");
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call == Call::Unlink) drop.Write("left/Sub/late", "late");
    };
    const ShellResult result = Run(Delete, {Left("Sub")});
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ("late", drop.Read("left/Sub/late"));
    EXPECT_EQ(1U, questions.troubles.size());
}

TEST_F(ShellTest, ErrorsAreAskedAboutCountedAndPassedOver) {
    for (const char* name : {"a", "b", "c"}) drop.Write(std::string("left/") + name, name);
    const auto broken = [&](std::size_t times) {
        calls.ClearFaults();
        calls.ResetCount();
        for (std::size_t i = 1; i <= times; ++i) calls.FailAt(Call::Unlink, i, EIO);
    };
    questions.errorAnswers = {ErrorAnswer::Retry, ErrorAnswer::Skip};
    broken(2);
    ShellResult result = Run(Delete, {Left("a"), Left("b")});
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ(Done, result.items.at(1).outcome);
    EXPECT_EQ(2U, questions.troubles.size());
    EXPECT_EQ(1U, result.troubles.size());
    EXPECT_EQ(EIO, result.code);
    EXPECT_EQ(EIO, result.lastSystemError);
    EXPECT_TRUE(result.anyOperationsAborted);

    questions.errorAnswers = {ErrorAnswer::Cancel};
    broken(1);
    result = Run(Delete, {Left("a"), Left("c")});
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ(NotReached, result.items.at(1).outcome);
    EXPECT_TRUE(drop.Exists("left/c"));

    ShellRequest request;
    request.operation = Delete;
    request.sources = {Left("a"), Left("c")};
    request.noErrorUi = true;
    questions.troubles.clear();
    broken(1);
    result = Run(request);
    EXPECT_TRUE(questions.troubles.empty());
    EXPECT_EQ(EIO, result.code);
    EXPECT_FALSE(result.anyOperationsAborted);
    EXPECT_FALSE(drop.Exists("left/c"));
}

TEST_F(ShellTest, RenamesWithoutReplacing) {
    drop.Write("left/a", "a");
    drop.Write("left/b", "b");
    fs::create_hard_link(Left("a"), Left("A"));
    EXPECT_EQ(Failed, Run(Rename, {Left("a")}, Left("b")).items.at(0).outcome);
    EXPECT_EQ(Failed, Run(Rename, {Left("a")}, Left("A")).items.at(0).outcome);
    EXPECT_EQ(EEXIST, Run(Rename, {Left("a")}, Left("b")).code);
    EXPECT_TRUE(Run(Rename, {Left("a")}, Left("c")).AllDone());
    EXPECT_EQ((Tree{{"A", "f:a"}, {"b", "f:b"}, {"c", "f:a"}}), TreeOf(drop / "left/"));
}

}  // namespace
}  // namespace vantrel::testing
