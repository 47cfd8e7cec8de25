#include "views/select_criteria.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <vector>

#include "platform/locale/numeric_text.h"
#include "platform/names/like_pattern.h"

namespace vantrel {
namespace {

constexpr std::int64_t kTicksPerDay = std::int64_t{86'400} * FileTime::kTicksPerSecond;

// Both kinds of operators have "equal", "less" and "greater" under the same numbers.
template <typename Operator>
bool Holds(std::strong_ordering order, Operator by) {
    switch (static_cast<int>(by)) {
        case 0:
            return order == 0;
        case 1:
            return order < 0;
        default:
            return order > 0;
    }
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// One of the patterns. Its stars do not reach over the folder marker: only one that begins with the marker
// itself fits a folder, and "*", which means all.
struct RowPattern {
    LikePattern pattern;
    bool fitsFolders;
};

std::vector<RowPattern> PatternsOf(std::string_view patterns) {
    std::vector<RowPattern> all;
    for (bool more = true; more;) {
        const std::size_t comma = patterns.find(',');
        more = comma != std::string_view::npos;
        std::string pattern(Trimmed(patterns.substr(0, comma)));
        if (pattern.starts_with('/')) pattern.front() = kFolderMarker;
        all.push_back({LikePattern(pattern), pattern == "*" || pattern.starts_with(kFolderMarker)});
        if (more) patterns.remove_prefix(comma + 1);
    }
    return all;
}

// The criteria made ready for a great many rows.
class RowTest {
  public:
    explicit RowTest(const SelectCriteria& criteria)
        : criteria_(criteria),
          types_(criteria.types.none() ? ~criteria.types : criteria.types),
          bySize_(criteria.byteSize > Currency::FromWhole(-1)),
          byDate_(criteria.date && !(criteria.dateOperator == DateOperator::IsBefore &&
                                     *criteria.date == criteria.today + 1)) {
        types_[0] = false;
        if (!criteria.patterns.empty() && criteria.patterns != "*") patterns_ = PatternsOf(criteria.patterns);
    }

    // What costs least is looked at first.
    bool operator()(const ResultRow& row) const {
        return types_[static_cast<std::size_t>(row.type)] &&
               (!bySize_ || FileMatchesSizeCriteria(row.size, criteria_.byteSize, criteria_.sizeOperator)) &&
               (!byDate_ || FileMatchesDateCriteria(DateOf(row), *criteria_.date, criteria_.dateOperator)) &&
               (patterns_.empty() || FitsAPattern(row));
    }

  private:
    static std::optional<CalendarDay> DateOf(const ResultRow& row) {
        if (row.kind != RowKind::File) return std::nullopt;
        return DayOf(FileTimeToLocalFileTime(row.lastWrite));
    }
    bool FitsAPattern(const ResultRow& row) const {
        const bool isFolder = row.text.starts_with(kFolderMarker);
        return std::any_of(patterns_.begin(), patterns_.end(), [&](const RowPattern& one) {
            return (one.fitsFolders || !isFolder) && one.pattern.Matches(row.text);
        });
    }

    const SelectCriteria& criteria_;
    std::bitset<kResultTypeCount + 1> types_;
    bool bySize_, byDate_;
    std::vector<RowPattern> patterns_;  // none: every name fits
};

// A part of `text` becomes another one, wherever it stands.
void ReplaceAll(std::string& text, std::string_view part, std::string_view by) {
    if (part.empty()) return;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
}

// The digits of the locale become those of ASCII.
void TranslateDigits(std::string& text, const LocaleFormats& locale) {
    for (int digit = 0; digit < 10; ++digit)
        ReplaceAll(text, locale.Number(Currency::FromWhole(digit)),
                   std::string(1, static_cast<char>('0' + digit)));
}

// What the locale writes between groups of digits; `one` is its text of 1.
std::string GroupSeparator(const LocaleFormats& locale, const std::string& one) {
    const std::string ones = locale.Number(Currency::FromWhole(1'111'111));
    std::size_t at = 0;
    while (ones.compare(at, one.size(), one) == 0) at += one.size();
    return ones.substr(std::min(at, ones.size()), ones.find(one, at) - at);
}

}  // namespace

CalendarDay DayOf(FileTime local) {
    const std::int64_t day = local.ticks / kTicksPerDay;
    return local.ticks % kTicksPerDay < 0 ? day - 1 : day;
}

bool FileMatchesSizeCriteria(std::optional<Currency> size, Currency criterion, SizeOperator by) {
    return size && Holds(*size <=> criterion, by);
}

bool FileMatchesDateCriteria(std::optional<CalendarDay> date, CalendarDay criterion, DateOperator by) {
    return date && Holds(*date <=> criterion, by);
}

void SelectFileTypesInList(PaneList& list, const SelectCriteria& criteria) {
    const RowTest test(criteria);
    if (criteria.select) list.DeselectAll();
    list.SetSelectedWhere(test, criteria.select);
}

std::optional<Currency> SizeFromText(std::string_view text, const LocaleFormats& locale) {
    // What the locale puts around and between digits is seen in numbers that it writes.
    const std::string minus = locale.Number(Currency::FromWhole(-1));
    const std::string one = locale.Number(Currency::FromWhole(1));
    const std::size_t at = minus.find(one);
    std::string digits(Trimmed(text));
    bool negative = false;
    if (at != std::string::npos) {
        const std::string before = minus.substr(0, at), behind = minus.substr(at + one.size());
        negative = digits.size() > before.size() + behind.size() && digits.starts_with(before) &&
                   digits.ends_with(behind);
        if (negative) digits = digits.substr(before.size(), digits.size() - before.size() - behind.size());
    }
    TranslateDigits(digits, locale);
    ReplaceAll(digits, GroupSeparator(locale, one), {});
    // Blanks between groups, of the three widths that are in use.
    for (const std::string_view blank : {" ", "\u00A0", "\u202F"}) ReplaceAll(digits, blank, {});
    const std::optional<double> value = NumericValue(digits);
    if (!value || !std::isfinite(*value) || (negative && *value < 0)) return std::nullopt;
    constexpr double kMost = 900e12;  // well within the range of a Currency
    const double whole = std::round(std::clamp(negative ? -*value : *value, -kMost, kMost));
    return Currency::FromWhole(static_cast<std::int64_t>(whole));
}

}  // namespace vantrel
