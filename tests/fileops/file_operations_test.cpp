#include "fileops/file_operations.h"

#include <gmock/gmock.h>

#include "fileops/object_properties.h"
#include "fileops/shell_calls.h"
#include "fileops/sub_folder_operations.h"
#include "platform/names/names.h"
#include "support/fake_volumes.h"
#include "support/shell_fixture.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

using ::testing::ElementsAre;
using enum MessageAnswer;
const std::string kContinue = "\r\n\r\nDo you wish to continue?";

// Records the requests and gives the results it is told to; without one all is done.
class FakeShell : public ShellOperations {
  public:
    std::vector<ShellRequest> requests;
    std::vector<std::string> single;  // "copy a b", "delete a"
    ShellResult result;
    bool failSingle = false;

    ShellResult Run(const ShellRequest& request) override {
        requests.push_back(request);
        ShellResult answer = result;
        for (const std::string& source : request.sources)
            answer.items.push_back({source, ItemOutcome::Done, {}});
        return answer;
    }
    Error CopyOneFile(const OneFile& file) override {
        single.push_back("copy " + file.path + " " + file.target);
        return Answer();
    }
    FinishedCopies FinishCopies() override { return {}; }
    Error DeleteOneFile(const OneFile& file) override {
        single.push_back("delete " + file.path);
        return Answer();
    }

  private:
    Error Answer() const { return failSingle ? Error::FromErrno(EACCES) : Error(); }
};

// What the user sees of an operation beside the boxes.
class Recorder : public WaitObserver {
  public:
    void WaitChanged(bool waiting) override { happened.emplace_back(waiting ? "busy" : "normal"); }

    std::vector<std::string> happened;
};

ResultRow Row(std::string_view text, ResultType type, std::int64_t size, std::string_view realName = {}) {
    ResultRow row;
    row.text = text;
    row.realName = realName.empty() ? text.substr(text.starts_with(kFolderMarker) ? 1 : 0) : realName;
    row.kind = text.empty()                      ? RowKind::Placeholder
               : text.starts_with(kFolderMarker) ? RowKind::Folder
                                                 : RowKind::File;
    row.type = type;
    row.size = Currency::FromWhole(size);
    row.selected = row.IsReal();
    return row;
}

class FileOperationsTest : public ::testing::Test {
  public:
    FileOperationsTest() {
        drop.Write("left/newer", "12345");
        drop.Write("left/orphan", "1234567");
        drop.Write("left/Sub/f", "123");
        drop.Write("right/NEWER", "1");
        busy.SetWaitObserver(&seen);
        volumes.drives = {{drop / "left", {}}, {drop / "right", {}}, {"/", {}}};
        Pair(Row("newer", ResultType::Newer, 5), Row("newer", ResultType::Older, 1, "NEWER"));
        Pair(Row("orphan", ResultType::Orphan, 7), ResultRow());
        Pair(Row("\\Sub", ResultType::OrphanFolder, 3), ResultRow());
        lists[Side::Right][0].selected = false;
    }
    void Pair(const ResultRow& left, const ResultRow& right) {
        lists[Side::Left].Add(left);
        lists[Side::Right].Add(right);
    }
    void Select(std::initializer_list<std::size_t> rows) {
        for (std::size_t i = 0; i < lists[Side::Left].Count(); ++i)
            lists[Side::Left][i].selected = std::ranges::count(rows, i) > 0;
    }
    ListRef List(Side side = Side::Left) const {
        const PerSide<std::string> folders{{drop / "left/", drop / "right/"}};
        return {lists[side], lists[Other(side)], folders[side], folders[Other(side)]};
    }
    std::string Line(std::size_t i) const { return messages.Line(i); }
    std::string Space(const std::string& drive, std::int64_t need, std::int64_t free) {
        const auto size = [](std::int64_t n) {
            return ConvertBytesToCorrectByteTypeString(Currency::FromWhole(n));
        };
        return "Insufficient Disk Space: Not enough space available on target drive.\r\n\r\nTarget Drive: " +
               drive + "\r\nSpace Required: " + size(need) + "\r\nSpace Available: " + size(free);
    }

