#pragma once

#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

// A pattern of the "like" rule (names.h), taken apart once for a great many names: matching one takes a few
// steps where the name is ASCII, which nearly all are. Others go the long way, with the same answer.
class LikePattern {
  public:
    explicit LikePattern(std::string_view pattern);

    bool Matches(std::string_view name) const;

  private:
    // The characters that one place of the name may hold.
    using Place = std::bitset<128>;
    // What stands between two stars.
    using Run = std::vector<Place>;

    static bool FitsAt(const Run& run, std::string_view name, std::size_t at);
    bool MatchesAscii(std::string_view name) const;

    std::string pattern_;
    std::vector<Run> runs_;  // one more than there are stars
    std::size_t least_ = 0;  // places in all runs: no shorter name fits
};

}  // namespace vantrel
