#include "filetools/hex_contents.h"

#include <algorithm>
#include <utility>

#include "filetools/text_columns.h"

namespace vantrel {

namespace {

FileChange ChangeOf(const Seen& then, const FileInfo& now) {
    if (now.kind != EntryKind::File || now.id != then.id) return FileChange::Exchanged;
    if (now.size != then.size) return now.size < then.size ? FileChange::Shorter : FileChange::Longer;
    return now.lastWrite == then.lastWrite ? FileChange::None : FileChange::Changed;
}

bool IsMissing(const Error& error) {
    return error.Number() == ErrorNumber::FileNotFound || error.Number() == ErrorNumber::PathNotFound;
}

bool IsText(std::string_view bytes) {
    constexpr char32_t kReplacement = 0xFFFD;
    for (std::size_t at = 0; at < bytes.size();) {
        const char32_t character = NextCharacter(bytes, at);
        const bool isSpace = character == '\t' || character == '\n' || character == '\r';
        const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
        if (character == kReplacement || (isControl && !isSpace)) return false;
    }
    return true;
}

}  // namespace

std::string_view FileChangeText(FileChange change) {
    switch (change) {
        case FileChange::None:
            break;
        case FileChange::Shorter:
            return "The file has become shorter.";
        case FileChange::Longer:
            return "The file has become longer.";
        case FileChange::Changed:
            return "The file has changed.";
        case FileChange::Exchanged:
            return "Another file has taken the place of this one.";
        case FileChange::Gone:
            return "The file is gone.";
        case FileChange::NotTold:
            return "The file cannot be looked at any more.";
    }
    return {};
}

Error HexContents::Open(const Toolbox& tools, Side side, const std::string& path, EmptyFile empty) {
    Close(side);
    BytesOfFile file;
    Error error = empty == EmptyFile::Taken ? file.Open(tools.files, path) : DoHexDump(tools, path, file);
    if (!error.IsOk()) return error;
    files_[side] = std::move(file);
    paths_[side] = path;
    MoveTo(cursor_, SelectionStep::Move);
    return {};
}

void HexContents::Close(Side side) {
    files_[side] = {};
    paths_[side].clear();
    changes_[side] = FileChange::None;
    anchor_ = Clamped(anchor_);
    cursor_ = Clamped(cursor_);
}

std::uint64_t HexContents::Size() const {
    std::uint64_t longer = 0;
    for (const Side side : kBothSides)
        if (Has(side)) longer = std::max(longer, files_[side].Size());
    return longer;
}

HexLine HexContents::LineAt(Side side, std::uint64_t number) {
    HexLine line;
    const std::uint64_t offset = number * kHexDumpBytes;
    if (!Has(side)) return line;
    if (offset < files_[side].Size()) line.text = files_[side].Line(number, OffsetDigits());
    if (IsPair()) MarkDifferences(side, offset, line);
    return line;
}

// Bytes that cannot be read differ from nothing: nobody knows what they are.
void HexContents::MarkDifferences(Side side, std::uint64_t offset, HexLine& line) {
    PerSide<std::span<const unsigned char>> bytes;
    for (const Side each : kBothSides) {
        bytes[each] = files_[each].At(offset, kHexDumpBytes);
        if (!files_[each].LastError().IsOk()) return;
    }
    const std::size_t own = bytes[side].size(), other = bytes[Other(side)].size();
    for (std::size_t byte = 0; byte < std::max(own, other); ++byte) {
        if (byte >= own || byte >= other)
            line.marks[byte] = ByteMark::Alone;
        else if (bytes[side][byte] != bytes[Other(side)][byte])
            line.marks[byte] = ByteMark::Changed;
    }
}

bool HexContents::LookAgain(const FileSystem& files, Side side) {
    if (!Has(side)) return false;
    FileInfo now;
    FileChange change = FileChange::NotTold;
    if (const Error error = files.Stat(paths_[side], LinkPolicy::Follow, now); error.IsOk())
        change = ChangeOf(files_[side].SeenAtOpening(), now);
    else if (IsMissing(error))
        change = FileChange::Gone;
    if (change != FileChange::None) files_[side].Forget();
    return std::exchange(changes_[side], change) != change;
}

std::uint64_t HexContents::Clamped(std::uint64_t offset) const {
    return IsEmpty() ? 0 : std::min(offset, Size() - 1);
}

ByteRange HexContents::Selection() const {
    if (IsEmpty()) return {};
    const auto [first, last] = std::minmax(cursor_, anchor_);
    return {first, last - first + 1};
}

void HexContents::MoveTo(std::uint64_t offset, SelectionStep step) {
    cursor_ = Clamped(offset);
    if (step == SelectionStep::Move) anchor_ = cursor_;
}

void HexContents::Select(ByteRange range) {
    cursor_ = Clamped(range.first);
    anchor_ = Clamped(range.End() - std::min<std::uint64_t>(range.size, 1));
}

std::string ReadBytes(BytesOfFile& file, ByteRange range) {
    std::string bytes;
    const std::uint64_t end = std::min(range.End(), file.Size());
    for (std::uint64_t at = range.first; at < end;) {
        const auto piece = file.AtOrThrow(
            at, static_cast<std::size_t>(std::min<std::uint64_t>(BytesOfFile::kBlock, end - at)));
        if (piece.empty()) throw ErrorException(FileBecameShorter());
        bytes.append(reinterpret_cast<const char*>(piece.data()), piece.size());
        at += piece.size();
    }
    return bytes;
}

std::string HexDigitsOf(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    digits.reserve(bytes.size() * 3);
    for (const char letter : bytes) {
        const auto byte = static_cast<unsigned char>(letter);
        if (!digits.empty()) digits += ' ';
        digits += kDigits[byte >> 4];
        digits += kDigits[byte & 15];
    }
    return digits;
}

std::string TextOfBytes(std::string_view bytes) {
    std::string text(bytes);
    if (!IsText(bytes))
        for (char& letter : text)
            if (letter < 0x20 || letter > 0x7E) letter = '.';
    return text;
}

std::string DumpOfBytes(BytesOfFile& file, ByteRange range, EventLoopPort& loop) {
    const std::uint64_t first = range.first / kHexDumpBytes * kHexDumpBytes;
    const std::uint64_t end = (range.End() + kHexDumpBytes - 1) / kHexDumpBytes * kHexDumpBytes;
    std::string dump;
    WriteHexDump(file, first, end - first, "\n", loop, [&](std::string_view piece) { dump += piece; });
    return dump;
}

}  // namespace vantrel
