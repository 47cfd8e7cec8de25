#include "platform/locale/locale_formats.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {
namespace {

const FileTime kMoment = FileTime::FromUnix(1'600'000'000, 0);  // 2020-09-13 12:26:40
const FileTime kEarly = FileTime::FromUnix(1'583'107'505, 0);   // 2020-03-02 00:05:05

std::string Number(const LocaleFormats& locale, std::int64_t value) {
    return locale.Number(Currency::FromWhole(value));
}

TEST(LocaleFormatsTest, WithoutACountry) {
    for (const char* name : {"C", "POSIX", "C.UTF-8"}) {
        const LocaleFormats locale(name);
        EXPECT_EQ(locale.DateTime(kMoment), "2020-09-13 12:26:40");
        EXPECT_EQ(locale.Date(kEarly), "2020-03-02");
        EXPECT_EQ(Number(locale, 0), "0");
        EXPECT_EQ(Number(locale, 999), "999");
        EXPECT_EQ(Number(locale, 1'000), "1,000");
        EXPECT_EQ(Number(locale, -1'234'567), "-1,234,567");
        EXPECT_EQ(locale.Number(Currency::FromRaw(std::numeric_limits<std::int64_t>::max())),
                  "922,337,203,685,477");
        EXPECT_EQ(locale.DateTime(FileTime::FromUnix(-62'167'219'201, 0)), "-0001-12-31 23:59:59");
    }
}

TEST(LocaleFormatsTest, AsCountriesWriteThem) {
    struct Case {
        const char* name;
        const char* moment;
        const char* early;
        const char* number;
        const char* thousand;
    };
    for (const Case& each : {
             Case{"en_US.UTF-8", "9/13/2020 12:26:40 PM", "3/2/2020 12:05:05 AM", "1,234,567", "1,234"},
             Case{"en_GB", "13/09/2020 12:26:40", "02/03/2020 00:05:05", "1,234,567", "1,234"},
             Case{"de_DE@euro", "13.9.2020 12:26:40", "2.3.2020 00:05:05", "1.234.567", "1.234"},
             Case{"es_ES", "13/9/2020 12:26:40", "2/3/2020 0:05:05", "1.234.567", "1234"},
             Case{"en_IN", "13/9/2020 12:26:40 pm", "2/3/2020 12:05:05 am", "12,34,567", "1,234"},
         }) {
        const LocaleFormats locale(each.name);
        EXPECT_EQ(locale.DateTime(kMoment), each.moment) << each.name;
        EXPECT_EQ(locale.DateTime(kEarly), each.early) << each.name;
        EXPECT_TRUE(std::string(each.early).starts_with(locale.Date(kEarly))) << each.name;
        EXPECT_EQ(Number(locale, 1'234'567), each.number) << each.name;
        EXPECT_EQ(Number(locale, 1'234), each.thousand) << each.name;
    }
}

TEST(LocaleFormatsTest, OtherCalendarsAndDigits) {
    EXPECT_NE(LocaleFormats("th_TH").DateTime(kMoment).find("2563"), std::string::npos);
    EXPECT_NE(LocaleFormats("fa_IR").DateTime(kMoment).find("\u06F1\u06F3\u06F9\u06F9"), std::string::npos);
    EXPECT_EQ(Number(LocaleFormats("ne_NP"), 12), "\u0967\u0968");
    EXPECT_FALSE(LocaleFormats("xx_YY.nonsense").DateTime(kMoment).empty());
}

TEST(LocaleFormatsTest, TakesTheEnvironmentByCategory) {
    std::vector<std::pair<const char*, std::string>> saved;
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        saved.emplace_back(variable, value != nullptr ? value : "");
        unsetenv(variable);
    }
    setenv("LANG", "en_US.UTF-8", 1);
    setenv("LC_NUMERIC", "de_DE.UTF-8", 1);
    setenv("LC_TIME", "C", 1);
    const LocaleFormats locale;
    for (const auto& [variable, value] : saved) setenv(variable, value.c_str(), 1);
    EXPECT_EQ(Number(locale, 1'234), "1.234");
    EXPECT_EQ(locale.ByteSize(Currency::FromWhole(1'270'874)), "1,21 MB");
    EXPECT_EQ(locale.DateTime(kMoment), "2020-09-13 12:26:40");
}

}  // namespace
}  // namespace vantrel
