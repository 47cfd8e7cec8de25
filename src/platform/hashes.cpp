#include "platform/hashes.h"

#include <isa-l/crc.h>
#include <openssl/evp.h>

#include <memory>
#include <new>

#include "platform/error.h"

namespace vantrel {

namespace {

// Looking an algorithm up costs more than hashing a small file, so it is done once.
EVP_MD* FetchedSha1() {
    static const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> fetched(
        EVP_MD_fetch(nullptr, "SHA1", nullptr), &EVP_MD_free);
    return fetched.get();
}

void ThrowUnless(int done) {
    if (done != 1) throw ErrorException(Error(ErrorNumber::Raised, "SHA-1 is not available"));
}

std::string HexOf(const unsigned char* bytes, std::size_t count) {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    text.reserve(count * 2);
    for (std::size_t i = 0; i < count; ++i) {
        text.push_back(kDigits[bytes[i] >> 4]);
        text.push_back(kDigits[bytes[i] & 15]);
    }
    return text;
}

}  // namespace

void Crc32::Add(const void* bytes, std::size_t size) {
    value_ = crc32_gzip_refl(value_, static_cast<const unsigned char*>(bytes), size);
}

Sha1::Sha1() : context_(nullptr) {
    ThrowUnless(IsAvailable() ? 1 : 0);
    context_ = EVP_MD_CTX_new();
    if (context_ == nullptr) throw std::bad_alloc();
    if (EVP_DigestInit_ex2(context_, FetchedSha1(), nullptr) != 1) {
        EVP_MD_CTX_free(context_);
        ThrowUnless(0);
    }
}

Sha1::~Sha1() {
    EVP_MD_CTX_free(context_);
}

bool Sha1::IsAvailable() {
    return FetchedSha1() != nullptr;
}

void Sha1::Add(const void* bytes, std::size_t size) {
    ThrowUnless(EVP_DigestUpdate(context_, bytes, size));
}

Sha1::Digest Sha1::Finish() {
    Digest digest{};
    ThrowUnless(EVP_DigestFinal_ex(context_, digest.data(), nullptr));
    Restart();
    return digest;
}

void Sha1::Restart() {
    // Without naming the algorithm again the context only begins anew.
    ThrowUnless(EVP_DigestInit_ex2(context_, nullptr, nullptr));
}

std::uint32_t Crc32Of(std::string_view bytes) {
    Crc32 crc;
    crc.Add(bytes.data(), bytes.size());
    return crc.Value();
}

Sha1::Digest Sha1Of(std::string_view bytes) {
    Sha1 sha;
    sha.Add(bytes.data(), bytes.size());
    return sha.Finish();
}

std::string HexText(std::uint32_t value) {
    const unsigned char bytes[]{static_cast<unsigned char>(value >> 24),
                                static_cast<unsigned char>(value >> 16),
                                static_cast<unsigned char>(value >> 8), static_cast<unsigned char>(value)};
    return HexOf(bytes, sizeof bytes);
}

std::string HexText(const Sha1::Digest& digest) {
    return HexOf(digest.data(), digest.size());
}

}  // namespace vantrel
