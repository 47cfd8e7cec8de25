#include "core/content_comparator.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core/ccrc32.h"
#include "core/mod_sha1_hash.h"
#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TestToolbox;

constexpr CompareMethod kMethods[]{CompareMethod::Contents, CompareMethod::Crc32, CompareMethod::Sha1};

struct RecordingProgress : ContentProgress {
    explicit RecordingProgress(bool bar) : bar_(bar) {}
    void SetPercentage(int percentage, std::string_view shown) override {
        texts.push_back(std::to_string(percentage).append(" ").append(shown));
    }
    bool ShowsLastPiece() const override { return bar_; }
    std::vector<std::string> texts;

  private:
    bool bar_;
};

class ContentComparatorTest : public ::testing::Test {
  protected:
    // Both files with the date 1,000 unless told otherwise.
    void WritePair(std::string_view leftBytes, std::string_view rightBytes, double rightDate = 1'000) {
        box.folder.Write("left", leftBytes, 1'000);
        box.folder.Write("right", rightBytes, rightDate);
    }
    bool Differ(CompareMethod method, std::int64_t size) {
        return comparator.FilesDiffer(left, right, method, Currency::FromWhole(size), progress);
    }
    // The lines of the one block in the log.
    std::string LogBlock() {
        const std::string log = box.folder.Read("ERRORLOG.TXT");
        const std::string head = "\r\n2020-09-13 12:26:40\r\nErrors encountered during comparison\r\n";
        return log.starts_with(head) ? log.substr(head.size()) : "unexpected: " + log;
    }
    bool HasLogged() { return compare.ErrorsDuringCompare && box.folder.Exists("ERRORLOG.TXT"); }
    void ForgetLog() {
        std::filesystem::remove(box.folder / "ERRORLOG.TXT");
        compare.ErrorsDuringCompare = false;
    }

    FaultySystemCalls calls;
    TestToolbox box{calls};
    const std::string left = box.folder / "left";
    const std::string right = box.folder / "right";
    CCompare compare;
    RecordingProgress progress{false};
    ContentComparator comparator{box.Get(), compare};
};

std::string RandomBytes(std::mt19937& random, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

TEST_F(ContentComparatorTest, FindsEveryDifferenceAndNoOther) {
    std::mt19937 random(7);
    for (const std::int32_t chunk : {1, 7, 4'096, 16'384, 100'000, 1 << 20, 10'000'000}) {
        compare.ChunkSize = chunk;
        const std::size_t around = std::min(chunk, 1'100'000);
        for (const std::size_t size :
             {std::size_t{1}, around - 1, around, around + 1, 2 * around, std::size_t{20'000}}) {
            const std::string bytes = RandomBytes(random, size);
            for (const std::size_t place : {std::size_t{0}, size / 2, size - 1, size}) {
                if (place > size) continue;
                std::string other = bytes;
                if (place < size) other[place] = static_cast<char>(other[place] ^ 0x40);
                WritePair(bytes, other);
                calls.readLimit = random() % 2 == 0 ? 0 : 1 + size / 3;
                for (const CompareMethod method : kMethods) {
                    ASSERT_EQ(Differ(method, static_cast<std::int64_t>(size)), place < size)
                        << "chunk " << chunk << ", size " << size << ", place " << place;
                }
            }
        }
    }
    EXPECT_FALSE(HasLogged());
}

TEST_F(ContentComparatorTest, EmptyFilesAreAlikeUnread) {
    WritePair("", "", 5'000);
    calls.ResetCount();
    for (const CompareMethod method : kMethods) EXPECT_FALSE(Differ(method, 0));
    EXPECT_EQ(calls.Count(Call::PRead), 0U);
}

TEST_F(ContentComparatorTest, PercentagesAreThoseOfWholeChunks) {
    compare.ChunkSize = 500'000;
    WritePair(std::string(1'300'000, 'a'), std::string(1'300'000, 'a'));
    EXPECT_FALSE(Differ(CompareMethod::Contents, 1'300'000));
    EXPECT_EQ(progress.texts, (std::vector<std::string>{"38 left", "77 left"}));

    RecordingProgress bar(true);
    EXPECT_FALSE(
        comparator.FilesDiffer(left, right, CompareMethod::Crc32, Currency::FromWhole(1'300'000), bar));
    EXPECT_EQ(bar.texts, (std::vector<std::string>{"38 left", "77 left", "100 left"}));

    compare.ChunkSize = 650'000;  // no tail: the end is not shown
    bar.texts.clear();
    EXPECT_FALSE(
        comparator.FilesDiffer(left, right, CompareMethod::Crc32, Currency::FromWhole(1'300'000), bar));
    EXPECT_EQ(bar.texts, (std::vector<std::string>{"50 left"}));
}

TEST_F(ContentComparatorTest, ErrorsAreLoggedByChunkAndJudgedByDate) {
    compare.ChunkSize = 1'000;
    struct Case {
        std::size_t read;  // which of the reads fails, each giving one chunk
        int code;
        std::string block;
    };
    const Case cases[]{
        {3, EIO, "File Name: " + left + "\r\nProcess: Reading bytes 2001 to 3000\r\nError: "},
        {5, EIO, "File Name: " + left + "\r\nProcess: Reading bytes 4001 to 4500\r\nError: "},
        {7, EIO, "File Name: " + right + "\r\nProcess: Reading bytes 1001 to 2000\r\nError: "},
        {1, ENOMEM,
         "File Name: " + left +
             "\r\nProcess: Reading bytes 1 to 1000\r\n"
             "Error: Insufficient memory.  Try cutting your chunk size in half.\r\n"},
        {6, EBADF, "File Name: " + right + "\r\nProcess: Reading bytes 1 to 1000\r\nError: "},
    };
    const std::string bytes(4'500, 'x');
    calls.readLimit = 1'000;
    for (const CompareMethod method : kMethods) {
        for (const Case& each : cases) {
            for (const double date : {1'000, 1'002, 1'003}) {
                WritePair(bytes, bytes, date);
                ForgetLog();
                calls.ResetCount();
                calls.FailAt(Call::PRead, each.read, each.code);
                EXPECT_EQ(Differ(method, 4'500), date == 1'003);
                calls.ClearFaults();
                EXPECT_TRUE(compare.ErrorsDuringCompare);
                EXPECT_TRUE(LogBlock().starts_with(each.block)) << LogBlock();
                EXPECT_TRUE(
                    LogBlock().ends_with("\r\nSize and date/time were compared instead of contents.\r\n"))
                    << LogBlock();
            }
        }
    }
}

TEST_F(ContentComparatorTest, ADifferenceBeforeAnErrorNeedsNoError) {
    compare.ChunkSize = 1'000;
    std::string other(4'500, 'x');
    other[1'500] = 'y';
    WritePair(std::string(4'500, 'x'), other);
    calls.readLimit = 1'000;
    for (const CompareMethod method : kMethods) {
        calls.ResetCount();
        calls.FailAt(Call::PRead, 3, EIO);
        EXPECT_TRUE(Differ(method, 4'500));
        EXPECT_FALSE(HasLogged());
        calls.ResetCount();
        calls.FailAt(Call::PRead, 2, EIO);
        EXPECT_FALSE(Differ(method, 4'500))
            << "the difference lies behind the error, and the dates are alike";
        EXPECT_TRUE(HasLogged());
        ForgetLog();
        calls.ClearFaults();
    }
}

TEST_F(ContentComparatorTest, WhateverCallFailsTheAnswerIsRightOrTheLogSaysWhy) {
    compare.ChunkSize = 5'000;
    std::mt19937 random(8);
    const std::string bytes = RandomBytes(random, 40'000);
    std::string other = bytes;
    other[33'333] = static_cast<char>(other[33'333] + 1);
    calls.readLimit = 7'000;
    for (const CompareMethod method : kMethods) {
        for (const std::string& second : {bytes, other}) {
            WritePair(bytes, second);
            calls.ResetCount();
            const bool truth = Differ(method, 40'000);
            ASSERT_EQ(truth, second != bytes);
            const std::size_t count = calls.Count();
            for (std::size_t number = 1; number <= count; ++number) {
                ForgetLog();
                calls.ResetCount();
                calls.FailAt(number, EIO);
                ASSERT_TRUE(Differ(method, 40'000) == truth || HasLogged()) << number;
                calls.ClearFaults();
            }
        }
    }
}

TEST_F(ContentComparatorTest, FilesThatChangedSinceTheScanNeverCountAsAlike) {
    const std::string bytes(3'000, 'x');
    compare.ChunkSize = 1'000;
    const std::vector<std::function<void()>> changes{
        [&] { box.folder.Write("right", bytes + "y", 1'000); },
        [&] { box.folder.Write("right", "", 1'000); },
        [&] { WritePair(bytes + "y", bytes + "y"); },
        [&] { std::filesystem::remove(right); },
        [&] { std::filesystem::remove(left); },
        [&] {
            std::filesystem::remove(right);
            box.folder.MakeFolder("right");
        },
        [&] {
            std::filesystem::remove(right);
            ASSERT_EQ(mkfifo(right.c_str(), 0600), 0);
        },
        [&] {
            std::filesystem::remove(right);
            std::filesystem::create_symlink("nowhere", right);
        },
    };
    for (const CompareMethod method : kMethods) {
        for (std::size_t i = 0; i < changes.size(); ++i) {
            std::filesystem::remove(right);
            WritePair(bytes, bytes);
            ASSERT_FALSE(Differ(method, 3'000));
            ForgetLog();
            changes[i]();
            EXPECT_TRUE(Differ(method, 3'000)) << i;
            EXPECT_TRUE(HasLogged()) << i;
        }
    }
}

TEST_F(ContentComparatorTest, AFileThatShrinksWhileItIsReadCountsAsDifferent) {
    compare.ChunkSize = 20'000;
    for (const CompareMethod method : kMethods) {
        WritePair(std::string(60'000, 'x'), std::string(60'000, 'x'));
        ForgetLog();
        std::size_t reads = 0;
        calls.before = [&](const FaultySystemCalls::Record& record) {
            if (record.call == Call::PRead && ++reads == 3) std::filesystem::resize_file(left, 45'000);
        };
        EXPECT_TRUE(Differ(method, 60'000));
        calls.before = nullptr;
        EXPECT_EQ(LogBlock(), "File Name: " + left +
                                  "\r\nProcess: Reading bytes 40001 to 60000\r\n"
                                  "Error: The file has become shorter while it was read.\r\n");
    }
}

TEST_F(ContentComparatorTest, SizesThatDoNotFit) {
    constexpr std::uint64_t kGiB = std::uint64_t{1} << 30;
    const auto make = [&](std::uint64_t size, double rightDate) {
        WritePair("same start", "same start", rightDate);
        for (const std::string& path : {left, right}) {
            std::filesystem::resize_file(path, size);
            const timespec times[2]{{0, UTIME_OMIT},
                                    {path == left ? 1'000 : static_cast<time_t>(rightDate), 0}};
            ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
        }
    };
    // 3 GiB has a negative size by the rule; of 4 GiB and 10 bytes it tells 9.
    for (const auto& [bytes, size] :
         {std::pair{3 * kGiB, std::int64_t{-1} << 30}, std::pair{4 * kGiB + 10, std::int64_t{9}},
          std::pair{4 * kGiB + 1, std::int64_t{0}}}) {
        for (const double date : {1'000, 9'000}) {
            make(bytes, date);
            ForgetLog();
            EXPECT_EQ(Differ(CompareMethod::Contents, size), date == 9'000) << size;
            EXPECT_NE(LogBlock().find("Error: Overflow"), std::string::npos);
        }
    }
    make(4 * kGiB + 10, 1'000);
    ForgetLog();
    box.folder.Write("right", "other");
    std::filesystem::resize_file(right, 4 * kGiB + 10);
    EXPECT_TRUE(Differ(CompareMethod::Sha1, 9));
    EXPECT_FALSE(HasLogged());
}

TEST_F(ContentComparatorTest, CancelledAtAnyYield) {
    compare.ChunkSize = 20'000;
    WritePair(std::string(70'000, 'x'), std::string(70'000, 'x'));
    for (const CompareMethod method : kMethods) {
        box.loop.yields = 0;
        box.loop.cancelAt = 0;
        ASSERT_FALSE(Differ(method, 70'000));
        const std::size_t yields = box.loop.yields;
        EXPECT_GT(yields, 8U);
        for (std::size_t at = 1; at <= yields; ++at) {
            box.loop.yields = 0;
            box.loop.cancelAt = at;
            // At the last one everything has been read, but its answer is thrown away all the same.
            EXPECT_TRUE(Differ(method, 70'000)) << at;
            EXPECT_TRUE(compare.CompareCancelled);
            box.loop.ResetCancel();
            compare.CompareCancelled = false;
        }
    }
    EXPECT_FALSE(HasLogged());
}

TEST_F(ContentComparatorTest, PrefetchedPairsGiveTheSameAnswers) {
    for (std::size_t i = 0; i < ContentComparator::kPrefetchedPairs + 5; ++i) {
        const std::string name = std::to_string(i);
        box.folder.Write("l" + name, "x");
        if (i != 4) box.folder.Write("r" + name, i % 3 == 0 ? "y" : "x");
        const PerSide<std::string> paths{{box.folder / ("l" + name), box.folder / ("r" + name)}};
        PerSide<ReadFile> files;  // of each third pair none is open
        for (const Side side : kBothSides)
            if (i % 3 != 1) (void)box.files.OpenScannedFile(paths[side], files[side]);
        EXPECT_EQ(comparator.Prefetch(paths[Side::Left], paths[Side::Right], std::move(files)),
                  i < ContentComparator::kPrefetchedPairs);
    }
    for (std::size_t i = 0; i < ContentComparator::kPrefetchedPairs + 5; ++i) {
        if (i == 7) continue;
        const std::string name = std::to_string(i);
        EXPECT_EQ(comparator.FilesDiffer(box.folder / ("l" + name), box.folder / ("r" + name),
                                         CompareMethod::Contents, Currency::FromWhole(1), progress),
                  i % 3 == 0 || i == 4)
            << i;
    }
    EXPECT_TRUE(HasLogged());
}

TEST_F(ContentComparatorTest, FingerprintsOfWholeFiles) {
    CCRC32 crc(box.Get(), compare);
    EXPECT_EQ(CCRC32::GetHexCRC32OfString("123456789"), "CBF43926");
    EXPECT_EQ(CCRC32::GetLongCRC32OfString("123456789"), -873'187'034);
    std::mt19937 random(9);
    for (const std::size_t size : {0, 9, 16'384, 70'000}) {
        const std::string bytes = RandomBytes(random, size);
        box.folder.Write("left", bytes);
        for (const std::int32_t chunk : {1, 20'000, 10'000'000}) {
            compare.ChunkSize = chunk;
            EXPECT_EQ(crc.GetHexCRC32OfFile(left), CCRC32::GetHexCRC32OfString(bytes));
            EXPECT_EQ(crc.GetLongCRC32OfFile(left), CCRC32::GetLongCRC32OfString(bytes));
            EXPECT_EQ(SHA1OfFile(box.Get(), compare, left), SHA1OfText(bytes));
        }
    }
    RecordingProgress bar(true);
    compare.ChunkSize = 35'000;
    SHA1OfFile(box.Get(), compare, left, &bar);
    EXPECT_EQ(bar.texts, (std::vector<std::string>{"50 left", "100 left"}));

    EXPECT_THROW(crc.GetHexCRC32OfFile(box.folder / "gone"), ErrorException);
    box.loop.cancelled = true;
    EXPECT_EQ(SHA1OfFile(box.Get(), compare, left), "0");
    EXPECT_EQ(crc.GetHexCRC32OfFile(left), "0");
    EXPECT_TRUE(compare.CompareCancelled);
}

}  // namespace
}  // namespace vantrel
