// How the pairs of one folder are handed to workers, whatever the comparison makes of the verdicts.
#include "core/level_contents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "core/comparison_support.h"
#include "support/sparse_file.h"

namespace vantrel::testing {
namespace {

constexpr int kLevelJobs = 4;

// Counts who reads at the same time, and keeps the order of the opened files.
class WatchedReads : public SystemCalls {
  public:
    int OpenAt(int folder, const char* path, int flags, mode_t mode) override {
        const std::lock_guard lock(mutex_);
        opened.emplace_back(path);
        return SystemCalls::OpenAt(folder, path, flags, mode);
    }
    ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset) override {
        mostReading = std::max<int>(mostReading, ++reading_);
        std::this_thread::yield();
        const ssize_t result = SystemCalls::PRead(fd, buffer, size, offset);
        --reading_;
        return result;
    }
    std::vector<std::string> opened;
    std::atomic<int> mostReading{0};

  private:
    std::mutex mutex_;
    std::atomic<int> reading_{0};
};

PairRun::Folders OpenSides(const FileSystem& files, const TempFolder& folder) {
    PairRun::Folders folders;
    for (const Side side : kBothSides) {
        auto open = std::make_shared<OpenFolder>();
        EXPECT_TRUE(files.Open(folder / ComparisonBench::NameOf(side), *open).IsOk());
        folders[side] = std::move(open);
    }
    return folders;
}

// From a disk that rotates one reads at a time, and each run in the order of the inodes.
TEST(LevelContents, OneReadsFromADiskThatRotates) {
    WatchedReads calls;
    const FileSystem files(calls);
    TempFolder folder;
    constexpr std::size_t kPairs = 300;
    std::vector<PairToRead> pairs(kPairs);
    std::vector<std::string> names(kPairs);
    for (std::size_t i = 0; i < kPairs; ++i) {
        names[i] = "f" + std::to_string(i);
        for (const Side side : kBothSides) {
            folder.Write(ComparisonBench::NameOf(side) + "/" + names[i],
                         i == 100 && side == Side::Left ? "1" : "2");
            pairs[i][side] = {names[i], (i * 7) % kPairs, false, {}};
        }
    }
    const PairRun::Folders folders = OpenSides(files, folder);
    Workers workers(kLevelJobs);
    ContentsAhead ahead(workers, ReadingRule(CompareMethod::Contents, 500'000), SizeRule::Words,
                        std::make_shared<std::mutex>());
    ahead.SetWaits(true);
    calls.opened.clear();
    LevelContents contents(ahead, folders, kPairs, [&](std::size_t i, PairToRead& pair) {
        pair = pairs[i];
        return true;
    });
    for (std::size_t i = 0; i < kPairs; ++i) {
        contents.Advance();
        const PairVerdict verdict = contents.Take(
            i, [] {}, [](std::uint64_t, std::uint64_t) {});
        EXPECT_EQ(verdict.kind, i == 100 ? PairVerdict::Kind::Differ : PairVerdict::Kind::Alike);
    }
    EXPECT_EQ(calls.mostReading, 1);
    ASSERT_EQ(calls.opened.size(), 2 * kPairs);
    const auto inodeOf = [&](std::size_t position) {
        const auto i = static_cast<std::size_t>(
            std::find(names.begin(), names.end(), calls.opened[position]) - names.begin());
        return (i * 7) % kPairs;
    };
    std::size_t falls = 0;
    for (std::size_t at = 2; at < calls.opened.size(); at += 2)
        falls += inodeOf(at) < inodeOf(at - 2) ? 1 : 0;
    EXPECT_LT(falls, 5U);  // once from run to run
}

// Whoever begins a stretch waits until another one is begun as well, but not for ever.
class MeetingReads : public SystemCalls {
  public:
    explicit MeetingReads(off_t meetBefore) : meetBefore_(meetBefore) {}

    ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset) override {
        if (size > ReadingRule::kLeastReadUnit && offset < meetBefore_ &&
            offset % static_cast<off_t>(ReadingTerms::kStretch) == 0)
            Meet();
        return SystemCalls::PRead(fd, buffer, size, offset);
    }
    std::atomic<int> alone{0};

  private:
    void Meet() {
        std::unique_lock lock(mutex_);
        const int before = come_++ / 2;
        met_.notify_all();
        if (!met_.wait_for(lock, std::chrono::seconds(alone == 0 ? 5 : 0),
                           [&] { return come_ / 2 > before; }))
            ++alone;
    }
    off_t meetBefore_;
    std::mutex mutex_;
    std::condition_variable met_;
    int come_ = 0;
};

// However fast verdicts come: the next stretch of a single large pair is handed in before one is waited for.
TEST(LevelContents, ALargePairKeepsTwoWorkersBusyToItsEnd) {
    constexpr auto kStretch = static_cast<off_t>(ReadingTerms::kStretch);
    TempFolder folder;
    for (const Side side : kBothSides) {
        folder.MakeFolder(ComparisonBench::NameOf(side));
        WriteSparse(folder, ComparisonBench::NameOf(side) + "/large", 12 * kStretch, 1'600'000'000);
    }
    MeetingReads calls(10 * kStretch);
    const FileSystem files(calls);
    Workers workers(2);
    ContentsAhead ahead(workers, ReadingRule(CompareMethod::Contents, 500'000), SizeRule::Words, nullptr);
    LevelContents contents(ahead, OpenSides(files, folder), 1, [](std::size_t, PairToRead& pair) {
        for (const Side side : kBothSides) pair[side] = {"large", 0, false, {}};
        return true;
    });
    const PairVerdict verdict = contents.Take(
        0, [] {}, [](std::uint64_t, std::uint64_t) {});
    EXPECT_EQ(verdict.kind, PairVerdict::Kind::Alike);
    EXPECT_EQ(calls.alone, 0);
}

}  // namespace
}  // namespace vantrel::testing
