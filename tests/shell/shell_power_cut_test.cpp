// The file system ends in the middle of a copy, as by a power cut: after it is mounted again every file is
// wholly old, wholly new, or not there yet.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/names/temporary_names.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

struct Kind {
    const char* name;
    const char* make;     // the command, before the image's name
    const char* options;  // of the mount
};

class ShellPowerCutTest : public ShellTest, public ::testing::WithParamInterface<Kind> {
  public:
    ~ShellPowerCutTest() override { Unmount(); }

    static bool Command(const std::string& command) {
        return std::system((command + " > /dev/null 2>&1").c_str()) == 0;
    }
    // Empty, or why there is no such file system here.
    std::string Make() {
        image_ = drop / "image";
        std::ofstream(image_).flush();
        fs::resize_file(image_, std::uintmax_t{400} << 20);
        drop.MakeFolder("mount");
        const std::string make = std::string(GetParam().make) + " " + image_;
        if (!Command(make)) return "no file system comes of \"" + make + "\"";
        return MountIt() ? std::string() : "this process may not mount an image";
    }
    bool MountIt() {
        const std::string options = std::string(*GetParam().options ? "," : "") + GetParam().options;
        mounted_ = Command("mount -o loop" + options + " " + image_ + " " + (drop / "mount"));
        return mounted_;
    }
    void Unmount() {
        if (mounted_) umount2((drop / "mount").c_str(), 0);
        mounted_ = false;
    }
    // Without writing out what waits in memory or in the log. Both file systems know the same request.
    bool CutPower() {
        const int fd = open((drop / "mount").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        std::uint32_t noLogFlush = 2;
        const bool cut = ioctl(fd, _IOR('X', 125, std::uint32_t), &noLogFlush) == 0;
        close(fd);
        return cut;
    }
    static std::string Content(const char* age, int i) {
        return std::string(age) + " " + std::to_string(i) +
               std::string(static_cast<std::size_t>(i) * 997, '.');
    }

  private:
    std::string image_;
    bool mounted_ = false;
};

INSTANTIATE_TEST_SUITE_P(Kinds, ShellPowerCutTest,
                         ::testing::Values(Kind{"Xfs", "mkfs.xfs -q -f", ""},
                                           Kind{"Ext4", "mkfs.ext4 -q -F", ""},
                                           Kind{"Ext4NoAutoAlloc", "mkfs.ext4 -q -F", "noauto_da_alloc"}),
                         [](const auto& given) { return given.param.name; });

TEST_P(ShellPowerCutTest, EveryFileIsWhollyOldOrWhollyNew) {
    constexpr int kFiles = 40;
    if (const std::string why = Make(); !why.empty()) GTEST_SKIP() << why;
    for (int i = 0; i < kFiles; ++i) drop.Write("left/" + std::to_string(i), Content("new", i));
    std::size_t cuts = 0;
    for (std::size_t at = 100; at > 0; at += 83) {
        SCOPED_TRACE("cut at call " + std::to_string(at));
        fs::remove_all(drop / "mount/right");
        drop.MakeFolder("mount/right");
        for (int i = 0; i < kFiles; i += 2) drop.Write("mount/right/" + std::to_string(i), Content("old", i));
        ASSERT_TRUE(Command("sync -f " + (drop / "mount")));
        calls.ResetCount();
        bool cut = false;
        calls.before = [&](const FaultySystemCalls::Record&) {
            if (calls.Count() != at) return;
            cut = CutPower();
        };
        ShellRequest request;
        for (int i = 0; i < kFiles; ++i) request.sources.push_back(Left(std::to_string(i)));
        request.target = drop / "mount/right";
        request.noConfirmation = request.noErrorUi = true;
        const ShellResult result = Run(request);
        calls.before = nullptr;
        if (calls.Count() < at) break;
        if (!cut) GTEST_SKIP() << "this file system cannot be shut down here";
        ++cuts;
        Unmount();
        ASSERT_TRUE(MountIt());
        for (int i = 0; i < kFiles; ++i) {
            const std::string path = "mount/right/" + std::to_string(i);
            const bool had = i % 2 == 0;
            const bool isDone = result.items.at(static_cast<std::size_t>(i)).outcome == ItemOutcome::Done;
            if (!drop.Exists(path)) {
                EXPECT_FALSE(had || isDone) << path;
                continue;
            }
            const std::string content = drop.Read(path);
            const bool isNew = content == Content("new", i);
            EXPECT_TRUE(isNew || (had && !isDone && content == Content("old", i)))
                << path << " has " << content.size() << " bytes";
        }
    }
    EXPECT_GT(cuts, 6U);
}

}  // namespace
}  // namespace vantrel::testing
