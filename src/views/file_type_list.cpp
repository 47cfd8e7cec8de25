#include "views/file_type_list.h"

#include <algorithm>
#include <set>

#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

// With "?" in place of characters that would be read as something else.
std::string Readable(std::string_view patterns, std::string_view unreadable) {
    std::string readable(patterns);
    for (char& character : readable)
        if (unreadable.find(character) != std::string_view::npos) character = '?';
    return readable;
}

std::string Entry(std::string_view text, std::string_view patterns) {
    return std::string(text) + "  (" + std::string(patterns) + ")";
}

}  // namespace

std::vector<std::string> FileTypeEntries(const ResultList& rows, const FileTypeSources& sources) {
    std::set<std::string, std::less<>> met;
    std::vector<std::pair<std::string, std::string>> types;  // with the keys that they are sorted by
    std::string key;
    for (const ResultRow& row : rows) {
        if (row.kind != RowKind::File) continue;
        const std::string_view extension = GetFilenameExtension(row.realName);
        if (extension.empty()) continue;  // no pattern tells such files
        key.clear();
        AppendFolded(extension, key);
        // A file that is gone leaves the extension to the next one that bears it.
        if (met.contains(key) || !sources.exists(row)) continue;
        met.insert(key);
        const std::string description = sources.describe(row.realName);
        if (description.empty()) continue;
        std::string entry = Entry(description, "*." + Readable(extension, "(),#*[]"));
        types.emplace_back(FoldCase(entry), std::move(entry));
    }
    std::sort(types.begin(), types.end());
    std::vector<std::string> entries{std::string(kAllFilesEntry)};
    for (auto& [sortKey, entry] : types) entries.push_back(std::move(entry));
    entries.emplace_back(kUserDefined);
    return entries;
}

std::string ExtractTypes(std::string_view entry) {
    const std::size_t open = entry.rfind('(');
    if (open == std::string_view::npos) return {};
    const std::size_t close = entry.rfind(')');
    if (close == std::string_view::npos || close < open) return std::string(entry.substr(open + 1));
    return std::string(entry.substr(open + 1, close - open - 1));
}

std::string UserDefinedEntry(std::string_view patterns) {
    return Entry(kUserDefined, Readable(patterns, "()"));
}

bool IsUserDefined(std::string_view entry) {
    return entry.starts_with(kUserDefined);
}

std::string ProposedPatterns(std::string_view entry) {
    std::string patterns = ExtractTypes(entry);
    return patterns.empty() ? std::string(kFirstUserPatterns) : patterns;
}

}  // namespace vantrel
