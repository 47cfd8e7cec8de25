// What holds of a comparison because workers read below the one thread.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include "core/comparison_support.h"
#include "support/fake_volumes.h"
#include "support/faulty_system_calls.h"
#include "support/plain_user.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int kJobs = 4;

std::string Patterned(std::size_t size) {
    std::string bytes(size, 0);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 2'654'435'761U >> 13);
    return bytes;
}

// A tree in which folders stand among files, with pairs of every kind on all levels.
void MakeTrees(const ComparisonBench& bench, std::mt19937& random) {
    for (int number = 0; number < 400; ++number) {
        std::string path;
        for (int depth = static_cast<int>(random() % 4); depth > 0; --depth)
            path += "d" + std::to_string(random() % 4) + "/";
        path += "f" + std::to_string(number);
        const std::string bytes = Patterned(random() % 3 == 0 ? random() % 40'000 : random() % 300);
        for (const Side side : kBothSides) {
            std::string own = bytes;
            if (side == Side::Right && number % 7 == 0) own += "longer";
            if (side == Side::Right && number % 11 == 0 && !own.empty()) own.back() ^= 1;
            if (number % 13 != 0 || static_cast<std::size_t>(number) / 13 % 2 != Index(side))
                bench.Write(side, path, own, 1'600'000'000 + (number % 5 == 0 ? 60.0 * (number % 2) : 0));
        }
    }
}

struct Result {
    std::vector<std::string> rows, records, percentages;
    std::string log;
    friend bool operator==(const Result&, const Result&) = default;
};

Result RunWith(ComparisonBench& bench, int jobs) {
    bench.compare.Jobs = jobs;
    bench.progress.percentages.clear();
    EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
    return {bench.Rows(), bench.Records(), bench.progress.percentages, bench.Log()};
}

// Large pairs are read in stretches, by several workers at a time: the difference, wherever it stands, the
// percentages on the way to it, and what is told of files that cannot be compared are the same as ever.
TEST(ComparisonWorkers, LargeFilesAreComparedAsByTheOneThread) {
    constexpr std::size_t kSize = (std::size_t{17} << 20) + 12'345;
    const std::string bytes = Patterned(kSize);
    ComparisonBench bench;
    for (const char* folder : {"", "sub/"}) {
        for (const std::size_t at : {std::size_t{0}, std::size_t{9} << 20, kSize - 1, kSize}) {
            const std::string name = folder + std::to_string(at);
            std::string other = bytes;
            if (at < kSize) other[at] ^= 1;
            bench.Write(Side::Left, name, bytes);
            bench.Write(Side::Right, name, other);
        }
    }
    for (const CompareMethod method : {CompareMethod::Contents, CompareMethod::Crc32, CompareMethod::Sha1}) {
        bench.compare.CompareMethod = method;
        const Result alone = RunWith(bench, 1);
        ASSERT_EQ(alone.records.size(), 3U);
        EXPECT_GT(alone.percentages.size(), 50U);
        const Result together = RunWith(bench, kJobs);
        EXPECT_EQ(together.rows, alone.rows);
        EXPECT_EQ(together.records, alone.records);
        EXPECT_TRUE(together.log == alone.log);
        // A block on either side of a difference may be told of or not.
        EXPECT_NEAR(static_cast<double>(together.percentages.size()),
                    static_cast<double>(alone.percentages.size()), 6);
    }
}

TEST(ComparisonWorkers, TreesGiveTheSameInTheSameOrder) {
    std::mt19937 random(7);
    ComparisonBench bench;
    MakeTrees(bench, random);
    for (const bool readingWaits : {false, true}) {
        bench.SetReadingWaits(readingWaits);
        for (const std::int32_t chunk : {500'000, 1'000}) {
            for (int method = 0; method < 4; ++method) {
                bench.compare.ChunkSize = chunk;
                bench.compare.CompareMethod = static_cast<CompareMethod>(method);
                EXPECT_EQ(RunWith(bench, kJobs), RunWith(bench, 1)) << method;
            }
        }
    }
}

// Their access times cannot be kept, which the system says of each file that it is asked for.
TEST(ComparisonWorkers, FilesOfSomebodyElseAreComparedAsOnesOwn) {
    std::mt19937 random(17);
    ComparisonBench bench;
    MakeTrees(bench, random);
    bench.compare.CompareMethod = CompareMethod::Contents;
    const Result own = RunWith(bench, 1);
    std::filesystem::permissions(bench.folder.Path(), std::filesystem::perms::others_exec,
                                 std::filesystem::perm_options::add);
    const TempFolder ofTheOther;
    AsPlainUser(ofTheOther, [&] {
        const Result others = RunWith(bench, kJobs);
        EXPECT_EQ(others.rows, own.rows);
        EXPECT_EQ(others.records, own.records);
        EXPECT_EQ(others.percentages, own.percentages);
    });
}

// A folder with very many entries is read in slices, at the top and below.
TEST(ComparisonWorkers, LargeFoldersAreReadInSlices) {
    ComparisonBench bench;
    for (int number = 0; number < 9'000; ++number) {
        const std::string name = std::to_string(number * 7'919 % 9'000);
        const auto side = static_cast<Side>(number % 2);
        bench.Write(side, name, "1");
        bench.Write(side, "sub/" + name, "1");
        if (number % 3 == 0) bench.Write(Other(side), name, "2");
        if (number % 3 == 0) bench.Write(Other(side), "sub/" + name, "2");
    }
    for (const CompareMethod method : {CompareMethod::SizeAndDate, CompareMethod::Contents}) {
        bench.compare.CompareMethod = method;
        const Result alone = RunWith(bench, 1);
        EXPECT_EQ(alone.rows.size(), 9'001U);
        EXPECT_TRUE(RunWith(bench, kJobs) == alone);
    }
}

// Whatever call fails meanwhile: what comes out is right, or is told, or there is nothing.
TEST(ComparisonWorkers, RandomFaultsNeverGiveAWrongResult) {
    std::mt19937 random(11);
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    MakeTrees(bench, random);
    bench.compare.CompareMethod = CompareMethod::Contents;
    const Result right = RunWith(bench, 1);
    std::set<std::string> orphans;
    const auto isOrphan = [](const std::string& line) { return line.find("|Orphan") != std::string::npos; };
    for (const auto* lines : {&right.rows, &right.records})
        std::copy_if(lines->begin(), lines->end(), std::inserter(orphans, orphans.end()), isOrphan);
    bench.compare.Jobs = kJobs;
    calls.ResetCount();
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const std::size_t count = calls.Count();

    for (int round = 0; round < 60; ++round) {
        calls.ClearFaults();
        calls.ResetCount();
        for (std::size_t faults = 1 + random() % 3; faults > 0; --faults)
            calls.FailAt(1 + random() % count, std::array{EIO, EACCES, ENOENT, ENOMEM}[random() % 4]);
        bench.tools.messages.shown.clear();
        calls.readsSmallFiles = round % 2 != 0;
        const CompareOutcome outcome = bench.Run();
        calls.ClearFaults();
        if (outcome != CompareOutcome::Completed) {
            EXPECT_FALSE(bench.tools.messages.shown.empty());
            continue;
        }
        std::string why;
        EXPECT_TRUE(IsConsistent(bench.results.hold, &why)) << why;
        const std::vector<std::string> rows = bench.Rows(), records = bench.Records();
        if (rows == right.rows && records == right.records) continue;
        EXPECT_TRUE(bench.compare.ErrorsDuringCompare);
        for (const auto* lines : {&rows, &records})
            for (const std::string& line : *lines)
                EXPECT_TRUE(!isOrphan(line) || orphans.contains(line) ||
                            line.find("incomplete") != std::string::npos)
                    << line;
    }
}

// Of every run either all comes out or nothing, and the next one is as good as the first.
TEST(ComparisonWorkers, ACancelAtAnyMomentLeavesNothingHalfDone) {
    std::mt19937 random(13);
    ComparisonBench bench;
    MakeTrees(bench, random);
    bench.Write(Side::Left, "large", Patterned(std::size_t{9} << 20));
    bench.Write(Side::Right, "large", Patterned(std::size_t{9} << 20));
    bench.compare.CompareMethod = CompareMethod::Contents;
    const Result whole = RunWith(bench, 1);
    bench.compare.Jobs = kJobs;
    bench.tools.loop.yields = 0;
    ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
    const std::size_t yields = bench.tools.loop.yields;
    int cancelled = 0;
    for (int round = 0; round < 100; ++round) {
        bench.tools.loop.yields = 0;
        bench.tools.loop.cancelAt = 1 + random() % yields;
        if (bench.Run() == CompareOutcome::Completed) continue;
        ++cancelled;
        EXPECT_THAT(bench.Rows(), ElementsAre("sentinel <> sentinel"));
    }
    EXPECT_GT(cancelled, 50);
    bench.tools.loop.cancelAt = 0;
    EXPECT_TRUE(RunWith(bench, kJobs) == whole);
    EXPECT_EQ(Workers::LeftBehind(), 0U);
}

// The opening, listing or reading of one folder or file never comes back until it is let go.
class BlockingCalls : public SystemCalls {
  public:
    enum class At { Opening, Reading };
    // `name` as it is given to the system.
    void Block(std::string name, At at) {
        name_ = std::move(name);
        at_ = at;
    }

    int OpenAt(int folder, const char* path, int flags, mode_t mode) override {
        const int fd = SystemCalls::OpenAt(folder, path, flags, mode);
        std::unique_lock lock(mutex_);
        if (path != name_) return fd;
        blocked_.insert(fd);
        lock.unlock();
        if (at_ == At::Opening) Wait(fd);
        return fd;
    }
    int Close(int fd) override {
        const std::lock_guard lock(mutex_);
        blocked_.erase(fd);
        return SystemCalls::Close(fd);
    }
    ssize_t GetDents(int fd, void* buffer, std::size_t size) override {
        Wait(fd);
        return SystemCalls::GetDents(fd, buffer, size);
    }
    ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset) override {
        Wait(fd);
        return SystemCalls::PRead(fd, buffer, size, offset);
    }
    bool IsWaiting() {
        const std::lock_guard lock(mutex_);
        return waiting_ > 0;
    }
    void LetGo() {
        const std::lock_guard lock(mutex_);
        free_ = true;
        changed_.notify_all();
    }

  private:
    void Wait(int fd) {
        std::unique_lock lock(mutex_);
        if (!blocked_.contains(fd)) return;
        ++waiting_;
        changed_.wait(lock, [this] { return free_; });
        --waiting_;
    }
    std::string name_;
    At at_ = At::Reading;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::set<int> blocked_;
    int waiting_ = 0;
    bool free_ = false;
};

// Holds up those who look at a file of this name until so many threads do at a time.
class GatheringCalls : public FaultySystemCalls {
  public:
    explicit GatheringCalls(std::size_t wanted) : wanted_(wanted) {}
    bool HaveMet() const { return met_; }
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override {
        if (path == std::string_view("file")) Gather();
        return FaultySystemCalls::StatxAt(folder, path, flags, mask, out);
    }

  private:
    void Gather() {
        std::unique_lock lock(mutex_);
        if (++inside_ >= wanted_) met_ = true;
        changed_.notify_all();
        // Long enough for any machine; where they do not meet, only the first wait is that long.
        if (!met_ && !gaveUp_)
            gaveUp_ = !changed_.wait_for(lock, std::chrono::seconds(10), [this] { return met_ || gaveUp_; });
        --inside_;
    }
    const std::size_t wanted_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t inside_ = 0;
    bool met_ = false, gaveUp_ = false;
};

// It is the server that is waited for, not the processor; who says a number gets that one.
TEST(ComparisonWorkers, AServerIsAskedForMuchAtATime) {
    const std::size_t more = ProcessorCount() + 2;
    if (more > 16) GTEST_SKIP() << "as many as there are processors are enough";
    GatheringCalls calls(more);
    ComparisonBench bench(calls);
    for (int i = 0; i < 48; ++i)
        for (const Side side : kBothSides) bench.Write(side, "sub" + std::to_string(i) + "/file", "1");
    FakeVolumes volumes;
    volumes.drives["/"].kind = DriveKind::Remote;
    const TestToolbox& tools = bench.tools;
    const OwnedToolbox atServer({tools.files, volumes, bench.tools.clock, tools.locale, tools.folders,
                                 bench.tools.messages, bench.tools.loop});
    FolderComparison comparison(atServer.Get(), bench.compare, bench.progress);
    bench.compare.Jobs = 0;
    EXPECT_EQ(CompareOutcome::Completed, comparison.Compare(bench.display.paths, nullptr).outcome);
    EXPECT_TRUE(calls.HaveMet());
}

// Also a compared folder itself, which is looked at before anything is shown.
TEST(ComparisonWorkers, WhatNeverAnswersKeepsNoCancelFromEndingTheRun) {
    using At = BlockingCalls::At;
    const std::vector<std::pair<std::string, At>> cases{
        {"stuck", At::Reading}, {"hanging", At::Reading}, {"left", At::Opening}, {"right", At::Reading}};
    for (const auto& [name, at] : cases) {
        BlockingCalls calls;
        ComparisonBench bench(calls);
        for (const Side side : kBothSides)
            for (const char* file : {"sub/stuck/a", "sub/b", "sub/hanging", "c"})
                bench.Write(side, file, "1");
        const bool isRoot = name == "left" || name == "right";
        calls.Block(isRoot ? bench.folder / name : name, at);
        bench.compare.CompareMethod = CompareMethod::Contents;
        bench.compare.Jobs = kJobs;
        bench.tools.loop.onYield = [&] { bench.tools.loop.cancelled = calls.IsWaiting(); };
        EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
        EXPECT_EQ(bench.progress.messages.empty(), isRoot);
        EXPECT_GT(Workers::LeftBehind(), 0U);
        EXPECT_THAT(bench.Log(), HasSubstr("did not answer"));
        calls.LetGo();
        while (Workers::LeftBehind() > 0) std::this_thread::yield();
    }
}

}  // namespace
}  // namespace vantrel::testing
