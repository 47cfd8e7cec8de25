#include "sync_support.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdio>
#include <filesystem>

#include "sync/sync_history.h"

namespace vantrel::testing {
namespace fs = std::filesystem;

Tree ReadTree(const std::string& folder) {
    Tree tree;
    if (!fs::exists(folder)) return tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        struct stat info {};
        stat(entry.path().c_str(), &info);
        std::FILE* file = std::fopen(entry.path().c_str(), "rb");
        std::string content(static_cast<std::size_t>(info.st_size), '\0');
        EXPECT_EQ(content.size(), std::fread(content.data(), 1, content.size(), file));
        std::fclose(file);
        tree[entry.path().string().substr(folder.size())] = {std::move(content), info.st_mtim.tv_sec};
    }
    return tree;
}

SystemCalls& SyncWorld::Calls(SystemCalls* calls) {
    static SystemCalls own;
    return calls ? *calls : own;
}

SyncWorld::SyncWorld(SystemCalls* calls)
    : tools(Calls(calls)),
      comparison(tools.Get(), compare, progress),
      shellProgress(tools.loop),
      shell({tools.files,
             drives,
             tools.clock,
             tools.loop,
             shellProgress,
             questions,
             {tools.folder / "Trash", 0}}),
      wrappers(shell, tools.messages),
      sync(tools.Get(), wrappers, busy, {tools.folder / "Trash", 0}) {
    compare.Jobs = 1;  // so that all calls come in one order
    tools.folder.MakeFolder("left");
    tools.folder.MakeFolder("right");
}

void SyncWorld::Compare() {
    ComparisonReport report = comparison.Compare({{Folder(Side::Left), Folder(Side::Right)}}, nullptr);
    if (report.outcome != CompareOutcome::Failed) std::swap(results, report.results);
}

std::string LastRecord(const SyncWorld& world) {
    std::vector<SyncHistoryRecord> records;
    EXPECT_TRUE(SyncHistory(world.tools.Get()).Read(records).IsOk());
    return records.empty() ? "" : records.back().result;
}

}  // namespace vantrel::testing
