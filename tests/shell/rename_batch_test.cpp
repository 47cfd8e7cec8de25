// Batches of renames against a model of a folder: as they should end, with every call failing once, and
// killed before every call.
#include "shell/rename_batch.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <random>
#include <set>

#include "platform/names/names.h"
#include "support/faulty_system_calls.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Model = std::map<std::string, std::string>;  // content by name
struct Killed {};

class RenameBatchTest : public ::testing::Test {
  public:
    RenameBatchTest() {
        box.MakeFolder("journals");
        box.MakeFolder("work");
    }
    void Fill(const Model& model) const {
        fs::remove_all(box / "work");
        box.MakeFolder("work");
        for (const auto& [name, content] : model) box.Write("work/" + name, content);
    }
    Model Disk() const {
        Model model;
        for (const auto& entry : fs::directory_iterator(box / "work"))
            model[entry.path().filename()] = box.Read("work/" + entry.path().filename().string());
        return model;
    }
    std::size_t Journals() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(box / "journals"), fs::directory_iterator()));
    }
    RenameBatch Batch(const std::vector<std::pair<std::string, std::string>>& ways) const {
        RenameBatch batch{{box / "work", {}}, {}};
        for (const auto& [from, to] : ways) batch.steps.push_back({from, to});
        return batch;
    }
    BatchRenames Renames() { return {files, clock, loop, box / "journals"}; }
    RenameResult Run(const std::vector<std::pair<std::string, std::string>>& ways) {
        return Renames().Run(Batch(ways));
    }

    TempFolder box;
    FaultySystemCalls calls;
    FileSystem files{calls};
    FakeClock clock;
    ScriptedLoop loop;
};

// Some names of a folder for others of the same small stock, so that chains and rings are many.
struct RandomBatch {
    Model before, after;
    std::vector<std::pair<std::string, std::string>> ways;

    explicit RandomBatch(unsigned seed) {
        std::mt19937 random(seed);
        std::vector<std::string> stock{"a", "b", "c", "d", "e", "f", "\xC3\xA9", "g h", "i.txt", "j"};
        std::shuffle(stock.begin(), stock.end(), random);
        const std::size_t objects = 1 + random() % 8;
        for (std::size_t i = 0; i < objects; ++i) before[stock[i]] = "content " + std::to_string(i);
        std::vector<std::string> moved(stock.begin(),
                                       stock.begin() + 1 + static_cast<int>(random() % objects));
        std::vector<std::string> free(stock.begin() + static_cast<int>(objects), stock.end());
        std::vector<std::string> targets = moved;
        if (!free.empty() && random() % 2 == 0) targets.push_back(free.front());
        std::shuffle(targets.begin(), targets.end(), random);
        after = before;
        for (const std::string& name : moved) after.erase(name);
        for (std::size_t i = 0; i < moved.size(); ++i) {
            std::string to = targets[i];
            if (random() % 4 == 0 && to.size() == 1) to[0] = static_cast<char>(to[0] - 'a' + 'A');
            if (moved[i] == to) {
                after[to] = before[to];
                continue;
            }
            ways.emplace_back(moved[i], to);
            after[to] = before[moved[i]];
        }
    }
};

TEST_F(RenameBatchTest, SwapsChainsRingsAndChangesOfCaseComeOutAsWanted) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const RandomBatch batch(seed);
        Fill(batch.before);
        const RenameResult result = Run(batch.ways);
        EXPECT_TRUE(result.AllDone());
        EXPECT_TRUE(result.notClosed.IsOk());
        EXPECT_EQ(batch.after, Disk());
        EXPECT_EQ(0U, Journals());
    }
}

