#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "dupes/equal_contents.h"
#include "dupes/found_files.h"

namespace vantrel {

// What is known of the contents of files, by what they were when they were read: device, inode, size and both
// times. Files that were compared in one go are either of one content or known to differ; of files of
// different goes nothing is known but through others. Of the one thread.
class HashCache {
  public:
    // Hashes of another method than before are forgotten; what is equal stays known.
    void UseMethod(HashMethod method);
    void Clear();

    // A question to FindEqualContents: the files that stand for all the files of a set.
    struct Question {
        std::vector<std::uint32_t> numbers;  // of FoundFiles: all of the set
        std::vector<std::uint32_t> asked;    // by position in `numbers`: which of `files` stands for it
        ContentSet files;
    };
    // `numbers` are files of one size. Where all is known `contents` and `hash` of the files are set and the
    // result is false; otherwise `question` is what must be read.
    bool MustRead(FoundFiles& found, const std::vector<std::uint32_t>& numbers, Question& question) const;
    // Takes the answer, and sets `contents` and `hash` of the files by it. Of a file that could not be read
    // the hash is its own path.
    void Learn(FoundFiles& found, const Question& question, const ContentClasses& answer);

  private:
    struct SeenHash {
        std::size_t operator()(const Seen& seen) const {
            std::size_t hash = seen.id.inode * 0x9E3779B97F4A7C15U ^ seen.id.device;
            hash = (hash ^ seen.size) * 0x9E3779B97F4A7C15U;
            return (hash ^ static_cast<std::size_t>(seen.changed.ticks)) * 0x9E3779B97F4A7C15U >> 7;
        }
    };
    struct Known {
        std::uint32_t going;     // in which go it was compared
        std::uint32_t contents;  // number, from 1
    };
    const Known* Find(const Seen& seen) const;

    HashMethod method_ = HashMethod::Crc16;
    std::uint32_t goings_ = 0;
    std::unordered_map<Seen, Known, SeenHash> known_;
    std::vector<std::string> hashes_{std::string()};  // by number of contents; empty: not known
};

}  // namespace vantrel
