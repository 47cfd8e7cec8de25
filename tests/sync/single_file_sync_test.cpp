// One file made the same as another: the target is wholly old or wholly new, and what the user did not see is
// left alone.
#include "sync/single_file_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/faulty_system_calls.h"
#include "sync_support.h"

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using testing::Call;
using ::testing::ElementsAre;
using testing::FakeVolumes;
using testing::FaultySystemCalls;
using testing::SkippingQuestions;
using testing::TestToolbox;

constexpr const char* kDone = "File Sync: File synchronization completed successfully.";

// Two files in two folders, and all that a single sync needs.
class Stage {
  public:
    Stage() {
        tools.folder.Write("a/one", "content of one", 1'500'000'000);
        tools.folder.Write("b/two", "what stood in two before", 1'600'000'000);
    }
    std::string Path(Side side) const { return tools.folder / (side == Side::Left ? "a/one" : "b/two"); }
    SingleFileSync Open() { return {around, wrappers, {{Path(Side::Left), Path(Side::Right)}}}; }
    std::optional<SyncedPair> Replace(Side target) { return Open().Replace(target); }
    std::string Content(Side side) const { return tools.folder.Read(side == Side::Left ? "a/one" : "b/two"); }
    std::vector<std::string> Told() const {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < tools.messages.shown.size(); ++i) lines.push_back(tools.messages.Line(i));
        return lines;
    }

    FaultySystemCalls calls;
    TestToolbox tools{calls};
    FakeVolumes drives;
    NoShellProgress progress{tools.loop};
    SkippingQuestions questions;
    SystemShellOperations shell{{tools.files, drives, tools.clock, tools.loop, progress, questions, {}}};
    ShellWrappers wrappers{shell, tools.messages};
    Toolbox around{
        {tools.files, drives, tools.clock, tools.locale, tools.folders, tools.messages, tools.loop},
        tools.reporter,
        tools.log};
};

TEST(SingleFileSync, MakesEitherFileTheSame) {
    for (const Side target : kBothSides) {
        Stage stage;
        const std::string wanted = stage.Content(Other(target));
        const auto synced = stage.Replace(target);
        ASSERT_TRUE(synced);
        for (const Side side : kBothSides) {
            EXPECT_EQ(stage.Content(side), wanted);
            struct stat now {};
            ASSERT_EQ(0, stat(stage.Path(side).c_str(), &now));
            EXPECT_EQ(now.st_mtime, target == Side::Right ? 1'500'000'000 : 1'600'000'000);
            EXPECT_EQ(synced->seen[side].seen.id.inode, now.st_ino);
        }
        EXPECT_EQ(synced->size, wanted.size());
        EXPECT_THAT(stage.Told(), ElementsAre(kDone));
        // Nothing of our own is left beside them.
        EXPECT_EQ(std::distance(fs::directory_iterator(stage.tools.folder / "a"), {}), 1);
        EXPECT_EQ(std::distance(fs::directory_iterator(stage.tools.folder / "b"), {}), 1);
    }
}

TEST(SingleFileSync, SpaceIsAskedForOnlyWhereTheTargetGrows) {
    Stage stage;
    stage.drives.drives["/"].space = Currency::FromWhole(9);  // it grows by 10 bytes
    EXPECT_FALSE(stage.Replace(Side::Left));
    EXPECT_THAT(stage.Told(), ElementsAre("File Sync: Not enough space on drive / to synchronize files."));
    EXPECT_EQ(stage.tools.messages.shown[0].icon, MessageIcon::Warning);
    EXPECT_EQ(stage.Content(Side::Left), "content of one");
    stage.drives.drives["/"].space = Currency::FromWhole(10);
    EXPECT_TRUE(stage.Replace(Side::Left));

    Stage other;
    other.drives.drives["/"].ready = false;
    EXPECT_FALSE(other.Replace(Side::Left));
    EXPECT_THAT(other.Told(), ElementsAre("File Sync: Problems accessing the target drive."));
    EXPECT_EQ(other.tools.messages.shown[0].icon, MessageIcon::Stop);
    EXPECT_TRUE(other.Replace(Side::Right)) << "a smaller source needs no look at the drive";
}

// What became of a file between the opening of the window and OK.
TEST(SingleFileSync, WhatWasNotSeenIsLeftAlone) {
    enum Change { Edited, Exchanged, Linked, Folder, Special, OtherFolder };
    for (const Side changed : kBothSides) {
        for (const Change change : {Edited, Exchanged, Linked, Folder, Special, OtherFolder}) {
            SCOPED_TRACE(std::to_string(static_cast<int>(changed)) + std::to_string(change));
            Stage stage;
            SingleFileSync sync = stage.Open();
            const std::string path = stage.Path(changed), folder = fs::path(path).parent_path();
            stage.tools.folder.Write("elsewhere", "not to be touched", 1'400'000'000);
            if (change == Edited) fs::resize_file(path, 3);
            if (change == OtherFolder) {
                fs::rename(folder, folder + ".gone");
                fs::create_directory(folder);
                fs::copy_file(folder + ".gone/" + fs::path(path).filename().string(), path);
            }
            if (change == Exchanged || change == Linked || change == Folder || change == Special)
                fs::remove(path);
            if (change == Exchanged) fs::copy_file(stage.tools.folder / "elsewhere", path);
            if (change == Linked) fs::create_symlink(stage.tools.folder / "elsewhere", path);
            if (change == Folder) fs::create_directory(path);
            if (change == Special) {
                ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
            }
            struct stat before {
            }, after{};
            ASSERT_EQ(0, lstat(stage.Path(Side::Right).c_str(), &before));
            EXPECT_FALSE(sync.Replace(Side::Right));
            ASSERT_EQ(0, lstat(stage.Path(Side::Right).c_str(), &after));
            EXPECT_EQ(before.st_ino, after.st_ino);
            EXPECT_EQ(before.st_ctime, after.st_ctime);
            EXPECT_EQ(stage.tools.folder.Read("elsewhere"), "not to be touched");
            EXPECT_TRUE(stage.Told().empty()) << stage.Told().front();
            ASSERT_EQ(1U, stage.questions.troubles.size());
            EXPECT_EQ(kChangedSinceSeen, stage.questions.troubles[0].error.Number());
        }
    }
}

TEST(SingleFileSync, AMissingTargetIsMadeAndAMissingSourceIsAnError) {
    for (const bool sinceOpened : {false, true}) {
        Stage stage;
        if (!sinceOpened) fs::remove(stage.Path(Side::Right));
        SingleFileSync sync = stage.Open();
        fs::remove(stage.Path(Side::Right));
        EXPECT_TRUE(sync.Replace(Side::Right));
        EXPECT_EQ(stage.Content(Side::Right), "content of one");
        fs::remove(stage.Path(Side::Left));
        EXPECT_THROW((void)sync.Replace(Side::Right), ErrorException);
        EXPECT_EQ(stage.Content(Side::Right), "content of one");
    }
}

TEST(SingleFileSync, LinksAreTakenAsLinksAndOneFileIsNotCopiedOntoItself) {
    Stage stage;
    stage.tools.folder.Write("elsewhere", "stays");
    fs::remove(stage.Path(Side::Right));
    fs::create_symlink("../elsewhere", stage.Path(Side::Right));
    EXPECT_TRUE(stage.Replace(Side::Right)) << "the link goes, not what it leads to";
    EXPECT_FALSE(fs::is_symlink(stage.Path(Side::Right)));
    EXPECT_EQ(stage.tools.folder.Read("elsewhere"), "stays");

    for (const bool hard : {false, true}) {
        stage.tools.messages.shown.clear();
        fs::remove(stage.Path(Side::Right));
        if (hard)
            fs::create_hard_link(stage.Path(Side::Left), stage.Path(Side::Right));
        else
            fs::create_symlink(stage.Path(Side::Left), stage.Path(Side::Right));
        for (const Side target : kBothSides) EXPECT_FALSE(stage.Replace(target));
        EXPECT_THAT(stage.Told(), ElementsAre("File Sync: File 1 and File 2 are the same file.",
                                              "File Sync: File 1 and File 2 are the same file."));
        EXPECT_EQ(stage.Content(Side::Left), "content of one");
    }
}

TEST(SingleFileSync, AReadOnlyTargetIsReplacedAndAReadOnlyFolderKeepsIt) {
    Stage stage;
    ASSERT_EQ(0, chmod(stage.Path(Side::Right).c_str(), 0444));
    EXPECT_TRUE(stage.Replace(Side::Right));
    EXPECT_EQ(stage.Content(Side::Right), "content of one");

    Stage closed;
    closed.calls.FailAll(Call::Rename, EACCES);
    EXPECT_FALSE(closed.Replace(Side::Right));
    EXPECT_EQ(closed.Content(Side::Right), "what stood in two before");
    EXPECT_TRUE(closed.Told().empty());
    ASSERT_EQ(1U, closed.questions.troubles.size());
}

// Whichever call fails, and with a full disk at whichever write: the target is wholly old or wholly new, the
// source is what it was, and success is told only where the new content is there.
TEST(SingleFileSyncFaults, ATargetIsWhollyOldOrWhollyNew) {
    for (const int code : {EIO, ENOSPC, EACCES}) {
        std::size_t replaced = 0, kept = 0;
        bool reached = true;
        for (std::size_t number = 1; reached; ++number) {
            SCOPED_TRACE("call " + std::to_string(number) + ", error " + std::to_string(code));
            Stage stage;
            stage.calls.ResetCount();
            stage.calls.FailAt(number, code);
            std::optional<SyncedPair> synced;
            bool threw = false;
            try {
                synced = stage.Replace(Side::Right);
            } catch (const ErrorException& error) {
                threw = true;
                EXPECT_NE("", error.Get().Description());
            }
            reached = stage.calls.Count() >= number;
            stage.calls.ClearFaults();
            EXPECT_EQ(stage.Content(Side::Left), "content of one");
            const std::string now = stage.Content(Side::Right);
            const bool isNew = now == "content of one";
            EXPECT_TRUE(isNew || now == "what stood in two before") << now;
            EXPECT_TRUE(isNew || !synced);
            isNew ? ++replaced : ++kept;
            const std::vector<std::string> told = stage.Told();
            EXPECT_EQ(synced.has_value(), !told.empty() && told.front() == kDone);
            EXPECT_TRUE(synced || threw || !told.empty() || !stage.questions.troubles.empty())
                << "failed in silence";
        }
        EXPECT_GT(replaced, 0U);
        EXPECT_GT(kept, 0U);
    }
}

}  // namespace
}  // namespace vantrel
