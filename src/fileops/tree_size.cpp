#include "fileops/tree_size.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/files/readers.h"

namespace vantrel {
namespace {

using Check = std::function<void()>;  // what it throws ends a listing

Currency Bytes(std::uint64_t size) {
    return Currency::FromWhole(static_cast<std::int64_t>(size));
}

// One folder, and those in it that are still to be counted.
struct CountedFolder {
    TreeSize size;
    std::shared_ptr<OpenFolder> folder;
    std::vector<std::string> subFolders;
    std::size_t next = 0;
    Error error;
};

void CountEntries(CountedFolder& counted, const Check& check) {
    TreeSize& size = counted.size;
    counted.error = counted.folder->ForEach([&](const FolderEntry& entry) {
        check();
        if (entry.isLink) {
            size.bytes += Bytes(entry.seen.size);
        } else if (entry.kind == EntryKind::Folder) {
            ++size.folders;
            counted.subFolders.emplace_back(entry.name);
        } else if (entry.kind == EntryKind::File) {
            ++size.files;
            size.bytes += Bytes(entry.size);
        }
        return true;
    });
}

CountedFolder CountTop(const FileSystem& files, const std::string& path, const Check& check) {
    CountedFolder counted;
    FileInfo info;
    counted.error = files.Stat(path, LinkPolicy::DoNotFollow, info);
    if (!counted.error.IsOk()) return counted;
    if (info.isLink || info.kind == EntryKind::File) {
        counted.size.files = info.isLink ? 0 : 1;
        counted.size.bytes = Bytes(info.size);
    }
    if (info.kind != EntryKind::Folder) return counted;
    counted.folder = std::make_shared<OpenFolder>();
    counted.error = files.Open(path, *counted.folder);
    if (counted.error.IsOk()) CountEntries(counted, check);
    return counted;
}

CountedFolder CountSub(const OpenFolder& above, const std::string& name, const Check& check) {
    CountedFolder counted;
    counted.folder = std::make_shared<OpenFolder>();
    counted.error = above.OpenSub(name, *counted.folder);
    if (counted.error.IsOk()) CountEntries(counted, check);
    return counted;
}

// Counts by workers, in depth, so that few folders are open at a time.
class TreeCount {
  public:
    TreeCount(const Toolbox& tools, const bool* cancel)
        : tools_(tools),
          cancel_(cancel),
          workers_(WorkerCount(tools.jobs)),
          jobs_(workers_, {.jobs = 2 * (workers_.Count() == 0 ? 0 : kJobsInWait) + 1}) {}

    Error Of(std::string_view path, TreeSize& size) {
        Error error;
        try {
            AddJob([files = tools_.files, path = std::string(path)](const Check& check) {
                return CountTop(files, path, check);
            });
            for (bool hasAnswered = false; !jobs_.IsEmpty(); hasAnswered = true) {
                CountedFolder counted = jobs_.TakeNext([this] { CheckHere(); });
                if (!hasAnswered && tools_.jobs && *tools_.jobs == 0)
                    AddReaders(workers_, tools_.volumes, std::array{std::string(path)});
                size.bytes += counted.size.bytes;
                size.files += counted.size.files;
                size.folders += counted.size.folders;
                if (error.IsOk()) error = std::move(counted.error);
                levels_.push_back(std::move(counted));
                AddSubFolders();
                CheckHere();
            }
        } catch (const CountCancelled&) {
            // What was counted until here stays.
        }
        return error;
    }

  private:
    struct CountCancelled {};

    void CheckHere() const {
        tools_.loop.Yield();
        if (cancel_ && *cancel_) throw CountCancelled();
    }
    template <typename Count>
    void AddJob(Count count) {
        jobs_.Add([this, alone = workers_.Count() == 0, count = std::move(count)](const StopFlag& stop) {
            return count([&] {
                if (alone) CheckHere();
                if (stop.IsRequested()) throw Cancelled();
            });
        });
    }
    void AddSubFolders() {
        while (!levels_.empty() && jobs_.HasRoom()) {
            CountedFolder& level = levels_.back();
            if (level.next == level.subFolders.size()) {
                levels_.pop_back();
                continue;
            }
            AddJob([above = level.folder, name = std::move(level.subFolders[level.next++])](
                       const Check& check) { return CountSub(*above, name, check); });
        }
    }

    const Toolbox& tools_;
    const bool* cancel_;
    std::vector<CountedFolder> levels_;  // from above; below one that has none left there may be others
    Workers workers_;
    JobQueue<CountedFolder> jobs_;
};

}  // namespace

Error CountTreeSize(const Toolbox& tools, std::string_view path, TreeSize& size, const bool* cancel) {
    size = {};
    return TreeCount(tools, cancel).Of(path, size);
}

}  // namespace vantrel
