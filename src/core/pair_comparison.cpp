#include "core/pair_comparison.h"

#include <optional>

#include "core/mod_date_time.h"

namespace vantrel {

Currency PairComparison::Difference(const PerSide<ScannedFile>& pair) const {
    return AllowedTimeDifference(pair[Side::Left].lastWrite, pair[Side::Right].lastWrite, context_.compare);
}

bool PairComparison::ContentsDiffer(const std::string& left, const std::string& right, Currency size) {
    const bool differ = comparator_.FilesDiffer(left, right, method_, size, shownName_);
    if (context_.compare.CompareCancelled) throw ComparisonCancelled();
    return differ;
}

PairVerdict PairComparison::Take(LevelContents& contents, std::size_t position, std::string_view shown,
                                 const LevelContents::WhileWaiting& whileWaiting) {
    std::optional<ReadingShown> told;
    const auto tell = [&](std::uint64_t size, std::uint64_t to) {
        if (!told) told.emplace(ahead_.Rule(), size, shownName_, shown);
        told->ShowUpTo(to);
    };
    PairVerdict verdict = contents.Take(position, whileWaiting, tell);
    if (verdict.kind == PairVerdict::Kind::LookCloser) return verdict;
    if (verdict.readTo != 0) tell(verdict.size, verdict.readTo);
    comparator_.LookWhetherReadingWaits(verdict.readTo);
    ahead_.SetWaits(comparator_.ReadingWaits());
    return verdict;
}

}  // namespace vantrel
