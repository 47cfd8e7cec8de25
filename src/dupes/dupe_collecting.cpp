#include "dupes/dupe_collecting.h"

#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <deque>
#include <numeric>
#include <set>
#include <utility>

#include "dupes/dupe_filter.h"
#include "platform/files/mount_table.h"
#include "platform/names/paths.h"
#include "shell/shell_operations.h"

namespace vantrel {

namespace {

// Folders that are being listed, or were and wait to be taken.
constexpr std::size_t kFoldersAhead = 64;

// File systems that hold no files of anybody's own.
constexpr std::array<std::string_view, 20> kPseudoTypes{
    "proc",      "sysfs",   "devtmpfs", "devpts", "cgroup",    "cgroup2",    "securityfs",
    "debugfs",   "tracefs", "pstore",   "bpf",    "configfs",  "fusectl",    "mqueue",
    "hugetlbfs", "autofs",  "efivarfs", "nsfs",   "selinuxfs", "binfmt_misc"};

std::set<std::uint64_t> PseudoDevices(const FileSystem& files) {
    std::set<std::uint64_t> devices;
    for (const Mount& mount : ReadMounts(files)) {
        if (std::find(kPseudoTypes.begin(), kPseudoTypes.end(), mount.type) == kPseudoTypes.end()) continue;
        unsigned major = 0, minor = 0;
        if (std::sscanf(mount.device.c_str(), "%u:%u", &major, &minor) == 2)
            devices.insert(makedev(major, minor));
    }
    return devices;
}

struct Wanted {
    std::string path;  // ends in "/"
    std::size_t root = 0;
    FileId id;  // what its listing said it is; device 0: not known
};

struct Listed {
    struct File {
        std::uint32_t nameAt, nameSize;
        Seen seen;
        FileTime createTime;
        std::uint8_t attributes;
    };
    struct Folder {
        std::string name;
        FileId id;
    };
    FileId id;
    std::string text;
    std::vector<File> files;
    std::vector<Folder> folders;
    Error error;
};

// What the jobs share.
struct ListingTerms {
    const FileSystem& files;
    DupeFilter filter;
    bool subFolders;
    bool createTimes;
};

Listed ListFolder(const ListingTerms& terms, const std::string& path, const StopFlag& stop) {
    Listed listed;
    OpenFolder folder;
    listed.error = terms.files.Open(path, folder);
    if (!listed.error.IsOk()) return listed;
    listed.id = folder.Id();
    listed.error = folder.ForEach([&](const FolderEntry& entry) {
        if (stop.IsRequested()) return false;
        if (entry.isLink || entry.kind == EntryKind::Other ||
            terms.filter.LeavesOutAttributes(entry.attributes))
            return true;
        if (entry.kind == EntryKind::Folder) {
            if (terms.subFolders) listed.folders.push_back({std::string(entry.name), entry.seen.id});
        } else if (!terms.filter.LeavesOutFile(entry.name, entry.size)) {
            listed.files.push_back({static_cast<std::uint32_t>(listed.text.size()),
                                    static_cast<std::uint32_t>(entry.name.size()), entry.seen, FileTime(),
                                    entry.attributes});
            listed.text.append(entry.name);
        }
        return true;
    });
    if (!terms.createTimes) return listed;
    for (Listed::File& file : listed.files) {
        if (stop.IsRequested()) break;
        FileInfo info;
        const std::string name = path + listed.text.substr(file.nameAt, file.nameSize);
        if (terms.files.Stat(name, LinkPolicy::DoNotFollow, info).IsOk()) file.createTime = info.created;
    }
    return listed;
}

class Collector {
  public:
    Collector(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order, DupeProgress& progress,
              const DupeCheck& check)
        : order_(order),
          progress_(progress),
          check_(check),
          pseudo_(PseudoDevices(tools.files)),
          terms_(std::make_shared<ListingTerms>(ListingTerms{
              tools.files,
              DupeFilter(order,
                         {order.dupesFolder.empty() ? DupesFolderPath(tools.folders) : order.dupesFolder,
                          TrashPlaces::OfThisUser().homeTrash}),
              order.includeSubFolders, order.criteria.createTimes})),
          jobs_(workers, {.jobs = kFoldersAhead}) {}

