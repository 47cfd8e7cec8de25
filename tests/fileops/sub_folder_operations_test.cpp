#include "fileops/sub_folder_operations.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "fileops/told_at_end.h"
#include "support/faulty_system_calls.h"
#include "support/shell_fixture.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using enum MessageAnswer;

class SubFolderOperationsTest : public ::testing::Test, public SubFolderHost {
  public:
    SubFolderOperationsTest() {
        drop.Write("left/x/newer", "12345");
        drop.Write("left/orphan", "1234567");
        drop.Write("right/x/Newer", "1");
        for (PerSide<ResultList>* pair : {&lists, &twins}) {
            (*pair)[Side::Left].AddCopy(Row("x/newer", "x/newer", ResultType::Newer, 5));
            (*pair)[Side::Right].AddCopy(Row("x/newer", "x/Newer", ResultType::Older, 1));
            (*pair)[Side::Left].AddCopy(Row("orphan", "orphan", ResultType::Orphan, 7));
            (*pair)[Side::Right].AddPlaceholder();
        }
        for (std::size_t i = 0; i < 2; ++i) lists[Side::Left][i].selected = true;
    }
    static ResultRow Row(std::string_view text, std::string_view realName, ResultType type,
                         std::int64_t size) {
        ResultRow row;
        row.text = text;
        row.realName = realName;
        row.kind = RowKind::File;
        row.type = type;
        row.size = Currency::FromWhole(size);
        return row;
    }
    std::string FolderPath(Side side) const override {
        return drop / (side == Side::Left ? "left" : "right");
    }
    std::vector<ShellRoot> Roots() const override { return {}; }
    Side CurrentListview() const override { return Side::Left; }
    PerSide<ResultList>& Lists() override { return lists; }
    PerSide<ResultList>& TwinLists() override { return twins; }
    void ShowProgressPanel(bool shown) override { happened.emplace_back(shown ? "grow" : "shrink"); }
    void SetProgressText(const std::string& text) override {
        if (!text.empty()) happened.push_back(text);
    }
    void CopyItemsFromHiddenLVWToVisibleLVW() override { happened.emplace_back("refresh"); }
    void SetResultsOutOfDate() override { outOfDate = true; }

    // "left text, its type | right text, its type" of both pairs of lists, which must be alike.
    std::string State(std::size_t i) {
        const auto of = [i](PerSide<ResultList>& pair) {
            std::string text;
            for (const Side side : kBothSides)
                text += std::string(pair[side][i].text) + " " +
                        std::to_string(static_cast<int>(pair[side][i].type)) +
                        (side == Side::Left ? "|" : "");
            return text;
        };
        EXPECT_EQ(of(lists), of(twins));
        EXPECT_FALSE(lists[Side::Left][i].selected);
        return of(lists);
    }

    TestToolbox box;
    const TempFolder& drop = box.folder;
    FakeVolumes volumes;
    ScriptedMessages& messages = box.messages;
    Toolbox tools{
        {box.files, volumes, box.clock, box.locale, box.folders, messages, box.loop}, box.reporter, box.log};
    ScriptedProgress progress;
    ScriptedQuestions questions;
    SystemShellOperations shell{
        {box.files, volumes, box.clock, box.loop, progress, questions, {drop / "trash", geteuid()}}};
    ShellWrappers wrappers{shell, messages};
    SubFolderOperations operations{tools, wrappers, *this};
    PerSide<ResultList> lists, twins;
    std::vector<std::string> happened;
    bool outOfDate = false;
};

TEST_F(SubFolderOperationsTest, CopiesFileByFileAndPutsTheRowsRight) {
    EXPECT_EQ(2U, operations.CopyFilesToOtherDir(Confirm::Yes, PartOf::Command).done);
    EXPECT_EQ((Tree{{"orphan", "f:1234567"}, {"x", "d"}, {"x/Newer", "f:12345"}}), TreeOf(drop / "right/"));
    EXPECT_EQ("x/newer 3|x/newer 3", State(0));
    EXPECT_EQ("orphan 3|orphan 3", State(1));
    EXPECT_THAT(happened,
                ElementsAre("grow", "Copying x/newer...", "Copying orphan...", "shrink", "refresh"));
    EXPECT_EQ("Confirm Copy: You are about to copy 2 file(s).\r\n\r\nDo you wish to continue?",
              messages.Line(0));
    EXPECT_EQ("Copy Status: Copy complete.", messages.Line(1));
    EXPECT_TRUE(outOfDate);
}

