// One rule over random pairs of trees, whatever is in them and whatever goes wrong: every content that was
// there is there afterwards, on a side or in the trash, or its deletion or replacement stood in the plan that
// was confirmed and it was still what the plan had seen; and nothing is told as done that was not.
//
// VANTREL_SEED repeats one pair. How many there are is set by VANTREL_SYNC_PAIRS, VANTREL_SYNC_ERRORS,
// VANTREL_SYNC_KILLS and VANTREL_SYNC_EDITS; scripts/nightly runs thousands.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "conservation_support.h"
#include "platform/names/names.h"
#include "support/child_process.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

unsigned NumberFrom(const char* name, unsigned otherwise) {
    const char* given = std::getenv(name);
    return given ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : otherwise;
}

std::size_t ActionCount(const SyncPlan& plan) {
    std::size_t count = 0;
    plan.ForEach([&](const PlannedAction&) { ++count; });
    return count;
}

// Whether a link in one of the two folders bears the name at `path`, in any letter case.
bool IsNamedLikeALink(const RandomWorld& world, const std::string& path) {
    const fs::path wanted = path;
    for (const Side side : kBothSides) {
        std::error_code error;
        for (const auto& entry :
             fs::directory_iterator(fs::path(world.Folder(side)) / wanted.parent_path(), error))
            if (entry.is_symlink(error) &&
                FoldCase(entry.path().filename().string()) == FoldCase(wanted.filename().string()))
                return true;
    }
    return false;
}

class Conservation : public ::testing::Test {
  public:
    // Thousands of runs, each with its syncs: in memory, where there is such a place.
    static void SetUpTestSuite() {
        if (access("/dev/shm", W_OK) == 0) setenv("TMPDIR", "/dev/shm", 0);
    }
    static void TearDownTestSuite() {
        if (const char* folder = getenv("TMPDIR"); folder && std::string_view(folder) == "/dev/shm")
            unsetenv("TMPDIR");
    }

    // Until the first fault; `wanted` names the variable that says how many.
    template <typename Body>
    static void ForEachSeed(const char* wanted, unsigned usual, const Body& body) {
        const unsigned only = NumberFrom("VANTREL_SEED", 0);
        const unsigned last = only != 0 ? only : NumberFrom(wanted, usual);
        for (unsigned seed = only != 0 ? only : 1; seed <= last && !HasFailure(); ++seed) {
            SCOPED_TRACE("VANTREL_SEED=" + std::to_string(seed));
            body(seed);
        }
    }

    // A synchronisation of what was compared, held against the rule; whether it was whole.
    bool SyncAndJudge(RandomWorld& world) {
        ++runs_;
        const Snapshot before = world.Look();
        world.plan = {};
        const std::optional<SyncReport> report = world.AutoSync(Confirm::Yes);
        Snapshot after = world.Look();
        if (world.calls.HasFailed(Call::Unlink)) ForgetTemporaries(after);
        if (!report) {
            EXPECT_EQ(before.sides[Side::Left], after.sides[Side::Left]);
            EXPECT_EQ(before.sides[Side::Right], after.sides[Side::Right]);
            return false;
        }
        ExpectConserved(world.plan, world.confirmed, after);
        ExpectTruth(world.plan, *report, world.confirmed, after);
        done_ += report->done;
        failed_ += report->troubles.size();
        return report->IsWhole();
    }

    // After a run that was whole there is nothing to do. A link that was copied may lead to something else
    // where it is now, and so be another kind of object.
    static void ExpectConverged(RandomWorld& world) {
        if (world.settings.SyncMethod() == static_cast<int>(SyncMethod::Custom)) return;
        world.Compare();
        const SyncPlan plan = MakeSyncPlan(world.tools.Get(), world.Order());
        plan.ForEach([&](const PlannedAction& action) {
            if (IsNamedLikeALink(world, Below(plan, action.side, action.source))) return;
            ADD_FAILURE() << action.source << " is still to be done";
        });
    }

    // So that no change of the trees leaves the runs without work.
    void ExpectWork() const {
        RecordProperty("done", static_cast<int>(done_));
        RecordProperty("failed", static_cast<int>(failed_));
        if (runs_ < 100) return;
        EXPECT_GT(done_,
                  runs_ / 2);  // a disk lists in an order of its own, and the calls that fail are others
        EXPECT_GT(failed_, runs_ / 10);
    }

  private:
    std::size_t runs_ = 0, done_ = 0, failed_ = 0;
};

TEST_F(Conservation, HoldsForAnyPairOfTrees) {
    ForEachSeed("VANTREL_SYNC_PAIRS", 250, [this](unsigned seed) {
        RandomWorld world(seed);
        world.Compare();
        if (SyncAndJudge(world)) ExpectConverged(world);
    });
    ExpectWork();
}

