// What is not what it was when the request was thought of is left alone and told.
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <random>

#include "platform/names/temporary_names.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

Sighting SeenAt(const std::string& path) {
    struct statx found {};
    const int looked = statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, kSightingMask, &found);
    return looked == 0 ? SightingOf(found) : Sighting::Nothing();
}

std::shared_ptr<SeenBelow> SeenBelowOf(const std::string& folder) {
    auto below = std::make_shared<SeenBelow>();
    for (const auto& [path, what] : TreeOf(folder + "/")) below->emplace(path, SeenAt(folder + "/" + path));
    return below;
}

class ShellSeenTest : public ShellTest {
  public:
    // A request that expects everything to be as it is now.
    ShellRequest Expecting(ShellOperation operation, const std::vector<std::string>& names) {
        ShellRequest request;
        request.operation = operation;
        request.noConfirmation = request.noErrorUi = true;
        const bool hasTarget = operation == Copy || operation == Move;
        if (hasTarget) request.target = drop / "right";
        for (const std::string& name : names) {
            request.sources.push_back(Left(name));
            Expectation expected;
            expected.source = SeenAt(Left(name));
            if (hasTarget) expected.target = SeenAt(Right(name));
            if (fs::is_directory(Left(name))) expected.below = SeenBelowOf(Left(name));
            request.expected.push_back(expected);
        }
        request.roots = {Root("left"), Root("right")};
        return request;
    }
    ShellRoot Root(const std::string& name) {
        const Seen seen = SeenAt(drop / name).seen;
        return {drop / name, seen.id, seen.changed};
    }
    static void ExpectChanged(const ShellItem& item, const std::string& path) {
        EXPECT_EQ(Failed, item.outcome) << path;
        EXPECT_EQ(kChangedSinceSeen, item.error.Number()) << item.error.Description();
        EXPECT_NE(std::string::npos, item.error.Description().find(path)) << item.error.Description();
    }
};

// The same size and time of last write, as by a tool that keeps times: what betrays it is the time of change.
void ReplaceContentKeepingTimes(const std::string& path, const std::string& content) {
    struct stat before {};
    ASSERT_EQ(0, stat(path.c_str(), &before));
    const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(static_cast<ssize_t>(content.size()), write(fd, content.data(), content.size()));
    const timespec times[2] = {before.st_atim, before.st_mtim};
    futimens(fd, times);
    close(fd);
}

