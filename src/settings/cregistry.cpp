#include "settings/cregistry.h"

#include <algorithm>
#include <cstdlib>

#include "platform/line_end.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "settings/settings_file.h"
#include "settings/store_checks.h"

namespace vantrel {
namespace {

const std::string kRegistryTitle = "CRegistry Error";

// The folder and those above it that are missing. A failure shows when the file is written.
void MakeFolders(const FileSystem& files, const std::string& folder) {
    if (folder.empty() || files.FolderExists(folder)) return;
    MakeFolders(files, GetParentFolderName(folder));
    (void)files.CreateFolder(folder);
}

}  // namespace

std::string UserConfigFolder() {
    // By the rules of the base directories a relative path is as good as none.
    const char* given = std::getenv("XDG_CONFIG_HOME");
    if (given && *given == '/') return WithoutTrailingSlash(NameFromSystem(given));
    const char* home = std::getenv("HOME");
    return home && *home == '/' ? JoinPath(NameFromSystem(home), ".config") : std::string();
}

void CRegistry::SetAppName(const std::string& name) {
    if (appName_.empty()) {
        appName_ = name;
        return;
    }
    messages_.Ask({kRegistryTitle,
                   "This Registry Object is already in use by " + appName_ + std::string(kLineEnd) +
                       "Create a new object.",
                   MessageIcon::Stop,
                   MessageButtons::Ok,
                   {}});
}

std::string CRegistry::FilePath() const {
    std::string fileName = appName_ + ".conf";
    std::replace(fileName.begin(), fileName.end(), '/', '_');
    return JoinPath(configFolder_, fileName);
}

std::string CRegistry::GetStringValue(const std::string& defaultValue) {
    if (!IsStoreReady(messages_, kRegistryTitle, StoreAccess::Get, appName_, Section, Key)) return {};
    IniDocument document;
    lastError_ = SettingsFile(files_, FilePath()).Read(document);
    return document.Get(Section, Key).value_or(defaultValue);
}

void CRegistry::SetStringValue(const std::string& value) {
    if (!IsStoreReady(messages_, kRegistryTitle, StoreAccess::Set, appName_, Section, Key)) return;
    MakeFolders(files_, configFolder_);
    lastError_ = SettingsFile(files_, FilePath()).Update([&](const IniDocument&) {
        return std::vector<IniChange>{{Section, Key, value}};
    });
}

}  // namespace vantrel