TEST_F(RenameBatchTest, KilledBeforeAnyCallEveryObjectIsKnownAndCanBePutRight) {
    std::size_t repairs = 0, putRight = 0;
    for (unsigned seed = 0; seed < 10; ++seed) {
        const RandomBatch batch(seed);
        for (std::size_t at = 1; !batch.ways.empty(); ++at) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", killed before call " + std::to_string(at));
            Fill(batch.before);
            calls.ResetCount();
            bool killed = false;
            calls.before = [&](const FaultySystemCalls::Record& next) {
                // Descriptors are closed where nothing may be thrown; a kill closes them by itself.
                if (killed || calls.Count() < at || next.call == Call::Close) return;
                killed = true;
                throw Killed{};
            };
            try {
                Run(batch.ways);
            } catch (const Killed&) {
            }
            calls.before = nullptr;
            const std::vector<LeftRename> left = Renames().FindLeft();
            if (left.empty()) {
                // Nothing was done, or all of it.
                EXPECT_TRUE(Disk() == batch.before || Disk() == batch.after);
            } else {
                ASSERT_THAT(left, SizeIs(1));
                EXPECT_EQ(left[0].objects, left[0].renamed + left[0].temporaries + left[0].untouched);
                repairs += 1, putRight += left[0].temporaries;
                const bool finish = (at + seed) % 2 == 0;
                EXPECT_TRUE(
                    Renames().Repair(left[0], finish ? RepairWay::Finish : RepairWay::PutBack).AllDone());
                EXPECT_EQ(finish ? batch.after : batch.before, Disk());
            }
            EXPECT_EQ(0U, Journals());
            if (!killed) break;
            ASSERT_FALSE(HasFailure());
        }
    }
    EXPECT_GT(repairs, 20U);
    EXPECT_GT(putRight, 5U);
}

TEST_F(RenameBatchTest, WhateverCallFailsNothingIsLostAndTheResultTellsWhereEachStands) {
    std::size_t aside = 0;
    for (unsigned seed = 0; seed < 10; ++seed) {
        const RandomBatch batch(seed);
        // One call alone, and all from it on: then nothing can be put back either.
        for (const bool lasting : {false, true}) {
            for (std::size_t at = 1; !batch.ways.empty(); ++at) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", call " + std::to_string(at));
                Fill(batch.before);
                calls.ResetCount();
                for (std::size_t n = at; n < at + (lasting ? 1'000 : 1); ++n) calls.FailAt(n, EIO);
                const RenameResult result = Run(batch.ways);
                const bool reached = calls.Count() >= at;
                calls.ClearFaults();
                Model expected = batch.before;
                for (std::size_t i = 0; i < result.objects.size(); ++i) expected.erase(batch.ways[i].first);
                for (std::size_t i = 0; i < result.objects.size(); ++i) {
                    const RenamedObject& object = result.objects[i];
                    expected[object.standsAs] = batch.before.at(batch.ways[i].first);
                    EXPECT_EQ(object.outcome == ItemOutcome::Done, object.standsAs == batch.ways[i].second);
                    EXPECT_EQ(object.outcome == ItemOutcome::Failed, !object.error.IsOk());
                    aside += object.standsAs.starts_with("vt_tempname") ? 1 : 0;
                }
                EXPECT_EQ(expected, Disk());
                for (const LeftRename& left : Renames().FindLeft())
                    Renames().Repair(left, RepairWay::PutBack);
                for (const auto& [name, content] : Disk()) EXPECT_FALSE(name.starts_with("vt_temp")) << name;
                EXPECT_EQ(0U, Journals());
                if (!reached) break;
                ASSERT_FALSE(HasFailure());
            }
        }
    }
    EXPECT_GT(aside, 2U) << "no ring was ever left half done";
}

TEST_F(RenameBatchTest, NothingIsReplacedAndTheRestIsDone) {
    Fill({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}, {"e", "5"}});
    // "c" keeps its name, so that neither the chain onto it nor the ring through it can go.
    box.MakeFolder("work/vt_tempname");
    const RenameResult result = Run({{"a", "c"}, {"b", "x/y"}, {"d", "n"}, {"e", "E"}, {"gone", "z"}});
    EXPECT_EQ(EEXIST, result.objects[0].error.SystemNumber());
    EXPECT_EQ(ErrorNumber::BadFileNameOrNumber, result.objects[1].error.Number());
    EXPECT_EQ(ItemOutcome::Done, result.objects[2].outcome);
    EXPECT_EQ(ItemOutcome::Done, result.objects[3].outcome);
    EXPECT_EQ(ErrorNumber::FileNotFound, result.objects[4].error.Number());
    fs::remove(box / "work/vt_tempname");
    EXPECT_EQ((Model{{"a", "1"}, {"b", "2"}, {"c", "3"}, {"n", "4"}, {"E", "5"}}), Disk());

    // A name as long as can be, and one that is too long.
    const std::string longest(255, 'x');
    EXPECT_TRUE(Run({{"a", longest}}).AllDone());
    EXPECT_FALSE(Run({{longest, longest + "x"}}).AllDone());
    EXPECT_TRUE(Run({{longest, "a"}}).AllDone());
}