int RandomError(std::mt19937& random) {
    constexpr std::array kErrors{ENOENT, ENOENT, EIO,    EACCES, ENOSPC,  EPERM,  EROFS,
                                 ELOOP,  EBUSY,  ENOMEM, ESTALE, ENOTDIR, EEXIST, EINVAL};
    return kErrors[random() % kErrors.size()];
}

TEST_F(Conservation, HoldsWhateverCallsFail) {
    ForEachSeed("VANTREL_SYNC_ERRORS", 300, [this](unsigned seed) {
        RandomWorld world(seed);
        const auto fail = [&](std::size_t range) {
            world.calls.ResetCount();
            for (auto left = 1 + world.random() % 3; left > 0; --left)
                world.calls.FailAt(1 + world.random() % range, RandomError(world.random));
        };
        const bool whileCompared = seed % 3 == 0;
        if (whileCompared) fail(200);
        world.Compare();
        if (!whileCompared) world.onConfirm = [&] { fail(20 + 20 * ActionCount(world.plan)); };
        SyncAndJudge(world);
    });
    ExpectWork();
}

// In a small pair of trees, one call after the other.
TEST_F(Conservation, HoldsWhereAnySingleCallFails) {
    const bool all = std::getenv("VANTREL_SYNC_ERRORS") != nullptr;
    for (const unsigned seed : {1U, 2U, 10U}) {
        std::size_t count = 1;
        for (std::size_t n = 1; n <= count && !HasFailure();
             n += all ? 1 : std::max<std::size_t>(1, count / 30)) {
            for (const int error : {ENOENT, EIO}) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", call " + std::to_string(n));
                RandomWorld world(seed, 2);
                world.calls.FailAt(n, error);
                world.Compare();
                SyncAndJudge(world);
                count = std::max(count, world.calls.Count());
            }
        }
    }
}

TEST_F(Conservation, HoldsWhereverTheProcessIsKilled) {
    ForEachSeed("VANTREL_SYNC_KILLS", 200, [this](unsigned seed) {
        RandomWorld world(seed);
        world.Compare();
        const SyncPlan plan = MakeSyncPlan(world.tools.Get(), world.Order());
        const std::size_t last = 1 + world.random() % (20 + 20 * ActionCount(plan));
        const Snapshot before = world.Look();
        const pid_t child = ForkAlone();
        ASSERT_GE(child, 0);
        if (child == 0) {
            world.onConfirm = [&] {
                world.calls.ResetCount();
                world.calls.before = [&](const FaultySystemCalls::Record&) {
                    if (world.calls.Count() == last) _exit(9);
                };
            };
            world.AutoSync(Confirm::Yes);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFEXITED(status));
        Snapshot after = world.Look();
        ForgetTemporaries(after);
        ExpectConserved(plan, before, after);
        // The next run takes up where this one ended.
        world.Compare();
        if (SyncAndJudge(world)) ExpectConverged(world);
    });
    ExpectWork();
}

// What stands at `path` and below it.
Objects PartOf(const Objects& objects, const std::string& path) {
    Objects part;
    for (const auto& object : objects)
        if (IsWithin(object.first, path)) part.insert(object);
    return part;
}

// A folder above a target that is gone is made again, and one that is new takes the copy in.
bool TakesCopies(const Snapshot& confirmed, Side side, const std::string& path) {
    const auto found = confirmed.sides[side].find(path);
    return found == confirmed.sides[side].end() || found->second == "d";
}

// Whether something that was touched lies where `action` acts, so that it is not what the plan has seen.
bool ConcernsTouched(const RandomWorld& world, const PlannedAction& action, const Editor& editor) {
    const std::string source = Below(world.plan, action.side, action.source);
    const Side other = Other(action.side);
    const std::string target = action.target.empty() ? "" : Below(world.plan, other, action.target);
    const bool foresees = action.expected.source.state != Sighting::State::NotKnown;
    for (const auto& [side, path] : editor.touched) {
        if (side == action.side) {
            if (foresees && IsWithin(source, path)) return true;
            // What has gone from a folder that goes itself is no loss.
            const bool isThere = world.confirmed.sides[side].contains(path);
            if (action.action == SyncAction::Delete && isThere && IsWithin(path, source)) return true;
        } else if (!target.empty()) {
            const bool isThere = world.confirmed.sides[side].contains(path);
            const bool wasAbsent = action.expected.target.state == Sighting::State::Absent;
            if (path == target && (isThere || !wasAbsent)) return true;
            if (IsWithin(target, path) && !TakesCopies(world.confirmed, side, path)) return true;
        }
    }
    return false;
}

