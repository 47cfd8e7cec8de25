// Whatever single call fails, wherever the process is killed, and wherever the user cancels: every file is
// wholly old or wholly new, nothing is lost, and nothing counts as done that was not.
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>

#include "platform/names/temporary_names.h"
#include "support/child_process.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

struct Scenario {
    const char* name;
    ShellOperation operation;
    bool twoDrives;
};

// How many random runs there are of all; at night there are more, and every fault is tried.
std::size_t RandomRuns(std::size_t otherwise) {
    const char* given = getenv("VANTREL_RANDOM_RUNS");
    return given ? std::strtoul(given, nullptr, 10) : otherwise;
}
bool IsNight() {
    return RandomRuns(0) >= 1'000;
}

// Some thousands of runs, each with its syncs: in memory, where there is such a place.
struct InMemory {
    static void SetUpTestSuite() {
        if (access("/dev/shm", W_OK) == 0) setenv("TMPDIR", "/dev/shm", 0);
    }
    static void TearDownTestSuite() {
        if (const char* folder = getenv("TMPDIR"); folder && std::string_view(folder) == "/dev/shm")
            unsetenv("TMPDIR");
    }
};

class ShellFaultTest : public ::testing::TestWithParam<Scenario>, public InMemory {
  public:
    using InMemory::SetUpTestSuite;
    using InMemory::TearDownTestSuite;

