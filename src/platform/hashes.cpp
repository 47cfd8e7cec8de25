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

EVP_MD* FetchedMd5() {
    static const std::unique_ptr<EVP_MD, decltype(&EVP_MD_free)> fetched(
        EVP_MD_fetch(nullptr, "MD5", nullptr), &EVP_MD_free);
    return fetched.get();
}

void ThrowUnless(int done, const char* what = "SHA-1 is not available") {
    if (done != 1) throw ErrorException(Error(ErrorNumber::Raised, what));
}

constexpr const char* kNoMd5 = "MD5 is not available";

// Tables for sixteen bytes at a time: entry b of table n is the value of the byte b with n zeros behind it.
using Crc16Tables = std::array<std::array<std::uint16_t, 256>, 16>;
constexpr Crc16Tables MakeCrc16Tables() {
    constexpr unsigned kPolynomial = 0xA001;
    Crc16Tables tables{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        unsigned value = byte;
        for (int bit = 0; bit < 8; ++bit) value = value >> 1 ^ (value & 1 ? kPolynomial : 0);
        tables[0][byte] = static_cast<std::uint16_t>(value);
    }
    for (std::size_t n = 1; n < tables.size(); ++n)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[n][byte] =
                static_cast<std::uint16_t>(tables[n - 1][byte] >> 8 ^ tables[0][tables[n - 1][byte] & 0xFF]);
    return tables;
}
constexpr Crc16Tables kCrc16 = MakeCrc16Tables();

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

void Crc16::Add(const void* bytes, std::size_t size) {
    const auto* at = static_cast<const unsigned char*>(bytes);
    unsigned value = value_;
    constexpr std::size_t kStep = kCrc16.size();
    for (; size >= kStep; size -= kStep, at += kStep) {
        value = kCrc16[kStep - 1][(value ^ at[0]) & 0xFF] ^ kCrc16[kStep - 2][(value >> 8) ^ at[1]];
        for (std::size_t i = 2; i < kStep; ++i) value ^= kCrc16[kStep - 1 - i][at[i]];
    }
    for (; size > 0; --size, ++at) value = value >> 8 ^ kCrc16[0][(value ^ *at) & 0xFF];
    value_ = static_cast<std::uint16_t>(value);
}

Md5::Md5() : context_(nullptr) {
    ThrowUnless(FetchedMd5() != nullptr ? 1 : 0, kNoMd5);
    context_ = EVP_MD_CTX_new();
    if (context_ == nullptr) throw std::bad_alloc();
    if (EVP_DigestInit_ex2(context_, FetchedMd5(), nullptr) == 1) return;
    EVP_MD_CTX_free(context_);
    ThrowUnless(0, kNoMd5);
}

Md5::Md5(const Md5& other) : context_(EVP_MD_CTX_new()) {
    if (context_ == nullptr) throw std::bad_alloc();
    if (EVP_MD_CTX_copy_ex(context_, other.context_) == 1) return;
    EVP_MD_CTX_free(context_);
    ThrowUnless(0, kNoMd5);
}

Md5::~Md5() {
    EVP_MD_CTX_free(context_);
}

void Md5::Add(const void* bytes, std::size_t size) {
    ThrowUnless(EVP_DigestUpdate(context_, bytes, size), kNoMd5);
}

Md5::Digest Md5::Finish() {
    Digest digest{};
    ThrowUnless(EVP_DigestFinal_ex(context_, digest.data(), nullptr), kNoMd5);
    return digest;
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

std::string HexText(const Md5::Digest& digest) {
    return HexOf(digest.data(), digest.size());
}

std::string HexText(const Sha1::Digest& digest) {
    return HexOf(digest.data(), digest.size());
}

}  // namespace vantrel
