#include "shell/verify_copy.h"

#include <fcntl.h>
#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <string>
#include <utility>

#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace {

using ::testing::IsEmpty;

constexpr std::size_t kSize = (std::size_t{17} << 20) + 3;

// Cancelled from another thread.
class CancellingProgress : public ScriptedProgress {
  public:
    std::atomic<bool> isCancelled{false};
    bool CancelAsked() override { return isCancelled; }
};

class VerifyCopyTest : public ShellTest {
  public:
    VerifyCopyTest() : content_(kSize, 'x') { drop.Write("left/file", content_); }

    int Verify(const std::string& copy, std::size_t threads, std::size_t goesOn = SIZE_MAX) {
        drop.Write("right/file", copy);
        const int source = open(Left("file").c_str(), O_RDONLY | O_CLOEXEC);
        const int target = open(Right("file").c_str(), O_RDONLY | O_CLOEXEC);
        std::size_t asked = 0;
        const int result = shell::VerifyCopy(calls, {source, target, content_.size()}, threads,
                                             [&] { return ++asked <= goesOn; });
        close(source);
        close(target);
        return result;
    }

  protected:
    std::string content_;
};

TEST_F(VerifyCopyTest, EveryByteIsReadHoweverManyReadThem) {
    for (const std::size_t threads : {0U, 3U}) {
        EXPECT_EQ(0, Verify(content_, threads));
        for (const std::size_t at :
             {std::size_t{0}, std::size_t{8} << 20, std::size_t{16} << 20, kSize - 1}) {
            std::string other = content_;
            other[at] = 'y';
            EXPECT_EQ(1, Verify(other, threads)) << at;
        }
        EXPECT_EQ(1, Verify(content_.substr(0, kSize - 1), threads));
        EXPECT_EQ(-ECANCELED, Verify(content_, threads, 1));
        calls.ResetCount();
        calls.FailAt(Call::PRead, 50, EIO);
        EXPECT_EQ(-EIO, Verify(content_, threads));
        calls.ClearFaults();
    }
}

// What the disk gives back is not always what was written to it.
TEST_F(VerifyCopyTest, AMoveKeepsTheSourceOfACopyThatIsNotAlikeOrWasNotReadWholly) {
    SeparateDrives();
    CancellingProgress cancelling;
    for (const std::int32_t jobs : {1, 4}) {
        SystemShellOperations service({.files = files,
                                       .volumes = volumes,
                                       .clock = clock,
                                       .loop = loop,
                                       .progress = cancelling,
                                       .questions = questions,
                                       .trash = {},
                                       .jobs = &jobs});
        ShellRequest request;
        request.operation = ShellOperation::Move;
        request.sources = {Left("file")};
        request.target = drop / "right";

        bool spoilt = false;
        calls.before = [&](const FaultySystemCalls::Record& record) {
            if (record.call != Call::PRead || std::exchange(spoilt, true)) return;
            for (const auto& [path, what] : TreeOf(drop / "right"))
                drop.Write("right/" + path, content_.substr(1) + "y");
        };
        ShellResult result = service.Run(request);
        calls.before = nullptr;
        EXPECT_TRUE(spoilt);
        EXPECT_EQ(EIO, result.lastSystemError);
        EXPECT_EQ(content_.size(), drop.Read("left/file").size());
        EXPECT_THAT(TreeOf(drop / "right"), IsEmpty());

        calls.before = [&](const FaultySystemCalls::Record& record) {
            if (record.call == Call::PRead) cancelling.isCancelled = true;
        };
        result = service.Run(request);
        calls.before = nullptr;
        cancelling.isCancelled = false;
        EXPECT_TRUE(result.cancelled);
        EXPECT_TRUE(drop.Exists("left/file"));
        EXPECT_THAT(TreeOf(drop / "right"), IsEmpty());

        EXPECT_TRUE(service.Run(request).AllDone());
        EXPECT_FALSE(drop.Exists("left/file"));
        EXPECT_TRUE(content_ == drop.Read("right/file"));
        drop.Write("left/file", content_);
        ASSERT_TRUE(files.RemoveFile(drop / "right/file").IsOk());
    }
}

}  // namespace
}  // namespace vantrel::testing
