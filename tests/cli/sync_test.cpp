#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <QJsonObject>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "program_support.h"
#include "support/plain_user.h"
#include "support/sparse_file.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using testing::Objects;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

// Path below a folder -> content and time of modification.
using Tree = std::map<std::string, std::pair<std::string, fs::file_time_type>>;

class SyncCommandTest : public ::testing::Test {
  protected:
    // The trash lies beside the folders, on their file system, so that it is the one that serves them.
    SyncCommandTest() {
        for (const auto* name : {"left", "right", "program", "data"}) folder.MakeFolder(name);
        if (const char* data = std::getenv("XDG_DATA_HOME")) oldData_ = data;
        setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    }
    ~SyncCommandTest() override {
        if (oldData_.empty())
            unsetenv("XDG_DATA_HOME");
        else
            setenv("XDG_DATA_HOME", oldData_.c_str(), 1);
    }

    // One of everything that a method speaks of.
    void WritePair() const {
        for (const auto* at : {"", "Sub/"}) {
            const std::string below(at);
            folder.Write("left/" + below + "new", "left is newer", 1'600'000'000);
            folder.Write("right/" + below + "new", "old", 1'500'000'000);
            folder.Write("left/" + below + "old", "old", 1'500'000'000);
            folder.Write("right/" + below + "old", "right is newer", 1'600'000'000);
            folder.Write("left/" + below + "only left", "12", 1'600'000'000);
            folder.Write("right/" + below + "only right", "123", 1'600'000'000);
            for (const auto* side : {"left/", "right/"})
                folder.Write(side + below + "same", "same", 1'600'000'000);
        }
        folder.Write("left/L/x/file", "1234", 1'600'000'000);
        folder.Write("right/R/x/file", "12345", 1'600'000'000);
    }

    std::vector<std::string> Arguments(std::vector<std::string> options) const {
        options.insert(options.begin(), "sync");
        for (const auto* each : {"--program-folder", "program", "left", "right"})
            options.push_back(each[0] == '-' ? each : folder / each);
        return options;
    }
    ProgramRun Sync(std::vector<std::string> options,
                    const std::function<void(pid_t)>& whileRunning = {}) const {
        return RunProgram(Arguments(std::move(options)), whileRunning);
    }
    ProgramRun History(std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"history", "--program-folder", folder / "program"});
        return RunProgram(options);
    }

    // Empty folders have an empty content and no time.
    Tree Read(const std::string& below) const {
        Tree tree;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / below)) {
            const std::string path = fs::relative(entry.path(), folder / below).native();
            if (entry.is_directory())
                tree[path + "/"] = {};
            else
                tree[path] = {folder.Read(below + "/" + path), entry.last_write_time()};
        }
        return tree;
    }

    TempFolder folder;

  private:
    std::string oldData_;
};

std::string Text(const QJsonObject& object, const char* key) {
    return object[QLatin1String(key)].toString().toStdString();
}

// What a plan says, done to trees in memory.
void Apply(const std::string& plan, std::map<std::string, Tree>& trees) {
    for (const QJsonObject& action : Objects(plan)) {
        const std::string side = Text(action, "side"), below = Text(action, "folder");
        std::string name = Text(action, "name");
        if (name.starts_with('\\')) name = name.substr(1) + "/";
        if (!below.empty()) name = below.substr(1) + "/" + name;
        Tree& here = trees[side];
        Tree& there = trees[side == "left" ? "right" : "left"];
        const Tree from = here;
        if (!from.contains(name)) ADD_FAILURE() << "there is no " << name;
        for (const auto& [path, state] : from) {
            if (path != name && !(name.ends_with('/') && path.starts_with(name))) continue;
            if (Text(action, "action") == "Delete")
                here.erase(path);
            else
                there[path] = state;
        }
    }
}

std::string Line(const char* side, const char* action, const char* name, int size, const char* below = "") {
    std::string line = std::string(R"({"side":")") + side + R"(","action":")" + action + R"(","name":")" +
                       name + R"(","size":)" + std::to_string(size);
    if (*below != '\0') line += std::string(R"(,"folder":")") + below + '"';
    return line + "}\n";
}

TEST_F(SyncCommandTest, PlanTellsTheActionsInOrderAndTouchesNothing) {
    WritePair();
    const Tree before = Read("");
    const ProgramRun plan = Sync({"--plan", "--format", "json", "--sync-method", "MakeRightSameAsLeft"});
    EXPECT_EQ(0, plan.status);
    EXPECT_EQ("", plan.err);
    const std::string expected =
        Line("right", "Delete", "only right", 3) + Line("right", "Delete", "\\\\R", 5) +
        Line("left", "Copy", "new", 13) + Line("left", "Copy", "old", 3) +
        Line("left", "Copy", "only left", 2) + Line("left", "Copy", "\\\\L", 4) +
        Line("right", "Delete", "only right", 3, "\\\\Sub") + Line("left", "Copy", "new", 13, "\\\\Sub") +
        Line("left", "Copy", "old", 3, "\\\\Sub") + Line("left", "Copy", "only left", 2, "\\\\Sub");
    EXPECT_EQ(expected, plan.out);
    const ProgramRun text = Sync({"--plan", "--sync-method", "ReplaceOlderOnLeft"});
    EXPECT_EQ(
        "Side   Action    Size  Name\n"
        "right  <-- Copy    14  old\n"
        "right  <-- Copy    14  \\Sub/old\n"
        "\nPlan: 0 to delete, 2 to copy (28 Bytes)\n",
        text.out);
    EXPECT_EQ(before, Read(""));
}

TEST_F(SyncCommandTest, EveryMethodDoesWhatItsPlanSaysAndThenHasNothingToDo) {
    const struct {
        const char* method;
        std::size_t actions;
    } cases[] = {{"MakeRightSameAsLeft", 10}, {"MakeLeftSameAsRight", 10}, {"ReplaceOlderCopyOrphans", 10},
                 {"AddOrphansToLeft", 3},     {"AddOrphansToRight", 3},    {"ReplaceOlderOnLeft", 2},
                 {"ReplaceOlderOnRight", 2}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.method);
        for (const auto* side : {"left", "right"}) {
            fs::remove_all(folder / side);
            folder.MakeFolder(side);
        }
        WritePair();
        const std::vector<std::string> options = {"--format=json", "--sync-method", each.method, "--yes"};
        std::vector<std::string> planOptions = options;
        planOptions.emplace_back("--plan");
        const ProgramRun plan = Sync(planOptions);
        EXPECT_EQ(each.actions, Objects(plan.out).size()) << plan.out;
        std::map<std::string, Tree> trees = {{"left", Read("left")}, {"right", Read("right")}};
        Apply(plan.out, trees);

        const ProgramRun run = Sync(options);
        EXPECT_EQ(0, run.status);
        EXPECT_EQ("", run.err);
        EXPECT_EQ(plan.out, run.out);
        for (const auto& [side, tree] : trees) EXPECT_EQ(tree, Read(side)) << side;
        if (std::string_view(each.method).starts_with("Make")) {
            EXPECT_EQ(Read("left"), Read("right"));
        }

        const ProgramRun again = Sync(options);
        EXPECT_EQ(0, again.status);
        EXPECT_EQ("", again.out);
    }
    // What was deleted from the folders themselves can be had back.
    EXPECT_TRUE(folder.Exists("data/Trash/files/R/x/file"));
    EXPECT_TRUE(folder.Exists("data/Trash/info/only left.trashinfo"));
}

TEST_F(SyncCommandTest, SelectTakesRowsByTheirShownNames) {
    WritePair();
    const auto plan = [&](std::vector<std::string> options) {
        options.insert(options.end(), {"--plan", "--format=json", "--sync-method", "MakeRightSameAsLeft"});
        return Sync(options);
    };
    EXPECT_EQ(Line("left", "Copy", "new", 13), plan({"--select", "new", "--select=same"}).out);
    const ProgramRun folders = plan({"--select", "\\R"});
    EXPECT_EQ(Line("right", "Delete", "\\\\R", 5), folders.out);
    EXPECT_EQ(folders.out, plan({"--select", "/R"}).out);
    EXPECT_EQ(folders.out, plan({"--select", "R/"}).out);
    EXPECT_EQ(4U, Objects(plan({"--select", "\\Sub"}).out).size());

    // Of names that differ in letter case each can be chosen; where neither is written, neither is meant.
    for (const auto* name : {"twin", "Twin"}) folder.Write(std::string("left/") + name, "t", 1'600'000'000);
    for (const auto* name : {"twin", "Twin"})
        EXPECT_EQ(Line("left", "Copy", name, 1), plan({"--select", name}).out);
    EXPECT_EQ(2U, Objects(plan({"--select", "twin", "--select", "Twin"}).out).size());
    EXPECT_THAT(plan({"--select", "TWIN"}).err, HasSubstr("'TWIN' is more than one object"));
    EXPECT_EQ(Line("left", "Copy", "new", 13), plan({"--select", "NEW"}).out);

    const ProgramRun unknown =
        Sync({"--yes", "--sync-method", "MakeRightSameAsLeft", "--select", "new", "--select", "Sub"});
    EXPECT_EQ(2, unknown.status);
    EXPECT_THAT(unknown.err, HasSubstr("'Sub'"));
    EXPECT_EQ("old", folder.Read("right/new"));

    folder.Write("left/odd\\\xFF\n", "1");
    const ProgramRun odd = plan({});
    std::string name;
    for (const QJsonObject& action : Objects(odd.out))
        if (Text(action, "name").starts_with("odd")) name = Text(action, "name");
    EXPECT_EQ(1U, Objects(plan({"--select", name}).out).size());
    EXPECT_EQ(0, Sync({"--yes", "--sync-method", "MakeRightSameAsLeft", "--select", name}).status);
    EXPECT_TRUE(folder.Exists("right/odd\\\xFF\n"));
    EXPECT_EQ("old", folder.Read("right/new"));
}

TEST_F(SyncCommandTest, TroubleComesBeforeAnythingIsDone) {
    WritePair();
    folder.Write("no method", "[Options]\r\n");
    folder.Write("no table", "[Options]\r\nSyncMethod=Custom\r\nLeftFolderNewFilesAction=Copy\r\n");
    const Tree left = Read("left"), right = Read("right");
    const std::string method = "--sync-method=MakeRightSameAsLeft";
    const struct {
        std::vector<std::string> options;
        const char* message;
    } cases[] = {
        {{"--yes"}, "ReplaceOlderOnRight"},
        {{"--yes", "--settings", folder / "no method"}, "--sync-method"},
        {{"--yes", "--settings", folder / "no table"}, "LeftFolderOldFilesAction"},
        {{"--yes", "--sync-method", "Custom"}, "action table"},
        {{"--yes", "--sync-method", "makerightsameasleft"}, "MakeRightSameAsLeft"},
        {{method}, "--yes"},
    };
    for (const auto& each : cases) {
        const ProgramRun run = Sync(each.options);
        EXPECT_EQ(2, run.status) << each.message;
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.err, HasSubstr(each.message));
    }
    const auto with = [&](const std::string& program, const std::string& other) {
        return RunProgram({"sync", "--yes", method, "--program-folder", program, folder / "left", other});
    };
    EXPECT_THAT(with(folder / "program", folder / "none").err, HasSubstr("Make sure that the folder exists"));
    EXPECT_THAT(with(folder / "none", folder / "right").err, HasSubstr("is no folder"));
    EXPECT_EQ(2, with(folder / "program", folder / "none").status);
    EXPECT_EQ(left, Read("left"));
    EXPECT_EQ(right, Read("right"));
    EXPECT_FALSE(folder.Exists("program/SyncHist.Log"));
    EXPECT_THAT(RunProgram({"sync", "--help"}).out, HasSubstr("--sync-method NAME"));
}

TEST_F(SyncCommandTest, SettingsGiveTheMethodTheTableAndTheLengthOfTheHistory) {
    WritePair();
    std::string settings = "[Options]\r\nNumSyncLogEntries=02\r\nSyncMethod=Custom\r\n";
    for (const auto* side : {"Left", "Right"})
        for (const auto* type : {"New", "Old", "Orphan", "Binary"})
            settings += std::string(side) + "Folder" + type + "FilesAction=" +
                        (std::string_view(type) == "Orphan" && *side == 'L' ? "Delete" : "Leave") + "\r\n";
    folder.Write("custom", settings);
    EXPECT_EQ(Line("left", "Delete", "only left", 2) + Line("left", "Delete", "\\\\L", 4) +
                  Line("left", "Delete", "only left", 2, "\\\\Sub"),
              Sync({"--plan", "--format=json", "--settings", folder / "custom"}).out);
    EXPECT_EQ(3U, Objects(Sync({"--plan", "--format=json", "--settings", folder / "custom", "--sync-method",
                                "AddOrphansToLeft"})
                              .out)
                      .size());
    EXPECT_EQ("", History().out);
    EXPECT_FALSE(folder.Exists("program/SyncHist.Log"));
    // With nothing to do there is nothing to ask, and still a record.
    for (int run = 0; run < 3; ++run)
        EXPECT_EQ(0, Sync({"--settings", folder / "custom", "--select=same"}).status);
    EXPECT_EQ(2 * std::uintmax_t{773}, fs::file_size(folder / "program/SyncHist.Log"));
    // The window's history is as long as the window says, whatever the length that was given here.
    folder.Write("program/vantrel.ini", "[Options]\r\nNumSyncLogEntries=0000000003\r\n");
    for (int run = 0; run < 2; ++run)
        EXPECT_EQ(0, Sync({"--settings", folder / "custom", "--select=same"}).status);
    EXPECT_EQ(3 * std::uintmax_t{773}, fs::file_size(folder / "program/SyncHist.Log"));
    fs::remove(folder / "program/vantrel.ini");
    fs::resize_file(folder / "program/SyncHist.Log", 2 * std::uintmax_t{773});

    folder.Write("left/x", "", 1'600'000'000);
    folder.MakeFolder("right/x");
    EXPECT_EQ(1, Sync({"--yes", "--sync-method", "AddOrphansToRight"}).status);
    const auto records = Objects(History({"--format", "json"}).out);
    ASSERT_EQ(3U, records.size());
    EXPECT_EQ("Completed Successfully", Text(records[0], "result"));
    EXPECT_EQ("Cancelled", Text(records[2], "result"));
    EXPECT_EQ(folder / "left/", Text(records[2], "left"));
    EXPECT_LE(Text(records[0], "date"), Text(records[2], "date"));
    EXPECT_THAT(History().out, HasSubstr("Cancelled               " + (folder / "left/")));
    fs::resize_file(folder / "program/SyncHist.Log", 2 * 773 + 100);
    EXPECT_EQ(2U, Objects(History({"--format", "json"}).out).size());
    EXPECT_EQ(2, RunProgram({"history", "--program-folder", folder / "none"}).status);
    EXPECT_EQ(2, RunProgram({"history", "operand"}).status);
}

TEST_F(SyncCommandTest, WhatFailsIsToldAndNotListedAsDone) {
    folder.Write("left/a", "1", 1'600'000'000);
    folder.Write("left/x", "2", 1'600'000'000);
    folder.Write("right/x/in the way", "", 1'600'000'000);
    folder.Write("left/Sub/file", "3", 1'600'000'000);
    folder.MakeFolder("right/Sub");
    const ProgramRun run = Sync({"--yes", "--format=json", "--sync-method", "AddOrphansToRight"});
    EXPECT_EQ(1, run.status);
    EXPECT_EQ(Line("left", "Copy", "a", 1), run.out);
    EXPECT_EQ("vantrel-cli: failed: left Copy '" + (folder / "left/x") + "': The folder \"" +
                  (folder / "right/x") + "\" is in the way\nvantrel-cli: not done: left Copy '" +
                  (folder / "left/Sub/file") + "': something before it failed\n",
              run.err);
    EXPECT_TRUE(folder.Exists("right/a"));
    EXPECT_FALSE(folder.Exists("right/Sub/file"));

    const ProgramRun goesOn =
        Sync({"--yes", "--keep-going", "--format=json", "--sync-method", "AddOrphansToRight"});
    EXPECT_EQ(1, goesOn.status);
    EXPECT_EQ(Line("left", "Copy", "file", 1, "\\\\Sub"), goesOn.out);
    EXPECT_THAT(History().out, HasSubstr("Cancelled"));
    EXPECT_THAT(History().out, ::testing::Not(HasSubstr("Completed")));
    EXPECT_TRUE(folder.Exists("right/Sub/file"));
}

// What fails deep in a folder that goes whole is told once, with its own path and the system's reason.
TEST_F(SyncCommandTest, WhatFailsDeepInAFolderIsToldOnce) {
    folder.Write("left/whole/a", "1", 1'600'000'000);
    folder.Write("left/whole/closed", "2", 1'600'000'000);
    ASSERT_EQ(0, chmod((folder / "left/whole/closed").c_str(), 0));
    testing::AsPlainUser(folder, [this] {
        const ProgramRun run = Sync({"--yes", "--sync-method", "AddOrphansToRight"});
        EXPECT_EQ(1, run.status);
        const std::string path = folder / "left/whole/closed";
        EXPECT_EQ("vantrel-cli: failed: left Copy '" + path + "': Permission denied \"" + path + "\"\n",
                  run.err);
    });
    EXPECT_TRUE(folder.Exists("right/whole/a"));
}

// A drive that is not mounted looks like an empty folder.
TEST_F(SyncCommandTest, ARunThatWouldEmptyAFolderIsRefused) {
    for (int i = 0; i < 25; ++i) folder.Write("right/in/" + std::to_string(i), "x");
    const Tree before = Read("right");
    const std::string method = "--sync-method=MakeRightSameAsLeft";
    const ProgramRun run = Sync({"--yes", method});
    EXPECT_EQ(2, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("refused: nothing was done"));
    EXPECT_THAT(run.err, HasSubstr("Nothing was found in the left folder \"" + (folder / "left/")));
    EXPECT_THAT(run.err, HasSubstr("would delete 26 objects of 26 in the right folder"));
    EXPECT_THAT(run.err, HasSubstr("--allow-emptied"));
    const ProgramRun plan = Sync({"--plan", "--format=json", method});
    EXPECT_EQ(1, plan.status);
    EXPECT_EQ(Line("right", "Delete", "\\\\in", 25), plan.out);
    EXPECT_THAT(plan.err, HasSubstr("refused: a run would end here"));

    // One permit is not the other.
    const ProgramRun half = Sync({"--yes", "--allow-emptied", method});
    EXPECT_EQ(2, half.status);
    EXPECT_THAT(half.err, HasSubstr("--max-delete"));
    EXPECT_EQ(2, Sync({"--yes", "--max-delete", "26", method}).status);
    EXPECT_EQ(2, Sync({"--yes", "--allow-emptied", "--max-delete=25", method}).status);
    EXPECT_EQ(2, Sync({"--yes", "--allow-emptied", "--max-delete", "all", method}).status);
    EXPECT_EQ(before, Read("right"));
    EXPECT_FALSE(folder.Exists("program/SyncHist.Log"));
    EXPECT_EQ(0, Sync({"--plan", "--allow-emptied", "--max-delete=26", method}).status);
    EXPECT_EQ(0, Sync({"--yes", "--allow-emptied", "--max-delete=100%", method}).status);
    EXPECT_FALSE(folder.Exists("right/in"));
}

TEST_F(SyncCommandTest, APlanTellsWhatItsActionsDoNot) {
    folder.Write("left/file", "newer", 1'600'000'100);
    folder.Write("right/file", "old", 1'600'000'000);
    fs::rename(folder / "left/file", folder / "elsewhere");
    fs::create_symlink(folder / "elsewhere", folder / "left/file");
    folder.Write("left/New/a.tmp", "1", 1'600'000'000);
    ASSERT_EQ(0, mkfifo((folder / "left/fifo").c_str(), 0600));
    const std::vector<std::string> options{"--plan", "--exclude=*.tmp", "--sync-method=MakeRightSameAsLeft"};
    const ProgramRun plan = Sync(options);
    EXPECT_EQ(0, plan.status);
    EXPECT_THAT(plan.out, HasSubstr("file  (a link in a file's place)\n"));
    EXPECT_EQ(
        "vantrel-cli: 1 special object passed over.\n"
        "  1 object that the filters leave out will be copied with the folders they lie in.\n"
        "  A link is put in a file's place by 1 copy action.\n",
        plan.err);
    std::vector<std::string> asJson = options;
    asJson.emplace_back("--format=json");
    EXPECT_EQ("FileByLink", Text(Objects(Sync(asJson).out).front(), "replaces"));
}

// Its input and standard error are a terminal at which `typed` was typed.
int RunOnTerminal(std::vector<std::string> arguments, const std::string& typed, std::string& screen) {
    int terminal = -1;
    arguments.insert(arguments.begin(), testing::ConsoleProgram());
    std::vector<char*> pointers;
    for (std::string& word : arguments) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process == 0) {
        execv(arguments[0].c_str(), pointers.data());
        _exit(127);
    }
    if (write(terminal, typed.data(), typed.size()) < 0) ADD_FAILURE();
    char buffer[4096];
    for (ssize_t got = 0; (got = read(terminal, buffer, sizeof buffer)) > 0;)
        screen.append(buffer, static_cast<std::size_t>(got));
    close(terminal);
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SyncCommandTest, ATerminalIsShownThePlanAndAsked) {
    folder.Write("left/file", "1", 1'600'000'000);
    const auto arguments = Arguments({"--sync-method", "AddOrphansToRight"});
    for (const auto* typed : {"n\n", "\n", "yeah\n", "\x04"}) {
        std::string screen;
        EXPECT_EQ(1, RunOnTerminal(arguments, typed, screen));
        EXPECT_THAT(screen, HasSubstr("left   Copy -->     1  file"));
        EXPECT_THAT(screen, HasSubstr("Continue? [y/N]"));
        EXPECT_THAT(screen, HasSubstr("cancelled"));
        EXPECT_FALSE(folder.Exists("right/file"));
    }
    EXPECT_FALSE(folder.Exists("program/SyncHist.Log"));
    std::string screen;
    EXPECT_EQ(0, RunOnTerminal(arguments, "y\n", screen));
    EXPECT_THAT(screen, HasSubstr("Done: 0 deleted, 1 copied (1 Byte)"));
    EXPECT_TRUE(folder.Exists("right/file"));
}

TEST_F(SyncCommandTest, AnInterruptStopsAndTellsWhatWasDone) {
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i)
        folder.Write("left/" + std::to_string(10'000 + i), "content", 1'600'000'000);
    const ProgramRun run =
        Sync({"--yes", "--format=json", "--sync-method", "MakeRightSameAsLeft"}, [&](pid_t process) {
            while (!folder.Exists("right/10000")) ASSERT_EQ(0, kill(process, 0));
            kill(process, SIGINT);
        });
    EXPECT_EQ(1, run.status);
    const auto done = Objects(run.out);
    EXPECT_LT(done.size(), std::size_t{kFiles});
    for (const QJsonObject& action : done) EXPECT_TRUE(folder.Exists("right/" + Text(action, "name")));
    EXPECT_EQ(done.size(), Read("right").size());
    EXPECT_THAT(run.err, HasSubstr("cancelled"));
    EXPECT_THAT(run.err, HasSubstr("more for the same reason"));
    EXPECT_THAT(History().out, HasSubstr("Cancelled"));
}

TEST_F(SyncCommandTest, LargeFilesArePlannedByTheRuleThatWasChosen) {
    testing::WriteSparse(folder, "left/big", (off_t{1} << 32) + 5, 1'600'000'000);
    testing::WriteSparse(folder, "right/big", 4, 1'600'000'000);
    folder.Write("settings.ini", "[Options]\nSyncMethod=MakeRightSameAsLeft\n");
    const ProgramRun plain = Sync({"--plan", "--settings", folder / "settings.ini", "--format=json"});
    EXPECT_EQ(0, plain.status);
    EXPECT_EQ("", plain.out);
    EXPECT_THAT(plain.err, HasSubstr("--true-sizes yes"));
    const ProgramRun run =
        Sync({"--plan", "--true-sizes=yes", "--settings", folder / "settings.ini", "--format=json"});
    EXPECT_THAT(run.out, HasSubstr(R"("action":"Copy","name":"big","size":4294967301})"));
    EXPECT_EQ("", run.err);
}

// What cannot be looked into is neither deleted nor taken for missing.
TEST_F(SyncCommandTest, WhatCannotBeReadIsLeftAloneAndTold) {
    folder.Write("left/sub/file", "x", 1'600'000'000);
    folder.MakeFolder("left/sub/closed");
    folder.Write("right/sub/closed/precious", "x", 1'600'000'000);
    ASSERT_EQ(0, chmod((folder / "left/sub/closed").c_str(), 0));
    testing::AsPlainUser(folder, [this] {
        const ProgramRun run = Sync({"--yes", "--sync-method", "MakeRightSameAsLeft"});
        EXPECT_EQ(1, run.status);
        const std::string path = folder / "left/sub/closed";
        EXPECT_THAT(run.err, HasSubstr("Left alone: 1 object(s) of the left folder"));
        EXPECT_THAT(run.err, HasSubstr("\n    " + path + "\n"));
        // The details are shown, and those of an earlier run are not shown again.
        const std::string place = "Folder: " + path + "\n";
        const ProgramRun again = Sync({"--yes", "--sync-method", "MakeRightSameAsLeft"});
        for (const ProgramRun& each : {run, again}) {
            const std::size_t at = each.err.find(place);
            EXPECT_NE(std::string::npos, at) << each.err;
            EXPECT_EQ(std::string::npos, each.err.find(place, at + 1)) << each.err;
        }
    });
    EXPECT_TRUE(folder.Exists("right/sub/closed/precious"));
    EXPECT_TRUE(folder.Exists("right/sub/file"));
}

}  // namespace
}  // namespace vantrel
