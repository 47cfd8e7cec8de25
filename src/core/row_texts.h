#pragma once

#include <string>

#include "core/result_row.h"
#include "platform/locale/locale_formats.h"

namespace vantrel {

// The texts of columns 2 and 3 of a row, made from its values. Empty for placeholder and sentinel; folders
// have no date.
std::string SizeText(const ResultRow& row, const LocaleFormats& locale);
std::string DateText(const ResultRow& row, const LocaleFormats& locale);

// Full path of the object of a row: the folder of that side plus the real name.
std::string ObjectPath(std::string_view folder, const ResultRow& row);

// For the tool tip of a row of the kind Unknown: what is in the way, and what follows. Empty for any other.
std::string WhyUnknown(const ResultRow& row);
// The same for a row that is left alone since it lies elsewhere as well.
std::string WhyLeftAlone(const ResultRow& row);

}  // namespace vantrel
