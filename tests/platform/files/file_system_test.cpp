#include "platform/files/file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/files/replace_file.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TempFolder;

class FileSystemTest : public ::testing::Test {
  protected:
    std::string WithoutSlash() const { return folder.Path().substr(0, folder.Path().size() - 1); }
    std::size_t CountEntries() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
            count += !entry.path().empty();
        return count;
    }

    TempFolder folder;
    FaultySystemCalls calls;
    FileSystem files{calls};
};

TEST_F(FileSystemTest, ErrorsSpeakInTheNumbersOfTheProgram) {
    const Error missing = Error::FromErrno(ENOENT, "/x");
    EXPECT_EQ(53U, missing.NumberAsValue());
    EXPECT_EQ(ENOENT, missing.SystemNumber());
    EXPECT_EQ("File not found \"/x\"", missing.Description());
    EXPECT_EQ("Path not found", Error::FromErrnoOfFolder(ENOENT, "").Description());
    EXPECT_EQ(70U, Error::FromErrno(EROFS).NumberAsValue());
    EXPECT_EQ(61U, Error::FromErrno(EDQUOT).NumberAsValue());
    EXPECT_EQ(57U, Error::FromErrno(EPROTO).NumberAsValue());
    EXPECT_TRUE(Error::FromErrno(0).IsOk());
    EXPECT_EQ("No such file or directory", GetErrorText(ENOENT));
    EXPECT_EQ("Error (9999) not defined.", GetErrorText(9999));
}

