#include "dupes/equal_contents.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <map>

#include "dupes_support.h"

namespace vantrel {
namespace {

using testing::Cases;
using testing::FaultySystemCalls;
using testing::TempFolder;
using testing::WeakHash;

// Files of one size that differ nowhere, or in one byte somewhere.
class Contents {
  public:
    Contents(const TempFolder& folder, std::mt19937& random, std::size_t size, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            std::string text(size, 'x');
            const std::size_t places[]{0, size / 2, size - 1, 20'000 % size};
            if (random() % 3 != 0) text[places[random() % 4]] = static_cast<char>('a' + random() % 3);
            const std::string name = "file" + std::to_string(i);
            folder.Write(name, text, 1'000);
            byText_[text].push_back(i);
            texts_.push_back(std::move(text));
            set_.push_back({folder / name, SeenOf(folder / name), random() % 8 == 0});
        }
    }
    static Seen SeenOf(const std::string& path) {
        SystemCalls calls;
        ReadFile file;
        EXPECT_TRUE(FileSystem(calls).OpenForReading(path, file).IsOk());
        return file.Seen();
    }
    const ContentSet& Set() const { return set_; }
    // The classes are those of the texts, and each has its hash where one is wanted.
    void Expect(const ContentClasses& found, const ContentHashMaker& maker) const {
        ASSERT_EQ(texts_.size(), found.classOf.size());
        for (const auto& [text, members] : byText_) {
            const std::uint32_t number = found.classOf[members[0]];
            ASSERT_NE(0U, number);
            bool wanted = members.size() > 1;
            for (const std::size_t member : members) {
                EXPECT_EQ(number, found.classOf[member]);
                wanted = wanted || set_[member].wantsHash;
            }
            EXPECT_EQ(members.size(), static_cast<std::size_t>(
                                          std::count(found.classOf.begin(), found.classOf.end(), number)));
            const std::unique_ptr<ContentHash> hash = maker();
            hash->Add(text.data(), text.size());
            EXPECT_EQ(wanted ? hash->Text() : "", found.hashes[number - 1]);
        }
    }

  private:
    std::vector<std::string> texts_;
    std::map<std::string, std::vector<std::size_t>> byText_;
    ContentSet set_;
};

TEST(EqualContents, ClassesAreThoseOfTheBytesHoweverTheyAreRead) {
    SystemCalls calls;
    const FileSystem files(calls);
    for (int seed = 0; seed < Cases("VANTREL_DUPE_CASES", 60); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(static_cast<unsigned>(seed));
        const std::size_t sizes[]{1, 100, kReadWhole, kReadWhole + 1, 300'000, 600'000};
        const TempFolder a, b;
        const Contents first(a, random, sizes[random() % 6], 1 + random() % 12);
        const Contents second(b, random, sizes[random() % 3], 2 + random() % 40);
        ContentTerms terms;
        const HashMethod methods[]{HashMethod::Crc16, HashMethod::Crc32, HashMethod::Md5};
        terms.hash = random() % 2 != 0 ? WeakHash() : HashMakerFor(methods[random() % 3]);
        terms.openAtOnce = 1 + random() % 16;
        if (random() % 2 != 0) terms.heldAtOnce = 250;
        if (random() % 3 == 0) terms.turn = std::make_shared<std::mutex>();
        *terms.waits = random() % 2 != 0;
        const auto found = FindEqualContents(files, {first.Set(), second.Set()}, terms, StopFlag());
        ASSERT_EQ(2U, found.size());
        first.Expect(found[0], terms.hash);
        second.Expect(found[1], terms.hash);
    }
}

TEST(EqualContents, WhatChangedOrCannotBeReadIsInNoClass) {
    for (const std::size_t size : {std::size_t{10}, std::size_t{200'000}}) {
        const TempFolder folder;
        for (const auto* name : {"a", "b", "gone", "grown", "failing"})
            folder.Write(name, std::string(size, 'x'), 1'000);
        ContentSet set;
        for (const auto* name : {"failing", "gone", "a", "grown", "b"})
            set.push_back({folder / name, Contents::SeenOf(folder / name)});
        unlink((folder / "gone").c_str());
        folder.Write("grown", std::string(size + 1, 'x'));
        FaultySystemCalls calls;
        calls.FailAt(testing::Call::PRead, 1, EIO);
        ContentTerms terms;
        terms.hash = HashMakerFor(HashMethod::Crc32);
        const auto found = FindEqualContents(FileSystem(calls), {set}, terms, StopFlag());
        EXPECT_EQ((std::vector<std::uint32_t>{0, 0, 1, 0, 1}), found.at(0).classOf) << size;
    }
}

// A file that is written to between its reading and the end is told by its time.
TEST(EqualContents, WhatChangesWhileItIsReadIsInNoClass) {
    const TempFolder folder;
    ContentSet set;
    for (const auto* name : {"a", "b", "c"}) {
        folder.Write(name, std::string(300'000, 'x'), 1'000);
        set.push_back({folder / name, Contents::SeenOf(folder / name)});
    }
    FaultySystemCalls calls;
    int reads = 0;
    calls.before = [&](const FaultySystemCalls::Record& record) {
        if (record.call == testing::Call::PRead && ++reads == 10)
            folder.Write("b", std::string(300'000, 'y'), 2'000);
    };
    ContentTerms terms;
    terms.hash = HashMakerFor(HashMethod::Crc32);
    const auto found = FindEqualContents(FileSystem(calls), {set}, terms, StopFlag());
    ASSERT_NE(0U, found.at(0).classOf[0]);
    EXPECT_EQ(found[0].classOf[0], found[0].classOf[2]);
    EXPECT_NE(found[0].classOf[0], found[0].classOf[1]);
    EXPECT_GE(reads, 10);
}

TEST(EqualContents, FirstAndLastBlockDecideWhereTheyCan) {
    const TempFolder folder;
    ContentSet set;
    for (int i = 0; i < 20; ++i) {
        const std::string name = "file" + std::to_string(i);
        std::string text(2'000'000, 'x');
        text.back() = static_cast<char>(i);
        folder.Write(name, text, 1'000);
        set.push_back({folder / name, Contents::SeenOf(folder / name)});
    }
    FaultySystemCalls calls;
    ContentTerms terms;
    terms.hash = HashMakerFor(HashMethod::Crc16);
    const auto found = FindEqualContents(FileSystem(calls), {set}, terms, StopFlag());
    EXPECT_EQ(20U, std::set<std::uint32_t>(found[0].classOf.begin(), found[0].classOf.end()).size());
    EXPECT_EQ(40U, calls.Count(testing::Call::PRead));
    EXPECT_EQ(40'000'000U, terms.bytesDone->load());
}

}  // namespace
}  // namespace vantrel
