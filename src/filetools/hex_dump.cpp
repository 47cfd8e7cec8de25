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

namespace {

// What each byte looks like: as two digits and as a character.
struct ByteLooks {
    std::array<char, 512> digits{};
    std::array<char, 256> characters{};
    constexpr ByteLooks() {
        for (std::size_t byte = 0; byte < characters.size(); ++byte) {
            digits[2 * byte] = kDigits[byte >> 4];
            digits[2 * byte + 1] = kDigits[byte & 15];
            characters[byte] = byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
        }
    }
};
constexpr ByteLooks kLooks;

std::size_t LineLength(std::size_t bytes, std::size_t offsetDigits) {
    return offsetDigits + kLineRest - (kHexDumpBytes - bytes);
}

// Writes all LineLength characters of a line.
void FillLine(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
              char* line) {
    std::memset(line, ' ', LineLength(bytes.size(), offsetDigits));
    for (std::size_t digit = offsetDigits; digit-- > 0; offset >>= 4) line[digit] = kDigits[offset & 15];
    char* const rest = line + offsetDigits;
    rest[kBarAt] = '|';
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        std::memcpy(rest + DigitsAt(at), &kLooks.digits[std::size_t{2} * bytes[at]], 2);
        rest[kBarAt + 1 + at] = kLooks.characters[bytes[at]];
    }
    rest[kBarAt + 1 + bytes.size()] = '|';
}

}  // namespace

void AppendHexDumpLine(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                       std::string& out) {
    const std::size_t begin = out.size();
    out.resize(begin + LineLength(bytes.size(), offsetDigits));
    FillLine(offset, bytes, offsetDigits, out.data() + begin);
}

void AppendHexDump(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                   std::string_view lineEnd, std::string& out) {
    // The room for all lines at once: asking for that of each costs as much as filling it.
    const std::size_t lines = (bytes.size() + kHexDumpBytes - 1) / kHexDumpBytes;
    std::size_t end = out.size();
    out.resize(end + lines * (LineLength(kHexDumpBytes, offsetDigits) + lineEnd.size()));
    for (std::size_t at = 0; at < bytes.size(); at += kHexDumpBytes) {
        const auto line = bytes.subspan(at, std::min(kHexDumpBytes, bytes.size() - at));
        FillLine(offset + at, line, offsetDigits, out.data() + end);
        end += LineLength(line.size(), offsetDigits);
        end += lineEnd.copy(out.data() + end, lineEnd.size());
    }
    out.resize(end);
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
    Forget();
    return {};
}

void BytesOfFile::Forget() {
    blocks_ = {};
    lastError_ = Error();
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

Error FileBecameShorter() {
    return {ErrorNumber::Raised, "The file has become shorter while it was read."};
}

std::span<const unsigned char> BytesOfFile::AtOrThrow(std::uint64_t offset, std::size_t length) {
    const std::span<const unsigned char> bytes = At(offset, length);
    if (bytes.size() < length && !lastError_.IsOk()) throw ErrorException(lastError_);
    return bytes;
}

std::string BytesOfFile::Line(std::uint64_t number, std::size_t offsetDigits) {
    const std::uint64_t offset = number * kHexDumpBytes;
    std::string line;
    const std::span<const unsigned char> bytes = At(offset, kHexDumpBytes);
    if (bytes.empty() && offset < Size()) {
        AppendHexDumpLine(offset, {}, offsetDigits, line);
        line.resize(offsetDigits + kDigitsAt);
        return line + (lastError_.IsOk() ? "The file has become shorter." : lastError_.Description());
    }
    AppendHexDumpLine(offset, bytes, offsetDigits, line);
    return line;
}

void WriteHexDump(BytesOfFile& file, std::uint64_t offset, std::uint64_t length, std::string_view lineEnd,
                  EventLoopPort& loop, const PieceSink& sink, const BytesDone& progress) {
    const std::size_t digits = HexDumpOffsetDigits(file.Size());
    const std::uint64_t end = offset + std::min(length, file.Size() - std::min(file.Size(), offset));
    std::string piece;
    for (std::uint64_t at = offset; at < end;) {
        loop.Yield();
        if (loop.CancelRequested()) throw Cancelled();
        const std::uint64_t wanted = std::min<std::uint64_t>(kPieceLines * kHexDumpBytes, end - at);
        const auto bytes = file.AtOrThrow(at, static_cast<std::size_t>(wanted));
        if (bytes.size() < wanted) throw ErrorException(FileBecameShorter());
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
