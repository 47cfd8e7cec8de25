#include "settings/filter_list.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <random>

#include "settings/chunk_size.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

const FilterList kBefore{{"before"}, {"*.old"}};

TEST(FilterList, ComesBackFromItsFileAsItWas) {
    vantrel::testing::TempFolder folder;
    SystemCalls calls;
    const FileSystem files(calls);
    constexpr unsigned kSeed = 20'261'122;
    std::mt19937 random(kSeed);
    const std::vector<std::string> some{"*",    "*.txt",  "\\Folder",         "/data", "a b",
                                        "[#]?", "Grüße*", "\xF0\x9F\x93\x81", "x"};
    for (int round = 0; round < 50; ++round) {
        FilterList list;
        for (auto* patterns : {&list.include, &list.exclude})
            for (std::size_t i = random() % 6; i > 0; --i) patterns->push_back(some[random() % some.size()]);
        ASSERT_TRUE(WriteFilterList(files, folder / "a.lst", list).IsOk());
        FilterList read = kBefore;
        ASSERT_TRUE(ReadFilterList(files, folder / "a.lst", read).IsOk());
        EXPECT_EQ(read, list) << "seed " << kSeed << ", round " << round;
    }
    ASSERT_TRUE(WriteFilterList(files, folder / "a.lst", {}).IsOk());
    EXPECT_EQ(folder.Read("a.lst"), "\r\n\r\n");
}

TEST(FilterList, TakesWhatPeopleWriteByHand) {
    for (const char* text :
         {"*.a,*.b\n*.c\n", "*.a,*.b\r\n*.c", "\xEF\xBB\xBF*.a,,*.b,\r\n,*.c\r\n\r\n\r\n"}) {
        FilterList list;
        EXPECT_EQ(ParseFilterList(text, list), "") << text;
        EXPECT_EQ(list, (FilterList{{"*.a", "*.b"}, {"*.c"}})) << text;
    }
}

TEST(FilterList, IsLeftAloneByWhatIsNone) {
    using namespace std::string_literals;
    for (const std::string& text : {""s, "*.a"s, "*.a\n*.b\n*.c"s, "*.a\n\n\n[Options]"s, "*.a\n*.\0\n"s,
                                    "*.a\n\x1B[0m\n"s, "*.a\tx\n\n"s,
                                    "\x7F"
                                    "ELF\n\n"s,
                                    "Gr\xFC\xDF"
                                    "e\n\n"s,
                                    "a\rb\nc\n"s, std::string(kMostFilterListBytes, 'a') + "\n\n"}) {
        FilterList list = kBefore;
        EXPECT_NE(ParseFilterList(text, list), "") << text.substr(0, 40);
        EXPECT_EQ(list, kBefore) << text.substr(0, 40);
    }
}

TEST(FilterList, FilesThatCannotBeReadOrWrittenAreErrorsAndChangeNothing) {
    vantrel::testing::TempFolder folder;
    SystemCalls calls;
    const FileSystem files(calls);
    FilterList list = kBefore;
    folder.Write("huge.lst", std::string(2 * kMostFilterListBytes, ','));
    EXPECT_EQ(ReadFilterList(files, folder / "huge.lst", list).Number(), ErrorNumber::InvalidPropertyValue);
    EXPECT_EQ(ReadFilterList(files, folder / "gone.lst", list).Number(), ErrorNumber::FileNotFound);
    EXPECT_FALSE(ReadFilterList(files, folder.Path(), list).IsOk());
    ASSERT_EQ(mkfifo((folder / "pipe.lst").c_str(), 0600), 0);
    EXPECT_FALSE(ReadFilterList(files, folder / "pipe.lst", list).IsOk());
    EXPECT_EQ(list, kBefore);
}

// Whichever call fails, the file is the old one or the new one.
TEST(FilterList, AFileIsReplacedWholeOrNotAtAll) {
    const std::string before = "old\r\n\r\n", after = "before\r\n*.old\r\n";
    std::size_t calls = 0, failed = 0;
    for (std::size_t step = 0; step <= calls; ++step) {  // 0: none
        vantrel::testing::TempFolder folder;
        folder.Write("a.lst", before);
        vantrel::testing::FaultySystemCalls faulty;
        const FileSystem files(faulty);
        if (step > 0) faulty.FailAt(step, EIO);
        const bool written = WriteFilterList(files, folder / "a.lst", kBefore).IsOk();
        if (step == 0) calls = faulty.Count();
        failed += !written;
        const std::string now = folder.Read("a.lst");
        EXPECT_TRUE(now == after || (!written && now == before)) << "call " << step << ": " << now;
    }
    EXPECT_GT(failed, 3U);
}

TEST(ChunkSize, IsAWholeNumberFromOneToTenMillion) {
    for (const auto& [text, size] :
         {std::pair{"1", 1}, {" 500000 ", 500'000}, {"2000001", 2'000'001}, {"10000000", 10'000'000}})
        EXPECT_EQ(ChunkSizeOf(text), size) << text;
    for (const char* text :
         {"", "0", "-1", "10000001", "1.5", "1,000", "0x10", "many", "nan", "1e99", "99999999999999999999"})
        EXPECT_EQ(ChunkSizeOf(text), std::nullopt) << text;
}

}  // namespace
}  // namespace vantrel
