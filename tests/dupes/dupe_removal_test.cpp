#include "dupes/dupe_removal.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "dupes/same_contents.h"
#include "removal_support.h"
#include "support/child_process.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::Cases;
using testing::DupeRemovalTest;
using testing::FaultySystemCalls;
using testing::ForkAlone;
using testing::Groups;
using testing::TreeOf;

TEST_F(DupeRemovalTest, EachMethodTakesTheFileToItsPlace) {
    const std::map<RemovalMethod, std::string> places{
        {RemovalMethod::Delete, ""},
        {RemovalMethod::Recycle, drop / "trash/files/a.txt"},
        {RemovalMethod::MoveToDupesFolder, tools.folder / "DUPES" + In("x/a.txt")},
        {RemovalMethod::MoveToOtherFolder, drop / "moved/a.txt"}};
    for (const auto& [method, place] : places) {
        for (const auto* name : {"a.txt", "x/a.txt", "y/a.txt"}) Write(name, "same");
        FindAll();
        Mark({"x/a.txt"});
        EXPECT_EQ("1 files marked, 4 Bytes to win, 2 kept", Results().Totals().Text());
        settings.SetRemoveMethod(method);
        const RemovalReport report = Remove();
        EXPECT_EQ(1U, report.removed);
        EXPECT_FALSE(drop.Exists("in/x/a.txt"));
        EXPECT_TRUE(place.empty() || std::filesystem::exists(place)) << place;
        EXPECT_EQ((Groups{{In("a.txt"), In("y/a.txt")}}), Found());
        EXPECT_EQ("2 duplicates found in 1 groups.  (8 Bytes)", progress.statuses.back());
        EXPECT_TRUE(Results().IsConsistent());
    }
    EXPECT_TRUE(tools.messages.shown.empty());
}

TEST_F(DupeRemovalTest, WarnsOnceAndAsksForMarks) {
    settings.SetRemoveWarningShown(false);
    for (const auto* name : {"a", "x/a"}) Write(name, "same");
    FindAll();
    Remove();
    ASSERT_EQ(1U, tools.messages.shown.size());
    EXPECT_EQ(
        "Remove Files: No files have been checkmarked.\r\n\r\nTo checkmark a file for removal, \r\nclick "
        "once "
        "in the box to the left of the file.",
        tools.messages.Line(0));
    Mark({"x/a"});
    EXPECT_FALSE(Remove().begun);
    ASSERT_EQ(2U, tools.messages.shown.size());
    EXPECT_TRUE(
        tools.messages.Line(1).starts_with("Remove Files: Rule of thumb for deleting duplicate files"));
    EXPECT_EQ(MessageAnswer::Cancel, tools.messages.shown[1].defaultAnswer);
    EXPECT_TRUE(drop.Exists("in/x/a"));
    EXPECT_EQ(1U, Remove().removed);  // without another warning
    EXPECT_EQ(2U, tools.messages.shown.size());
    EXPECT_EQ(Groups(), Found());
}

TEST_F(DupeRemovalTest, AsksBeforeTheLastCopyGoes) {
    for (const auto* name : {"a", "x/a", "b", "x/b"}) Write(name, "same");
    FindAll();
    Mark({"a", "x/a", "b"});
    EXPECT_FALSE(Remove().begun);
    ASSERT_EQ(1U, tools.messages.shown.size());
    EXPECT_NE(std::string::npos, tools.messages.Line(0).find("a - (2 files)"));
    EXPECT_EQ(std::string::npos, tools.messages.Line(0).find("b - (2 files)"));
    EXPECT_EQ(MessageAnswer::No, tools.messages.shown[0].defaultAnswer);
    EXPECT_TRUE(drop.Exists("in/a"));
    tools.messages.answers = {MessageAnswer::Yes};
    EXPECT_EQ(3U, Remove().removed);
    EXPECT_EQ(Groups(), Found());
    EXPECT_EQ("0 duplicates found in 0 groups.  (0 Bytes)", progress.statuses.back());
}

