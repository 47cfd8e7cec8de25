#include "platform/files/folder_reading.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Call;
using testing::FaultySystemCalls;
using testing::TempFolder;

struct Listing {
    std::vector<std::string> entries;  // each with what was found out about it
    Error error;
};

void Put(const FolderEntry& entry, Listing& listing) {
    listing.entries.push_back(std::string(entry.name) + " " + std::to_string(static_cast<int>(entry.kind)) +
                              " " + std::to_string(entry.size) + " " + std::to_string(entry.id.inode) + " " +
                              std::to_string(static_cast<int>(entry.reason)) +
                              (entry.hasStat ? "" : " no stat"));
}

class FolderReadingTest : public ::testing::TestWithParam<StatPolicy> {
  protected:
    FolderReadingTest() {
        for (int i = 0; i < kFiles; ++i) folder.Write("some file " + std::to_string(i * 31 % kFiles), "12");
        folder.Write("odd\n\xFF\\", "1");
        folder.MakeFolder("folder");
        EXPECT_EQ(0, symlink("nowhere", (folder / "link").c_str()));
        EXPECT_EQ(0, mkfifo((folder / "pipe").c_str(), 0600));
    }
    Listing Alone() {
        Listing listing;
        OpenFolder open;
        listing.error = files.Open(folder.Path(), open);
        if (!listing.error.IsOk()) return listing;
        listing.error = open.ForEach(
            [&](const FolderEntry& entry) {
                Put(entry, listing);
                return true;
            },
            GetParam());
        return listing;
    }
    Listing ByWorkers(std::size_t stopAt = SIZE_MAX) {
        Listing listing;
        FolderReading reading(
            workers,
            [files = files, path = folder.Path()](OpenFolder& open) { return files.Open(path, open); },
            GetParam());
        listing.error = reading.Open([] {});
        if (!listing.error.IsOk()) return listing;
        listing.error = reading.ForEach(
            [&](const FolderEntry& entry) {
                Put(entry, listing);
                return listing.entries.size() < stopAt;
            },
            [] {});
        return listing;
    }

    // More than one block of names.
    static constexpr int kFiles = 10'000;
    TempFolder folder;
    FaultySystemCalls calls;
    FileSystem files{calls};
    Workers workers{4};
};

// It gives what a listing by one thread gives, in the same order, from the beginning to an early stop.
TEST_P(FolderReadingTest, GivesWhatAListingGives) {
    const Listing alone = Alone();
    ASSERT_EQ(alone.entries.size(), kFiles + 4U);
    const Listing all = ByWorkers();
    EXPECT_TRUE(all.error.IsOk());
    EXPECT_TRUE(all.entries == alone.entries);
    const Listing some = ByWorkers(700);
    EXPECT_TRUE(some.error.IsOk());
    EXPECT_EQ(some.entries, std::vector(alone.entries.begin(), alone.entries.begin() + 700));
}

// An error in the middle is no end, and one at the beginning is told like any other.
TEST_P(FolderReadingTest, AnErrorIsNoEnd) {
    calls.FailAt(Call::GetDents, 4, EIO);
    const Listing broken = ByWorkers();
    EXPECT_FALSE(broken.error.IsOk());
    EXPECT_GT(broken.entries.size(), 1'000U);
    EXPECT_LT(broken.entries.size(), kFiles + 0U);
    calls.ClearFaults();
    calls.FailAll(Call::Open, EACCES);
    const Listing refused = ByWorkers();
    EXPECT_EQ(refused.error.Description(), Alone().error.Description());
    EXPECT_TRUE(refused.entries.empty());
}

// What is not there at the first look is looked for at the end; what cannot be looked at is unknown.
TEST_P(FolderReadingTest, WhatVanishesIsLeftOut) {
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call != Call::Statx) return;
        for (const char* name : {"pipe", "link"})
            if (record.path == name) std::remove((folder / name).c_str());
    };
    const Listing listing = ByWorkers();
    calls.before = nullptr;
    EXPECT_TRUE(listing.error.IsOk());
    EXPECT_EQ(listing.entries.size(), kFiles + 2U);
    EXPECT_TRUE(listing.entries == Alone().entries);
}

INSTANTIATE_TEST_SUITE_P(Policies, FolderReadingTest,
                         ::testing::Values(StatPolicy::All, StatPolicy::NonFilesOnly));

}  // namespace
}  // namespace vantrel
