// How the files below sub-folders are opened and read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <vector>

#include "core/comparison_support.h"
#include "support/faulty_system_calls.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct Change {
    const char* what;
    std::function<void(const std::string& path)> change;
    std::vector<std::string> types;  // of "y" on the left and on the right, where there is a record
    bool incomplete;
};

std::vector<Change> Changes() {
    return {
        {"nothing", [](const std::string&) {}, {}, false},
        {"gone", [](const std::string& path) { std::filesystem::remove(path); }, {"Orphan"}, false},
        {"a FIFO",
         [](const std::string& path) {
             std::filesystem::remove(path);
             ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
         },
         {"Unknown"},
         false},
        {"a folder",
         [](const std::string& path) {
             std::filesystem::remove(path);
             std::filesystem::create_directory(path);
         },
         {"Unknown"},
         true},
        {"longer",
         [](const std::string& path) { std::filesystem::resize_file(path, 7); },
         {"Newer", "Older"},
         false},
        {"a link to the same bytes",
         [](const std::string& path) {
             std::filesystem::remove(path);
             std::filesystem::create_symlink("x", path);
         },
         {},
         false},
    };
}

// By contents a file is looked at when it is opened: what became of it since the folder was listed counts.
TEST(FilesBelow, FilesThatChangeBetweenListingAndOpening) {
    for (const Change& each : Changes()) {
        for (const int run : {0, 1, 2, 3}) {
            const Side changed = run % 2 == 0 ? Side::Left : Side::Right;
            SCOPED_TRACE(each.what);
            FaultySystemCalls calls;
            ComparisonBench bench(calls);
            bench.SetReadingWaits(run / 2 == 1);
            for (const Side side : kBothSides)
                for (const char* name : {"sub/v", "sub/w", "sub/x", "sub/y", "sub/z"})
                    bench.Write(side, name, "12");
            bench.compare.CompareMethod = CompareMethod::Contents;
            std::size_t opened = 0;
            calls.before = [&](const FaultySystemCalls::Record& record) {
                if (record.call != Call::Open || record.path != "y") return;
                if (opened++ == Index(changed))
                    each.change(bench.folder / (ComparisonBench::NameOf(changed) + "/sub/y"));
            };
            ASSERT_EQ(bench.Run(), CompareOutcome::Completed);
            calls.before = nullptr;
            const std::vector<std::string> records = bench.Records();
            EXPECT_EQ(records.size(), each.types.empty() ? 0U : 1U);
            for (const std::string& type : each.types) EXPECT_THAT(records.at(0), HasSubstr("|" + type));
            EXPECT_EQ(bench.compare.ErrorsDuringCompare, each.incomplete);
            EXPECT_EQ(bench.Rows().at(0).find("incomplete") != std::string::npos, each.incomplete);
        }
    }
}

// Pairs whose sizes differ are opened ahead and need no reading: a slow disk holds up no cancel there.
TEST(FilesBelow, ACancelIsHeardWhileFilesAreOpenedAhead) {
    FaultySystemCalls calls;
    ComparisonBench bench(calls);
    bench.SetReadingWaits(true);
    bench.compare.CompareMethod = CompareMethod::Contents;
    for (int i = 0; i < 100; ++i)
        for (const Side side : kBothSides)
            bench.Write(side, "sub/x" + std::to_string(i), side == Side::Left ? "1" : "12");
    std::size_t opened = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call == Call::Open && record.path.starts_with('x') && ++opened == 20)
            bench.tools.loop.cancelled = true;
    };
    EXPECT_EQ(bench.Run(), CompareOutcome::NoResult);
    EXPECT_LE(opened, 22U);
}

// What makes trees of small files fast: where reading does not wait, a file that is like its counterpart
// costs two or three calls, and the closing of many at once.
TEST(FilesBelow, SmallFilesThatAreAlikeCostFewCalls) {
    constexpr std::size_t kFiles = 300;
    for (const bool readingWaits : {false, true}) {
        FaultySystemCalls calls;
        ComparisonBench bench(calls);
        bench.SetReadingWaits(readingWaits);
        bench.compare.CompareMethod = CompareMethod::Contents;
        const auto count = [&](std::size_t files) {
            for (std::size_t i = 0; i < files; ++i)
                for (const Side side : kBothSides) bench.Write(side, "sub/" + std::to_string(i), "12");
            calls.ResetCount();
            EXPECT_EQ(bench.Run(), CompareOutcome::Completed);
            EXPECT_TRUE(bench.Records().empty());
            EXPECT_THAT(bench.Rows(), ElementsAre(HasSubstr("|" + std::to_string(2 * files) + "|")));
            return calls.Count();
        };
        const std::size_t few = count(kFiles), many = count(2 * kFiles);
        const double perFile = static_cast<double>(many - few) / (2.0 * kFiles);
        EXPECT_LT(perFile, readingWaits ? 4.5 : 3.3);
    }
}

}  // namespace
}  // namespace vantrel::testing
