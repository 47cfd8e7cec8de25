#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "platform/names/names.h"
#include "platform/names/temporary_names.h"
#include "support/child_process.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellCopyTest : public ShellTest {
  public:
    struct stat StatOf(const std::string& path) {
        struct stat stat {};
        EXPECT_EQ(0, lstat(path.c_str(), &stat)) << path;
        return stat;
    }
    void MakeTree() {
        drop.Write("left/Sub/a.txt", "alpha", 1'500'000'000.25);
        drop.Write("left/Sub/empty", "");
        drop.Write("left/Sub/deep/er/b", std::string(3'000'000, 'b'));
        drop.Write("left/Sub/odd \xff\\name\n", "odd");
        drop.MakeFolder("left/Sub/nothing");
        fs::create_symlink("a.txt", Left("Sub/link"));
        fs::create_symlink("gone", Left("Sub/dangling"));
        fs::create_directory_symlink("deep", Left("Sub/folderlink"));
    }
};

TEST_F(ShellCopyTest, CopiesTreesWithAllThatBelongsToThem) {
    MakeTree();
    setxattr(Left("Sub/a.txt").c_str(), "user.note", "kept", 4, 0);
    chmod(Left("Sub/a.txt").c_str(), 0444);
    chmod(Left("Sub/deep").c_str(), 0751);
    drop.Write("left/Sub/deep/../deep/c", "c");
    const timespec old[2] = {{1'400'000'000, 0}, {1'400'000'000, 123'456'789}};
    for (const char* name : {"Sub/deep", "Sub/link"})
        utimensat(AT_FDCWD, Left(name).c_str(), old, AT_SYMLINK_NOFOLLOW);

    const ShellResult result = Run(Copy, {Left("Sub")}, drop / "right/new/one");
    EXPECT_TRUE(result.AllDone());
    EXPECT_EQ(Done, result.items.at(0).outcome);
    EXPECT_EQ(TreeOf(Left("Sub")), TreeOf(Right("new/one/Sub")));
    EXPECT_EQ(TreeOf(Left("Sub")).size() + 1, result.objectsDone);
    EXPECT_EQ(result.objectsDone, progress.totals.objects);
    EXPECT_EQ(result.objectsDone, progress.last.objects);
    EXPECT_EQ(progress.totals.bytes, progress.last.bytes);
    for (const char* name : {"Sub/a.txt", "Sub/deep", "Sub/link"}) {
        const auto from = StatOf(Left(name)), to = StatOf(Right(std::string("new/one/") + name));
        EXPECT_EQ(from.st_mode, to.st_mode) << name;
        EXPECT_EQ(from.st_mtim.tv_sec, to.st_mtim.tv_sec) << name;
        EXPECT_EQ(from.st_mtim.tv_nsec, to.st_mtim.tv_nsec) << name;
    }
    char value[8] = {};
    if (getxattr(Left("Sub/a.txt").c_str(), "user.note", value, sizeof value) == 4) {
        EXPECT_EQ(4, getxattr(Right("new/one/Sub/a.txt").c_str(), "user.note", value, sizeof value));
        EXPECT_STREQ("kept", value);
    }
    EXPECT_EQ(1, progress.begun);
    EXPECT_EQ(1, progress.ended);
}

TEST_F(ShellCopyTest, KeepsHolesAndReadsFilesThatReportNoSize) {
    {
        std::ofstream file(Left("sparse"), std::ios::binary);
        file << "head";
        file.seekp(40'000'000);
        file << "tail";
    }
    fs::resize_file(Left("sparse"), 60'000'000);
    ASSERT_TRUE(Run(Copy, {Left("sparse"), "/proc/self/status"}, drop / "right").AllDone());
    EXPECT_EQ(drop.Read("left/sparse"), drop.Read("right/sparse"));
    EXPECT_LE(StatOf(Right("sparse")).st_blocks, StatOf(Left("sparse")).st_blocks + 16);
    EXPECT_NE(std::string::npos, drop.Read("right/status").find("Name:"));
}

