#include "support/temp_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace vantrel::testing {
namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::string name = (fs::temp_directory_path() / "vantrel-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    path_ = name + "/";
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    for (auto entry =
             fs::recursive_directory_iterator(path_, fs::directory_options::skip_permission_denied, ignored);
         entry != fs::recursive_directory_iterator(); entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(path_, ignored);
}

void TempFolder::Write(std::string_view name, std::string_view content, double unixTime) const {
    const fs::path path = path_ + std::string(name);
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
    if (unixTime < 0) return;
    const double whole = std::floor(unixTime);
    const timespec stamp{static_cast<time_t>(whole), std::lround((unixTime - whole) * 1e9)};
    const timespec times[2] = {stamp, stamp};
    ASSERT_EQ(0, utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW));
}

void TempFolder::MakeFolder(std::string_view name) const {
    fs::create_directories(path_ + std::string(name));
}

std::string TempFolder::Read(std::string_view name) const {
    std::ifstream file(path_ + std::string(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool TempFolder::Exists(std::string_view name) const {
    return fs::symlink_status(path_ + std::string(name)).type() != fs::file_type::not_found;
}

}  // namespace vantrel::testing
