// On real file systems beside the one of the temporary folder, where this machine gives them.
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <filesystem>

#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellRealFileSystemTest : public ShellTest {
  public:
    ~ShellRealFileSystemTest() override {
        for (const std::string& point : mounted_) umount2(point.c_str(), MNT_DETACH);
    }
    bool Mount(const std::string& point, const char* type, const std::string& source, unsigned long flags,
               const char* options) {
        if (mount(source.c_str(), point.c_str(), type, flags, options) != 0) return false;
        mounted_.push_back(point);
        return true;
    }

  private:
    std::vector<std::string> mounted_;
};

TEST_F(ShellRealFileSystemTest, AFullDiskLeavesTheOldFiles) {
    if (!Mount(drop / "right", "tmpfs", "none", 0, "size=1m")) GTEST_SKIP() << "cannot mount here";
    volumes.drives = {{drop / "right", {}}, {"/", {}}};
    drop.Write("right/big", "old");
    drop.Write("left/big", std::string(3'000'000, 'x'));
    drop.Write("left/small", "fits");
    for (const ShellOperation operation : {Copy, Move}) {
        const ShellResult result = Run(operation, {Left("big"), Left("small")}, drop / "right");
        EXPECT_EQ(Failed, result.items.at(0).outcome);
        EXPECT_EQ(ErrorNumber::DiskFull, result.items.at(0).error.Number());
        EXPECT_EQ(Done, result.items.at(1).outcome);
        EXPECT_EQ((Tree{{"big", "f:old"}, {"small", "f:fits"}}), TreeOf(drop / "right/"));
        EXPECT_EQ(3'000'000U, drop.Read("left/big").size());
        EXPECT_EQ(operation == Copy, drop.Exists("left/small"));
    }
}

TEST_F(ShellRealFileSystemTest, ADeleteStaysOnItsMount) {
    drop.Write("right/precious", "stays");
    drop.Write("left/Sub/f", "f");
    drop.MakeFolder("left/Sub/mounted");
    if (!Mount(Left("Sub/mounted"), nullptr, drop / "right", MS_BIND, nullptr))
        GTEST_SKIP() << "cannot mount here";
    ShellResult result = Run(Delete, {Left("Sub")});
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ("stays", drop.Read("right/precious"));
    EXPECT_EQ(Failed, Run(Delete, {Left("Sub/mounted")}).items.at(0).outcome);
    EXPECT_EQ("stays", drop.Read("right/precious"));
    // A move across it is a copy, although the device is the same.
    drop.Write("left/g", "g");
    result = Run(Move, {Left("g")}, Left("Sub/mounted"));
    EXPECT_TRUE(result.AllDone());
    EXPECT_EQ("g", drop.Read("right/g"));
}

TEST_F(ShellRealFileSystemTest, MovesAcrossFileSystems) {
    struct stat here {
    }, there{};
    if (stat("/dev/shm", &there) != 0 || stat(drop.Path().c_str(), &here) != 0 ||
        here.st_dev == there.st_dev || access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "no second file system";
    const std::string other = "/dev/shm/vantrel-test-" + std::to_string(getpid());
    drop.Write("left/Sub/a", "alpha", 1'500'000'000.5);
    drop.Write("left/Sub/deep/b", std::string(2'000'000, 'b'));
    fs::create_symlink("a", Left("Sub/link"));
    const Tree before = TreeOf(drop / "left/");
    EXPECT_TRUE(Run(Move, {Left("Sub")}, other).AllDone());
    EXPECT_EQ(before, TreeOf(other + "/"));
    struct stat moved {};
    stat((other + "/Sub/a").c_str(), &moved);
    EXPECT_EQ(500'000'000, moved.st_mtim.tv_nsec);
    EXPECT_TRUE(Run(Move, {other + "/Sub"}, drop / "left").AllDone());
    EXPECT_EQ(before, TreeOf(drop / "left/"));
    EXPECT_TRUE(TreeOf(other + "/").empty());
    fs::remove_all(other);
}

TEST_F(ShellRealFileSystemTest, AccessListsTravel) {
    // user::rwx, user:12345:rw-, group::r--, mask::rwx, other::---, as the kernel stores it.
    const unsigned char acl[] = {2, 0,  0,   0,   1,   0,   7,  0, 255, 255, 255, 255, 2,   0,  6,
                                 0, 57, 48,  0,   0,   4,   0,  4, 0,   255, 255, 255, 255, 16, 0,
                                 7, 0,  255, 255, 255, 255, 32, 0, 0,   0,   255, 255, 255, 255};
    drop.Write("left/f", "content");
    drop.Write("left/plain", "no list of its own");
    fs::permissions(Left("plain"), fs::perms::owner_read);
    setxattr(Left("plain").c_str(), "user.note", "kept", 4, 0);
    if (setxattr(Left("f").c_str(), "system.posix_acl_access", acl, sizeof acl, 0) != 0)
        GTEST_SKIP() << "no access lists here";
    // What the target folder would hand down is not added.
    drop.MakeFolder("right/handing down");
    ASSERT_EQ(0, setxattr(Right("handing down").c_str(), "system.posix_acl_default", acl, sizeof acl, 0));
    EXPECT_TRUE(Run(Copy, {Left("f"), Left("plain")}, Right("handing down")).AllDone());
    char got[128];
    EXPECT_EQ(static_cast<ssize_t>(sizeof acl),
              getxattr(Right("handing down/f").c_str(), "system.posix_acl_access", got, sizeof got));
    EXPECT_EQ(0, memcmp(acl, got, sizeof acl));
    EXPECT_EQ(-1, getxattr(Right("handing down/plain").c_str(), "system.posix_acl_access", got, sizeof got));
    struct stat stat {};
    ::stat(Right("handing down/plain").c_str(), &stat);
    EXPECT_EQ(0400U, stat.st_mode & 0777);
}

}  // namespace
}  // namespace vantrel::testing
