#include "core/file_pieces.h"

#include <algorithm>
#include <memory>

#include "platform/names/paths.h"

namespace vantrel {

namespace {

constexpr std::int32_t kLeastPiece = 16 << 10;
constexpr std::int32_t kMostPiece = 1 << 20;

}  // namespace

bool ReadInPieces(const Toolbox& tools, CCompare& compare, std::string_view path, ContentProgress* progress,
                  const std::function<void(const char* bytes, std::size_t size)>& sink) {
    ReadFile file;
    ThrowIfFailed(tools.files.OpenForReading(path, file));
    const auto piece = static_cast<std::size_t>(std::clamp(compare.ChunkSize, kLeastPiece, kMostPiece));
    const auto buffer = std::make_unique_for_overwrite<char[]>(piece);
    std::uint64_t position = 0;
    int shown = -1;
    for (std::size_t got = piece; got == piece; position += got) {
        tools.loop.Yield();
        if (tools.loop.CancelRequested()) compare.CompareCancelled = true;
        if (compare.CompareCancelled) return false;
        ThrowIfFailed(file.ReadAt(position, buffer.get(), piece, got));
        if (got != 0) sink(buffer.get(), got);
        // A file can grow while it is read, and some tell no size at all.
        const std::uint64_t done = std::min(position + got, file.Size());
        const int percentage = file.Size() == 0 ? 100 : static_cast<int>(done * 100 / file.Size());
        if (progress != nullptr && percentage != shown) {
            shown = percentage;
            progress->SetPercentage(percentage, GetLastItemInPath(path));
        }
    }
    return true;
}

}  // namespace vantrel