TEST_F(DupeRemovalTest, WhatIsNotWhatWasFoundStaysAndIsTold) {
    for (const auto* name : {"changed", "gone", "link", "differs", "fifo"})
        for (const std::string folder : {"", "x/"}) Write(folder + name, "same");
    Write("differs", "SAME");
    settings.SetRemoveMethod(RemovalMethod::Delete);
    FindAll();
    Mark({"x/changed", "x/gone", "x/link", "x/differs", "x/fifo"});
    Write("x/changed", "more");
    for (const auto* name : {"x/gone", "x/link", "x/fifo"}) unlink(In(name).c_str());
    ASSERT_EQ(0, symlink(In("link").c_str(), In("x/link").c_str()));
    ASSERT_EQ(0, mkfifo(In("x/fifo").c_str(), 0600));
    const auto before = TreeOf(drop.Path());
    const RemovalReport report = Remove();
    EXPECT_EQ(0U, report.removed);
    EXPECT_EQ(5U, report.leftAlone);
    EXPECT_EQ(before, TreeOf(drop.Path()));
    ASSERT_EQ(1U, tools.messages.shown.size());
    for (const auto* name : {"x/changed: it is gone", "x/gone: it is gone", "x/link: it is gone",
                             "x/fifo: it is gone", "x/differs: its contents differ"})
        EXPECT_NE(std::string::npos, tools.messages.Line(0).find(In(name))) << tools.messages.Line(0);
    // Without the check the names were all that counted.
    options.checkBeforeRemoval = false;
    EXPECT_EQ(1U, Remove().removed);
    EXPECT_FALSE(drop.Exists("in/x/differs"));
}

TEST_F(DupeRemovalTest, TheOneThatStaysMustBeReadable) {
    for (const auto* name : {"a", "x/a"}) Write(name, "same");
    FindAll();
    Mark({"x/a"});
    unlink(In("a").c_str());
    EXPECT_EQ(1U, Remove().leftAlone);
    // The same file under another name is no second copy.
    ASSERT_EQ(0, link(In("x/a").c_str(), In("a").c_str()));
    ReadFile now;
    ASSERT_TRUE(tools.files.OpenForReading(In("x/a"), now).IsOk());
    EXPECT_EQ(SameContents::SecondUnreadable,
              CompareContents(tools.files, In("x/a"), now.Seen(), In("a"), [] {}));
    EXPECT_TRUE(drop.Exists("in/x/a"));
}

TEST_F(DupeRemovalTest, AFailureIsToldAndTheRestGoesOn) {
    for (const auto* name : {"a", "x/a", "y/a"}) Write(name, "same");
    const std::map<RemovalMethod, std::string> texts{
        {RemovalMethod::Delete, "Delete failed."},
        {RemovalMethod::Recycle, "Send To Recycle Bin failed."},
        {RemovalMethod::MoveToDupesFolder, "Move to DUPES folder failed."},
        {RemovalMethod::MoveToOtherFolder, ""}};
    for (const auto& [method, text] : texts) {
        FindAll();
        Mark({"x/a", "y/a"});
        settings.SetRemoveMethod(method);
        calls.FailAll(testing::Call::Unlink, EROFS);
        calls.FailAll(testing::Call::Rename, EROFS);
        calls.FailAll(testing::Call::Link, EROFS);
        const RemovalReport report = Remove();
        calls.ClearFaults();
        EXPECT_EQ(2U, report.failed);
        ASSERT_EQ(2U, tools.messages.shown.size());
        EXPECT_EQ("Removal Failed: " + text + "\r\nFile: " + In("x/a") +
                      "\r\nError #: 30\r\nError Desc: " + GetErrorText(EROFS),
                  tools.messages.Line(0));
        EXPECT_EQ(MessageIcon::Stop, tools.messages.shown[0].icon);
        tools.messages.shown.clear();
        EXPECT_EQ(3U, Results().DuplicateCount());
    }
}

