#include "platform/names/paths.h"

#include <algorithm>
#include <array>

namespace vantrel {

namespace {

std::string_view CutTrailingSlashes(std::string_view path) {
    while (path.ends_with('/')) path.remove_suffix(1);
    return path;
}

}  // namespace

std::string NormalizePath(std::string_view path) {
    return path.empty() ? std::string() : std::string(CutTrailingSlashes(path)) + '/';
}

std::string WithoutTrailingSlash(std::string_view path) {
    const std::string_view cut = CutTrailingSlashes(path);
    return std::string(cut.empty() ? path.substr(0, 1) : cut);
}

std::string JoinPath(std::string_view folder, std::string_view name) {
    if (folder.empty()) return std::string(name);
    if (name.empty()) return std::string(folder);
    folder = CutTrailingSlashes(folder);
    while (name.starts_with('/')) name.remove_prefix(1);
    std::string joined;
    joined.reserve(folder.size() + 1 + name.size());
    joined.append(folder).append(1, '/').append(name);
    return joined;
}

std::string_view GetLastItemInPath(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

std::size_t GetNextSlashPos(std::string_view path, std::size_t start) {
    return path.find('/', std::max<std::size_t>(start, 1) - 1) + 1;
}

std::string GetParentFolderName(std::string_view path) {
    path = CutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {};
    return WithoutTrailingSlash(path.substr(0, slash + 1));
}

std::string_view RemainingString(std::string_view text, std::string_view head) {
    return text.starts_with(head) ? text.substr(head.size()) : text;
}

std::string_view GetFilenameExtension(std::string_view name) {
    name = GetLastItemInPath(name);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

std::string ProperCase(std::string_view path) {
    std::string proper;
    proper.reserve(path.size());
    if (path.starts_with('/')) proper.push_back('/');
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view part = path.substr(0, slash);
        if (!part.empty() && part != ".") {
            proper.append(part);
            if (slash != std::string_view::npos) proper.push_back('/');
        }
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    return proper;
}

std::string ConvertBytesToCorrectByteTypeString(Currency size) {
    static constexpr std::array<std::string_view, 4> kUnits{" KB", " MB", " GB", " TB"};
    const std::int64_t whole = size.Whole();
    const std::string sign = whole < 0 ? "-" : "";
    const auto bytes = static_cast<std::uint64_t>(whole < 0 ? -whole : whole);
    if (bytes == 1) return sign + "1 Byte";
    if (bytes < 1024) return sign + std::to_string(bytes) + " Bytes";

    std::uint64_t unitSize = 1024;
    std::size_t unit = 0;
    std::uint64_t hundredths = 0;
    while (true) {
        // The range of Currency keeps this far from an overflow.
        hundredths = (bytes * 100 + unitSize / 2) / unitSize;
        if (hundredths < 102'400 || unit + 1 == kUnits.size()) break;
        unitSize *= 1024;
        ++unit;
    }
    std::string text = sign + std::to_string(hundredths / 100);
    if (const std::uint64_t decimals = hundredths % 100; decimals != 0) {
        text.push_back('.');
        text.push_back(static_cast<char>('0' + decimals / 10));
        if (decimals % 10 != 0) text.push_back(static_cast<char>('0' + decimals % 10));
    }
    return text.append(kUnits[unit]);
}

}  // namespace vantrel