    // A small pair of trees with all kinds of work in them, and one operation on it.
    class Stage : public ShellTest {
      public:
        explicit Stage(const Scenario& scenario) {
            if (scenario.twoDrives) SeparateDrives();
            drop.Write("left/Sub/a", "new a");
            drop.Write("left/Sub/deep/b", std::string(300'000, 'b'));
            drop.Write("left/over", "new over");
            drop.Write("left/fresh", "fresh");
            fs::create_symlink("a", Left("Sub/link"));
            drop.Write("right/Sub/a", "old a");
            drop.Write("right/Sub/other", "stays");
            drop.Write("right/over", "old over");
            request.operation = scenario.operation;
            request.sources = {Left("Sub"), Left("over"), Left("fresh")};
            request.target = drop / "right";
            request.noConfirmation = true;
            if (scenario.operation == Rename) {
                request.sources = {Left("fresh")};
                request.target = Left("renamed");
            }
            left = TreeOf(drop / "left/");
            right = TreeOf(drop / "right/");
        }
        void TestBody() override {}

        bool LeavesSource() const { return request.operation == Copy; }
        bool HasTarget() const { return request.operation == Copy || request.operation == Move; }

        void ExpectNothingLost(bool leftoversAllowed) {
            const Tree left1 = TreeOf(drop / "left/"), right1 = TreeOf(drop / "right/");
            const Tree trash = TreeOf(drop / "home/");
            if (request.operation == Rename) {
                EXPECT_TRUE(left1 == left || left1 == Renamed());
                EXPECT_EQ(right, right1);
                return;
            }
            for (const auto& [path, what] : left1) {
                ASSERT_TRUE(left.contains(path)) << path;
                EXPECT_EQ(left.at(path), what) << path;
            }
            for (const auto& [path, what] : right1) {
                if (leftoversAllowed && IsTemporaryCopyName(fs::path(path).filename().string())) continue;
                const bool isOld = right.contains(path) && right.at(path) == what;
                const bool isNew = HasTarget() && left.contains(path) && left.at(path) == what;
                EXPECT_TRUE(isOld || isNew) << path << " is " << what.substr(0, 40);
            }
            for (const auto& [path, what] : right) {
                const bool approved = HasTarget() && left.contains(path);
                EXPECT_TRUE(approved || (right1.contains(path) && right1.at(path) == what)) << path;
            }
            if (request.operation == Delete) return;
            std::vector<std::string> everywhere;
            for (const Tree& tree : {left1, right1, trash})
                std::ranges::copy(Contents(tree), std::back_inserter(everywhere));
            for (const std::string& content : Contents(left))
                EXPECT_TRUE(std::ranges::count(everywhere, content) > 0) << content.substr(0, 40);
            if (LeavesSource()) {
                EXPECT_EQ(left, left1);
            }
        }

        Tree Renamed() const {
            Tree renamed = left;
            auto node = renamed.extract("fresh");
            node.key() = "renamed";
            renamed.insert(std::move(node));
            return renamed;
        }

        void ExpectTruth(const ShellResult& result) {
            const Tree left1 = TreeOf(drop / "left/"), right1 = TreeOf(drop / "right/");
            const auto below = [](const Tree& tree, const std::string& name) {
                Tree part;
                for (const auto& entry : tree) {
                    if (entry.first == name || entry.first.starts_with(name + "/")) part.insert(entry);
                }
                return part;
            };
            ASSERT_EQ(request.sources.size(), result.items.size());
            bool allDone = true;
            for (const ShellItem& item : result.items) {
                const std::string name = fs::path(item.path).filename().string();
                allDone = allDone && item.outcome == Done;
                if (item.outcome == Failed) {
                    EXPECT_FALSE(item.error.IsOk()) << name;
                }
                if (request.operation == Rename) {
                    EXPECT_EQ(item.outcome == Done ? Renamed() : left, left1);
                    continue;
                }
                if (item.outcome != Done) continue;
                EXPECT_EQ(LeavesSource(), !below(left1, name).empty()) << name;
                for (const auto& [path, what] : below(left, name)) {
                    if (HasTarget()) {
                        EXPECT_EQ(what, right1.at(path)) << path;
                    }
                }
                if (request.operation == Recycle) {
                    EXPECT_TRUE(drop.Exists("home/.local/share/Trash/files/" + name));
                    EXPECT_TRUE(drop.Exists("home/.local/share/Trash/info/" + name + ".trashinfo"));
                }
            }
            EXPECT_EQ(allDone, result.AllDone());
            EXPECT_EQ(result.code != 0, std::ranges::any_of(result.troubles, [](const ShellItem& at) {
                          return at.outcome == Failed;
                      }));
        }

        ShellRequest request;
        Tree left, right;
    };

    static std::size_t CallsOfARun() {
        Stage stage(GetParam());
        stage.Run(stage.request);
        return stage.calls.Count();
    }
};

INSTANTIATE_TEST_SUITE_P(Operations, ShellFaultTest,
                         ::testing::Values(Scenario{"Copy", Copy, false}, Scenario{"Move", Move, false},
                                           Scenario{"MoveAcross", Move, true},
                                           Scenario{"Delete", Delete, false},
                                           Scenario{"Recycle", Recycle, false},
                                           Scenario{"Rename", Rename, false}),
                         [](const auto& given) { return given.param.name; });

// By day every third call, at night each one.
TEST_P(ShellFaultTest, AnySingleCallMayFail) {
    std::size_t calls = CallsOfARun();
    const std::size_t step = IsNight() ? 1 : 3;
    for (std::size_t n = 1; n <= calls && !HasFailure(); n += step) {
        // "No such file" is the one that a step may take for an answer.
        std::vector<int> codes{n % 4 < 2 ? EIO : ENOSPC, ENOENT};
        if (IsNight()) codes = {EIO, ENOSPC, ENOENT, EACCES, ENOMEM};
        for (const int code : codes) {
            for (const bool retry : {false, true}) {
                if (retry && !IsNight() && n % 2 != 0) continue;
                Stage stage(GetParam());
                stage.calls.FailAt(n, code);
                stage.request.noErrorUi = !retry;
                stage.questions.errorAnswers.assign(10, ErrorAnswer::Retry);
                const ShellResult result = stage.Run(stage.request);
                calls = std::max(calls, stage.calls.Count());
                const Call failed =
                    stage.calls.Count() < n ? Call::Access : stage.calls.Sequence()[n - 1].call;
                SCOPED_TRACE("call " + std::to_string(n) + " of kind " +
                             std::to_string(static_cast<int>(failed)) + ", error " + std::to_string(code) +
                             (retry ? ", tried again" : ""));
                stage.ExpectNothingLost(failed == Call::Unlink);
                stage.ExpectTruth(result);
                // A sync tells its error once only: that cannot be tried again. Nor can the name of a copy
                // whose target was taken for absent: that is not replaced without having been seen.
                if (retry && failed != Call::Syncfs && code != ENOENT) {
                    EXPECT_TRUE(result.AllDone());
                }
                if (failed == Call::Syncfs) {
                    EXPECT_FALSE(result.AllDone());
                }
            }
        }
    }
    EXPECT_GT(calls, GetParam().operation == Rename ? 8U : 40U);
}

TEST_P(ShellFaultTest, AKillAtAnyPointLosesNothingAndTheNextRunClearsUp) {
    const std::size_t calls = CallsOfARun();
    constexpr std::size_t kScenarios = 6;
    std::mt19937 random(20'261'122);
    const std::size_t kills = std::min(calls, (RandomRuns(72) + kScenarios - 1) / kScenarios);
    std::set<std::size_t> points;
    while (points.size() < kills) points.insert(1 + random() % calls);
    for (const std::size_t n : points) {
        if (HasFailure()) break;
        Stage stage(GetParam());
        SCOPED_TRACE("killed at call " + std::to_string(n));
        const pid_t child = ForkAlone();
        if (child == 0) {
            stage.calls.before = [&](const FaultySystemCalls::Record&) {
                if (stage.calls.Count() == n) kill(getpid(), SIGKILL);
            };
            stage.Run(stage.request);
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
        stage.ExpectNothingLost(true);
        // What is left of the sources goes in a second run, and nothing of the first one stays about.
        std::erase_if(stage.request.sources, [](const std::string& path) { return !fs::exists(path); });
        if (stage.request.sources.empty()) continue;
        EXPECT_TRUE(stage.Run(stage.request).AllDone());
        stage.ExpectNothingLost(false);
    }
}

TEST_P(ShellFaultTest, ACancelAtAnyPointLeavesWholeFiles) {
    std::size_t asked = 1;
    for (std::size_t n = 1; n <= asked && !HasFailure(); ++n) {
        Stage stage(GetParam());
        SCOPED_TRACE("cancelled at " + std::to_string(n));
        stage.progress.cancelAt = n;
        const ShellResult result = stage.Run(stage.request);
        stage.ExpectNothingLost(false);
        if (stage.progress.asked >= n) {
            EXPECT_TRUE(result.cancelled && result.anyOperationsAborted);
            EXPECT_TRUE(stage.questions.troubles.empty());
        }
        asked = std::max(asked, stage.progress.asked);
        for (const ShellItem& item : result.items) EXPECT_NE(Failed, item.outcome);
    }
}

class SingleCopyFaultTest : public ShellTest, public InMemory {
  public:
    using InMemory::SetUpTestSuite;
    using InMemory::TearDownTestSuite;
};

// Single copies, whose outcome is told by two calls.
TEST_F(SingleCopyFaultTest, AnySingleCallMayFailWhileSingleCopiesWait) {
    std::size_t count = 1;
    for (std::size_t n = 1; n <= count && !HasFailure(); n += IsNight() ? 1 : 2) {
        for (const int code : {EIO, ENOENT}) {
            for (const char* folder : {"left", "right"}) fs::remove_all(drop / folder);
            drop.Write("left/over", "new over");
            drop.Write("left/Sub/deep/fresh", "fresh");
            drop.Write("left/Sub/second", "second");
            drop.Write("right/over", "old over");
            calls.ClearFaults();
            std::vector<ShellRoot> roots;
            for (const char* side : {"left", "right"}) {
                FileInfo info;
                ASSERT_TRUE(files.Stat(drop / side, LinkPolicy::Follow, info).IsOk());
                roots.push_back({drop / side, info.id});
            }
            calls.ResetCount();
            calls.FailAt(n, code);
            SCOPED_TRACE("call " + std::to_string(n) + ", error " + std::to_string(code));
            std::set<std::string> done;
            SystemShellOperations shell = Service();
            for (const char* name : {"over", "Sub/deep/fresh", "Sub/second"}) {
                if (shell.CopyOneFile({Left(name), Right(name), {}, roots, true}).IsOk()) done.insert(name);
            }
            const ShellOperations::FinishedCopies finished = shell.FinishCopies();
            const Tree left = TreeOf(drop / "left/");
            const bool isSync = calls.Count() >= n && calls.Sequence()[n - 1].call == Call::Syncfs;
            const bool isUnlink = calls.Count() >= n && calls.Sequence()[n - 1].call == Call::Unlink;
            EXPECT_TRUE(!isSync || !finished.failed.empty());
            for (const ShellOperations::FailedCopy& failed : finished.failed)
                done.erase(failed.path.substr((drop / "left/").size()));
            count = std::max(count, calls.Count());

            const Tree right = TreeOf(drop / "right/");
            EXPECT_EQ(5U, left.size());
            for (const auto& [path, what] : right) {
                const bool isNew = left.contains(path) && left.at(path) == what;
                const bool isLeftover = isUnlink && path.find(".~vantrel-") != std::string::npos;
                EXPECT_TRUE(isNew || what == "f:old over" || isLeftover) << path << " " << what;
            }
            EXPECT_TRUE(right.contains("over"));
            if (isSync) continue;  // which speaks of all
            for (const std::string& name : done) EXPECT_EQ(left.at(name), right.at(name)) << name;
        }
    }
    EXPECT_GT(count, 60U);
}

}  // namespace
}  // namespace vantrel::testing