    TestToolbox box;
    const TempFolder& drop = box.folder;
    FakeVolumes volumes;
    ScriptedMessages& messages = box.messages;
    Toolbox tools{
        {box.files, volumes, box.clock, box.locale, box.folders, messages, box.loop}, box.reporter, box.log};
    FakeShell shell;
    ShellWrappers wrappers{shell, messages};
    Recorder seen;
    BusyState busy;
    std::function<void()> autoCompareStep = [this] { seen.happened.emplace_back("compare"); };
    FileOperations operations{tools, wrappers, busy, autoCompareStep};
    HoldLists lists;
};

TEST_F(FileOperationsTest, WrappersSayWhatBecameOfIt) {
    const std::vector<std::string> one{"/a/b"};
    EXPECT_TRUE(wrappers.CopyFiles(one, "/t", {}).AllDone());
    EXPECT_TRUE(wrappers.MoveFiles(one, "/t", {}).AllDone());
    EXPECT_TRUE(wrappers.RecycleFiles(one, {}).AllDone());
    EXPECT_TRUE(wrappers.DeleteFilesPermanently(one, {}).AllDone());
    wrappers.CopyFiles(one, "/t", {.confirm = false, .silent = true});
    wrappers.RenameFile("/a/b", "/a/c", {.confirm = false, .showErrors = false});
    ASSERT_EQ(4U, messages.shown.size());
    EXPECT_EQ("Copy Succeeded: Selected item(s) copied to /t", Line(0));
    EXPECT_EQ("Move Succeeded: Selected item(s) moved to /t", Line(1));
    EXPECT_EQ("Delete Succeeded: Selected item(s) sent to the Recycle Bin", Line(2));
    EXPECT_EQ("Delete Succeeded: Selected item(s) deleted", Line(3));
    EXPECT_TRUE(shell.requests[4].noConfirmation && shell.requests[4].silent && shell.requests[4].noErrorUi);
    EXPECT_FALSE(shell.requests[0].noConfirmation || shell.requests[0].silent || shell.requests[0].noErrorUi);
    EXPECT_EQ(ShellOperation::Rename, shell.requests[5].operation);
    EXPECT_TRUE(shell.requests[5].noErrorUi);

    messages.shown.clear();
    shell.result.code = shell.result.lastSystemError = 13;
    EXPECT_FALSE(wrappers.MoveFiles(one, "/t", {}).AllDone());
    wrappers.RenameFile("/a/b", "/a/c", {});
    wrappers.MoveFiles(one, "/t", {.silent = true});
    wrappers.RenameFile("/a/b", "/a/c", {.showErrors = false});
    shell.result.anyOperationsAborted = true;
    EXPECT_FALSE(wrappers.MoveFiles(one, "/t", {}).AllDone());
    wrappers.RenameFile("/a/b", "/a/c", {});
    ASSERT_EQ(3U, messages.shown.size());
    EXPECT_EQ("API Error: 13", Line(0));
    EXPECT_EQ("API Error: 13", Line(1));
    EXPECT_EQ("Rename Failed: Rename operation was cancelled", Line(2));
    EXPECT_EQ(MessageIcon::Warning, messages.shown[0].icon);
}

