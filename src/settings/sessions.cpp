#include "settings/sessions.h"

#include "settings/session_file.h"

namespace vantrel {
namespace {

constexpr const char* kSection = "Sessions";

std::string KeyOfRecent(std::size_t index) {
    return "File" + std::to_string(index + 1);
}

std::vector<std::string> StoredSessions(const IniDocument& document) {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < Sessions::kMostRecent; ++i)
        if (std::string path = document.Get(kSection, KeyOfRecent(i)).value_or(""); !path.empty())
            paths.push_back(std::move(path));
    return paths;
}

}  // namespace

Error Sessions::ReadSettings(std::string& bytes) const {
    return files_.ReadWholeFile(settings_.Path(), SettingsFile::kMostBytes, bytes);
}

Error Sessions::Save(std::string_view path) const {
    std::string bytes;
    if (Error error = ReadSettings(bytes); !error.IsOk()) return error;
    if (const std::string wrong = WhyNoSession(bytes); !wrong.empty())
        return {ErrorNumber::InvalidPropertyValue,
                "The settings file \"" + settings_.Path() + "\" cannot become a session: " + wrong};
    return files_.ReplaceFile(path, bytes);
}

Error Sessions::Load(std::string_view path) const {
    std::string session;
    if (Error error = ReadSession(files_, path, session); !error.IsOk()) return error;
    // The session may be the previous one itself: it is read by now.
    if (Error error = KeepPrevious(); !error.IsOk()) return error;
    return files_.ReplaceFile(settings_.Path(), session);
}

Error Sessions::KeepPrevious() const {
    if (!settings_.Exists()) return {};
    std::string bytes;
    if (Error error = ReadSettings(bytes); !error.IsOk()) return error;
    return files_.ReplaceFile(previous_, bytes);
}

std::vector<std::string> Sessions::Recent() const {
    IniDocument document;
    // Without the list the menu is shorter; nothing else depends on it.
    return recent_.Read(document).IsOk() ? StoredSessions(document) : std::vector<std::string>();
}

Error Sessions::AddRecent(const std::string& path) const {
    return recent_.Update([&path](const IniDocument& document) {
        std::vector<std::string> paths = StoredSessions(document);
        std::erase(paths, path);
        paths.insert(paths.begin(), path);
        if (paths.size() > kMostRecent) paths.resize(kMostRecent);
        std::vector<IniChange> changes;
        for (std::size_t i = 0; i < paths.size(); ++i)
            changes.push_back({kSection, KeyOfRecent(i), paths[i]});
        return changes;
    });
}

}  // namespace vantrel
