#include "sync/sub_folder_synchronization.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "support/faulty_system_calls.h"
#include "sync_support.h"

namespace vantrel {
namespace {

using testing::SyncWorld;

// The window, as far as a synchronisation sees it: a visible and a hidden pair of lists with the same rows.
class SubFolderWindow : public SubFolderSyncHost {
  public:
    explicit SubFolderWindow(SyncWorld& world) : world_(world) {
        Add("newer", "newer left", ResultType::Newer, "older right", ResultType::Older);
        Add("x/orphan", "only left", ResultType::Orphan, "", ResultType::None);
        Add("gone", "", ResultType::None, "only right", ResultType::Orphan);
    }
    void Add(const std::string& name, const std::string& left, ResultType leftType, const std::string& right,
             ResultType rightType) {
        PerSide<std::pair<std::string, ResultType>> halves;
        halves[Side::Left] = {left, leftType};
        halves[Side::Right] = {right, rightType};
        for (Side side : kBothSides) {
            ResultRow row;
            row.type = halves[side].second;
            if (row.type != ResultType::None) {
                world_.tools.folder.Write((side == Side::Left ? "left/" : "right/") + name,
                                          halves[side].first);
                row.text = row.realName = name;
                row.kind = RowKind::File;
                row.size = Currency::FromWhole(static_cast<std::int64_t>(halves[side].first.size()));
            }
            visible[side].AddCopy(row);
            hidden[side].AddCopy(row);
        }
    }

    std::string FolderPath(Side side) const override { return world_.Folder(side); }
    std::vector<ShellRoot> Roots() const override { return {}; }
    Side CurrentListview() const override { return current; }
    PerSide<ResultList>& Lists() override { return onHidden ? hidden : visible; }
    PerSide<ResultList>& TwinLists() override { return onHidden ? visible : hidden; }
    void ShowProgressPanel(bool) override {}
    void SetProgressText(const std::string&) override {}
    void CopyItemsFromHiddenLVWToVisibleLVW() override { events += "refresh "; }
    void SetResultsOutOfDate() override {}
    SelectedTexts SelectedObjects() const override { return selected; }
    TrashFolders Trash() const override { return trash; }
    bool PromptForSyncMethod() const override { return false; }
    bool ShowSyncWizard() override { return true; }
    bool ShowConfirmSync(const SyncPlan&) override { return proceed; }
    void ActOnHiddenLists(std::optional<Side> side) override {
        onHidden = true;
        current = side.value_or(current);
    }
    void RefreshStatus() override { events += "status "; }
    void PlaySyncCompleteSound() override { events += "sound "; }

    PerSide<ResultList> visible, hidden;
    SelectedTexts selected;
    TrashFolders trash;
    Side current = Side::Left;
    bool onHidden = false;
    bool proceed = true;
    std::string events;

  private:
    SyncWorld& world_;
};

class SubFolderSynchronizationTest : public ::testing::Test {
  protected:
    SubFolderSynchronizationTest() { world.settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft); }
    std::string Types() {
        std::string types;
        for (std::size_t i = 0; i < window.hidden[Side::Left].Count(); ++i)
            for (Side side : kBothSides)
                types += std::to_string(static_cast<int>(window.hidden[side][i].type));
        return types;
    }

    testing::FaultySystemCalls calls;
    SyncWorld world{&calls};
    SubFolderWindow window{world};
    SubFolderOperations operations{world.tools.Get(), world.wrappers, window};
    SubFolderSynchronization sync{world.tools.Get(), operations, world.settings, window};
};

TEST_F(SubFolderSynchronizationTest, BringsFilesAndRowsIntoLineWithoutHistoryOrTrash) {
    sync.AutoSynch(Confirm::Yes, SyncSound::Played);
    EXPECT_EQ("newer left", world.tools.folder.Read("right/newer"));
    EXPECT_EQ("only left", world.tools.folder.Read("right/x/orphan"));
    EXPECT_FALSE(world.tools.folder.Exists("right/gone"));
    EXPECT_FALSE(world.tools.folder.Exists("Trash/files/gone")) << "deletes here are for good";
    EXPECT_EQ("333300", Types());
    EXPECT_EQ("sound refresh status ", window.events);
    EXPECT_FALSE(world.tools.folder.Exists("SyncHist.Log"));
}

// Neither what lies in a trash folder nor, once it is one itself, the whole sub-folder.
TEST_F(SubFolderSynchronizationTest, LeavesTheUsersTrashAlone) {
    TrashFolders fromAbove;
    fromAbove.below[Side::Left] = {"deep/sub/x"};
    fromAbove.below[Side::Right] = {"deep/sub2/x/y", "deep", "other"};
    window.trash = fromAbove.Under({{"deep/sub", "deep/sub2"}});
    window.trash.around[Side::Right] = false;
    sync.AutoSynch(Confirm::Yes, SyncSound::Played);
    EXPECT_FALSE(world.tools.folder.Exists("right/x/orphan"));
    EXPECT_EQ("newer left", world.tools.folder.Read("right/newer"));
    ASSERT_EQ(1U, world.tools.messages.shown.size());
    EXPECT_NE(std::string::npos, world.tools.messages.Line(0).find("trash")) << world.tools.messages.Line(0);

    world.tools.folder.Write("right/gone", "only right");
    window.Add("again", "", ResultType::None, "only right", ResultType::Orphan);
    window.trash = fromAbove.Under({{"deep/sub", "deep/sub2"}});
    EXPECT_TRUE(window.trash.around[Side::Right]);
    sync.AutoSynch(Confirm::Yes, SyncSound::Played);
    EXPECT_TRUE(world.tools.folder.Exists("right/again"));
}

TEST_F(SubFolderSynchronizationTest, TellsOfTimesThatCouldNotBeKept) {
    calls.FailAll(testing::Call::Futimens, EPERM);
    sync.AutoSynch(Confirm::Yes, SyncSound::Played);
    ASSERT_EQ(1U, world.tools.messages.shown.size());
    EXPECT_EQ("Synchronization: The time of 2 files could not be kept.", world.tools.messages.Line(0));
}

TEST_F(SubFolderSynchronizationTest, TakesSelectedRowsOnlyForOneRunAndNothingWhenDeclined) {
    window.selected = std::unordered_set<std::string>{"gone"};
    sync.SyncSelectedOnly = true;
    window.proceed = false;
    sync.AutoSynch(Confirm::Yes, SyncSound::Played);
    EXPECT_TRUE(world.tools.folder.Exists("right/gone"));
    EXPECT_EQ("refresh status ", window.events);

    sync.SyncSelectedOnly = true;
    window.proceed = true;
    sync.AutoSynch(Confirm::Yes, SyncSound::Silent);
    EXPECT_FALSE(world.tools.folder.Exists("right/gone"));
    EXPECT_EQ("older right", world.tools.folder.Read("right/newer"));
    EXPECT_FALSE(sync.SyncSelectedOnly);
}

}  // namespace
}  // namespace vantrel