TEST_F(SubFolderOperationsTest, MovesAndLeavesPlaceholders) {
    EXPECT_EQ(2U, operations.MoveFilesToOtherDir(Confirm::No, PartOf::Synchronization).done);
    EXPECT_EQ((Tree{{"x", "d"}}), TreeOf(drop / "left/"));
    EXPECT_EQ(" 0|x/newer 1", State(0));
    EXPECT_EQ(" 0|orphan 4", State(1));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ("shrink", happened.back());
}

TEST_F(SubFolderOperationsTest, DeletesAndRecycles) {
    EXPECT_EQ(2U, operations.RecycleFiles(Confirm::Yes, PartOf::Command).done);
    EXPECT_EQ("12345", drop.Read("trash/files/newer"));
    EXPECT_EQ(" 0|x/newer 4", State(0));
    EXPECT_EQ(" 0| 0", State(1));
    EXPECT_EQ("Recycle Status: Send to Recycle Bin complete.", messages.Line(1));

    // Nobody asks, and it is the trash all the same.
    lists[Side::Left][1] = twins[Side::Left][1] = Row("unasked", "unasked", ResultType::Orphan, 1);
    drop.Write("left/unasked", "1");
    lists[Side::Left][1].selected = true;
    EXPECT_EQ(1U, operations.RecycleFiles(Confirm::No, PartOf::Synchronization).done);
    EXPECT_TRUE(drop.Exists("trash/files/unasked"));

    volumes.drives["/"].kind = DriveKind::Remote;
    lists[Side::Left][1] = twins[Side::Left][1] = Row("again", "again", ResultType::Orphan, 1);
    drop.Write("left/again", "1");
    lists[Side::Left][1].selected = true;
    messages.shown.clear();
    EXPECT_EQ(1U, operations.RecycleFiles(Confirm::Yes, PartOf::Command).done);
    EXPECT_FALSE(drop.Exists("left/again") || drop.Exists("trash/files/again"));
    EXPECT_EQ("Delete from Network Drive", messages.shown.at(1).title);
    EXPECT_EQ("Delete Status: Delete complete.", messages.Line(2));
}

TEST_F(SubFolderOperationsTest, ActsOnNothingThatIsUnknown) {
    for (PerSide<ResultList>* pair : {&lists, &twins}) {
        (*pair)[Side::Left][1].kind = RowKind::Unknown;
        (*pair)[Side::Left][0].kind = RowKind::Unknown;
    }
    for (const auto operation :
         {&SubFolderOperations::DeleteFiles, &SubFolderOperations::RecycleFiles,
          &SubFolderOperations::MoveFilesToOtherDir, &SubFolderOperations::CopyFilesToOtherDir})
        EXPECT_EQ(0U, (operations.*operation)(Confirm::No, PartOf::Synchronization).done);
    EXPECT_EQ("12345", drop.Read("left/x/newer"));
    EXPECT_EQ("1", drop.Read("right/x/Newer"));
    EXPECT_FALSE(drop.Exists("right/orphan"));
}

// What lies behind a link or in both folders is told of and left alone, also where only the place of a copy
// does; a file of this side can then still be deleted.
TEST_F(SubFolderOperationsTest, ActsOnNothingThatLiesElsewhereAsWell) {
    const auto place = [this](Side side, std::size_t row) {
        for (PerSide<ResultList>* pair : {&lists, &twins})
            (*pair)[side][row].elsewhere =
                side == Side::Left ? Elsewhere::BehindLink : Elsewhere::InOtherFolder;
    };
    place(Side::Right, 0);
    place(Side::Right, 1);
    const Tree before = TreeOf(drop / "");
    for (const auto operation :
         {&SubFolderOperations::CopyFilesToOtherDir, &SubFolderOperations::MoveFilesToOtherDir})
        EXPECT_EQ(0U, (operations.*operation)(Confirm::Yes, PartOf::Command).done);
    EXPECT_EQ(before, TreeOf(drop / ""));
    const std::string about =
        "2 of the selected files lie behind a link to a folder, or belong to both compared folders.  They "
        "are "
        "left alone.";
    ASSERT_EQ(2U, messages.shown.size());
    EXPECT_EQ("Unable to Copy: " + about, messages.Line(0));
    EXPECT_EQ("Unable to Move: " + about, messages.Line(1));
    EXPECT_FALSE(outOfDate);

    place(Side::Left, 0);
    messages.shown.clear();
    EXPECT_EQ(1U, operations.DeleteFiles(Confirm::Yes, PartOf::Command).done);
    EXPECT_TRUE(drop.Exists("left/x/newer"));
    EXPECT_FALSE(drop.Exists("left/orphan"));
    EXPECT_THAT(messages.Line(0), ::testing::StartsWith("Unable to Delete: 1 of the selected files"));
    EXPECT_THAT(messages.Line(1), ::testing::HasSubstr("permanently delete 1 file(s)"));
}