TEST_F(ShellCopyTest, MergesFoldersAndAsksBeforeItOverwrites) {
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        drop.Write(std::string("left/Sub/") + name, std::string("new ") + name);
        drop.Write(std::string("right/Sub/") + name, "old");
    }
    drop.Write("right/Sub/other", "stays");
    chmod(Right("Sub/a").c_str(), 0444);
    fs::create_hard_link(Right("Sub/a"), Right("second name"));
    questions.overwriteAnswers = {OverwriteAnswer::No, OverwriteAnswer::Yes, OverwriteAnswer::YesToAll};
    ShellResult result = Run(Copy, {Left("Sub")}, drop / "right");
    EXPECT_EQ(3U, questions.overwrites.size());
    EXPECT_EQ(Skipped, result.items.at(0).outcome);
    EXPECT_EQ(0, result.code);
    EXPECT_TRUE(result.anyOperationsAborted);
    EXPECT_EQ(1U, result.troubles.size());
    EXPECT_EQ(1, std::ranges::count(Contents(TreeOf(Right("Sub"))), "old"));
    EXPECT_EQ("stays", drop.Read("right/Sub/other"));
    EXPECT_EQ("old", drop.Read("right/second name"));

    ShellRequest request;
    request.sources = {Left("Sub")};
    request.target = drop / "right";
    request.noConfirmation = request.silent = true;
    questions.overwrites.clear();
    const std::size_t shown = progress.last.objects;
    EXPECT_TRUE(Run(request).AllDone());
    EXPECT_TRUE(questions.overwrites.empty());
    EXPECT_EQ(1, progress.begun);
    EXPECT_EQ(shown, progress.last.objects);
    EXPECT_EQ("new a", drop.Read("right/Sub/a"));

    questions.overwriteAnswers = {OverwriteAnswer::Cancel};
    result = Run(Copy, {Left("Sub/a"), Left("Sub/b")}, drop / "right/Sub");
    EXPECT_EQ(NotReached, result.items.at(0).outcome);
    EXPECT_EQ(NotReached, result.items.at(1).outcome);
    EXPECT_TRUE(result.anyOperationsAborted);
}

TEST_F(ShellCopyTest, AllExtendedAttributesComeAlongOrTheCopyFails) {
    drop.Write("left/file", "content");
    // Their names alone take more than a kilobyte.
    std::vector<std::string> names;
    for (int i = 0; i < 30; ++i) names.push_back("user." + std::string(40, 'n') + std::to_string(i));
    for (const std::string& name : names)
        if (setxattr(Left("file").c_str(), name.c_str(), "v", 1, 0) != 0)
            GTEST_SKIP() << "the file system has no attributes of users";
    ASSERT_TRUE(Run(Copy, {Left("file")}, drop / "right").AllDone());
    char value = 0;
    for (const std::string& name : names)
        EXPECT_EQ(1, getxattr(Right("file").c_str(), name.c_str(), &value, 1)) << name;
    // A file system that cannot hold them gets the content alone, and where it has no room for them that is
    // counted; otherwise nothing is left out.
    for (const int error : {EOPNOTSUPP, ENOSPC, E2BIG, ERANGE, EDQUOT, EIO}) {
        fs::remove(Right("file"));
        calls.FailAll(Call::SetXattr, error);
        const ShellResult result = Run(Copy, {Left("file")}, drop / "right");
        EXPECT_EQ(error != EIO, result.AllDone()) << error;
        EXPECT_EQ(error != EIO, drop.Exists("right/file")) << error;
        EXPECT_EQ(error != EOPNOTSUPP && error != EIO ? 1U : 0U, result.notKept.attributes) << error;
    }
    calls.FailAll(Call::SetXattr, ENOSPC);
    fs::create_directory(Left("Sub"));
    setxattr(Left("Sub").c_str(), "user.note", "v", 1, 0);
    drop.Write("left/Sub/plain", "without any");
    SystemShellOperations shell = Service();
    EXPECT_TRUE(shell.CopyOneFile(Left("file"), Right("single")).IsOk());
    EXPECT_EQ(1U, shell.FinishCopies().notKept.attributes);
    SeparateDrives();
    EXPECT_EQ(2U, Run(Move, {Left("file"), Left("Sub")}, drop / "right").notKept.attributes);
    EXPECT_EQ("content", drop.Read("right/file"));
}

