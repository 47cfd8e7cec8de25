#include "filetools/hex_dump.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/line_end.h"

namespace vantrel {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kLeastOffsetDigits = 8;
constexpr std::size_t kHalf = kHexDumpBytes / 2;
// Behind the offset: blanks, digits, blanks, a bar, characters, a bar.
constexpr std::size_t kDigitsAt = 2;
constexpr std::size_t kBarAt = kDigitsAt + kHexDumpBytes * 3 + 2;
constexpr std::size_t kLineRest = kBarAt + kHexDumpBytes + 2;
constexpr std::size_t kPieceLines = 4'096;

constexpr std::size_t DigitsAt(std::size_t byte) {
    return kDigitsAt + byte * 3 + (byte >= kHalf ? 1 : 0);
}

int DigitValue(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    const char lower = static_cast<char>(letter | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

char Lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter | 0x20) : letter;
}

std::string_view AsText(std::span<const unsigned char> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void YieldOrCancel(EventLoopPort& loop) {
    loop.Yield();
    if (loop.CancelRequested()) throw Cancelled();
}

std::span<const unsigned char> AtOrThrow(BytesOfFile& file, std::uint64_t offset, std::size_t length) {
    const std::span<const unsigned char> bytes = file.At(offset, length);
    if (bytes.size() < length && !file.LastError().IsOk()) throw ErrorException(file.LastError());
    return bytes;
}

}  // namespace

std::size_t HexDumpOffsetDigits(std::uint64_t fileSize) {
    const auto bits = static_cast<std::size_t>(std::bit_width(fileSize == 0 ? 0 : fileSize - 1));
    return std::max(kLeastOffsetDigits, (bits + 3) / 4);
}

std::size_t HexDumpDigitsColumn(std::size_t byte, std::size_t offsetDigits) {
    return offsetDigits + DigitsAt(byte);
}

std::size_t HexDumpCharacterColumn(std::size_t byte, std::size_t offsetDigits) {
    return offsetDigits + kBarAt + 1 + byte;
}

void AppendHexDumpLine(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                       std::string& out) {
    const std::size_t begin = out.size();
    out.resize(begin + offsetDigits + kLineRest - (kHexDumpBytes - bytes.size()), ' ');
    char* const line = out.data() + begin;
    for (std::size_t digit = offsetDigits; digit-- > 0; offset >>= 4) line[digit] = kDigits[offset & 15];
    char* const rest = line + offsetDigits;
    rest[kBarAt] = '|';
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned char byte = bytes[at];
        char* const digits = rest + DigitsAt(at);
        digits[0] = kDigits[byte >> 4];
        digits[1] = kDigits[byte & 15];
        rest[kBarAt + 1 + at] = byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
    }
    rest[kBarAt + 1 + bytes.size()] = '|';
}

void AppendHexDump(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                   std::string_view lineEnd, std::string& out) {
    for (std::size_t at = 0; at < bytes.size(); at += kHexDumpBytes) {
        AppendHexDumpLine(offset + at, bytes.subspan(at, std::min(kHexDumpBytes, bytes.size() - at)),
                          offsetDigits, out);
        out.append(lineEnd);
    }
}

std::optional<std::string> BytesFromHexDigits(std::string_view text) {
    text = Trimmed(text);
    if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == ' ' || text[at] == '\t') {
            ++at;
            continue;
        }
        if (at + 1 == text.size()) return std::nullopt;
        const int high = DigitValue(text[at]), low = DigitValue(text[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        at += 2;
    }
    if (bytes.empty()) return std::nullopt;
    return bytes;
}

std::optional<std::uint64_t> OffsetFromText(std::string_view text) {
    text = Trimmed(text);
    std::uint64_t base = 10;
    const auto hexadecimal = [&](std::size_t front, std::size_t back) {
        base = 16;
        text.remove_prefix(front);
        text.remove_suffix(back);
    };
    if (text.starts_with("0x") || text.starts_with("0X") || text.starts_with("&H") || text.starts_with("&h"))
        hexadecimal(2, 0);
    else if (text.ends_with('h') || text.ends_with('H'))
        hexadecimal(0, 1);
    if (text.empty()) return std::nullopt;
    std::uint64_t value = 0;
    for (const char letter : text) {
        const int digit = DigitValue(letter);
        if (digit < 0 || static_cast<std::uint64_t>(digit) >= base) return std::nullopt;
        if (value > (UINT64_MAX - static_cast<std::uint64_t>(digit)) / base) return std::nullopt;
        value = value * base + static_cast<std::uint64_t>(digit);
    }
    return value;
}

