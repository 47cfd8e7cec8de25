#pragma once

#include <functional>
#include <map>
#include <string>

#include "core/folder_comparison.h"
#include "fileops/operation_mode.h"
#include "fileops/shell_wrappers.h"
#include "settings/options.h"
#include "shell/shell_operations.h"
#include "support/fake_volumes.h"
#include "support/test_toolbox.h"
#include "sync/synchronization.h"

namespace vantrel::testing {

// Shows nothing.
class NoCompareProgress : public CompareProgress {
  public:
    void Show() override {}
    void SetMessage(std::string_view) override {}
    void SetFileName(std::string_view) override {}
    void SetBarRange(std::int64_t) override {}
    void SetBarValue(std::int64_t) override {}
    void SetAnimation(std::string_view) override {}
    void WaitUntilPainted() override {}
    void Unload() override {}
};

// Plays the user at the shell's questions: overwrites, and skips what fails.
class SkippingQuestions : public ShellQuestions {
  public:
    OverwriteAnswer AskOverwrite(const Overwrite&) override { return OverwriteAnswer::YesToAll; }
    ErrorAnswer AskAboutError(const Trouble& trouble) override {
        troubles.push_back(trouble);
        return answer;
    }
    ErrorAnswer answer = ErrorAnswer::Skip;
    std::vector<Trouble> troubles;
};

// Path below the side's folder -> content; the modification time in seconds stands beside it.
struct FileState {
    std::string content;
    long modified = 0;
    friend bool operator==(const FileState&, const FileState&) = default;
};
using Tree = std::map<std::string, FileState>;
Tree ReadTree(const std::string& folder);

// Two folders, a comparison and a synchronisation over them, without a window.
class SyncWorld : public SyncConfirmation {
  public:
    SyncWorld() : SyncWorld(nullptr) {}
    explicit SyncWorld(SystemCalls* calls);

    std::string Folder(Side side) const { return tools.folder / (side == Side::Left ? "left/" : "right/"); }
    void Compare();
    SyncOrder Order() const { return {results, settings, selected, 20, false, permits, compare.Jobs}; }
    std::optional<SyncReport> AutoSync(Confirm confirm = Confirm::No) {
        SyncOrder order = Order();
        order.confirm = confirm == Confirm::Yes;
        return sync.AutoSync(order, *this);
    }
    std::string TrashFiles() const { return tools.folder / "Trash/files/"; }

    bool ShowConfirmSync(const SyncPlan&) override {
        ++asked;
        if (whileAsked) whileAsked();
        return proceed;
    }

    bool MayEmpty(const EmptyingRisk& risk) override {
        risks.push_back(risk);
        return mayEmpty;
    }

    TestToolbox tools;
    CCompare compare;
    ComparisonResults results;
    NoCompareProgress progress;
    FolderComparison comparison;
    FakeVolumes drives;  // one drive for all: the trash of the test is the one that serves it
    NoShellProgress shellProgress;
    SkippingQuestions questions;
    SystemShellOperations shell;
    ShellWrappers wrappers;
    BusyState busy;
    Options options;
    CSyncSettings settings{options};
    Synchronization sync;

    SelectedTexts selected;
    bool proceed = true;  // the answer to the confirmation
    int asked = 0;
    EmptyingPermits permits;
    std::vector<EmptyingRisk> risks;  // that were asked about
    bool mayEmpty = true;             // the answer to that
    std::function<void()> whileAsked;

  private:
    static SystemCalls& Calls(SystemCalls* calls);
};

// The result of the newest record of the history; empty where there is none.
std::string LastRecord(const SyncWorld& world);

}  // namespace vantrel::testing
