#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "core/result_list.h"
#include "core/toolbox.h"
#include "views/printed_pages.h"

namespace vantrel {

// Result lists on paper and in text reports.

struct PrintedList {
    const ResultList* rows = nullptr;  // must outlive the job
    std::string folder;

    // Nothing in it that could be printed.
    bool IsEmpty() const { return rows == nullptr || rows->IsEmpty() || rows->IsSentinel(); }
};

// The two characters in front of a row.
std::string_view MarkOnPaper(ResultType type);
std::string_view MarkInFile(ResultType type);

// The pages of one list, and those of two beside each other, whose rows stay beside each other to the end of
// the longer one. All arguments must outlive the pages.
std::unique_ptr<PrintedPages> PagesOfListview(const PrintedList& list, const PrintHeader& header,
                                              const LocaleFormats& locale, PageSize size,
                                              const FontMeasure& measure);
std::unique_ptr<PrintedPages> PagesOfListviewsSideBySide(const PerSide<PrintedList>& lists,
                                                         const PrintHeader& header,
                                                         const LocaleFormats& locale, PageSize size,
                                                         const FontMeasure& measure);

// The routines of the same on paper. Each reports under its own name, and gives false where it failed. A
// cancel passes through.
bool PrintListview(const Toolbox& tools, const PrintedList& list, const PrintHeader& header, Paper& paper);
bool PrintListviewsSideBySide(const Toolbox& tools, const PerSide<PrintedList>& lists,
                              const PrintHeader& header, Paper& paper);

// One list of a text report: with `isNewFile` as its beginning, under the date `now` unless that is empty;
// otherwise as a section behind others. Calls `sink` with pieces of some 64 KiB.
void WriteListview(const PrintedList& list, bool isNewFile, std::string_view now, const LocaleFormats& locale,
                   const std::function<void(std::string_view piece)>& sink);

// A text report of the lists, one after the other, in place of the file at `path`; `now` as above. The report
// is there as a whole or not at all, and an old file stays where it cannot be: throws ErrorException.
void PrintListviewToFile(const Toolbox& tools, std::span<const PrintedList> lists, const std::string& path,
                         std::string_view now);

}  // namespace vantrel
