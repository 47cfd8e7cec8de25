#include "engine.h"

#include <cstdlib>
#include <filesystem>

#include "platform/names/names.h"

namespace vantrel::cli {

PrivateFolder::PrivateFolder() {
    std::error_code error;
    std::string name = std::filesystem::temp_directory_path(error) / "vantrel-cli-XXXXXX";
    if (!error && mkdtemp(name.data()) != nullptr) path_ = NameFromSystem(name) + "/";
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;  // whoever clears the folder for temporary files will take it
    if (!path_.empty()) std::filesystem::remove_all(NameToSystem(path_), ignored);
}

Engine::Engine(const std::string& programFolder)
    : files_(SystemCallsOfProcess()),
      volumes_(files_),
      folders_(FindProgramFolders(files_, programFolder)),
      messages_(progress_),
      loop_(progress_),
      tools_({files_, volumes_, clock_, locale_, folders_, messages_, loop_}) {
}

std::string Engine::FullPath(std::string_view operand) const {
    std::string path = PathFromUser(operand);
    if (path.empty() || path.starts_with('/')) return path;
    return folders_.startDir + path;
}

}  // namespace vantrel::cli