TEST_F(DupeRemovalTest, AsksBeforeItOverwritesInTheOtherFolder) {
    for (const auto* name : {"a", "x/a"}) Write(name, "same");
    drop.Write("moved/a", "there");
    settings.SetRemoveMethod(RemovalMethod::MoveToOtherFolder);
    FindAll();
    Mark({"x/a"});
    EXPECT_EQ(1U, Remove().skipped);
    ASSERT_EQ(1U, tools.messages.shown.size());
    EXPECT_EQ(
        "File Already Exists: A problem was encountered moving the file\r\n\r\nProblem: A file with this "
        "name "
        "already exists in the destination folder.\r\nFileName: a\r\nDestination Folder: " +
            drop / "moved" + "\r\n\r\nDo you wish to overwrite this file?",
        tools.messages.Line(0));
    EXPECT_EQ("there", drop.Read("moved/a"));
    tools.messages.answers = {MessageAnswer::Yes};
    EXPECT_EQ(1U, Remove().removed);
    EXPECT_EQ("same", drop.Read("moved/a"));
    EXPECT_FALSE(drop.Exists("in/x/a"));
}

TEST_F(DupeRemovalTest, WhatWentToDupesComesBack) {
    const std::string odd = "x/\xFFodd ?\n.txt";
    for (const auto& name : {std::string("a.txt"), std::string("x/a.txt"), odd, "y/" + odd.substr(2)})
        Write(name, "same");
    settings.SetRemoveMethod(RemovalMethod::MoveToDupesFolder);
    SystemShellOperations shell = Shell();
    const DupesFolder dupes(tools.Get());
    for (int round = 0; round < 2; ++round) {
        FindAll();
        for (const std::uint32_t group : Results().Shown())
            Results().Mark(Results().Group(group).members[round == 0 ? 1 : 0], true);
        const auto before = TreeOf(drop / "in/");
        EXPECT_EQ(2U, Remove().removed);
        if (round == 0) Write("x/a.txt", "a new one");
        std::vector<StoredDupe> stored;
        ASSERT_TRUE(dupes.Read(stored).IsOk());
        ASSERT_EQ(2U, stored.size());
        EXPECT_EQ(4U, stored[0].size);
        DupesFolder::Restored restored = dupes.Restore(stored, shell, progress);
        if (round == 0) {
            // Nothing is replaced by what comes back.
            EXPECT_EQ(1U, restored.done);
            ASSERT_EQ(1U, restored.failed.size());
            EXPECT_EQ("a new one", drop.Read("in/x/a.txt"));
            unlink(In("x/a.txt").c_str());
            ASSERT_TRUE(dupes.Read(stored).IsOk());
            restored = dupes.Restore(stored, shell, progress);
        }
        EXPECT_TRUE(restored.failed.empty());
        EXPECT_TRUE(restored.unlogged.IsOk());
        EXPECT_EQ(before, TreeOf(drop / "in/"));
        ASSERT_TRUE(dupes.Read(stored).IsOk());
        EXPECT_TRUE(stored.empty());
        EXPECT_TRUE(TreeOf(tools.folder / "DUPES/").empty());
    }
}

