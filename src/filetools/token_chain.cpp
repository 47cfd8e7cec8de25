#include <algorithm>

#include "filetools/bit_rows.h"
#include "filetools/token_box.h"

namespace vantrel {

double CountPairs(Tokens left, Tokens right) {
    const Occurrences onRight(right);
    double pairs = 0;
    for (const std::uint32_t token : left) pairs += static_cast<double>(onRight.Of(token).size());
    return pairs;
}

std::vector<TokenPair> PairsByChain(Tokens left, Tokens right, ChainOver over, PacedCheck& pace) {
    constexpr std::uint32_t kNone = 0xFFFF'FFFF;
    struct Link {
        TokenPair pair;
        std::uint32_t before;
    };
    const bool unique = over == ChainOver::TokensThatAreUnique;
    const Occurrences onRight(right);
    const Occurrences onLeft(unique ? left : Tokens());
    std::vector<Link> links;
    // Of the chains of each length, the one that ends earliest on the right: its last position and its last
    // link.
    std::vector<std::uint32_t> ends;
    std::vector<std::uint32_t> last;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const std::span<const std::uint32_t> positions = onRight.Of(left[i]);
        pace.Count(8 + 4 * positions.size());
        if (unique && (positions.size() != 1 || onLeft.Of(left[i]).size() != 1)) continue;
        for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
            const auto place = std::lower_bound(ends.begin(), ends.end(), *position);
            const auto length = static_cast<std::size_t>(place - ends.begin());
            if (place == ends.end()) {
                ends.push_back(*position);
                last.push_back(kNone);
            } else if (*place == *position) {
                continue;
            }
            ends[length] = *position;
            last[length] = static_cast<std::uint32_t>(links.size());
            links.push_back(
                {{{static_cast<std::uint32_t>(i), *position}}, length == 0 ? kNone : last[length - 1]});
        }
    }
    std::vector<TokenPair> chain;
    chain.reserve(last.size());
    for (std::uint32_t link = last.empty() ? kNone : last.back(); link != kNone; link = links[link].before)
        chain.push_back(links[link].pair);
    std::reverse(chain.begin(), chain.end());
    return chain;
}

}  // namespace vantrel