TEST_F(FileOperationsTest, NothingSelectedHasItsThreeTexts) {
    Select({});
    operations.CopyFilesToOtherDirAndLVW(List(), Confirm::Yes, PartOf::Command);
    operations.MoveFilesToSpecificDir(List(), drop / "right", Confirm::Yes);
    operations.DeleteFilesFromLVW(List(), Confirm::Yes, PartOf::Command);
    operations.DeletePermanentlyFilesFromLVW(List(), Confirm::Yes, Prompts::Shown);
    operations.CopyFilesToOtherDirAndLVW(List(), Confirm::Yes, PartOf::Synchronization);
    operations.DeleteFilesFromLVW(List(), Confirm::Yes, PartOf::Synchronization);
    operations.DeletePermanentlyFilesFromLVW(List(), Confirm::Yes, Prompts::Quiet);
    // A placeholder that is marked all the same never becomes the path of the folder.
    lists[Side::Right][1].selected = true;
    operations.DeleteFilesFromLVW(List(Side::Right), Confirm::No, PartOf::Command);
    operations.DeletePermanentlyFilesFromLVW(List(Side::Right), Confirm::No, Prompts::Quiet);
    operations.MoveFilesToOtherDirAndLVW(List(Side::Right), Confirm::No);
    ASSERT_EQ(6U, messages.shown.size());
    const std::string blank = ": No item(s) selected.  Please select some item(s) and try again. ";
    EXPECT_EQ("Unable to Copy" + blank, Line(0));
    EXPECT_EQ("Unable to Move" + blank, Line(1));
    EXPECT_EQ("Unable to Delete: No item(s) selected. Please select some item(s) and try again.", Line(2));
    EXPECT_EQ(Line(2), Line(3));
    EXPECT_EQ("No item(s) selected. Please select some item(s), and try again.", messages.shown[4].text);
    EXPECT_EQ("Unable to Move" + blank, Line(5));
    EXPECT_TRUE(shell.requests.empty());
    EXPECT_TRUE(seen.happened.empty());
}

TEST_F(FileOperationsTest, CopiesAndMovesTheSelection) {
    operations.CopyFilesToOtherDirAndLVW(List(), Confirm::Yes, PartOf::Command);
    ASSERT_EQ(1U, shell.requests.size());
    EXPECT_THAT(shell.requests[0].sources,
                ElementsAre(drop / "left/newer", drop / "left/orphan", drop / "left/Sub"));
    EXPECT_EQ(drop / "right/", shell.requests[0].target);
    EXPECT_TRUE(shell.requests[0].ignoreLetterCase);
    EXPECT_EQ("Confirm Copy: You are about to copy 3 objects(s)." + kContinue, Line(0));
    EXPECT_EQ("Copy", messages.confirmations[0].operation);
    EXPECT_EQ(drop / "right/", messages.confirmations[0].target);
    EXPECT_THAT(seen.happened, ElementsAre("busy", "compare", "normal"));

    messages.shown.clear();
    seen.happened.clear();
    shell.result.code = 5;
    EXPECT_FALSE(operations.MoveFilesToSpecificDir(List(), drop / "else", Confirm::No).AllDone());
    EXPECT_THAT(seen.happened, ElementsAre("busy", "compare", "normal"));
    EXPECT_TRUE(shell.requests[1].noConfirmation);
    EXPECT_TRUE(messages.shown.empty());
    shell.result.code = 0;
    operations.MoveFilesToOtherDirAndLVW(List(), Confirm::Yes);
    EXPECT_EQ("Confirm Move: You are about to move 3 objects(s)." + kContinue, Line(0));
    operations.CopyFilesToOtherDirAndLVW(List(), Confirm::No, PartOf::Synchronization);
    EXPECT_EQ(4U, shell.requests.size());
    EXPECT_EQ(5U, seen.happened.size() - 3);  // the copy within a synchronisation leaves the panes alone
    messages.answers = {No};
    operations.CopyFilesToSpecificDir(List(), drop / "right", Confirm::Yes);
    EXPECT_EQ(4U, shell.requests.size());
}