TEST_F(DupeRemovalTest, PlacesInDupesAreNeverTakenTwiceAndDamagedLinesSayNothing) {
    const DupesFolder dupes(tools.Get());
    const std::string place = tools.folder / "DUPES/w/a.b.txt";
    EXPECT_EQ(place, dupes.PlaceFor("/w/a.b.txt"));
    tools.folder.Write("DUPES/w/a.b.txt", "1");
    tools.folder.Write("DUPES/w/.rc", "1");
    EXPECT_EQ(tools.folder / "DUPES/w/a.b (2).txt", dupes.PlaceFor("/w/a.b.txt"));
    EXPECT_EQ(tools.folder / "DUPES/w/.rc (2)", dupes.PlaceFor("/w/.rc"));
    tools.folder.Write("outside", "1");
    const std::string in = tools.folder / "DUPES";
    tools.folder.Write("Dupes.Log", "damaged\n\t\t\n2020\t/w/x\t" + in + "/../outside\n2020\t/w/../etc/x\t" +
                                        place + "\n2020\tw/x\t" + place + "\n2020\t/w/x\t" +
                                        tools.folder / "outside" + "\n2020\t/w/gone\t" + in +
                                        "/gone\n2020\t/w/a.b.txt\t" + place + "\n2020\t/torn\t" + in +
                                        "/w/.rc");
    std::vector<StoredDupe> stored;
    ASSERT_TRUE(dupes.Read(stored).IsOk());
    ASSERT_EQ(1U, stored.size());
    EXPECT_EQ("/w/a.b.txt", stored[0].original);
}

TEST_F(DupeRemovalTest, ACancelLeavesTheRest) {
    std::set<std::uint64_t> removed;
    for (std::size_t at = 1; at < 60; at += 4) {
        for (int i = 0; i < 6; ++i) Write(std::to_string(i) + "/a", "same");
        FindAll();
        Mark({"1/a", "2/a", "3/a"});
        tools.loop.yields = 0;
        tools.loop.cancelAt = at;
        const RemovalReport report = Remove();
        tools.loop.cancelAt = 0;
        removed.insert(report.removed);
        EXPECT_EQ(report.removed < 3, report.cancelled);
        EXPECT_EQ(6U - report.removed, Results().DuplicateCount());
        EXPECT_TRUE(Results().IsConsistent());
        for (const auto& group : Found())
            for (const std::string& path : group) EXPECT_TRUE(std::filesystem::exists(path)) << path;
    }
    EXPECT_TRUE(removed.contains(0));
    EXPECT_GT(removed.size(), 1U);  // some in the middle
}

// Whatever call fails, every content that there was is still there, and the lists tell what is.
TEST_F(DupeRemovalTest, NothingIsLostWhateverFails) {
    order.criteria.contents = true;
    const int codes[]{EIO, ENOSPC, EACCES, EXDEV, ENOENT};
    std::size_t failed = 0;
    const int step = Cases("VANTREL_DUPE_FAULTS", 7);
    for (const RemovalMethod method : {RemovalMethod::Delete, RemovalMethod::Recycle,
                                       RemovalMethod::MoveToDupesFolder, RemovalMethod::MoveToOtherFolder}) {
        settings.SetRemoveMethod(method);
        for (std::size_t number = 1;; number += static_cast<std::size_t>(step)) {
            for (const std::string& path :
                 {drop / "in", drop / "moved", drop / "trash", tools.folder / "DUPES"})
                std::filesystem::remove_all(path);
            for (const auto* name : {"a", "x/a", "y/a", "b", "x/b"})
                Write(name, std::string_view(name).ends_with('a') ? "A" : "B");
            FindAll();
            Mark({"x/a", "y/a", "b"});
            const std::set<std::string> before = AllContents();
            calls.ResetCount();
            calls.FailAt(number, codes[number % 5]);
            const RemovalReport report = Remove();
            const bool reached = calls.Count() >= number;
            calls.ClearFaults();
            tools.messages.shown.clear();
            const std::set<std::string> after = AllContents();
            EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end())) << number;
            for (const std::string& content : {std::string("f:A"), std::string("f:B")}) {
                std::size_t inPlace = 0;
                for (const auto& [path, what] : TreeOf(drop / "in/")) inPlace += what == content ? 1 : 0;
                EXPECT_GE(inPlace, 1U) << number;  // the one that stays
            }
            EXPECT_TRUE(Results().IsConsistent());
            for (const auto& group : Found())
                for (const std::string& path : group)
                    EXPECT_TRUE(std::filesystem::exists(path)) << path << number;
            failed += report.removed < 3 ? 1 : 0;
            if (!reached || HasFailure()) break;
        }
    }
    EXPECT_GT(failed, 0U);
}

