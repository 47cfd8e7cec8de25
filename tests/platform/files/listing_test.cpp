#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <set>

#include "platform/files/file_system.h"
#include "platform/names/names.h"
#include "support/faulty_system_calls.h"
#include "support/plain_user.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TempFolder;

// A copy of an entry that outlives the sink.
struct SeenEntry {
    FolderEntry entry;
    std::string name;
};

class ListingTest : public ::testing::Test {
  protected:
    Error List(const std::string& path, std::map<std::string, SeenEntry>& seen) {
        OpenFolder open;
        if (Error error = files.Open(path, open); !error.IsOk()) return error;
        return open.ForEach([&](const FolderEntry& entry) {
            seen[std::string(entry.name)] = {entry, std::string(entry.name)};
            return true;
        });
    }
    std::map<std::string, SeenEntry> MustList(const std::string& path) {
        std::map<std::string, SeenEntry> seen;
        const Error error = List(path, seen);
        EXPECT_TRUE(error.IsOk()) << error.Description();
        return seen;
    }

    TempFolder folder;
    FaultySystemCalls calls;
    FileSystem files{calls};
};

TEST_F(ListingTest, EveryNameOnDiskComesOutAndLeadsBackToItsFile) {
    std::set<std::string> onDisk = {"plain",
                                    "-rf",
                                    " ",
                                    "line\nend",
                                    "\"quoted\"",
                                    "back\\slash",
                                    std::string("a\xFF\xFE") + "b",
                                    "\xF4\x8F\xA1\x9C",
                                    std::string(255, 'x'),
                                    "\xD7\xA9\xD7\x9C",
                                    std::string("\xE2\x80\xAE") + "x"};
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '/') onDisk.insert("byte" + std::string(1, static_cast<char>(byte)));
    for (const std::string& name : onDisk) folder.Write(name, name);

    const auto seen = MustList(folder.Path());
    std::set<std::string> found;
    for (const auto& [name, entry] : seen) {
        EXPECT_EQ(EntryKind::File, entry.entry.kind);
        std::string content;
        ASSERT_TRUE(files.ReadWholeFile(folder / name, 1000, content).IsOk()) << name;
        EXPECT_EQ(NameToSystem(name), content);
        found.insert(content);
    }
    EXPECT_EQ(onDisk, found);
}