TEST_F(FileOperationsTest, DropsAreCountedAndAsked) {
    drop.Write("from/a", "12345");
    drop.Write("from/Dir/x", "1234567");
    drop.Write("right/a", "12");
    drop.Write("right/Dir/x", "1234");
    volumes.drives[drop / "right"].space = Currency::FromWhole(5);
    const std::vector<std::string> paths{drop / "from/a", drop / "from/Dir"};
    operations.CopyOLEDropObjectsToDir(paths, drop / "right", Confirm::Yes);
    EXPECT_EQ("Confirm Copy: You are about to copy 2 objects(s)." + kContinue, Line(0));
    EXPECT_EQ(Space(drop / "right", 6, 5), Line(1));
    EXPECT_TRUE(shell.requests.empty());
    volumes.drives[drop / "right"].space = Currency::FromWhole(6);
    operations.CopyOLEDropObjectsToDir(paths, drop / "right", Confirm::No);
    EXPECT_EQ(paths, shell.requests.at(0).sources);
    // On one drive a move needs no room; elsewhere a drive that is gone stops it.
    volumes.drives[drop / "left"].space = Currency();
    operations.MoveOLEDropObjectsToDir({drop / "left/orphan"}, drop / "left/Sub", Confirm::No);
    EXPECT_EQ(2U, shell.requests.size());
    volumes.drives[drop / "right"].ready = false;
    messages.shown.clear();
    operations.MoveOLEDropObjectsToDir(paths, drop / "right", Confirm::No);
    EXPECT_EQ(2U, shell.requests.size());
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("Problems accessing drive.", messages.shown[0].text);
}

TEST_F(FileOperationsTest, SpaceArithmetic) {
    const ResultList &left = lists[Side::Left], &right = lists[Side::Right];
    EXPECT_EQ(Currency::FromWhole(15), GetSizeOfSelectedRows(left));
    EXPECT_EQ(Currency::FromWhole(5), GetSizeOfSelectedRowsWithCounterpart(left, right));
    EXPECT_EQ(Currency(), GetSizeOfSelectedRowsWithCounterpart(left, ResultList()));
    volumes.drives[drop / "right"].space = Currency();
    Select({0});  // Newer files alone need nothing
    EXPECT_TRUE(EnoughSpaceForCopyLvwToLvw(tools, left, right, drop / "left", drop / "right").enough);
    Select({0, 1, 2});
    SpaceAnswer answer = EnoughSpaceForCopyLvwToLvw(tools, left, right, drop / "left", drop / "right");
    EXPECT_FALSE(answer.enough);
    EXPECT_EQ(Currency::FromWhole(10), answer.required);
    EXPECT_EQ(drop / "right", answer.drive);
    EXPECT_FALSE(EnoughSpaceForMoveLvwToLvw(tools, left, right, drop / "left", drop / "right").enough);
    EXPECT_TRUE(EnoughSpaceForMoveLvwToLvw(tools, left, right, drop / "right", drop / "right/x").enough);

    drop.Write("other/orphan", "12");
    drop.Write("other/Sub/f", "1234567");
    drop.MakeFolder("other/newer");  // a folder is no counterpart of a file
    EXPECT_EQ(Currency::FromWhole(9),
              GetSizeCurrencyOfComplimentFilesInSpecificDir(tools, left, drop / "other"));
    volumes.drives[drop / "other"].space = Currency::FromWhole(5);
    answer = EnoughSpaceForCopyLvwToSpecificDir(tools, left, drop / "left", drop / "other");
    EXPECT_FALSE(answer.enough);
    EXPECT_EQ(Currency::FromWhole(6), answer.required);
    EXPECT_FALSE(EnoughSpaceForMoveLvwToSpecificDir(tools, left, drop / "left", drop / "other").enough);
    EXPECT_TRUE(EnoughSpaceForMoveLvwToSpecificDir(tools, left, drop / "other/x", drop / "other").enough);
    operations.CopyFilesToSpecificDir(List(), drop / "other", Confirm::No);
    EXPECT_EQ(Space(drop / "other", 6, 5), Line(0));
    volumes.drives[drop / "other"].exists = false;
    operations.CopyFilesToSpecificDir(List(), drop / "other", Confirm::No);
    ASSERT_EQ(2U, messages.shown.size());
    EXPECT_EQ("Copy: Problems accessing the target drive.", Line(1));
    EXPECT_EQ(MessageIcon::Stop, messages.shown[1].icon);
    EXPECT_TRUE(shell.requests.empty());
}

