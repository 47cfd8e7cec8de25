#include "core/pair_comparison.h"

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

}  // namespace vantrel
