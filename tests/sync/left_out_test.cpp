// What a plan leaves out, passes over or tells beside its actions, and what a failure does to the rest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "support/faulty_system_calls.h"
#include "support/plain_user.h"
#include "sync/sync_history.h"
#include "sync_support.h"

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using testing::SyncWorld;

SyncPlan PlanOf(SyncWorld& world, SyncMethod method, const TrashPlaces& trash = {}) {
    world.settings.SetSyncMethod(method);
    world.Compare();
    return MakeSyncPlan(world.tools.Get(), world.Order(), trash);
}

// A run that leaves something out tells it once with its path, does the rest, and is no success.
void ExpectLeftOut(SyncWorld& world, const std::string& path, const std::string& why) {
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_FALSE(report->IsWhole());
    EXPECT_FALSE(report->cancelled);
    ASSERT_EQ(1U, world.tools.messages.shown.size());
    EXPECT_THAT(world.tools.messages.shown[0].text, HasSubstr("\r\n  " + (world.tools.folder / path)));
    EXPECT_THAT(world.tools.messages.shown[0].text, HasSubstr(why));
    EXPECT_EQ(kSyncCancelled, LastRecord(world));
    EXPECT_TRUE(world.tools.folder.Exists("right/other"));
}

TEST(LeftOut, WhatIsNotKnownOccupiesItsName) {
    for (const bool deep : {false, true}) {
        SyncWorld world;
        const testing::TempFolder& folder = world.tools.folder;
        const std::string name = deep ? "sub/x" : "x";
        folder.Write("left/other", "other");
        folder.Write("right/" + name, "precious");
        folder.MakeFolder("left/sub");
        ASSERT_EQ(0, mkfifo((folder / ("left/" + name)).c_str(), 0600));
        const LeftOut leftOut = PlanOf(world, SyncMethod::MakeRightSameAsLeft).leftOut;
        EXPECT_EQ(1U, leftOut.Count(Side::Left, LeftOutReason::Unknown));
        EXPECT_EQ(0U, leftOut.Count(Side::Right, LeftOutReason::Unknown));
        ExpectLeftOut(world, "left/" + name, "could not be looked at, or are no file and no folder");
        EXPECT_EQ("precious", folder.Read("right/" + name));
    }
}

TEST(LeftOut, AnOrphanFolderNotReadWholeIsNotDeletedAndOnlyThenCalledSo) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    folder.Write("left/other", "other");
    folder.MakeFolder("right/dark/closed");
    ASSERT_EQ(0, chmod((folder / "right/dark/closed").c_str(), 0));
    testing::AsPlainUser(folder, [&] {
        // The plan that copies it does not speak of deleting.
        EXPECT_TRUE(PlanOf(world, SyncMethod::AddOrphansToLeft).leftOut.IsEmpty());
        PlanOf(world, SyncMethod::MakeRightSameAsLeft);
        ExpectLeftOut(world, "right/dark", "what is not known is not deleted");
    });
    EXPECT_TRUE(folder.Exists("right/dark/closed"));
}

TEST(LeftOut, AnOrphanFolderThatCannotBeReadAnyMoreLeavesThePlan) {
    testing::FaultySystemCalls calls;
    SyncWorld world(&calls);
    world.tools.folder.Write("left/other", "other");
    world.tools.folder.Write("right/gone/file", "x");
    PlanOf(world, SyncMethod::MakeRightSameAsLeft);
    calls.FailAll(testing::Call::GetDents, EIO);
    const SyncPlan plan = MakeSyncPlan(world.tools.Get(), world.Order());
    EXPECT_TRUE(plan.deletes[Side::Right].empty());
    EXPECT_EQ(1U, plan.leftOut.Count(Side::Right, LeftOutReason::NotWhollyKnown));
}

// What a plan says of the folders that go whole, in its order.
std::vector<std::string> WholeFolders(const SyncPlan& plan) {
    std::vector<std::string> lines{plan.leftOut.Describe(), std::to_string(plan.specialObjects)};
    plan.ForEach([&](const PlannedAction& action) {
        const FolderContents& contents = action.contents;
        std::string line = action.source;
        for (const std::uint64_t count : {contents.objects, contents.filteredOut, contents.specialObjects})
            line += " " + std::to_string(count);
        line += " " + std::to_string(contents.bytes.Whole());
        if (action.expected.below) line += " " + std::to_string(action.expected.below->size());
        lines.push_back(std::move(line));
    });
    return lines;
}

