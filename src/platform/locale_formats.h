#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/currency.h"
#include "platform/file_time.h"

namespace vantrel {

// How this user's system writes numbers and dates. Made once; making texts of a million rows is cheap.
class LocaleFormats {
  public:
    // The locale of the environment (LC_ALL, LC_NUMERIC, LC_TIME, LANG), or the one named, as in "de_DE".
    explicit LocaleFormats(std::string_view localeName = {});
    ~LocaleFormats();
    LocaleFormats(const LocaleFormats&) = delete;
    LocaleFormats& operator=(const LocaleFormats&) = delete;

    // A whole number with group separators and no decimals.
    std::string Number(Currency value) const;
    // Date and time of a local file time, in the default short form with seconds.
    std::string DateTime(FileTime local) const;
    // The date alone, in the same form that DateTime begins or ends with.
    std::string Date(FileTime local) const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel
