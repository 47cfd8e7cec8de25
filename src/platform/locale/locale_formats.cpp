#include "platform/locale/locale_formats.h"

#include <unicode/decimfmt.h>
#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <optional>
#include <vector>

#include "platform/names/paths.h"

namespace vantrel {

namespace {

// Nothing for the locale without a country: its forms are the program's own.
using LocaleChoice = std::optional<icu::Locale>;

LocaleChoice ChooseLocale(std::string_view named, const char* category) {
    std::string name(named);
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        if (!name.empty()) break;
        const char* value = std::getenv(variable);
        if (value != nullptr) name = value;
    }
    const std::string_view language = std::string_view(name).substr(0, name.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX") return std::nullopt;
    const icu::Locale locale = icu::Locale::createCanonical(name.c_str());
    if (locale.isBogus() || *locale.getLanguage() == '\0') return std::nullopt;
    return locale;
}

std::string ToUtf8(const icu::UnicodeString& text) {
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

using Digits = std::array<std::string, 10>;

Digits AsciiDigits() {
    Digits digits;
    for (std::size_t i = 0; i < digits.size(); ++i) digits[i] = std::string(1, static_cast<char>('0' + i));
    return digits;
}

Digits DigitsOf(const icu::DecimalFormat& format) {
    const UChar32 zero = format.getDecimalFormatSymbols()
                             ->getConstSymbol(icu::DecimalFormatSymbols::kZeroDigitSymbol)
                             .char32At(0);
    Digits digits;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        digits[i] = ToUtf8(icu::UnicodeString(zero + static_cast<UChar32>(i)));
    }
    return digits;
}

void AppendDigits(std::uint64_t value, std::size_t least, const Digits& digits, std::string& to) {
    char units[20] = {};
    const auto end = std::to_chars(units, units + sizeof units, value).ptr;
    for (auto length = static_cast<std::size_t>(end - units); length < least; ++length) to += digits[0];
    for (const char* at = units; at != end; ++at) to += digits[static_cast<std::size_t>(*at - '0')];
}

// How whole numbers are grouped, asked of the locale's own formatter once.
struct NumberForm {
    std::string separator = ",";
    std::string decimalSign = ".";
    std::string minus = "-", behindMinus;
    std::size_t primary = 3;      // digits in the last group; 0: no groups
    std::size_t secondary = 3;    // digits in the others
    std::size_t leastDigits = 4;  // below this many there is no group
    Digits digits = AsciiDigits();

    static NumberForm Of(const LocaleChoice& locale);
    void Append(std::int64_t value, std::string& to) const;
};

NumberForm NumberForm::Of(const LocaleChoice& locale) {
    NumberForm form;
    if (!locale) return form;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> made(icu::NumberFormat::createInstance(*locale, status));
    const auto* format = dynamic_cast<const icu::DecimalFormat*>(made.get());
    if (U_FAILURE(status) || format == nullptr) return form;

    icu::UnicodeString text;
    form.minus = ToUtf8(format->getNegativePrefix(text));
    form.behindMinus = ToUtf8(format->getNegativeSuffix(text));
    form.separator = ToUtf8(format->getDecimalFormatSymbols()->getConstSymbol(
        icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
    form.decimalSign = ToUtf8(format->getDecimalFormatSymbols()->getConstSymbol(
        icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
    form.digits = DigitsOf(*format);
    form.primary =
        format->isGroupingUsed() ? static_cast<std::size_t>(std::max(format->getGroupingSize(), 0)) : 0;
    const std::int32_t secondary = format->getSecondaryGroupingSize();
    form.secondary = secondary > 0 ? static_cast<std::size_t>(secondary) : form.primary;
    // Some locales group from five digits on only, which this formatter tells by doing it.
    const icu::UnicodeString probe =
        icu::number::NumberFormatter::withLocale(*locale).formatInt(1'234, status).toString(status);
    const bool fourAreGrouped = ToUtf8(probe).find(form.separator) != std::string::npos;
    form.leastDigits = form.primary + (fourAreGrouped ? 1 : 2);
    return form;
}

void NumberForm::Append(std::int64_t value, std::string& to) const {
    char units[20] = {};
    const std::uint64_t magnitude =
        value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    const auto end = std::to_chars(units, units + sizeof units, magnitude).ptr;
    auto left = static_cast<std::size_t>(end - units);
    const bool grouped = primary > 0 && left >= leastDigits;
    if (value < 0) to += minus;
    for (const char* at = units; at != end; ++at) {
        to += digits[static_cast<std::size_t>(*at - '0')];
        --left;
        if (grouped && left >= primary && (left - primary) % secondary == 0) to += separator;
    }
    if (value < 0) to += behindMinus;
}

// A date pattern taken apart once. Patterns with anything but plain numbers of the Gregorian calendar and the
// two halves of the day are left to the library, which takes a hundred times as long.
class DateForm {
  public:
    DateForm(const icu::UnicodeString& pattern, const LocaleChoice& locale);
    void Append(const CalendarTime& time, FileTime local, std::string& to) const;

  private:
    struct Piece {
        char16_t field = 0;  // 0: literal
        std::size_t width = 0;
        std::string literal;
    };
    bool Compile(const icu::UnicodeString& pattern);
    void AppendPiece(const Piece& piece, const CalendarTime& time, std::string& to) const;

    std::vector<Piece> pieces_;
    Digits digits_ = AsciiDigits();
    std::array<std::string, 2> dayHalves_;
    std::unique_ptr<icu::SimpleDateFormat> library_;
};

DateForm::DateForm(const icu::UnicodeString& pattern, const LocaleChoice& locale) {
    if (!locale) {
        Compile(pattern);
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    auto library = std::make_unique<icu::SimpleDateFormat>(pattern, *locale, status);
    if (U_FAILURE(status)) {
        Compile(u"yyyy-MM-dd HH:mm:ss");
        return;
    }
    const icu::DateFormatSymbols* symbols = library->getDateFormatSymbols();
    std::int32_t halves = 0;
    const icu::UnicodeString* names = symbols->getAmPmStrings(halves);
    for (std::size_t i = 0; i < dayHalves_.size() && halves == 2; ++i) dayHalves_[i] = ToUtf8(names[i]);
    if (const auto* numbers = dynamic_cast<const icu::DecimalFormat*>(library->getNumberFormat())) {
        digits_ = DigitsOf(*numbers);
    }
    const bool gregorian = dynamic_cast<const icu::GregorianCalendar*>(library->getCalendar()) != nullptr &&
                           std::string_view(library->getCalendar()->getType()) == "gregorian";
    if (gregorian && Compile(pattern)) return;

    library->adoptTimeZone(icu::TimeZone::getGMT()->clone());
    if (auto* calendar =
            dynamic_cast<icu::GregorianCalendar*>(const_cast<icu::Calendar*>(library->getCalendar()))) {
        calendar->setGregorianChange(-std::numeric_limits<double>::max(), status);
    }
    library_ = std::move(library);
}

bool DateForm::Compile(const icu::UnicodeString& pattern) {
    pieces_.clear();
    const auto addLiteral = [this](char16_t unit) {
        if (pieces_.empty() || pieces_.back().field != 0) pieces_.emplace_back();
        icu::UnicodeString(unit).toUTF8String(pieces_.back().literal);
    };
    bool quoted = false;
    for (std::int32_t at = 0; at < pattern.length(); ++at) {
        const char16_t unit = pattern[at];
        if (unit == u'\'') {
            if (at + 1 < pattern.length() && pattern[at + 1] == u'\'') {
                addLiteral(pattern[++at]);
            } else {
                quoted = !quoted;
            }
            continue;
        }
        const bool isField = !quoted && ((unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'));
        if (!isField) {
            if (U16_IS_SURROGATE(unit)) return false;
            addLiteral(unit);
        } else if (!pieces_.empty() && pieces_.back().field == unit) {
            ++pieces_.back().width;
        } else {
            pieces_.push_back({unit, 1, {}});
        }
    }
    for (const Piece& piece : pieces_) {
        static constexpr std::u16string_view kFields = u"yMdHhKkmsa";
        if (piece.field == 0 || (piece.field == u'y' && piece.width == 4)) continue;
        if (kFields.find(piece.field) == std::u16string_view::npos || piece.width > 2) return false;
    }
    return true;
}

void DateForm::AppendPiece(const Piece& piece, const CalendarTime& time, std::string& to) const {
    std::int32_t value = 0;
    switch (piece.field) {
        case 0:
            to += piece.literal;
            return;
        case u'a':
            to += dayHalves_[time.hour < 12 ? 0 : 1];
            return;
        case u'y':
            value = piece.width == 2 ? time.year % 100 : time.year;
            break;
        case u'M':
            value = time.month;
            break;
        case u'd':
            value = time.day;
            break;
        case u'H':
            value = time.hour;
            break;
        case u'k':
            value = time.hour == 0 ? 24 : time.hour;
            break;
        case u'K':
            value = time.hour % 12;
            break;
        case u'h':
            value = time.hour % 12 == 0 ? 12 : time.hour % 12;
            break;
        case u'm':
            value = time.minute;
            break;
        default:
            value = time.second;
            break;
    }
    if (value < 0) to.push_back('-');
    AppendDigits(static_cast<std::uint64_t>(value < 0 ? -value : value), piece.width, digits_, to);
}

void DateForm::Append(const CalendarTime& time, FileTime local, std::string& to) const {
    if (!library_) {
        for (const Piece& piece : pieces_) AppendPiece(piece, time, to);
        return;
    }
    std::int64_t seconds = 0;
    std::uint32_t nanoseconds = 0;
    local.ToUnix(seconds, nanoseconds);
    icu::UnicodeString text;
    library_->format(static_cast<UDate>(seconds) * 1'000, text);
    text.toUTF8String(to);
}

struct DatePatterns {
    icu::UnicodeString date = u"yyyy-MM-dd";
    icu::UnicodeString time = u"HH:mm:ss";

    static DatePatterns Of(const LocaleChoice& locale) {
        DatePatterns patterns;
        if (!locale) return patterns;
        UErrorCode status = U_ZERO_ERROR;
        const std::unique_ptr<icu::DateTimePatternGenerator> generator(
            icu::DateTimePatternGenerator::createInstance(*locale, status));
        if (U_FAILURE(status)) return patterns;
        icu::UnicodeString date = generator->getBestPattern(u"yMd", status);
        icu::UnicodeString time = generator->getBestPattern(u"jms", status);
        if (U_FAILURE(status)) return patterns;
        // A narrow blank that many fonts lack.
        time.findAndReplace(icu::UnicodeString(u'\u202F'), icu::UnicodeString(u' '));
        return {date, time};
    }
};

}  // namespace

struct LocaleFormats::Parts {
    NumberForm number;
    DateForm date, dateTime;
};

LocaleFormats::LocaleFormats(std::string_view localeName) {
    const LocaleChoice forTime = ChooseLocale(localeName, "LC_TIME");
    const DatePatterns patterns = DatePatterns::Of(forTime);
    parts_.reset(new Parts{NumberForm::Of(ChooseLocale(localeName, "LC_NUMERIC")),
                           DateForm(patterns.date, forTime),
                           DateForm(patterns.date + u" " + patterns.time, forTime)});
}

LocaleFormats::~LocaleFormats() = default;

void LocaleFormats::AppendNumber(Currency value, std::string& to) const {
    parts_->number.Append(value.Whole(), to);
}

void LocaleFormats::AppendDateTime(FileTime local, std::string& to) const {
    parts_->dateTime.Append(ToCalendar(local), local, to);
}

std::string LocaleFormats::Number(Currency value) const {
    std::string text;
    AppendNumber(value, text);
    return text;
}

std::string LocaleFormats::ByteSize(Currency size) const {
    std::string text;
    for (const char each : ConvertBytesToCorrectByteTypeString(size)) {
        if (each == '.')
            text += parts_->number.decimalSign;
        else if (each >= '0' && each <= '9')
            text += parts_->number.digits[static_cast<std::size_t>(each - '0')];
        else
            text += each;
    }
    return text;
}

std::string LocaleFormats::DateTime(FileTime local) const {
    std::string text;
    AppendDateTime(local, text);
    return text;
}

std::string LocaleFormats::Date(FileTime local) const {
    std::string text;
    parts_->date.Append(ToCalendar(local), local, text);
    return text;
}

}  // namespace vantrel
