#include "sync/sync_plan.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include "settings/options.h"

namespace vantrel {
namespace {

using enum ResultType;

constexpr std::pair<ResultType, ResultType> kPairs[] = {{Newer, Older},
                                                        {Older, Newer},
                                                        {Same, Same},
                                                        {Binary, Binary},
                                                        {Orphan, None},
                                                        {None, Orphan},
                                                        {IdenticalFolder, IdenticalFolder},
                                                        {OrphanFolder, None},
                                                        {None, OrphanFolder}};

ResultRow Row(const std::string& name, ResultType type, std::int64_t size) {
    ResultRow row;
    if (type == None) return row;
    row.kind = type >= IdenticalFolder ? RowKind::Folder : RowKind::File;
    row.text = name;
    row.realName = row.kind == RowKind::Folder ? std::string_view(name).substr(1) : std::string_view(name);
    row.size = Currency::FromWhole(size);
    row.type = type;
    return row;
}

ComparisonResults RandomResults(std::mt19937& random) {
    ComparisonResults results;
    results.folders[Side::Left] = "/l/";
    results.folders[Side::Right] = "/r/";
    for (int i = 0; i < 40; ++i) {
        const auto [left, right] = kPairs[random() % std::size(kPairs)];
        const bool folder = std::max(left, right) >= IdenticalFolder;
        const std::string name = (folder ? "\\d" : "f") + std::to_string(i);
        results.hold[Side::Left].AddCopy(Row(name, left, static_cast<std::int64_t>(random() % 1000)));
        results.hold[Side::Right].AddCopy(Row(name, right, static_cast<std::int64_t>(random() % 1000)));
    }
    return results;
}

void FillAtRandom(CSyncSettings& settings, std::mt19937& random) {
    settings.SetSyncMethod(SyncMethod::Custom);
    for (Side side : kBothSides)
        for (int cell = 0; cell < kSyncCellCount; ++cell)
            settings.SetAction(side, static_cast<SyncCell>(cell), static_cast<SyncAction>(random() % 4));
}

// The plan in words, by an own reading of what each type's cell is.
std::multiset<std::string> Expected(const ComparisonResults& results, const CSyncSettings& settings,
                                    const SelectedTexts& selected) {
    const std::map<ResultType, SyncCell> cells{{Newer, SyncCell::New},
                                               {Older, SyncCell::Old},
                                               {Orphan, SyncCell::Orphan},
                                               {OrphanFolder, SyncCell::Orphan},
                                               {Binary, SyncCell::Binary}};
    std::multiset<std::string> words;
    for (Side side : kBothSides) {
        for (const ResultRow& row : results.hold[side]) {
            if (!cells.contains(row.type) || (selected && !selected->contains(std::string(row.text))))
                continue;
            const SyncAction action = settings.Action(side, cells.at(row.type));
            const std::string own = side == Side::Left ? "/l/" : "/r/",
                              other = side == Side::Left ? "/r/" : "/l/";
            if (action == SyncAction::Delete) words.insert("delete " + own + std::string(row.realName));
            if (action == SyncAction::Copy)
                words.insert("copy " + own + std::string(row.realName) + " " + other +
                             std::string(row.realName));
        }
    }
    return words;
}

std::multiset<std::string> Words(const SyncPlan& plan) {
    std::multiset<std::string> words;
    plan.ForEach([&](const PlannedAction& action) {
        words.insert(action.action == SyncAction::Delete ? "delete " + action.source
                                                         : "copy " + action.source + " " + action.target);
    });
    return words;
}

TEST(SyncPlan, FollowsTheTableForRandomRows) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const ComparisonResults results = RandomResults(random);
        Options options;
        CSyncSettings settings(options);
        FillAtRandom(settings, random);
        SelectedTexts selected;
        if (round % 3 == 0)
            selected = std::unordered_set<std::string>{"f1", "f2", "f3", "\\d4", "\\d5", "f6"};
        ASSERT_EQ(Expected(results, settings, selected),
                  Words(GetListOfFilesAffectedBySync(results, settings, selected)));
    }
}

TEST(SyncPlan, DeletesNothingThatCouldNotBeLookedInto) {
    ComparisonResults results;
    results.folders = {{"/l/", "/r/"}};
    const std::string name = "\\dark";
    ResultRow row = Row(name, OrphanFolder, 0);
    row.incomplete = true;
    results.hold[Side::Right].AddCopy(row);
    results.hold[Side::Left].AddPlaceholder();
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    EXPECT_TRUE(GetListOfFilesAffectedBySync(results, settings, {}).IsEmpty());
}

