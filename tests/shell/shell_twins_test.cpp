// Where the target's file system takes names that differ in letter case for one, the second of two stays
// where it is and is told, and never goes over the first.
#include <fcntl.h>
#include <strings.h>

#include <filesystem>

#include "support/shell_fixture.h"

namespace vantrel::testing {
namespace fs = std::filesystem;
namespace {

using enum ShellOperation;
using enum ItemOutcome;

// Names in and below one folder are found in any letter case. In user space such a file system may show an
// inode of its own for each spelling, and know no renaming without replacing.
class FoldingCalls : public ShellCalls {
  public:
    std::string folding;  // path with "/" at the end; empty: none
    bool inUserSpace = false;

    int OpenAt(int folder, const char* path, int flags, mode_t mode) override {
        const int fd = ShellCalls::OpenAt(folder, Real(folder, path).c_str(), flags, mode);
        if (fd < 0) return fd;
        const bool isItself = std::string_view(path) == ".";
        spellings_[fd] = isItself ? spellings_[folder] : Folds(folder) ? path : "";
        return fd;
    }
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override {
        const int result = ShellCalls::StatxAt(folder, Real(folder, path).c_str(), flags, mask, out);
        const std::string spelling = *path ? (Folds(folder) ? path : "") : spellings_[folder];
        if (inUserSpace && !spelling.empty()) out.stx_ino = std::hash<std::string>()(spelling);
        return result;
    }
    int RenameAt(int a, const char* from, int b, const char* to, unsigned flags) override {
        if (flags != 0 && inUserSpace && Folds(b)) return -EINVAL;
        const std::string source = Real(a, from), target = Real(b, to);
        return ShellCalls::RenameAt(a, source.c_str(), b, target.c_str(), flags);
    }
    int UnlinkAt(int folder, const char* path, int flags) override {
        return ShellCalls::UnlinkAt(folder, Real(folder, path).c_str(), flags);
    }
    int MkdirAt(int folder, const char* path, mode_t mode) override {
        return ShellCalls::MkdirAt(folder, Real(folder, path).c_str(), mode);
    }
    int FstatFs(int fd, struct statfs& out) override {
        const int result = ShellCalls::FstatFs(fd, out);
        if (inUserSpace) out.f_type = 0x65735546;
        return result;
    }

  private:
    static std::string PathOf(int folder) {
        std::error_code error;
        return fs::read_symlink("/proc/self/fd/" + std::to_string(folder), error).string() + "/";
    }
    bool Folds(int folder) const {
        return !folding.empty() && folder >= 0 && PathOf(folder).starts_with(folding);
    }
    // As the folder spells it; `path` itself where nothing there answers to it.
    std::string Real(int folder, const char* path) const {
        std::error_code error;
        if (!*path || !Folds(folder) || fs::exists(fs::symlink_status(PathOf(folder) + path, error)))
            return path;
        for (const auto& entry : fs::directory_iterator(PathOf(folder), error)) {
            std::string name = entry.path().filename().string();
            if (strcasecmp(name.c_str(), path) == 0) return name;
        }
        return path;
    }
    std::map<int, std::string> spellings_;  // by which files and folders were opened
};

enum class System { TellsApart, Folds, FoldsInUserSpace };

class ShellTwinsTest : public ShellTest, public ::testing::WithParamInterface<System> {
  public:
    ShellTwinsTest() { Prepare(false); }

    // Twins of the same size and times in one folder; on the right perhaps what the first is to replace.
    void Prepare(bool targetStands) {
        for (const char* side : {"left", "right"}) {
            fs::remove_all(drop / side);
            drop.MakeFolder(side);
        }
        const double time = 1'000'000'000;
        for (const char* path : {"A", "a", "Sub/x", "sub/x", "tree/B", "tree/b"})
            drop.Write(std::string("left/") + path, std::string("new ") + path, time);
        if (targetStands) {
            drop.Write("right/A", "old A", time);
            drop.Write("right/Sub/x", "old Sub/x", time);
        }
        twins.folding = GetParam() == System::TellsApart ? "" : fs::canonical(drop / "right").string() + "/";
        twins.inUserSpace = GetParam() == System::FoldsInUserSpace;
    }
    SystemShellOperations Service() {
        return SystemShellOperations({twinFiles, volumes, clock, loop, progress, questions, {}});
    }