TEST_F(ShellCopyTest, SpecialFilesBelowAFolderFailOrArePassedOverAndNeverCount) {
    drop.Write("left/Sub/a", "a");
    ASSERT_EQ(0, mkfifo(Left("Sub/pipe").c_str(), 0600));
    ShellRequest request;
    request.sources = {Left("Sub")};
    for (const bool passesOver : {false, true}) {
        request.target = drop / (passesOver ? "right/over" : "right/failing");
        request.passesOverSpecial = passesOver;
        const ShellResult result = Run(request);
        EXPECT_EQ(passesOver ? Done : Failed, result.items.at(0).outcome);
        EXPECT_EQ(passesOver ? 0U : 1U, result.troubles.size());
        EXPECT_EQ(passesOver ? 2U : 1U, result.objectsDone);  // a folder that is not whole does not count
        EXPECT_EQ((Tree{{"a", "f:a"}}), TreeOf(request.target + "/Sub/"));
    }
    request.sources = {Left("Sub/pipe")};
    EXPECT_EQ(Failed, Run(request).items.at(0).outcome);
}

// Copy and move alike: nothing on either side changes.
TEST_F(ShellCopyTest, RefusesWhatWouldLoseSomething) {
    drop.Write("left/file", "content");
    drop.Write("left/dir/inner/x", "x");
    drop.Write("left/both", "file here");
    drop.MakeFolder("right/both");
    drop.Write("right/dir", "a file in the way of the folder");
    fs::create_symlink(Left("file"), Right("file"));            // target is the source, by a link
    fs::create_hard_link(Left("file"), Right("hard"));          // ... by a second name
    fs::create_symlink(Left("file"), drop / "right/sub-link");  // a link onto the file that it leads to
    fs::create_directory_symlink(Left("dir/inner"), drop / "way in");
    ASSERT_EQ(0, mkfifo(Right("pipe").c_str(), 0600));
    drop.Write("left/pipe", "a file onto a pipe");
    drop.Write("left/lead", "a file onto a link to a folder");
    fs::create_directory_symlink(Left("dir"), Right("lead"));
    fs::create_directory_symlink(Left("dir/inner"), drop / "kind");
    drop.Write("right/kind", "a link to a folder onto a file");
    const struct {
        std::string source, target;
        bool full;
    } cases[] = {
        {Left("file"), drop / "left", false},    {Left("file"), drop / "right", false},
        {Left("file"), Right("hard"), true},     {Right("sub-link"), Left("file"), true},
        {Left("dir"), drop / "left/dir", false}, {Left("dir"), drop / "left/dir/inner", false},
        {Left("dir"), drop / "way in", false},   {Left("dir"), drop / "left", false},
        {Left("dir"), drop / "right", false},    {Left("both"), drop / "right", false},
        {Left("pipe"), drop / "right", false},   {Left("gone"), drop / "right", false},
        {Left("lead"), drop / "right", false},   {drop / "kind", drop / "right", false},
        {Left("file"), "relative", false},       {Left("file"), Left("file/below"), false},
    };
    for (const ShellOperation operation : {Copy, Move}) {
        for (const auto& one : cases) {
            const Tree before = TreeOf(drop.Path());
            questions.troubles.clear();
            ShellRequest request;
            request.operation = operation;
            request.sources = {one.source};
            request.target = one.target;
            request.targetIsFullPath = one.full;
            const ShellResult result = Run(request);
            SCOPED_TRACE(one.source + " to " + one.target);
            EXPECT_EQ(Failed, result.items.at(0).outcome);
            EXPECT_FALSE(result.items.at(0).error.IsOk());
            EXPECT_NE(0, result.code);
            EXPECT_EQ(1U, questions.troubles.size());
            EXPECT_EQ(before, TreeOf(drop.Path()));
        }
    }
}

