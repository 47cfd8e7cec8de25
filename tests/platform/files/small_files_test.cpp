#include "platform/files/small_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel::testing {
namespace {

std::size_t OpenDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// The way of this machine, if it has one, and one that every machine has.
class SmallFilesTest : public ::testing::TestWithParam<bool> {
  protected:
    SmallFilesTest() { faulty.readsSmallFiles = true; }
    SystemCalls& Calls() { return GetParam() ? SystemCallsOfProcess() : faulty; }

    FaultySystemCalls faulty;
    TempFolder folder;
};

TEST_P(SmallFilesTest, AreReadWholeOrNotAtAll) {
    constexpr std::size_t kLeast = 4'096;
    std::vector<std::string> names;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, kLeast - 1, kLeast, kLeast + 1, 2 * kLeast,
                                   SmallFiles::kBytes - 1, SmallFiles::kBytes, 7 * SmallFiles::kBytes}) {
        names.push_back(std::to_string(size));
        std::string bytes(size, 0);
        std::generate(bytes.begin(), bytes.end(),
                      [&, i = size]() mutable { return static_cast<char>(i++ % 251); });
        folder.Write(names.back(), bytes);
    }
    const std::size_t sized = names.size();
    folder.MakeFolder("folder");
    std::filesystem::create_symlink("1", folder / "link");
    ASSERT_EQ(0, mkfifo((folder / "pipe").c_str(), 0600));
    const int pipe = open((folder / "pipe").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_EQ(4, write(pipe, "kept", 4));
    for (const char* other : {"missing", "folder", "link", "pipe"}) names.emplace_back(other);
    names.emplace_back("1\0", 2);

    const FileSystem files(Calls());
    OpenFolder opened;
    ASSERT_TRUE(files.Open(folder.Path(), opened).IsOk());
    SmallFiles some;
    std::size_t descriptors = 0;
    for (int round = 0; round < 3; ++round) {
        std::filesystem::remove(folder / "1");
        folder.Write("1", std::to_string(round));
        some.Clear();
        for (const std::string& name : names) some.Add(opened, name);
        if (!some.Read()) break;  // not on this machine
        for (std::size_t i = 0; i < names.size(); ++i) {
            SCOPED_TRACE(names[i]);
            const std::size_t size = i < sized ? std::stoul(names[i]) : 0;
            const bool isSmall = size > 0 && size < SmallFiles::kBytes;
            ASSERT_EQ(isSmall, some[i].has_value());
            if (isSmall) {
                EXPECT_TRUE(*some[i] == folder.Read(names[i]));
            }
        }
        if (round == 0) descriptors = OpenDescriptors();
        EXPECT_EQ(descriptors, OpenDescriptors());
    }
    char kept[8];
    EXPECT_EQ(4, read(pipe, kept, sizeof kept)) << "what is in a pipe is not taken from it";
    close(pipe);
}

INSTANTIATE_TEST_SUITE_P(RealAndEmulated, SmallFilesTest, ::testing::Bool());

// Beyond the first page a reading can end in front of an error.
TEST(SmallFiles, WhatCannotBeReadToItsEndIsNotRead) {
    FaultySystemCalls calls;
    calls.readsSmallFiles = true;
    TempFolder folder;
    folder.Write("file", std::string(9'000, 'x'));
    const FileSystem files(calls);
    OpenFolder opened;
    ASSERT_TRUE(files.Open(folder.Path(), opened).IsOk());
    SmallFiles some;
    some.Add(opened, "file");
    calls.readLimit = 4'096;
    ASSERT_TRUE(some.Read());
    EXPECT_FALSE(some[0].has_value());
}

}  // namespace
}  // namespace vantrel::testing
