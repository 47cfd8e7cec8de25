#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/walk_level.h"
#include "platform/workers.h"

namespace vantrel {

// A folder that a walk is in or will come to, with those that it will come to below. It belongs to
// ListingsAhead.
struct AheadFolder {
    AheadFolder* above = nullptr;
    PerSide<std::string> names;  // real ones; empty on a side that has no such folder
    WalkMode mode = WalkMode::Compare;
    std::size_t depth = 0;
    // What it holds, once that is known; the walk's own when it has come to it.
    WalkLevel* level = nullptr;
    std::unique_ptr<WalkLevel> prepared;
    // Of a folder right below the compared ones: whether it is a link, or nothing can be told of it.
    PerSide<bool> isLink;

  private:
    friend class ListingsAhead;
    struct Listed;
    PerSide<PendingJob<Listed>> jobs;
    PerSide<std::unique_ptr<Listed>> listed;
    enum class State : std::uint8_t {
        Waiting,
        HandedIn,
        BeingTaken,
        Prepared,
        Unprepared,
        Walked,
    } state = State::Waiting;
    std::size_t* counted = nullptr;  // where it is counted as ahead
    std::deque<std::unique_ptr<AheadFolder>> below;
    // How far `below` goes in `level`.
    std::size_t nextItem = 0;
    PerSide<std::size_t> nextEntry, nextAside;
    void CountNoMore();

  public:
    AheadFolder();
    ~AheadFolder();
};

// Lists folders by workers before a walk comes to them: left and right of a folder at the same time, those
// below as soon as they are known, in the order of the walk. Where something does not go as it should, or a
// folder holds very much, nothing is prepared, and the walk looks itself. Few folders, entries and
// descriptors are held ahead. All of it is called by the one thread.
class ListingsAhead {
  public:
    using WhileWaiting = std::function<void()>;
    // Levels below the compared folders from which on nothing is listed ahead: each holds folders open.
    static constexpr std::size_t kDeepest = 60;

    // `contents` is null where contents are not compared. `roots` are the compared folders.
    ListingsAhead(Workers& workers, std::shared_ptr<const NameFilter> filter, ContentsAhead* contents,
                  const PerSide<std::shared_ptr<OpenFolder>>& roots);
    ~ListingsAhead();
    ListingsAhead(const ListingsAhead&) = delete;
    ListingsAhead& operator=(const ListingsAhead&) = delete;

    // The sub-folders that will be walked, in this order; names that stand on one side only are empty on the
    // other.
    void Announce(const std::vector<PerSide<std::string>>& names);
    AheadFolder& Top() { return *top_; }

    // The walk enters a folder below `above`. Waits for it where it is being listed; what was prepared is in
    // the result. Otherwise the walk says in `level` what it found by itself. Null where that is too deep.
    AheadFolder* Enter(AheadFolder* above, const PerSide<std::string_view>& names, WalkMode mode,
                       const WhileWaiting& whileWaiting);
    // The walk has left it.
    void Leave(AheadFolder& folder);
    // Hands in what may be ahead of `from`, without waiting.
    void HandIn(AheadFolder& from);

  private:
    using State = AheadFolder::State;
    struct Request;
    static AheadFolder::Listed List(const Request& request, const StopFlag& stop);
    static void ListNamed(const Request& request, const ListedNames& names, const StopFlag& stop,
                          AheadFolder::Listed& found);

    bool HandInBelow(AheadFolder& folder);
    bool AddNext(AheadFolder& folder);
    bool AddNextItem(AheadFolder& folder);
    bool AddNextForSize(AheadFolder& folder);
    AheadFolder& AddBelow(AheadFolder& folder, PerSide<std::string> names, WalkMode mode);
    void HandInOne(AheadFolder& folder);
    bool IsReady(const AheadFolder& folder) const;
    void Prepare(AheadFolder& folder, const WhileWaiting& whileWaiting);
    bool IsOnBranch(const AheadFolder& folder, Side side, FileId id) const;

    Workers& workers_;
    std::shared_ptr<const NameFilter> filter_;
    ContentsAhead* contents_;
    PerSide<std::shared_ptr<OpenFolder>> roots_;
    std::shared_ptr<std::atomic<std::size_t>> entries_;  // in listings that were not taken
    std::size_t folders_ = 0;                            // handed in and not entered
    std::unique_ptr<AheadFolder> top_;
    std::vector<PerSide<std::string>> announced_;
};

}  // namespace vantrel