TEST_F(RenameBatchTest, OtherObjectsThanThoseMeantAreLeftAlone) {
    Fill({{"a", "1"}, {"b", "2"}});
    RenameBatch batch = Batch({{"a", "x"}, {"b", "y"}});
    struct stat seen {};
    ASSERT_EQ(0, stat((box / "work/a").c_str(), &seen));
    batch.steps[0].inode = seen.st_ino + 1'000'000;
    batch.steps[1].kind = Sighting::Kind::Folder;
    const RenameResult result = Renames().Run(batch);
    for (const RenamedObject& object : result.objects) EXPECT_EQ(kChangedSinceSeen, object.error.Number());
    EXPECT_EQ((Model{{"a", "1"}, {"b", "2"}}), Disk());

    // The folder of that path is another one by now; and one that is exchanged while the batch runs is not
    // touched.
    batch = Batch({{"a", "x"}, {"b", "y"}});
    batch.folder.id = {seen.st_dev, seen.st_ino};
    EXPECT_EQ(kChangedSinceSeen, Renames().Run(batch).notBegun.Number());
    loop.onYield = [this] {
        loop.onYield = nullptr;
        fs::rename(box / "work", box / "away");
        Fill({{"a", "other"}, {"b", "other"}});
    };
    EXPECT_TRUE(Run({{"a", "x"}, {"b", "y"}}).AllDone());
    EXPECT_EQ((Model{{"a", "other"}, {"b", "other"}}), Disk());
    EXPECT_TRUE(box.Exists("away/x") && box.Exists("away/y"));
}

TEST_F(RenameBatchTest, WithoutAJournalNothingIsBegun) {
    Fill({{"a", "1"}, {"b", "2"}});
    for (const Call call : {Call::Write, Call::Fsync}) {
        calls.ResetCount();
        calls.FailAt(call, 1, ENOSPC);
        const RenameResult result = Run({{"a", "b"}, {"b", "a"}});
        calls.ClearFaults();
        EXPECT_EQ(ErrorNumber::DiskFull, result.notBegun.Number());
        EXPECT_EQ((Model{{"a", "1"}, {"b", "2"}}), Disk());
        EXPECT_EQ(0U, Journals());
    }
    fs::remove(box / "journals");
    EXPECT_FALSE(Run({{"a", "c"}}).notBegun.IsOk());
    EXPECT_TRUE(box.Exists("work/a"));
}

TEST_F(RenameBatchTest, ACancelEndsTheBatchBetweenTwoObjectsAndNeverInARing) {
    Fill({{"a", "1"}, {"b", "2"}, {"c", "3"}});
    loop.cancelAt = 2;
    RenameResult result = Run({{"a", "x"}, {"b", "c"}, {"c", "b"}});
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(ItemOutcome::NotReached, result.objects[1].outcome);
    EXPECT_EQ((Model{{"x", "1"}, {"b", "2"}, {"c", "3"}}), Disk());
    EXPECT_EQ(0U, Journals());
}

