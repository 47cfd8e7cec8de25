#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "support/temp_folder.h"

namespace vantrel::testing {

// A file of `bytes` zeros that takes no room on the disk, last written at `unixTime`.
inline void WriteSparse(const TempFolder& folder, const std::string& name, off_t bytes, time_t unixTime) {
    folder.Write(name, "");
    const std::string path = folder / name;
    ASSERT_EQ(0, truncate(path.c_str(), bytes));
    const timespec times[2]{{0, UTIME_OMIT}, {unixTime, 0}};
    ASSERT_EQ(0, utimensat(AT_FDCWD, path.c_str(), times, 0));
}

}  // namespace vantrel::testing