TEST_F(ShellCopyTest, WhatIsShownNowhereIsReplacedOnlyAfterAQuestion) {
    drop.Write("left/file", "content");
    fs::create_symlink("unplugged", Right("file"));
    ShellRequest request;
    request.sources = {Left("file")};
    request.target = drop / "right";
    request.noConfirmation = true;
    EXPECT_EQ(Failed, Run(request).items.at(0).outcome);
    EXPECT_FALSE(Service().CopyOneFile(Left("file"), Right("file")).IsOk());
    EXPECT_TRUE(fs::is_symlink(Right("file")));
    questions.overwriteAnswers = {OverwriteAnswer::Yes};
    EXPECT_TRUE(Run(Copy, {Left("file")}, drop / "right").AllDone());
    EXPECT_EQ("content", drop.Read("right/file"));
}

TEST_F(ShellCopyTest, DeepTreesNeedNoHigherLimitOfOpenFilesAndEndWithAnErrorAtTheLast) {
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_NOFILE, &before));
    if (before.rlim_max < 2'100) GTEST_SKIP() << "no more open files than " << before.rlim_max;
    const rlimit low{256, before.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_NOFILE, &low));
    const auto make = [&](const char* name, int levels) {
        int fd = open((drop / "left").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        for (int i = 0; i < levels; ++i) {
            const char* part = i == 0 ? name : "d";
            EXPECT_EQ(0, mkdirat(fd, part, 0700));
            const int next = openat(fd, part, O_PATH | O_DIRECTORY | O_CLOEXEC);
            close(std::exchange(fd, next));
        }
        close(fd);
    };
    make("deep", 990);
    make("too deep", 1'010);
    const ShellResult copied = Run(Copy, {Left("deep"), Left("too deep")}, drop / "right");
    EXPECT_EQ(Done, copied.items.at(0).outcome);
    EXPECT_EQ(Failed, copied.items.at(1).outcome);
    EXPECT_EQ(1U, copied.troubles.size());
    EXPECT_TRUE(Run(Delete, {Left("deep")}).AllDone());
    EXPECT_EQ(Failed, Run(Delete, {Left("too deep")}).items.at(0).outcome);
    rlimit after{};
    getrlimit(RLIMIT_NOFILE, &after);
    EXPECT_EQ(low.rlim_cur, after.rlim_cur);
    // Clearing up takes as many.
    before.rlim_cur = std::max<rlim_t>(before.rlim_cur, 2'100);
    setrlimit(RLIMIT_NOFILE, &before);
}

TEST_F(ShellCopyTest, NoEmptyNameStandsForTheFolderThatHoldsIt) {
    drop.Write("left/file", "content");
    for (const ShellOperation operation : {Copy, Move, Delete, Recycle, Rename}) {
        for (const std::string& source : {drop / "left/", drop / "left/.", drop / "left/..", std::string(),
                                          std::string("/"), std::string("left")}) {
            const Tree before = TreeOf(drop.Path());
            const ShellResult result = Run(operation, {source}, Right("target"));
            EXPECT_EQ(Failed, result.items.at(0).outcome) << source;
            EXPECT_EQ(before, TreeOf(drop.Path())) << source;
        }
    }
    EXPECT_FALSE(Service().DeleteOneFile(drop / "left/").IsOk());
    EXPECT_FALSE(Service().CopyOneFile(drop / "left/file", drop / "right/").IsOk());
}

TEST_F(ShellCopyTest, SpecialFilesAreNotOpened) {
    ASSERT_EQ(0, mkfifo(Left("pipe").c_str(), 0600));
    drop.Write("left/file", "content");
    const ShellResult result = Run(Copy, {Left("pipe"), "/dev/null", Left("file")}, drop / "right");
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ(Failed, result.items.at(1).outcome);
    EXPECT_EQ(Done, result.items.at(2).outcome);
    EXPECT_EQ(2U, questions.troubles.size());
    EXPECT_EQ((Tree{{"file", "f:content"}}), TreeOf(drop / "right/"));
}

TEST_F(ShellCopyTest, WhatTheRequestHasPutThereIsNotOverwrittenByIt) {
    drop.Write("left/one/same", "first");
    drop.Write("left/two/same", "second");
    for (const ShellOperation operation : {Copy, Move}) {
        ShellRequest request;
        request.operation = operation;
        request.sources = {Left("one/same"), Left("two/same")};
        request.target = drop / "right";
        request.noConfirmation = true;
        const ShellResult result = Run(request);
        EXPECT_EQ(Done, result.items.at(0).outcome);
        EXPECT_EQ(Failed, result.items.at(1).outcome);
        EXPECT_EQ("first", drop.Read("right/same"));
        EXPECT_EQ("second", drop.Read("left/two/same"));
    }
}

TEST_F(ShellCopyTest, ASourceThatChangesMeanwhileIsTakenAnewOrRefused) {
    drop.Write("left/log", "1");
    // The data go by reading and writing here, so that the change falls into the copy.
    calls.FailAll(Call::CopyFileRange, EOPNOTSUPP);
    int changes = 0, limit = 1;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call == Call::Write && changes++ < limit) std::ofstream(Left("log"), std::ios::app) << "2";
    };
    SystemShellOperations shell = Service();
    EXPECT_TRUE(shell.CopyOneFile(Left("log"), Right("log")).IsOk());
    EXPECT_TRUE(shell.FinishCopies().First().IsOk());
    EXPECT_EQ("12", drop.Read("right/log"));
    drop.Write("right/log", "old");
    limit = 1000;
    EXPECT_FALSE(shell.CopyOneFile(Left("log"), Right("log")).IsOk());
    EXPECT_EQ("old", drop.Read("right/log"));
    NoLeftovers(TreeOf(drop.Path()));
}

