#include "dupes/same_contents.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vantrel {

namespace {
constexpr std::size_t kLookBlock = std::size_t{256} << 10;
}  // namespace

SameContents CompareContents(const FileSystem& files, const std::string& first, const Seen& seen,
                             const std::string& second, const std::function<void()>& check) {
    ReadFile one, other, again;
    if (!files.OpenForReading(first, one).IsOk() || one.Seen() != seen) return SameContents::FirstUnreadable;
    if (!files.OpenForReading(second, other).IsOk() || other.Seen().id == seen.id)
        return SameContents::SecondUnreadable;
    if (one.Size() != other.Size()) return SameContents::Different;
    static thread_local std::vector<char> bytes(2 * kLookBlock);
    for (std::uint64_t at = 0; at < one.Size(); at += kLookBlock) {
        check();
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(kLookBlock, one.Size() - at));
        std::size_t got = 0;
        if (!one.ReadAt(at, bytes.data(), length, got).IsOk() || got != length)
            return SameContents::FirstUnreadable;
        if (!other.ReadAt(at, bytes.data() + kLookBlock, length, got).IsOk() || got != length)
            return SameContents::SecondUnreadable;
        if (std::memcmp(bytes.data(), bytes.data() + kLookBlock, length) != 0) return SameContents::Different;
    }
    // What was written to it meanwhile may not be what was read.
    if (!files.OpenForReading(second, again).IsOk() || again.Seen() != other.Seen())
        return SameContents::SecondUnreadable;
    return SameContents::Same;
}

}  // namespace vantrel
