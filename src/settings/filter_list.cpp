#include "settings/filter_list.h"

#include <algorithm>
#include <cerrno>

#include "platform/byte_order_mark.h"
#include "platform/line_end.h"
#include "settings/plain_text.h"

namespace vantrel {
namespace {

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (true) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::vector<std::string> FillFilterTypeList(std::string_view text) {
    std::vector<std::string> patterns;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        if (const std::string_view pattern = text.substr(0, comma); !pattern.empty())
            patterns.emplace_back(pattern);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return patterns;
}

std::string CreateStringFromList(const std::vector<std::string>& patterns) {
    std::string text;
    for (const std::string& pattern : patterns) {
        if (!text.empty()) text += ',';
        text += pattern;
    }
    return text;
}

std::string_view ParseFilterList(std::string_view text, FilterList& list) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    if (text.size() > kMostFilterListBytes) return "it is too long";
    if (!IsPlainText(text) || text.find('\t') != std::string_view::npos)
        return "it holds something else than text";
    const std::vector<std::string_view> lines = LinesOf(text);
    if (lines.size() < 2) return "it has not the two lines of a filter list";
    if (std::any_of(lines.begin() + 2, lines.end(), [](std::string_view line) { return !line.empty(); }))
        return "it has more than the two lines of a filter list";
    if (std::any_of(lines.begin(), lines.end(),
                    [](std::string_view line) { return line.find('\r') != std::string_view::npos; }))
        return "it holds something else than text";
    list = {FillFilterTypeList(lines[0]), FillFilterTypeList(lines[1])};
    return {};
}

std::string FilterListText(const FilterList& list) {
    std::string text;
    for (const auto* patterns : {&list.include, &list.exclude})
        text += CreateStringFromList(*patterns) + std::string(kLineEnd);
    return text;
}

Error ReadFilterList(const FileSystem& files, std::string_view path, FilterList& list) {
    std::string text;
    // Beyond the limit it is a list no more, however much of it there is.
    Error error = files.ReadWholeFile(path, kMostFilterListBytes + kByteOrderMark.size(), text);
    std::string_view wrong;
    if (error.SystemNumber() == ENOMEM)
        wrong = "it is too long";
    else if (!error.IsOk())
        return error;
    else
        wrong = ParseFilterList(text, list);
    return wrong.empty() ? Error() : Error(ErrorNumber::InvalidPropertyValue, std::string(wrong));
}

Error WriteFilterList(const FileSystem& files, std::string_view path, const FilterList& list) {
    return files.ReplaceFile(path, FilterListText(list));
}

}  // namespace vantrel
