#include "fileops/tree_size.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <tuple>

#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

class TreeSizeTest : public ::testing::TestWithParam<std::int32_t> {
  public:
    // 3 folders of 3 of 3, each of the 40 folders with the files "1", "22" and "333" and a link of 4 bytes.
    TreeSizeTest() { MakeLevel("tree", 3); }
    void MakeLevel(const std::string& folder, int levels) {
        for (const char* content : {"1", "22", "333"}) box.folder.Write(folder + "/" + content, content);
        std::filesystem::create_symlink("/bin", box.folder / (folder + "/link"));
        for (int i = 0; i < 3 && levels > 0; ++i) MakeLevel(folder + "/f" + std::to_string(i), levels - 1);
    }
    Error Count(const std::string& name, const bool* cancel = nullptr) {
        const Toolbox& own = box.Get();
        const Toolbox tools{own, own.reporter, own.log, &jobs};
        return CountTreeSize(tools, box.folder / name, size, cancel);
    }

  protected:
    FaultySystemCalls calls;
    TestToolbox box{calls};
    std::int32_t jobs = GetParam();
    TreeSize size;
};
INSTANTIATE_TEST_SUITE_P(Jobs, TreeSizeTest, ::testing::Values(1, 4));

TEST_P(TreeSizeTest, CountsWhatACopyWouldTake) {
    ASSERT_TRUE(Count("tree").IsOk());
    EXPECT_EQ(Currency::FromWhole(400), size.bytes);
    EXPECT_EQ(120U, size.files);
    EXPECT_EQ(39U, size.folders);
    ASSERT_TRUE(Count("tree/333").IsOk());
    EXPECT_EQ(Currency::FromWhole(3), size.bytes);
    EXPECT_EQ(1U, size.files);
    ASSERT_TRUE(Count("tree/link").IsOk());
    EXPECT_EQ(Currency::FromWhole(4), size.bytes);
    EXPECT_EQ(0U, size.files);
    EXPECT_EQ(ENOENT, Count("gone/away").SystemNumber());
}

TEST_P(TreeSizeTest, ATreeThatCannotBeListedWhollyIsAnErrorAndTheRestIsCounted) {
    // The first listing is that of the tree itself, the fortieth one far below it.
    for (const auto& [listing, least, most] : {std::tuple(1U, 0U, 0U), std::tuple(40U, 100U, 120U)}) {
        calls.ResetCount();
        calls.FailAt(Call::GetDents, listing, EIO);
        EXPECT_EQ(EIO, Count("tree").SystemNumber()) << listing;
        EXPECT_GE(size.files, least);
        EXPECT_LE(size.files, most);
        calls.ClearFaults();
    }
}

TEST_P(TreeSizeTest, ACancelEndsTheCount) {
    bool cancel = true;
    EXPECT_TRUE(Count("tree", &cancel).IsOk());
    EXPECT_LT(size.files, 120U);
    EXPECT_GT(box.loop.yields, 0U);
}

}  // namespace
}  // namespace vantrel::testing
