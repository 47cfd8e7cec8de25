#include "support/shell_fixture.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace vantrel::testing {
namespace fs = std::filesystem;

Tree TreeOf(const std::string& folder) {
    Tree tree;
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(folder, ignored)) {
        std::string& what = tree[entry.path().string().substr(folder.size())];
        if (entry.is_symlink()) {
            what = "l:" + fs::read_symlink(entry.path()).string();
        } else if (entry.is_directory()) {
            what = "d";
        } else if (entry.is_regular_file()) {
            std::ifstream file(entry.path(), std::ios::binary);
            what = "f:" + std::string(std::istreambuf_iterator<char>(file), {});
        } else {
            what = "s";
        }
    }
    return tree;
}

std::vector<std::string> Contents(const Tree& tree) {
    std::vector<std::string> contents;
    for (const auto& [path, what] : tree) {
        if (what.starts_with("f:")) contents.push_back(what.substr(2));
    }
    std::ranges::sort(contents);
    return contents;
}

}  // namespace vantrel::testing
