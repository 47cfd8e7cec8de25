#include <algorithm>
#include <cmath>
#include <limits>

#include "filetools/token_box.h"

namespace vantrel {

namespace {

// How far a search has come on each diagonal (left position minus right position), in left positions. Only as
// many diagonals are kept as the rounds of the search can reach.
class Front {
  public:
    Front(std::int64_t middle, std::int64_t rounds)
        : middle_(middle),
          reach_(rounds + 2),
          far_(static_cast<std::size_t>(2 * reach_ + 1)),
          first(middle),
          last(middle) {}
    std::int64_t& operator[](std::int64_t diagonal) {
        return far_[static_cast<std::size_t>(diagonal - middle_ + reach_)];
    }

    // One more diagonal on each side, where the table has it; otherwise one less, so that every second is
    // visited. `beyond` is what stands for a diagonal that was not reached.
    void Widen(std::int64_t least, std::int64_t most, std::int64_t beyond) {
        if (first > least)
            (*this)[--first - 1] = beyond;
        else
            ++first;
        if (last < most)
            (*this)[++last + 1] = beyond;
        else
            --last;
    }

  private:
    std::int64_t middle_;
    std::int64_t reach_;
    std::vector<std::int64_t> far_;

  public:
    std::int64_t first;
    std::int64_t last;
};

}  // namespace

// The linear-space search of E. Myers, from both corners at once until the two fronts meet.
bool FindPathPoint(Tokens left, Tokens right, std::int64_t steps, PacedCheck& pace,
                   PerSide<std::size_t>& point) {
    const auto width = static_cast<std::int64_t>(left.size());
    const auto height = static_cast<std::int64_t>(right.size());
    // Round r visits some 2 r diagonals.
    const std::int64_t rounds = std::min<std::int64_t>(
        static_cast<std::int64_t>(std::sqrt(static_cast<double>(steps))), (width + height + 1) / 2 + 1);
    Front forward(0, rounds);
    Front backward(width - height, rounds);
    forward[0] = 0;
    backward[width - height] = width;
    const bool odd = (width - height) % 2 != 0;
    const auto meet = [&](std::int64_t x, std::int64_t diagonal) {
        point = {{static_cast<std::size_t>(x), static_cast<std::size_t>(x - diagonal)}};
        return true;
    };
    for (std::int64_t round = 1; round <= rounds; ++round) {
        forward.Widen(-height, width, -1);
        for (std::int64_t diagonal = forward.last; diagonal >= forward.first; diagonal -= 2) {
            std::int64_t x = std::max(forward[diagonal - 1] + 1, forward[diagonal + 1]);
            for (; x < width && x - diagonal < height &&
                   left[static_cast<std::size_t>(x)] == right[static_cast<std::size_t>(x - diagonal)];
                 ++x) {
            }
            forward[diagonal] = x;
            if (odd && backward.first <= diagonal && diagonal <= backward.last && backward[diagonal] <= x)
                return meet(x, diagonal);
        }
        backward.Widen(-height, width, std::numeric_limits<std::int64_t>::max());
        for (std::int64_t diagonal = backward.last; diagonal >= backward.first; diagonal -= 2) {
            std::int64_t x = std::min(backward[diagonal - 1], backward[diagonal + 1] - 1);
            for (; x > 0 && x - diagonal > 0 &&
                   left[static_cast<std::size_t>(x - 1)] == right[static_cast<std::size_t>(x - diagonal - 1)];
                 --x) {
            }
            backward[diagonal] = x;
            if (!odd && forward.first <= diagonal && diagonal <= forward.last && x <= forward[diagonal])
                return meet(x, diagonal);
        }
        pace.Count(static_cast<std::size_t>(2 * round));
    }
    return false;
}

}  // namespace vantrel
