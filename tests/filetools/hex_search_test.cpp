#include "filetools/hex_search.h"

#include <algorithm>
#include <set>
#include <vector>

#include "hex_support.h"

namespace vantrel {
namespace {

using Offsets = std::vector<std::uint64_t>;

class HexSearchTest : public testing::HexFilesTest {
  protected:
    // All stretches of differing bytes, as the steps in one direction find them from one end.
    Offsets Stretches(SearchDirection direction) {
        Offsets found;
        const bool forward = direction == SearchDirection::Forward;
        auto at = forward ? FindDifference(files, 0, direction, box.loop)
                          : FindOtherStretch(files, UINT64_MAX, direction, box.loop);
        for (; at && found.size() < 1'000; at = FindOtherStretch(files, *at, direction, box.loop))
            found.push_back(*at);
        if (!forward) std::reverse(found.begin(), found.end());
        return found;
    }

    PerSide<BytesOfFile> files;
};

TEST_F(HexSearchTest, FindsWhatASearchOfTheWholeTextFinds) {
    BytesOfFile& file = files[Side::Left];
    std::string content = Random(4);
    for (const std::size_t at : {BytesOfFile::kBlock - 2, 2 * BytesOfFile::kBlock, content.size() - 4})
        content.replace(at, 4, "neEd");
    Open(content, file);
    const auto find = [&](std::string_view wanted, std::uint64_t from, SearchDirection direction,
                          SearchCase letterCase = SearchCase::Exact) {
        std::uint64_t told = 0;
        const auto found = FindBytes(file, wanted, from, direction, letterCase, box.loop,
                                     [&](std::uint64_t done, std::uint64_t total) {
                                         EXPECT_LT(told, done);
                                         EXPECT_LE(done, total);
                                         told = done;
                                     });
        return found;
    };
    std::mt19937 engine(5);
    for (int round = 0; round < 60; ++round) {
        const std::size_t from = engine() % (content.size() + 10);
        const std::string wanted =
            round % 2 == 0 ? "neEd" : content.substr(engine() % (content.size() - 8), 6);
        const auto text = [](std::size_t found) {
            return found == std::string::npos ? std::optional<std::uint64_t>() : found;
        };
        ASSERT_EQ(text(content.find(wanted, from)), find(wanted, from, SearchDirection::Forward)) << round;
        ASSERT_EQ(text(content.rfind(wanted, from)), find(wanted, from, SearchDirection::Backward)) << round;
    }
    EXPECT_EQ(BytesOfFile::kBlock - 2, find("NEED", 0, SearchDirection::Forward, SearchCase::Ignored));
    EXPECT_EQ(content.size() - 4, find("NEED", UINT64_MAX, SearchDirection::Backward, SearchCase::Ignored));
    EXPECT_EQ(std::nullopt, find("NEED", 0, SearchDirection::Forward));
    box.loop.cancelled = true;
    EXPECT_THROW(find("nowhere", 0, SearchDirection::Forward), Cancelled);
}

// Against a look at each byte: both files random, at times one longer than the other, or nothing alike.
TEST_F(HexSearchTest, StretchesOfDifferencesAreFoundBothWays) {
    std::mt19937 engine(6);
    for (int round = 0; round < 8; ++round) {
        PerSide<std::string> contents;
        contents[Side::Left] = Random(7);
        contents[Side::Right] = contents[Side::Left];
        std::string& other = contents[Side::Right];
        for (int place = 0; place < 9; ++place) {
            std::size_t at = engine() % other.size();
            if (place % 3 == 0) at = BytesOfFile::kBlock * (1 + engine() % 2) - engine() % 3;
            other.replace(at, 1 + engine() % 4, 1, '#');
            other.resize(contents[Side::Left].size(), '#');
        }
        if (round % 2 == 0) other.resize(other.size() - engine() % 300'000);
        if (round == 3) other.assign(other.size(), '#');
        if (round == 4) other.clear();
        if (round == 5) other = contents[Side::Left];
        for (const Side side : kBothSides)
            Open(contents[side], files[side], side == Side::Left ? "left" : "right");
        Offsets expected;
        bool inside = false;
        for (std::size_t at = 0; at < contents[Side::Left].size(); ++at) {
            const bool differs = at >= other.size() || contents[Side::Left][at] != other[at];
            if (differs && !inside) expected.push_back(at);
            inside = differs;
        }
        if (expected.size() > 1'000) expected.resize(1'000);
        EXPECT_EQ(expected, Stretches(SearchDirection::Forward)) << round;
        if (expected.size() < 1'000) {
            EXPECT_EQ(expected, Stretches(SearchDirection::Backward)) << round;
        }
        EXPECT_EQ(expected.empty(), !FindDifference(files, UINT64_MAX, SearchDirection::Backward, box.loop))
            << round;
    }
    // From inside of a stretch.
    Open("ab####yz", files[Side::Left], "left");
    Open("xb0123yz", files[Side::Right], "right");
    EXPECT_EQ(0U, FindOtherStretch(files, 4, SearchDirection::Backward, box.loop));
    EXPECT_EQ(std::nullopt, FindOtherStretch(files, 4, SearchDirection::Forward, box.loop));
    EXPECT_EQ(std::nullopt, FindOtherStretch(files, 0, SearchDirection::Backward, box.loop));
    EXPECT_EQ(5U, FindDifference(files, 7, SearchDirection::Backward, box.loop));
}

}  // namespace
}  // namespace vantrel
