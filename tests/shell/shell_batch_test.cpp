// Copies come to their names many at a time, after one sync, and folders with the rights that they are to
// have.
#include <sys/stat.h>
#include <sys/wait.h>

#include <filesystem>

#include "platform/names/temporary_names.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellBatchTest : public ShellTest {
  public:
    struct stat StatOf(const std::string& path) {
        struct stat stat {};
        EXPECT_EQ(0, lstat(path.c_str(), &stat)) << path;
        return stat;
    }
    std::size_t Temporaries() {
        return static_cast<std::size_t>(std::ranges::count_if(TreeOf(drop / "right/"), [](const auto& entry) {
            return IsTemporaryCopyName(fs::path(entry.first).filename().string());
        }));
    }
};

TEST_F(ShellBatchTest, WhatASyncDidNotMakeSafeReplacesNothingAndEachIsTold) {
    for (const char* name : {"a", "b", "c"}) {
        drop.Write(std::string("left/") + name, "new");
        drop.Write(std::string("right/") + name, "old");
    }
    const Tree before = TreeOf(drop / "right/");
    calls.FailAt(Call::Syncfs, 1, EIO);
    ShellResult result = Run(Copy, {Left("a"), Left("b"), Left("c")}, drop / "right");
    EXPECT_EQ(3U, result.troubles.size());
    EXPECT_EQ(1U, questions.troubles.size());
    EXPECT_EQ(0U, result.objectsDone);
    for (const ShellItem& item : result.items) {
        EXPECT_EQ(Failed, item.outcome);
        EXPECT_EQ(EIO, item.error.SystemNumber());
    }
    EXPECT_EQ(before, TreeOf(drop / "right/"));

    calls.ResetCount();
    SystemShellOperations shell = Service();
    for (const char* name : {"a", "b"}) EXPECT_TRUE(shell.CopyOneFile(Left(name), Right(name)).IsOk());
    const ShellOperations::FinishedCopies finished = shell.FinishCopies();
    ASSERT_EQ(2U, finished.failed.size());
    EXPECT_EQ(Left("b"), finished.failed[1].path);
    EXPECT_EQ(Right("b"), finished.failed[1].target);
    EXPECT_EQ(EIO, finished.First().SystemNumber());
    EXPECT_EQ(before, TreeOf(drop / "right/"));

    // The names that the second sync should have made safe: the new files stand, and do not count as done.
    calls.ClearFaults();
    calls.ResetCount();
    calls.FailAt(Call::Syncfs, 2, EIO);
    result = Run(Copy, {Left("a"), Left("b")}, drop / "right");
    for (const ShellItem& item : result.items) EXPECT_EQ(Failed, item.outcome);
    EXPECT_EQ("new", drop.Read("right/a"));
}

TEST_F(ShellBatchTest, ATargetThatChangesWhileItsCopyWaitsIsLeftAlone) {
    for (const char* name : {"edited", "gone", "same"}) {
        drop.Write(std::string("left/") + name, "new");
        drop.Write(std::string("right/") + name, "old");
    }
    drop.Write("left/appeared", "new");
    bool done = false;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call != Call::Syncfs || std::exchange(done, true)) return;
        drop.Write("right/edited", "somebody's work");
        drop.Write("right/appeared", "somebody's work");
        fs::remove(Right("gone"));
    };
    SystemShellOperations shell = Service();
    for (const char* name : {"edited", "appeared", "gone", "same"})
        EXPECT_TRUE(shell.CopyOneFile(Left(name), Right(name)).IsOk());
    EXPECT_EQ(3U, shell.FinishCopies().failed.size());
    EXPECT_EQ((Tree{{"edited", "f:somebody's work"}, {"appeared", "f:somebody's work"}, {"same", "f:new"}}),
              TreeOf(drop / "right/"));
}

