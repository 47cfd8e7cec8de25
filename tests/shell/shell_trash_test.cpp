#include <sys/stat.h>

#include <filesystem>

#include "platform/names/names.h"
#include "shell/trash.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellTrashTest : public ShellTest {
  public:
    const std::string trash = "home/.local/share/Trash/";
    std::string Info(const std::string& name) { return drop.Read(trash + "info/" + name + ".trashinfo"); }
    void PutLeftOnItsOwnDrive() { volumes.drives = {{drop / "left", {}}, {"/", {}}}; }
    std::string OwnTrash() { return "left/.Trash-" + std::to_string(geteuid()) + "/"; }
};

TEST_F(ShellTrashTest, KeepsARecordThatRestores) {
    drop.Write("left/a b%\xc3\xa4\xff\n.txt", "odd");
    drop.Write("left/Sub/x", "x");
    drop.Write("left/other/Sub", "same name");
    fs::create_symlink("nowhere", Left("dangling"));
    clock.now = FileTime::FromUnix(1'700'000'000, 0);
    const std::string odd = NameFromSystem("a b%\xc3\xa4\xff\n.txt");
    const ShellResult result = Run(Recycle, {Left(odd), Left("Sub"), Left("other/Sub"), Left("dangling")});
    EXPECT_TRUE(result.AllDone());
    EXPECT_EQ("[Trash Info]\nPath=" + EncodeTrashPath(drop / "left/") +
                  "a%20b%25%C3%A4%FF%0A.txt\nDeletionDate=2023-11-14T22:13:20\n",
              Info("a b%\xc3\xa4\xff\n.txt"));
    EXPECT_EQ("odd", drop.Read(trash + "files/a b%\xc3\xa4\xff\n.txt"));
    EXPECT_EQ("x", drop.Read(trash + "files/Sub/x"));
    EXPECT_EQ("same name", drop.Read(trash + "files/Sub.2"));
    EXPECT_NE(std::string::npos, Info("Sub.2").find("/left/other/Sub\n"));
    EXPECT_TRUE(drop.Exists(trash + "files/dangling"));
    EXPECT_EQ((Tree{{"other", "d"}}), TreeOf(drop / "left/"));
    struct stat stat {};
    ::stat((drop / trash).c_str(), &stat);
    EXPECT_EQ(0700U, stat.st_mode & 0777);
}

TEST_F(ShellTrashTest, TakesTheNextNameWhereOneIsTakenOnEitherSide) {
    drop.Write(trash + "info/f.trashinfo", "someone's record");
    drop.Write(trash + "files/f.2", "a file without a record");
    drop.Write("left/f", "content");
    const std::string longName(250, 'n');
    drop.Write("left/" + longName, "long");
    EXPECT_TRUE(Run(Recycle, {Left("f"), Left(longName)}).AllDone());
    EXPECT_EQ("someone's record", Info("f"));
    EXPECT_EQ("a file without a record", drop.Read(trash + "files/f.2"));
    EXPECT_EQ("content", drop.Read(trash + "files/f.3"));
    EXPECT_FALSE(drop.Exists(trash + "info/f.2.trashinfo"));
    EXPECT_EQ("long", drop.Read(trash + "files/" + longName.substr(0, 245)));
}

TEST_F(ShellTrashTest, OtherVolumesHaveTheirOwn) {
    PutLeftOnItsOwnDrive();
    drop.Write("left/Sub/f", "1");
    EXPECT_TRUE(Run(Recycle, {Left("Sub/f")}).AllDone());
    EXPECT_EQ("1", drop.Read(OwnTrash() + "files/f"));
    EXPECT_NE(std::string::npos, drop.Read(OwnTrash() + "info/f.trashinfo").find("\nPath=Sub/f\n"));
    EXPECT_FALSE(drop.Exists("home"));

    // The administrator's folder serves once it is sticky and no link.
    fs::create_directory(drop / "elsewhere");
    fs::permissions(drop / "elsewhere", fs::perms::all | fs::perms::sticky_bit);
    fs::create_directory_symlink(drop / "elsewhere", Left(".Trash"));
    drop.Write("left/g", "2");
    EXPECT_TRUE(Run(Recycle, {Left("g")}).AllDone());
    EXPECT_EQ("2", drop.Read(OwnTrash() + "files/g"));
    fs::remove(Left(".Trash"));
    fs::create_directory(Left(".Trash"));
    drop.Write("left/h", "3");
    EXPECT_TRUE(Run(Recycle, {Left("h")}).AllDone());
    EXPECT_EQ("3", drop.Read(OwnTrash() + "files/h"));
    fs::permissions(Left(".Trash"), fs::perms::all | fs::perms::sticky_bit);
    drop.Write("left/i", "4");
    EXPECT_TRUE(Run(Recycle, {Left("i")}).AllDone());
    EXPECT_EQ("4", drop.Read("left/.Trash/" + std::to_string(geteuid()) + "/files/i"));
}

TEST_F(ShellTrashTest, WhatCannotGoThereStays) {
    PutLeftOnItsOwnDrive();
    drop.Write("left/f", "content");
    drop.MakeFolder("right/decoy");
    fs::create_directory_symlink(drop / "right/decoy", drop / OwnTrash().substr(0, OwnTrash().size() - 1));
    ShellResult result = Run(Recycle, {Left("f")});
    EXPECT_EQ(Failed, result.items.at(0).outcome);
    EXPECT_EQ("content", drop.Read("left/f"));
    EXPECT_TRUE(TreeOf(drop / "right/decoy/").empty());

    volumes.drives = {{"/", {}}};
    // The folder that holds the trash cannot go into it.
    drop.MakeFolder("home");
    EXPECT_EQ(Failed, Run(Recycle, {drop / "home"}).items.at(0).outcome);
    EXPECT_TRUE(TreeOf(drop / (trash + "info/")).empty());
}

}  // namespace
}  // namespace vantrel::testing
