// Copies come to their names many at a time, after one sync, and folders with the rights that they are to
// have.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <filesystem>
#include <set>

#include "platform/names/temporary_names.h"
#include "support/child_process.h"
#include "support/plain_user.h"
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
    ShellRoot RootOf(const std::string& name) {
        FileInfo info;
        EXPECT_TRUE(files.Stat(drop / name, LinkPolicy::Follow, info).IsOk());
        return {drop / name, info.id};
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
    EXPECT_EQ(4U, result.notKept.times);
    SystemShellOperations shell = Service();
    EXPECT_TRUE(shell.CopyOneFile(Left("Sub/a"), Right("a")).IsOk());
    EXPECT_EQ(1U, shell.FinishCopies().notKept.times);
}

// Wherever it ends, a folder has the mode of its source or the one that it had before, and the next run
// clears up and does the rest.
TEST_F(ShellBatchTest, AKillLeavesNoFolderWithAModeOfItsOwn) {
    const std::map<std::string, mode_t> modes{{"Sub", 0755},        {"Sub/inner", 02711},
                                              {"Sub/closed", 0555}, {"Sub/closed/too", 0500},
                                              {"Sub/there", 0777},  {"Sub/closed/too/deep", 0755}};
    const auto openAll = [&](const char* folder) {
        // Each is opened before the iterator enters it.
        for (const auto& entry : fs::recursive_directory_iterator(drop / folder)) {
            if (entry.is_directory()) chmod(entry.path().c_str(), 0700);
        }
    };
    const auto killAtEveryThirdCall = [&] {
        const mode_t old = umask(077);
        for (const char* path : {"inner/a", "closed/b", "closed/too/c", "closed/too/deep/d", "there/e"})
            drop.Write(std::string("left/Sub/") + path, path);
        for (auto at = modes.rbegin(); at != modes.rend(); ++at) chmod(Left(at->first).c_str(), at->second);
        std::size_t kills = 0;
        for (std::size_t n = 1;; n += 3) {
            openAll("right");
            fs::remove_all(drop / "right");
            drop.MakeFolder("right/Sub/there");
            chmod(Right("Sub").c_str(), 0701);
            chmod(Right("Sub/there").c_str(), 0710);
            calls.ResetCount();
            const pid_t child = ForkAlone();
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
            if (n % 12 != 1 || fs::exists(Right("Sub/closed"))) continue;
            EXPECT_TRUE(Run(Copy, {Left("Sub")}, drop / "right").AllDone());
            NoLeftovers(TreeOf(drop / "right/"));
            EXPECT_EQ(TreeOf(drop / "left/"), TreeOf(drop / "right/"));
        }
        umask(old);
        EXPECT_GT(kills, 20U);
        for (const char* name : {"Sub/inner", "Sub/closed", "Sub/closed/too"})
            EXPECT_EQ(StatOf(Left(name)).st_mtim.tv_nsec, StatOf(Right(name)).st_mtim.tv_nsec) << name;
        for (const char* side : {"left", "right"}) openAll(side);
    };
    killAtEveryThirdCall();
    fs::remove_all(drop / "left");
    drop.MakeFolder("left");
    AsPlainUser(drop, killAtEveryThirdCall);
}

TEST_F(ShellBatchTest, RightsThatAFolderCannotGetAtTheEndAreTold) {
    AsPlainUser(drop, [&] {
        drop.Write("left/Sub/a", "a");
        chmod(Left("Sub").c_str(), 0555);
        ASSERT_TRUE(Run(Copy, {Left("Sub")}, drop / "right").AllDone());
        const std::size_t last = calls.Count(Call::Fchmod);
        for (const bool retried : {false, true}) {
            chmod(Right("Sub").c_str(), 0755);
            fs::remove_all(Right("Sub"));
            calls.ResetCount();
            calls.FailAt(Call::Fchmod, last, EIO);
            if (retried) questions.errorAnswers = {ErrorAnswer::Retry};
            const ShellResult result = Run(Copy, {Left("Sub")}, drop / "right");
            EXPECT_EQ(retried ? Done : Failed, result.items.at(0).outcome);
            EXPECT_EQ(retried, result.AllDone());
            EXPECT_EQ(retried ? 0U : 1U, result.troubles.size());
            EXPECT_EQ("a", drop.Read("right/Sub/a"));
        }
        EXPECT_EQ(0555U, StatOf(Right("Sub")).st_mode & 07777);

        // A second folder of the name finds the first one, which is closed now.
        drop.Write("left/other/Sub/b", "b");
        chmod(Right("Sub").c_str(), 0755);
        fs::remove_all(Right("Sub"));
        const ShellResult result = Run(Copy, {Left("Sub"), Left("other/Sub")}, drop / "right");
        EXPECT_EQ(Done, result.items.at(0).outcome);
        EXPECT_EQ(Failed, result.items.at(1).outcome);
        EXPECT_EQ((Tree{{"Sub", "d"}, {"Sub/a", "f:a"}}), TreeOf(drop / "right/"));
        for (const std::string& path : {Left("Sub"), Right("Sub")}) chmod(path.c_str(), 0755);
    });
}