TEST_F(ListingTest, LinksAreFollowedAndWhatIsNoFileOrFolderIsNeverOpened) {
    folder.Write("file", "12345", 1'000'000'000);
    folder.Write("sub/inner", "");
    ASSERT_EQ(0, symlink("file", (folder / "toFile").c_str()));
    ASSERT_EQ(0, symlink("sub", (folder / "toFolder").c_str()));
    ASSERT_EQ(0, symlink("nowhere", (folder / "toNothing").c_str()));
    ASSERT_EQ(0, symlink("file/x", (folder / "throughFile").c_str()));
    ASSERT_EQ(0, symlink("ring2", (folder / "ring1").c_str()));
    ASSERT_EQ(0, symlink("ring1", (folder / "ring2").c_str()));
    ASSERT_EQ(0, symlink("/dev/null", (folder / "toDevice").c_str()));
    ASSERT_EQ(0, mkfifo((folder / "fifo").c_str(), 0600));

    auto seen = MustList(folder.Path());
    ASSERT_EQ(10U, seen.size());
    for (const auto* name : {"toNothing", "throughFile", "ring1", "ring2", "toDevice", "fifo"}) {
        EXPECT_EQ(EntryKind::Other, seen[name].entry.kind) << name;
        const bool special = name == std::string("toDevice") || name == std::string("fifo");
        EXPECT_EQ(special ? UnknownReason::SpecialObject : UnknownReason::LeadsNowhere,
                  seen[name].entry.reason)
            << name;
        EXPECT_EQ(name != std::string("fifo"), seen[name].entry.isLink) << name;
        ReadFile file;
        calls.ResetCount();
        EXPECT_FALSE(files.OpenForReading(folder / name, file).IsOk()) << name;
        EXPECT_EQ(0U, calls.Count(Call::Open)) << name;
        EXPECT_FALSE(files.AppendToFile(folder / name, "x").IsOk() && std::string(name) != "toNothing")
            << name;
    }
    EXPECT_EQ(EntryKind::File, seen["toFile"].entry.kind);
    EXPECT_TRUE(seen["toFile"].entry.isLink);
    EXPECT_EQ(5U, seen["toFile"].entry.size);
    EXPECT_EQ(FileTime::FromUnix(1'000'000'000, 0), seen["toFile"].entry.lastWrite);
    EXPECT_EQ(seen["file"].entry.id, seen["toFile"].entry.id);
    EXPECT_EQ(seen["file"].entry.id, seen["file"].entry.seen.id);
    EXPECT_NE(seen["file"].entry.id, seen["toFile"].entry.seen.id);
    EXPECT_EQ(EntryKind::Folder, seen["toFolder"].entry.kind);
    EXPECT_EQ(seen["sub"].entry.id, seen["toFolder"].entry.id);
}

TEST_F(ListingTest, AttributesAndTimesOfEveryAge) {
    const double times[] = {0, 1e9, 4e9};
    for (const double time : times) folder.Write("t" + std::to_string(static_cast<long>(time)), "", time);
    const timespec early[2] = {{-1'000'000'000, 123'456'789}, {-1'000'000'000, 123'456'789}};
    folder.Write("early", "");
    ASSERT_EQ(0, utimensat(AT_FDCWD, (folder / "early").c_str(), early, 0));
    folder.Write(".hidden", "");
    folder.MakeFolder("sub");
    ASSERT_EQ(0, chmod((folder / ".hidden").c_str(), 0444));

    auto seen = MustList(folder.Path());
    for (const double time : times) {
        const auto whole = static_cast<long>(time);
        EXPECT_EQ(FileTime::FromUnix(whole, 0), seen["t" + std::to_string(whole)].entry.lastWrite);
    }
    EXPECT_EQ(FileTime::FromUnix(-1'000'000'000, 123'456'789), seen["early"].entry.lastWrite);
    EXPECT_EQ(kHidden | kReadOnly, seen[".hidden"].entry.attributes);
    EXPECT_EQ(kDirectory, seen["sub"].entry.attributes);
}

TEST_F(ListingTest, AnErrorInTheMiddleIsNoEnd) {
    for (int i = 0; i < 20'000; ++i)
        folder.Write("a name of some length, so that one call is not enough " + std::to_string(i), "");
    calls.FailAt(Call::GetDents, 2, EIO);
    std::map<std::string, SeenEntry> seen;
    const Error error = List(folder.Path(), seen);
    EXPECT_EQ(ErrorNumber::DeviceIo, error.Number());
    EXPECT_EQ(EIO, error.SystemNumber());
    EXPECT_FALSE(seen.empty());
    EXPECT_LT(seen.size(), 20'000U);
}

TEST_F(ListingTest, WhatVanishesIsLeftOutAndWhatCannotBeLookedAtIsUnknown) {
    for (const auto* name : {"a", "b", "c"}) folder.Write(name, "");
    ASSERT_EQ(0, symlink("a", (folder / "link").c_str()));
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call != Call::Statx) return;
        if (record.path == "b" || record.path == "link") unlink((folder / record.path).c_str());
    };
    OpenFolder open;
    ASSERT_TRUE(files.Open(folder.Path(), open).IsOk());
    calls.ResetCount();
    std::set<std::string> names, unknown;
    const auto sink = [&](const FolderEntry& entry) {
        (entry.reason != UnknownReason::None ? unknown : names).insert(std::string(entry.name));
        return true;
    };
    ASSERT_TRUE(open.ForEach(sink).IsOk());
    EXPECT_EQ((std::set<std::string>{"a", "c"}), names);

    // Listed once more: from the start, and with an entry that the system will not speak about.
    names.clear();
    calls.ResetCount();
    calls.FailAt(Call::Statx, 1, EACCES);
    ASSERT_TRUE(open.ForEach(sink).IsOk());
    EXPECT_EQ(1U, names.size());
    EXPECT_EQ(1U, unknown.size());
    std::size_t handedOut = 0;
    EXPECT_TRUE(open.ForEach([&](const FolderEntry&) { return ++handedOut, false; }).IsOk());
    EXPECT_EQ(1U, handedOut);
}

// That an entry is not there is believed only when the folder does not name it any more.
TEST_F(ListingTest, NoSuchFileIsAskedOnceMore) {
    for (const auto* name : {"a", "b"}) folder.Write(name, "12");
    OpenFolder open;
    ASSERT_TRUE(files.Open(folder.Path(), open).IsOk());
    std::map<std::string, UnknownReason> seen;
    const auto list = [&] {
        seen.clear();
        return open.ForEach([&](const FolderEntry& entry) {
            seen[std::string(entry.name)] = entry.reason;
            return true;
        });
    };
    FolderEntry entry;
    const auto failLooks = [&](std::initializer_list<std::size_t> numbers) {
        calls.ClearFaults();
        calls.ResetCount();
        for (const std::size_t number : numbers) calls.FailAt(Call::Statx, number, ENOENT);
    };
    failLooks({1});
    ASSERT_TRUE(list().IsOk());
    EXPECT_EQ(2U, seen.size());
    EXPECT_EQ(UnknownReason::None, seen["a"]);
    EXPECT_EQ(UnknownReason::None, seen["b"]);
    failLooks({1});
    ASSERT_TRUE(open.LookAt("a", entry));
    EXPECT_EQ(2U, entry.size);

    // The system goes on to deny what the folder names, or the folder cannot be listed again.
    failLooks({1, 3});
    ASSERT_TRUE(list().IsOk());
    EXPECT_EQ(2U, seen.size());
    EXPECT_NE(seen["a"] == UnknownReason::NotTold, seen["b"] == UnknownReason::NotTold);
    failLooks({1, 2});
    ASSERT_TRUE(open.LookAt("a", entry));
    EXPECT_EQ(UnknownReason::NotTold, entry.reason);
    failLooks({1, 2});
    calls.FailAt(Call::Open, 1, EMFILE);
    ASSERT_TRUE(open.LookAt("never", entry));
    EXPECT_EQ(UnknownReason::NotTold, entry.reason);
    failLooks({});
    EXPECT_FALSE(open.LookAt("never", entry));
}

TEST_F(ListingTest, FilesAreNotLookedAtWhereTheirKindIsEnough) {
    folder.Write(".file", "123", 1'000'000'000);
    folder.Write("sub/inner", "");
    ASSERT_EQ(0, symlink(".file", (folder / "link").c_str()));
    OpenFolder open;
    ASSERT_TRUE(files.Open(folder.Path(), open).IsOk());
    calls.ResetCount();
    std::set<std::string> unlooked;
    const auto sink = [&](const FolderEntry& entry) {
        if (!entry.hasStat) {
            unlooked.insert(std::string(entry.name));
            EXPECT_EQ(EntryKind::File, entry.kind);
            EXPECT_EQ(kHidden, entry.attributes);
        }
        return true;
    };
    ASSERT_TRUE(open.ForEach(sink, StatPolicy::NonFilesOnly).IsOk());
    EXPECT_EQ(std::set<std::string>{".file"}, unlooked);
    // The folder, the link, and what the link leads to.
    EXPECT_EQ(3U, calls.Count(Call::Statx));

    FolderEntry entry;
    ASSERT_TRUE(open.LookAt(".file", entry));
    EXPECT_TRUE(entry.hasStat);
    EXPECT_EQ(3U, entry.size);
    EXPECT_EQ(FileTime::FromUnix(1'000'000'000, 0), entry.lastWrite);
    EXPECT_FALSE(open.LookAt("gone", entry));
}

// Takes every descriptor that is free below the highest one the caller left open, so that what is opened from
// now on is numbered without gaps.
class NoGapsInDescriptors {
  public:
    NoGapsInDescriptors() {
        constexpr int kMost = 1'024;
        int highest = 0;
        for (int fd = 0; fd < kMost; ++fd)
            if (fcntl(fd, F_GETFD) >= 0) highest = fd;
        int fd = dup(STDOUT_FILENO);
        for (; fd >= 0 && fd < highest; fd = dup(STDOUT_FILENO)) taken_.push_back(fd);
        close(fd);
    }
    ~NoGapsInDescriptors() {
        for (const int fd : taken_) close(fd);
    }
    NoGapsInDescriptors(const NoGapsInDescriptors&) = delete;
    NoGapsInDescriptors& operator=(const NoGapsInDescriptors&) = delete;

  private:
    std::vector<int> taken_;
};

TEST_F(ListingTest, ManyFilesAreClosedAtOnceAndNoOthers) {
    const NoGapsInDescriptors noGaps;
    for (const int failure : {0, ENOSYS}) {
        calls.FailAll(Call::CloseRange, failure);
        std::vector<int> numbers;
        for (int round = 0; round < 2; ++round) {
            // Each round takes the numbers that the one before has given back.
            FileCloser closer;
            ReadFile kept;
            std::size_t opened = 0;
            for (; opened < 10; ++opened) {
                ReadFile file;
                folder.Write("f", "x");
                ASSERT_TRUE(files.OpenForReading(folder / "f", file).IsOk());
                if (opened == 5)
                    kept = std::move(file);
                else
                    closer.Take(std::move(file));
            }
            calls.ResetCount();
            closer.CloseAll();
            EXPECT_EQ(2U, calls.Count(Call::CloseRange));
            EXPECT_EQ(failure == 0 ? 0U : 9U, calls.Count(Call::Close));
            char byte = 0;
            std::size_t got = 0;
            EXPECT_TRUE(kept.ReadAt(0, &byte, 1, got).IsOk());
            const int next = dup(STDOUT_FILENO);
            numbers.push_back(next);
            close(next);
        }
        EXPECT_EQ(numbers.front(), numbers.back());
    }
}

TEST_F(ListingTest, TheFolderStaysTheSameWhateverHappensToItsPath) {
    folder.Write("sub/inner/file", "x");
    OpenFolder sub, inner;
    ASSERT_TRUE(files.Open(folder / "sub/", sub).IsOk());
    ASSERT_EQ(0, rename((folder / "sub").c_str(), (folder / "moved").c_str()));
    ASSERT_TRUE(sub.OpenSub("inner", inner).IsOk());
    std::size_t count = 0;
    EXPECT_TRUE(
        inner.ForEach([&](const FolderEntry& entry) { return count += entry.name == "file", true; }).IsOk());
    EXPECT_EQ(1U, count);
    ReadFile file;
    ASSERT_TRUE(inner.OpenScannedFile("file", file).IsOk());
    EXPECT_EQ(1U, file.Size());
    // What has taken the name since the scan is refused, without waiting for it.
    ASSERT_EQ(0, unlink((folder / "moved/inner/file").c_str()));
    ASSERT_EQ(0, mkfifo((folder / "moved/inner/file").c_str(), 0600));
    EXPECT_EQ(ErrorNumber::DeviceUnavailable, inner.OpenScannedFile("file", file).Number());
    EXPECT_EQ(ErrorNumber::PathNotFound, sub.OpenSub("gone", inner).Number());
    EXPECT_EQ(ErrorNumber::PathNotFound, files.Open(folder / "moved/inner/file", inner).Number());
}

TEST_F(ListingTest, ReadingLeavesTheTimeOfAccessAlone) {
    folder.Write("file", "x");
    const timespec times[2] = {{1'000'000'000, 0}, {1'500'000'000, 0}};
    ASSERT_EQ(0, utimensat(AT_FDCWD, (folder / "file").c_str(), times, 0));
    OpenFolder open;
    ASSERT_TRUE(files.Open(folder / "", open).IsOk());
    ReadFile file;
    ASSERT_TRUE(open.OpenScannedFile("file", file).IsOk());
    char byte = 0;
    std::size_t got = 0;
    ASSERT_TRUE(file.ReadAt(0, &byte, 1, got).IsOk());
    FileInfo info;
    ASSERT_TRUE(files.Stat(folder / "file", LinkPolicy::Follow, info).IsOk());
    EXPECT_EQ(info.accessed, FileTime::FromUnix(1'000'000'000, 0));
    // Where that is refused it is not asked for again in this folder.
    calls.ResetCount();
    calls.FailAt(Call::Open, 1, EPERM);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(open.OpenScannedFile("file", file).IsOk());
    EXPECT_EQ(calls.Count(Call::Open), 3U);
}

// Read before it is looked at: only what is certainly the whole of a regular file counts.
TEST_F(ListingTest, SmallFilesAreReadWholeOrNotAtAll) {
    const std::string text = "0123456789";
    const std::string path = folder / "file";
    OpenFolder open;
    // Of a file system that is not known nothing is taken for granted.
    calls.FailAll(Call::FstatFs, ENOSYS);
    ASSERT_TRUE(files.Open(folder / "", open).IsOk());
    char buffer[11];
    std::size_t got = 0;
    const auto readsWhole = [&](std::size_t size) {
        UnstatedFile file;
        EXPECT_TRUE(open.OpenUnstatedFile("file", file).IsOk());
        return file.ReadWhole(buffer, size, got);
    };
    folder.Write("file", text);
    ASSERT_TRUE(readsWhole(11));
    EXPECT_EQ(text, std::string_view(buffer, got));
    EXPECT_FALSE(readsWhole(10));
    calls.readLimit = 4;
    EXPECT_FALSE(readsWhole(11));
    calls.readLimit = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call == Call::PRead) std::filesystem::resize_file(path, 11);
    };
    EXPECT_FALSE(readsWhole(11));
    calls.before = nullptr;
    folder.Write("file", "");
    EXPECT_FALSE(readsWhole(11));

    UnstatedFile opened;
    ReadFile file;
    ASSERT_TRUE(open.OpenUnstatedFile("file", opened).IsOk());
    folder.Write("file", text);
    ASSERT_TRUE(std::move(opened).Stat(file).IsOk());
    EXPECT_EQ(file.Size(), 10U);
    FolderEntry entry;
    ASSERT_TRUE(open.LookAt("file", entry));
    EXPECT_EQ(file.Seen(), entry.seen);

    std::filesystem::remove(path);
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    EXPECT_FALSE(readsWhole(11));
    ASSERT_TRUE(open.OpenUnstatedFile("file", opened).IsOk());
    EXPECT_EQ(ErrorNumber::DeviceUnavailable, std::move(opened).Stat(file).Number());
    std::filesystem::remove(path);
    folder.Write("other", text);
    std::filesystem::create_symlink("other", path);
    EXPECT_FALSE(open.OpenUnstatedFile("file", opened).IsOk());
}

TEST_F(ListingTest, AFolderNobodyMayListIsAnError) {
    folder.Write("closed/file", "");
    ASSERT_EQ(0, chmod((folder / "closed").c_str(), 0));
    testing::AsPlainUser(folder, [this] {
        OpenFolder open;
        const Error error = files.Open(folder / "closed", open);
        EXPECT_EQ("Permission denied \"" + (folder / "closed") + "\"", error.Description());
    });
}

}  // namespace
}  // namespace vantrel