TEST(LeftOut, FoldersLookedIntoSideBySideGiveThePlanOfOneByOne) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    folder.Write("left/other", "other");
    for (int number = 0; number < 24; ++number) {
        const std::string name = (number % 3 == 0 ? "left/f" : "right/f") + std::to_string(number);
        for (int file = 0; file < number; ++file)
            folder.Write(name + "/deep/" + std::to_string(file),
                         std::string(static_cast<std::size_t>(file), 'x'));
        folder.MakeFolder(name + "/closed");
        const mode_t mode = number % 5 == 0 ? 0 : 0755;
        ASSERT_EQ(0, chmod((folder / (name + "/closed")).c_str(), mode));
        ASSERT_EQ(0, mkfifo((folder / (name + "/fifo")).c_str(), 0600));
    }
    testing::AsPlainUser(folder, [&] {
        world.compare.Jobs = 1;
        const std::vector<std::string> alone = WholeFolders(PlanOf(world, SyncMethod::MakeRightSameAsLeft));
        EXPECT_EQ(2U + 1 + 8 + 13, alone.size()) << "of 16 folders on the right 3 are not wholly known";
        world.compare.Jobs = 4;
        EXPECT_EQ(alone, WholeFolders(PlanOf(world, SyncMethod::MakeRightSameAsLeft)));
    });
}

// By what it is: no name tells that these are trash folders.
TEST(LeftOut, TheUsersTrashTakesPartInNothing) {
    for (const bool otherHasFolder : {false, true}) {
        for (const SyncMethod method : {SyncMethod::AddOrphansToRight, SyncMethod::MakeLeftSameAsRight}) {
            SyncWorld world;
            const testing::TempFolder& folder = world.tools.folder;
            folder.Write("left/share/bin/files/thrown away", "x");
            folder.Write("right/other", "other");
            if (otherHasFolder) folder.MakeFolder("right/share/bin/files");
            // The trash is reached by another spelling of its path.
            fs::create_directory_symlink(folder / "left/share", folder / "spelling");
            const TrashPlaces places{folder / "spelling/bin", 0};
            Synchronization sync(world.tools.Get(), world.wrappers, world.busy, places);
            world.settings.SetSyncMethod(method);
            world.Compare();
            const auto report = sync.AutoSync(world.Order(), world);
            ASSERT_TRUE(report);
            EXPECT_TRUE(report->leftOut);
            EXPECT_FALSE(report->cancelled);
            EXPECT_TRUE(folder.Exists("left/share/bin/files/thrown away"));
            EXPECT_FALSE(folder.Exists("right/share/bin/files/thrown away"));
            EXPECT_EQ(otherHasFolder, folder.Exists("right/share"));
            EXPECT_EQ(kSyncCancelled, LastRecord(world));
        }
    }
}

TEST(LeftOut, SpecialObjectsWithoutACounterpartAreCountedAndNoTrouble) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    folder.Write("left/whole/file", "x");
    folder.Write("left/sub/file", "x");
    folder.MakeFolder("right/sub");
    for (const char* path : {"left/fifo", "left/whole/fifo", "left/sub/fifo"})
        ASSERT_EQ(0, mkfifo((folder / path).c_str(), 0600));
    const SyncPlan plan = PlanOf(world, SyncMethod::MakeRightSameAsLeft);
    EXPECT_EQ("3 special objects passed over.", DescribeNotes(plan));
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->IsWhole());
    EXPECT_TRUE(world.tools.messages.shown.empty());
    EXPECT_EQ(kSyncCompleted, LastRecord(world));
    EXPECT_EQ("x", folder.Read("right/whole/file"));
    EXPECT_FALSE(folder.Exists("right/whole/fifo"));
}

