#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/currency.h"
#include "platform/locale/file_time.h"

namespace vantrel {

// How this user's system writes numbers and dates. Made once; making texts of a million rows is cheap.
class LocaleFormats {
  public:
    // The locale of the environment (LC_ALL, LC_NUMERIC, LC_TIME, LANG), or the one named, as in "de_DE". The
    // locales "C" and "POSIX", and no locale at all, give "1,234,567" and "2020-09-13 12:26:40".
    explicit LocaleFormats(std::string_view localeName = {});
    ~LocaleFormats();
    LocaleFormats(const LocaleFormats&) = delete;
    LocaleFormats& operator=(const LocaleFormats&) = delete;

    // A whole number with group separators and no decimals.
    std::string Number(Currency value) const;
    // The same texts, added to the end of `to`; the cheap form for many rows.
    void AppendNumber(Currency value, std::string& to) const;
    void AppendDateTime(FileTime local, std::string& to) const;
    // ConvertBytesToCorrectByteTypeString with the digits and the decimal sign of the locale.
    std::string ByteSize(Currency size) const;
    // Date and time of a local file time, in the default short form with seconds and all digits of the year:
    // the date, a blank, the time.
    std::string DateTime(FileTime local) const;
    // The date alone, as DateTime begins.
    std::string Date(FileTime local) const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel
