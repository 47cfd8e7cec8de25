#include "filetools/ascii_percent.h"

#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t kCountedPiece = std::size_t{256} << 10;

bool IsAsciiTextLetter(char letter) {
    return (letter >= 0x20 && letter < 0x7F) || (letter >= '\t' && letter <= '\r');
}

}  // namespace

std::int32_t GetAsciiPercent(const FileSystem& files, std::string_view path, const CancelCheck& check) {
    ReadFile file;
    ThrowIfFailed(files.OpenForReading(path, file));
    std::vector<char> piece(kCountedPiece);
    std::uint64_t all = 0;
    std::uint64_t text = 0;
    for (std::size_t got = kCountedPiece; got == kCountedPiece;) {
        ThrowIfFailed(file.ReadAt(all, piece.data(), kCountedPiece, got));
        all += got;
        text += static_cast<std::uint64_t>(std::count_if(
            piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got), IsAsciiTextLetter));
        if (check) check();
    }
    if (all == 0) return 100;
    // No product overflows here: the remainder is below `all`, which is below 2^57 for any file there is.
    return static_cast<std::int32_t>(text / all * 100 + text % all * 100 / all);
}

}  // namespace vantrel
