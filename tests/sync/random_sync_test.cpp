// Random pairs of trees under every method and under random custom tables: what is on the disk afterwards is
// what an oracle, written over snapshots of the trees alone, says. VANTREL_SYNC_PAIRS sets how many pairs;
// scripts/nightly runs 10,000.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <set>

#include "sync_support.h"

namespace vantrel {
namespace {

using testing::FileState;
using testing::SyncWorld;
using testing::Tree;

int PairCount() {
    const char* wanted = std::getenv("VANTREL_SYNC_PAIRS");
    return wanted ? std::atoi(wanted) : 240;
}

std::string TopOf(const std::string& path) {
    return path.substr(0, path.find('/'));
}
bool InFolder(const std::string& path) {
    return path.find('/') != std::string::npos;
}

void MakeRandomTrees(SyncWorld& world, std::mt19937& random) {
    const char* names[] = {"a",      "b.txt", "-c",       "D d",  "d1/x",     "d1/y",
                           "d1/e/z", "d2/x",  "d2/e/f/g", "d3/x", "\xC3\xA4", "d1/-q"};
    for (const char* name : names) {
        const auto what = random() % 8;
        const std::string content(random() % 3, static_cast<char>('a' + random() % 2));
        const double time = 1'600'000'000.0 + static_cast<double>(random() % 3) * 10;
        for (Side side : kBothSides) {
            if (what == (side == Side::Left ? 0U : 1U)) continue;  // an orphan of the other side
            if (what == 2) {                                       // alike on both sides
                world.tools.folder.Write((side == Side::Left ? "left/" : "right/") + std::string(name),
                                         "alike", 1'500'000'000);
                continue;
            }
            if (what == 3) continue;  // nowhere
            world.tools.folder.Write(
                (side == Side::Left ? "left/" : "right/") + std::string(name),
                side == Side::Left ? content : std::string(random() % 3, 'c'),
                side == Side::Left ? time : 1'600'000'000.0 + static_cast<double>(random() % 3) * 10);
        }
    }
}

SyncCell CellOf(const FileState& own, const FileState& other) {
    if (own.modified > other.modified) return SyncCell::New;
    return own.modified < other.modified ? SyncCell::Old : SyncCell::Binary;
}

// What both trees hold after the run. `trash` gets what was deleted at the top level.
PerSide<Tree> Expected(const PerSide<Tree>& before, const CSyncSettings& settings,
                       std::multiset<std::string>& trash) {
    PerSide<Tree> after = before;
    std::set<std::string> paths;
    PerSide<std::set<std::string>> tops;
    for (Side side : kBothSides)
        for (const auto& [path, state] : before[side]) {
            paths.insert(path);
            tops[side].insert(TopOf(path));
        }
    // Deletes go before copies, but no path is both: a table has one action for each half of a pair, so the
    // only clash is a delete on one side with a copy from the other over it.
    for (const bool deletes : {true, false}) {
        for (Side side : kBothSides) {
            for (const std::string& path : paths) {
                const auto own = before[side].find(path);
                if (own == before[side].end()) continue;
                const auto other = before[Other(side)].find(path);
                const bool orphan = other == before[Other(side)].end();
                if (!orphan && own->second.modified == other->second.modified &&
                    own->second.content.size() == other->second.content.size())
                    continue;
                const SyncAction action =
                    settings.Action(side, orphan ? SyncCell::Orphan : CellOf(own->second, other->second));
                if (deletes && action == SyncAction::Delete) {
                    after[side].erase(path);
                    const bool deep = InFolder(path) && tops[Other(side)].contains(TopOf(path));
                    if (!deep) trash.insert(own->second.content);
                }
                if (!deletes && action == SyncAction::Copy && after[side].contains(path))
                    after[Other(side)][path] = after[side].at(path);
            }
        }
    }
    return after;
}

PerSide<Tree> ReadTrees(const SyncWorld& world) {
    PerSide<Tree> trees;
    for (Side side : kBothSides) trees[side] = testing::ReadTree(world.Folder(side));
    return trees;
}

void ChooseTable(SyncWorld& world, int round, std::mt19937& random) {
    const int method = round % 10;
    world.settings.SetSyncMethod(std::min(method, 7) == 3 || method > 7 ? 3 : method);
    if (world.settings.SyncMethod() != 3) return;
    for (Side side : kBothSides)
        for (int cell = 0; cell < kSyncCellCount; ++cell)
            world.settings.SetAction(side, static_cast<SyncCell>(cell),
                                     static_cast<SyncAction>(random() % 4));
}

bool Converges(int method) {
    return method != 3;
}

// With workers below the comparison, and without.
class RandomSync : public ::testing::TestWithParam<int> {};

TEST_P(RandomSync, LeavesOnDiskWhatTheTableSays) {
    for (int round = 0; round < PairCount(); ++round) {
        std::mt19937 random(static_cast<unsigned>(round));
        SyncWorld world;
        world.compare.Jobs = GetParam();
        MakeRandomTrees(world, random);
        ChooseTable(world, round, random);
        const PerSide<Tree> before = ReadTrees(world);
        std::multiset<std::string> trash;
        const PerSide<Tree> expected = Expected(before, world.settings, trash);

        world.Compare();
        const SyncPlan plan = GetListOfFilesAffectedBySync(world.results, world.settings, {});
        ASSERT_EQ(before[Side::Left], ReadTrees(world)[Side::Left]) << "a plan changes nothing";
        const auto report = world.AutoSync(Confirm::Yes);
        ASSERT_TRUE(report.has_value());
        // A table can delete on one side what the other side's cell copies over it, or from it: the shell
        // then says so.
        const PerSide<Tree> after = ReadTrees(world);
        for (Side side : kBothSides) ASSERT_EQ(expected[side], after[side]) << "round " << round;

        std::multiset<std::string> inTrash;
        for (const auto& [path, state] : testing::ReadTree(world.TrashFiles())) inTrash.insert(state.content);
        ASSERT_EQ(trash, inTrash) << "round " << round;

        if (!Converges(world.settings.SyncMethod())) continue;
        EXPECT_FALSE(report->cancelled);
        EXPECT_EQ(0U, report->notDone);
        world.Compare();
        ASSERT_TRUE(GetListOfFilesAffectedBySync(world.results, world.settings, {}).IsEmpty())
            << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Jobs, RandomSync, ::testing::Values(1, 4));

}  // namespace
}  // namespace vantrel
