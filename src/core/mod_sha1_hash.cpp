#include "core/mod_sha1_hash.h"

#include "core/file_pieces.h"

namespace vantrel {

bool IsSHA1Available() {
    return Sha1::IsAvailable();
}

std::string ConvertSHAHashToHex(const Sha1::Digest& digest) {
    return HexText(digest);
}

std::string SHA1OfText(std::string_view text) {
    return ConvertSHAHashToHex(Sha1Of(text));
}

std::string SHA1OfFile(const Toolbox& tools, CCompare& compare, std::string_view path,
                       ContentProgress* progress) {
    Sha1 sha;
    const auto add = [&sha](const char* bytes, std::size_t size) { sha.Add(bytes, size); };
    return ReadInPieces(tools, compare, path, progress, add) ? ConvertSHAHashToHex(sha.Finish()) : "0";
}

}  // namespace vantrel
