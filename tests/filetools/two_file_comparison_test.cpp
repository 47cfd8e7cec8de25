#include "filetools/two_file_comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "platform/hashes.h"
#include "platform/workers.h"
#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using testing::FaultySystemCalls;
using testing::TestToolbox;

class RecordedDisplay : public TwoFileDisplay {
  public:
    void Begin() override {
        EXPECT_TRUE(shown.empty() && statuses.empty());
        ++begun;
    }
    void SetStatus(std::string_view text) override { statuses.emplace_back(text); }
    void SetCancellable(bool on) override {
        EXPECT_NE(on, cancellable);
        cancellable = on;
        steps += on ? 1 : 0;
    }
    void SetPercentage(int percentage) override {
        EXPECT_TRUE(cancellable);
        EXPECT_TRUE(percentage >= 0 && percentage <= 100) << percentage;
    }
    void ShowFinding(const FileFinding& finding) override {
        if (finding.result.empty())
            parts.push_back(finding.shown);
        else
            shown.push_back(finding.method);
    }

    std::vector<std::string> statuses;
    std::vector<FileMethod> shown;
    std::vector<PerSide<std::string>> parts;
    int begun = 0;
    bool cancellable = false;
    int steps = 0;
};

class TwoFileComparisonTest : public ::testing::Test {
  protected:
    TwoFileReport Run(const std::vector<FileMethod>& methods = {kFileMethods.begin(), kFileMethods.end()},
                      std::size_t workerCount = 2) {
        Workers workers(workerCount);
        display = {};
        return TwoFileComparison(box.Get(), compare, workers, display)
            .Compare({{box.folder / "one", box.folder / "two"}}, methods);
    }
    FileFinding Only(FileMethod method) {
        const TwoFileReport report = Run({method});
        EXPECT_EQ(1U, report.findings.size());
        return report.findings.empty() ? FileFinding() : report.findings.front();
    }

    TestToolbox box;
    CCompare compare;
    RecordedDisplay display;
};

