#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "filetools/cancel_check.h"

namespace vantrel {

// Encodings go by the names that ICU knows them under; these four are found by themselves.
inline constexpr std::string_view kUtf8 = "UTF-8";
inline constexpr std::string_view kUtf16Little = "UTF-16LE";
inline constexpr std::string_view kUtf16Big = "UTF-16BE";
inline constexpr std::string_view kWestern = "windows-1252";

// The encodings to offer for a side, by name; the four above first. Any other that KnownEncoding takes will
// do.
const std::vector<std::string_view>& OfferedEncodings();
// The name as it stands above, or ICU's own, for a name in any spelling that ICU knows ("utf8", "latin1");
// empty for one that is unknown.
std::string KnownEncoding(std::string_view name);

// What was found out about the bytes of a file.
struct EncodingGuess {
    std::string encoding{kUtf8};
    std::size_t markLength = 0;  // of the byte order mark, 0 where there is none
    bool isBinary = false;       // no text: it holds NUL bytes and is no UTF-16
};

// By the byte order mark; strictly valid UTF-8 without a NUL; UTF-16 where ICU's detector says so and the
// bytes bear it out; the single-byte Western code page. The cost is one pass over the bytes, less where
// `scan` was made while they were read.
struct ByteScan {
    bool hasNul = false;
    bool hasHighBytes = false;  // above 0x7F
    bool hasCarriageReturn = false;
    std::uint64_t lineFeeds = 0;

    void Add(std::string_view piece);
};
EncodingGuess GuessEncoding(std::string_view bytes, const ByteScan& scan, const CancelCheck& check);
// Whether `bytes` begin with the byte order mark of `encoding`, and its length.
std::size_t MarkLengthOf(std::string_view bytes, std::string_view encoding);

// The text as UTF-8; what is UTF-8 already stays as it is. What is no valid sequence becomes U+FFFD. Throws
// ErrorException where the encoding is unknown.
std::string DecodeToUtf8(std::string_view bytes, const std::string& encoding, const CancelCheck& check);

// Strict: no surrogates, no overlong forms, nothing above U+10FFFF.
bool IsValidUtf8(std::string_view bytes, const CancelCheck& check);

}  // namespace vantrel
