#pragma once

#include <optional>
#include <string_view>

#include "platform/files/support_files.h"
#include "settings/option_table.h"
#include "settings/settings_file.h"

namespace vantrel {

enum class SaveGeometry { No, Yes };

// The options in the settings file of the program, which is named after the executable.
class OptionStore {
  public:
    OptionStore(const FileSystem& files, const ProgramFolders& folders)
        : file_(files, folders.appPath + folders.executableName + ".ini") {}

    const SettingsFile& File() const { return file_; }
    bool IsFirstRun() const { return !file_.Exists(); }

    // Takes every key into `options`, which holds what is in force now; a missing key gives its default.
    // Where the file cannot be read all keys are missing, and the error says so.
    Error Load(const OptionEnvironment& environment, Options& options);
    // Writes every key but the two filter lists, all in one replacement of the file. A key that another
    // program changed since Load, and this one did not, stays as the other left it. The geometry is left out
    // while the window is maximised or minimised, so that the file keeps the former one.
    Error Save(const Options& options, SaveGeometry geometry);
    // Whether Save has anything to write: an option is not what the file held when it was last read or
    // written here.
    bool HasChanges(const Options& options) const;
    // The routine of the two filter lists, for wherever they change.
    Error SaveFilters(std::string_view includeFileTypes, std::string_view excludeFileTypes);
    // Deletes the file, path history and all, and loads.
    Error RestoreDefaults(const OptionEnvironment& environment, Options& options);

  private:
    bool BelongsToOther(const OptionLine& line, const IniDocument& document, const Options& options) const;

    SettingsFile file_;
    OptionEnvironment environment_;
    std::optional<Options> known_;  // what the file held when it was last read or written here
};

}  // namespace vantrel
