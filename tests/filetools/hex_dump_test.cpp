#include "filetools/hex_dump.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <random>

#include "hex_support.h"

namespace vantrel {
namespace {

class HexDumpTest : public testing::HexFilesTest {};

std::span<const unsigned char> Bytes(std::string_view text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

TEST_F(HexDumpTest, LinesHaveTheOneForm) {
    std::string all;
    AppendHexDump(16, Bytes(std::string_view("Hello world\n\xFF\0 ~\x7F|", 18)), 8, "\n", all);
    EXPECT_EQ(
        "00000010  48 65 6c 6c 6f 20 77 6f  72 6c 64 0a ff 00 20 7e  |Hello world... ~|\n"
        "00000020  7f 7c                                             |.||\n",
        all);
    std::string line;
    AppendHexDumpLine(0x1'2345'6780, Bytes("x"), HexDumpOffsetDigits(0x1'2345'6781), line);
    EXPECT_EQ("123456780  78", line.substr(0, 13));
    EXPECT_EQ(8U, HexDumpOffsetDigits(0));
    EXPECT_EQ(8U, HexDumpOffsetDigits(std::uint64_t{1} << 32));
    EXPECT_EQ(9U, HexDumpOffsetDigits((std::uint64_t{1} << 32) + 1));
    EXPECT_EQ(16U, HexDumpOffsetDigits(UINT64_MAX));
    for (const std::size_t byte : {std::size_t{0}, std::size_t{7}, std::size_t{8}, std::size_t{15}}) {
        std::string bytes(16, '.');
        bytes[byte] = '@';
        line.clear();
        AppendHexDumpLine(0, Bytes(bytes), 9, line);
        EXPECT_EQ(line.find("40"), HexDumpDigitsColumn(byte, 9)) << line;
        EXPECT_EQ(line.find('@'), HexDumpCharacterColumn(byte, 9)) << line;
    }
}

TEST_F(HexDumpTest, WhatUsersTypeIsTaken) {
    for (const auto& [text, bytes] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"48 65 6c", "Hel"}, {" 48656C\t", "Hel"}, {"0x4865", "He"}})
        EXPECT_EQ(bytes, BytesFromHexDigits(text)) << text;
    for (const std::string_view text : {"", " ", "4", "4 8", "48 6", "4g", "0x"})
        EXPECT_EQ(std::nullopt, BytesFromHexDigits(text)) << text;
    for (const auto& [text, offset] : std::initializer_list<std::pair<std::string_view, std::uint64_t>>{
             {"0", 0},
             {" 1234 ", 1'234},
             {"0x1F", 31},
             {"&H10", 16},
             {"ffh", 255},
             {"18446744073709551615", UINT64_MAX}})
        EXPECT_EQ(offset, OffsetFromText(text)) << text;
    for (const std::string_view text :
         {"", "h", "0x", "12a", "-1", "1 2", "18446744073709551616", "0x1ffffffffffffffff"})
        EXPECT_EQ(std::nullopt, OffsetFromText(text)) << text;
}

// Wherever one looks, across blocks too, the bytes are those of the file.
TEST_F(HexDumpTest, BytesAreThoseOfTheFile) {
    BytesOfFile file;
    const std::string content = Open(Random(1), file);
    std::mt19937 engine(2);
    for (int round = 0; round < 300; ++round) {
        const std::size_t length = engine() % (BytesOfFile::kBlock + 1);
        const std::size_t offset = round % 3 == 0
                                       ? (engine() % 4) * BytesOfFile::kBlock - (round != 0 ? 5 : 0)
                                       : engine() % (content.size() + 100);
        const auto bytes = file.At(offset, length);
        const std::string expected = offset < content.size() ? content.substr(offset, length) : "";
        ASSERT_EQ(expected, std::string(bytes.begin(), bytes.end())) << offset << " " << length;
    }
    EXPECT_EQ((content.size() + 15) / 16, file.LineCount());
    EXPECT_EQ("00000000", file.Line(0, 8).substr(0, 8));
}

TEST_F(HexDumpTest, AFileThatShrinksSaysSo) {
    BytesOfFile file;
    const std::string content = Open(Random(3), file);
    ASSERT_EQ(0, truncate((box.folder / "file").c_str(), 100));
    EXPECT_EQ(100U, file.At(0, 1'000).size());
    EXPECT_EQ("00000070  The file has become shorter.", file.Line(7, 8));
    EXPECT_THROW(WriteHexDump(file, 0, file.Size(), "\n", box.loop, [](std::string_view) {}), ErrorException);
    box.folder.Write("dump.txt", "old");
    EXPECT_FALSE(SaveHexDump(box.Get(), file, box.folder / "dump.txt", nullptr).IsOk());
    EXPECT_EQ("old", box.folder.Read("dump.txt"));
}

TEST_F(HexDumpTest, SavingWritesAllOrNothing) {
    BytesOfFile file;
    const std::string content = Open(Random(7, 200'000), file);
    std::uint64_t told = 0;
    ASSERT_TRUE(
        SaveHexDump(box.Get(), file, box.folder / "dump.txt", [&](std::uint64_t done, std::uint64_t total) {
            EXPECT_EQ(content.size(), total);
            told = done;
        }).IsOk());
    EXPECT_EQ(content.size(), told);
    std::string expected;
    AppendHexDump(0, Bytes(content), 8, "\r\n", expected);
    EXPECT_EQ(expected, box.folder.Read("dump.txt"));

    box.loop.yields = 0;
    box.loop.cancelAt = 2;
    EXPECT_THROW(static_cast<void>(SaveHexDump(box.Get(), file, box.folder / "dump.txt", nullptr)),
                 Cancelled);
    EXPECT_EQ(expected, box.folder.Read("dump.txt"));

    BytesOfFile none;
    box.folder.Write("empty", "");
    EXPECT_FALSE(DoHexDump(box.Get(), box.folder / "empty", none).IsOk());
    EXPECT_FALSE(DoHexDump(box.Get(), box.folder.Path(), none).IsOk());
    EXPECT_FALSE(DoHexDump(box.Get(), box.folder / "missing", none).IsOk());
}

}  // namespace
}  // namespace vantrel
