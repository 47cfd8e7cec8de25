#include "views/select_criteria.h"

#include <gmock/gmock.h>

#include <regex.h>
#include <cstdlib>
#include <set>

#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::PanesStage;
using enum ResultType;

constexpr std::int64_t kDay = 86'400;
constexpr std::int64_t kSomeMidnight = 1'600'041'600;  // 2020-09-14 00:00 UTC

// A zone in which a day does not begin with that of UTC.
class InZone {
  public:
    explicit InZone(const char* zone) {
        if (const char* const now = std::getenv("TZ")) before_ = now;
        Set(zone);
    }
    ~InZone() { Set(before_.c_str()); }
    InZone(const InZone&) = delete;
    InZone& operator=(const InZone&) = delete;

  private:
    static void Set(const char* zone) {
        setenv("TZ", zone, 1);
        ReloadLocalZone();
    }
    std::string before_;
};

void AddRow(HoldLists& hold, const std::string& name, ResultType type, std::int64_t size, FileTime time) {
    ResultRow row;
    const bool folder = type >= IdenticalFolder;
    const std::string text = folder ? kFolderMarker + name : name;
    row.text = text;
    row.realName = name;
    row.type = type;
    row.kind = folder ? RowKind::Folder : RowKind::File;
    row.size = Currency::FromWhole(size);
    row.lastWrite = time;
    hold[Side::Left].AddCopy(row);
    if (type == Orphan || type == OrphanFolder) {
        hold[Side::Right].AddPlaceholder();
        return;
    }
    if (type == Newer || type == Older) row.type = type == Newer ? Older : Newer;
    hold[Side::Right].AddCopy(row);
}

bool Fits(const std::string& text, const std::string& expression) {
    regex_t compiled;
    if (regcomp(&compiled, ("^(" + expression + ")$").c_str(), REG_EXTENDED | REG_ICASE | REG_NOSUB) != 0)
        throw std::invalid_argument(expression);
    const bool fits = regexec(&compiled, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&compiled);
    return fits;
}

// The same question asked of texts: the date as "2020-09-14", the pattern as a regular expression, the types
// by their names.
struct Question {
    std::set<std::string> types;
    std::vector<std::string> expressions;
    std::optional<long> size;
    char sizeSign = '=';
    std::string date;
    char dateSign = '=';

    static bool Stands(int order, char sign) {
        return sign == '=' ? order == 0 : sign == '<' ? order < 0 : order > 0;
    }
    static std::string DateOf(const ResultRow& row, const LocaleFormats& locale) {
        return locale.Date(FileTimeToLocalFileTime(row.lastWrite));
    }
    bool Takes(const ResultRow& row, const LocaleFormats& locale) const {
        if (!row.IsReal()) return false;
        if (!types.empty() && !types.contains(std::string(ResultTypeText(row.type)))) return false;
        const long bytes = row.size.Whole();
        if (size && !Stands(bytes < *size ? -1 : bytes > *size, sizeSign)) return false;
        if (!date.empty() &&
            (row.text.starts_with('\\') || !Stands(DateOf(row, locale).compare(date), dateSign)))
            return false;
        return expressions.empty() ||
               std::any_of(expressions.begin(), expressions.end(), [&row](const std::string& expression) {
                   return Fits(std::string(row.text), expression);
               });
    }
};

struct NamedPattern {
    const char* pattern;
    const char* expression;
};
constexpr NamedPattern kPatterns[] = {{"*.txt", R"([^\\].*\.txt)"},
                                      {"a*", "a.*"},
                                      {R"(\*)", R"(\\.*)"},
                                      {"/b*", R"(\\b.*)"},
                                      {"*#?.jp[ge]", R"([^\\].*[0-9].\.jp[ge])"},
                                      {"*[!0-4].*", R"([^\\].*[^0-4]\..*)"},
                                      {"b1?.txt", R"(b1.\.txt)"}};

// One random question in both forms.
void Ask(std::mt19937& random, SelectCriteria& criteria, Question& question, const LocaleFormats& locale) {
    constexpr std::array kSigns{'=', '<', '>'};
    if (random() % 2 == 0)
        for (std::size_t type = 1; type <= kResultTypeCount; ++type)
            if (random() % 3 == 0) {
                criteria.types.set(type);
                question.types.insert(std::string(ResultTypeText(static_cast<ResultType>(type))));
            }
    if (random() % 2 == 0) {
        criteria.patterns.clear();
        for (std::size_t left = random() % 3; left > 0; --left) {
            const NamedPattern& named = kPatterns[random() % std::size(kPatterns)];
            criteria.patterns += (criteria.patterns.empty() ? " " : " , ") + std::string(named.pattern);
            question.expressions.emplace_back(named.expression);
        }
    }
    if (random() % 3 == 0) {
        const unsigned sign = random() % 3;
        question.size = static_cast<long>(random() % 8);
        question.sizeSign = kSigns[sign];
        criteria.byteSize = Currency::FromWhole(*question.size);
        criteria.sizeOperator = static_cast<SizeOperator>(sign);
    }
    if (random() % 3 == 0) {
        const unsigned sign = random() % 3;
        const FileTime day =
            FileTime::FromUnix(kSomeMidnight + kDay * static_cast<std::int64_t>(random() % 6), 0);
        question.dateSign = kSigns[sign];
        question.date = locale.Date(day);
        criteria.date = DayOf(day);
        criteria.dateOperator = static_cast<DateOperator>(sign);
    }
    criteria.select = random() % 2 == 0;
}

