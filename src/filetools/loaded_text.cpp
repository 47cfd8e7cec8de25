#include "filetools/loaded_text.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "filetools/byte_hash.h"
#include "platform/memory.h"

namespace vantrel {

namespace {

constexpr std::size_t kReadPiece = std::size_t{256} << 10;

// Converted between two looks at the cancel flag.
constexpr std::ptrdiff_t kConverted = std::ptrdiff_t{4} << 20;
// So much is never refused.
constexpr std::uint64_t kAlwaysTried = std::uint64_t{64} << 20;

struct GrownBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
    std::size_t room = 0;

    void Grow(std::size_t newRoom) {
        auto larger = std::make_unique_for_overwrite<char[]>(newRoom);
        if (size > 0) std::memcpy(larger.get(), data.get(), size);
        data = std::move(larger);
        room = newRoom;
    }
    std::string_view View() const { return {data.get(), size}; }
};

// To the file's end as it then is, whatever its size was said to be.
GrownBytes ReadAll(ReadFile& file, ByteScan& scan, const CancelCheck& check) {
    GrownBytes bytes;
    bytes.Grow(static_cast<std::size_t>(file.Size()) + 1);
    while (true) {
        if (bytes.size == bytes.room) bytes.Grow(bytes.room + std::max(bytes.room / 2, kReadPiece));
        const std::size_t wanted = std::min(kReadPiece, bytes.room - bytes.size);
        std::size_t got = 0;
        ThrowIfFailed(file.ReadAt(bytes.size, bytes.data.get() + bytes.size, wanted, got));
        scan.Add({bytes.data.get() + bytes.size, got});
        bytes.size += got;
        if (check) check();
        if (got < wanted) return bytes;
    }
}

LineEnds LineEndsOf(std::string_view text, const ByteScan& scan) {
    if (!scan.hasCarriageReturn) return scan.lineFeeds > 0 ? LineEnds::Lf : LineEnds::None;
    std::uint64_t pairs = 0;
    std::uint64_t alone = 0;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end; ++at) {
        at = static_cast<const char*>(std::memchr(at, '\r', static_cast<std::size_t>(end - at)));
        if (at == nullptr) break;
        ++(at + 1 < end && at[1] == '\n' ? pairs : alone);
    }
    if (alone > 0) return scan.lineFeeds > 0 ? LineEnds::Mixed : LineEnds::Cr;
    return pairs == scan.lineFeeds ? LineEnds::CrLf : LineEnds::Mixed;
}

Error TooLarge(std::string_view what) {
    return Error(ErrorNumber::OutOfStringSpace,
                 std::string(what) + " too large to be compared in the memory that is free now");
}

}  // namespace

std::string_view LineEndsText(LineEnds ends) {
    switch (ends) {
        case LineEnds::Lf:
            return "LF";
        case LineEnds::CrLf:
            return "CR LF";
        case LineEnds::Cr:
            return "CR";
        case LineEnds::Mixed:
            return "mixed";
        case LineEnds::None:
            break;
    }
    return "";
}

LoadedText LoadText(const FileSystem& files, const TextRequest& request, const CancelCheck& check) {
    ReadFile file;
    ThrowIfFailed(files.OpenForReading(request.path, file));
    ByteScan scan;
    GrownBytes bytes = ReadAll(file, scan, check);
    EncodingGuess guess = GuessEncoding(bytes.View(), scan, check);
    if (!request.encoding.empty())
        guess = {request.encoding, MarkLengthOf(bytes.View(), request.encoding), false};

    LoadedText text;
    text.path = request.path;
    text.encoding = guess.encoding;
    text.hasByteOrderMark = guess.markLength > 0;
    text.isBinary = guess.isBinary;
    text.lastWrite = file.LastWrite();
    text.id = file.Seen().id;
    const bool forReading = request.form == TextForm::ForReading;
    const bool isWide = guess.encoding == kUtf16Little || guess.encoding == kUtf16Big;
    text.isDecoded = guess.encoding != kUtf8 && (forReading || isWide || !request.encoding.empty());
    if (text.isDecoded) {
        text.storedHash = HashBytes(bytes.View(), HashBytes(guess.encoding, 0));
        const std::string decoded =
            DecodeToUtf8(bytes.View().substr(guess.markLength), guess.encoding, check);
        bytes = {};
        bytes.Grow(decoded.size() + 1);
        decoded.copy(bytes.data.get(), decoded.size());
        bytes.size = decoded.size();
        scan = {};
        scan.Add(decoded);
    } else if (forReading && !text.isBinary) {
        text.skipped_ = guess.markLength;
    }
    text.lineFeeds = scan.lineFeeds;
    text.bytes_ = std::move(bytes.data);
    text.size_ = bytes.size;
    if (forReading && !text.isBinary) text.lineEnds = LineEndsOf(text.Text(), scan);
    return text;
}

bool SettleLineEnds(PerSide<LoadedText>& texts, const CancelCheck& check) {
    const LineEnds left = texts[Side::Left].lineEnds;
    const LineEnds right = texts[Side::Right].lineEnds;
    const auto keepsToOne = [](LineEnds ends) { return ends != LineEnds::None && ends != LineEnds::Mixed; };
    const bool ignored = left != right && keepsToOne(left) && keepsToOne(right);
    for (const Side side : kBothSides) {
        LoadedText& text = texts[side];
        const bool leavesOut = text.lineEnds == LineEnds::CrLf && ignored;
        if (text.lineEnds != LineEnds::Cr && !leavesOut) continue;
        char* const begin = text.bytes_.get() + text.skipped_;
        char* const end = text.bytes_.get() + text.size_;
        char* to = begin;
        for (char* from = begin; from < end;) {
            char* const pieceEnd = from + std::min<std::ptrdiff_t>(end - from, kConverted);
            if (leavesOut) {
                char* const kept = std::remove(from, pieceEnd, '\r');
                to = to == from ? kept : std::move(from, kept, to);
            } else {
                text.lineFeeds += static_cast<std::uint64_t>(std::count(from, pieceEnd, '\r'));
                std::replace(from, pieceEnd, '\r', '\n');
                to = pieceEnd;
            }
            from = pieceEnd;
            if (check) check();
        }
        text.size_ = text.skipped_ + static_cast<std::size_t>(to - begin);
    }
    return ignored;
}

Error CheckMemoryFor(const FileSystem& files, std::uint64_t bytes) {
    if (bytes <= kAlwaysTried) return {};
    const std::uint64_t free = AvailableMemory(files);
    return free == 0 || bytes <= free / 5 * 4 ? Error() : TooLarge("The files are");
}

Error CheckMemoryForLines(const FileSystem& files, const PerSide<LoadedText>& texts) {
    constexpr std::uint64_t kBytesForLine = 40;
    std::uint64_t wanted = 0;
    for (const Side side : kBothSides) {
        if (texts[side].lineFeeds >= static_cast<std::uint64_t>(kMostLines))
            return Error(ErrorNumber::Overflow, "The file has too many lines");
        wanted += texts[side].lineFeeds * kBytesForLine;
    }
    if (wanted <= kAlwaysTried) return {};
    const std::uint64_t free = AvailableMemory(files);
    return free == 0 || wanted <= free ? Error() : TooLarge("The files have too many lines: they are");
}

}  // namespace vantrel