TEST_F(ShellBatchTest, WhatIsReadNextIsTheCopyThatWaited) {
    drop.Write("left/a", "new");
    drop.Write("right/a", "old");
    SystemShellOperations shell = Service();
    EXPECT_TRUE(shell.CopyOneFile(Left("a"), Right("a")).IsOk());
    EXPECT_TRUE(shell.CopyOneFile(Right("a"), Left("b")).IsOk());
    EXPECT_TRUE(shell.FinishCopies().failed.empty());
    EXPECT_EQ("new", drop.Read("left/b"));
}

TEST_F(ShellBatchTest, TemporariesAndSyncsAreFew) {
    constexpr int kFiles = 2'300;
    for (int i = 0; i < kFiles; ++i)
        drop.Write("left/Sub/" + std::to_string(i % 7) + "/" + std::to_string(i), "content");
    std::size_t most = 0;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call == Call::Syncfs) most = std::max(most, Temporaries());
    };
    EXPECT_TRUE(Run(Copy, {Left("Sub")}, drop / "right").AllDone());
    EXPECT_GT(most, 0U);
    EXPECT_LE(most, 1'000U);
    EXPECT_LE(calls.Count(Call::Syncfs), 40U);
    EXPECT_EQ(TreeOf(Left("Sub")), TreeOf(Right("Sub")));
}

TEST_F(ShellBatchTest, TimesThatCannotBeKeptAreCounted) {
    drop.Write("left/Sub/a", "a");
    drop.Write("left/Sub/b", "b");
    fs::create_symlink("a", Left("Sub/link"));
    calls.FailAll(Call::Futimens, EPERM);
    calls.FailAll(Call::Utimens, EPERM);
    const ShellResult result = Run(Copy, {Left("Sub")}, drop / "right");
    EXPECT_TRUE(result.AllDone());
    EXPECT_EQ(4U, result.timesNotKept);
    SystemShellOperations shell = Service();
    EXPECT_TRUE(shell.CopyOneFile(Left("Sub/a"), Right("a")).IsOk());
    EXPECT_EQ(1U, shell.FinishCopies().timesNotKept);
}

// Wherever it ends, a folder has the mode of its source or the one that it had before.
TEST_F(ShellBatchTest, AKillLeavesNoFolderWithAModeOfItsOwn) {
    const mode_t old = umask(077);
    drop.Write("left/Sub/inner/a", "a");
    drop.Write("left/Sub/closed/b", "b");
    drop.Write("left/Sub/there/c", "c");
    const std::map<std::string, mode_t> modes{
        {"Sub", 0755}, {"Sub/inner", 02711}, {"Sub/closed", 0555}, {"Sub/there", 0777}};
    for (const auto& [name, mode] : modes) chmod(Left(name).c_str(), mode);
    std::size_t kills = 0;
    for (std::size_t n = 1;; n += 3) {
        fs::remove_all(drop / "right");
        drop.MakeFolder("right/Sub/there");
        chmod(Right("Sub").c_str(), 0701);
        chmod(Right("Sub/there").c_str(), 0710);
        const pid_t child = fork();
        if (child == 0) {
            calls.before = [&](const FaultySystemCalls::Record&) {
                if (calls.Count() >= n) _exit(9);
            };
            Run(Copy, {Left("Sub")}, drop / "right");
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        for (const auto& [name, mode] : modes) {
            if (!fs::exists(Right(name))) continue;
            const bool stood = name == "Sub" || name == "Sub/there";
            const mode_t wanted = !stood ? mode : name == "Sub" ? 0701 : 0710;
            EXPECT_EQ(wanted, StatOf(Right(name)).st_mode & 07777) << name << ", killed at call " << n;
        }
        if (WEXITSTATUS(status) == 0 || HasFailure()) break;
        ++kills;
    }
    umask(old);
    EXPECT_GT(kills, 20U);
    for (const char* name : {"Sub/inner", "Sub/closed"})
        EXPECT_EQ(StatOf(Left(name)).st_mtim.tv_nsec, StatOf(Right(name)).st_mtim.tv_nsec) << name;
}

}  // namespace
}  // namespace vantrel::testing
