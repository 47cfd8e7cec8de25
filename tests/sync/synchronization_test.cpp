#include "sync/synchronization.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <set>

#include "support/fake_volumes.h"
#include "support/faulty_system_calls.h"
#include "sync/sync_history.h"
#include "sync_support.h"

namespace vantrel {
namespace {

using testing::ReadTree;
using testing::SyncWorld;

std::vector<testing::Tree> Trees(const SyncWorld& world) {
    return {ReadTree(world.Folder(Side::Left)), ReadTree(world.Folder(Side::Right))};
}

void MakeSmallPair(SyncWorld& world) {
    world.tools.folder.Write("left/new", "new left", 1'600'000'100);
    world.tools.folder.Write("right/new", "old right", 1'600'000'000);
    world.tools.folder.Write("left/only", "only left", 1'600'000'000);
    world.tools.folder.Write("right/gone", "only right", 1'600'000'000);
    world.tools.folder.Write("left/sub/deep", "deep left", 1'600'000'100);
    world.tools.folder.Write("right/sub/deep", "deep right", 1'600'000'000);
    world.tools.folder.Write("right/sub/extra", "deep extra", 1'600'000'000);
    world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
}

TEST(Synchronization, AsksAndRecordsAndBringsIntoLine) {
    SyncWorld world;
    MakeSmallPair(world);
    world.Compare();
    const auto report = world.AutoSync(Confirm::Yes);
    ASSERT_TRUE(report);
    EXPECT_FALSE(report->cancelled);
    EXPECT_EQ(1, world.asked);
    EXPECT_EQ(kSyncCompleted, LastRecord(world));
    EXPECT_EQ(ReadTree(world.Folder(Side::Left)), ReadTree(world.Folder(Side::Right)));
    EXPECT_TRUE(world.tools.messages.shown.empty());
    EXPECT_FALSE(world.busy.IsWaiting());
}

TEST(Synchronization, DecliningLeavesEverythingAndNoRecord) {
    SyncWorld world;
    MakeSmallPair(world);
    const auto before = ReadTree(world.Folder(Side::Right));
    world.Compare();
    world.proceed = false;
    EXPECT_FALSE(world.AutoSync(Confirm::Yes));
    EXPECT_EQ(1, world.asked);
    EXPECT_EQ(before, ReadTree(world.Folder(Side::Right)));
    EXPECT_EQ("", LastRecord(world));
}

TEST(Synchronization, SelectedObjectsOnly) {
    SyncWorld world;
    MakeSmallPair(world);
    world.Compare();
    world.selected = std::unordered_set<std::string>{"gone", "\\sub"};
    world.AutoSync();
    EXPECT_FALSE(world.tools.folder.Exists("right/gone"));
    EXPECT_FALSE(world.tools.folder.Exists("right/only"));
    EXPECT_EQ("old right", world.tools.folder.Read("right/new"));
    EXPECT_EQ("deep left", world.tools.folder.Read("right/sub/deep"));
    EXPECT_FALSE(world.tools.folder.Exists("right/sub/extra"));
}

TEST(Synchronization, ACopyGoesOverItsCounterpartOfOtherLetterCase) {
    SyncWorld world;
    world.tools.folder.Write("left/A.txt", "left", 1'600'000'100);
    world.tools.folder.Write("right/a.TXT", "right", 1'600'000'000);
    world.settings.SetSyncMethod(SyncMethod::ReplaceOlderOnRight);
    world.Compare();
    world.AutoSync();
    EXPECT_EQ("left", world.tools.folder.Read("right/a.TXT"));
    EXPECT_FALSE(world.tools.folder.Exists("right/A.txt"));
}

TEST(Synchronization, NothingBehindALinkIsDeleted) {
    SyncWorld world;
    world.tools.folder.Write("elsewhere/precious", "stays", 1'600'000'000);
    world.tools.folder.Write("left/sub/link/a", "a", 1'600'000'000);
    world.tools.folder.Write("left/top/a", "a", 1'600'000'000);
    world.tools.folder.MakeFolder("right/sub");
    for (const char* link : {"right/sub/link", "right/top"})
        std::filesystem::create_directory_symlink(world.tools.folder / "elsewhere",
                                                  world.tools.folder / link);
    world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    world.Compare();
    const auto report = world.AutoSync();
    EXPECT_FALSE(report->cancelled);
    EXPECT_EQ(
        world.tools.messages.Line(0),
        "Synchronization: Left alone: 2 object(s) of the left folder.  They, or what they would replace, lie "
        "behind a link to a folder, or belong to both folders.\r\n  " +
            (world.tools.folder / "left/sub/link/a") + "\r\n  " + (world.tools.folder / "left/top/a") +
            "\r\n\r\nLeft alone: 2 object(s) of the right folder.  They, or what they would replace, lie "
            "behind a "
            "link to a folder, or belong to both folders.\r\n  " +
            (world.tools.folder / "right/sub/link/precious") + "\r\n  " +
            (world.tools.folder / "right/top/precious"));
    EXPECT_EQ(kSyncCancelled, LastRecord(world));
    EXPECT_EQ("stays", world.tools.folder.Read("elsewhere/precious"));
    EXPECT_FALSE(world.tools.folder.Exists("elsewhere/a"));
}

// The right folder lies in the left one, below a sub-folder that the right one has as well or lacks.
TEST(Synchronization, WhatIsDoneToOneFolderIsNotDoneToTheOtherInIt) {
    for (const bool rightHasIt : {true, false}) {
        SyncWorld world;
        const testing::TempFolder& folder = world.tools.folder;
        std::filesystem::remove(folder / "right");
        std::filesystem::create_directory_symlink("left/in/right", folder / "right");
        folder.Write("left/in/right/x", "x", 1'600'000'000);
        folder.Write("left/in/right/top/z", "z", 1'600'000'000);
        folder.MakeFolder("left/top");
        if (rightHasIt) {
            folder.Write("left/in/right/in/right/x", "newer x", 1'600'000'100);
            folder.Write("left/in/right/in/y", "y", 1'600'000'000);
        }
        const testing::Tree before = ReadTree(folder / "left/in/right/");
        world.settings.SetSyncMethod(SyncMethod::MakeLeftSameAsRight);
        world.Compare();
        const auto report = world.AutoSync();
        ASSERT_TRUE(report);
        EXPECT_FALSE(report->cancelled);
        EXPECT_EQ(before, ReadTree(folder / "left/in/right/"));
        EXPECT_EQ("z", folder.Read("left/top/z"));
    }
}

// Something is done to one object after the comparison, before the plan or after it was confirmed. What it
// was done to is left alone and told, and nothing of what was not compared is lost.
TEST(Synchronization, WhatIsNoLongerWhatWasComparedIsLeftAlone) {
    const testing::TempFolder* folder = nullptr;
    const auto change = [&](const char* path) { folder->Write(path, "edited", 1'600'000'500); };
    const auto link = [&](const char* path) {
        folder->Write("elsewhere/x", "precious", 1'600'000'000);
        std::filesystem::remove_all(*folder / path);
        std::filesystem::create_symlink(*folder / "elsewhere", *folder / path);
    };
    struct Case {
        const char* what;
        std::function<void()> edit;
        const char* kept;  // holds what the edit has put there
        const char* content;
    };
    const Case cases[] = {
        {"a source of a copy", [&] { change("left/new"); }, "left/new", "edited"},
        {"a target", [&] { change("right/new"); }, "right/new", "edited"},
        {"a target that was absent", [&] { change("right/only"); }, "right/only", "edited"},
        {"an orphan to be deleted", [&] { change("right/gone"); }, "right/gone", "edited"},
        {"a file of a folder to be deleted", [&] { change("right/tree/a/b"); }, "right/tree/a/b", "edited"},
        {"a new file of a folder to be deleted", [&] { change("right/tree/n"); }, "right/tree/n", "edited"},
        {"a deep target", [&] { change("right/sub/deep"); }, "right/sub/deep", "edited"},
        {"a deep absent target", [&] { change("right/sub/more/x"); }, "right/sub/more/x", "edited"},
        {"a deep orphan", [&] { change("right/sub/extra"); }, "right/sub/extra", "edited"},
        {"a file that became a link", [&] { link("right/gone"); }, "elsewhere/x", "precious"},
        {"a parent that became a link", [&] { link("right/sub"); }, "elsewhere/x", "precious"},
    };
    for (const Case& edited : cases) {
        for (const bool keepsSizeAndTime : {false, true}) {
            SyncWorld world;
            folder = &world.tools.folder;
            MakeSmallPair(world);
            folder->Write("left/sub/more/x", "deep orphan", 1'600'000'000);
            folder->Write("right/tree/a/b", "whole", 1'600'000'000);
            world.Compare();
            // A confirmation is the last moment in which anything can happen between plan and act.
            world.whileAsked = [&] {
                edited.edit();
                if (keepsSizeAndTime)
                    std::filesystem::permissions(*folder / edited.kept, std::filesystem::perms(0640));
            };
            const auto report = world.AutoSync(Confirm::Yes);
            ASSERT_TRUE(report) << edited.what;
            EXPECT_EQ(edited.content, folder->Read(edited.kept)) << edited.what;
            EXPECT_TRUE(report->cancelled) << edited.what;
            EXPECT_LT(0U, report->notDone) << edited.what;
            EXPECT_EQ(kSyncCancelled, LastRecord(world)) << edited.what;
            ASSERT_FALSE(world.questions.troubles.empty()) << edited.what;
            EXPECT_EQ(kChangedSinceSeen, world.questions.troubles[0].error.Number()) << edited.what;
        }
    }
}

// Neither an emptied mount point nor another folder of the name is taken for the folder that was compared.
TEST(Synchronization, ARootThatIsGoneEndsTheRunAndIsNotMadeAnew) {
    for (const char* root : {"left", "right"}) {
        for (const bool replaced : {false, true}) {
            SyncWorld world;
            const testing::TempFolder& folder = world.tools.folder;
            MakeSmallPair(world);
            world.Compare();
            const std::string other = root == std::string("left") ? "right" : "left";
            const testing::Tree before = ReadTree(folder / (other + "/"));
            std::filesystem::rename(folder / root, folder / "taken away");
            if (replaced) folder.MakeFolder(root);
            const auto report = world.AutoSync();
            ASSERT_TRUE(report);
            EXPECT_TRUE(report->cancelled);
            EXPECT_EQ(0U, report->done);
            EXPECT_EQ(1U, world.questions.troubles.size());
            EXPECT_EQ(before, ReadTree(folder / (other + "/")));
            EXPECT_EQ(replaced, folder.Exists(root));
            EXPECT_TRUE(ReadTree(folder / (std::string(root) + "/")).empty());
        }
    }
}

// The folder that holds the right one is neither deleted nor copied into it, and all else goes on.
TEST(Synchronization, AFolderThatHoldsTheOtherOneIsLeftOut) {
    for (const auto method : {SyncMethod::MakeLeftSameAsRight, SyncMethod::AddOrphansToRight}) {
        SyncWorld world;
        const testing::TempFolder& folder = world.tools.folder;
        std::filesystem::remove(folder / "right");
        std::filesystem::create_directory_symlink("left/holder/right", folder / "right");
        folder.Write("left/holder/right/x", "x", 1'600'000'000);
        folder.Write("left/y", "y", 1'600'000'000);
        world.settings.SetSyncMethod(method);
        world.Compare();
        const auto report = world.AutoSync();
        ASSERT_TRUE(report);
        EXPECT_FALSE(report->cancelled);
        EXPECT_LT(0U, report->done);
        EXPECT_EQ(1U, world.tools.messages.shown.size());
        EXPECT_EQ(kSyncCancelled, LastRecord(world));
        EXPECT_EQ("x", folder.Read("left/holder/right/x"));
        EXPECT_FALSE(folder.Exists("left/holder/right/holder"));
    }
}

// Below a sub-folder, too.
TEST(Synchronization, CancelInTheErrorBoxEndsTheRun) {
    SyncWorld world;
    for (const char* name : {"sub/a", "sub/b", "sub/c"})
        world.tools.folder.Write(std::string("left/") + name, name, 1'600'000'000);
    world.tools.folder.MakeFolder("right/sub");
    world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
    world.Compare();
    world.tools.folder.Write("right/sub/a", "came up");
    world.questions.answer = ErrorAnswer::Cancel;
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->cancelled);
    EXPECT_EQ(1U, world.questions.troubles.size());
    EXPECT_EQ("came up", world.tools.folder.Read("right/sub/a"));
    EXPECT_FALSE(world.tools.folder.Exists("right/sub/b"));
}

TEST(Synchronization, AFileWhereAFolderIsToGoFailsAndIsNotCountedAsDone) {
    SyncWorld world;
    world.tools.folder.Write("left/x", "a file", 1'600'000'000);
    world.tools.folder.Write("right/x/inner", "in a folder", 1'600'000'000);
    world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
    world.Compare();
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->cancelled);
    EXPECT_EQ(0U, report->done);
    EXPECT_EQ(kSyncCancelled, LastRecord(world));
    EXPECT_EQ("in a folder", world.tools.folder.Read("right/x/inner"));
    EXPECT_FALSE(world.questions.troubles.empty());
}

// Fails the N-th system call of a run, for every N there is: every file stays wholly old or new, and an
// action counts as done only if the disk shows it.
TEST(Synchronization, AnyFailingCallLosesNothingAndIsNotCountedAsDone) {
    const std::set<std::string> contents{"new left",  "old right",  "only left", "only right",
                                         "deep left", "deep right", "deep extra"};
    const std::set<std::string> expendable{"old right", "deep right",
                                           "deep extra"};  // overwritten or deleted for good by the plan
    bool reachedEnd = false;
    for (std::size_t n = 1; !reachedEnd; ++n) {
        testing::FaultySystemCalls calls;
        SyncWorld world(&calls);
        MakeSmallPair(world);
        world.Compare();
        ASSERT_TRUE(world.results.HasResult());
        const std::vector<testing::Tree> before = Trees(world);
        calls.ResetCount();
        calls.FailAt(n, EIO);
        const auto report = world.AutoSync();
        reachedEnd = calls.Count() < n;
        calls.ClearFaults();
        // A run that did not begin was told of, and did nothing.
        ASSERT_TRUE(report || !world.tools.messages.shown.empty()) << n;
        if (!report) {
            ASSERT_EQ(before, Trees(world)) << n;
            continue;
        }

        std::set<std::string> kept;
        for (const std::string& place :
             {world.Folder(Side::Left), world.Folder(Side::Right), world.TrashFiles()})
            for (const auto& [path, state] : ReadTree(place)) {
                if (path.find("vantrel") != std::string::npos)
                    continue;  // a temporary file, told by its name
                ASSERT_TRUE(contents.contains(state.content)) << n << ": " << path << " is half written";
                kept.insert(state.content);
            }
        for (const std::string& content : contents)
            ASSERT_TRUE(kept.contains(content) || expendable.contains(content)) << n << ": lost " << content;
        for (const ActionOutcome& action : report->actions) {
            if (action.outcome != ItemOutcome::Done) continue;
            const bool copy = action.action->action == SyncAction::Copy;
            ASSERT_EQ(copy, world.tools.files.Exists(copy ? action.action->target : action.action->source))
                << n;
        }
        ASSERT_EQ(report->notDone > 0, report->cancelled) << n;
    }
}

TEST(Synchronization, WhatAKilledCopyLeftIsNeverTakenForAFile) {
    SyncWorld world;
    world.tools.folder.Write("left/.~vantrel-1f00b4c2-4711-3.tmp", "half a f");
    world.tools.folder.Write("left/sub/.~vantrel-1f00b4c2-4711-4.tmp", "half a f");
    world.tools.folder.Write("left/whole", "whole");
    world.tools.folder.MakeFolder("right/sub");
    world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    world.Compare();
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_EQ(1U, report->done);
    EXPECT_EQ(1U, ReadTree(world.Folder(Side::Right)).size());
}

// The real service, but that one file throws its error instead of giving it.
class ThrowingShell : public ShellOperations {
  public:
    explicit ThrowingShell(ShellOperations& real) : real_(real) {}
    ShellResult Run(const ShellRequest& request) override { return real_.Run(request); }
    Error CopyOneFile(const OneFile& file) override {
        if (file.path.ends_with("/one/a"))
            throw ErrorException(Error(ErrorNumber::DeviceIo, "Device I/O error"));
        return real_.CopyOneFile(file);
    }
    FinishedCopies FinishCopies() override { return real_.FinishCopies(); }
    Error DeleteOneFile(const OneFile& file) override { return real_.DeleteOneFile(file); }

  private:
    ShellOperations& real_;
};

TEST(Synchronization, AFolderThatBreaksOffLeavesTheOutcomesOfTheNextOneRight) {
    SyncWorld world;
    for (const char* name : {"one/a", "one/b", "two/c"})
        world.tools.folder.Write(std::string("left/") + name, name);
    for (const char* name : {"right/one", "right/two"}) world.tools.folder.MakeFolder(name);
    world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
    world.Compare();
    ThrowingShell shell(world.shell);
    ShellWrappers wrappers(shell, world.tools.messages);
    const SyncPlan plan = GetListOfFilesAffectedBySync(world.results, world.settings, {});
    const SyncReport report = CarryOutSync(plan, world.tools.Get(), wrappers);
    ASSERT_EQ(3U, report.actions.size());
    EXPECT_EQ(ItemOutcome::NotReached, report.actions[0].outcome);
    EXPECT_EQ(ItemOutcome::NotReached, report.actions[1].outcome);
    EXPECT_EQ(ItemOutcome::Done, report.actions[2].outcome);
    EXPECT_TRUE(report.cancelled);
    EXPECT_TRUE(world.tools.folder.Exists("right/two/c"));
    EXPECT_EQ(1U, world.tools.messages.shown.size());
}

TEST(Synchronization, LowSpaceIsAskedAboutAndCancelDoesNothing) {
    SyncWorld world;
    MakeSmallPair(world);
    world.Compare();
    testing::FakeVolumes volumes;
    volumes.drives["/"].space = Currency::FromWhole(1);
    Toolbox tools{{world.tools.files, volumes, world.tools.clock, world.tools.locale, world.tools.folders,
                   world.tools.messages, world.tools.loop},
                  world.tools.reporter,
                  world.tools.log};
    Synchronization sync(tools, world.wrappers, world.busy);
    world.tools.messages.answers = {MessageAnswer::Cancel};
    EXPECT_FALSE(sync.AutoSync(world.Order(), world));
    EXPECT_EQ(
        "There may not be enough space available on drive /.\r\n\r\nSpace Required: 7 Bytes\r\nSpace "
        "Available: 1 "
        "Byte\r\n\r\nPress OK to continue with the synchronization, or Cancel to abort.",
        world.tools.messages.shown.at(0).text);
    EXPECT_TRUE(world.tools.folder.Exists("right/gone"));
}

}  // namespace
}  // namespace vantrel
