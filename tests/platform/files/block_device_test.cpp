#include "platform/files/block_device.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using testing::Call;
using testing::FaultySystemCalls;
using testing::TempFolder;

// What the kernel tells of some devices.
class BlockDeviceTest : public ::testing::Test {
  protected:
    void MakeDisk(const std::string& name, const char* rotational, const char* vendor, const char* model) {
        Write(name + "/queue/rotational", rotational);
        Write(name + "/device/vendor", vendor);
        if (*model != '\0') Write(name + "/device/model", model);
        fs::create_directories(sys_ / (name + "/slaves"));
    }
    void MakeMapped(const std::string& name, const char* rotational,
                    std::initializer_list<const char*> parts) {
        Write(name + "/queue/rotational", rotational);
        fs::create_directories(sys_ / (name + "/slaves"));
        for (const char* part : parts)
            fs::create_symlink(sys_ / part, sys_ / (name + "/slaves/" + fs::path(part).filename().string()));
    }
    void Write(const std::string& path, const char* text) {
        fs::create_directories(fs::path(sys_ / path).parent_path());
        std::ofstream(sys_ / path) << text << "\n";
    }
    bool Rotates(const std::string& name) { return IsRotatingDevice(files_, sys_ / name); }

    TempFolder sys_;
    FaultySystemCalls calls_;
    FileSystem files_{calls_};
};

TEST_F(BlockDeviceTest, BelievesRealDisksAndNoVirtualOnes) {
    MakeDisk("sda", "1", "ATA     ", "ST4000DM004-2CV1");
    MakeDisk("sdb", "0", "ATA     ", "Some SSD");
    MakeDisk("sdc", "1", "QEMU    ", "QEMU HARDDISK   ");
    MakeDisk("sdd", "1", "ATA     ", "VBOX HARDDISK   ");
    MakeDisk("vda", "1", "0x1af4", "");
    fs::create_directories(sys_ / "sda/sda1");
    fs::create_directories(sys_ / "vda/vda1");
    EXPECT_TRUE(Rotates("sda"));
    EXPECT_TRUE(Rotates("sda/sda1"));
    for (const char* name : {"sdb", "sdc", "sdd", "vda", "vda/vda1", "absent"})
        EXPECT_FALSE(Rotates(name)) << name;

    MakeMapped("dm-0", "1", {"vda/vda1"});
    MakeMapped("dm-1", "1", {"sdb", "sda/sda1"});
    MakeMapped("dm-2", "1", {"dm-1"});
    MakeMapped("dm-3", "0", {"sdb"});
    EXPECT_FALSE(Rotates("dm-0"));
    EXPECT_TRUE(Rotates("dm-1"));
    EXPECT_TRUE(Rotates("dm-2"));
    EXPECT_FALSE(Rotates("dm-3"));

    Write("sdb/removable", "1");
    Write("sda/removable", "0");
    fs::create_directories(sys_ / "sdb/sdb1");
    EXPECT_TRUE(IsRemovableDevice(files_, sys_ / "sdb/sdb1"));
    EXPECT_FALSE(IsRemovableDevice(files_, sys_ / "sda/sda1"));

    // What it is made of cannot be told: it is believed itself, and a ring comes to an end.
    MakeMapped("dm-4", "1", {"dm-4"});
    EXPECT_TRUE(Rotates("dm-4"));
    calls_.FailAll(Call::GetDents, EIO);
    EXPECT_TRUE(Rotates("dm-0"));
    calls_.FailAll(Call::Open, EACCES);
    EXPECT_FALSE(Rotates("sda"));
}

}  // namespace
}  // namespace vantrel
