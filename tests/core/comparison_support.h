#pragma once

#include <string>
#include <vector>

#include "core/folder_comparison.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

// Stands for the window: holds what it would show, and keeps a record of what it was asked, in order.
class RecordingHost : public ComparisonHost {
  public:
    explicit RecordingHost(ComparisonResults& results) : results_(results) {}

    std::string PathText(Side side) const override { return paths[side]; }
    void SetPathText(Side side, const std::string& path) override { paths[side] = path; }
    bool MenusEnabled() const override { return menusEnabled; }
    void SetMenusEnabled(bool enabled) override { menusEnabled = enabled; }
    void SetBusyPointer(bool busy) override { busyPointer = busy; }
    void SetFilterPanel(std::string_view text) override { filterPanel = text; }
    void RaiseMainWindow() override { calls.emplace_back("RaiseMainWindow"); }
    void ApplyViewTypes() override { calls.emplace_back("ApplyViewTypes"); }
    void RemoveListItemsAndShowNoCompareMsg() override {
        calls.emplace_back("RemoveListItemsAndShowNoCompareMsg");
        for (const Side side : kBothSides) results_.hold[side].SetToSentinel();
    }
    void AddPathsToIni(const std::string& left, const std::string& right) override {
        calls.push_back("AddPathsToIni " + left + " " + right);
    }
    void PlayCompareCompleteSound() override { calls.emplace_back("PlayCompareCompleteSound"); }
    void ShowCompareResults() override { calls.emplace_back("ShowCompareResults"); }
    void ShowErrorLog() override { calls.emplace_back("ShowErrorLog"); }

    PerSide<std::string> paths;
    bool menusEnabled = true;
    bool busyPointer = false;
    std::string filterPanel;
    std::vector<std::string> calls;

  private:
    ComparisonResults& results_;
};

// Keeps the messages that the progress window showed, and whether it is there.
class RecordingProgress : public CompareProgress {
  public:
    void Show() override { shown = true; }
    void SetMessage(std::string_view text) override { messages.emplace_back(text); }
    void SetFileName(std::string_view text) override { fileName = text; }
    void SetBarRange(std::int64_t maximum) override { range = maximum; }
    void SetBarValue(std::int64_t value) override { bar = value; }
    void SetAnimation(std::string_view supportFile) override { animation = supportFile; }
    void WaitUntilPainted() override {}
    void Unload() override { shown = false; }

    bool shown = false;
    std::vector<std::string> messages;
    std::string fileName, animation;
    std::int64_t range = -1, bar = -1;
};

// Two folders, and all that a comparison of them needs.
class ComparisonBench {
  public:
    ComparisonBench() : ComparisonBench(DefaultCalls()) {}
    explicit ComparisonBench(SystemCalls& calls)
        : tools(calls), comparison(tools.Get(), compare, host, progress, results) {
        for (const Side side : kBothSides) {
            folder.MakeFolder(NameOf(side));
            host.paths[side] = folder / NameOf(side);
            results.hold[side].SetToSentinel();
        }
    }

    // From here on contents seem to come from a slow disk, so that files are opened and prefetched, or
    // from memory.
    void SetReadingWaits(bool waits) { tools.clock.step = waits ? 100 : 0; }

    static std::string NameOf(Side side) { return side == Side::Left ? "left" : "right"; }
    void Write(Side side, std::string_view name, std::string_view content,
               double time = 1'600'000'000) const {
        folder.Write(NameOf(side) + "/" + std::string(name), content, time);
    }
    CompareOutcome Run() { return comparison.CompareDirs(true, false); }

    // The rows as lines "left text|real name|size|type <> right ...".
    std::vector<std::string> Rows() const;
    // The records as lines, each behind the name of its sub-folder.
    std::vector<std::string> Records() const;
    std::string Log() const { return tools.folder.Read("ERRORLOG.TXT"); }

    TempFolder folder;
    TestToolbox tools;
    CCompare compare;
    ComparisonResults results;
    RecordingHost host{results};
    RecordingProgress progress;
    FolderComparison comparison;

  private:
    static SystemCalls& DefaultCalls() {
        static SystemCalls calls;
        return calls;
    }
};

std::string DescribeFile(std::string_view text, std::string_view realName, std::int64_t size, FileTime time,
                         ResultType type, bool isLink = false);
std::string DescribeUnknown(std::string_view text, std::string_view realName, UnknownReason reason);
std::string DescribeFolder(std::string_view text, std::string_view realName, std::int64_t size,
                           ResultType type, bool incomplete = false, bool isLink = false);
inline constexpr std::string_view kBetweenSides = " <> ";

}  // namespace vantrel::testing
