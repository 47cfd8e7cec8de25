#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/side.h"
#include "filetools/hex_dump.h"

namespace vantrel {

// What became of a file since it was opened.
enum class FileChange : std::uint8_t { None, Shorter, Longer, Changed, Exchanged, Gone, NotTold };
// In words; empty for None.
std::string_view FileChangeText(FileChange change);

// How a byte looks in the line of one of two files: Changed where the other file has another one, Alone where
// the other file has ended, or this one has and the other goes on.
enum class ByteMark : std::uint8_t { None, Changed, Alone };

struct HexLine {
    // As in a dump. Behind the offset stands what is wrong where the bytes cannot be had; empty behind the
    // file's end.
    std::string text;
    std::array<ByteMark, kHexDumpBytes> marks{};
};

// Bytes from `first` on. Never empty where there is a file with contents.
struct ByteRange {
    std::uint64_t first = 0;
    std::uint64_t size = 0;
    std::uint64_t End() const { return first + size; }
    friend bool operator==(const ByteRange&, const ByteRange&) = default;
};

enum class SelectionStep : std::uint8_t { Move, Extend };
enum class EmptyFile : std::uint8_t { Refused, Taken };

// What a window of dumps shows: one file, or two beside each other, and the bytes that are selected, the same
// ones in both. Of the two the longer one says how many lines there are.
class HexContents {
  public:
    // Shows a file in place of the one that was there; fails as DoHexDump does, and then there is none.
    Error Open(const Toolbox& tools, Side side, const std::string& path, EmptyFile empty);
    void Close(Side side);

    bool Has(Side side) const { return files_[side].IsOpen(); }
    bool IsPair() const { return Has(Side::Left) && Has(Side::Right); }
    bool IsEmpty() const { return Size() == 0; }
    std::uint64_t Size() const;
    std::uint64_t LineCount() const { return (Size() + kHexDumpBytes - 1) / kHexDumpBytes; }
    std::size_t OffsetDigits() const { return HexDumpOffsetDigits(Size()); }
    const std::string& Path(Side side) const { return paths_[side]; }
    PerSide<BytesOfFile>& Files() { return files_; }

    HexLine LineAt(Side side, std::uint64_t number);

    // Looks whether the file of a side is what was opened. Where its contents are others now, what is shown
    // is read again as far as it was there at the opening. True when the answer is not that of the last time.
    bool LookAgain(const FileSystem& files, Side side);
    FileChange Change(Side side) const { return changes_[side]; }

    // The selection goes from where it was begun to the cursor, both included. Offsets behind the end become
    // the last byte.
    std::uint64_t Cursor() const { return cursor_; }
    ByteRange Selection() const;
    void MoveTo(std::uint64_t offset, SelectionStep step);
    // The cursor stands at the first of the bytes.
    void Select(ByteRange range);

  private:
    std::uint64_t Clamped(std::uint64_t offset) const;
    void MarkDifferences(Side side, std::uint64_t offset, HexLine& line);

    PerSide<BytesOfFile> files_;
    PerSide<std::string> paths_;
    PerSide<FileChange> changes_;
    std::uint64_t cursor_ = 0;
    std::uint64_t anchor_ = 0;
};

// The most bytes that are put on the clipboard at once.
inline constexpr std::uint64_t kMostCopied = std::uint64_t{4} << 20;

// As much of `range` as the file has. Throws ErrorException where it cannot be read.
std::string ReadBytes(BytesOfFile& file, ByteRange range);
// "48 65 6c".
std::string HexDigitsOf(std::string_view bytes);
// The bytes as text: UTF-8 as it is, anything else as a dump shows it. White space is text, other control
// characters are not.
std::string TextOfBytes(std::string_view bytes);
// The whole lines of the dump that hold `range`.
std::string DumpOfBytes(BytesOfFile& file, ByteRange range, EventLoopPort& loop);

}  // namespace vantrel
