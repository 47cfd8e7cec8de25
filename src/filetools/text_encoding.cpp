#include "filetools/text_encoding.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "platform/byte_order_mark.h"
#include "platform/error.h"

namespace vantrel {

namespace {

constexpr std::size_t kSample = std::size_t{64} << 10;         // what the detector looks at
constexpr std::size_t kDecodedPiece = std::size_t{256} << 10;  // decoded between two looks at the cancel flag

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter OpenConverter(const std::string& name) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(name.empty() ? nullptr : ucnv_open(name.c_str(), &status));
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

// The forms of UTF-16 that the detector holds for possible, the likelier one first.
std::vector<std::string_view> DetectorsUtf16(std::string_view bytes) {
    std::vector<std::string_view> possible;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, void (*)(UCharsetDetector*)> detector(ucsdet_open(&status),
                                                                                  ucsdet_close);
    if (U_FAILURE(status)) return possible;
    const std::string_view sample = bytes.substr(0, kSample);
    ucsdet_setText(detector.get(), sample.data(), static_cast<std::int32_t>(sample.size()), &status);
    std::int32_t found = 0;
    const UCharsetMatch** const matches = ucsdet_detectAll(detector.get(), &found, &status);
    for (std::int32_t index = 0; U_SUCCESS(status) && index < found; ++index) {
        const char* const name = ucsdet_getName(matches[index], &status);
        for (const std::string_view wide : {kUtf16Little, kUtf16Big})
            if (U_SUCCESS(status) && name == wide) possible.push_back(wide);
    }
    return possible;
}

char16_t UnitAt(std::string_view bytes, std::size_t at, bool big) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char16_t>(big ? first << 8 | second : second << 8 | first);
}

bool IsAsciiTextUnit(unsigned unit) {
    return (unit >= 0x20 && unit < 0x7F) || (unit >= '\t' && unit <= '\r');
}

// Whether what is taken for wide characters is rather pairs of ASCII ones, as in a list of names with NULs
// between.
bool LooksLikeAsciiPairs(std::string_view bytes, bool big) {
    std::size_t narrow = 0;
    std::size_t wide = 0;
    std::size_t pairs = 0;
    for (std::size_t at = 0; at + 1 < std::min(bytes.size(), kSample); at += 2) {
        const char16_t unit = UnitAt(bytes, at, big);
        ++(unit < 0x100 ? narrow : wide);
        if (IsAsciiTextUnit(unit >> 8) && ((unit & 0xFF) == 0 || IsAsciiTextUnit(unit & 0xFF))) ++pairs;
    }
    return pairs * 4 > wide * 3 && pairs >= narrow;
}

// Whole characters, none of them U+0000, and in the sample none that no text holds.
bool IsPlausibleUtf16(std::string_view bytes, bool big, const CancelCheck& check) {
    if (bytes.size() % 2 != 0) return false;
    PacedCheck pace(check, std::size_t{2} << 20);
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        pace.Count();
        UChar32 point = UnitAt(bytes, at, big);
        if (U16_IS_SURROGATE(point)) {
            if (!U16_IS_SURROGATE_LEAD(point) || at + 4 > bytes.size()) return false;
            at += 2;
            const UChar32 trail = UnitAt(bytes, at, big);
            if (!U16_IS_TRAIL(trail)) return false;
            point = U16_GET_SUPPLEMENTARY(point, trail);
        }
        if (point == 0) return false;
        const bool isControl = point < 0x20 && (point < '\t' || point > '\r') && point != 0x1B;
        if (at < kSample && (isControl || u_charType(point) == U_UNASSIGNED)) return false;
    }
    return true;
}

}  // namespace

const std::vector<std::string_view>& OfferedEncodings() {
    static const std::vector<std::string_view> offered = {
        kUtf8,          kUtf16Little,   kUtf16Big,      kWestern,       "windows-1250", "windows-1251",
        "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257", "windows-1258",
        "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-5",   "ISO-8859-7",   "ISO-8859-9",   "ISO-8859-15",
        "KOI8-R",       "IBM437",       "IBM850",       "macintosh",    "Shift_JIS",    "EUC-JP",
        "GB18030",      "Big5",         "EUC-KR"};
    return offered;
}

std::string KnownEncoding(std::string_view name) {
    // Options behind a comma, which ICU would take, are no names.
    const auto isOfNames = [](char letter) {
        return (letter >= '0' && letter <= '9') || ((letter | 0x20) >= 'a' && (letter | 0x20) <= 'z') ||
               letter == '-' || letter == '_' || letter == '.' || letter == ':';
    };
    if (!std::all_of(name.begin(), name.end(), isOfNames)) return {};
    const std::string wanted(name);
    for (const std::string_view offered : OfferedEncodings())
        if (ucnv_compareNames(std::string(offered).c_str(), wanted.c_str()) == 0) return std::string(offered);
    const Converter converter = OpenConverter(wanted);
    if (converter == nullptr) return {};
    UErrorCode status = U_ZERO_ERROR;
    const char* const known = ucnv_getName(converter.get(), &status);
    return U_SUCCESS(status) && known != nullptr ? known : std::string();
}

