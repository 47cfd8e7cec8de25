#pragma once

#include <functional>

namespace vantrel {

// What a long stage calls for every some 10 milliseconds of work at most. It throws Cancelled where the
// result is no longer wanted; the one thread also lets events through in it.
using CancelCheck = std::function<void()>;

// Calls a CancelCheck once for so much work, in whatever unit the stage counts.
class PacedCheck {
  public:
    PacedCheck(const CancelCheck& check, std::size_t every) : check_(check), every_(every) {}
    void Count(std::size_t work = 1) {
        done_ += work;
        if (done_ < every_) return;
        done_ = 0;
        if (check_) check_();
    }

  private:
    const CancelCheck& check_;
    std::size_t every_;
    std::size_t done_ = 0;
};

}  // namespace vantrel
