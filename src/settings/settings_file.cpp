#include "settings/settings_file.h"

namespace vantrel {

Error SettingsFile::Read(IniDocument& out) const {
    out = IniDocument();
    std::string bytes;
    Error error = files_.ReadWholeFile(path_, kMostBytes, bytes);
    if (error.Number() == ErrorNumber::FileNotFound) return {};
    if (!error.IsOk()) return error;
    out = IniDocument(std::move(bytes));
    return {};
}

Error SettingsFile::Update(const Plan& plan) const {
    IniDocument document;
    if (Error error = Read(document); !error.IsOk()) return error;
    if (!document.Apply(plan(document))) return {};
    return files_.ReplaceFile(path_, document.Text());
}

Error SettingsFile::Delete() const {
    return Exists() ? files_.RemoveFile(path_) : Error();
}

}  // namespace vantrel