TEST_F(TwoFileComparisonTest, AllMethodsOfTwoEqualFiles) {
    box.folder.Write("one", "123456789", 1'000'000'000);
    box.folder.Write("two", "123456789", 1'000'000'000);
    const TwoFileReport report = Run();
    EXPECT_EQ(TwoFileOutcome::Completed, report.outcome);
    std::vector<std::string> results;
    for (const FileFinding& finding : report.findings) {
        results.push_back(finding.result);
        EXPECT_EQ(finding.shown[Side::Left], finding.shown[Side::Right]);
        EXPECT_FALSE(finding.differs);
    }
    EXPECT_THAT(results,
                ElementsAre("The files are the same size", "The files are the same",
                            "The files have the same attributes", "Version not available for both files",
                            "The files are the same", "The files are the same", "The files are the same"));
    EXPECT_EQ("9 Bytes", report.findings[0].shown[Side::Left]);
    EXPECT_EQ("2001-09-09 01:46:40", report.findings[1].shown[Side::Left]);
    EXPECT_EQ("No version stamp", report.findings[3].shown[Side::Left]);
    EXPECT_EQ("CBF43926", report.findings[5].shown[Side::Left]);
    EXPECT_EQ("F7C3BC1D808E04732ADF679965CCC34CA7AE3441", report.findings[6].shown[Side::Left]);
    EXPECT_THAT(
        display.statuses,
        ElementsAre("Comparing file sizes...", "Comparing date/time...", "Comparing attributes...",
                    "Comparing version stamps...", "Comparing file contents...", "Calculating File 1 CRC...",
                    "Calculating File 2 CRC...", "Calculating File 1 SHA...", "Calculating File 2 SHA..."));
    EXPECT_EQ(3, display.steps);
    EXPECT_FALSE(display.cancellable);
    ASSERT_EQ(4U, display.parts.size()) << "each hash is shown as soon as it is known";
    EXPECT_EQ("CBF43926", display.parts[0][Side::Left]);
    EXPECT_EQ("", display.parts[0][Side::Right]);
}

TEST_F(TwoFileComparisonTest, EachMethodSeesItsOwnDifference) {
    box.folder.Write("one", "ab", 1'000'000'000);
    box.folder.Write("two", "abc", 1'000'000'100);
    ASSERT_EQ(0, chmod((box.folder / "one").c_str(), 0640));
    ASSERT_EQ(0, chmod((box.folder / "two").c_str(), 0440));
    EXPECT_EQ("File 1 is smaller than file 2", Only(FileMethod::Size).result);
    EXPECT_EQ("File 1 is older than file 2", Only(FileMethod::DateTime).result);
    const FileFinding attributes = Only(FileMethod::Attributes);
    EXPECT_EQ("The files have different attributes", attributes.result);
    EXPECT_EQ("-rw-r-----", attributes.shown[Side::Left]);
    EXPECT_EQ("-r--r----- read-only", attributes.shown[Side::Right]);
    const FileFinding contents = Only(FileMethod::Contents);
    EXPECT_EQ("The files are different", contents.result);
    EXPECT_EQ("01100001 01100010 00101110 00101110 00101110", contents.shown[Side::Left]);
    EXPECT_EQ(0, display.steps) << "sizes that differ decide without reading";
    EXPECT_TRUE(Only(FileMethod::Crc32).differs);
    EXPECT_TRUE(Only(FileMethod::Sha1).differs);

    // What the allowances forgive is no difference of time.
    box.folder.Write("two", "ac", 1'000'000'002);
    compare.IgnoreFAT_NTFS_TwoSecDiff = true;
    EXPECT_EQ("The files are the same", Only(FileMethod::DateTime).result);
    compare.IgnoreFAT_NTFS_TwoSecDiff = false;
    EXPECT_EQ("File 1 is older than file 2", Only(FileMethod::DateTime).result);
    EXPECT_TRUE(Only(FileMethod::Contents).differs);
    EXPECT_EQ(1, display.steps);

    box.folder.Write("one", "");
    box.folder.Write("two", "");
    const FileFinding empty = Only(FileMethod::Contents);
    EXPECT_EQ("The files are the same", empty.result);
    EXPECT_EQ("", empty.shown[Side::Left]);
    EXPECT_EQ("00000000", Only(FileMethod::Crc32).shown[Side::Right]);
}

// Pairs of many sizes, which differ in one byte, in length or not at all: the workers, which take a large
// pair in stretches, come to what the one thread comes to, and that is true.
TEST_F(TwoFileComparisonTest, WorkersFindWhatOneThreadFinds) {
    std::mt19937 random(std::random_device{}());
    const unsigned seed = random();
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    const std::vector<FileMethod> methods = {FileMethod::Contents, FileMethod::Crc32, FileMethod::Sha1};
    for (const std::size_t most : {50UL, 20'000UL, 600'000UL, 5'000'000UL, 20'000'000UL}) {
        compare.ChunkSize = static_cast<std::int32_t>(1 + random() % (std::size_t{1} << (random() % 22)));
        std::string one(1 + random() % most, '\0');
        for (std::size_t at = 0; at < one.size(); at += 1 + at / 8) one[at] = static_cast<char>(random());
        std::string two = one;
        const bool alike = random() % 3 == 0;
        if (!alike) two[random() % two.size()] ^= 1;
        box.folder.Write("one", one);
        box.folder.Write("two", two);
        const TwoFileReport here = Run(methods, 0), workers = Run(methods, 3);
        ASSERT_EQ(methods.size(), here.findings.size());
        ASSERT_EQ(methods.size(), workers.findings.size());
        for (std::size_t i = 0; i < methods.size(); ++i) {
            EXPECT_EQ(!alike, here.findings[i].differs) << one.size();
            EXPECT_EQ(!alike, workers.findings[i].differs) << one.size();
            EXPECT_EQ(here.findings[i].shown[Side::Left], workers.findings[i].shown[Side::Left]);
            EXPECT_EQ(here.findings[i].shown[Side::Right], workers.findings[i].shown[Side::Right]);
        }
    }
    EXPECT_FALSE(compare.ErrorsDuringCompare);
}

TEST_F(TwoFileComparisonTest, OneFileByTwoNamesIsTheSame) {
    box.folder.Write("one", std::string(2'000'000, 'x'));
    ASSERT_EQ(0, symlink("one", (box.folder / "two").c_str()));
    for (const FileFinding& finding : Run().findings) EXPECT_FALSE(finding.differs) << finding.result;
    EXPECT_FALSE(compare.ErrorsDuringCompare);
}

// A file that goes while the pair is compared ends the run with an error, at whichever row that is.
TEST_F(TwoFileComparisonTest, AFileThatVanishesIsAnError) {
    struct Removing : RecordedDisplay {
        void ShowFinding(const FileFinding& finding) override {
            if (finding.method == after) unlink(path.c_str());
        }
        FileMethod after{};
        std::string path;
    } removing;
    removing.path = box.folder / "two";
    for (const std::size_t workerCount : {std::size_t{0}, std::size_t{2}}) {
        Workers workers(workerCount);
        for (const FileMethod after : {FileMethod::DateTime, FileMethod::Version, FileMethod::Contents}) {
            for (const char* name : {"one", "two"}) box.folder.Write(name, "abc");
            static_cast<RecordedDisplay&>(removing) = {};
            removing.after = after;
            EXPECT_THROW((void)TwoFileComparison(box.Get(), compare, workers, removing)
                             .Compare({{box.folder / "one", box.folder / "two"}},
                                      {kFileMethods.begin(), kFileMethods.end()}),
                         ErrorException);
            EXPECT_FALSE(removing.cancellable);
        }
    }
}

TEST_F(TwoFileComparisonTest, LargeFilesGoByTheRuleOfSizes) {
    box.folder.Write("one", "");
    box.folder.Write("two", "");
    ASSERT_EQ(0, truncate((box.folder / "one").c_str(), (off_t{1} << 32) + 5));
    ASSERT_EQ(0, truncate((box.folder / "two").c_str(), 4));
    EXPECT_EQ("The files are the same size", Only(FileMethod::Size).result);
    compare.Sizes = SizeRule::True;
    const FileFinding size = Only(FileMethod::Size);
    EXPECT_EQ("File 1 is larger than file 2", size.result);
    EXPECT_EQ("4 GB", size.shown[Side::Left]);
    EXPECT_TRUE(Only(FileMethod::Contents).differs);
    EXPECT_FALSE(compare.ErrorsDuringCompare);

    // Of 2 GiB and a byte each, which are read as any other pair is.
    for (const char* name : {"one", "two"}) {
        box.folder.Write(name, name);
        ASSERT_EQ(0, truncate((box.folder / name).c_str(), (off_t{1} << 31) + 1));
    }
    EXPECT_TRUE(Only(FileMethod::Contents).differs);
    EXPECT_EQ(1, display.steps);
    EXPECT_FALSE(compare.ErrorsDuringCompare);
    // The words have no size for them: they are judged by size and date, and the log says so.
    compare.Sizes = SizeRule::Words;
    (void)Only(FileMethod::Contents);
    EXPECT_TRUE(compare.ErrorsDuringCompare);
}

TEST_F(TwoFileComparisonTest, PathsThatNameNoFileAreTold) {
    const std::string one = box.folder / "one", folder = box.folder.Path();
    box.folder.Write("one", "1");
    Workers workers(0);
    const auto run = [&](const std::string& left, const std::string& right) {
        box.messages.shown.clear();
        const TwoFileReport report = TwoFileComparison(box.Get(), compare, workers, display)
                                         .Compare({{left, right}}, {FileMethod::Size});
        EXPECT_EQ(TwoFileOutcome::NotFound, report.outcome);
        EXPECT_TRUE(report.findings.empty());
        EXPECT_EQ(0, display.begun) << "what an earlier run found stays";
        EXPECT_EQ(1U, box.messages.shown.size());
        return box.messages.shown.empty() ? std::string() : box.messages.Line(0);
    };
    EXPECT_EQ("File Not Found: File 1 not specified.", run("  ", one));
    EXPECT_EQ("File Not Found: File 2 not specified.", run(" " + one + " ", ""));
    EXPECT_EQ("File Not Found: \"" + folder + "\" is not an existing file.", run(folder, one));
    EXPECT_EQ("File Not Found: " + folder + "gone  is not an existing file.", run(one, folder + "gone"));
    ASSERT_EQ(0, mkfifo((box.folder / "pipe").c_str(), 0600));
    EXPECT_EQ("File Not Found: " + folder + "pipe  is not an existing file.", run(one, folder + "pipe"));
}

// Wherever it is cancelled, with workers and without, nothing is found after that and the user is told once.
TEST_F(TwoFileComparisonTest, CancelsEndTheRun) {
    const std::string content(3'000'000, 'x');
    box.folder.Write("one", content);
    box.folder.Write("two", content);
    compare.ChunkSize = 100'000;
    for (const std::size_t workerCount : {std::size_t{0}, std::size_t{2}}) {
        bool completed = false;
        for (std::size_t at = 6; !completed; at += 5) {
            box.messages.shown.clear();
            box.loop.yields = 0;
            box.loop.cancelAt = at;
            box.loop.cancelled = false;
            const TwoFileReport report = Run({kFileMethods.begin(), kFileMethods.end()}, workerCount);
            completed = report.outcome == TwoFileOutcome::Completed;
            EXPECT_EQ(report.findings.size(), display.shown.size());
            EXPECT_FALSE(display.cancellable);
            if (completed) break;
            EXPECT_EQ(TwoFileOutcome::Cancelled, report.outcome);
            EXPECT_LT(report.findings.size(), kFileMethods.size());
            ASSERT_EQ(1U, box.messages.shown.size());
            EXPECT_EQ("Compare Files: User cancelled the comparison", box.messages.Line(0));
        }
    }
}

// Whichever call fails: an error, or an entry in the log, or findings that are right.
TEST(TwoFileFaults, FailuresAreNeverFindings) {
    FaultySystemCalls calls;
    TestToolbox box(calls);
    CCompare compare;
    Workers none(0);
    for (const char* name : {"one", "two"}) box.folder.Write(name, std::string(100'000, 'a'), 1'000'000'000);
    bool faultReached = true;
    for (std::size_t number = 1; faultReached; ++number) {
        calls.ResetCount();
        calls.ClearFaults();
        calls.FailAt(number, EIO);
        RecordedDisplay display;
        try {
            const TwoFileReport report = TwoFileComparison(box.Get(), compare, none, display)
                                             .Compare({{box.folder / "one", box.folder / "two"}},
                                                      {kFileMethods.begin(), kFileMethods.end()});
            faultReached = calls.Count() >= number;
            for (const FileFinding& found : report.findings)
                EXPECT_TRUE(!found.differs || compare.ErrorsDuringCompare) << number << found.result;
        } catch (const ErrorException& error) {
            EXPECT_NE("", error.Get().Description());
        }
        EXPECT_FALSE(display.cancellable) << number;
    }
}

TEST(TwoFileTexts, BitsAndExactComparison) {
    EXPECT_EQ("", ConvertTextToBinaryDigits(""));
    EXPECT_EQ("11111111 00000000 00101110", ConvertTextToBinaryDigits(std::string_view("\xFF\0.", 3)));
    EXPECT_TRUE(CompareStringsExact("abC", "ABc", ExactCompare::IgnoreCase));
    EXPECT_FALSE(CompareStringsExact("abC", "ABc", ExactCompare::Exact));
    EXPECT_FALSE(CompareStringsExact("ab", "abc", ExactCompare::IgnoreCase));
}

}  // namespace
}  // namespace vantrel
