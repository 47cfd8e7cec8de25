#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/side.h"
#include "filetools/cancel_check.h"
#include "filetools/hunk.h"
#include "filetools/text_encoding.h"
#include "platform/files/file_system.h"

namespace vantrel {

enum class TextForm : std::uint8_t {
    // The bytes of the file, byte order mark and CR included, so that a script of the differences turns one
    // file into
    // the other. UTF-16, and what an encoding was given for, is turned to UTF-8 all the same.
    AsStored,
    // What a person reads: UTF-8 without byte order mark. Where each of two files keeps to one kind of line
    // end and
    // the kinds differ, line ends do not count; lines that end in CR alone are lines.
    ForReading,
};

enum class LineEnds : std::uint8_t { None, Lf, CrLf, Cr, Mixed };
// "LF", "CR LF", "CR", "mixed"; empty for None.
std::string_view LineEndsText(LineEnds ends);

struct TextRequest {
    std::string path;
    std::string encoding;  // empty: found by itself
    TextForm form = TextForm::AsStored;
};

// The text of a file in memory. Moving it leaves views of it valid.
class LoadedText {
  public:
    std::string_view Text() const { return {bytes_.get() + skipped_, size_ - skipped_}; }

    std::string path;
    std::string encoding;  // of the file
    bool hasByteOrderMark = false;
    bool isBinary = false;               // the text is then that of the bytes as they stand
    LineEnds lineEnds = LineEnds::None;  // of the file; told for ForReading only
    bool isDecoded = false;              // the text is UTF-8 and the file was not
    std::uint64_t storedHash = 0;        // of the bytes of a file that was decoded, and of the encoding
    std::uint64_t lineFeeds = 0;         // in the text
    FileTime lastWrite;
    FileId id;

  private:
    friend LoadedText LoadText(const FileSystem& files, const TextRequest& request, const CancelCheck& check);
    friend bool SettleLineEnds(PerSide<LoadedText>& texts, const CancelCheck& check);
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t skipped_ = 0;  // a byte order mark that is not part of the text
};

// Reads a file to its end as it then is and decodes it. Throws ErrorException where it cannot be opened or
// read, and where its encoding is unknown; Cancelled comes from `check`. Any thread may call it.
LoadedText LoadText(const FileSystem& files, const TextRequest& request, const CancelCheck& check);

// Makes the line ends of the two texts alike as TextForm::ForReading says. True where line ends do not count
// then.
bool SettleLineEnds(PerSide<LoadedText>& texts, const CancelCheck& check);

// Refuses, before anything is tried, what would not fit into memory together: `bytes` of both files, and what
// the comparison needs beside them. OK where the system does not tell how much there is.
Error CheckMemoryFor(const FileSystem& files, std::uint64_t bytes);
// The same for the tables of two texts that are in memory.
Error CheckMemoryForLines(const FileSystem& files, const PerSide<LoadedText>& texts);

}  // namespace vantrel
