#pragma once

#include <string>
#include <vector>

#include "core/folder_comparison.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

// Stands for the window: holds what it would show.
class RecordingDisplay : public ComparisonDisplay {
  public:
    void BeginScan() override { calls.emplace_back("BeginScan"); }
    void SetPathText(Side side, const std::string& path) override {
        calls.push_back("SetPathText " + path);
        paths[side] = path;
    }
    void SetFilterPanel(std::string_view text) override { filterPanel = text; }

    PerSide<std::string> paths;
    std::string filterPanel;
    std::vector<std::string> calls;
};

// Keeps the messages that the progress window showed, and whether it is there.
class RecordingProgress : public CompareProgress {
  public:
    void Show() override { shown = true; }
    void SetMessage(std::string_view text) override { messages.emplace_back(text); }
    void SetFileName(std::string_view text) override {
        fileName = text;
        if (text.find("% - ") != std::string_view::npos) percentages.emplace_back(text);
    }
    void SetBarRange(std::int64_t maximum) override { range = maximum; }
    void SetBarValue(std::int64_t value) override { bar = value; }
    void SetAnimation(std::string_view supportFile) override { animation = supportFile; }
    void WaitUntilPainted() override {}
    void Unload() override { shown = false; }

    bool shown = false;
    std::vector<std::string> messages;
    std::vector<std::string> percentages;  // of all that fileName was
    std::string fileName, animation;
    std::int64_t range = -1, bar = -1;
};

// Two folders, and all that a comparison of them needs.
class ComparisonBench {
  public:
    ComparisonBench() : ComparisonBench(DefaultCalls()) {}
    explicit ComparisonBench(SystemCalls& calls) : tools(calls), comparison(tools.Get(), compare, progress) {
        compare.Jobs = 1;  // so that all calls come in one order; tests with workers say so
        for (const Side side : kBothSides) {
            folder.MakeFolder(NameOf(side));
            display.paths[side] = folder / NameOf(side);
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
    // Compares, and keeps the results of a run that has some.
    CompareOutcome Run();

    // The rows as lines "left text|real name|size|type <> right ...".
    std::vector<std::string> Rows() const;
    // The records as lines, each behind the name of its sub-folder.
    std::vector<std::string> Records() const;
    std::string Log() const { return tools.folder.Read("ERRORLOG.TXT"); }

    TempFolder folder;
    TestToolbox tools;
    CCompare compare;
    ComparisonResults results;
    Error unlogged;  // of the last run
    RecordingDisplay display;
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
