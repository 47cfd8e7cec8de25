#include "dupes/dupe_lists.h"

namespace vantrel {

std::vector<std::string> SplitDupeList(std::string_view text) {
    std::vector<std::string> items;
    std::string item;
    const auto finish = [&] {
        if (!item.empty()) items.push_back(std::move(item));
        item.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '?') {
            finish();
        } else if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '?') {
            item.push_back(text[++i]);
        } else {
            item.push_back(text[i]);
        }
    }
    finish();
    return items;
}

std::string JoinDupeList(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        if (item.empty()) continue;
        if (!text.empty()) text.push_back('?');
        for (const char letter : item) {
            if (letter == '?') text.push_back('\\');
            text.push_back(letter);
        }
    }
    return text;
}

}  // namespace vantrel
