#pragma once

#include "core/ccompare.h"
#include "core/result_row.h"

namespace vantrel {

struct PairTypes {
    ResultType left = ResultType::None;
    ResultType right = ResultType::None;
    friend constexpr bool operator==(const PairTypes&, const PairTypes&) = default;
};

// Whether the contents of a pair must be read: under a content method, and only where the sizes are equal.
constexpr bool NeedsContents(CompareMethod method, bool sizesDiffer) {
    return method != CompareMethod::SizeAndDate && !sizesDiffer;
}

// The types of a pair of files that exists on both sides. `difference` is the left time minus the right one
// in whole seconds, the allowances applied. `contentsDiffer` counts only where NeedsContents says so.
constexpr PairTypes ClassifyPair(CompareMethod method, Currency difference, bool sizesDiffer,
                                 bool contentsDiffer) {
    using enum ResultType;
    const bool differ = sizesDiffer || (NeedsContents(method, sizesDiffer) && contentsDiffer);
    if (method != CompareMethod::SizeAndDate && !differ) return {Same, Same};
    if (difference > Currency()) return {Newer, Older};
    if (difference < Currency()) return {Older, Newer};
    return differ ? PairTypes{Binary, Binary} : PairTypes{Same, Same};
}

}  // namespace vantrel