// The folders above a single copy that are missing are made as those of the source are, though more copies
// come into them later.
TEST_F(ShellBatchTest, FoldersAboveASingleCopyAreLikeThoseOfItsSource) {
    const auto check = [&] {
        const std::map<std::string, mode_t> modes{{"Sub", 0750}, {"Sub/deep", 0511}, {"Sub/deep/er", 0705}};
        drop.Write("left/Sub/deep/er/a", "a");
        drop.Write("left/Sub/deep/b", "b");
        drop.Write("left/Sub/deep/c", "c");
        for (const auto& [name, mode] : modes) {
            const timespec times[2] = {{1'000'000'000, 1}, {1'100'000'000, 2}};
            utimensat(AT_FDCWD, Left(name).c_str(), times, 0);
        }
        for (auto at = modes.rbegin(); at != modes.rend(); ++at) chmod(Left(at->first).c_str(), at->second);
        drop.MakeFolder("right/Sub");
        chmod(Right("Sub").c_str(), 0700);

        const std::vector<ShellRoot> roots{RootOf("left"), RootOf("right")};
        SystemShellOperations shell = Service();
        ShellRequest request;
        request.noErrorUi = request.targetIsFullPath = true;
        request.roots = roots;
        const auto copy = [&](const std::string& name) {
            return shell.CopyOneFile({Left(name), Right(name), {}, roots, true}).IsOk();
        };
        EXPECT_TRUE(copy("Sub/deep/er/a"));
        EXPECT_TRUE(copy("Sub/deep/b"));
        // By the way in between, which gives what waits its names.
        request.sources = {Left("Sub/deep/c")};
        request.target = Right("Sub/deep/c");
        EXPECT_TRUE(shell.Run(request).AllDone());
        EXPECT_TRUE(copy("Sub/deep/er/a"));
        EXPECT_TRUE(shell.FinishCopies().failed.empty());

        EXPECT_EQ(TreeOf(drop / "left/"), TreeOf(drop / "right/"));
        EXPECT_EQ(0700U, StatOf(Right("Sub")).st_mode & 07777);
        for (const char* name : {"Sub/deep", "Sub/deep/er"}) {
            EXPECT_EQ(modes.at(name), StatOf(Right(name)).st_mode & 07777) << name;
            EXPECT_EQ(1'100'000'000, StatOf(Right(name)).st_mtim.tv_sec) << name;
        }
        // What follows later is somebody else's.
        drop.Write("left/later", "later");
        if (geteuid() == 0) {
            EXPECT_TRUE(shell.CopyOneFile({Left("later"), Right("Sub/deep/later"), {}, roots}).IsOk());
            EXPECT_TRUE(shell.FinishCopies().failed.empty());
            EXPECT_NE(1'100'000'000, StatOf(Right("Sub/deep")).st_mtim.tv_sec);
        }

        fs::permissions(Left("Sub/deep"), fs::perms::owner_all);
        request.operation = Move;
        request.sources = {Left("Sub/deep/er/a")};
        request.target = Right("other/deep/er/a");
        EXPECT_TRUE(shell.Run(request).AllDone());
        EXPECT_EQ(0705U, StatOf(Right("other/deep/er")).st_mode & 07777);
        EXPECT_EQ(0700U, StatOf(Right("other/deep")).st_mode & 07777);
        for (const std::string& path : {Left("Sub/deep"), Right("Sub/deep")}) chmod(path.c_str(), 0700);
    };
    check();
    for (const char* side : {"left", "right"}) fs::remove_all(drop / side), drop.MakeFolder(side);
    AsPlainUser(drop, check);
}

TEST_F(ShellBatchTest, WhatIsInAFolderThatGetsNoNameIsToldToo) {
    AsPlainUser(drop, [&] {
        drop.Write("left/Sub/deep/a", "a");
        drop.Write("left/Sub/b", "b");
        for (const char* name : {"Sub/deep", "Sub"}) chmod(Left(name).c_str(), 0555);
        const std::vector<ShellRoot> roots{RootOf("left"), RootOf("right")};
        SystemShellOperations shell = Service();
        for (const char* name : {"Sub/deep/a", "Sub/b"})
            EXPECT_TRUE(shell.CopyOneFile({Left(name), Right(name), {}, roots, true}).IsOk());
        EXPECT_FALSE(drop.Exists("right/Sub"));
        drop.Write("right/Sub/somebody's", "work");
        std::set<std::string> failed;
        for (const auto& copy : shell.FinishCopies().failed) failed.insert(copy.target);
        EXPECT_EQ((std::set{Right("Sub"), Right("Sub/deep/a"), Right("Sub/b")}), failed);
        EXPECT_EQ((Tree{{"Sub", "d"}, {"Sub/somebody's", "f:work"}}), TreeOf(drop / "right/"));
        for (const char* name : {"Sub", "Sub/deep"}) chmod(Left(name).c_str(), 0755);
    });
}

TEST_F(ShellBatchTest, ARootExchangedWhileASingleCopyWaitsIsToldAndGetsNothing) {
    for (const char* side : {"left", "right"}) {
        drop.Write("left/a", "new");
        drop.Write("right/a", "old");
        const std::vector<ShellRoot> roots{RootOf("left"), RootOf("right")};
        SystemShellOperations shell = Service();
        EXPECT_TRUE(shell.CopyOneFile({Left("a"), Right("a"), {}, roots, true}).IsOk());
        EXPECT_TRUE(shell.CopyOneFile({Left("a"), Right("made/b"), {}, roots, true}).IsOk());
        fs::rename(drop / side, drop / "aside");
        drop.MakeFolder(side);
        const ShellOperations::FinishedCopies finished = shell.FinishCopies();
        ASSERT_EQ(2U, finished.failed.size());
        EXPECT_EQ(Right("a"), finished.failed[0].target);
        EXPECT_EQ(kChangedSinceSeen, finished.First().Number());
        EXPECT_TRUE(TreeOf(drop.Path() + "/" + side + "/").empty());
        const bool atTarget = std::string(side) == "right";
        EXPECT_EQ("old", drop.Read(atTarget ? "aside/a" : "right/a"));
        NoLeftovers(TreeOf(drop.Path()));
        for (const char* folder : {"aside", "left", "right"}) fs::remove_all(drop / folder);
    }
}

}  // namespace
}  // namespace vantrel::testing
