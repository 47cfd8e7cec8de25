#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <future>
#include <string_view>
#include <thread>
#include <utility>

#include "dupes/dupe_filter.h"
#include "dupes/dupe_lists.h"
#include "dupes/system_folders.h"
#include "dupes_support.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::DupesTest;
using testing::Groups;

class DuplicateFinderTest : public DupesTest {};

TEST(DupeLists, GoThereAndBack) {
    const std::vector<std::string> items{"/a", "/what?", "??", "b c", "*.drv"};
    EXPECT_EQ(items, SplitDupeList(JoinDupeList(items)));
    EXPECT_EQ("/a?/b", JoinDupeList({"/a", "", "/b"}));
    // As other hands may have left it.
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c\\"}), SplitDupeList("?a??b?c\\"));
    EXPECT_TRUE(SplitDupeList("").empty());
}

TEST(DupeFilter, PatternsOfNames) {
    const NamePatterns patterns({"system.ini", "*.DRV", "a?c", "x*y*z", "[1]#"});
    for (const auto* name :
         {"System.INI", "m.drv", ".drv", "abc", "a\303\244c", "xyz", "x1y2z", "XyyyZ", "[1]#"})
        EXPECT_TRUE(patterns.Match(name)) << name;
    for (const auto* name : {"system.inix", "m.drvx", "ac", "abbc", "xzy", "1", "[1]5", ""})
        EXPECT_FALSE(patterns.Match(name)) << name;
    EXPECT_TRUE(NamePatterns({"*.*"}).Match("no extension"));
    EXPECT_FALSE(NamePatterns({}).Match("x"));
}

TEST(DupeFilter, SystemFoldersAndTrash) {
    for (const auto* path : {"/usr", "/usr/", "/Usr/share/x", "/lib64/x", "/var/lib/dpkg", "/etc", "/run/"})
        EXPECT_TRUE(IsInSystemFolder(path)) << path;
    for (const auto* path : {"/", "/home/usr", "/usrx", "/var", "/var/library", "/data/etc"})
        EXPECT_FALSE(IsInSystemFolder(path)) << path;
    for (const auto* path : {"/m/.Trash-1000/files", "/m/.Trash", "/h/Trash/files/x", "/h/Trash"})
        EXPECT_TRUE(IsInTrash(path, "/h/Trash")) << path;
    for (const auto* path : {"/m/.Trash-", "/m/.Trash-x", "/h/Trasher", "/h/Trash2/x", "/m/Trash"})
        EXPECT_FALSE(IsInTrash(path, "/h/Trash")) << path;
}

TEST_F(DuplicateFinderTest, RefusesWhatCannotBeSearched) {
    drop.MakeFolder("in/sub");
    drop.MakeFolder("inner");
    const auto refused = [&](const std::string& text) {
        EXPECT_EQ(DupeOutcome::Refused, Find());
        ASSERT_EQ(1U, tools.messages.shown.size());
        EXPECT_EQ("Find Duplicates: " + text, tools.messages.Line(0));
        EXPECT_EQ(MessageIcon::Warning, tools.messages.shown[0].icon);
        tools.messages.shown.clear();
    };
    const DupeSearchOrder good = order;
    order.criteria = {false, false, false, false, false, false};
    refused("Select the duplicate criteria to be used.");
    order.criteria.contents = true;
    refused("Name or Size must be one of the duplicate criteria selected.");
    order = good;
    order.folders.clear();
    refused("Enter a folder path to check for duplicates.");
    order.folders = {In(""), drop / "gone"};
    refused("Problem accessing folder:\r\n" + drop / "gone" +
            "\r\nMake sure that the folder exists and that you have permission to access it.");
    const std::string nested =
        "One of the folders in the list is a subfolder of another one of the folders.\r\n"
        "Uncheck the Include Sub Folders checkbox, if you wish to scan both of the folders anyways.";
    order.folders = {drop / "in", drop / "in/sub"};
    refused(nested);
    order.folders = {drop / "inner", drop / "in"};  // as texts
    refused(nested);
    order.includeSubFolders = false;
    EXPECT_EQ(DupeOutcome::Completed, Find());
}

