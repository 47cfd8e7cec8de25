#include "platform/names/paths.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace vantrel {
namespace {

TEST(PathsTest, EndsAndJoins) {
    for (const auto& [path, normal, cut, parent] : {
             std::array{"", "", "", ""},
             std::array{"/", "/", "/", ""},
             std::array{"//", "/", "/", ""},
             std::array{"/a", "/a/", "/a", "/"},
             std::array{"/a/b//", "/a/b/", "/a/b", "/a"},
             std::array{"a/b", "a/b/", "a/b", "a"},
             std::array{"a", "a/", "a", ""},
         }) {
        EXPECT_EQ(NormalizePath(path), normal) << path;
        EXPECT_EQ(WithoutTrailingSlash(path), cut) << path;
        EXPECT_EQ(GetParentFolderName(path), parent) << path;
    }
    for (const char* folder : {"/f", "/f/", "/f//"}) {
        EXPECT_EQ(JoinPath(folder, "n"), "/f/n");
        EXPECT_EQ(JoinPath(folder, "/n/"), "/f/n/");
    }
    EXPECT_EQ(JoinPath("/", "n"), "/n");
    EXPECT_EQ(JoinPath("", "n"), "n");
    EXPECT_EQ(JoinPath("/f", ""), "/f");
}

TEST(PathsTest, Items) {
    EXPECT_EQ(GetLastItemInPath("/a/b"), "b");
    EXPECT_EQ(GetLastItemInPath("/a/"), "");
    EXPECT_EQ(GetLastItemInPath("ab"), "ab");
    EXPECT_EQ(GetNextSlashPos("/ab/c", 1), 1U);
    EXPECT_EQ(GetNextSlashPos("/ab/c", 2), 4U);
    EXPECT_EQ(GetNextSlashPos("/ab/c", 5), 0U);
    EXPECT_EQ(GetNextSlashPos("/ab/c", 99), 0U);
    EXPECT_EQ(RemainingString("/a/b", "/a/"), "b");
    EXPECT_EQ(RemainingString("/a/b", "/x"), "/a/b");
    EXPECT_EQ(GetFilenameExtension("a.tar.gz"), "gz");
    for (const char* without : {"a", "a.", ".bashrc", "/x.y/a", ""}) {
        EXPECT_EQ(GetFilenameExtension(without), "") << without;
    }
}

TEST(PathsTest, ProperCase) {
    EXPECT_EQ(ProperCase("//a/./b//C/"), "/a/b/C/");
    EXPECT_EQ(ProperCase("/a/../b/."), "/a/../b/");
    EXPECT_EQ(ProperCase("a/..b/.c"), "a/..b/.c");
    EXPECT_EQ(ProperCase("/./"), "/");
    EXPECT_EQ(ProperCase(""), "");
}

TEST(PathsTest, SizesWithAUnit) {
    const std::pair<std::int64_t, const char*> cases[]{
        {0, "0 Bytes"},
        {1, "1 Byte"},
        {1023, "1023 Bytes"},
        {1024, "1 KB"},
        {1536, "1.5 KB"},
        {1024 * 9 / 4, "2.25 KB"},
        {1024 + 10, "1.01 KB"},
        {1024 * 1024 - 1, "1 MB"},
        {1024 * 1024 - 6, "1023.99 KB"},
        {std::int64_t{3} << 30, "3 GB"},
        {std::int64_t{5} << 40, "5 TB"},
        {922'337'203'685'477, "838.86 TB"},
        {-1, "-1 Byte"},
        {-2048, "-2 KB"},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(ConvertBytesToCorrectByteTypeString(Currency::FromWhole(bytes)), text) << bytes;
    }
}

}  // namespace
}  // namespace vantrel
