#include "platform/files/nesting.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "support/child_process.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::ForkAlone;
using testing::TempFolder;

class NestingTest : public ::testing::Test {
  protected:
    NestingTest() {
        for (const char* name : {"left/in/deep", "left2", "right/in"}) folder.MakeFolder(name);
    }
    bool Inside(const std::string& inner, const std::string& outer) {
        return LiesInside(files, folder / inner, folder / outer);
    }

    TempFolder folder;
    FaultySystemCalls calls;
    FileSystem files{calls};
};

TEST_F(NestingTest, WhatThePathsLeadToCounts) {
    std::filesystem::create_directory_symlink(folder / "left/in", folder / "link");
    std::filesystem::create_directory_symlink(folder / "right", folder / "left/to right");
    EXPECT_TRUE(Inside("left/in/deep", "left"));
    EXPECT_TRUE(Inside("left/in/", "left/"));
    EXPECT_TRUE(Inside("link", "left"));
    EXPECT_TRUE(Inside("left/in/deep", "link"));
    EXPECT_TRUE(LiesInside(files, folder / "left", "/"));
    EXPECT_FALSE(Inside("left", "left/in"));
    EXPECT_FALSE(Inside("left", "left"));
    EXPECT_FALSE(Inside("link", "left/in"));
    EXPECT_FALSE(Inside("left2", "left"));
    EXPECT_FALSE(Inside("right", "left"));
    EXPECT_FALSE(Inside("left/gone", "left"));
    EXPECT_FALSE(Inside("left/in", "gone"));
    calls.FailAll(Call::Statx, EACCES);
    EXPECT_FALSE(Inside("left/in", "left"));
}

// Whatever of the two was mounted a second time. In a process with mounts of its own.
TEST_F(NestingTest, FoldersThatAreMountedTwiceAreSeenThrough) {
    constexpr int kNotAllowed = 77;
    for (const char* name : {"seen", "left mounted", "left/in/right"}) folder.MakeFolder(name);
    folder.MakeFolder("right/in/deep");
    const auto bind = [&](const char* from, const char* to) {
        return mount((folder / from).c_str(), (folder / to).c_str(), nullptr, MS_BIND, nullptr) == 0;
    };
    const pid_t process = ForkAlone();
    if (process == 0) {
        if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(kNotAllowed);
        if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) _exit(kNotAllowed);
        if (!bind("left/in", "seen") || !bind("left", "left mounted") || !bind("right", "left/in/right"))
            _exit(kNotAllowed);
        int wrong = 0;
        const auto expect = [&](bool inside, const char* inner, const char* outer, int bit) {
            if (Inside(inner, outer) != inside) wrong |= bit;
        };
        expect(true, "seen/deep", "left", 1);
        expect(true, "left/in", "left mounted", 2);
        expect(true, "seen", "left mounted", 4);
        expect(true, "right/in/deep", "left", 8);
        expect(false, "left2", "left mounted", 16);
        expect(false, "left", "seen", 32);
        _exit(wrong);
    }
    int status = 0;
    ASSERT_EQ(process, waitpid(process, &status, 0));
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == kNotAllowed) GTEST_SKIP() << "no mounts of its own here";
    EXPECT_EQ(0, WEXITSTATUS(status));
}

}  // namespace
}  // namespace vantrel
