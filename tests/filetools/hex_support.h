#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "filetools/hex_dump.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

// Files whose bytes are looked at, in a temporary folder.
class HexFilesTest : public ::testing::Test {
  protected:
    std::string Open(std::string_view content, BytesOfFile& file, std::string_view name = "file") {
        box.folder.Write(name, content);
        EXPECT_TRUE(file.Open(box.files, box.folder / name).IsOk());
        return std::string(content);
    }
    // Long enough for three blocks and a piece, the same for the same seed.
    static std::string Random(unsigned seed, std::size_t size = 3 * BytesOfFile::kBlock + 4'321) {
        std::mt19937 engine(seed);
        std::string bytes(size, '\0');
        for (char& byte : bytes) byte = static_cast<char>(engine() % 7);
        return bytes;
    }

    TestToolbox box;
};

}  // namespace vantrel::testing
