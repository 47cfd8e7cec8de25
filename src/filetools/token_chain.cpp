#include <algorithm>

#include "filetools/bit_rows.h"
#include "filetools/token_box.h"

namespace vantrel {

namespace {

constexpr std::uint32_t kNone = 0xFFFF'FFFF;

// Of the chains of each length the one that ends earliest on the right, and how it came there.
class Chains {
  public:
    // `links` are expected.
    explicit Chains(std::size_t links = 0) { links_.reserve(links); }
    // Positions on the right of one left position are added in descending order, so that none follows
    // another.
    void Add(std::uint32_t left, std::uint32_t right) {
        std::size_t length = ends_.size();
        if (length == 0 || ends_.back() < right) {
            ends_.push_back(right);
            last_.push_back(kNone);
        } else {
            const auto place = std::lower_bound(ends_.begin(), ends_.end(), right);
            if (*place == right) return;
            *place = right;
            length = static_cast<std::size_t>(place - ends_.begin());
        }
        last_[length] = static_cast<std::uint32_t>(links_.size());
        links_.push_back({{{left, right}}, length == 0 ? kNone : last_[length - 1]});
    }

    std::vector<TokenPair> Longest() const {
        std::vector<TokenPair> chain;
        chain.reserve(last_.size());
        for (std::uint32_t link = last_.empty() ? kNone : last_.back(); link != kNone;
             link = links_[link].before)
            chain.push_back(links_[link].pair);
        std::reverse(chain.begin(), chain.end());
        return chain;
    }

  private:
    struct Link {
        TokenPair pair;
        std::uint32_t before;
    };
    std::vector<Link> links_;
    std::vector<std::uint32_t> ends_;  // by length less one: the last position on the right
    std::vector<std::uint32_t> last_;  // and the last link
};

}  // namespace

double CountPairs(Tokens left, const Occurrences& onRight) {
    double pairs = 0;
    for (const std::uint32_t token : left) pairs += static_cast<double>(onRight.Of(token).size());
    return pairs;
}

std::vector<TokenPair> PairsByChain(Tokens left, const Occurrences& onRight, PacedCheck& pace) {
    Chains chains;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const std::span<const std::uint32_t> positions = onRight.Of(left[i]);
        for (auto position = positions.rbegin(); position != positions.rend(); ++position)
            chains.Add(static_cast<std::uint32_t>(i), *position);
        pace.Count(8 + 4 * positions.size());
    }
    return chains.Longest();
}

std::vector<TokenPair> UniquePairsByChain(Tokens left, Tokens right, const Occurrences& onRight,
                                          PacedCheck& pace) {
    // The position on the left of each token that is unique on the right.
    constexpr std::uint32_t kTwice = kNone - 1;
    std::vector<std::uint32_t> leftOf(right.size(), kNone), rightOf(left.size(), kNone);
    for (std::size_t i = 0; i < left.size(); ++i) {
        const std::span<const std::uint32_t> positions = onRight.Of(left[i]);
        pace.Count(8);
        if (positions.size() != 1) continue;
        rightOf[i] = positions.front();
        std::uint32_t& place = leftOf[positions.front()];
        place = place == kNone ? static_cast<std::uint32_t>(i) : kTwice;
    }
    Chains chains(std::min(left.size(), right.size()));
    for (std::size_t i = 0; i < left.size(); ++i)
        if (rightOf[i] != kNone && leftOf[rightOf[i]] == i)
            chains.Add(static_cast<std::uint32_t>(i), rightOf[i]);
    return chains.Longest();
}

}  // namespace vantrel
