#include <gtest/gtest.h>
#include <linux/magic.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "platform/files/file_system.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::TempFolder;

// A file system that says it is of the kind `magic`, where every file is hidden (bit 2) and of the system
// (bit 4), as far as that kind tells it.
class DosSystemCalls : public SystemCalls {
  public:
    std::uint32_t magic = 0;
    std::string xattr;  // name of the one attribute that files have
    std::string value;
    std::size_t asked = 0;

    int FstatFs(int fd, struct statfs& out) override {
        const int result = SystemCalls::FstatFs(fd, out);
        out.f_type = magic;
        return result;
    }
    int Ioctl(int, unsigned long, void* argument) override {
        ++asked;
        const std::uint32_t bits = 6;
        std::memcpy(argument, &bits, sizeof bits);
        return 0;
    }
    ssize_t GetXattr(int, const char* name, void* buffer, std::size_t size) override {
        ++asked;
        if (name != xattr) return -ENODATA;
        if (size < value.size()) return -ERANGE;
        std::memcpy(buffer, value.data(), value.size());
        return static_cast<ssize_t>(value.size());
    }
};

TEST(DosAttributesTest, AreReadInTheWayOfEachFileSystemAndNowhereElse) {
    const struct {
        std::uint32_t magic;
        const char* xattr;
        std::string value;
        bool expected;
    } cases[] = {
        {MSDOS_SUPER_MAGIC, "", "", true},
        {0x7366746E, "system.ntfs_attrib", std::string("\x26\0\0\0", 4), true},
        {0x65735546, "system.ntfs_attrib_be", std::string("\0\0\0\x26", 4), true},
        {0xFF534D42, "user.cifs.dosattrib", "0x26", true},
        {0x65735546, "user.other", "0x26", false},  // some other file system in user space
        {EXT4_SUPER_MAGIC, "system.ntfs_attrib", std::string("\x26\0\0\0", 4), false},
    };
    TempFolder folder;
    folder.Write("file", "");
    folder.Write("sub/file", "");
    for (const auto& each : cases) {
        DosSystemCalls calls;
        calls.magic = each.magic;
        calls.xattr = each.xattr;
        calls.value = each.value;
        const FileSystem files(calls);
        const int expected = each.expected ? kHidden | kSystem : 0;
        OpenFolder open, sub;
        ASSERT_TRUE(files.Open(folder.Path(), open).IsOk());
        ASSERT_TRUE(open.OpenSub("sub", sub).IsOk());
        for (OpenFolder* listed : {&open, &sub})
            EXPECT_TRUE(listed
                            ->ForEach([&](const FolderEntry& entry) {
                                EXPECT_EQ(expected, entry.attributes & (kHidden | kSystem)) << each.xattr;
                                return true;
                            })
                            .IsOk());
        FileInfo info;
        ASSERT_TRUE(files.Stat(folder / "file", LinkPolicy::Follow, info).IsOk());
        EXPECT_EQ(expected, info.attributes & (kHidden | kSystem)) << each.xattr;
        EXPECT_TRUE(each.magic != EXT4_SUPER_MAGIC || calls.asked == 0);
    }
}

}  // namespace
}  // namespace vantrel