// A link takes its own size at the target, below a folder too, whatever its row or the row of the folder
// shows.
TEST_F(FileOperationsTest, SpaceIsThatOfLinksThemselves) {
    drop.Write("big", std::string(5000, 'x'));
    std::filesystem::create_symlink(drop / "big", drop / "left/orphan link");
    std::filesystem::create_symlink(drop / "big", drop / "left/Sub/link");
    const auto own = static_cast<std::int64_t>((drop / "big").size());
    Seen seenLink;
    seenLink.size = static_cast<std::uint64_t>(own);
    lists = {};
    Pair(Row("orphan link", ResultType::Orphan, 5000), ResultRow());
    lists[Side::Left][0].isLink = true;
    lists[Side::Left][0].seen = &seenLink;
    Pair(Row("\\Sub", ResultType::OrphanFolder, 5003), ResultRow());
    volumes.drives[drop / "right"].space = Currency::FromWhole(2 * own + 3);
    const auto copy = [&] {
        return EnoughSpaceForCopyLvwToLvw(tools, lists[Side::Left], lists[Side::Right], drop / "left",
                                          drop / "right");
    };
    EXPECT_TRUE(copy().enough);
    volumes.drives[drop / "right"].space -= Currency::FromWhole(1);
    EXPECT_FALSE(copy().enough);
    EXPECT_EQ(Currency::FromWhole(2 * own + 3), copy().required);
}

TEST_F(FileOperationsTest, DeletesByTheKindOfDrive) {
    operations.DeleteFilesFromLVW(List(), Confirm::Yes, PartOf::Command);
    EXPECT_EQ("Confirm Delete: You are about to send 3 item(s) to the Recycle Bin." + kContinue, Line(0));
    EXPECT_EQ(ShellOperation::Recycle, shell.requests.at(0).operation);
    const std::string tail = "\r\n\r\nThey are permanently deleted.\r\n\r\nDo you still wish to continue?";
    const struct {
        DriveKind kind;
        std::string text;
    } cases[] = {
        {DriveKind::Removable,
         "Delete from Removeable Drive: Files on removeable drives are not sent to the Recycle Bin." + tail},
        {DriveKind::Remote,
         "Delete from Network Drive: Files on network drives are not sent to the Recycle Bin." + tail},
    };
    for (const auto& one : cases) {
        volumes.drives[drop / "left"].kind = one.kind;
        for (const MessageAnswer answer : {Yes, No}) {
            messages.shown.clear();
            shell.requests.clear();
            messages.answers = {Yes, answer};
            operations.DeleteFilesFromLVW(List(), Confirm::Yes, PartOf::Command);
            EXPECT_EQ(one.text, Line(1));
            EXPECT_EQ(answer == Yes ? 1U : 0U, shell.requests.size());
            if (answer == Yes) {
                EXPECT_EQ(ShellOperation::Delete, shell.requests[0].operation);
            }
        }
        // Without a confirmation no drive is looked at.
        operations.DeleteFilesFromLVW(List(), Confirm::No, PartOf::Synchronization);
        EXPECT_EQ(ShellOperation::Recycle, shell.requests.back().operation);
    }
    messages.shown.clear();
    seen.happened.clear();
    operations.DeletePermanentlyFilesFromLVW(List(), Confirm::Yes, Prompts::Shown);
    EXPECT_EQ("Confirm Delete: You are about to permanently delete 3 item(s)." + kContinue, Line(0));
    EXPECT_THAT(seen.happened, ElementsAre("busy", "compare", "normal"));
}

