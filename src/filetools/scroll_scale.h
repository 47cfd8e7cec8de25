#pragma once

#include <cstdint>

namespace vantrel {

// The positions of a scroll bar, which are ints, for lines that may be more than an int can count: from some
// thousand million lines on one position stands for several lines, the first and the last one for themselves.
class ScrollScale {
  public:
    explicit constexpr ScrollScale(std::uint64_t lastTop = 0) : lastTop_(lastTop) {
        while (lastTop >> shift_ > kMost) ++shift_;
    }
    constexpr std::uint64_t LastTop() const { return lastTop_; }  // the last line that can stand at the top
    constexpr int Maximum() const { return static_cast<int>(lastTop_ >> shift_); }
    constexpr int PositionOf(std::uint64_t top) const {
        return static_cast<int>((top < lastTop_ ? top : lastTop_) >> shift_);
    }
    constexpr std::uint64_t TopOf(int position) const {
        if (position <= 0) return 0;
        return position >= Maximum() ? lastTop_ : static_cast<std::uint64_t>(position) << shift_;
    }

  private:
    static constexpr std::uint64_t kMost = std::uint64_t{1} << 30;
    std::uint64_t lastTop_;
    unsigned shift_ = 0;
};

}  // namespace vantrel