    FoldingCalls twins;
    FileSystem twinFiles{twins};
};

INSTANTIATE_TEST_SUITE_P(Systems, ShellTwinsTest,
                         ::testing::Values(System::TellsApart, System::Folds, System::FoldsInUserSpace),
                         [](const auto& given) {
                             return given.param == System::TellsApart ? "TellsApart"
                                    : given.param == System::Folds    ? "Folds"
                                                                      : "FoldsInUserSpace";
                         });

TEST_P(ShellTwinsTest, TheSecondOfTwoStaysAndIsTold) {
    const bool apart = GetParam() == System::TellsApart;
    for (const bool targetStands : {false, true}) {
        for (const ShellOperation operation : {Copy, Move}) {
            for (const bool twoDrives : {false, true}) {
                SCOPED_TRACE(std::to_string(static_cast<int>(operation)) + (targetStands ? " stands" : "") +
                             (twoDrives ? " two drives" : ""));
                Prepare(targetStands);
                twins.drives.clear();
                if (twoDrives) twins.drives = {drop / "left/", drop / "right/"};
                ShellRequest request;
                request.operation = operation;
                request.target = drop / "right";
                request.noConfirmation = request.noErrorUi = true;
                for (const char* name : {"A", "a", "Sub", "sub", "tree"})
                    request.sources.push_back(Left(name));
                const ShellResult result = Service().Run(request);

                const ItemOutcome second = apart ? Done : Failed;
                std::vector<ItemOutcome> outcomes;
                for (const ShellItem& item : result.items) outcomes.push_back(item.outcome);
                // A move of a whole folder puts it where there is nothing to fold, by one rename.
                const bool wholeTree = apart || (operation == Move && !twoDrives);
                EXPECT_EQ((std::vector{Done, second, Done, second, wholeTree ? Done : Failed}), outcomes);
                const Tree left = TreeOf(drop / "left/"), right = TreeOf(drop / "right/");
                EXPECT_EQ("f:new A", right.at("A"));
                EXPECT_EQ("f:new Sub/x", right.at("Sub/x"));
                EXPECT_EQ(apart, right.contains("a") || right.contains("sub"));
                EXPECT_EQ(apart && operation == Move, !left.contains("a") && !left.contains("sub/x"));
                EXPECT_EQ(wholeTree ? 2 : 1, std::ranges::count_if(right, [](const auto& entry) {
                              return entry.first.starts_with("tree/");
                          }));
                EXPECT_EQ(apart ? 0U : wholeTree ? 2U : 3U, result.troubles.size());
                NoLeftovers(right);
            }
        }
    }
}

TEST_P(ShellTwinsTest, SingleCopiesAreToldOfTheirTwins) {
    const bool apart = GetParam() == System::TellsApart;
    for (const bool targetStands : {false, true}) {
        Prepare(targetStands);
        SystemShellOperations shell = Service();
        EXPECT_TRUE(shell.CopyOneFile(Left("A"), Right("A")).IsOk());
        EXPECT_EQ(apart, shell.CopyOneFile(Left("a"), Right("a")).IsOk());
        EXPECT_TRUE(shell.FinishCopies().failed.empty());
        EXPECT_EQ("new A", drop.Read("right/A"));
        EXPECT_EQ(apart, fs::exists(Right("a")));
        NoLeftovers(TreeOf(drop / "right/"));
    }
}

}  // namespace
}  // namespace vantrel::testing
