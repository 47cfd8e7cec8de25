#include "platform/names/uri_list.h"

#include <algorithm>
#include <cctype>

#include "platform/names/names.h"

namespace vantrel {
namespace {

int HexValue(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    const auto lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// A "%" that no two digits follow stands for itself.
std::string PercentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            const int high = HexValue(text[i + 1]);
            const int low = HexValue(text[i + 2]);
            if (high >= 0 && low >= 0) {
                bytes += static_cast<char>(high * 16 + low);
                i += 2;
                continue;
            }
        }
        bytes += text[i];
    }
    return bytes;
}

bool StaysPlain(unsigned char byte) {
    return std::isalnum(byte) != 0 ||
           std::string_view("/-._~").find(static_cast<char>(byte)) != std::string_view::npos;
}

}  // namespace

std::string PathFromFileUri(std::string_view uri) {
    constexpr std::string_view kScheme = "file:";
    if (uri.size() < kScheme.size() || !EqualIgnoringCase(uri.substr(0, kScheme.size()), kScheme)) return {};
    uri.remove_prefix(kScheme.size());
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        const std::string_view host = uri.substr(0, uri.find('/'));
        if (!host.empty() && !EqualIgnoringCase(host, "localhost")) return {};
        uri.remove_prefix(host.size());
    }
    uri = uri.substr(0, uri.find_first_of("?#"));
    const std::string bytes = PercentDecoded(uri);
    if (!bytes.starts_with('/') || bytes.find('\0') != std::string::npos) return {};
    return NameFromSystem(bytes);
}

std::vector<std::string> PathsFromUriList(std::string_view list) {
    std::vector<std::string> paths;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of("\r\n"), list.size());
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (line.empty() || line.front() == '#') continue;
        if (std::string path = PathFromFileUri(line); !path.empty()) paths.push_back(std::move(path));
    }
    return paths;
}

std::string FileUri(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char character : NameToSystem(path)) {
        const auto byte = static_cast<unsigned char>(character);
        if (StaysPlain(byte)) {
            uri += character;
        } else {
            uri += '%';
            uri += kDigits[byte >> 4];
            uri += kDigits[byte & 15];
        }
    }
    return uri;
}

std::string UriListFromPaths(const std::vector<std::string>& paths) {
    std::string list;
    for (const std::string& path : paths) list += FileUri(path) + "\r\n";
    return list;
}

}  // namespace vantrel