TEST_F(DuplicateFinderTest, TellsWhatItDoes) {
    EXPECT_EQ(DupeOutcome::Completed, Find());
    const std::vector<std::string> nothing{"Freeing up memory from last search.  Please wait...", "",
                                           "Scanning folder " + drop / "in" + " ...", "No duplicates found"};
    EXPECT_EQ(nothing, progress.statuses);
    Write("a", "12");
    Write("sub/a", "12");
    Write("b", "123");
    Write("sub/b", "456");
    order.criteria.contents = true;
    progress.statuses.clear();
    EXPECT_EQ(DupeOutcome::Completed, Find());
    const std::vector<std::string> told{
        "Freeing up memory from last search.  Please wait...",
        "",
        "Scanning folder " + drop / "in" + " ...",
        "4 files were found in the path.",
        "4 files were found in the path. Searching for duplicates.  Press ESC to cancel the search...",
        "Loading duplicates...",
        "2 duplicates found in 1 groups.  (4 Bytes)"};
    EXPECT_EQ(told, progress.statuses);
    EXPECT_EQ(4U, progress.figures.files);
    EXPECT_EQ(10U, progress.figures.bytesTotal);
    EXPECT_EQ(10U, progress.figures.bytesDone);
    EXPECT_EQ(4, progress.most);
    EXPECT_EQ((std::pair<std::int64_t, std::int64_t>{0, 0}), progress.bar);
    EXPECT_FALSE(progress.searching);
}

TEST_F(DuplicateFinderTest, OneFileHasItsStatusToo) {
    Write("a", "12");
    EXPECT_EQ(Groups(), FindGroups());
    EXPECT_EQ("0 duplicates found in 0 groups.  (0 Bytes)", progress.statuses.back());
}

TEST_F(DuplicateFinderTest, LeavesOutWhatIsToBeLeftOut) {
    for (const auto* name : {"a", ".a", ".hidden/a", "sub/a", "System.INI", "sub/System.INI"})
        Write(name, "1");
    for (const auto* name : {"empty", "sub/empty"}) Write(name, "");
    tools.folder.Write("DUPES" + In("a"), "1");
    ASSERT_EQ(0, symlink(In("a").c_str(), (drop / "in/link").c_str()));
    ASSERT_EQ(0, symlink(In("sub").c_str(), (drop / "in/other").c_str()));
    ASSERT_EQ(0, mkfifo(In("sub/link").c_str(), 0600));
    order.folders.push_back(tools.folder.Path());
    order.excludeFiles = {"system.ini"};
    EXPECT_EQ((Groups{{In("a"), In("sub/a")}}), FindGroups());
    order.ignoreHiddenFiles = false;
    EXPECT_EQ((Groups{{In("a"), In("sub/a"), In(".hidden/a")}}), FindGroups());
    order.ignoreZeroByteFiles = false;
    order.excludeFiles.clear();
    EXPECT_EQ((Groups{{In("a"), In("sub/a"), In(".hidden/a")},
                      {In("empty"), In("sub/empty")},
                      {In("System.INI"), In("sub/System.INI")}}),
              FindGroups());
    EXPECT_TRUE(finder.Unsearched().empty());
}

