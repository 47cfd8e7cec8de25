#include "platform/files/volumes.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <cerrno>

#include "platform/files/mount_table.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TempFolder;

TEST(MountTableTest, ReadsEscapesOptionalFieldsAndPassesOverDamage) {
    const auto mounts = ParseMountTable(
        "27 1 254:0 / / rw,relatime - ext4 /dev/vda rw\n"
        "damaged\n"
        "30 27 8:17 /sub /media/my\\040stick\\134x\\012 rw shared:5 master:2 - vfat /dev/sdb1 rw,uid=1000\n"
        "31 27 0:50 / /net rw - fuse.sshfs me@host:/a\\040b rw\n"
        "32 27 8:33 / /net rw - fuseblk /dev/sdc1 rw");
    ASSERT_EQ(4U, mounts.size());
    EXPECT_EQ(30U, mounts[1].id);
    EXPECT_EQ("8:17", mounts[1].device);
    EXPECT_EQ("/sub", mounts[1].root);
    // In the engine's form: the backslash and the line end are carried.
    EXPECT_EQ("/media/my stick\xF4\x8F\xA1\x9Cx\xF4\x8F\xA0\x8A", mounts[1].point);
    EXPECT_EQ("vfat", mounts[1].type);
    EXPECT_EQ("me@host:/a b", mounts[2].source);
    EXPECT_EQ(32U, FindMountAt(mounts, "/net/")->id);
    EXPECT_EQ(27U, FindMountAt(mounts, "/")->id);
    EXPECT_EQ(nullptr, FindMountAt(mounts, "/media"));
}

TEST(MountTableTest, KindsAndNames) {
    EXPECT_EQ(DriveKind::Remote, KindOfFileSystemType("fuse.sshfs"));
    EXPECT_EQ(DriveKind::CdRom, KindOfFileSystemType("iso9660"));
    EXPECT_EQ(DriveKind::RamDisk, KindOfFileSystemType("tmpfs"));
    EXPECT_EQ(DriveKind::Unknown, KindOfFileSystemType("proc"));
    EXPECT_EQ(DriveKind::Fixed, KindOfFileSystemType("fuseblk"));
    EXPECT_EQ("FAT", FileSystemNameOf("vfat", "FAT16"));
    EXPECT_EQ("FAT32", FileSystemNameOf("vfat", ""));
    EXPECT_EQ("NTFS", FileSystemNameOf("ntfs3", ""));
    EXPECT_EQ("btrfs", FileSystemNameOf("btrfs", ""));
    const std::string_view record =
        "S:disk/by-label/X\nE:ID_FS_TYPE_OLD=no\nE:ID_FS_TYPE=ntfs\nE:ID_FS_VERSION=\n";
    EXPECT_EQ("ntfs", UdevProperty(record, "ID_FS_TYPE"));
    EXPECT_EQ("", UdevProperty(record, "ID_FS_VERSION"));
    EXPECT_EQ("", UdevProperty(record, "ID_FS"));
}

// A system without the table of mounts.
class NoMountTable : public FaultySystemCalls {
  public:
    int OpenAt(int folder, const char* path, int flags, mode_t mode) override {
        if (std::string_view(path).ends_with("mountinfo")) return -ENOENT;
        return FaultySystemCalls::OpenAt(folder, path, flags, mode);
    }
};

TEST(SystemVolumesTest, WithoutATableOfMountsFileSystemsSpeakForThemselves) {
    TempFolder folder;
    SystemCalls plainCalls;
    const FileSystem plainFiles(plainCalls);
    SystemVolumes plain(plainFiles);
    NoMountTable calls;
    const FileSystem files(calls);
    SystemVolumes volumes(files);

    EXPECT_EQ("/proc", volumes.GetDriveName("/proc/self/status"));
    EXPECT_EQ("proc", volumes.GetFileSystemName("/proc"));
    EXPECT_EQ(DriveKind::Unknown, volumes.GetDriveKind("/proc"));
    EXPECT_TRUE(volumes.DriveExists("/proc"));
    EXPECT_FALSE(volumes.DriveExists("/proc/self"));
    EXPECT_FALSE(volumes.DriveExists("/no such place"));
    EXPECT_FALSE(volumes.DriveExists(""));

    const std::string drive = volumes.GetDriveName(folder / "not/yet/there");
    EXPECT_EQ(volumes.GetDriveName(folder.Path()), drive);
    EXPECT_TRUE(volumes.IsReady(drive));
    const Currency space = volumes.GetAvailableDriveSpace(drive);
    EXPECT_GT(space, Currency());
    EXPECT_EQ(plain.GetAvailableDriveSpace(plain.GetDriveName(folder.Path())) == Volumes::kUnknownSpace,
              space == Volumes::kUnknownSpace);
    EXPECT_FALSE(volumes.DriveExists(folder.Path()));
    EXPECT_TRUE(volumes.OnSameDrive(folder.Path(), folder / "x"));
    EXPECT_FALSE(volumes.OnSameDrive(folder.Path(), "/proc"));
}

TEST(SystemVolumesTest, FindsTheMountsOfThisMachine) {
    TempFolder folder;
    FaultySystemCalls calls;
    const FileSystem files(calls);
    SystemVolumes volumes(files);

    EXPECT_EQ("/proc", volumes.GetDriveName("/proc/self/status"));
    EXPECT_EQ("proc", volumes.GetFileSystemName("/proc"));
    EXPECT_EQ(DriveKind::Unknown, volumes.GetDriveKind("/proc"));
    EXPECT_EQ(Volumes::kUnknownSpace, volumes.GetAvailableDriveSpace("/proc"));
    const std::string drive = volumes.GetDriveName(folder / "not/yet/there");
    EXPECT_EQ(volumes.GetDriveName(folder.Path()), drive);
    EXPECT_TRUE(volumes.DriveExists(drive));
    EXPECT_TRUE(volumes.IsReady(drive));
    EXPECT_GT(volumes.GetAvailableDriveSpace(drive), Currency());
    EXPECT_TRUE(volumes.OnSameDrive(folder.Path(), folder / "x"));
    EXPECT_FALSE(volumes.OnSameDrive(folder.Path(), "/proc"));

    calls.ResetCount();
    EXPECT_FALSE(volumes.DriveExists("/no such drive"));
    EXPECT_FALSE(volumes.IsReady("/no such drive"));
    EXPECT_EQ(DriveKind::Unknown, volumes.GetDriveKind("/no such drive"));
    EXPECT_EQ(Volumes::kUnknownSpace, volumes.GetAvailableDriveSpace("/no such drive"));
    EXPECT_EQ(0U, calls.Count(Call::StatVfs));
    calls.FailAll(Call::Statx, EACCES);
    EXPECT_EQ("", volumes.GetDriveName(folder.Path()));
}

}  // namespace
}  // namespace vantrel
