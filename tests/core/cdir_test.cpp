#include "core/cdir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/comparison_support.h"
#include "core/file_system_reminder.h"
#include "support/fake_volumes.h"

namespace vantrel::testing {
namespace {

// The bench's toolbox with drives that the test sets up.
struct WithDrives {
    ComparisonBench bench;
    FakeVolumes volumes;
    Toolbox tools{{bench.tools.files, volumes, bench.tools.clock, bench.tools.locale, bench.tools.folders,
                   bench.tools.messages, bench.tools.loop},
                  bench.tools.reporter,
                  bench.tools.log};
};

TEST(CDir, DrivesThatAreNotThere) {
    WithDrives with;
    const CDir dir(with.tools);
    with.volumes.drives["/media/usb"] = {.ready = false};
    with.bench.tools.messages.answers = {MessageAnswer::Retry, MessageAnswer::Cancel};
    EXPECT_FALSE(dir.IsValidPath("/media/usb/x"));
    with.volumes.drives["/media/usb"].exists = false;
    EXPECT_FALSE(dir.IsValidPath("/media/usb/x"));
    const auto& messages = with.bench.tools.messages;
    const std::string notReady = "Compare Failed: Drive \"/media/usb\" is not ready.";
    ASSERT_EQ(messages.shown.size(), 3U);
    EXPECT_EQ(messages.Line(0), notReady);
    EXPECT_EQ(messages.Line(1), notReady);
    EXPECT_EQ(messages.shown[0].buttons, MessageButtons::RetryCancel);
    EXPECT_EQ(messages.Line(2),
              "Compare Failed: Drive \"/media/usb\" was not found.\r\n\r\nClick the folder icon with three "
              "dots in it "
              "to select an existing path.");
}

TEST(FileSystemReminder, IsForFatBesideNtfsOnlyAndOnce) {
    for (const auto& [left, right, reminders] :
         {std::tuple("FAT", "NTFS", 1U), std::tuple("NTFS", "FAT", 1U), std::tuple("FAT32", "NTFS", 0U),
          std::tuple("FAT", "FAT", 0U)}) {
        WithDrives with;
        with.volumes.drives[with.bench.folder / "left"] = {.fileSystem = left};
        with.volumes.drives[with.bench.folder / "right"] = {.fileSystem = right};
        const PerSide<std::string> folders{{with.bench.folder / "left/", with.bench.folder / "right/"}};
        CCompare& compare = with.bench.compare;
        const auto remind = [&] { RemindAboutFileSystems(with.tools, compare, folders); };
        for (int run = 0; run < 2; ++run) remind();
        ASSERT_EQ(with.bench.tools.messages.shown.size(), reminders);
        if (reminders == 0) continue;
        EXPECT_EQ(with.bench.tools.messages.shown[0].title, "File System Message");
        EXPECT_TRUE(compare.AlreadyNotifiedAboutFATNTFS);
        compare.AlreadyNotifiedAboutFATNTFS = false;
        compare.IgnoreFAT_NTFS_DaylightSavings = true;
        remind();
        EXPECT_EQ(with.bench.tools.messages.shown.size(), reminders);
    }
}

TEST(CDir, PathsAndFolders) {
    ComparisonBench bench;
    CDir dir(bench.tools.Get());
    dir.SetPath(bench.folder / "left//");
    EXPECT_EQ(dir.Path(), bench.folder / "left/");
    EXPECT_FALSE(dir.DriveName().empty());
    EXPECT_TRUE(dir.CreateNestedFoldersByPath(bench.folder / "left/a/b/c"));
    EXPECT_TRUE(bench.folder.Exists("left/a/b/c"));
    bench.folder.Write("left/file", "1");
    EXPECT_FALSE(dir.CreateNestedFoldersByPath(bench.folder / "left/file/d"));
    EXPECT_FALSE(dir.CreateNestedFoldersByPath("relative/d"));
    EXPECT_EQ(CDir::GetParentDir("/"), "/");
    EXPECT_EQ(CDir::GetParentDir("/ab/"), "/");
    EXPECT_EQ(CDir::GetParentDir("/ab/c/"), "/ab");
    EXPECT_EQ(CDir::GetParentDir("ab"), "ab");
}

TEST(CDir, LooksUpByNameWithoutRegardToCase) {
    ComparisonBench bench;
    for (const char* name : {"b", "A", "\xC3\x89", "Sub/x"}) bench.Write(Side::Left, name, "12");
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    CDir& dir = bench.comparison.Dir(Side::Left);
    EXPECT_EQ(dir.FileCount(), 3U);
    EXPECT_EQ(dir.SubDirCount(), 1U);
    const CFile* file = nullptr;
    ASSERT_TRUE(dir.DoesFileExistInDir("\xC3\xA9", file));
    EXPECT_EQ(file->FileName(), "\xC3\x89");
    EXPECT_EQ(FileTime::FromWords(file->ModifiedDateHigh(), file->ModifiedDateLow()), file->LastWrite());
    EXPECT_EQ(dir.GetFile("Sub"), nullptr);
    EXPECT_EQ(dir.GetSubDir("\\SUB"), "\\Sub");
    EXPECT_FALSE(dir.DoesSubDirExistInDir("Sub"));
    dir.AddSubDir("\\New");
    dir.AddSubDir("\\NEW");
    EXPECT_EQ(dir.SubDirCount(), 2U);
    EXPECT_TRUE(dir.DoesSubDirExistInDir("\\new"));
    dir.Clear();
    EXPECT_EQ(dir.FileCount() + dir.SubDirCount(), 0U);
    EXPECT_EQ(dir.Path(), "");
    EXPECT_FALSE(dir.DriveName().empty());
}

TEST(CDir, EntriesComeInOrderWhateverBecomesOfTheWorkersThatReadThem) {
    ComparisonBench bench;
    for (int i = 0; i < 300; ++i)
        bench.Write(Side::Left, (i % 2 == 0 ? "File" : "file") + std::to_string(i * 7 % 300), "1");
    for (const bool awaited : {false, true}) {
        CDir dir(bench.tools.Get());
        dir.SetPath(bench.folder / "left");
        Workers workers(2);
        const ComparisonContext context{bench.tools.Get(), bench.compare, bench.progress, workers};
        {
            FolderReading reading(
                workers,
                [files = bench.tools.files, path = dir.Path()](OpenFolder& folder) {
                    return files.Open(path, folder);
                },
                StatPolicy::All);
            ASSERT_EQ(dir.PopulateSelfWithFiles({}, context, &reading), ScanOutcome::Complete);
        }
        if (awaited)
            dir.AwaitOrder([] {});
        else
            EXPECT_EQ(workers.End(), 0U);
        ASSERT_EQ(dir.FileCount(), 300U);
        EXPECT_TRUE(std::ranges::is_sorted(dir.Files(), {}, &CFile::Key));
    }
}

TEST(CDir, ACancelledScanKeepsWhatItFound) {
    ComparisonBench bench;
    for (int i = 0; i < 20; ++i) bench.Write(Side::Left, "file" + std::to_string(i), "1");
    CDir dir(bench.tools.Get());
    dir.SetPath(bench.folder / "left");
    bench.tools.loop.cancelAt = 11;
    Workers none(0);
    const ComparisonContext context{bench.tools.Get(), bench.compare, bench.progress, none};
    EXPECT_EQ(dir.PopulateSelfWithFiles({}, context), ScanOutcome::Cancelled);
    EXPECT_EQ(dir.FileCount(), 10U);
    EXPECT_EQ(bench.progress.range, 0);
    EXPECT_EQ(bench.progress.bar, 11);
}

TEST(NameFilter, ListsAndFolderPatterns) {
    struct Case {
        const char *include, *exclude, *name;
        bool scanned, walked;  // names with a leading backslash are folders
    };
    constexpr Case kCases[] = {
        {"*.txt", "", "a.TXT", true, true},
        {"*.txt", "", "\\Sub", true, true},
        {"*.txt, *.doc", "", "a.doc", false, true},
        {"*.txt ,*.doc", "", "a.txt", false, true},
        {"*.txt,\\Src", "", "\\src", true, true},
        {"*.txt,\\Src", "", "\\Lib", false, true},
        {"/Src", "", "\\Lib", false, true},
        {"/Src", "", "a", false, true},
        {"", "\\Temp", "\\temp", false, true},
        {"", "/Te*", "\\temp", false, true},
        {"", "\\Temp", "temp", true, true},
        {"", "*.bak", "x.BAK", false, false},
        {"*", "*", "\\a", true, true},
    };
    for (const Case& one : kCases) {
        ScanOptions options;
        options.includeFilters = one.include;
        options.excludeFilters = one.exclude;
        const auto keeps = [&one](const NameFilter& filter) {
            return one.name[0] == '\\' ? filter.KeepsFolder(one.name, 0) : filter.KeepsFile(one.name, 0);
        };
        EXPECT_EQ(keeps(NameFilter::ForScan(options)), one.scanned) << one.include << one.exclude << one.name;
        EXPECT_EQ(keeps(NameFilter::ForWalk(options)), one.walked) << one.include << one.exclude << one.name;
    }
    ScanOptions options;
    options.excludeSystemFiles = options.excludeHiddenFolders = true;
    const NameFilter filter = NameFilter::ForScan(options);
    EXPECT_TRUE(filter.KeepsFile("a", kHidden | kReadOnly) &&
                filter.KeepsFolder("\\a", kSystem | kDirectory));
    EXPECT_FALSE(filter.KeepsFile("a", kSystem) || filter.KeepsFolder("\\a", kHidden | kDirectory));
}

}  // namespace
}  // namespace vantrel::testing
