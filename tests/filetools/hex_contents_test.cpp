#include "filetools/hex_contents.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "filetools/scroll_scale.h"
#include "hex_support.h"
#include "support/faulty_system_calls.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TestToolbox;

class HexContentsTest : public ::testing::Test {
  protected:
    void Open(Side side, std::string_view content, EmptyFile empty = EmptyFile::Taken) {
        const std::string name = side == Side::Left ? "left" : "right";
        box.folder.Write(name, content);
        EXPECT_TRUE(contents.Open(box.Get(), side, box.folder / name, empty).IsOk());
    }
    // A letter for each byte of a line: the character where it is not marked, else "C" or "A".
    std::string Marks(Side side, std::uint64_t number) {
        std::string marks;
        for (const ByteMark mark : contents.LineAt(side, number).marks)
            marks += mark == ByteMark::None ? '.' : mark == ByteMark::Changed ? 'C' : 'A';
        return marks;
    }

    FaultySystemCalls calls;
    TestToolbox box{calls};
    HexContents contents;
};

TEST_F(HexContentsTest, BytesThatDifferAreMarkedOnBothSides) {
    Open(Side::Left, "0123456789abcdefgh");
    EXPECT_EQ("................", Marks(Side::Left, 0));
    Open(Side::Right, "0123#567");
    EXPECT_EQ("....C...AAAAAAAA", Marks(Side::Left, 0));
    EXPECT_EQ("....C...AAAAAAAA", Marks(Side::Right, 0));
    EXPECT_EQ("AA..............", Marks(Side::Right, 1));
    EXPECT_EQ("", contents.LineAt(Side::Right, 1).text);
    EXPECT_EQ(18U, contents.Size());
    EXPECT_EQ(2U, contents.LineCount());
    Open(Side::Right, "");
    EXPECT_EQ("AAAAAAAAAAAAAAAA", Marks(Side::Right, 0));
    contents.Close(Side::Left);
    EXPECT_TRUE(contents.IsEmpty());
    EXPECT_FALSE(contents.Open(box.Get(), Side::Left, box.folder / "right", EmptyFile::Refused).IsOk());
}

// Offsets have as many digits as the longer of the two files needs.
TEST_F(HexContentsTest, LinesOfBothFilesHaveTheSameColumns) {
    Open(Side::Left, "abc");
    box.folder.Write("large", "");
    ASSERT_EQ(0, truncate((box.folder / "large").c_str(), (off_t{1} << 36) + 1));
    ASSERT_TRUE(contents.Open(box.Get(), Side::Right, box.folder / "large", EmptyFile::Taken).IsOk());
    EXPECT_EQ("0000000000  61 62 63", contents.LineAt(Side::Left, 0).text.substr(0, 20));
    EXPECT_EQ("1000000000  00", contents.LineAt(Side::Right, std::uint64_t{1} << 32).text.substr(0, 14));
}

TEST_F(HexContentsTest, WhatCannotBeReadSaysSoAndIsMarkedNowhere) {
    Open(Side::Left, "left text");
    Open(Side::Right, "right text");
    calls.FailAll(Call::PRead, EIO);
    for (const Side side : kBothSides) {
        EXPECT_EQ("................", Marks(side, 0));
        EXPECT_THAT(contents.LineAt(side, 0).text, ::testing::StartsWith("00000000  Device I/O error"));
    }
    EXPECT_THROW(static_cast<void>(ReadBytes(contents.Files()[Side::Left], {0, 4})), ErrorException);
    calls.ClearFaults();
    EXPECT_EQ("left", ReadBytes(contents.Files()[Side::Left], {0, 4}));
}