TEST_F(Conservation, WhatWasEditedAfterThePlanIsLeftAloneAndTold) {
    ForEachSeed("VANTREL_SYNC_EDITS", 200, [](unsigned seed) {
        RandomWorld world(seed);
        world.Compare();
        Editor editor(world);
        world.onConfirm = [&] {
            for (auto left = 1 + world.random() % 3; left > 0; --left) editor.EditOne();
        };
        const auto report = world.AutoSync(Confirm::Yes);
        if (!report) return;
        const Snapshot after = world.Look();
        ExpectConserved(world.plan, world.confirmed, after);
        ExpectTruth(world.plan, *report, world.confirmed, after);
        const Reach reach(world.plan, world.confirmed);
        for (const auto& [side, path] : editor.touched) {
            const Objects edited = PartOf(world.confirmed.sides[side], path);
            Objects now = PartOf(after.sides[side], path);
            if (TakesCopies(world.confirmed, side, path) && reach.mayBecome[side].contains(path))
                std::erase_if(now, [&](const auto& object) { return !edited.contains(object.first); });
            EXPECT_EQ(edited, now) << path << " was edited";
        }
        for (const ActionOutcome& at : report->actions) {
            if (ConcernsTouched(world, *at.action, editor)) {
                EXPECT_NE(ItemOutcome::Done, at.outcome) << at.action->source << " to " << at.action->target;
            }
        }
    });
}

// A pair of which one half is deleted and the other one copied in its place, and a name that is a file here
// and a folder there: what the user has put there while he was asked stays.
TEST_F(Conservation, WhatWasEditedStaysWhereTwoActionsMeet) {
    SyncWorld world;
    const TempFolder& folder = world.tools.folder;
    folder.Write("left/pair", "left", 1'600'000'000);
    folder.Write("right/pair", "right", 1'600'000'100);
    folder.Write("left/kinds", "a file");
    folder.MakeFolder("right/kinds");
    world.settings.SetSyncMethod(SyncMethod::Custom);
    for (const Side side : kBothSides)
        for (int cell = 0; cell < kSyncCellCount; ++cell)
            world.settings.SetAction(side, static_cast<SyncCell>(cell), SyncAction::Leave);
    world.settings.SetAction(Side::Left, SyncCell::Old, SyncAction::Copy);
    world.settings.SetAction(Side::Left, SyncCell::Orphan, SyncAction::Copy);
    world.settings.SetAction(Side::Right, SyncCell::New, SyncAction::Delete);
    world.options.goOnAfterFailure = true;
    world.whileAsked = [&] {
        folder.Write("right/pair", "edited pair");
        fs::remove(folder / "right/kinds");
        folder.Write("right/kinds", "edited kinds");
    };
    world.Compare();
    const auto report = world.AutoSync(Confirm::Yes);
    ASSERT_TRUE(report);
    EXPECT_EQ(0U, report->done);
    EXPECT_EQ(3U, report->troubles.size());
    EXPECT_EQ("edited pair", folder.Read("right/pair"));
    EXPECT_EQ("edited kinds", folder.Read("right/kinds"));
}

TEST_F(Conservation, NothingIsLostThatIsEditedInTheMiddle) {
    ForEachSeed("VANTREL_SYNC_EDITS", 200, [](unsigned seed) {
        RandomWorld world(seed);
        world.Compare();
        Editor editor(world);
        world.onConfirm = [&] {
            world.calls.ResetCount();
            std::set<std::size_t> moments;
            for (auto left = 1 + world.random() % 4; left > 0; --left) moments.insert(world.random() % 200);
            // Between the last look and the very next call nothing can help.
            world.calls.before = [&, moments](const FaultySystemCalls::Record& at) mutable {
                if (at.call == Call::Unlink || at.call == Call::Rename || moments.empty()) return;
                if (world.calls.Count() < *moments.begin()) return;
                moments.erase(moments.begin());
                editor.EditOne();
            };
        };
        world.AutoSync(Confirm::Yes);
        const Snapshot after = world.Look();
        EXPECT_EQ(world.confirmed.outside, after.outside);
        std::set<std::string> everywhere;
        for (const Objects* objects :
             {&after.sides[Side::Left], &after.sides[Side::Right], &after.trash, &after.aside})
            for (const auto& [path, what] : *objects) everywhere.insert(what);
        for (const std::string& what : editor.written)
            EXPECT_TRUE(everywhere.contains(what) || editor.destroyed.contains(what)) << what << " is lost";
        const Reach reach(world.plan, world.confirmed);
        for (const Side side : kBothSides) {
            for (const auto& [path, what] : world.confirmed.sides[side]) {
                if (what == "d" || everywhere.contains(what) || editor.destroyed.contains(what)) continue;
                const bool forGood = reach.mayGo[side].contains(path) && !reach.toTrash[side].contains(path);
                EXPECT_TRUE(forGood || reach.mayBecome[side].contains(path)) << path << " is lost: " << what;
            }
        }
    });
}

}  // namespace
}  // namespace vantrel::testing
