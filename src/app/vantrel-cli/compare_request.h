#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "engine.h"
#include "settings/ini_document.h"
#include "settings/option_values.h"
#include "views/cview_selections.h"

namespace vantrel {
struct Options;
}

namespace vantrel::cli {

// The last two are for what is compared alone.
enum class OutputFormat { Text, Json, Html, Csv };

// What the options of a comparison say. An option that was not given leaves what the settings file has, or
// the default.
struct CompareRequest {
    std::string settingsFile;  // as given; empty: none
    std::string sessionFile;   // likewise: a settings file with folders of its own, and nothing else
    OutputFormat format = OutputFormat::Text;
    std::optional<CompareMethod> method;
    std::optional<bool> subFolders;
    std::optional<std::string> include, exclude;  // in the engine's form
    bool excludeHiddenFiles = false, excludeSystemFiles = false;
    bool excludeHiddenFolders = false, excludeSystemFolders = false;
    std::optional<bool> ignoreTwoSeconds, ignoreDaylight;
    std::optional<std::int32_t> chunkSize;
    std::optional<bool> trueSizes;
    std::optional<std::int32_t> jobs;
};

// The options of what every command has that compares: how it compares, then settings file and format. They
// write to `request`, which must outlive them.
std::vector<OptionSpec> ComparisonOptions(CompareRequest& request);
std::vector<OptionSpec> SourceAndFormatOptions(CompareRequest& request);
// "--settings", and "--format" with all formats there are.
OptionSpec SourceOption(CompareRequest& request);
// "--session", in its place.
OptionSpec SessionOption(CompareRequest& request);
OptionSpec ReportFormatOption(OutputFormat& format);
// "--format", which other commands have as well.
OptionSpec FormatOption(OutputFormat& format);
// "--jobs", likewise.
OptionSpec JobsOption(std::optional<std::int32_t>& jobs);
// "--view", of which pairs are printed.
OptionSpec ViewOption(std::optional<std::int32_t>& view);

// The options that the request makes: the defaults, over them what its settings file has, and over that what
// was given. The view is left alone: that of the request is for who prints.
Error MakeOptions(const Engine& engine, const CompareRequest& request, Options& options);
// The settings file or session of the request; without one the document is empty. A file that is missing, or
// is no session, is an error.
Error ReadSource(const Engine& engine, const CompareRequest& request, IniDocument& document);
// The two folders as full paths: the operands, or without these the folders of the session. Where it has none
// the path is empty and `error` says so.
PerSide<std::string> FoldersOf(const Engine& engine, const CompareRequest& request,
                               const std::vector<std::string_view>& operands, Error& error);
// The view that was asked for, otherwise that of the options, which must outlive it.
CViewSelections ViewOf(std::optional<std::int32_t> chosen, Options& options);

}  // namespace vantrel::cli
