#include "settings/settings_file.h"

#include <cerrno>

namespace vantrel {

Error SettingsFile::Read(IniDocument& out) const {
    out = IniDocument();
    if (!Exists()) return {};
    std::string bytes;
    if (Error error = files_.ReadWholeFile(path_, kMostBytes, bytes); !error.IsOk()) return error;
    out = IniDocument(std::move(bytes));
    return {};
}

Error SettingsFile::Update(const Plan& plan) const {
    IniDocument document;
    if (Error error = Read(document); !error.IsOk()) return error;
    if (!document.Apply(plan(document))) return {};

    // A rename needs no permission on the file that it replaces: the wish to keep it is asked for here.
    FileInfo info;
    if (files_.Stat(path_, LinkPolicy::Follow, info).IsOk() && (info.attributes & kReadOnly) != 0)
        return Error::FromErrno(EACCES, path_);
    return files_.ReplaceFile(path_, document.Text());
}

Error SettingsFile::Delete() const {
    return Exists() ? files_.RemoveFile(path_) : Error();
}

}  // namespace vantrel