TEST_F(ShellSeenTest, EveryKindOfChangeIsSeenByEveryOperation) {
    enum { Edited, EditedKeepingTimes, Exchanged, Linked, Vanished, FolderNow, kChanges };
    for (const ShellOperation operation : {Copy, Move, Delete, Recycle}) {
        for (const bool atTarget : {false, true}) {
            if (atTarget && operation != Copy && operation != Move) continue;
            for (int change = 0; change < kChanges; ++change) {
                SCOPED_TRACE(std::to_string(static_cast<int>(operation)) +
                             (atTarget ? " target " : " source ") + std::to_string(change));
                for (const char* side : {"left", "right"}) {
                    fs::remove_all(drop / side);
                    drop.MakeFolder(side);
                    drop.Write(std::string(side) + "/f", std::string("content on the ") + side,
                               1'000'000'000);
                }
                drop.Write("left/g", "goes");
                const ShellRequest request = Expecting(operation, {"f", "g"});
                const std::string path = atTarget ? Right("f") : Left("f");
                switch (change) {
                    case Edited:
                        drop.Write(atTarget ? "right/f" : "left/f", "edited");
                        break;
                    case EditedKeepingTimes:
                        ReplaceContentKeepingTimes(path, "CONTENT");
                        break;
                    case Exchanged:
                        drop.Write("other",
                                   fs::exists(path) ? drop.Read(atTarget ? "right/f" : "left/f") : "",
                                   1'000'000'000);
                        fs::rename(drop / "other", path);
                        break;
                    case Linked:
                        fs::rename(path, drop / "moved");
                        fs::create_symlink(drop / "moved", path);
                        break;
                    case Vanished:
                        fs::remove(path);
                        break;
                    case FolderNow:
                        fs::remove(path);
                        fs::create_directory(path);
                        break;
                }
                const Tree left = TreeOf(drop / "left/"), right = TreeOf(drop / "right/");
                const ShellResult result = Run(request);
                ASSERT_EQ(2U, result.items.size());
                ExpectChanged(result.items[0], path);
                EXPECT_EQ(Done, result.items[1].outcome);
                EXPECT_EQ(1U, result.troubles.size());
                EXPECT_FALSE(result.AllDone());
                Tree left1 = TreeOf(drop / "left/"), right1 = TreeOf(drop / "right/");
                left1["g"] = left.at("g");
                right1.erase("g");
                EXPECT_EQ(left, left1);
                EXPECT_EQ(right, right1);
            }
        }
    }
}

TEST_F(ShellSeenTest, WhatAppearedWhereNothingWasIsNotReplacedOrMergedInto) {
    drop.Write("left/f", "new");
    drop.Write("left/Sub/a", "new a");
    for (const ShellOperation operation : {Copy, Move}) {
        const ShellRequest request = Expecting(operation, {"f", "Sub"});
        drop.Write("right/f", "appeared");
        drop.Write("right/Sub/b", "appeared");
        const ShellResult result = Run(request);
        ExpectChanged(result.items.at(0), Right("f"));
        ExpectChanged(result.items.at(1), Right("Sub"));
        EXPECT_EQ((Tree{{"f", "f:appeared"}, {"Sub", "d"}, {"Sub/b", "f:appeared"}}),
                  TreeOf(drop / "right/"));
        fs::remove_all(drop / "right/f");
        fs::remove_all(drop / "right/Sub");
    }
}

TEST_F(ShellSeenTest, AFolderGoesWithWhatWasSeenInItOnly) {
    const auto make = [&] {
        for (const char* path : {"kept/a", "kept/deep/b", "gone/c", "d"})
            drop.Write(std::string("left/Sub/") + path, path);
    };
    make();
    ShellRequest request = Expecting(Delete, {"Sub"});
    drop.Write("left/Sub/kept/deep/late", "late");
    drop.Write("left/Sub/kept/a", "edited");
    const ShellResult result = Run(request);
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ(2U, result.troubles.size());
    for (const ShellItem& trouble : result.troubles) EXPECT_EQ(kChangedSinceSeen, trouble.error.Number());
    EXPECT_EQ((Tree{{"kept", "d"}, {"kept/a", "f:edited"}, {"kept/deep", "d"}, {"kept/deep/late", "f:late"}}),
              TreeOf(Left("Sub/")));

    // As a whole it goes nowhere.
    for (const ShellOperation operation : {Recycle, Move}) {
        fs::remove_all(Left("Sub"));
        make();
        request = Expecting(operation, {"Sub"});
        drop.Write("left/Sub/kept/deep/late", "late");
        const Tree before = TreeOf(drop / "left/");
        ExpectChanged(Run(request).items.at(0), Left("Sub/kept/deep/late"));
        EXPECT_EQ(before, TreeOf(drop / "left/"));
        EXPECT_TRUE(TreeOf(drop / "right/").empty());
        fs::remove(Left("Sub/kept/deep/late"));
        EXPECT_TRUE(Run(request).AllDone());
    }

    // What a kill has left of our own is in no list, and goes.
    make();
    request = Expecting(Delete, {"Sub"});
    drop.Write("left/Sub/" + TemporaryCopyName::Make(1) + "/deep/copy", "copy");
    EXPECT_TRUE(Run(request).AllDone());
    EXPECT_FALSE(drop.Exists("left/Sub"));
}

TEST_F(ShellSeenTest, OneNameOfAFileMayGoAfterTheOther) {
    for (const ShellOperation operation : {Delete, Recycle, Move}) {
        drop.Write("left/a", "twice");
        fs::create_hard_link(Left("a"), Left("b"));
        EXPECT_TRUE(Run(Expecting(operation, {"a", "b"})).AllDone()) << static_cast<int>(operation);
        fs::remove_all(drop / "right");
        drop.MakeFolder("right");
    }
    drop.Write("left/a", "twice");
    fs::create_hard_link(Left("a"), Left("b"));
    const ShellRequest request = Expecting(Delete, {"a", "b"});
    SystemShellOperations shell = Service();
    for (const std::size_t i : {0U, 1U})
        EXPECT_TRUE(shell.DeleteOneFile({request.sources[i], {}, request.expected[i], request.roots}).IsOk());
}

TEST_F(ShellSeenTest, ARootThatWasExchangedEndsTheOperationAndIsNotMadeAnew) {
    for (const ShellOperation operation : {Copy, Move, Delete, Recycle}) {
        for (const char* side : {"left", "right"}) {
            for (const bool exchanged : {false, true}) {
                fs::remove_all(drop / "left");
                fs::remove_all(drop / "right");
                drop.MakeFolder("right");
                drop.Write("left/a", "a");
                drop.Write("left/b", "b");
                const ShellRequest request = Expecting(operation, {"a", "b"});
                fs::rename(drop / side, drop / "aside");
                if (exchanged) {
                    fs::copy(drop / "aside", drop / side, fs::copy_options::recursive);
                }
                const Tree before = TreeOf(drop.Path());
                const ShellResult result = Run(request);
                EXPECT_TRUE(result.rootLost);
                EXPECT_FALSE(result.AllDone());
                ASSERT_EQ(1U, result.troubles.size());
                EXPECT_NE(std::string::npos, result.troubles[0].error.Description().find(drop / side));
                EXPECT_EQ(before, TreeOf(drop.Path()));
                SystemShellOperations shell = Service();
                const OneFile file{Left("a"), Right("a"), {}, request.roots};
                EXPECT_EQ(kChangedSinceSeen, shell.CopyOneFile(file).Number());
                EXPECT_EQ(kChangedSinceSeen, shell.DeleteOneFile(file).Number());
                EXPECT_EQ(before, TreeOf(drop.Path()));
                fs::remove_all(drop / "aside");
            }
        }
    }
    // In the middle of the operation.
    drop.Write("left/a", "a");
    drop.Write("left/b", "b");
    const ShellRequest request = Expecting(Delete, {"a", "b"});
    bool done = false;
    calls.before = [&](const FaultySystemCalls::Record& at) {
        if (at.call != Call::Unlink || std::exchange(done, true)) return;
        fs::rename(drop / "left", drop / "aside");
        drop.Write("left/b", "another b");
    };
    const ShellResult result = Run(request);
    EXPECT_TRUE(result.rootLost);
    EXPECT_EQ(NotReached, result.items.at(1).outcome);
    EXPECT_EQ("another b", drop.Read("left/b"));
    EXPECT_EQ("b", drop.Read("aside/b"));
}

// As where a file system gives the number of a folder that was removed to the next one.
TEST_F(ShellSeenTest, AFolderOfTheSameNumberThatWasMadeAtAnotherTimeIsAnotherFolder) {
    drop.Write("left/Sub/a", "a");
    const FileTime made = SeenAt(Left("Sub")).seen.changed;
    if (made == FileTime()) GTEST_SKIP() << "the file system does not tell when a folder was made";
    const Tree before = TreeOf(drop / "left/");
    for (const ShellOperation operation : {Copy, Move, Delete, Recycle}) {
        ShellRequest request = Expecting(operation, {"Sub"});
        --request.expected[0].source.seen.changed.ticks;
        ExpectChanged(Run(request).items.at(0), Left("Sub"));
        for (const std::size_t root : {0U, 1U}) {
            request = Expecting(operation, {"Sub"});
            --request.roots[root].made.ticks;
            EXPECT_FALSE(Run(request).AllDone());
        }
        EXPECT_EQ(before, TreeOf(drop / "left/"));
        EXPECT_TRUE(TreeOf(drop / "right/").empty());
    }
    // What is done in a folder does not make another one of it, and where nobody knows the time the number
    // counts.
    ShellRequest request = Expecting(Copy, {"Sub"});
    drop.Write("left/Sub/b", "b");
    EXPECT_TRUE(Run(request).AllDone());
    request = Expecting(Delete, {"Sub"});
    request.expected[0].source.seen.changed = request.roots[0].made = {};
    EXPECT_TRUE(Run(request).AllDone());
}

TEST_F(ShellSeenTest, BelowARootNoLinkIsFollowed) {
    drop.Write("left/Sub/a", "a");
    drop.Write("right/Sub/a", "old a");
    ShellRequest request = Expecting(Copy, {"Sub/a"});
    request.target = Right("Sub");
    request.expected.clear();
    fs::rename(Right("Sub"), drop / "elsewhere");
    fs::create_directory_symlink(drop / "elsewhere", Right("Sub"));
    EXPECT_EQ(Failed, Run(request).items.at(0).outcome);
    SystemShellOperations shell = Service();
    EXPECT_FALSE(shell.CopyOneFile({Left("Sub/a"), Right("Sub/a"), {}, request.roots}).IsOk());
    EXPECT_FALSE(shell.DeleteOneFile({Right("Sub/a"), {}, {}, request.roots}).IsOk());
    for (const ShellOperation operation : {Delete, Recycle}) {
        request.operation = operation;
        request.sources = {Right("Sub/a")};
        EXPECT_EQ(kChangedSinceSeen, Run(request).items.at(0).error.Number());
    }
    EXPECT_EQ("old a", drop.Read("elsewhere/a"));
    // Nor does a path lead out of it and in again.
    for (const char* path : {"Sub/../Sub/a", "./Sub/a"}) {
        request.sources = {Left(path)};
        EXPECT_EQ(Failed, Run(request).items.at(0).outcome) << path;
    }
    EXPECT_EQ("a", drop.Read("left/Sub/a"));
}

TEST_F(ShellSeenTest, BelowARootNothingIsMergedIntoWhatALinkLeadsTo) {
    drop.Write("left/Sub/deep/b", "b");
    drop.MakeFolder("right/Sub");
    drop.MakeFolder("elsewhere");
    fs::create_directory_symlink(drop / "elsewhere", Right("Sub/deep"));
    for (const ShellOperation operation : {Copy, Move}) {
        EXPECT_EQ(Failed, Run(Expecting(operation, {"Sub"})).items.at(0).outcome);
        EXPECT_TRUE(fs::is_empty(drop / "elsewhere"));
        EXPECT_EQ("b", drop.Read("left/Sub/deep/b"));
    }
}

// Somebody works in the folders while the operation runs. Whatever he puts there stays, wherever it falls in
// between; only between the last look and the very next call nothing can help.
TEST_F(ShellSeenTest, RandomEditsBetweenPlanAndActAreNeverLost) {
    const char* given = getenv("VANTREL_RANDOM_RUNS");
    const unsigned runs = given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : 300;
    const std::vector<std::string> places{"left/over",  "left/fresh",  "left/Sub/a", "left/Sub/deep/b",
                                          "right/over", "right/fresh", "right/Sub",  "left/Sub/deep/new"};
    for (unsigned seed = 1; seed <= runs && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        for (const char* folder : {"left", "right", "home", "aside"}) fs::remove_all(drop / folder);
        drop.MakeFolder("right");
        for (const char* path : {"left/over", "left/fresh", "left/Sub/a", "left/Sub/deep/b", "right/over"})
            drop.Write(path, std::string("first ") + path);
        const ShellOperation operation = std::array{Copy, Move, Delete, Recycle}[random() % 4];
        calls.drives.clear();
        if (random() % 2 == 0) calls.drives = {drop / "left/", drop / "right/"};
        const ShellRequest request = Expecting(operation, {"over", "fresh", "Sub"});
        const std::size_t edits = 1 + random() % 3;
        std::map<std::size_t, std::string> plan;
        for (std::size_t i = 0; i < edits; ++i) plan[random() % 250] = places[random() % places.size()];
        std::vector<std::string> edited;
        std::size_t count = 0;
        calls.before = [&](const FaultySystemCalls::Record& at) {
            ++count;
            if (at.call == Call::Unlink || at.call == Call::Rename) return;
            while (!plan.empty() && plan.begin()->first <= count) {
                const fs::path path = drop / plan.begin()->second;
                const std::string content = "edited at " + std::to_string(plan.begin()->first);
                plan.erase(plan.begin());
                std::error_code error;
                // In place, or as an editor saves; what it replaces is the editor's own affair.
                fs::create_directories(path.parent_path(), error);
                if (error || fs::is_directory(path)) continue;
                if (content.size() % 2 == 0) {
                    drop.Write("aside", content);
                    fs::rename(drop / "aside", path, error);
                } else {
                    drop.Write(fs::relative(path, drop.Path()).string(), content);
                }
                edited.push_back(content);
            }
        };
        const ShellResult result = Run(request);
        calls.before = nullptr;
        const std::vector<std::string> everywhere = Contents(TreeOf(drop.Path()));
        for (std::size_t i = 0; i < edited.size(); ++i) {
            const bool editedAgain = std::ranges::count(edited, edited[i]) > 1 || i + 1 < edited.size();
            EXPECT_TRUE(editedAgain || std::ranges::count(everywhere, edited[i]) > 0) << edited[i];
        }
        for (const ShellItem& item : result.items) {
            const std::string name = fs::path(item.path).filename().string();
            if (item.outcome != Done || !edited.empty()) continue;
            EXPECT_EQ(operation == Copy, fs::exists(item.path)) << name;
        }
        NoLeftovers(TreeOf(drop.Path()));
    }
}

}  // namespace
}  // namespace vantrel::testing
