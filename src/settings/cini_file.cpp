#include "settings/cini_file.h"

#include <algorithm>
#include <limits>

#include "platform/line_end.h"
#include "settings/settings_file.h"
#include "settings/store_checks.h"

namespace vantrel {
namespace {

const std::string kIniFileTitle = "CIniFile Error";

// As the platform's call for whole numbers reads them: a sign and digits at the head count, the rest does
// not.
std::int16_t LeadingInteger(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    std::int32_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') break;
        value = std::min(value * 10 + (c - '0'), 100'000);
    }
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(
        std::clamp<std::int32_t>(negative ? -value : value, Limits::min(), Limits::max()));
}

}  // namespace

void CIniFile::SetName(const std::string& name) {
    if (name_.empty()) {
        name_ = name;
        return;
    }
    messages_.Ask({kIniFileTitle,
                   "This IniFile Object is already in use by " + FullPath() + std::string(kLineEnd) +
                       "Create a new object.",
                   MessageIcon::Warning,
                   MessageButtons::Ok,
                   {}});
}

std::int16_t CIniFile::GetIntegerValue(std::int16_t defaultValue) {
    if (!IsStoreReady(messages_, kIniFileTitle, StoreAccess::Get, name_, Section, Key)) return 0;
    IniDocument document;
    lastError_ = SettingsFile(files_, FullPath()).Read(document);
    const std::string text = document.Get(Section, Key).value_or("");
    return text.empty() ? defaultValue : LeadingInteger(text);
}

std::string CIniFile::GetStringValue(const std::string& defaultValue) {
    if (!IsStoreReady(messages_, kIniFileTitle, StoreAccess::Get, name_, Section, Key)) return {};
    IniDocument document;
    lastError_ = SettingsFile(files_, FullPath()).Read(document);
    return ProfileText(document.Get(Section, Key), defaultValue);
}

void CIniFile::SetStringValue(const std::string& value) {
    if (!IsStoreReady(messages_, kIniFileTitle, StoreAccess::Set, name_, Section, Key)) return;
    lastError_ = SettingsFile(files_, FullPath()).Update([&](const IniDocument&) {
        return std::vector<IniChange>{{Section, Key, value}};
    });
}

}  // namespace vantrel
