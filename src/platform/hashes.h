#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace vantrel {

// CRC-32 as in IEEE 802.3, reflected (polynomial 0xEDB88320). The value of no bytes is 0.
class Crc32 {
  public:
    void Add(const void* bytes, std::size_t size);
    std::uint32_t Value() const { return value_; }
    void Restart() { value_ = 0; }

  private:
    std::uint32_t value_ = 0;
};

// CRC-16 as in ARC, reflected (polynomial 0xA001). The value of no bytes is 0.
class Crc16 {
  public:
    void Add(const void* bytes, std::size_t size);
    std::uint16_t Value() const { return value_; }

  private:
    std::uint16_t value_ = 0;
};

// MD5 as in RFC 1321. A copy goes on by itself from what was added so far.
class Md5 {
  public:
    using Digest = std::array<unsigned char, 16>;

    // Throws ErrorException where the library of this machine offers no MD5.
    Md5();
    Md5(const Md5& other);
    Md5& operator=(const Md5&) = delete;
    ~Md5();

    void Add(const void* bytes, std::size_t size);
    // The digest of all that was added; nothing may be added afterwards.
    Digest Finish();

  private:
    evp_md_ctx_st* context_;
};

// SHA-1 as in FIPS 180-4.
class Sha1 {
  public:
    using Digest = std::array<unsigned char, 20>;

    // Throws ErrorException where the library of this machine offers no SHA-1 (IsAvailable).
    Sha1();
    ~Sha1();
    Sha1(const Sha1&) = delete;
    Sha1& operator=(const Sha1&) = delete;
    static bool IsAvailable();

    void Add(const void* bytes, std::size_t size);
    // The digest of all that was added; the object begins anew.
    Digest Finish();
    // Forgets what was added.
    void Restart();

  private:
    evp_md_ctx_st* context_;
};

std::uint32_t Crc32Of(std::string_view bytes);
Sha1::Digest Sha1Of(std::string_view bytes);

// Upper-case hexadecimal, with all leading zeros: 8 digits, 40 digits.
std::string HexText(std::uint32_t value);
std::string HexText(const Sha1::Digest& digest);
std::string HexText(const Md5::Digest& digest);

}  // namespace vantrel
