#include "filetools/version_stamps.h"

#include <gtest/gtest.h>

#include <random>

#include "support/test_toolbox.h"

namespace vantrel {
namespace {

using testing::TestToolbox;

void Put16(std::string& bytes, std::size_t at, std::uint32_t value) {
    bytes[at] = static_cast<char>(value & 0xFF);
    bytes[at + 1] = static_cast<char>(value >> 8 & 0xFF);
}
void Put32(std::string& bytes, std::size_t at, std::uint32_t value) {
    Put16(bytes, at, value & 0xFFFF);
    Put16(bytes, at + 2, value >> 16);
}

// Where things stand in the files that are made here.
constexpr std::size_t kHeaderAt = 0x80, kSectionsFileOffset = 0x400;
constexpr std::uint32_t kSectionAddress = 0x2000, kResourceOffset = 0x40;  // of the directory in its section

// A PE file with nothing but a version resource: directories of three levels with an icon and a version, the
// languages, the entry of the data, the data.
std::string MakePe(const VersionRecord& record, bool wide) {
    std::string file(0x800, '\0');
    file.replace(0, 2, "MZ");
    Put32(file, 0x3C, kHeaderAt);
    file.replace(kHeaderAt, 4, std::string_view("PE\0\0", 4));
    const std::size_t optional = kHeaderAt + 24, directories = wide ? 112 : 96;
    const std::size_t optionalSize = directories + std::size_t{16} * 8;
    Put16(file, kHeaderAt + 6, 2);  // sections
    Put16(file, kHeaderAt + 20, static_cast<std::uint32_t>(optionalSize));
    Put16(file, optional, wide ? 0x20B : 0x10B);
    Put32(file, optional + directories - 4, 16);
    Put32(file, optional + directories + std::size_t{2} * 8, kSectionAddress + kResourceOffset);
    Put32(file, optional + directories + std::size_t{2} * 8 + 4, 0x200);
    const std::size_t sections = optional + optionalSize;
    const auto section = [&](std::size_t number, std::uint32_t address, std::uint32_t offset,
                             std::uint32_t size) {
        Put32(file, sections + number * 40 + 8, size);
        Put32(file, sections + number * 40 + 12, address);
        Put32(file, sections + number * 40 + 16, size);
        Put32(file, sections + number * 40 + 20, offset);
    };
    section(0, 0x1000, 0x300, 0x100);
    section(1, kSectionAddress, kSectionsFileOffset, 0x400);

    const std::size_t root = kSectionsFileOffset + kResourceOffset;
    const auto directory = [&](std::size_t at, std::vector<std::pair<std::uint32_t, std::uint32_t>> entries) {
        Put16(file, root + at + 14, static_cast<std::uint32_t>(entries.size()));
        for (std::size_t entry = 0; entry < entries.size(); ++entry) {
            Put32(file, root + at + 16 + entry * 8, entries[entry].first);
            Put32(file, root + at + 16 + entry * 8 + 4, entries[entry].second);
        }
    };
    directory(0, {{3, 0x80000020}, {16, 0x80000040}});
    directory(0x20, {{1, 0x80000060}});
    directory(0x40, {{1, 0x80000060}});
    directory(0x60, {{0x409, 0x80}});
    Put32(file, root + 0x80, kSectionAddress + kResourceOffset + 0xA0);
    Put32(file, root + 0x84, 92);
    const std::size_t data = root + 0xA0;
    Put16(file, data, 92);
    Put16(file, data + 2, 52);
    const std::string_view key = "VS_VERSION_INFO";
    for (std::size_t letter = 0; letter < key.size(); ++letter) file[data + 6 + letter * 2] = key[letter];
    Put32(file, data + 40, 0xFEEF04BD);
    Put32(file, data + 48, record.dwFileVersionMS);
    Put32(file, data + 52, record.dwFileVersionLS);
    Put32(file, data + 68, record.dwFileFlags);
    return file;
}

class VersionStampsTest : public ::testing::Test {
  protected:
    bool Read(std::string_view content, VersionRecord& record) {
        box.folder.Write("file", content);
        return GetVersionRecord(box.files, box.folder / "file", record);
    }
    TestToolbox box;
};

constexpr VersionRecord kOneToFour{0x0001'0002, 0x0003'0004, 0};

TEST_F(VersionStampsTest, BothWidthsAreRead) {
    for (const bool wide : {false, true}) {
        VersionRecord record;
        EXPECT_TRUE(Read(MakePe(kOneToFour, wide), record)) << wide;
        EXPECT_EQ(kOneToFour, record);
        EXPECT_EQ("1.2.3.4", GetFileVersionString(box.Get(), box.folder / "file"));
    }
    VersionRecord record;
    for (const std::string_view content : {"", "MZ", "#!/bin/sh\n"}) EXPECT_FALSE(Read(content, record));
    EXPECT_EQ("No version information is available", GetFileVersionString(box.Get(), box.folder / "file"));
    EXPECT_FALSE(GetVersionRecord(box.files, box.folder / "missing", record));
    EXPECT_FALSE(GetVersionRecord(box.files, box.folder.Path(), record));
    EXPECT_TRUE(box.messages.shown.empty());
}

TEST_F(VersionStampsTest, TextsRoundThePairsAndMarkPatches) {
    EXPECT_EQ("1.2.3.4*", VersionText({0x0001'0002, 0x0003'0004, 4}));
    EXPECT_EQ("1.2.3.4", VersionText({0x0001'0002, 0x0003'0004, 0xFFFB}));
    // Half a part goes to the even one; a whole one of 65,535 is negative.
    EXPECT_EQ("2.32768.2.32768", VersionText({0x0001'8000, 0x0002'8000, 0}));
    EXPECT_EQ("6.40000.0.65535", VersionText({0x0005'9C40, 0xFFFF'FFFF, 0}));
    EXPECT_EQ("-32768.0.0.0", VersionText({0x8000'0000, 0, 0}));
}

TEST_F(VersionStampsTest, RecordsCompareByTheirPartsAsSignedNumbers) {
    const VersionRecord later{0x0001'0002, 0x0003'0005, 0};
    EXPECT_EQ(VersionOrder::FirstIsLess, CompareVersionRecords(kOneToFour, later));
    EXPECT_EQ(VersionOrder::FirstIsGreater, CompareVersionRecords(later, kOneToFour));
    EXPECT_EQ(VersionOrder::Equal, CompareVersionRecords(later, later));
    EXPECT_EQ(VersionOrder::FirstIsLess, CompareVersionRecords({0x8000'0000, 0, 0}, {0, 0, 0}));
    EXPECT_EQ(VersionOrder::FirstIsLess, CompareVersionRecords({0x0001'FFFF, 9, 0}, {0x0001'0000, 0, 0}));
    EXPECT_EQ(VersionOrder::FirstIsGreater, CompareVersionRecords({0x0002'0000, 0, 0}, {0x0001'7FFF, 9, 0}));
}

// Cut off anywhere, pointing outside, in circles, or lying about lengths: no version, or a version, and an
// end.
TEST_F(VersionStampsTest, DamagedFilesAreNoTrouble) {
    std::mt19937 engine(20'260'101);
    VersionRecord record;
    for (const bool wide : {false, true}) {
        const std::string whole = MakePe(kOneToFour, wide);
        const std::size_t needed = kSectionsFileOffset + kResourceOffset + 0xA0 + 92;
        for (std::size_t size = 0; size < whole.size(); size += 37)
            EXPECT_EQ(size >= needed, Read(whole.substr(0, size), record)) << size;
        for (int round = 0; round < 500; ++round) {
            std::string damaged = whole;
            for (unsigned changes = 1 + engine() % 4; changes > 0; --changes) {
                const std::size_t at = engine() % (needed - 4);
                if (engine() % 2 == 0)
                    Put32(damaged, at,
                          engine() % 3 == 0 ? 0xFFFF'FFFF : static_cast<std::uint32_t>(engine()));
                else
                    damaged[at] = static_cast<char>(engine());
            }
            Read(damaged, record);
        }
    }
    // A directory that leads to itself.
    std::string circle = MakePe(kOneToFour, false);
    Put32(circle, kSectionsFileOffset + kResourceOffset + 0x60 + 16 + 4, 0x80000060);
    EXPECT_FALSE(Read(circle, record));
}

}  // namespace
}  // namespace vantrel
