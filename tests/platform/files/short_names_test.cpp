#include "platform/files/short_names.h"

#include <gmock/gmock.h>
#include <linux/msdos_fs.h>

#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "support/temp_folder.h"

namespace vantrel::testing {
namespace {

using ::testing::Pair;
using ::testing::UnorderedElementsAre;

// A folder as FAT tells of it.
class FatCalls : public SystemCalls {
  public:
    std::vector<std::pair<std::string, std::string>> entries;  // short, long
    std::size_t failAt = 1'000;

    int Ioctl(int, unsigned long, void* argument) override {
        auto* both = static_cast<__fat_dirent*>(argument);
        if (next_ == failAt) return -EIO;
        if (next_ == entries.size()) {
            both[0].d_reclen = 0;
            return 0;
        }
        const auto put = [](const std::string& name, __fat_dirent& to) {
            std::memcpy(to.d_name, name.c_str(), name.size() + 1);
            to.d_reclen = static_cast<unsigned short>(name.size());
        };
        put(entries[next_].first, both[0]);
        put(entries[next_++].second, both[1]);
        return 1;
    }

  private:
    std::size_t next_ = 0;
};

TEST(ShortNames, AreThoseThatFatTells) {
    TempFolder box;
    FatCalls calls;
    calls.entries = {
        {".", ""}, {"PROGRA~1", "Program Files"}, {"A.TXT", ""}, {"LONGNA~1.TXT", "longname.text"}};
    std::unordered_map<std::string, std::string> names;
    EXPECT_TRUE(ReadShortNames(FileSystem(calls), box.Path(), names).IsOk());
    EXPECT_THAT(names, UnorderedElementsAre(Pair("Program Files", "PROGRA~1"),
                                            Pair("longname.text", "LONGNA~1.TXT")));

    FatCalls failing;
    failing.entries = calls.entries;
    failing.failAt = 2;
    EXPECT_EQ(EIO, ReadShortNames(FileSystem(failing), box.Path(), names).SystemNumber());
    EXPECT_FALSE(ReadShortNames(FileSystem(calls), box / "gone", names).IsOk());
}

TEST(ShortNames, AreNoneElsewhere) {
    TempFolder box;
    box.Write("longname.text", "");
    SystemCalls calls;
    std::unordered_map<std::string, std::string> names;
    EXPECT_TRUE(ReadShortNames(FileSystem(calls), box.Path(), names).IsOk());
    EXPECT_TRUE(names.empty());
}

}  // namespace
}  // namespace vantrel::testing
