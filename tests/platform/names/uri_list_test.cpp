#include "platform/names/uri_list.h"

#include <gmock/gmock.h>

#include <random>

#include "platform/names/names.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;

TEST(UriList, TakesFilesOfThisMachineOnly) {
    EXPECT_THAT(PathsFromUriList("# comment\r\nfile:///home/anna/a%20b.txt\r\n\r\nhttp://example.org/x\n"
                                 "file://localhost/etc/hosts\r\nFILE:/tmp/x?query\nfile://other/share/y\r\n"
                                 "file:relative\nfile:///100%25\nfile:///odd%zz%4"),
                ElementsAre("/home/anna/a b.txt", "/etc/hosts", "/tmp/x", "/100%", "/odd%zz%4"));
    EXPECT_EQ(PathFromFileUri("file:///a%00b"), "");
}

// A name is any bytes but "/" and NUL, and comes through drag and drop as it stands on the disk.
TEST(UriList, KeepsEveryName) {
    std::mt19937 random(7);
    std::vector<std::string> paths;
    for (int i = 0; i < 500; ++i) {
        std::string bytes = "/x/";
        for (int length = 1 + i % 40; length > 0; --length) {
            const char byte = static_cast<char>(1 + random() % 255);
            bytes += byte == '/' ? '_' : byte;
        }
        paths.push_back(NameFromSystem(bytes));
    }
    EXPECT_EQ(PathsFromUriList(UriListFromPaths(paths)), paths);
}

}  // namespace
}  // namespace vantrel