TEST_F(HexContentsTest, ChangesOfAFileAreTold) {
    const auto write = [&](std::string_view content, double time) {
        box.folder.Write("left", content, time);
    };
    const auto look = [&] {
        const bool isNews = contents.LookAgain(box.files, Side::Left);
        EXPECT_FALSE(contents.LookAgain(box.files, Side::Left));
        EXPECT_TRUE(isNews);
        return contents.Change(Side::Left);
    };
    write("0123456789", 1'000);
    Open(Side::Left, "0123456789");
    EXPECT_FALSE(contents.LookAgain(box.files, Side::Left));
    // A block that was read before does not hide what became of the file.
    EXPECT_THAT(contents.LineAt(Side::Left, 0).text, ::testing::EndsWith("|0123456789|"));
    write("01234", 1'001);
    EXPECT_EQ(FileChange::Shorter, look());
    EXPECT_THAT(contents.LineAt(Side::Left, 0).text, ::testing::EndsWith("|01234|"));
    write("##########", 1'002);
    EXPECT_EQ(FileChange::Changed, look());
    EXPECT_THAT(contents.LineAt(Side::Left, 0).text, ::testing::EndsWith("|##########|"));
    write("0123456789a", 1'003);
    EXPECT_EQ(FileChange::Longer, look());
    EXPECT_EQ(10U, contents.Size());
    std::filesystem::remove(box.folder / "left");
    EXPECT_EQ(FileChange::Gone, look());
    write("0123456789", 1'000);
    EXPECT_EQ(FileChange::Exchanged, look());
    calls.FailAll(Call::Statx, EACCES);
    EXPECT_EQ(FileChange::NotTold, look());
}

TEST_F(HexContentsTest, TheSelectionStaysInsideTheFiles) {
    EXPECT_EQ(ByteRange(), contents.Selection());
    Open(Side::Left, std::string(100, 'x'));
    contents.MoveTo(40, SelectionStep::Move);
    contents.MoveTo(38, SelectionStep::Extend);
    EXPECT_EQ((ByteRange{38, 3}), contents.Selection());
    contents.MoveTo(1'000, SelectionStep::Extend);
    EXPECT_EQ((ByteRange{40, 60}), contents.Selection());
    contents.Select({95, 1'000});
    EXPECT_EQ((ByteRange{95, 5}), contents.Selection());
    EXPECT_EQ(95U, contents.Cursor());
    Open(Side::Left, "short");
    EXPECT_EQ((ByteRange{0, 1}), contents.Selection());
}

TEST_F(HexContentsTest, WhatIsCopiedIsWhatIsSelected) {
    Open(Side::Left, "0123456789abcdefgrün\n\x01 end");
    BytesOfFile& file = contents.Files()[Side::Left];
    EXPECT_EQ("66 67 72", HexDigitsOf(ReadBytes(file, {15, 3})));
    EXPECT_EQ("grün\n", TextOfBytes(ReadBytes(file, {16, 6})));
    EXPECT_EQ("gr..n..", TextOfBytes(ReadBytes(file, {16, 7})));
    EXPECT_EQ("r.", TextOfBytes(ReadBytes(file, {17, 2})));
    EXPECT_EQ("d", TextOfBytes(ReadBytes(file, {26, 100})));
    EXPECT_EQ("00000000  30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66  |0123456789abcdef|\n",
              DumpOfBytes(file, {3, 13}, box.loop));
}

// The ends of a scroll bar are the ends of the file, however long that is, and positions keep their order.
TEST(ScrollScale, LeadsToEveryEndAndBack) {
    for (const std::uint64_t last : {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{1} << 30,
                                     (std::uint64_t{1} << 30) + 1, std::uint64_t{1} << 59, UINT64_MAX >> 4}) {
        const ScrollScale scale(last);
        EXPECT_EQ(0U, scale.TopOf(0));
        EXPECT_EQ(last, scale.TopOf(scale.Maximum()));
        EXPECT_EQ(scale.Maximum(), scale.PositionOf(last));
        EXPECT_EQ(scale.Maximum(), scale.PositionOf(UINT64_MAX));
        std::mt19937_64 engine(last);
        for (int round = 0; round < 200; ++round) {
            const std::uint64_t top = last == 0 ? 0 : engine() % last;
            const int position = scale.PositionOf(top);
            EXPECT_LE(position, scale.Maximum());
            EXPECT_EQ(position, scale.PositionOf(scale.TopOf(position)));
            if (last <= std::uint64_t{1} << 30) {
                EXPECT_EQ(top, scale.TopOf(position));
            }
        }
    }
}

}  // namespace
}  // namespace vantrel
