#pragma once

#include <string>
#include <string_view>

#include "core/compare_ports.h"
#include "core/comparison_results.h"
#include "core/toolbox.h"

namespace vantrel::cli {

// What a comparison finds where the window would be: two paths, and nothing that needs a screen.
class ConsoleHost : public ComparisonHost {
  public:
    ConsoleHost(const Toolbox& tools, ComparisonResults& results, PerSide<std::string> paths)
        : tools_(tools), results_(results), paths_(std::move(paths)) {}

    std::string PathText(Side side) const override { return paths_[side]; }
    void SetPathText(Side side, const std::string& path) override { paths_[side] = path; }
    bool MenusEnabled() const override { return menusEnabled_; }
    void SetMenusEnabled(bool enabled) override { menusEnabled_ = enabled; }
    void SetBusyPointer(bool) override {}
    void SetFilterPanel(std::string_view) override {}
    void RaiseMainWindow() override {}
    void ApplyViewTypes() override {}
    void RemoveListItemsAndShowNoCompareMsg() override;
    // The folders that the user compared in the window stay his most recent ones.
    void AddPathsToIni(const std::string&, const std::string&) override {}
    void PlayCompareCompleteSound() override {}
    void ShowCompareResults() override {}
    // Writes it to standard error.
    void ShowErrorLog() override;

  private:
    const Toolbox& tools_;
    ComparisonResults& results_;
    PerSide<std::string> paths_;
    bool menusEnabled_ = true;
};

}  // namespace vantrel::cli