TEST_F(RenameBatchTest, JournalsThatAreInUseTornOrStrangeAreTakenForWhatTheyAre) {
    Fill({{"a", "1"}});
    box.Write("journals/Rename-torn.journal", "Vantrel rename journal 1\n/x\t1\t0\n0\t5\t0\ta\tb");
    const std::string head = "Vantrel rename journal 1\n" + (box / "work") + "\t0\t0\n";
    box.Write("journals/Rename-strange.journal", head + "0\t5\t0\t../a\tb\tvt_tempname-1-0\nend\n");
    box.Write("journals/Rename-elsewhere.journal",
              "Vantrel rename journal 1\n/not/there\t1\t0\n0\t5\t0\ta\tb\tvt_tempname-1-0\nend\n");
    box.Write("journals/Rename-busy.journal", head + "0\t5\t0\tc\td\tvt_tempname-2-0\nend\n");
    box.Write("work/vt_tempname-2-0", "stranded");
    const int busy = open((box / "journals/Rename-busy.journal").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(0, flock(busy, LOCK_EX));
    EXPECT_THAT(Renames().FindLeft(), IsEmpty());
    EXPECT_EQ(2U, Journals()) << "that of a folder which is not there, and that of a batch which runs";
    close(busy);
    const std::vector<LeftRename> left = Renames().FindLeft();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_EQ(1U, left[0].temporaries);

    // Where its name is taken meanwhile the object stays where it is, and is offered again.
    box.Write("work/c", "newcomer");
    EXPECT_EQ(EEXIST, Renames().Repair(left[0], RepairWay::PutBack).objects.at(0).error.SystemNumber());
    ASSERT_THAT(Renames().FindLeft(), SizeIs(1));
    EXPECT_TRUE(Renames().Repair(left[0], RepairWay::Finish).AllDone());
    EXPECT_EQ((Model{{"a", "1"}, {"c", "newcomer"}, {"d", "stranded"}}), Disk());
    EXPECT_EQ(1U, Journals());
}

// A file system for which letter case does not count: a name that differs in case alone from one that is
// there cannot be had without replacing, and leads to the same object.
class CaselessCalls : public FaultySystemCalls {
  public:
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override {
        return FaultySystemCalls::StatxAt(folder, Real(folder, path).c_str(), flags, mask, out);
    }
    int RenameAt(int a, const char* from, int b, const char* to, unsigned flags) override {
        const std::string source = Real(a, from), there = Real(b, to);
        if (access(a, source) && access(b, there)) return (flags != 0) ? -EEXIST : -EBUSY;
        return FaultySystemCalls::RenameAt(a, source.c_str(), b, to, flags);
    }

  private:
    static bool access(int folder, const std::string& name) {
        return faccessat(folder, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
    }
    // The name of what is there under any case.
    static std::string Real(int folder, const std::string& name) {
        if (folder < 0 || name.empty() || name.find('/') != std::string::npos) return name;
        const std::string path = "/proc/self/fd/" + std::to_string(folder);
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(path, none))
            if (EqualIgnoringCase(entry.path().filename().string(), name)) return entry.path().filename();
        return name;
    }
};

TEST_F(RenameBatchTest, LetterCaseChangesWhereItDoesNotCount) {
    CaselessCalls caseless;
    FileSystem system(caseless);
    Fill({{"abc", "1"}, {"def", "2"}, {"x", "3"}, {"y", "4"}});
    BatchRenames renames(system, clock, loop, box / "journals");
    EXPECT_TRUE(renames.Run(Batch({{"abc", "ABC"}, {"def", "Def"}, {"x", "Y"}, {"y", "X"}})).AllDone());
    EXPECT_EQ((Model{{"ABC", "1"}, {"Def", "2"}, {"Y", "3"}, {"X", "4"}}), Disk());
    EXPECT_EQ(0U, Journals());
}

TEST(OrderRenames, PutsWhoeverTakesANameBehindTheOneWhoGivesItUp) {
    const auto order = [](const std::vector<std::pair<std::string, std::string>>& ways) {
        std::vector<RenameStep> steps;
        for (const auto& [from, to] : ways) steps.push_back({from, to});
        std::vector<std::string> texts;
        for (const RenameUnit& unit : OrderRenames(steps)) {
            std::string text = unit.isRing ? "ring" : "";
            for (const std::size_t step : unit.steps) text += ways[step].first;
            texts.push_back(text);
        }
        return texts;
    };
    EXPECT_THAT(order({{"1", "2"}, {"2", "3"}, {"3", "4"}}), ElementsAre("3", "2", "1"));
    EXPECT_THAT(order({{"a", "B"}, {"b", "A"}, {"c", "C"}, {"d", "a1"}}), ElementsAre("c", "d", "ringab"));
    // Two objects whose names differ in case alone both have to go first.
    EXPECT_THAT(order({{"x", "A"}, {"a", "1"}, {"A", "2"}}), ElementsAre("a", "A", "x"));
}

}  // namespace
}  // namespace vantrel::testing
