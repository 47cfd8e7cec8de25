#include "filetools/line_table.h"

#include <unicode/ucnv.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "filetools/byte_hash.h"
#include "filetools/text_encoding.h"
#include "platform/error.h"
#include "platform/names/fold.h"

namespace vantrel {

namespace {

bool IsWhite(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

// The folded characters of the bytes of the Western code page, as UTF-8.
const std::array<std::string, 256>& WesternFolded() {
    static const std::array<std::string, 256> table = [] {
        std::array<std::string, 256> made;
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text =
                DecodeToUtf8(std::string(1, static_cast<char>(byte)), std::string(kWestern), {});
            std::size_t at = 0;
            const UChar32 point = NextFolded(text, at);
            char units[U8_MAX_LENGTH];
            int length = 0;
            U8_APPEND_UNSAFE(units, length, point);
            made[static_cast<std::size_t>(byte)].assign(units, static_cast<std::size_t>(length));
        }
        return made;
    }();
    return table;
}

// Somewhat more lines than there are likely to be, from samples of all parts of the text.
std::size_t ExpectedLines(std::string_view text) {
    constexpr std::size_t kSamples = 64;
    constexpr std::size_t kSample = 4'096;
    if (text.size() <= kSamples * kSample)
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    std::size_t inSamples = 0;
    for (std::size_t sample = 0; sample < kSamples; ++sample) {
        const char* const from = text.data() + (text.size() - kSample) / (kSamples - 1) * sample;
        inSamples += static_cast<std::size_t>(std::count(from, from + kSample, '\n'));
    }
    const std::size_t expected = text.size() / (kSamples * kSample) * (inSamples + 1);
    return expected + expected / 16;
}

}  // namespace

LineReader::LineReader(const LineLikeness& likeness, Side side)
    : exact_(!likeness.ignoreCase && !likeness.ignoreWhitespace),
      ignoreCase_(likeness.ignoreCase),
      ignoreWhitespace_(likeness.ignoreWhitespace),
      western_(likeness.western[side]) {
}

std::string_view LineReader::Normal(std::string_view line) {
    normal_.clear();
    for (std::size_t at = 0; at < line.size();) {
        const char letter = line[at];
        if (ignoreWhitespace_ && IsWhite(letter)) {
            ++at;
        } else if (!ignoreCase_) {
            normal_.push_back(letter);
            ++at;
        } else if (static_cast<unsigned char>(letter) < 0x80) {
            normal_.push_back(static_cast<char>(FoldAscii(static_cast<unsigned char>(letter))));
            ++at;
        } else if (western_) {
            normal_.append(WesternFolded()[static_cast<unsigned char>(letter)]);
            ++at;
        } else {
            AppendFoldedCharacter(line, at, normal_);
        }
    }
    return normal_;
}

std::uint64_t LineReader::Hash(std::string_view line, std::uint64_t seed) {
    return HashBytes(exact_ ? line : Normal(line), seed);
}

bool LineReader::IsLike(std::string_view line, LineReader& otherReader, std::string_view other) {
    if (line == other) return true;
    return !exact_ && Normal(line) == otherReader.Normal(other);
}

LineTable MakeLineTable(std::string_view text, const LineLikeness& likeness, Side side, std::uint64_t seed,
                        const CancelCheck& check) {
    LineTable table;
    table.text = text;
    const std::size_t expected = ExpectedLines(text);
    table.starts.reserve(expected + 1);
    table.tokens.reserve(expected);
    LineReader reader(likeness, side);
    PacedCheck pace(check, std::size_t{4} << 20);
    for (std::size_t at = 0; at < text.size();) {
        const void* const end = std::memchr(text.data() + at, '\n', text.size() - at);
        const std::size_t next =
            end == nullptr ? text.size()
                           : static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1;
        const std::uint64_t hash = reader.Hash(text.substr(at, next - at), seed);
        table.starts.push_back(at);
        table.tokens.push_back(static_cast<std::uint32_t>(hash ^ hash >> 32));
        pace.Count(next - at + 32);
        at = next;
    }
    table.starts.push_back(text.size());
    if (table.tokens.size() > static_cast<std::size_t>(kMostLines))
        throw ErrorException(Error(ErrorNumber::Overflow, "The file has too many lines"));
    return table;
}

}  // namespace vantrel
