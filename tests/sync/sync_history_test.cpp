#include "sync/sync_history.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "support/test_toolbox.h"

namespace vantrel {
namespace {

class SyncHistoryTest : public ::testing::Test {
  protected:
    void AppendRun(int number, std::int32_t limit) {
        ASSERT_TRUE(SyncHistory(tools.Get())
                        .Append("/left" + std::to_string(number) + "/", "/right/", kSyncCompleted, limit)
                        .IsOk());
    }
    std::string LeftFolders() {
        std::vector<SyncHistoryRecord> records;
        EXPECT_TRUE(SyncHistory(tools.Get()).Read(records).IsOk());
        std::string all;
        for (const SyncHistoryRecord& record : records)
            all += record.leftFolder.substr(5, record.leftFolder.size() - 6);
        return all;
    }

    testing::TestToolbox tools;
};

TEST_F(SyncHistoryTest, ARecordHas773BytesInTheirPlaces) {
    AppendRun(1, 20);
    const std::string bytes = tools.folder.Read("SyncHist.Log");
    ASSERT_EQ(773U, bytes.size());
    double date = 0;
    std::memcpy(&date, bytes.data(), 8);
    // 2020-09-13 12:26:40 UTC
    EXPECT_NEAR(44087.518518518, date, 1e-6);
    EXPECT_EQ("/left1/ ", bytes.substr(8, 8));
    EXPECT_EQ("/right/ ", bytes.substr(263, 8));
    EXPECT_EQ("Completed Successfully ", bytes.substr(518, 23));
    EXPECT_EQ(' ', bytes.back());
}

TEST_F(SyncHistoryTest, TheRingLosesItsOldestAtTheLimitAndGrowsWhenItIsOverIt) {
    for (int run = 1; run <= 5; ++run) AppendRun(run, 3);
    EXPECT_EQ("345", LeftFolders());
    AppendRun(6, 2);  // 3 records are not 2: it grows
    EXPECT_EQ("3456", LeftFolders());
    std::int32_t limit = 9;
    AdjustNumLogEntries(tools.Get(), 2, false, limit);
    EXPECT_EQ("56", LeftFolders());
    EXPECT_EQ(2, limit);
    AdjustNumLogEntries(tools.Get(), 1, false, limit);
    AppendRun(7, 1);
    EXPECT_EQ("7", LeftFolders());
}

TEST_F(SyncHistoryTest, ALimitThatIsNoneKeepsTheNewestRecord) {
    AppendRun(1, 0);
    EXPECT_EQ("1", LeftFolders());
    AppendRun(2, -5);
    EXPECT_EQ("2", LeftFolders());
    AppendRun(3, 20);
    std::int32_t limit = -5;
    AdjustNumLogEntries(tools.Get(), limit, false, limit);
    EXPECT_EQ("3", LeftFolders());
    EXPECT_EQ(1, limit);
    ASSERT_TRUE(SyncHistory(tools.Get()).Trim(std::numeric_limits<std::int32_t>::min()).IsOk());
    EXPECT_EQ("3", LeftFolders());
    AdjustNumLogEntries(tools.Get(), 40'000, false, limit);
    EXPECT_EQ(32'000, limit);
}

TEST_F(SyncHistoryTest, NoKeepsTheEntriesAndTheLimit) {
    for (int run = 1; run <= 3; ++run) AppendRun(run, 20);
    std::int32_t limit = 20;
    tools.messages.answers = {MessageAnswer::No, MessageAnswer::Yes};
    AdjustNumLogEntries(tools.Get(), 2, true, limit);
    EXPECT_EQ("123", LeftFolders());
    EXPECT_EQ(20, limit);
    EXPECT_EQ(
        "Please confirm: You are about to permanently remove some entries from the Synchronization "
        "Log.\r\n\r\nDo you "
        "wish to continue?",
        tools.messages.Line(0));
    EXPECT_EQ(MessageAnswer::No, tools.messages.shown.at(0).defaultAnswer);
    AdjustNumLogEntries(tools.Get(), 2, true, limit);
    EXPECT_EQ("23", LeftFolders());
    EXPECT_EQ(2, limit);
    AdjustNumLogEntries(tools.Get(), 30, true, limit);  // raising asks nothing and touches nothing
    EXPECT_EQ(2U, tools.messages.shown.size());
    EXPECT_EQ(30, limit);
}

TEST_F(SyncHistoryTest, DamagedFilesAreReadWithBounds) {
    EXPECT_EQ("", LeftFolders());  // missing: made, and empty
    EXPECT_TRUE(tools.folder.Exists("SyncHist.Log"));
    AppendRun(1, 20);
    tools.folder.Write("SyncHist.Log", tools.folder.Read("SyncHist.Log") + "torn");
    AppendRun(2, 20);
    EXPECT_EQ("12", LeftFolders());
    EXPECT_EQ(2 * 773U, tools.folder.Read("SyncHist.Log").size());

    tools.folder.Write("SyncHist.Log", std::string(773, '\xFF'));
    std::vector<SyncHistoryRecord> records;
    ASSERT_TRUE(SyncHistory(tools.Get()).Read(records).IsOk());
    EXPECT_EQ("", HistoryDateText(records.at(0), tools.locale));
    // The last day of the year 9999, and what is no day of a calendar.
    EXPECT_NE("", HistoryDateText({2'958'465, "", "", ""}, tools.locale));
    for (const double date : {2'958'466.0, -657'435.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ("", HistoryDateText({date, "", "", ""}, tools.locale)) << date;
}

TEST(SyncHistory, CutsLongTextsAtACharacter) {
    std::string path(254, 'x');
    path += "\xC3\xA4/";
    const auto bytes = SyncHistory::Encode({0, path, "", ""});
    EXPECT_EQ(std::string(254, 'x'), SyncHistory::Decode(bytes.data()).leftFolder);
}

TEST(SyncHistory, EntriesAreWholeNumbersFrom1To32000) {
    std::int32_t entries = 0;
    for (const char* refused : {"0", "32001", "abc", "", "99999999999999999999", "0.5", "-1", "1,5"})
        EXPECT_FALSE(ParseNumLogEntries(refused, entries)) << refused;
    for (const auto& [text, value] :
         {std::pair{"1", 1}, {"32000", 32000}, {"1.5", 2}, {" 7 ", 7}, {"2.5", 2}}) {
        EXPECT_TRUE(ParseNumLogEntries(text, entries)) << text;
        EXPECT_EQ(value, entries) << text;
    }
}

TEST(SyncHistory, AFieldShowsUpToThreeBlanks) {
    EXPECT_EQ("/a  b", ShownHistoryField("/a  b   c"));
    EXPECT_EQ("   c", ShownHistoryField("   c"));
    EXPECT_EQ("/a", ShownHistoryField("/a"));
}

}  // namespace
}  // namespace vantrel
