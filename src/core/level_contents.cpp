#include "core/level_contents.h"

#include <algorithm>
#include <utility>

namespace vantrel {

ReadingTerms ContentsAhead::Terms() const {
    // Of the pairs that are open at once, over all workers; as many wait to be closed. A process has 1,024
    // descriptors.
    constexpr std::size_t kAnnounced = 128;
    return {rule_, sizes_, waits_,
            std::clamp<std::size_t>(kAnnounced / std::max<std::size_t>(workers_.Most(), 1), 2, 32), turn_};
}

// On a disk that rotates a longer run is read in a better order.
std::size_t ContentsAhead::PairsPerRun() const {
    constexpr std::size_t kQuick = 32, kInOrder = 64;
    return turn_ && *waits_ ? kInOrder : kQuick;
}

LevelContents::~LevelContents() {
    while (!runs_.empty()) DropRun();
    while (!large_.empty()) DropLarge();
}

void LevelContents::Advance() {
    while (next_ < count_ && ahead_.pairs_ < ContentsAhead::kPairsAhead) AddRun();
    for (Run& run : runs_) {
        if (!run.verdicts.empty()) continue;
        if (run.beingTaken || !run.job.IsReady()) break;
        TakeVerdicts(run, [] {});
    }
    for (LargePair& large : large_) {
        while (large.handedIn < large.found.size && ahead_.stretches_ < ahead_.StretchesAhead())
            AddStretch(large);
        if (large.handedIn < large.found.size) break;
    }
}

// The next run; none where no pair is left.
void LevelContents::AddRun() {
    const std::size_t most = ahead_.PairsPerRun();
    auto pairs = std::make_shared<PairRun>(folders_);
    std::vector<std::size_t> positions;
    // A step goes by many positions at most, so that few pairs among many others hold nothing up.
    constexpr std::size_t kMostPositions = 4'096;
    const std::size_t end = std::min(count_, next_ + kMostPositions);
    for (PairToRead pair; next_ < end && positions.size() < most; ++next_) {
        if (!describe_(next_, pair)) continue;
        pairs->Add(pair);
        positions.push_back(next_);
    }
    if (positions.empty()) return;
    ahead_.pairs_ += positions.size();
    Run& run = runs_.emplace_back();
    run.pairs = pairs;
    run.positions = std::move(positions);
    run.job = PendingJob<std::vector<PairVerdict>>(
        ahead_.workers_, [pairs = std::move(pairs), terms = ahead_.Terms()](const StopFlag& stop) {
            return ReadPairs(*pairs, terms, stop);
        });
}

void LevelContents::DropRun() {
    ahead_.pairs_ -= runs_.front().positions.size();
    runs_.pop_front();
}

void LevelContents::TakeVerdicts(Run& run, const WhileWaiting& whileWaiting) {
    run.beingTaken = true;
    run.verdicts = run.job.Take(whileWaiting);
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        if (run.verdicts[i].kind != PairVerdict::Kind::Large) continue;
        auto alone = std::make_shared<PairRun>(folders_);
        alone->Add((*run.pairs)[i]);
        large_.push_back({run.positions[i], std::move(alone), run.verdicts[i], 0, {}});
    }
}

void LevelContents::AddStretch(LargePair& large) {
    const std::uint64_t from = large.handedIn;
    large.handedIn = std::min(from + StretchLength(ahead_.rule_), large.found.size);
    ++ahead_.stretches_;
    large.stretches.emplace_back(
        ahead_.workers_,
        [stretch = Stretch{large.pair, large.found.seen, {from, large.handedIn}},
         terms = ahead_.Terms()](const StopFlag& stop) { return ReadStretch(stretch, terms, stop); });
}

void LevelContents::DropLarge() {
    ahead_.stretches_ -= large_.front().stretches.size();
    large_.pop_front();
}

// Drops what lies before `position`: it was not asked for.
void LevelContents::PassOver(std::size_t position) {
    while (!runs_.empty() && runs_.front().positions.back() < position) DropRun();
    while (!large_.empty() && large_.front().position < position) DropLarge();
    if (runs_.empty()) next_ = std::max(next_, position);
}

PairVerdict LevelContents::Take(std::size_t position, const WhileWaiting& whileWaiting,
                                const std::function<void(std::uint64_t size, std::uint64_t to)>& readTo) {
    PassOver(position);
    // However much is ahead elsewhere, what is wanted now is handed in.
    while (runs_.empty() && next_ <= position) AddRun();
    if (runs_.empty() || runs_.front().positions.front() > position) return {};
    Run& run = runs_.front();
    if (run.verdicts.empty()) TakeVerdicts(run, whileWaiting);
    while (run.next < run.positions.size() && run.positions[run.next] < position) ++run.next;
    if (run.next == run.positions.size() || run.positions[run.next] != position) return {};
    if (run.verdicts[run.next].kind != PairVerdict::Kind::Large) return run.verdicts[run.next];
    return TakeLarge(whileWaiting, readTo);
}

PairVerdict LevelContents::TakeLarge(
    const WhileWaiting& whileWaiting,
    const std::function<void(std::uint64_t size, std::uint64_t to)>& readTo) {
    LargePair& large = large_.front();
    PairVerdict verdict = large.found;
    verdict.kind = PairVerdict::Kind::Alike;
    while (verdict.kind == PairVerdict::Kind::Alike) {
        if (large.stretches.empty() && large.handedIn == large.found.size) break;
        // A stretch can be done sooner than `whileWaiting` is called: the workers must not run dry.
        Advance();
        if (large.stretches.empty()) AddStretch(large);
        const PairVerdict stretch = large.stretches.front().Take(whileWaiting);
        large.stretches.pop_front();
        --ahead_.stretches_;
        verdict.kind = stretch.kind;
        verdict.readTo = stretch.readTo;
        readTo(verdict.size, stretch.readTo);
    }
    DropLarge();
    return verdict;
}

}  // namespace vantrel
