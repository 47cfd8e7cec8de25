#include "core/ccrc32.h"

#include <optional>

#include "core/file_pieces.h"
#include "platform/hashes.h"

namespace vantrel {

namespace {

std::optional<std::uint32_t> Crc32OfFile(const Toolbox& tools, CCompare& compare, std::string_view path,
                                         ContentProgress* progress) {
    Crc32 crc;
    const auto add = [&crc](const char* bytes, std::size_t size) { crc.Add(bytes, size); };
    if (!ReadInPieces(tools, compare, path, progress, add)) return std::nullopt;
    return crc.Value();
}

}  // namespace

std::int32_t CCRC32::GetLongCRC32OfString(std::string_view text) {
    return static_cast<std::int32_t>(Crc32Of(text));
}

std::string CCRC32::GetHexCRC32OfString(std::string_view text) {
    return HexText(Crc32Of(text));
}

std::string CCRC32::GetHexCRC32OfFile(std::string_view path, ContentProgress* progress) {
    const std::optional<std::uint32_t> crc = Crc32OfFile(tools_, compare_, path, progress);
    return crc ? HexText(*crc) : "0";
}

std::int32_t CCRC32::GetLongCRC32OfFile(std::string_view path, ContentProgress* progress) {
    return static_cast<std::int32_t>(Crc32OfFile(tools_, compare_, path, progress).value_or(0));
}

}  // namespace vantrel