// A letter case that differs between the sides does not make two objects of one.
TEST_F(FileOperationsTest, ACopyGoesOverItsCounterpartInAnotherLetterCase) {
    ScriptedProgress progress;
    ScriptedQuestions questions;
    SystemShellOperations real({box.files, volumes, box.clock, box.loop, progress, questions, {}});
    ShellWrappers doors(real, messages);
    FileOperations live(tools, doors, busy, autoCompareStep);
    drop.Write("left/Sub/Deep/f", "new");
    drop.Write("right/sub/deep/F", "old");
    lists[Side::Left][2].type = ResultType::DifferentFolder;
    lists[Side::Right][2] = Row("\\Sub", ResultType::DifferentFolder, 3, "sub");
    EXPECT_TRUE(live.CopyFilesToOtherDirAndLVW(List(), Confirm::No, PartOf::Command).AllDone());
    const Tree tree = TreeOf(drop / "right/");
    EXPECT_EQ("f:12345", tree.at("NEWER"));
    EXPECT_EQ("f:new", tree.at("sub/deep/F"));
    EXPECT_FALSE(tree.contains("newer") || tree.contains("Sub") || tree.contains("sub/deep/f"));
    lists[Side::Right][1] = Row("orphan", ResultType::Same, 7);  // as the next comparison shows it
    EXPECT_TRUE(live.MoveFilesToOtherDirAndLVW(List(), Confirm::No).AllDone());
    EXPECT_EQ(tree, TreeOf(drop / "right/"));
}

// What a pane shows is what it acts on: what was edited or came up since stays as it is, and is told.
TEST_F(FileOperationsTest, WhatIsNoLongerWhatThePaneShowsIsLeftAlone) {
    ScriptedProgress progress;
    ScriptedQuestions questions;
    SystemShellOperations real(
        {box.files, volumes, box.clock, box.loop, progress, questions, {drop / "trash", geteuid()}});
    ShellWrappers doors(real, messages);
    FileOperations live(tools, doors, busy, autoCompareStep);
    const Seen before{{1, 1}, 5, {}, {}};  // of what stood at "newer" when the rows were made
    lists[Side::Left][0].seen = &before;
    Select({0});
    const auto stays = [&](const ShellResult& result) {
        EXPECT_FALSE(result.AllDone());
        ASSERT_EQ(1U, result.items.size());
        EXPECT_EQ(kChangedSinceSeen, result.items[0].error.Number());
        EXPECT_EQ("f:12345", TreeOf(drop / "left/").at("newer"));
        EXPECT_EQ("f:1", TreeOf(drop / "right/").at("NEWER"));
    };
    stays(live.CopyFilesToOtherDirAndLVW(List(), Confirm::No, PartOf::Command));
    stays(live.MoveFilesToOtherDirAndLVW(List(), Confirm::No));
    stays(live.DeleteFilesFromLVW(List(), Confirm::No, PartOf::Command));
    stays(live.DeletePermanentlyFilesFromLVW(List(), Confirm::No, Prompts::Quiet));

    drop.Write("right/orphan", "came up");
    Select({1});
    EXPECT_FALSE(live.CopyFilesToOtherDirAndLVW(List(), Confirm::No, PartOf::Command).AllDone());
    EXPECT_EQ("f:came up", TreeOf(drop / "right/").at("orphan"));
}

TEST_F(FileOperationsTest, OpensAndShowsPropertiesThroughThePort) {
    struct Port : ShellCallsPort {
        std::vector<std::string> calls;
        bool opens = true;
        bool Open(const std::string& path) override { return calls.push_back("open " + path), opens; }
        void OpenWithChosenProgram(const std::string& path) override { calls.push_back("choose " + path); }
        void ShowPropertyPage(const std::string& path) override { calls.push_back("page " + path); }
    } port;
    OpenFile(port, "/a");
    port.opens = false;
    OpenFile(port, "/b");
    OpenFile(port, "");
    ShowProperties(port, "/c");
    EXPECT_THAT(port.calls, ElementsAre("open /a", "open /b", "choose /b", "page /c"));

    ObjectProperties properties;
    ASSERT_TRUE(ReadProperties(tools, drop / "left/orphan", properties).IsOk());
    EXPECT_EQ("orphan", properties.name);
    EXPECT_EQ(Currency::FromWhole(7), properties.size);
    ASSERT_TRUE(ApplyPermissions(tools, drop / "left/orphan", 0640).IsOk());
    ASSERT_TRUE(ReadProperties(tools, drop / "left/orphan", properties).IsOk());
    EXPECT_EQ(0640U, properties.mode);
}

}  // namespace
}  // namespace vantrel::testing