Error BytesOfFile::Open(const FileSystem& files, std::string_view path) {
    ReadFile opened;
    if (Error error = files.OpenForReading(path, opened); !error.IsOk()) return error;
    file_ = std::move(opened);
    blocks_ = {};
    lastError_ = Error();
    return {};
}

const BytesOfFile::Block& BytesOfFile::Load(std::uint64_t offset) {
    if (blocks_[0].offset == offset) return blocks_[0];
    std::swap(blocks_[0], blocks_[1]);
    Block& block = blocks_[0];
    if (block.offset == offset) return block;
    block.bytes.resize(kBlock);
    // What is read behind the size of the moment of opening was not there then.
    const auto wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, Size() - std::min(Size(), offset)));
    block.size = 0;
    lastError_ = file_.ReadAt(offset, block.bytes.data(), wanted, block.size);
    // What failed is asked for again when it is wanted again.
    block.offset = lastError_.IsOk() ? offset : UINT64_MAX;
    if (!lastError_.IsOk()) block.size = 0;
    return block;
}

std::span<const unsigned char> BytesOfFile::At(std::uint64_t offset, std::size_t length) {
    lastError_ = Error();
    if (offset >= Size()) return {};
    length = std::min(length, kBlock);
    const std::uint64_t start = offset / kBlock * kBlock;
    const auto within = static_cast<std::size_t>(offset - start);
    const auto bytesOf = [](const Block& block) {
        return std::span(reinterpret_cast<const unsigned char*>(block.bytes.data()), block.size);
    };
    const std::span<const unsigned char> first = bytesOf(Load(start));
    if (within >= first.size()) return {};
    const std::size_t here = std::min(length, first.size() - within);
    if (here == length || first.size() < kBlock) return first.subspan(within, here);
    joined_.assign(AsText(first.subspan(within)));
    const std::span<const unsigned char> second = bytesOf(Load(start + kBlock));
    joined_.append(AsText(second.first(std::min(length - here, second.size()))));
    return {reinterpret_cast<const unsigned char*>(joined_.data()), joined_.size()};
}

std::string BytesOfFile::Line(std::uint64_t number) {
    const std::uint64_t offset = number * kHexDumpBytes;
    const std::size_t digits = HexDumpOffsetDigits(Size());
    std::string line;
    const std::span<const unsigned char> bytes = At(offset, kHexDumpBytes);
    if (bytes.empty() && offset < Size()) {
        AppendHexDumpLine(offset, {}, digits, line);
        line.resize(digits + kDigitsAt);
        return line + (lastError_.IsOk() ? "The file has become shorter." : lastError_.Description());
    }
    AppendHexDumpLine(offset, bytes, digits, line);
    return line;
}

namespace {

// The first or last occurrence in `text` that begins before `end`.
std::size_t FindIn(std::string_view text, std::string_view wanted, std::size_t end, SearchDirection direction,
                   SearchCase letterCase) {
    if (wanted.size() > text.size() || end == 0) return std::string_view::npos;
    const std::size_t last = std::min(end - 1, text.size() - wanted.size());
    const auto matches = [&](char one, char two) {
        return letterCase == SearchCase::Exact ? one == two : Lowered(one) == Lowered(two);
    };
    const std::string_view part = text.substr(0, last + wanted.size());
    if (direction == SearchDirection::Backward) {
        const auto found = std::find_end(part.begin(), part.end(), wanted.begin(), wanted.end(), matches);
        return found == part.end() ? std::string_view::npos : static_cast<std::size_t>(found - part.begin());
    }
    if (letterCase == SearchCase::Exact) {
        const void* const found = memmem(part.data(), part.size(), wanted.data(), wanted.size());
        return found == nullptr ? std::string_view::npos
                                : static_cast<std::size_t>(static_cast<const char*>(found) - part.data());
    }
    const auto found = std::search(part.begin(), part.end(), wanted.begin(), wanted.end(), matches);
    return found == part.end() ? std::string_view::npos : static_cast<std::size_t>(found - part.begin());
}

}  // namespace