// One folder under two spellings, and hard links: nothing of that is a duplicate.
TEST_F(DuplicateFinderTest, OneObjectIsOneCandidate) {
    Write("a", "1");
    Write("sub/a", "1");
    drop.MakeFolder("links");
    ASSERT_EQ(0, symlink(In("").c_str(), (drop / "links/again").c_str()));
    ASSERT_EQ(0, link(In("a").c_str(), In("third").c_str()));
    order.folders.push_back(drop / "links/again");
    EXPECT_EQ((Groups{{In("a"), In("sub/a")}}), FindGroups());
    const DupeResults& results = finder.Results();
    const DupeFile& file = results.Files()[results.Group(0).members[0]];
    EXPECT_EQ((std::vector<std::string>{In("third"), drop / "links/again/a", drop / "links/again/third"}),
              results.Files().OtherNamesOf(file));
    EXPECT_EQ(2, results.DuplicateBytes().Whole());
}

TEST_F(DuplicateFinderTest, AFolderThatCannotBeListedAddsNothingAndIsTold) {
    Write("a", "1");
    Write("sub/a", "1");
    Write("other/a", "1");
    for (std::size_t number = 1; number <= 3; ++number) {
        calls.ClearFaults();
        calls.ResetCount();
        calls.FailAt(testing::Call::GetDents, number * 2, EIO);  // in the middle of each folder in turn
        ASSERT_EQ(DupeOutcome::Completed, Find());
        calls.ClearFaults();
        ASSERT_EQ(1U, finder.Unsearched().size()) << number;
        const std::string lost = finder.Unsearched()[0].path;
        EXPECT_FALSE(finder.Unsearched()[0].error.IsOk());
        for (const auto& group : Found())
            for (const std::string& path : group) EXPECT_NE(lost, path.substr(0, path.rfind('/') + 1));
    }
}

TEST_F(DuplicateFinderTest, ACancelIsHeardInEveryPhaseAndLeavesNothing) {
    for (int i = 0; i < 40; ++i)
        Write((i % 2 == 0 ? "x/" : "y/") + std::to_string(i / 2), std::to_string(i / 4));
    order.criteria.contents = true;
    EXPECT_FALSE(FindGroups().empty());
    Workers none(0);
    std::set<std::string> statuses;
    for (std::size_t yield = 1; yield < 1'000; ++yield) {
        DuplicateFinder another(tools.Get(), progress);
        progress.statuses.clear();
        tools.loop.yields = 0;
        tools.loop.cancelAt = yield;
        const DupeOutcome outcome = another.Find(order, none, HashMakerFor(HashMethod::Crc16));
        tools.loop.cancelAt = 0;
        if (outcome == DupeOutcome::Completed) break;
        ASSERT_EQ(DupeOutcome::Cancelled, outcome);
        EXPECT_EQ(0U, another.Results().GroupCount());
        EXPECT_EQ("Search cancelled by user.", progress.statuses.back());
        if (progress.statuses.size() > 1) statuses.insert(progress.statuses[progress.statuses.size() - 2]);
    }
    // It was heard while each of these stood there.
    EXPECT_TRUE(statuses.contains("Scanning folder " + drop / "in" + " ..."));
    EXPECT_TRUE(statuses.contains("40 files were found in the path."));
    EXPECT_TRUE(statuses.contains("Loading duplicates..."));
    EXPECT_TRUE(statuses.contains(
        "40 files were found in the path. Searching for duplicates.  Press ESC to cancel the search..."));
}

TEST_F(DuplicateFinderTest, UnreadableFilesMatchNothing) {
    for (const auto* name : {"a", "x/a", "y/a", "z/a"}) Write(name, "1");
    order.criteria.contents = true;
    Workers none(0);
    progress.onStatus = [this](std::string_view text) {
        if (text.find("Press ESC") == std::string_view::npos) return;
        calls.ResetCount();
        calls.FailAt(testing::Call::PRead, 1, EIO);
        calls.FailAt(testing::Call::PRead, 2, EIO);
    };
    ASSERT_EQ(DupeOutcome::Completed, finder.Find(order, none, HashMakerFor(HashMethod::Md5)));
    EXPECT_EQ((Groups{{In("y/a"), In("z/a")}}), Found());
    for (const std::uint32_t member : finder.Results().Group(0).members)
        EXPECT_EQ("C4CA4238A0B923820DCC509A6F75849B",
                  finder.Results().Files().HashOf(finder.Results().Files()[member]));
}