TEST_F(FileSystemTest, PathsLongerThanTheSystemTakesInOneCall) {
    std::string path = WithoutSlash();
    const std::string part(200, 'p');
    for (int level = 0; level < 64; ++level) {
        path += "/" + part;
        ASSERT_TRUE(files.CreateFolder(path).IsOk()) << level;
    }
    ASSERT_GT(path.size(), 12'000U);
    const std::string file = path + "/file";
    ASSERT_TRUE(files.ReplaceFile(file, "deep").IsOk());
    ASSERT_TRUE(files.AppendToFile(file, " down").IsOk());
    std::string content;
    EXPECT_TRUE(files.ReadWholeFile(file, 100, content).IsOk());
    EXPECT_EQ("deep down", content);
    EXPECT_TRUE(files.Rename(file, path + "/other/", false).IsOk());
    FileInfo info;
    EXPECT_TRUE(files.Stat(path + "/other", LinkPolicy::Follow, info).IsOk());
    EXPECT_EQ(9U, info.size);
    OpenFolder open;
    EXPECT_TRUE(files.Open(path + "/", open).IsOk());
    EXPECT_FALSE(files.Exists(path + "/" + std::string(5'000, 'q')));
    EXPECT_TRUE(files.RemoveFile(path + "/other").IsOk());
}

TEST_F(FileSystemTest, StatTellsOfTheLinkOrOfWhatItLeadsTo) {
    folder.Write("file", "123", 5'000);
    ASSERT_EQ(0, symlink("file", (folder / "link").c_str()));
    ASSERT_EQ(0, symlink("none", (folder / "dangling").c_str()));
    FileInfo info;
    ASSERT_TRUE(files.Stat(folder / "link", LinkPolicy::Follow, info).IsOk());
    EXPECT_TRUE(info.isLink);
    EXPECT_EQ(EntryKind::File, info.kind);
    EXPECT_EQ(FileTime::FromUnix(5'000, 0), info.lastWrite);
    ASSERT_TRUE(files.Stat(folder / "link", LinkPolicy::DoNotFollow, info).IsOk());
    EXPECT_EQ(EntryKind::Other, info.kind);
    ASSERT_TRUE(files.Stat(folder / "dangling", LinkPolicy::Follow, info).IsOk());
    EXPECT_EQ(EntryKind::Other, info.kind);
    EXPECT_TRUE(files.Exists(folder / "dangling"));
    EXPECT_FALSE(files.FileExists(folder / "dangling"));
    EXPECT_TRUE(files.FileExists(folder / "link"));
    EXPECT_EQ(ErrorNumber::FileNotFound, files.Stat(folder / "none", LinkPolicy::Follow, info).Number());
    // A carried NUL must not cut the name to another one.
    EXPECT_FALSE(files.Exists(folder / "file\xF4\x8F\xA0\x80rest"));
}

TEST_F(FileSystemTest, RemovingAndRenamingTouchOneObjectAndReplaceOnlyWhenTold) {
    folder.Write("a", "a");
    folder.Write("b", "b");
    folder.Write("sub/c", "c");
    ASSERT_EQ(0, symlink("sub", (folder / "link").c_str()));
    for (const int noReplaceCode : {0, EINVAL}) {  // the latter: a system that does not know how
        calls.FailAll(Call::Rename, noReplaceCode);
        EXPECT_EQ(ErrorNumber::FileAlreadyExists, files.Rename(folder / "a", folder / "b", false).Number());
        EXPECT_TRUE(files.Rename(folder / "a", folder / "d", false).IsOk());
        EXPECT_FALSE(folder.Exists("a"));
        EXPECT_EQ("a", folder.Read("d"));
        calls.ClearFaults();
        ASSERT_TRUE(files.Rename(folder / "d", folder / "a", false).IsOk());
    }
    EXPECT_TRUE(files.Rename(folder / "a", folder / "b", true).IsOk());
    EXPECT_EQ("a", folder.Read("b"));
    EXPECT_FALSE(files.RemoveFile(folder / "sub").IsOk());
    EXPECT_TRUE(files.RemoveFile(folder / "link/").IsOk());
    EXPECT_TRUE(folder.Exists("sub/c"));
}

TEST_F(FileSystemTest, ReadingGoesOnAfterShortReadsAndStopsAtTheLimit) {
    const std::string content(100'000, 'c');
    folder.Write("file", content);
    calls.readLimit = 999;
    std::string read = "untouched";
    EXPECT_EQ(ErrorNumber::OutOfStringSpace, files.ReadWholeFile(folder / "file", 99'999, read).Number());
    EXPECT_EQ("untouched", read);
    calls.ResetCount();
    calls.FailAt(Call::PRead, 50, EIO);
    EXPECT_EQ(ErrorNumber::DeviceIo, files.ReadWholeFile(folder / "file", 100'000, read).Number());
    EXPECT_TRUE(files.ReadWholeFile(folder / "file", 100'000, read).IsOk());
    EXPECT_EQ(content, read);
    calls.readLimit = 0;
    EXPECT_TRUE(files.ReadWholeFile("/proc/self/mountinfo", 1 << 20, read).IsOk());
    EXPECT_NE("", read);
}

TEST_F(FileSystemTest, AppendingLeavesNoHalfRecord) {
    folder.Write("log", "one\n");
    calls.writeLimit = 2;
    calls.FailAt(Call::Write, 2, ENOSPC);
    EXPECT_EQ(ErrorNumber::DiskFull, files.AppendToFile(folder / "log", "two\n").Number());
    EXPECT_EQ("one\n", folder.Read("log"));
    EXPECT_TRUE(files.AppendToFile(folder / "log", "two\n").IsOk());
    EXPECT_TRUE(files.AppendToFile(folder / "new", "x").IsOk());
    EXPECT_EQ("one\ntwo\n", folder.Read("log"));
    EXPECT_EQ("x", folder.Read("new"));
}

// Whichever call fails: the old file stands or the new one, whole, and nothing else.
TEST_F(FileSystemTest, ReplacingIsAllOrNothing) {
    calls.writeLimit = 100;
    const std::string before(250, 'o'), after(350, 'n');
    for (const bool exists : {true, false}) {
        bool faultReached = true;
        for (std::size_t number = 1; faultReached; ++number) {
            if (exists)
                folder.Write("file", before);
            else
                unlink((folder / "file").c_str());
            calls.ResetCount();
            calls.ClearFaults();
            calls.FailAt(number, EIO);
            const Error error = files.ReplaceFile(folder / "file", after);
            faultReached = calls.Count() >= number;
            if (error.IsOk())
                EXPECT_EQ(after, folder.Read("file")) << number;
            else
                EXPECT_EQ(exists ? before : "", folder.Read("file")) << number;
            EXPECT_LE(CountEntries(), 1U) << number;
            EXPECT_TRUE(faultReached || error.IsOk()) << error.Description();
        }
    }
}

// What makes the content can end it at any piece, by an error or a cancel.
TEST_F(FileSystemTest, ReplacingInPiecesLeavesTheOldFileWhereItIsNotFinished) {
    folder.Write("file", "old");
    const auto replace = [&](const std::function<void(const PieceSink&)>& make) {
        return ReplaceFileInPieces(files, folder / "file", make);
    };
    EXPECT_THROW(static_cast<void>(replace([](const PieceSink& sink) {
                     sink("half");
                     throw Cancelled();
                 })),
                 Cancelled);
    const Error error = replace([](const PieceSink& sink) {
        sink("half");
        throw ErrorException(Error(ErrorNumber::Overflow, "too much"));
    });
    EXPECT_EQ("too much", error.Description());
    EXPECT_EQ("old", folder.Read("file"));
    EXPECT_EQ(1U, CountEntries());
    EXPECT_TRUE(replace([](const PieceSink& sink) {
                    sink("ne");
                    sink("w");
                }).IsOk());
    EXPECT_EQ("new", folder.Read("file"));
}

TEST_F(FileSystemTest, ReplacingKeepsModeAndOwnerAndWritesThroughLinks) {
    folder.Write("sub/file", "old");
    ASSERT_EQ(0, chmod((folder / "sub/file").c_str(), 0640));
    const bool root = geteuid() == 0;
    ASSERT_TRUE(!root || chown((folder / "sub/file").c_str(), 12, 34) == 0);
    ASSERT_EQ(0, symlink("sub/file", (folder / "link").c_str()));
    ASSERT_EQ(0, symlink("link", (folder / "link2").c_str()));
    ASSERT_EQ(0, symlink("sub/made", (folder / "ahead").c_str()));
    ASSERT_EQ(0, symlink("ring", (folder / "ring").c_str()));

    ASSERT_TRUE(files.ReplaceFile(folder / "link2", "new").IsOk());
    EXPECT_EQ("new", folder.Read("sub/file"));
    FileInfo info;
    ASSERT_TRUE(files.Stat(folder / "link2", LinkPolicy::Follow, info).IsOk());
    EXPECT_TRUE(info.isLink);
    EXPECT_EQ(0640U, info.mode);
    if (root) {
        EXPECT_EQ(std::pair(12U, 34U), std::pair(info.owner, info.group));
    }
    EXPECT_TRUE(files.ReplaceFile(folder / "ahead", "made").IsOk());
    EXPECT_EQ("made", folder.Read("sub/made"));

    EXPECT_FALSE(files.ReplaceFile(folder / "ring", "x").IsOk());
    EXPECT_FALSE(files.ReplaceFile(folder / "sub", "x").IsOk());
    EXPECT_EQ(ErrorNumber::PathNotFound, files.ReplaceFile(folder / "no/file", "x").Number());
    ASSERT_EQ(0, chmod((folder / "sub/file").c_str(), 0440));
    EXPECT_EQ(ErrorNumber::PermissionDenied, files.ReplaceFile(folder / "sub/file", "x").Number());
    EXPECT_EQ("new", folder.Read("sub/file"));
}

}  // namespace
}  // namespace vantrel