std::optional<std::uint64_t> FindBytes(BytesOfFile& file, std::string_view wanted, std::uint64_t from,
                                       SearchDirection direction, SearchCase letterCase,
                                       EventLoopPort& loop) {
    // A stretch of places where it may begin, and behind them what an occurrence at the last one needs.
    const std::size_t overlap = wanted.size() - 1;
    if (wanted.empty() || wanted.size() > BytesOfFile::kBlock / 2 || file.Size() < wanted.size())
        return std::nullopt;
    const std::size_t stretch = BytesOfFile::kBlock - overlap;
    const std::uint64_t places = file.Size() - overlap;
    if (direction == SearchDirection::Forward) {
        for (std::uint64_t at = from; at < places; at += stretch) {
            YieldOrCancel(loop);
            const std::size_t found = FindIn(AsText(AtOrThrow(file, at, stretch + overlap)), wanted, stretch,
                                             direction, letterCase);
            if (found != std::string_view::npos) return at + found;
        }
        return std::nullopt;
    }
    for (std::uint64_t end = std::min(from, places - 1) + 1; end > 0;) {
        YieldOrCancel(loop);
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(end, stretch));
        const std::uint64_t at = end - length;
        const std::size_t found =
            FindIn(AsText(AtOrThrow(file, at, length + overlap)), wanted, length, direction, letterCase);
        if (found != std::string_view::npos) return at + found;
        end = at;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> FindDifference(BytesOfFile& left, BytesOfFile& right, std::uint64_t from,
                                            SearchDirection direction, EventLoopPort& loop) {
    const std::uint64_t longest = std::max(left.Size(), right.Size());
    const auto lookAt = [&](std::uint64_t at, std::size_t length) -> std::optional<std::uint64_t> {
        YieldOrCancel(loop);
        const auto one = AtOrThrow(left, at, length), two = AtOrThrow(right, at, length);
        const std::size_t common = std::min(one.size(), two.size());
        if (direction == SearchDirection::Forward) {
            const auto found =
                std::mismatch(one.begin(), one.begin() + static_cast<std::ptrdiff_t>(common), two.begin());
            const auto same = static_cast<std::size_t>(found.first - one.begin());
            if (same < std::max(one.size(), two.size())) return at + same;
            return std::nullopt;
        }
        if (one.size() != two.size()) return at + std::max(one.size(), two.size()) - 1;
        for (std::size_t byte = common; byte-- > 0;)
            if (one[byte] != two[byte]) return at + byte;
        return std::nullopt;
    };
    if (direction == SearchDirection::Forward) {
        for (std::uint64_t at = from; at < longest; at += BytesOfFile::kBlock)
            if (const auto found = lookAt(at, BytesOfFile::kBlock)) return found;
        return std::nullopt;
    }
    for (std::uint64_t end = longest == 0 ? 0 : std::min(from, longest - 1) + 1; end > 0;) {
        const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(end, BytesOfFile::kBlock));
        if (const auto found = lookAt(end - length, length)) return found;
        end -= length;
    }
    return std::nullopt;
}

void WriteHexDump(BytesOfFile& file, std::uint64_t offset, std::uint64_t length, std::string_view lineEnd,
                  EventLoopPort& loop, const PieceSink& sink, const BytesDone& progress) {
    const std::size_t digits = HexDumpOffsetDigits(file.Size());
    const std::uint64_t end = offset + std::min(length, file.Size() - std::min(file.Size(), offset));
    std::string piece;
    for (std::uint64_t at = offset; at < end;) {
        YieldOrCancel(loop);
        const std::uint64_t wanted = std::min<std::uint64_t>(kPieceLines * kHexDumpBytes, end - at);
        const auto bytes = AtOrThrow(file, at, static_cast<std::size_t>(wanted));
        if (bytes.size() < wanted)
            throw ErrorException(
                Error(ErrorNumber::Raised, "The file has become shorter while it was read."));
        piece.clear();
        AppendHexDump(at, bytes, digits, lineEnd, piece);
        sink(piece);
        at += wanted;
        if (progress) progress(at - offset, end - offset);
    }
}

Error DoHexDump(const Toolbox& tools, std::string_view path, BytesOfFile& out) {
    if (Error error = out.Open(tools.files, path); !error.IsOk()) return error;
    if (out.Size() == 0) return {ErrorNumber::Raised, "The file has no contents."};
    return {};
}

Error SaveHexDump(const Toolbox& tools, BytesOfFile& file, std::string_view target,
                  const BytesDone& progress) {
    return ReplaceFileInPieces(tools.files, target, [&](const PieceSink& sink) {
        WriteHexDump(file, 0, file.Size(), kLineEnd, tools.loop, sink, progress);
    });
}

}  // namespace vantrel