TEST(SyncPlan, LeavesTheTrashOfAVolumeAlone) {
    ComparisonResults results;
    results.folders = {{"/l/", "/r/"}};
    for (const std::string name : {"\\.Trash", "\\.Trash-1000", "\\.Trash-", "\\.Trash-1a"}) {
        results.hold[Side::Left].AddCopy(Row(name, OrphanFolder, 1));
        results.hold[Side::Right].AddPlaceholder();
    }
    Options options;
    CSyncSettings settings(options);
    EXPECT_EQ((std::multiset<std::string>{"copy /l/.Trash- /r/.Trash-", "copy /l/.Trash-1a /r/.Trash-1a"}),
              Words(GetListOfFilesAffectedBySync(results, settings, {})));
}

ComparisonResults ResultsWithSubFolders() {
    ComparisonResults results;
    results.folders[Side::Left] = "/l/";
    results.folders[Side::Right] = "/r/";
    for (const std::string name : {"\\Sub", "\\Two"}) {
        ResultRow row = Row(name, DifferentFolder, 9);
        results.hold[Side::Left].AddCopy(row);
        const std::string realName = name == "\\Sub" ? "SUB" : "Two";
        row.realName = realName;
        results.hold[Side::Right].AddCopy(row);
        CSubFolderDiffs diffs(name, "/l/" + name.substr(1));
        PerSide<SubFolderRecord> pair;
        pair[Side::Left] = {"x/a", "x/a", Currency::FromWhole(5), {}, Newer};
        pair[Side::Right] = {"x/a", "x/A", Currency::FromWhole(3), {}, Older};
        diffs.AddPair(pair);
        pair[Side::Left] = {};
        pair[Side::Right] = {"b", "b", Currency::FromWhole(-1), {}, Orphan};
        diffs.AddPair(pair);
        results.SubFolderDiffs.Add(std::move(diffs));
    }
    return results;
}

TEST(SyncPlan, TakesSubFoldersByTheirRealNamesAndOnlySelectedOnes) {
    const ComparisonResults results = ResultsWithSubFolders();
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    const SyncPlan plan = GetListOfFilesAffectedBySync(results, settings, SelectedTexts({"\\Sub"}));
    ASSERT_EQ(1U, plan.subFolders.size());
    EXPECT_EQ((std::multiset<std::string>{"copy /l/Sub/x/a /r/SUB/x/A", "delete /r/SUB/b"}), Words(plan));
    EXPECT_EQ(2U, GetListOfFilesAffectedBySync(results, settings, {}).subFolders.size());
}

// Neither what lies behind a link on either side nor what is not known is acted on, whatever the table says.
TEST(SyncPlan, NothingIsDoneBehindLinksOrToWhatIsUnknown) {
    ComparisonResults results;
    results.folders = {{"/l/", "/r/"}};
    const std::string folder = "\\sub", file = "f";
    ResultRow row = Row(folder, DifferentFolder, 0);
    for (const Side side : kBothSides) results.hold[side].AddCopy(row);
    row = Row(file, Same, 0);
    row.kind = RowKind::Unknown;
    row.type = None;
    for (const Side side : kBothSides) results.hold[side].AddCopy(row);
    for (const Side linked : kBothSides) {
        CSubFolderDiffs diffs(folder, "/l/sub");
        PerSide<SubFolderRecord> pair;
        for (const Side side : kBothSides) pair[side] = {"p", "p", {}, {}, Binary};
        pair[linked].elsewhere = Elsewhere::BehindLink;
        diffs.AddPair(pair);
        pair[Other(linked)].type = None;
        pair[linked].type = Orphan;
        diffs.AddPair(pair);
        pair[Other(linked)].type = Orphan;
        pair[linked].type = None;
        diffs.AddPair(pair);
        for (const Side side : kBothSides) {
            pair[side] = {"u", "u", {}, {}, None};
            pair[side].unknown = true;
        }
        diffs.AddPair(pair);
        results.SubFolderDiffs.Clear();
        results.SubFolderDiffs.Add(std::move(diffs));
        Options options;
        CSyncSettings settings(options);
        settings.SetSyncMethod(SyncMethod::Custom);
        for (const SyncAction action : {SyncAction::Copy, SyncAction::Delete}) {
            for (const Side side : kBothSides)
                for (int cell = 0; cell < kSyncCellCount; ++cell)
                    settings.SetAction(side, static_cast<SyncCell>(cell), action);
            const SyncPlan plan = GetListOfFilesAffectedBySync(results, settings, {});
            // Only deletes on the side without the link are left.
            std::multiset<std::string> expected;
            const std::string path = linked == Side::Left ? "/r/sub/p" : "/l/sub/p";
            if (action == SyncAction::Delete) expected = {"delete " + path, "delete " + path};
            EXPECT_EQ(expected, Words(plan));
            EXPECT_EQ(2U, plan.leftOut.Count(linked, LeftOutReason::Elsewhere));
            EXPECT_EQ(action == SyncAction::Copy ? 2U : 0U,
                      plan.leftOut.Count(Other(linked), LeftOutReason::Elsewhere));
        }
    }
}

