#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

#include "core/result_row.h"
#include "platform/locale/locale_formats.h"
#include "views/pane_list.h"

namespace vantrel {

// With the numbers of their texts in the Select Wizard.
enum class SizeOperator : std::uint8_t { Equals = 0, IsLessThan = 1, IsGreaterThan = 2 };
enum class DateOperator : std::uint8_t { IsOn = 0, IsBefore = 1, IsAfter = 2 };

// A calendar day, counted from 1601-01-01, which is 0.
using CalendarDay = std::int64_t;
CalendarDay DayOf(FileTime local);

// What the Select Wizard selects rows by. As it is made every object matches.
struct SelectCriteria {
    std::bitset<kResultTypeCount + 1> types;      // by the number of the result type; none means all
    std::string patterns = "*";                   // separated by commas; empty means all
    bool select = true;                           // false: the rows that match are deselected
    Currency byteSize = Currency::FromWhole(-1);  // a size criterion where it is above -1
    SizeOperator sizeOperator = SizeOperator::IsGreaterThan;
    std::optional<CalendarDay> date;
    DateOperator dateOperator = DateOperator::IsBefore;
    // "Is before" the day after this one is no date criterion.
    CalendarDay today = 0;
};

// What has no size, or no date, never matches.
bool FileMatchesSizeCriteria(std::optional<Currency> size, Currency criterion, SizeOperator by);
bool FileMatchesDateCriteria(std::optional<CalendarDay> date, CalendarDay criterion, DateOperator by);

// Selects the real rows that match all criteria, and no others; or deselects those that match and leaves the
// others as they are. Patterns are held against the text of a row, which begins with the folder marker for a
// folder; a pattern may write that as "/". One that does not begin with it fits files alone: "*.txt" takes no
// folder, and "\*" takes them all. A folder has no date.
void SelectFileTypesInList(PaneList& list, const SelectCriteria& criteria);

// The value of a number of bytes as a person types it, or as `locale` writes it: with or without group
// separators. It is rounded to a whole number. Nothing for any other text.
std::optional<Currency> SizeFromText(std::string_view text, const LocaleFormats& locale);

}  // namespace vantrel
