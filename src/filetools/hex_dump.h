#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/toolbox.h"
#include "platform/files/file_system.h"
#include "platform/files/replace_file.h"

namespace vantrel {

// A hex dump is lines of sixteen bytes:
//
//   00000010  48 65 6c 6c 6f 20 77 6f  72 6c 64 0a ff           |Hello world..|
//
// the offset of the first byte in hexadecimal, of as many digits for all lines as the last byte of the file
// needs and never less than eight; two blanks; each byte as two digits, a blank between them and one more in
// the middle; two blanks; between bars the bytes that are printable in ASCII (0x20 to 0x7E), a dot for any
// other. The last line may be short: the bars stand where they stand in all others.
constexpr std::size_t kHexDumpBytes = 16;

inline std::string_view AsText(std::span<const unsigned char> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The digits of an offset in the dump of a file of so many bytes.
std::size_t HexDumpOffsetDigits(std::uint64_t fileSize);

// Appends one line, without a line end. At most kHexDumpBytes bytes.
void AppendHexDumpLine(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                       std::string& out);
// Appends the lines of `bytes`, which begin at `offset`, a multiple of kHexDumpBytes unless they are all
// there is; each ends with `lineEnd`.
void AppendHexDump(std::uint64_t offset, std::span<const unsigned char> bytes, std::size_t offsetDigits,
                   std::string_view lineEnd, std::string& out);

// Where in a line a byte is shown: the column of its first digit, and that of its character.
std::size_t HexDumpDigitsColumn(std::size_t byte, std::size_t offsetDigits);
std::size_t HexDumpCharacterColumn(std::size_t byte, std::size_t offsetDigits);

// The bytes that a text of hexadecimal digits stands for, as in "48 65 6c", "48656C" or "0x48": digits in
// pairs, blanks between pairs. Nothing where it is anything else, or empty.
std::optional<std::string> BytesFromHexDigits(std::string_view text);
// An offset as users write it: decimal, or hexadecimal behind "0x" or "&H" or before an "h".
std::optional<std::uint64_t> OffsetFromText(std::string_view text);

// A file whose bytes are looked at here and there. It holds a few blocks of the file, whatever its size. The
// size is that of the moment of opening: what a file loses afterwards reads as missing, what it gains is not
// looked at.
class BytesOfFile {
  public:
    static constexpr std::size_t kBlock = std::size_t{256} << 10;

    // Fails for what is no regular file or cannot be opened. An empty file opens.
    Error Open(const FileSystem& files, std::string_view path);
    bool IsOpen() const { return file_.IsOpen(); }
    std::uint64_t Size() const { return file_.Size(); }
    std::uint64_t LineCount() const { return (Size() + kHexDumpBytes - 1) / kHexDumpBytes; }

    // Up to kBlock bytes at `offset`, valid until the next call. Less than asked for where the file ends, or
    // where it cannot be read: LastError then tells why.
    std::span<const unsigned char> At(std::uint64_t offset, std::size_t length);
    const Error& LastError() const { return lastError_; }
    // The same, but throws that error as ErrorException.
    std::span<const unsigned char> AtOrThrow(std::uint64_t offset, std::size_t length);
    // Line `number` of the dump, from 0. Lines that cannot be read say so in place of their bytes.
    std::string Line(std::uint64_t number, std::size_t offsetDigits);
    // What the file was when it was opened.
    const Seen& SeenAtOpening() const { return file_.Seen(); }
    // The blocks that are held are read again when they are wanted again.
    void Forget();

  private:
    struct Block {
        std::uint64_t offset = UINT64_MAX;
        std::size_t size = 0;
        std::string bytes;
    };
    const Block& Load(std::uint64_t offset);

    ReadFile file_;
    std::array<Block, 2> blocks_;  // the latest first
    std::string joined_;           // what lies in both
    Error lastError_;
};

// What a reader of the whole file says where bytes are missing that were there at the opening.
Error FileBecameShorter();

// The dump of a whole file, piece by piece, with `lineEnd` at each line's end. `progress` gets the bytes
// done, and may be null. Yields as it goes, and throws Cancelled when the user asks for it and ErrorException
// where the file cannot be read.
using BytesDone = std::function<void(std::uint64_t done, std::uint64_t total)>;
void WriteHexDump(BytesOfFile& file, std::uint64_t offset, std::uint64_t length, std::string_view lineEnd,
                  EventLoopPort& loop, const PieceSink& sink, const BytesDone& progress = nullptr);

// Opens the file for a dump. Fails too where it has no contents: there is nothing to show.
Error DoHexDump(const Toolbox& tools, std::string_view path, BytesOfFile& out);
// Writes the dump to `target`, through a temporary file.
Error SaveHexDump(const Toolbox& tools, BytesOfFile& file, std::string_view target,
                  const BytesDone& progress);

}  // namespace vantrel
