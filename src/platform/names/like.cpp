#include "platform/names/fold.h"
#include "platform/names/names.h"

namespace vantrel {

namespace {

// `set` is what stands between the brackets, without a leading "!".
bool IsInSet(UChar32 character, std::string_view set) {
    std::size_t at = 0;
    while (at < set.size()) {
        const UChar32 first = NextFolded(set, at);
        UChar32 last = first;
        if (at + 1 < set.size() && set[at] == '-') {
            ++at;
            last = NextFolded(set, at);
        }
        if (character >= first && character <= last) return true;
    }
    return false;
}

class LikeMatcher {
  public:
    LikeMatcher(std::string_view name, std::string_view pattern)
        : name_(name), pattern_(pattern), lastClose_(pattern.rfind(']')) {}

    // Only the last "*" passed is ever taken back: an earlier one can gain nothing that this one cannot.
    bool Run() {
        std::size_t starPattern = std::string_view::npos;
        std::size_t starName = 0;
        while (true) {
            if (inPattern_ < pattern_.size() && pattern_[inPattern_] == '*') {
                starPattern = ++inPattern_;
                starName = inName_;
                continue;
            }
            if (inPattern_ == pattern_.size() && inName_ == name_.size()) return true;
            if (inPattern_ < pattern_.size() && TakeOne()) continue;
            if (starPattern == std::string_view::npos || starName == name_.size()) return false;
            NextFolded(name_, starName);
            inName_ = starName;
            inPattern_ = starPattern;
        }
    }

  private:
    // Matches one element of the pattern; moves both positions on when it fits.
    bool TakeOne() {
        const char element = pattern_[inPattern_];
        if (element == '[' && lastClose_ != std::string_view::npos && inPattern_ < lastClose_) {
            return TakeSet();
        }
        if (inName_ == name_.size()) return false;
        if (element == '#') {
            if (name_[inName_] < '0' || name_[inName_] > '9') return false;
            ++inName_;
            ++inPattern_;
            return true;
        }
        std::size_t nextName = inName_;
        const UChar32 character = NextFolded(name_, nextName);
        std::size_t nextPattern = inPattern_;
        const UChar32 wanted = NextFolded(pattern_, nextPattern);
        if (element != '?' && character != wanted) return false;
        inName_ = nextName;
        inPattern_ = nextPattern;
        return true;
    }

    bool TakeSet() {
        const std::size_t close = pattern_.find(']', inPattern_);
        std::string_view set = pattern_.substr(inPattern_ + 1, close - inPattern_ - 1);
        if (set.empty()) {
            inPattern_ = close + 1;
            return true;
        }
        if (inName_ == name_.size()) return false;
        const bool negated = set.size() > 1 && set.front() == '!';
        if (negated) set.remove_prefix(1);
        std::size_t nextName = inName_;
        if (IsInSet(NextFolded(name_, nextName), set) == negated) return false;
        inName_ = nextName;
        inPattern_ = close + 1;
        return true;
    }

    std::string_view name_;
    std::string_view pattern_;
    std::size_t lastClose_;
    std::size_t inName_ = 0;
    std::size_t inPattern_ = 0;
};

}  // namespace

bool Like(std::string_view name, std::string_view pattern) {
    return LikeMatcher(name, pattern).Run();
}

}  // namespace vantrel
