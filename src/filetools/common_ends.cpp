#include "filetools/common_ends.h"

#include <algorithm>
#include <cstring>

namespace vantrel {

namespace {

constexpr std::size_t kBlock = std::size_t{256} << 10;

std::size_t CommonHead(std::string_view a, std::string_view b, PacedCheck& pace) {
    const std::size_t most = std::min(a.size(), b.size());
    std::size_t same = 0;
    while (same < most) {
        const std::size_t block = std::min(kBlock, most - same);
        if (std::memcmp(a.data() + same, b.data() + same, block) != 0) break;
        same += block;
        pace.Count(block);
    }
    return static_cast<std::size_t>(std::mismatch(a.begin() + static_cast<std::ptrdiff_t>(same),
                                                  a.begin() + static_cast<std::ptrdiff_t>(most),
                                                  b.begin() + static_cast<std::ptrdiff_t>(same))
                                        .first -
                                    a.begin());
}

std::size_t CommonTail(std::string_view a, std::string_view b, PacedCheck& pace) {
    const std::size_t most = std::min(a.size(), b.size());
    std::size_t same = 0;
    while (same < most) {
        const std::size_t block = std::min(kBlock, most - same);
        if (std::memcmp(a.data() + a.size() - same - block, b.data() + b.size() - same - block, block) != 0)
            break;
        same += block;
        pace.Count(block);
    }
    while (same < most && a[a.size() - same - 1] == b[b.size() - same - 1]) ++same;
    return same;
}

// The start of the line that `count` lines lie between and `at`, itself the start of a line.
std::size_t LinesBack(std::string_view text, std::size_t at, int count) {
    while (count-- > 0 && at > 0) {
        const std::size_t end = text.rfind('\n', at >= 2 ? at - 2 : 0);
        at = at < 2 || end == std::string_view::npos ? 0 : end + 1;
    }
    return at;
}

std::size_t LinesForward(std::string_view text, std::size_t at, int count) {
    while (count-- > 0 && at < text.size()) {
        const std::size_t end = text.find('\n', at);
        at = end == std::string_view::npos ? text.size() : end + 1;
    }
    return at;
}

}  // namespace

CommonEnds FindCommonEnds(const PerSide<std::string_view>& texts, const CancelCheck& check) {
    const std::string_view a = texts[Side::Left];
    const std::string_view b = texts[Side::Right];
    PacedCheck pace(check, std::size_t{16} << 20);
    CommonEnds ends;
    ends.head = CommonHead(a, b, pace);
    const bool same = ends.head == a.size() && ends.head == b.size();
    if (!same) {
        // Back to the start of a line on both sides.
        ends.head = ends.head == 0 ? 0 : a.substr(0, ends.head).rfind('\n') + 1;
        const std::string_view restOfA = a.substr(ends.head);
        const std::string_view restOfB = b.substr(ends.head);
        ends.tail = CommonTail(restOfA, restOfB, pace);
        const auto startsLine = [&](std::string_view rest) {
            return ends.tail == rest.size() || rest[rest.size() - ends.tail - 1] == '\n';
        };
        if (!startsLine(restOfA) || !startsLine(restOfB))
            ends.tail = restOfA.size() - LinesForward(restOfA, restOfA.size() - ends.tail, 1);
        ends.head = LinesBack(a, ends.head, CommonEnds::kKeptLines);
        ends.tail = a.size() - LinesForward(a, a.size() - ends.tail, CommonEnds::kKeptLines);
    }
    for (std::size_t at = 0; at < ends.head;) {
        const std::size_t block = std::min(kBlock, ends.head - at);
        ends.headLines += static_cast<LineNumber>(std::count(a.data() + at, a.data() + at + block, '\n'));
        at += block;
        pace.Count(block);
    }
    return ends;
}

}  // namespace vantrel
