#include "platform/files/small_files.h"

#include <fcntl.h>

namespace vantrel {

void SmallFiles::Add(const OpenFolder& folder, std::string_view name) {
    calls_ = folder.calls_;
    const EntryName& entry = names_.emplace_back(name);
    SmallFile& file = files_.emplace_back();
    file.folder = folder.fd_;
    // A name that a call would take for a shorter one is none of a file.
    file.path = entry.IsWhole() ? entry.Bytes() : "";
    const bool keepsAccessTimes = folder.keepsAccessTimes_.load(std::memory_order_relaxed);
    file.flags = ReadFile::kOpenFlags | O_NOFOLLOW | (keepsAccessTimes ? O_NOATIME : 0);
}

bool SmallFiles::Read() {
    return !files_.empty() && calls_->ReadSmallFiles(files_.data(), files_.size());
}

std::optional<std::string_view> SmallFiles::operator[](std::size_t i) const {
    if (!files_[i].bytes) return std::nullopt;
    return std::string_view(files_[i].bytes, files_[i].size);
}

}  // namespace vantrel
