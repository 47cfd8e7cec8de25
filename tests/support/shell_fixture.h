#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/names/paths.h"
#include "shell/shell_operations.h"
#include "support/fake_volumes.h"
#include "support/faulty_system_calls.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"
#include "support/tree_of.h"

namespace vantrel::testing {

// Renames between two "drives" fail as they do between two file systems.
class ShellCalls : public FaultySystemCalls {
  public:
    std::vector<std::string> drives;  // paths with "/" at the end

    int RenameAt(int a, const char* b, int c, const char* d, unsigned e) override {
        return DriveOf(a) != DriveOf(c) ? -EXDEV : FaultySystemCalls::RenameAt(a, b, c, d, e);
    }

  private:
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

using Tree = std::map<std::string, std::string>;  // of TreeOf
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
        volumes.drives = {{drop / "left", {}}, {drop / "right", {}}, {"/", {}}};
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
