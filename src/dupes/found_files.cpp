#include "dupes/found_files.h"

#include <utility>

namespace vantrel {

namespace {

// Compares a1 + a2 with b1 + b2 by bytes, without joining them.
int CompareJoined(std::string_view a1, std::string_view a2, std::string_view b1, std::string_view b2) {
    if (a1.size() > b1.size()) return -CompareJoined(b1, b2, a1, a2);
    if (const int order = a1.compare(b1.substr(0, a1.size())); order != 0) return order;
    b1.remove_prefix(a1.size());
    if (const int order = a2.substr(0, b1.size()).compare(b1); order != 0) return order;
    return a2.substr(b1.size()).compare(b2);
}

}  // namespace

bool FoundFiles::ComesBefore(const DupeFile& a, const DupeFile& b) const {
    if (RootOf(a) != RootOf(b)) return RootOf(a) < RootOf(b);
    if (a.folder == b.folder) return a.name < b.name;
    return CompareJoined(FolderOf(a), a.name, FolderOf(b), b.name) < 0;
}

std::uint32_t FoundFiles::AddFolder(std::string path, std::size_t root) {
    folders_.push_back({std::move(path), root});
    return static_cast<std::uint32_t>(folders_.size() - 1);
}

void FoundFiles::Add(DupeFile file) {
    file.name = names_->Add(file.name);
    files_.push_back(file);
}

void FoundFiles::SetHash(DupeFile& file, std::string_view hash) {
    if (hash.empty()) {
        file.hash = 0;
        return;
    }
    // Equal files come one after the other.
    if (hashes_.back() != hash) hashes_.emplace_back(hash);
    file.hash = static_cast<std::uint32_t>(hashes_.size() - 1);
}

void FoundFiles::AddOtherName(DupeFile& file, std::string path) {
    if (file.otherNames == 0) {
        file.otherNames = static_cast<std::uint32_t>(otherNames_.size());
        otherNames_.emplace_back();
    }
    otherNames_[file.otherNames].push_back(std::move(path));
}

void FoundFiles::Rename(std::size_t number, std::string_view name, const Seen& seen) {
    files_[number].name = names_->Add(name);
    files_[number].seen = seen;
}

void FoundFiles::Arrange(const std::vector<std::uint32_t>& numbers) {
    std::vector<DupeFile> arranged;
    arranged.reserve(numbers.size());
    for (const std::uint32_t number : numbers) arranged.push_back(files_[number]);
    files_ = std::move(arranged);
}

}  // namespace vantrel
