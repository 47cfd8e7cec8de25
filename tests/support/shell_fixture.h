#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "platform/shell_operations.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel::testing {

// Forwards every call, fails one of them, or ends the process there. Renames between two "drives" can be made
// to fail as they do between two file systems.
class ShellCalls : public SystemCalls {
  public:
    std::size_t count = 0;
    std::size_t failAt = 0;  // number of the call, from 1; 0: never
    int failWith = EIO;
    bool dieAt = false;  // instead of failing there
    std::string failed;  // name of the call that failed
    std::function<void(const char* call)> before;
    std::vector<std::string> drives;  // paths with "/" at the end

#define FORWARD(type, name, parameters, arguments)           \
    type name parameters override {                          \
        if (Hit(#name)) return static_cast<type>(-failWith); \
        return SystemCalls::name arguments;                  \
    }
    FORWARD(int, OpenAt, (int a, const char* b, int c, mode_t d), (a, b, c, d))
    FORWARD(ssize_t, Read, (int a, void* b, std::size_t c), (a, b, c))
    FORWARD(ssize_t, PRead, (int a, void* b, std::size_t c, off_t d), (a, b, c, d))
    FORWARD(ssize_t, Write, (int a, const void* b, std::size_t c), (a, b, c))
    FORWARD(off_t, Seek, (int a, off_t b, int c), (a, b, c))
    FORWARD(ssize_t, GetDents, (int a, void* b, std::size_t c), (a, b, c))
    FORWARD(int, StatxAt, (int a, const char* b, int c, unsigned d, struct statx& e), (a, b, c, d, e))
    FORWARD(int, Fdatasync, (int a), (a))
    FORWARD(int, Syncfs, (int a), (a))
    FORWARD(int, Truncate, (int a, off_t b), (a, b))
    FORWARD(ssize_t, CopyFileRange, (int a, int b, std::size_t c), (a, b, c))
    FORWARD(int, Clone, (int a, int b), (a, b))
    FORWARD(int, UnlinkAt, (int a, const char* b, int c), (a, b, c))
    FORWARD(int, MkdirAt, (int a, const char* b, mode_t c), (a, b, c))
    FORWARD(int, SymlinkAt, (const char* a, int b, const char* c), (a, b, c))
    FORWARD(ssize_t, ReadlinkAt, (int a, const char* b, char* c, std::size_t d), (a, b, c, d))
    FORWARD(int, Fchmod, (int a, mode_t b), (a, b))
    FORWARD(int, FchownAt, (int a, const char* b, uid_t c, gid_t d, int e), (a, b, c, d, e))
    FORWARD(int, UtimensAt, (int a, const char* b, const timespec c[2], int d), (a, b, c, d))
    FORWARD(int, Futimens, (int a, const timespec b[2]), (a, b))
    FORWARD(ssize_t, ListXattr, (int a, char* b, std::size_t c), (a, b, c))
    FORWARD(ssize_t, GetXattr, (int a, const char* b, void* c, std::size_t d), (a, b, c, d))
    FORWARD(int, SetXattr, (int a, const char* b, const void* c, std::size_t d), (a, b, c, d))
#undef FORWARD

    int Close(int fd) override {
        // As the system does it: the descriptor is gone whatever the answer.
        const int result = SystemCalls::Close(fd);
        return Hit("Close") ? -failWith : result;
    }
    int RenameAt(int a, const char* b, int c, const char* d, unsigned e) override {
        if (Hit("RenameAt")) return -failWith;
        return DriveOf(a) != DriveOf(c) ? -EXDEV : SystemCalls::RenameAt(a, b, c, d, e);
    }

  private:
    bool Hit(const char* name) {
        if (before) before(name);
        if (++count != failAt) return false;
        if (dieAt) _exit(9);
        failed = name;
        return true;
    }
    std::string DriveOf(int folder) const {
        if (drives.empty()) return {};
        char path[PATH_MAX] = {};
        const std::string link = "/proc/self/fd/" + std::to_string(folder);
        if (readlink(link.c_str(), path, sizeof path - 1) < 0) return {};
        for (const std::string& drive : drives) {
            if (NormalizePath(path).starts_with(drive)) return drive;
        }
        return {};
    }
};

// The first of `drives` that holds a path is its drive.
class FakeVolumes : public Volumes {
  public:
    std::vector<std::string> drives{"/"};  // in the order asked
    std::map<std::string, DriveKind> kinds;
    std::map<std::string, Currency> space;

    std::string GetDriveName(std::string_view path) override {
        for (const std::string& drive : drives) {
            if (NormalizePath(path).starts_with(NormalizePath(drive))) return WithoutTrailingSlash(drive);
        }
        return {};
    }
    bool DriveExists(std::string_view) override { return true; }
    bool IsReady(std::string_view) override { return true; }
    std::string GetFileSystemName(std::string_view) override { return "ext4"; }
    DriveKind GetDriveKind(std::string_view drive) override {
        const auto found = kinds.find(std::string(drive));
        return found == kinds.end() ? DriveKind::Fixed : found->second;
    }
    Currency GetAvailableDriveSpace(std::string_view drive) override {
        const auto found = space.find(std::string(drive));
        return found == space.end() ? kUnknownSpace : found->second;
    }
    bool OnSameDrive(std::string_view a, std::string_view b) override {
        return GetDriveName(a) == GetDriveName(b);
    }
};

class ScriptedProgress : public ShellProgress {
  public:
    std::size_t asked = 0, cancelAt = 0;  // number of the asking, from 1; 0: never
    int begun = 0, ended = 0;
    Totals totals, last;
    std::vector<std::string> items;

    void Begin(ShellOperation) override { ++begun; }
    void SetTotals(Totals all) override { totals = all; }
    void Item(std::string_view path, std::string_view) override { items.emplace_back(path); }
    void Advance(Totals done) override { last = done; }
    bool CancelAsked() override { return ++asked == cancelAt; }
    void End() override { ++ended; }
};

class ScriptedQuestions : public ShellQuestions {
  public:
    std::deque<OverwriteAnswer> overwriteAnswers;  // Yes where none is left
    std::deque<ErrorAnswer> errorAnswers;          // Skip where none is left
    std::vector<Overwrite> overwrites;
    std::vector<Trouble> troubles;
    std::function<void()> onTrouble;

    OverwriteAnswer AskOverwrite(const Overwrite& question) override {
        overwrites.push_back(question);
        return Next(overwriteAnswers, OverwriteAnswer::Yes);
    }
    ErrorAnswer AskAboutError(const Trouble& trouble) override {
        troubles.push_back(trouble);
        if (onTrouble) onTrouble();
        return Next(errorAnswers, ErrorAnswer::Skip);
    }

  private:
    template <typename T>
    static T Next(std::deque<T>& answers, T otherwise) {
        if (answers.empty()) return otherwise;
        const T answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

// What is below a folder: path to "d", "l:" and where it leads, "f:" and the content, or "s" (special).
using Tree = std::map<std::string, std::string>;
Tree TreeOf(const std::string& folder);
// The contents of all files, sorted.
std::vector<std::string> Contents(const Tree& tree);

class ShellTest : public ::testing::Test {
  public:
    ShellTest() { drop.MakeFolder("left"), drop.MakeFolder("right"); }

    std::string Left(const std::string& name) const { return drop / ("left/" + name); }
    std::string Right(const std::string& name) const { return drop / ("right/" + name); }
    // A run by a service of its own, as by a program started anew.
    ShellResult Run(const ShellRequest& request) { return Service().Run(request); }
    ShellResult Run(ShellOperation operation, std::vector<std::string> sources, std::string target = {}) {
        ShellRequest request;
        request.operation = operation;
        request.sources = std::move(sources);
        request.target = std::move(target);
        return Run(request);
    }
    SystemShellOperations Service() {
        return SystemShellOperations({files,
                                      volumes,
                                      clock,
                                      loop,
                                      progress,
                                      questions,
                                      {drop / "home/.local/share/Trash", geteuid()}});
    }
    // From here on left and right are on different drives.
    void SeparateDrives() {
        calls.drives = {drop / "left/", drop / "right/"};
        volumes.drives = {drop / "left", drop / "right", "/"};
    }
    static void NoLeftovers(const Tree& tree) {
        for (const auto& [path, what] : tree)
            EXPECT_EQ(std::string::npos, path.find(".~vantrel-")) << path << " " << what;
    }

    TempFolder drop;
    ShellCalls calls;
    FileSystem files{calls};
    FakeVolumes volumes;
    FakeClock clock;
    ScriptedLoop loop;
    ScriptedProgress progress;
    ScriptedQuestions questions;
};

}  // namespace vantrel::testing