TEST_F(ShellCopyTest, LeftoversOfAKillAreClearedAndNothingElse) {
    drop.Write("left/file", "content");
    const pid_t child = ForkAlone();
    if (child == 0) {
        calls.before = [](const FaultySystemCalls::Record& at) {
            if (at.call == Call::Futimens) _exit(9);
        };
        static_cast<void>(Service().CopyOneFile(Left("file"), Right("file")));
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_EQ(9, WEXITSTATUS(status));
    Tree tree = TreeOf(drop / "right/");
    ASSERT_EQ(1U, tree.size());
    const std::string leftover = tree.begin()->first;
    EXPECT_TRUE(IsTemporaryCopyName(leftover));

    const auto with = [&](const std::string& what, const std::string& instead) {
        std::string name = leftover;
        return name.replace(name.find(what), what.size(), instead);
    };
    const std::string gone = "-" + std::to_string(child) + "-";
    const std::vector<std::string> others{with(gone, "-" + std::to_string(getppid()) + "-"),  // still runs
                                          with(gone, "0" + gone),
                                          with(".tmp", ".txt"),
                                          "x" + leftover,
                                          with(gone, "--"),
                                          ".~vantrel-.tmp"};
    for (const std::string& name : others) drop.Write("right/" + name, "not ours to clear");
    fs::create_symlink("nowhere", Right(with(".tmp", "9.tmp")));
    drop.MakeFolder("right/" + with(".tmp", "7.tmp"));
    drop.Write("right/" + with(".tmp", "8.tmp") + "/file", "a copy in a folder that did not get its name");
    fs::create_directory_symlink(drop / "left", Right(with(".tmp", "8.tmp") + "/link"));
    EXPECT_TRUE(Run(Copy, {Left("file")}, drop / "right").AllDone());
    tree = TreeOf(drop / "right/");
    EXPECT_FALSE(tree.contains(leftover));
    EXPECT_EQ(others.size() + 1, tree.size());  // and the copy
    EXPECT_EQ("content", drop.Read("left/file"));
    EXPECT_EQ("content", drop.Read("right/file"));
}

}  // namespace
}  // namespace vantrel::testing