// The same for the rows of one sub-folder's lists.
TEST(SyncPlan, RowsThatLieElsewhereAsWellAreLeftOut) {
    for (const Side linked : kBothSides) {
        PerSide<ResultList> lists;
        for (const Side side : kBothSides) {
            const std::string both = "p", alone = "q";
            ResultRow row = Row(both, Binary, 0);
            row.elsewhere = side == linked ? Elsewhere::InOtherFolder : Elsewhere::No;
            lists[side].AddCopy(row);
            // What would be made there is made in that place.
            ResultRow orphan = side == linked ? ResultRow() : Row(alone, Orphan, 0);
            orphan.elsewhere = row.elsewhere;
            lists[side].AddCopy(orphan);
        }
        Options options;
        CSyncSettings settings(options);
        settings.SetSyncMethod(SyncMethod::Custom);
        for (const SyncAction action : {SyncAction::Copy, SyncAction::Delete}) {
            for (const Side side : kBothSides)
                for (int cell = 0; cell < kSyncCellCount; ++cell)
                    settings.SetAction(side, static_cast<SyncCell>(cell), action);
            const SyncPlan plan = GetListOfFilesAffectedBySync(lists, {{"/l/", "/r/"}}, settings, {});
            const std::string folder = linked == Side::Left ? "/r/" : "/l/";
            std::multiset<std::string> expected;
            if (action == SyncAction::Delete) expected = {"delete " + folder + "p", "delete " + folder + "q"};
            EXPECT_EQ(expected, Words(plan));
            EXPECT_EQ(1U, plan.leftOut.Count(linked, LeftOutReason::Elsewhere));
            EXPECT_EQ(action == SyncAction::Copy ? 2U : 0U,
                      plan.leftOut.Count(Other(linked), LeftOutReason::Elsewhere));
        }
    }
}

TEST(SyncPlan, SpaceCountsReplacedCounterpartsAndTheLastSubFolderAlone) {
    ComparisonResults results = ResultsWithSubFolders();
    results.hold[Side::Left].AddCopy(Row("big", Newer, 100));
    results.hold[Side::Right].AddCopy(Row("big", Older, 30));
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(SyncMethod::MakeRightSameAsLeft);
    const SyncSpaceNeed need = SpaceNeededBySync(GetListOfFilesAffectedBySync(results, settings, {}));
    EXPECT_EQ(Currency::FromWhole(100 + 5 - 3), need.outgoing[Side::Left]);
    EXPECT_EQ(Currency::FromWhole(30), need.replaced[Side::Left]);

    PerSide<Currency> free;
    free[Side::Left] = Currency::FromWhole(0);
    free[Side::Right] = Currency::FromWhole(71);
    PerSide<std::string> drives{{"/a", "/b"}};
    const SyncSpaceAnswer answer = EnoughSpaceForSync(need, drives, free);
    EXPECT_FALSE(answer.enough);
    EXPECT_EQ("/b", answer.drive);
    EXPECT_EQ(Currency::FromWhole(72), answer.required);
    free[Side::Right] = Currency::FromWhole(72);
    EXPECT_TRUE(EnoughSpaceForSync(need, drives, free).enough);
    drives[Side::Right] = "/a";  // one drive: its free space is that of the left
    EXPECT_FALSE(EnoughSpaceForSync(need, drives, free).enough);
}

}  // namespace
}  // namespace vantrel