    DupeCollection Collect() {
        for (std::size_t root = 0; root < order_.folders.size(); ++root) {
            TellRoot(root);
            Want({NormalizePath(order_.folders[root]), root, {}});
        }
        while (!waiting_.empty() || !jobs_.IsEmpty()) {
            HandIn();
            Listed listed = jobs_.TakeNext([this] { Check(); });
            const Wanted folder = std::move(handedIn_.front());
            handedIn_.pop_front();
            Take(folder, std::move(listed));
            Check();
        }
        JoinNames();
        return std::move(found_);
    }

  private:
    void Want(Wanted folder) {
        if (!terms_->filter.LeavesOutFolder(folder.path)) waiting_.push_back(std::move(folder));
    }

    void TellRoot(std::size_t root) {
        progress_.SetStatus("Scanning folder " + order_.folders[root] + " ...");
        told_ = root;
        check_();
    }

    void Check() {
        progress_.SetFigures({.files = found_.files.Count()});
        check_();
    }

    void HandIn() {
        while (!waiting_.empty() && jobs_.HasRoom()) {
            jobs_.Add([terms = terms_, path = waiting_.front().path](const StopFlag& stop) {
                return ListFolder(*terms, path, stop);
            });
            handedIn_.push_back(std::move(waiting_.front()));
            waiting_.pop_front();
        }
    }

    void Take(const Wanted& folder, Listed listed) {
        if (told_ != folder.root) TellRoot(folder.root);
        if (listed.error.IsOk() && IsAnother(folder, listed)) listed.error = ChangedSinceSeen(folder.path);
        if (!listed.error.IsOk()) {
            found_.unsearched.push_back({folder.path, listed.error});
            return;
        }
        if (pseudo_.contains(listed.id.device)) return;
        for (const Listed::Folder& sub : listed.folders)
            if (!pseudo_.contains(sub.id.device)) Want({folder.path + sub.name + "/", folder.root, sub.id});
        if (listed.files.empty()) return;
        const std::uint32_t number = found_.files.AddFolder(folder.path, folder.root);
        for (const Listed::File& file : listed.files) {
            DupeFile record;
            record.name = std::string_view(listed.text).substr(file.nameAt, file.nameSize);
            record.size = static_cast<std::int64_t>(file.seen.size);
            record.createTime = file.createTime;
            record.seen = file.seen;
            record.folder = number;
            record.attributes = file.attributes;
            found_.files.Add(record);
        }
    }

    // A link or another folder may have come into its place.
    static bool IsAnother(const Wanted& folder, const Listed& listed) {
        return folder.id != FileId() && folder.id != listed.id;
    }

    // Every object once, under the name that comes first.
    void JoinNames() {
        FoundFiles& files = found_.files;
        std::vector<std::uint32_t> order(files.Count());
        std::iota(order.begin(), order.end(), 0U);
        std::uint32_t steps = 0;
        std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
            if (++steps % 8192 == 0) Check();
            if (files[a].seen.id != files[b].seen.id) return files[a].seen.id < files[b].seen.id;
            return files.ComesBefore(files[a], files[b]);
        });
        std::vector<bool> isOther(files.Count());
        std::size_t first = 0;
        for (std::size_t i = 1; i < order.size(); ++i) {
            if (files[order[i]].seen.id != files[order[first]].seen.id) {
                first = i;
                continue;
            }
            isOther[order[i]] = true;
            files.AddOtherName(files[order[first]], files.PathOf(order[i]));
        }
        files.Keep([&](std::size_t number) { return !isOther[number]; });
    }

    const DupeSearchOrder& order_;
    DupeProgress& progress_;
    const DupeCheck& check_;
    std::set<std::uint64_t> pseudo_;
    std::shared_ptr<const ListingTerms> terms_;
    std::deque<Wanted> waiting_, handedIn_;
    JobQueue<Listed> jobs_;
    std::size_t told_ = 0;
    DupeCollection found_;
};

}  // namespace

DupeCollection CollectDupeFiles(const Toolbox& tools, Workers& workers, const DupeSearchOrder& order,
                                DupeProgress& progress, const DupeCheck& check) {
    return Collector(tools, workers, order, progress, check).Collect();
}

std::string DupesFolderPath(const ProgramFolders& folders) {
    return folders.appPath + "DUPES";
}

}  // namespace vantrel
