#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "core/pair_jobs.h"
#include "platform/workers.h"

namespace vantrel {

// What the workers of one comparison have to do about contents, and how much of it is ahead of the one thread
// that takes the verdicts. All of it, and of LevelContents, is called by that thread.
class ContentsAhead {
  public:
    // `turn` as in ReadingTerms, null where no disk rotates. The workers must outlive the object.
    ContentsAhead(Workers& workers, const ReadingRule& rule, SizeRule sizes, std::shared_ptr<std::mutex> turn)
        : workers_(workers), rule_(rule), sizes_(sizes), turn_(std::move(turn)) {}

    // Whether files come from a disk now; the jobs that begin from now on read accordingly.
    void SetWaits(bool waits) { waits_->store(waits, std::memory_order_relaxed); }
    const ReadingRule& Rule() const { return rule_; }
    SizeRule Sizes() const { return sizes_; }

  private:
    friend class LevelContents;
    static constexpr std::size_t kPairsAhead = 2'048;
    ReadingTerms Terms() const;
    std::size_t PairsPerRun() const;
    std::size_t StretchesAhead() const { return workers_.Count() + 2; }

    Workers& workers_;
    ReadingRule rule_;
    SizeRule sizes_;
    std::shared_ptr<std::mutex> turn_;
    std::shared_ptr<std::atomic<bool>> waits_ = std::make_shared<std::atomic<bool>>(false);
    std::size_t pairs_ = 0, stretches_ = 0;  // handed in and not taken
};

// The pairs of files of one folder that workers compare: small ones in runs, large ones a stretch at a time,
// ahead of the one thread, which takes the verdicts in its own order.
class LevelContents {
  public:
    using WhileWaiting = std::function<void()>;
    // Tells of the pair at a position; false where there is none whose contents are wanted.
    using Describe = std::function<bool(std::size_t position, PairToRead& pair)>;

    // Positions go from 0 to before `count`. `ahead`, and what `describe` reads from, must outlive the
    // object.
    LevelContents(ContentsAhead& ahead, PairRun::Folders folders, std::size_t count, Describe describe)
        : ahead_(ahead), folders_(std::move(folders)), count_(count), describe_(std::move(describe)) {}
    ~LevelContents();
    LevelContents(const LevelContents&) = delete;
    LevelContents& operator=(const LevelContents&) = delete;

    // Hands in what may be ahead, without waiting. May be called from `whileWaiting` as well.
    void Advance();
    // The verdict on the pair at `position`, which grows from call to call; never Large. LookCloser where
    // none was wanted. `readTo` is told the progress in a large pair.
    PairVerdict Take(std::size_t position, const WhileWaiting& whileWaiting,
                     const std::function<void(std::uint64_t size, std::uint64_t to)>& readTo);

  private:
    struct Run {
        std::shared_ptr<const PairRun> pairs;
        std::vector<std::size_t> positions;
        PendingJob<std::vector<PairVerdict>> job;
        std::vector<PairVerdict> verdicts;  // once they were taken
        std::size_t next = 0;
        bool beingTaken = false;
    };
    struct LargePair {
        std::size_t position;
        std::shared_ptr<const PairRun> pair;
        PairVerdict found;
        std::uint64_t handedIn = 0;  // bytes
        std::deque<PendingJob<PairVerdict>> stretches;
    };
    void AddRun();
    void DropRun();
    void TakeVerdicts(Run& run, const WhileWaiting& whileWaiting);
    void AddStretch(LargePair& large);
    void DropLarge();
    void PassOver(std::size_t position);
    PairVerdict TakeLarge(const WhileWaiting& whileWaiting,
                          const std::function<void(std::uint64_t size, std::uint64_t to)>& readTo);

    ContentsAhead& ahead_;
    PairRun::Folders folders_;
    std::size_t count_;
    Describe describe_;
    std::size_t next_ = 0;  // position that was not looked at yet
    std::deque<Run> runs_;
    std::deque<LargePair> large_;  // of the runs whose verdicts were taken
};

}  // namespace vantrel
