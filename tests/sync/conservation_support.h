#pragma once

#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/faulty_system_calls.h"
#include "support/tree_of.h"
#include "sync_support.h"

namespace vantrel::testing {

using Objects = std::map<std::string, std::string>;  // of TreeOf

struct Snapshot {
    PerSide<Objects> sides;
    Objects outside, trash;
    Objects aside;  // what an editor has moved away
};

// The system, where no folder and no file of the name "locked" can be opened, and nothing of the name
// "unseen" be looked at.
class CornerCalls : public FaultySystemCalls {
  public:
    int OpenAt(int folder, const char* path, int flags, mode_t mode) override;
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override;
};

// The base comes before the world that is made with it.
struct OwnsCornerCalls {
    CornerCalls calls;
};

// A pair of trees with links, twins, special files and unreadable corners, a method and options, all of them
// chosen by a seed. No two files have one content, but for those that are alike on both sides.
class RandomWorld : public OwnsCornerCalls, public SyncWorld {
  public:
    explicit RandomWorld(unsigned seed, int depth = 3);

    Snapshot Look() const;
    bool ShowConfirmSync(const SyncPlan& shown) override;

    std::mt19937 random;
    SyncPlan plan;                    // that was confirmed
    Snapshot confirmed;               // what was there when it was
    std::function<void()> onConfirm;  // the last moment before anything is done

  private:
    enum class What { File, Folder, Link, Special };
    What Choose();
    void Grow(const std::string& below, const PerSide<bool>& on, int depth);
    void Make(const std::string& path, What what, const std::string& content, double time);
    std::string LinkTarget(const std::string& name);
    void ChooseOptions(unsigned seed);

    int made_ = 0;
};

// What a plan reaches of the trees that it was made for, by side and path below the side's folder.
struct Reach {
    Reach(const SyncPlan& plan, const Snapshot& before);
    bool MayBecome(Side side, const std::string& path, const std::string& what) const;

    PerSide<std::set<std::string>> mayGo;
    PerSide<std::set<std::string>> toTrash;  // of these
    PerSide<std::map<std::string, std::set<std::string>>>
        mayBecome;                                // what stands in the copied object's place
    PerSide<std::map<std::string, int>> actions;  // how many name the object itself
};

std::string Below(const SyncPlan& plan, Side side, const std::string& fullPath);
// Whether `path` is `top` or lies below it.
bool IsWithin(const std::string& path, const std::string& top);
// Of files that a run which was killed has not completed.
void ForgetTemporaries(Snapshot& snapshot);

// Everything is where it was, or is in the trash, or the plan named its deletion or replacement; and nothing
// is there that was not there before or copied by the plan.
void ExpectConserved(const SyncPlan& plan, const Snapshot& before, const Snapshot& after);
// What the plan takes for an orphan has no counterpart, known or not.
void ExpectNoOrphanIsOccupied(const RandomWorld& world);
// What the report calls done is done, and what it calls failed was told with a reason.
void ExpectTruth(const SyncPlan& plan, const SyncReport& report, const Snapshot& before,
                 const Snapshot& after);

// Another hand that works in the two folders while nobody looks.
class Editor {
  public:
    explicit Editor(RandomWorld& world) : world_(world) {}
    // Does something to an object that the plan speaks of, or to a folder above it.
    void EditOne();

    std::set<std::pair<Side, std::string>> touched;
    std::set<std::string> written;    // contents that are this hand's own
    std::set<std::string> destroyed;  // what it has removed or written over

  private:
    std::pair<Side, std::string> Pick();
    void Destroy(const std::string& path);
    std::string NewContent();

    RandomWorld& world_;
    int count_ = 0;
};

}  // namespace vantrel::testing
