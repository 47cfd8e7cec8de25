// The time of a plan over 1,000,000 pairs: of files in the two folders, and of files below a sub-folder.
#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "settings/options.h"
#include "sync/sync_plan.h"

namespace vantrel {
namespace {

constexpr std::size_t kPairs = 1'000'000;

ResultRow RowOf(std::string_view name, RowKind kind, ResultType type) {
    ResultRow row;
    row.text = row.realName = name;
    row.size = Currency::FromWhole(4096);
    row.type = type;
    row.kind = kind;
    return row;
}

// Pairs of a newer file, of orphans on either side and of equal ones, by turns.
constexpr std::array<PerSide<ResultType>, 4> kTurns{{{{ResultType::Newer, ResultType::Older}},
                                                     {{ResultType::Orphan, ResultType::None}},
                                                     {{ResultType::None, ResultType::Orphan}},
                                                     {{ResultType::Older, ResultType::Newer}}}};

std::string NameOf(std::size_t number) {
    return "a file of usual length " + std::to_string(number) + ".jpeg";
}

ComparisonResults Rows() {
    ComparisonResults results;
    results.folders = {{"/home/anna/pictures/", "/media/anna/backup/pictures/"}};
    for (std::size_t i = 0; i < kPairs; ++i) {
        const std::string name = NameOf(i);
        for (const Side side : kBothSides) {
            const ResultType type = kTurns[i % kTurns.size()][side];
            if (type == ResultType::None)
                results.hold[side].AddPlaceholder();
            else
                results.hold[side].AddCopy(RowOf(name, RowKind::File, type));
        }
    }
    return results;
}

ComparisonResults BelowOneSubFolder() {
    ComparisonResults results;
    results.folders = {{"/home/anna/", "/media/anna/backup/"}};
    ResultRow folder = RowOf("\\pictures", RowKind::Folder, ResultType::DifferentFolder);
    folder.realName = "pictures";
    for (const Side side : kBothSides) results.hold[side].AddCopy(folder);
    CSubFolderDiffs diffs("\\pictures", "/home/anna/pictures");
    for (std::size_t i = 0; i < kPairs; ++i) {
        const std::string name = "2020/" + NameOf(i);
        PerSide<SubFolderRecord> pair;
        for (const Side side : kBothSides) {
            const ResultType type = kTurns[i % kTurns.size()][side];
            if (type != ResultType::None) pair[side] = {name, name, Currency::FromWhole(4096), {}, type};
        }
        diffs.AddPair(pair);
    }
    results.SubFolderDiffs.Add(std::move(diffs));
    return results;
}

void Plan(benchmark::State& state, const ComparisonResults& results) {
    Options options;
    CSyncSettings settings(options);
    settings.SetSyncMethod(SyncMethod::ReplaceOlderCopyOrphans);
    for (auto _ : state) {
        const SyncPlan plan = GetListOfFilesAffectedBySync(results, settings, std::nullopt);
        benchmark::DoNotOptimize(plan);
    }
}

void PlanOfRows(benchmark::State& state) {
    Plan(state, Rows());
}
BENCHMARK(PlanOfRows)->Unit(benchmark::kMillisecond);

void PlanBelowSubFolder(benchmark::State& state) {
    Plan(state, BelowOneSubFolder());
}
BENCHMARK(PlanBelowSubFolder)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vantrel

BENCHMARK_MAIN();
