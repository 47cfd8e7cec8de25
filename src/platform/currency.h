#pragma once

#include <compare>
#include <cstdint>
#include <limits>

namespace vantrel {

// A 64-bit fixed-point number scaled by 10,000. It holds byte counts, and whole seconds in time differences.
// Arithmetic saturates at the ends of the range: a sum of sizes never wraps to a negative number.
class Currency {
  public:
    static constexpr std::int64_t kScale = 10'000;

    constexpr Currency() = default;
    static constexpr Currency FromWhole(std::int64_t whole) {
        std::int64_t raw = 0;
        if (__builtin_mul_overflow(whole, kScale, &raw)) raw = Extreme(whole < 0);
        return FromRaw(raw);
    }
    static constexpr Currency FromRaw(std::int64_t raw) {
        Currency value;
        value.raw_ = raw;
        return value;
    }

    constexpr std::int64_t Whole() const { return raw_ / kScale; }
    constexpr std::int64_t Raw() const { return raw_; }

    constexpr Currency operator-() const { return Currency() - *this; }
    constexpr Currency& operator+=(Currency other) {
        if (__builtin_add_overflow(raw_, other.raw_, &raw_)) raw_ = Extreme(other.raw_ < 0);
        return *this;
    }
    constexpr Currency& operator-=(Currency other) {
        if (__builtin_sub_overflow(raw_, other.raw_, &raw_)) raw_ = Extreme(other.raw_ > 0);
        return *this;
    }
    friend constexpr Currency operator+(Currency a, Currency b) { return a += b; }
    friend constexpr Currency operator-(Currency a, Currency b) { return a -= b; }
    friend constexpr auto operator<=>(Currency, Currency) = default;

  private:
    static constexpr std::int64_t Extreme(bool negative) {
        return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    std::int64_t raw_ = 0;
};

}  // namespace vantrel
