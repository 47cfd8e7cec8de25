#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "core/ccompare.h"
#include "engine.h"
#include "settings/options.h"
#include "views/cview_selections.h"

namespace vantrel::cli {

enum class OutputFormat { Text, Json };

// What the options of a comparison say. An option that was not given leaves what the settings file has, or
// the default.
struct CompareRequest {
    std::string settingsFile;  // as given; empty: none
    OutputFormat format = OutputFormat::Text;
    std::optional<CompareMethod> method;
    std::optional<bool> subFolders;
    std::optional<std::string> include, exclude;  // in the engine's form
    bool excludeHiddenFiles = false, excludeSystemFiles = false;
    bool excludeHiddenFolders = false, excludeSystemFolders = false;
    std::optional<bool> ignoreTwoSeconds, ignoreDaylight;
    std::optional<std::int32_t> chunkSize;
};

// The options of what every command has that compares: how it compares, then settings file and format. They
// write to `request`, which must outlive them.
std::vector<OptionSpec> ComparisonOptions(CompareRequest& request);
std::vector<OptionSpec> SourceAndFormatOptions(CompareRequest& request);
// "--format", which other commands have as well.
OptionSpec FormatOption(OutputFormat& format);
// "--view", of which pairs are printed.
OptionSpec ViewOption(std::optional<std::int32_t>& view);

// Defaults, with what the settings file of the request has.
Error ReadSettings(const Engine& engine, const CompareRequest& request, Options& options);

// The request over the options.
void ApplyRequest(const CompareRequest& request, const Options& options, CCompare& compare);
// The view that was asked for, otherwise that of the options.
CViewSelections ViewOf(std::optional<std::int32_t> view, const Options& options);

}  // namespace vantrel::cli