TEST(SelectCriteria, SelectsWhatAnotherWayOfAskingSelects) {
    const InZone zone("EST5");
    const LocaleFormats locale("C");
    std::mt19937 random(5);
    std::size_t selected = 0;
    for (int round = 0; round < 400; ++round) {
        PanesStage stage;
        for (int i = 0; i < 30; ++i) {
            const bool folder = i >= 22;
            const std::array<ResultType, 8> types{
                Newer, Older, Same, Orphan, IdenticalFolder, DifferentFolder, OrphanFolder, OrphanFolder};
            const std::string name = std::string(1, "abAB"[random() % 4]) + std::to_string(random() % 30) +
                                     (random() % 2 == 0 ? ".txt" : ".JPG");
            AddRow(stage.hold, name, types[folder ? 4 + random() % 4 : random() % 4],
                   static_cast<std::int64_t>(random() % 8),
                   FileTime::FromUnix(kSomeMidnight + static_cast<std::int64_t>(random() % (6 * kDay)), 0));
        }
        stage.panes.ApplyViewTypes();
        const Side side = kBothSides[random() % 2];
        std::set<std::size_t> wanted;
        for (std::size_t row = 0; row < stage.panes.Pane(side).Count(); ++row)
            if (random() % 2 == 0) {
                stage.panes.ToggleRow(side, row);
                if (stage.panes.Pane(side)[row].IsReal()) wanted.insert(row);
            }
        SelectCriteria criteria;
        Question question;
        Ask(random, criteria, question, locale);
        if (criteria.select) wanted.clear();
        for (std::size_t row = 0; row < stage.panes.Pane(side).Count(); ++row)
            if (question.Takes(stage.panes.Pane(side)[row], locale))
                criteria.select ? static_cast<void>(wanted.insert(row))
                                : static_cast<void>(wanted.erase(row));

        stage.panes.SelectFileTypesInList(side, criteria);
        ASSERT_EQ(stage.panes.Pane(side).SelectedRows(),
                  std::vector<std::size_t>(wanted.begin(), wanted.end()))
            << "round " << round << ", patterns " << criteria.patterns << ", date " << question.dateSign
            << question.date;
        ASSERT_EQ(stage.panes.StatusText(side), StatusTextOf(stage.panes.Pane(side)));
        std::string why;
        ASSERT_TRUE(stage.panes.IsConsistent(&why)) << why;
        selected += wanted.size();
    }
    EXPECT_GT(selected, 1'000U);
}

TEST(SelectCriteria, TheTwoDefaultsOfTheWizardTestNothing) {
    PanesStage stage;
    const FileTime late = FileTime::FromUnix(kSomeMidnight + 100 * kDay, 0);
    AddRow(stage.hold, "a file of the future", Same, 0, late);
    AddRow(stage.hold, "folder", DifferentFolder, 0, {});
    AddRow(stage.hold, "left alone", Orphan, 0, {});
    stage.panes.ApplyViewTypes();
    SelectCriteria criteria;
    criteria.today = DayOf(FileTime::FromUnix(kSomeMidnight, 0));
    criteria.date = criteria.today + 1;
    stage.panes.SelectFileTypesInList(Side::Right, criteria);
    EXPECT_EQ(stage.panes.Pane(Side::Right).SelectedRows(), (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(stage.panes.CurrentListview(), Side::Right);

    ++*criteria.date;
    stage.panes.SelectFileTypesInList(Side::Left, criteria);
    EXPECT_EQ(stage.panes.Pane(Side::Left).SelectedRows(), (std::vector<std::size_t>{2}));
    EXPECT_EQ(stage.panes.Pane(Side::Right).SelectedCount(), 0U);

    const BusyState::Job job(stage.busy);
    stage.panes.SelectFileTypesInList(Side::Left, {});
    EXPECT_EQ(stage.panes.Pane(Side::Left).SelectedCount(), 1U);
}

TEST(SelectCriteria, WhatHasNoSizeOrDateNeverMatches) {
    for (const SizeOperator by :
         {SizeOperator::Equals, SizeOperator::IsLessThan, SizeOperator::IsGreaterThan})
        EXPECT_FALSE(FileMatchesSizeCriteria({}, {}, by));
    for (const DateOperator by : {DateOperator::IsOn, DateOperator::IsBefore, DateOperator::IsAfter})
        EXPECT_FALSE(FileMatchesDateCriteria({}, 0, by));
    EXPECT_EQ(DayOf(FileTime{-1}), -1);
    EXPECT_EQ(DayOf(FileTime{0}), 0);
}

TEST(SelectCriteria, ASizeIsReadBackAsAnyLocaleWritesIt) {
    for (const char* name :
         {"C", "en_US", "de_DE", "de_CH", "fr_FR", "es_ES", "sv_SE", "hi_IN", "ar_EG", "fa_IR"}) {
        const LocaleFormats locale(name);
        for (const std::int64_t size : {-1LL, 0LL, 7LL, 999LL, 1'234LL, 12'345'678LL, 123'456'789'012LL}) {
            const Currency value = Currency::FromWhole(size);
            EXPECT_EQ(SizeFromText(locale.Number(value), locale), value)
                << name << " " << locale.Number(value);
            EXPECT_EQ(SizeFromText(" " + std::to_string(size), locale), value) << name;
        }
        for (const char* text : {"", " ", "abc", "12x", "--1", "nan", "0x10"})
            EXPECT_EQ(SizeFromText(text, locale), std::nullopt) << name << " " << text;
    }
    EXPECT_EQ(SizeFromText("2.5", LocaleFormats("C")), Currency::FromWhole(3));
    EXPECT_EQ(SizeFromText("1e300", LocaleFormats("C")), Currency::FromWhole(900'000'000'000'000));
}

}  // namespace
}  // namespace vantrel