// Records as a search would make them, in the order of their numbers.
class GroupingTest : public ::testing::Test {
  protected:
    void Add(std::string_view name, std::int64_t size) {
        if (files.Count() == 0) files.AddFolder("/f/", 0);
        DupeFile file;
        file.name = name;
        file.size = size;
        file.seen.size = static_cast<std::uint64_t>(size);
        file.seen.id.inode = files.Count() + 1;
        files.Add(file);
    }
    DupeResults Group(const DupeCriteria& criteria) {
        FoundFiles taken = std::exchange(files, FoundFiles());
        const std::vector<DupeRun> runs = OrderByCriteria(taken, criteria, [] {});
        return {std::move(taken), runs, criteria};
    }
    FoundFiles files;
};

TEST_F(GroupingTest, UnknownSizesMatchNothing) {
    for (const int size : {-1, 5, -1, 5}) Add("a", size);
    EXPECT_EQ(1U, Group({.names = true, .sizes = true}).GroupCount());
}

TEST_F(GroupingTest, LabelsAreNamesOrSizes) {
    for (const auto* name : {"B", "b", "a", "A", "c"}) Add(name, 12);
    const DupeResults results = Group({.names = true, .sizes = false});
    ASSERT_EQ(2U, results.GroupCount());
    EXPECT_EQ("A - (2 files)", results.Group(0).Line());
    EXPECT_EQ("B - (2 files)", results.Group(1).Line());
    for (const auto* name : {"x", "y"}) Add(name, 7);
    EXPECT_EQ("7 - (2 files)", Group({.names = false, .sizes = true}).Group(0).Line());
}

TEST_F(GroupingTest, StopsAtTheLastGroupThereCanBe) {
    for (int i = 0; i < 32'770; ++i)
        for (int n = 0; n < 2; ++n) Add("n" + std::to_string(i), 1);
    const DupeResults results = Group({.names = true, .sizes = true});
    EXPECT_EQ("65534 duplicates found in 32767 groups.  (64 KB)", results.StatusText());
    EXPECT_TRUE(results.IsConsistent());
}

// As on a mount whose server is gone: the search ends all the same when the user wants it to, whatever it was
// about, and says that a thread is left behind.
TEST_F(DuplicateFinderTest, WhatNeverAnswersIsLeftBehindByACancel) {
    order.criteria.contents = true;
    order.jobs = 2;
    struct Hang {
        Call call;
        std::string path;
    };
    for (const Hang& hang :
         {Hang{Call::Open, drop / "in"}, Hang{Call::Open, "sub"}, Hang{Call::Open, "file"}}) {
        SCOPED_TRACE(hang.path);
        for (const auto* name : {"file", "sub/file", "other/file"}) Write(name, "same");
        finder.Clear();
        std::promise<void> letGo;
        const std::shared_future<void> free = letGo.get_future().share();
        std::atomic<bool> waits = false;
        calls.hold = [&](const auto& record) {
            if (record.call == hang.call && std::string_view(record.path).ends_with(hang.path) &&
                !waits.exchange(true))
                free.wait();
        };
        tools.loop.onYield = [&] { tools.loop.cancelled = waits; };
        EXPECT_EQ(DupeOutcome::Cancelled, Find());
        EXPECT_EQ(1U, finder.LeftBehind());
        EXPECT_EQ("Search cancelled by user.", progress.statuses.back());
        letGo.set_value();
        while (Workers::LeftBehind() > 0) std::this_thread::yield();
        calls.hold = nullptr;
        tools.loop.onYield = nullptr;
        tools.loop.cancelled = false;
        // The next one finds what there is.
        EXPECT_EQ(1U, FindGroups().size());
    }
}

}  // namespace
}  // namespace vantrel