void ByteScan::Add(std::string_view piece) {
    if (piece.empty()) return;
    hasNul = hasNul || std::memchr(piece.data(), 0, piece.size()) != nullptr;
    hasCarriageReturn = hasCarriageReturn || std::memchr(piece.data(), '\r', piece.size()) != nullptr;
    if (!hasHighBytes) {
        unsigned char all = 0;
        for (const char letter : piece) all |= static_cast<unsigned char>(letter);
        hasHighBytes = all >= 0x80;
    }
    lineFeeds += static_cast<std::uint64_t>(std::count(piece.begin(), piece.end(), '\n'));
}

std::size_t MarkLengthOf(std::string_view bytes, std::string_view encoding) {
    using namespace std::string_view_literals;
    std::string_view mark;
    if (encoding == kUtf8) mark = kByteOrderMark;
    if (encoding == kUtf16Little) mark = "\xFF\xFE"sv;
    if (encoding == kUtf16Big) mark = "\xFE\xFF"sv;
    return bytes.starts_with(mark) ? mark.size() : 0;
}

EncodingGuess GuessEncoding(std::string_view bytes, const ByteScan& scan, const CancelCheck& check) {
    for (const std::string_view encoding : {kUtf16Little, kUtf16Big}) {
        const std::size_t mark = MarkLengthOf(bytes, encoding);
        if (mark != 0 && IsPlausibleUtf16(bytes.substr(mark), encoding == kUtf16Big, check))
            return {std::string(encoding), mark, false};
    }
    const std::size_t mark = MarkLengthOf(bytes, kUtf8);
    if (scan.hasNul) {
        for (const std::string_view encoding :
             mark != 0 ? std::vector<std::string_view>() : DetectorsUtf16(bytes)) {
            const bool big = encoding == kUtf16Big;
            if (!LooksLikeAsciiPairs(bytes, big) && IsPlausibleUtf16(bytes, big, check))
                return {std::string(encoding), 0, false};
        }
        return {std::string(kUtf8), 0, true};
    }
    if (mark != 0 || !scan.hasHighBytes || IsValidUtf8(bytes, check))
        return {std::string(kUtf8), mark, false};
    return {std::string(kWestern), 0, false};
}

std::string DecodeToUtf8(std::string_view bytes, const std::string& encoding, const CancelCheck& check) {
    if (encoding == kUtf8) return std::string(bytes);
    const Converter from = OpenConverter(encoding);
    const Converter to = OpenConverter(std::string(kUtf8));
    if (from == nullptr || to == nullptr)
        throw ErrorException(
            Error(ErrorNumber::InvalidPropertyValue, "The encoding '" + encoding + "' is not known"));
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    std::vector<char> decoded(kDecodedPiece);
    std::vector<UChar> pivot(kSample);
    UChar* pivotSource = pivot.data();
    UChar* pivotTarget = pivot.data();
    const char* source = bytes.data();
    const char* const end = bytes.data() + bytes.size();
    bool first = true;
    while (true) {
        const char* const pieceEnd = source + std::min(kDecodedPiece, static_cast<std::size_t>(end - source));
        const bool last = pieceEnd == end;
        char* target = decoded.data();
        UErrorCode status = U_ZERO_ERROR;
        ucnv_convertEx(to.get(), from.get(), &target, target + decoded.size(), &source, pieceEnd,
                       pivot.data(), &pivotSource, &pivotTarget, pivot.data() + pivot.size(),
                       static_cast<UBool>(first ? 1 : 0), static_cast<UBool>(last ? 1 : 0), &status);
        first = false;
        text.append(decoded.data(), static_cast<std::size_t>(target - decoded.data()));
        if (check) check();
        if (status == U_BUFFER_OVERFLOW_ERROR) continue;
        if (U_FAILURE(status))
            throw ErrorException(
                Error(ErrorNumber::InvalidPropertyValue, "The text cannot be decoded from " + encoding));
        if (last) return text;
    }
}

bool IsValidUtf8(std::string_view bytes, const CancelCheck& check) {
    PacedCheck pace(check, std::size_t{4} << 20);
    constexpr std::uint64_t kHighBits = 0x8080'8080'8080'8080;
    const auto size = static_cast<std::int64_t>(bytes.size());
    for (std::int64_t at = 0; at < size;) {
        const std::int64_t before = at;
        std::uint64_t eight = 0;
        while (size - at >= 8) {
            std::memcpy(&eight, bytes.data() + at, sizeof eight);
            if ((eight & kHighBits) != 0 || at - before > std::int64_t{1} << 20) break;
            at += 8;
        }
        UChar32 point = 0;
        for (std::int64_t stop = std::min(size, at + 8); at < stop && point >= 0;)
            U8_NEXT(bytes.data(), at, size, point);
        if (point < 0) return false;
        pace.Count(static_cast<std::size_t>(at - before));
    }
    return true;
}

}  // namespace vantrel