// Killed before any call: each file is wholly here or wholly there, and the log knows of all that lies in the
// DUPES folder, so that it comes back.
TEST_F(DupeRemovalTest, AKillAnywhereLosesNothing) {
    order.criteria.contents = true;
    order.criteria.names = false;
    std::size_t kills = 0, logged = 0;
    for (const bool otherFileSystem : {false, true}) {
        for (const RemovalMethod method :
             {RemovalMethod::Delete, RemovalMethod::Recycle, RemovalMethod::MoveToDupesFolder,
              RemovalMethod::MoveToOtherFolder}) {
            settings.SetRemoveMethod(method);
            const int step = Cases("VANTREL_DUPE_FAULTS", 11);
            for (std::size_t number = 1; !HasFailure(); number += static_cast<std::size_t>(step)) {
                SCOPED_TRACE("method " + std::to_string(static_cast<int>(method)) + ", call " +
                             std::to_string(number));
                for (const std::string& path :
                     {drop / "in", drop / "moved", drop / "trash", tools.folder / "DUPES"})
                    std::filesystem::remove_all(path);
                std::filesystem::remove(tools.folder / "Dupes.Log");
                drop.MakeFolder("moved");
                for (const auto* name : {"a", "x/a1", "y/a2", "b", "x/b1"})
                    Write(name, std::string_view(name).find('a') != std::string_view::npos ? "A" : "B");
                FindAll();
                Mark({"x/a1", "y/a2", "x/b1"});
                const pid_t child = ForkAlone();
                ASSERT_GE(child, 0);
                if (child == 0) {
                    calls.ResetCount();
                    calls.before = [&](const FaultySystemCalls::Record&) {
                        if (calls.Count() == number) _exit(9);
                    };
                    if (otherFileSystem) calls.FailAt(Call::Rename, 1, EXDEV);
                    Remove();
                    _exit(0);
                }
                int status = 0;
                ASSERT_EQ(child, waitpid(child, &status, 0));
                ASSERT_TRUE(WIFEXITED(status));
                std::size_t a = 0, b = 0;
                for (const std::string& root : {drop.Path(), tools.folder.Path()}) {
                    for (const auto& [path, what] : TreeOf(root)) {
                        a += what == "f:A" ? 1 : 0;
                        b += what == "f:B" ? 1 : 0;
                    }
                }
                EXPECT_TRUE(std::filesystem::exists(In("a")) && std::filesystem::exists(In("b")));
                EXPECT_GE(a, method == RemovalMethod::Delete ? 1U : 3U);
                EXPECT_GE(b, method == RemovalMethod::Delete ? 1U : 2U);
                for (const auto& [path, what] : TreeOf(drop / "in/"))
                    EXPECT_TRUE(what == "f:A" || what == "f:B" || what == "d") << path << " " << what;
                if (WEXITSTATUS(status) == 0) break;
                ++kills;
                if (method != RemovalMethod::MoveToDupesFolder) continue;
                SystemShellOperations shell = Shell();
                DupesFolder dupes(tools.Get());
                std::vector<StoredDupe> stored;
                EXPECT_TRUE(dupes.Read(stored).IsOk());
                logged += stored.size();
                for (const StoredDupe& file : stored) {
                    // A move between file systems ends by taking the old name away: both can be there.
                    if (otherFileSystem) std::filesystem::remove(file.original);
                }
                EXPECT_EQ(stored.size(), dupes.Restore(stored, shell, progress).done);
                for (const auto* name : {"x/a1", "y/a2", "x/b1"})
                    EXPECT_TRUE(std::filesystem::exists(In(name))) << name;
            }
        }
    }
    EXPECT_GT(kills, 20U);
    EXPECT_GT(logged, 3U);
}

}  // namespace
}  // namespace vantrel
