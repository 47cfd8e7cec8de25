#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/seen.h"
#include "platform/text_pool.h"

namespace vantrel {

// One candidate. Times are UTC.
struct DupeFile {
    static constexpr std::int64_t kUnknownSize = -1;

    std::string_view name;             // owned by FoundFiles
    std::int64_t size = kUnknownSize;  // bytes
    FileTime createTime;               // 0 ticks where it is not known; read only where it is a criterion
    Seen seen;                 // when it was found; its time of the last change of contents is LastModTime
    std::uint32_t folder = 0;  // of FoundFiles
    std::uint32_t otherNames = 0;  // of FoundFiles; 0: it has one name only
    std::uint32_t hash = 0;        // of FoundFiles; 0: empty
    // Files whose contents were seen to be equal byte for byte have the same number; 0: not looked at.
    std::uint32_t contents = 0;
    std::uint8_t attributes = 0;  // of Attribute

    FileTime LastModTime() const { return seen.lastWrite; }
};

// The candidates of one search, by number from 0. Texts are held once.
class FoundFiles {
  public:
    std::size_t Count() const { return files_.size(); }
    const DupeFile& operator[](std::size_t number) const { return files_[number]; }
    DupeFile& operator[](std::size_t number) { return files_[number]; }

    // With "/" at its end.
    const std::string& FolderOf(const DupeFile& file) const { return folders_[file.folder].path; }
    // Which folder of the list it was found under, from 0.
    std::size_t RootOf(const DupeFile& file) const { return folders_[file.folder].root; }
    std::string PathOf(const DupeFile& file) const { return std::string(FolderOf(file)).append(file.name); }
    std::string PathOf(std::size_t number) const { return PathOf(files_[number]); }
    // The decimal text of a CRC, the hexadecimal one of an MD5, the path of a file that could not be read.
    std::string_view HashOf(const DupeFile& file) const { return hashes_[file.hash]; }
    // Full paths under which the same object was found as well: hard links, or folders that can be reached in
    // several ways.
    const std::vector<std::string>& OtherNamesOf(const DupeFile& file) const {
        return otherNames_[file.otherNames];
    }
    // First by the order of the list of folders, then by the path: the order in which ties are broken.
    bool ComesBefore(const DupeFile& a, const DupeFile& b) const;

    // `path` ends in "/".
    std::uint32_t AddFolder(std::string path, std::size_t root);
    // The name is copied.
    void Add(DupeFile file);
    void SetHash(DupeFile& file, std::string_view hash);
    void AddOtherName(DupeFile& file, std::string path);
    // A file got another name in its folder, and was looked at again.
    void Rename(std::size_t number, std::string_view name, const Seen& seen);
    // Keeps the files for which `keeps(number)`, in their order.
    template <typename Keeps>
    void Keep(const Keeps& keeps) {
        std::size_t to = 0;
        for (std::size_t from = 0; from < files_.size(); ++from)
            if (keeps(from)) files_[to++] = files_[from];
        files_.resize(to);
    }
    // Puts them in the order of `numbers`, which names each once.
    void Arrange(const std::vector<std::uint32_t>& numbers);

  private:
    struct Folder {
        std::string path;
        std::size_t root;
    };
    std::unique_ptr<TextPool> names_ = std::make_unique<TextPool>();
    std::vector<Folder> folders_;
    std::vector<DupeFile> files_;
    std::vector<std::string> hashes_{std::string()};
    std::vector<std::vector<std::string>> otherNames_{{}};
};

}  // namespace vantrel
