// The user's own trash, of the home folder and of volumes, takes part in nothing, by whatever path it is
// reached.
#include <sys/mount.h>

#include <filesystem>

#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

class ShellTrashGuardTest : public ShellTest {
  public:
    ShellTrashGuardTest() { Prepare(); }
    ~ShellTrashGuardTest() override {
        if (!mounted_.empty()) umount2(mounted_.c_str(), MNT_DETACH);
    }

    // Folders that hold one trash each: of home, and of a volume in its two forms.
    void Prepare() {
        for (const char* folder : {"home", "left", "right"}) fs::remove_all(drop / folder);
        drop.MakeFolder("right");
        const std::string user = std::to_string(geteuid());
        trashes = {"home/.local/share/Trash", "left/.Trash-" + user, "left/.Trash/" + user};
        for (const std::string& trash : trashes) {
            drop.Write(trash + "/files/thrown away", trash);
            drop.Write(trash + "/info/thrown away.trashinfo", "[Trash Info]");
        }
        volumes.drives = {{drop / "left", {}}, {"/", {}}};
    }
    void ExpectTrashesWhole(const char* when) {
        for (const std::string& trash : trashes) {
            EXPECT_EQ((Tree{{"files", "d"},
                            {"info", "d"},
                            {"files/thrown away", "f:" + trash},
                            {"info/thrown away.trashinfo", "f:[Trash Info]"}}),
                      TreeOf(drop / (trash + "/")))
                << when << " " << trash;
        }
    }
    bool Bind(const std::string& from, const std::string& to) {
        if (mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr) != 0) return false;
        mounted_ = to;
        return true;
    }

    std::vector<std::string> trashes;

  private:
    std::string mounted_;
};

TEST_F(ShellTrashGuardTest, WhatHoldsATrashGoesWithoutIt) {
    for (const ShellOperation operation : {Copy, Move, Delete, Recycle}) {
        for (const char* holder : {"home", "left"}) {
            for (const bool twoDrives : {false, true}) {
                SCOPED_TRACE(std::to_string(static_cast<int>(operation)) + " of " + holder);
                Prepare();
                drop.Write(std::string(holder) + "/beside", "goes");
                drop.Write(std::string(holder) + "/deep/er", "goes");
                calls.drives.clear();
                if (twoDrives) calls.drives = {drop / "right/"};
                ShellRequest request;
                request.operation = operation;
                request.sources = {drop / holder};
                if (operation == Copy || operation == Move) request.target = drop / "right";
                request.noErrorUi = true;
                const ShellResult result = Run(request);
                EXPECT_EQ(Failed, result.items.at(0).outcome);
                EXPECT_FALSE(result.AllDone());
                ExpectTrashesWhole("afterwards");
                for (const auto& [path, what] : TreeOf(drop / "right/"))
                    EXPECT_EQ(std::string::npos, path.find("thrown away")) << path;
                // All else is copied or deleted; what would go as a whole stays as a whole.
                const std::string beside = std::string(holder) + "/beside";
                EXPECT_EQ(operation == Copy, drop.Exists("right/" + beside));
                EXPECT_EQ(operation != Delete, drop.Exists(beside));
            }
        }
    }
}

TEST_F(ShellTrashGuardTest, ItIsKnownByWhatItIsAndNotByItsPath) {
    fs::create_directory_symlink(drop / "home/.local/share", drop / "alias");
    drop.MakeFolder("bound");
    std::vector<std::string> spellings{"home/.local/share/Trash", "alias/Trash"};
    if (Bind(drop / "home/.local/share", drop / "bound")) spellings.push_back("bound/Trash");
    drop.Write("left/Trash/files/new", "new");
    for (const std::string& spelling : spellings) {
        SCOPED_TRACE(spelling);
        for (const ShellOperation operation : {Copy, Move, Delete, Recycle}) {
            const ShellResult result = Run(operation, {drop / spelling}, drop / "right");
            EXPECT_EQ(Failed, result.items.at(0).outcome) << static_cast<int>(operation);
        }
        // Nor does anything go into it beside what is thrown away.
        const std::string holder = spelling.substr(0, spelling.rfind('/'));
        EXPECT_EQ(Failed, Run(Copy, {Left("Trash")}, drop / holder).items.at(0).outcome);
        ExpectTrashesWhole("afterwards");
        EXPECT_TRUE(TreeOf(drop / "right/").empty());
    }
}

TEST_F(ShellTrashGuardTest, FoldersThatAreOnlyCalledSoAreFoldersAsOthers) {
    fs::remove_all(drop / "left");
    drop.Write("left/Trash/files/a", "a");
    drop.Write("left/Sub/.Trash-" + std::to_string(geteuid()) + "/files/b", "b");
    drop.Write("left/.Trash-4294967294/files/c", "another user's");
    const Tree before = TreeOf(drop / "left/");
    EXPECT_TRUE(Run(Copy, {drop / "left"}, drop / "right").AllDone());
    EXPECT_EQ(before, TreeOf(Right("left/")));
    EXPECT_TRUE(Run(Delete, {drop / "left"}).AllDone());
    EXPECT_FALSE(drop.Exists("left"));
}

}  // namespace
}  // namespace vantrel::testing