TEST(LeftOut, TellsWhatGoesAlthoughTheFiltersLeaveItOut) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    for (const char* path :
         {"left/new/a.c", "left/new/a.tmp", "right/old/b.tmp", "right/old/in/.git/c.c", "right/old/in/d.c"})
        folder.Write(path, "x");
    EXPECT_EQ("", DescribeNotes(PlanOf(world, SyncMethod::MakeRightSameAsLeft)));
    world.compare.ExcludeFilters = "*.tmp";
    world.compare.ExcludeHiddenFolders = true;
    EXPECT_EQ(
        "3 objects that the filters leave out will be deleted with the folders they lie in.\r\n"
        "1 object that the filters leave out will be copied with the folders they lie in.",
        DescribeNotes(PlanOf(world, SyncMethod::MakeRightSameAsLeft)));
}

TEST(LeftOut, SaysWhereALinkTakesAFilesPlace) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    for (const char* name : {"up", "sub/down", "plain"}) {
        folder.Write(std::string("left/") + name, "newer", 1'600'000'100);
        folder.Write(std::string("right/") + name, "old", 1'600'000'000);
    }
    folder.Write("target", "newest of all", 1'600'000'200);
    for (const char* linked : {"left/up", "right/sub/down"}) {
        fs::remove(folder / linked);
        fs::create_symlink(folder / "target", folder / linked);
    }
    const SyncPlan plan = PlanOf(world, SyncMethod::MakeRightSameAsLeft);
    EXPECT_EQ(
        "A link is put in a file's place by 1 copy action.\r\n"
        "A file is put in a link's place by 1 copy action.",
        DescribeNotes(plan));
    ASSERT_EQ(2U, plan.copies[Side::Left].size());
    for (const PlannedAction& action : plan.copies[Side::Left])
        EXPECT_EQ(action.name == "up" ? LinkChange::LinkForFile : LinkChange::None, action.linkChange);
}

// A copy takes what the object itself takes, whatever the sizes shown say.
TEST(LeftOut, SpaceCountsTrueSizes) {
    SyncWorld world;
    const testing::TempFolder& folder = world.tools.folder;
    constexpr std::uintmax_t kHuge = std::uintmax_t{3} << 30;
    for (const char* path : {"huge", "left/sparse", "right/sparse", "left/whole/sparse"})
        folder.Write(path, "");
    fs::resize_file(folder / "huge", kHuge);
    fs::resize_file(folder / "left/sparse", kHuge);
    fs::resize_file(folder / "left/whole/sparse", kHuge);
    fs::create_symlink(folder / "huge", folder / "left/link");
    fs::create_symlink(folder / "huge", folder / "left/whole/link");
    const auto link = static_cast<std::int64_t>((folder / "huge").size());
    const SyncPlan plan = PlanOf(world, SyncMethod::MakeRightSameAsLeft);
    EXPECT_EQ(Currency::FromWhole(2 * (static_cast<std::int64_t>(kHuge) + link)),
              SpaceNeededBySync(plan).outgoing[Side::Left]);
}

TEST(LeftOut, ADriveThatIsGoneEndsTheRunBeforeItBegins) {
    SyncWorld world;
    world.tools.folder.Write("left/file", "x");
    world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    world.Compare();
    testing::FakeVolumes volumes;
    volumes.drives["/"].ready = false;
    const Toolbox tools{{world.tools.files, volumes, world.tools.clock, world.tools.locale,
                         world.tools.folders, world.tools.messages, world.tools.loop},
                        world.tools.reporter,
                        world.tools.log};
    EXPECT_FALSE(Synchronization(tools, world.wrappers, world.busy, {}).AutoSync(world.Order(), world));
    ASSERT_EQ(1U, world.tools.messages.shown.size());
    EXPECT_EQ("Synchronization: Problems accessing the target drive.", world.tools.messages.Line(0));
    EXPECT_FALSE(world.tools.folder.Exists("right/file"));
}

TEST(SyncFailures, EndThePhasesThatFollowUnlessTheRunIsToGoOn) {
    for (const bool goesOn : {false, true}) {
        SyncWorld world;
        const testing::TempFolder& folder = world.tools.folder;
        folder.Write("left/x", "a file", 1'600'000'000);
        folder.Write("right/x/inner", "in a folder", 1'600'000'000);
        folder.Write("left/sub/deep", "deep", 1'600'000'000);
        folder.MakeFolder("right/sub");
        world.options.goOnAfterFailure = goesOn;
        world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
        world.Compare();
        const auto report = world.AutoSync();
        ASSERT_TRUE(report);
        EXPECT_TRUE(report->cancelled);
        EXPECT_EQ(goesOn, folder.Exists("right/sub/deep"));
        EXPECT_EQ(kSyncCancelled, LastRecord(world));
        // Each trouble stands in the report once, with its action and full path.
        ASSERT_EQ(1U, report->troubles.size());
        EXPECT_EQ(folder / "left/x", report->troubles[0].path);
        ASSERT_NE(nullptr, report->troubles[0].action);
        EXPECT_EQ("x", report->troubles[0].action->name);
    }
}

TEST(SyncFailures, TheUsersCancelEndsARunThatGoesOnAfterFailures) {
    SyncWorld world;
    world.tools.folder.Write("left/x", "a file");
    world.tools.folder.MakeFolder("right/x");
    world.tools.folder.Write("left/sub/deep", "deep");
    world.tools.folder.MakeFolder("right/sub");
    world.options.goOnAfterFailure = true;
    world.questions.answer = ErrorAnswer::Cancel;
    world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
    world.Compare();
    EXPECT_TRUE(world.AutoSync()->cancelled);
    EXPECT_FALSE(world.tools.folder.Exists("right/sub/deep"));
}

TEST(SyncFailures, TimesThatCouldNotBeKeptAreCountedAndTold) {
    testing::FaultySystemCalls calls;
    SyncWorld world(&calls);
    for (const char* name : {"left/a", "left/sub/b", "left/sub/c"}) world.tools.folder.Write(name, name);
    world.tools.folder.MakeFolder("right/sub");
    world.settings.SetSyncMethod(SyncMethod::AddOrphansToRight);
    world.Compare();
    for (const testing::Call call : {testing::Call::Futimens, testing::Call::Utimens})
        calls.FailAll(call, EPERM);
    const auto report = world.AutoSync();
    ASSERT_TRUE(report);
    EXPECT_TRUE(report->IsWhole());
    EXPECT_EQ("The time of 3 files could not be kept.", DescribeEnd(*report));
    EXPECT_EQ("", DescribeEnd(SyncReport()));
}

// The real service, but one single copy does not come to its name.
class LateFailure : public ShellOperations {
  public:
    explicit LateFailure(ShellOperations& real) : real_(real) {}
    ShellResult Run(const ShellRequest& request) override { return real_.Run(request); }
    Error CopyOneFile(const OneFile& file) override {
        if (file.path.ends_with("/b")) failed_.push_back({file.path, file.target, Error::FromErrno(ENOSPC)});
        return file.path.ends_with("/b") ? Error() : real_.CopyOneFile(file);
    }
    FinishedCopies FinishCopies() override {
        FinishedCopies finished = real_.FinishCopies();
        finished.failed.insert(finished.failed.end(), failed_.begin(), failed_.end());
        return finished;
    }
    Error DeleteOneFile(const OneFile& file) override { return real_.DeleteOneFile(file); }

  private:
    ShellOperations& real_;
    std::vector<FailedCopy> failed_;
};

TEST(SyncFailures, ACopyThatDoesNotComeToItsNameIsTheOnlyOneThatFailed) {
    SyncWorld world;
    for (const char* name : {"left/sub/a", "left/sub/b", "left/sub/c"}) world.tools.folder.Write(name, name);
    world.tools.folder.MakeFolder("right/sub");
    LateFailure shell(world.shell);
    ShellWrappers wrappers(shell, world.tools.messages);
    const SyncPlan plan = PlanOf(world, SyncMethod::AddOrphansToRight);
    const SyncReport report = CarryOutSync(plan, world.tools.Get(), wrappers);
    EXPECT_TRUE(report.cancelled);
    EXPECT_EQ(2U, report.done);
    EXPECT_EQ(1U, report.notDone);
    for (const ActionOutcome& each : report.actions)
        EXPECT_EQ(each.action->name != "b", each.outcome == ItemOutcome::Done) << each.action->name;
    EXPECT_EQ(
        "Not copied: \"" + (world.tools.folder / "right/sub/b") + "\": Disk full (No space left on device)",
        DescribeEnd(report));
}

}  // namespace
}  // namespace vantrel
