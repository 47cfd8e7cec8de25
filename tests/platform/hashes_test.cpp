#include "platform/hashes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace vantrel {
namespace {

TEST(HashesTest, Crc32PublishedValues) {
    EXPECT_EQ(Crc32Of(""), 0U);
    EXPECT_EQ(Crc32Of("123456789"), 0xCBF43926U);
    EXPECT_EQ(Crc32Of("a"), 0xE8B7BE43U);
    EXPECT_EQ(HexText(0xCBF43926U), "CBF43926");
    EXPECT_EQ(HexText(0x2AU), "0000002A");
}

TEST(HashesTest, Sha1PublishedValues) {
    ASSERT_TRUE(Sha1::IsAvailable());
    EXPECT_EQ(HexText(Sha1Of("")), "DA39A3EE5E6B4B0D3255BFEF95601890AFD80709");
    EXPECT_EQ(HexText(Sha1Of("abc")), "A9993E364706816ABA3E25717850C26C9CD0D89D");
    EXPECT_EQ(HexText(Sha1Of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
              "84983E441C3BD26EBAAE4AA1F95129E5E54670F1");
    EXPECT_EQ(HexText(Sha1Of(std::string(1'000'000, 'a'))), "34AA973CD4C4DAA4F61EEB2BDBAD27316534016F");
}

TEST(HashesTest, Crc16AndMd5PublishedValues) {
    const auto crc16 = [](std::string_view text) {
        Crc16 crc;
        crc.Add(text.data(), text.size());
        return crc.Value();
    };
    EXPECT_EQ(0U, crc16(""));
    EXPECT_EQ(0xBB3DU, crc16("123456789"));
    const auto md5 = [](std::string_view text) {
        Md5 whole;
        whole.Add(text.data(), text.size());
        return HexText(whole.Finish());
    };
    EXPECT_EQ("D41D8CD98F00B204E9800998ECF8427E", md5(""));
    EXPECT_EQ("900150983CD24FB0D6963F7D28E17F72", md5("abc"));
    // A copy goes its own way; pieces of any length give what the whole gives.
    std::string bytes(1'000, '\0');
    std::mt19937 random(6);
    for (char& byte : bytes) byte = static_cast<char>(random());
    for (std::size_t cut = 0; cut < 40; ++cut) {
        Crc16 crc;
        crc.Add(bytes.data(), cut);
        crc.Add(bytes.data() + cut, bytes.size() - cut);
        ASSERT_EQ(crc16(bytes), crc.Value());
        Md5 first;
        first.Add(bytes.data(), cut);
        Md5 second(first);
        first.Add("x", 1);
        second.Add(bytes.data() + cut, bytes.size() - cut);
        ASSERT_EQ(md5(bytes), HexText(second.Finish()));
        ASSERT_EQ(md5(bytes.substr(0, cut) + "x"), HexText(first.Finish()));
    }
}

TEST(HashesTest, PiecesGiveWhatTheWholeGives) {
    std::mt19937 random(6);
    std::string bytes(10'000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    Crc32 crc;
    Sha1 sha;
    for (int round = 0; round < 50; ++round) {
        crc.Restart();
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t piece = std::min<std::size_t>(random() % 300, bytes.size() - at);
            crc.Add(bytes.data() + at, piece);
            sha.Add(bytes.data() + at, piece);
            at += piece;
        }
        ASSERT_EQ(crc.Value(), Crc32Of(bytes));
        ASSERT_EQ(sha.Finish(), Sha1Of(bytes));
    }
}

}  // namespace
}  // namespace vantrel