TEST_F(SubFolderOperationsTest, WhatFailedKeepsItsRowAndIsNotCalledComplete) {
    drop.MakeFolder("right/orphan");  // in the way
    const auto copied = operations.CopyFilesToOtherDir(Confirm::Yes, PartOf::Command);
    EXPECT_EQ(1U, copied.done);
    EXPECT_TRUE(copied.cancelled);
    EXPECT_EQ(1U, questions.troubles.size());
    EXPECT_EQ(ResultType::Orphan, lists[Side::Left][1].type);
    EXPECT_TRUE(lists[Side::Left][1].selected);
    EXPECT_EQ(1U, messages.shown.size());
    for (ResultRow& row : lists[Side::Left]) row.selected = false;
    messages.shown.clear();
    EXPECT_EQ(0U, operations.DeleteFiles(Confirm::Yes, PartOf::Command).done);
    EXPECT_EQ(0U, operations.DeleteFiles(Confirm::Yes, PartOf::Synchronization).done);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("Unable to Delete: No files selected.  Please select some files and try again. ",
              messages.Line(0));
}

// Of two copies that wait for their names one does not get its own: its row alone stays as it was.
TEST_F(SubFolderOperationsTest, OnlyTheCopyThatFailedInTheEndKeepsItsRow) {
    FaultySystemCalls calls;
    FileSystem files(calls);
    SystemShellOperations late{
        {files, volumes, box.clock, box.loop, progress, questions, {drop / "trash", geteuid()}}};
    ShellWrappers lateWrappers{late, messages};
    SubFolderOperations lateOperations{tools, lateWrappers, *this};
    bool editedInBetween = false;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call != Call::Syncfs || editedInBetween) return;
        editedInBetween = true;
        drop.Write("right/orphan", "came up");
    };
    const auto copied = lateOperations.CopyFilesToOtherDir(Confirm::Yes, PartOf::Command);
    ASSERT_TRUE(editedInBetween);
    EXPECT_EQ(1U, copied.done);
    EXPECT_TRUE(copied.cancelled);
    EXPECT_EQ("came up", drop.Read("right/orphan"));
    EXPECT_EQ("x/newer 3|x/newer 3", State(0));
    EXPECT_EQ(ResultType::Orphan, lists[Side::Left][1].type);
    EXPECT_TRUE(lists[Side::Left][1].selected);
    ASSERT_EQ(2U, messages.shown.size());
    EXPECT_THAT(messages.Line(1),
                ::testing::StartsWith("Copy Status: Not copied: \"" + (drop / "right/orphan")));
}

TEST_F(SubFolderOperationsTest, TimesThatCouldNotBeKeptAreToldAtTheEnd) {
    FaultySystemCalls calls;
    calls.FailAll(Call::Futimens, EPERM);
    FileSystem files(calls);
    SystemShellOperations shellWithoutTimes{
        {files, volumes, box.clock, box.loop, progress, questions, {drop / "trash", geteuid()}}};
    ShellWrappers itsWrappers{shellWithoutTimes, messages};
    SubFolderOperations itsOperations{tools, itsWrappers, *this};
    EXPECT_EQ(2U, itsOperations.CopyFilesToOtherDir(Confirm::No, PartOf::Command).notKept.times);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("Times Not Kept: The time of 2 files could not be kept.", messages.Line(0));
    EXPECT_EQ("The time of 1 file could not be kept.\r\nExtended attributes of 3 files could not be kept.",
              DescribeNotKept({1, 3}));
    EXPECT_EQ("Attributes Not Kept", TitleOf(NotKept{1, 3}));
}

}  // namespace
}  // namespace vantrel::testing
