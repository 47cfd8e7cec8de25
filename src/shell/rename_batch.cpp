#include "shell/rename_batch.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <unordered_map>
#include <utility>

#include "platform/files/entry_info.h"
#include "platform/names/name_changes.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "shell/shell_run.h"

namespace vantrel {
namespace {

using shell::Folder;
using shell::Place;
using shell::RenameJournal;
using shell::Statx;

Error OpenFolderOfBatch(const FileSystem& files, const ShellRoot& root, Folder& folder) {
    if (Error error = shell::OpenExistingFolder(files, root.path, folder); !error.IsOk()) return error;
    // A device can get another number while it is not mounted.
    const bool sameDevice = root.id.device == 0 || folder.id.device == root.id.device;
    const bool same = root.id == FileId() ||
                      (sameDevice && folder.id.inode == root.id.inode && MadeAlike(folder.made, root.made));
    return same ? Error() : ChangedSinceSeen(root.path);
}

// In user space many file systems number what they are asked about anew.
bool KeepsInodes(SystemCalls& calls, const Folder& folder) {
    constexpr long kFuse = 0x65735546;
    struct statfs system {};
    return calls.FstatFs(folder.fd.Get(), system) != 0 || system.f_type != kFuse;
}

bool IsStillIt(const RenameStep& step, const Statx& now, bool keepsInodes) {
    if (SightingOf(now).kind != step.kind) return false;
    if (!keepsInodes || step.inode == 0) return true;
    return now.stx_ino == step.inode && MadeAlike(MadeAt(now), step.made);
}

// The steps of one batch, carried out in the folder that is held open.
class Renaming {
  public:
    Renaming(SystemCalls& calls, const Folder& folder, const RenameBatch& batch, RenameResult& result)
        : calls_(calls),
          folder_(folder),
          batch_(batch),
          result_(result),
          keepsInodes_(KeepsInodes(calls, folder)) {}

    void Do(const RenameUnit& unit) {
        if (unit.isRing)
            DoRing(unit.steps);
        else
            DoOne(unit.steps.front());
    }

  private:
    Place At(const std::string& name) const { return {&folder_, NameToSystem(name)}; }
    RenamedObject& Object(std::size_t step) { return result_.objects[step]; }

    void DoOne(std::size_t step) {
        Statx taken{};
        const std::string& to = batch_.steps[step].to;
        Error error = Rename(step, to);
        // The file system takes both names for one, or knows the object by both.
        const bool itself = error.SystemNumber() == EEXIST &&
                            shell::Look(calls_, At(to), LinkPolicy::DoNotFollow, taken) == 0 &&
                            taken.stx_ino == Object(step).inode;
        if (itself) return DoRing({step});
        Settle(step, std::move(error));
    }

    void DoRing(const std::vector<std::size_t>& steps) {
        std::vector<std::pair<std::size_t, std::string>> ways;
        ways.emplace_back(steps.front(), batch_.steps[steps.front()].temporary);
        for (std::size_t i = 1; i < steps.size(); ++i) ways.emplace_back(steps[i], batch_.steps[steps[i]].to);
        ways.emplace_back(steps.front(), batch_.steps[steps.front()].to);
        Error error;
        std::size_t done = 0;
        while (done < ways.size() && error.IsOk()) {
            error = Rename(ways[done].first, ways[done].second);
            if (error.IsOk()) ++done;
        }
        if (!error.IsOk()) PutBack(ways, done);
        for (const std::size_t step : steps) Settle(step, error);
    }

    // What cannot be put back stays where it is: so does all that was done before it.
    void PutBack(const std::vector<std::pair<std::size_t, std::string>>& ways, std::size_t done) {
        while (done-- > 0)
            if (!Rename(ways[done].first, batch_.steps[ways[done].first].from).IsOk()) return;
    }

    void Settle(std::size_t step, Error error) {
        const bool done = Object(step).standsAs == batch_.steps[step].to;
        Object(step).outcome = done ? ItemOutcome::Done : ItemOutcome::Failed;
        if (!done) Object(step).error = std::move(error);
    }

    Error Rename(std::size_t step, const std::string& name) {
        RenamedObject& object = Object(step);
        const Place from = At(object.standsAs), to = At(name);
        Statx now{};
        if (const int looked = shell::Look(calls_, from, LinkPolicy::DoNotFollow, now); looked < 0)
            return Error::FromErrno(-looked, from.Path());
        if (keepsInodes_ && now.stx_ino != object.inode) return ChangedSinceSeen(from.Path());
        object.inode = now.stx_ino;
        const int result = shell::RenameWithoutReplacing(calls_, from, to);
        if (result == 0) {
            object.standsAs = name;
            return {};
        }
        if (result == -EEXIST || result == -EACCES || result == -EPERM || result == -EROFS)
            return Error::FromErrno(-result, (result == -EEXIST ? to : from).Path());
        return shell::RefusedName(calls_, from, to, result);
    }

    SystemCalls& calls_;
    const Folder& folder_;
    const RenameBatch& batch_;
    RenameResult& result_;
    const bool keepsInodes_;
};

// What stands under the names of a batch; those that are not as the batch says fail before it begins.
std::vector<std::size_t> LookAtObjects(SystemCalls& calls, const Folder& folder, RenameBatch& batch,
                                       RenameResult& result) {
    const bool keepsInodes = KeepsInodes(calls, folder);
    std::vector<std::size_t> fit;
    result.objects.resize(batch.steps.size());
    for (std::size_t i = 0; i < batch.steps.size(); ++i) {
        RenameStep& step = batch.steps[i];
        RenamedObject& object = result.objects[i];
        object.standsAs = step.from;
        const Place place{&folder, NameToSystem(step.from)};
        Statx now{};
        if (!names::IsPossibleName(step.to) || !names::IsPossibleName(step.from)) {
            object.error = {ErrorNumber::BadFileNameOrNumber,
                            "\"" + step.to + "\" cannot be the name of an object"};
        } else if (const int looked = shell::Look(calls, place, LinkPolicy::DoNotFollow, now); looked < 0) {
            object.error = Error::FromErrno(-looked, place.Path());
        } else if (!IsStillIt(step, now, keepsInodes)) {
            object.error = ChangedSinceSeen(place.Path());
        } else {
            object.inode = step.inode = now.stx_ino;
            object.made = step.made = MadeAt(now);
            fit.push_back(i);
            continue;
        }
        object.outcome = ItemOutcome::Failed;
    }
    return fit;
}

// A file system that cannot make a folder safe by itself says so.
Error MakeNamesSafe(SystemCalls& calls, const Folder& folder) {
    const int synced = calls.Fsync(folder.fd.Get());
    const bool cannot = synced == -EINVAL || synced == -ENOSYS || synced == -EOPNOTSUPP;
    return synced == 0 || cannot ? Error() : Error::FromErrno(-synced, folder.path);
}

void CarryOut(SystemCalls& calls, EventLoopPort& loop, const Folder& folder, const RenameBatch& batch,
              RenameResult& result, const BatchRenames::Progress& progress) {
    std::size_t done = 0;
    Renaming renaming(calls, folder, batch, result);
    for (const RenameUnit& unit : OrderRenames(batch.steps)) {
        if (progress) progress(done);
        loop.Yield();
        if (loop.CancelRequested()) {
            result.cancelled = true;
            break;
        }
        renaming.Do(unit);
        done += unit.steps.size();
    }
    result.notClosed = MakeNamesSafe(calls, folder);
}

bool StandsAside(const RenameBatch& batch, const RenameResult& result) {
    for (std::size_t i = 0; i < batch.steps.size(); ++i)
        if (result.objects[i].standsAs == batch.steps[i].temporary) return true;
    return false;
}

std::string Token(Clock& clock) {
    char text[16] = {};
    const auto ticks = static_cast<std::uint64_t>(clock.Now().ticks);
    const auto end = std::to_chars(text, text + sizeof text, ticks, 16).ptr;
    return std::string(text, end).append("-").append(std::to_string(getpid()));
}

enum class Standing { Old, Temporary, New, Nowhere };

Standing WhereStands(SystemCalls& calls, const Folder& folder, const RenameStep& step) {
    Statx now{};
    const auto stands = [&](const std::string& name) {
        return shell::Look(calls, {&folder, NameToSystem(name)}, LinkPolicy::DoNotFollow, now) == 0 &&
               SightingOf(now).kind == step.kind;
    };
    const auto isIt = [&] { return now.stx_ino == step.inode && MadeAlike(MadeAt(now), step.made); };
    // The temporary name is nobody else's, whatever the file system has made of the numbers meanwhile.
    if (stands(step.temporary)) return Standing::Temporary;
    // Where letter case does not count an object answers to both names, and either answer keeps it known.
    if (stands(step.to) && isIt()) return Standing::New;
    if (stands(step.from) && isIt()) return Standing::Old;
    return Standing::Nowhere;
}

LeftRename Describe(SystemCalls& calls, const Folder& folder, const RenameBatch& batch) {
    LeftRename left;
    left.folder = batch.folder.path;
    left.objects = batch.steps.size();
    for (const RenameStep& step : batch.steps) {
        const Standing standing = WhereStands(calls, folder, step);
        left.renamed += standing == Standing::New ? 1 : 0;
        left.temporaries += standing == Standing::Temporary ? 1 : 0;
        left.untouched += standing == Standing::Old ? 1 : 0;
    }
    return left;
}

// From where each object stands to where the repair wants it.
RenameBatch RepairBatch(SystemCalls& calls, const Folder& folder, const RenameBatch& left, RepairWay way) {
    RenameBatch batch{left.folder, {}};
    for (const RenameStep& step : left.steps) {
        const std::string& wanted = way == RepairWay::Finish ? step.to : step.from;
        RenameStep repair = step;
        repair.to = wanted;
        switch (WhereStands(calls, folder, step)) {
            case Standing::Old:
                break;
            case Standing::New:
                repair.from = step.to;
                break;
            case Standing::Temporary:
                repair.from = step.temporary;
                repair.inode = 0;
                repair.made = {};
                break;
            case Standing::Nowhere:
                continue;
        }
        if (repair.from != repair.to) batch.steps.push_back(std::move(repair));
    }
    return batch;
}

}  // namespace

bool RenameResult::AllDone() const {
    return notBegun.IsOk() && std::ranges::all_of(objects, [](const RenamedObject& object) {
               return object.outcome == ItemOutcome::Done;
           });
}

bool RenameResult::AnyDone() const {
    return std::ranges::any_of(
        objects, [](const RenamedObject& object) { return object.outcome == ItemOutcome::Done; });
}

std::vector<RenameUnit> OrderRenames(const std::vector<RenameStep>& steps) {
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::unordered_map<std::string, std::size_t> takers;  // by the folded name that they take
    for (std::size_t i = 0; i < steps.size(); ++i) takers.try_emplace(FoldCase(steps[i].to), i);
    std::vector<std::size_t> follower(steps.size(), kNone), waitsFor(steps.size(), 0);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto taker = takers.find(FoldCase(steps[i].from));
        if (taker == takers.end() || taker->second == i) continue;
        follower[i] = taker->second;
        ++waitsFor[taker->second];
    }
    std::vector<RenameUnit> units;
    std::vector<bool> placed(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (waitsFor[i] != 0) continue;
        // Each chain is followed to where somebody waits for another chain as well.
        for (std::size_t next = i; next != kNone && !placed[next] && waitsFor[next] == 0;) {
            placed[next] = true;
            units.push_back({{next}, false});
            next = follower[next];
            if (next != kNone) --waitsFor[next];
        }
    }
    // Each of the others waits, and each is waited for by one at most: they are rings.
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (placed[i]) continue;
        RenameUnit ring{{}, true};
        for (std::size_t next = i; next != kNone && !placed[next]; next = follower[next]) {
            placed[next] = true;
            ring.steps.push_back(next);
        }
        units.push_back(std::move(ring));
    }
    return units;
}

RenameResult BatchRenames::Run(RenameBatch batch, const Progress& progress) {
    Folder folder;
    RenameResult result;
    result.notBegun = OpenFolderOfBatch(files_, batch.folder, folder);
    if (!result.notBegun.IsOk()) return result;
    batch.folder.id = folder.id;
    batch.folder.made = folder.made;
    RenameJournal journal;
    return Work(folder, std::move(batch), journal, progress);
}

// `journal` is the one that knows the batch already, or is not open yet.
RenameResult BatchRenames::Work(const shell::Folder& folder, RenameBatch batch, RenameJournal& journal,
                                const Progress& progress) {
    RenameResult result, becameOf;
    const std::vector<std::size_t> fit = LookAtObjects(files_.Calls(), folder, batch, result);
    RenameBatch able{batch.folder, {}};
    for (const std::size_t index : fit) {
        able.steps.push_back(std::move(batch.steps[index]));
        becameOf.objects.push_back(result.objects[index]);
    }
    if (!fit.empty() && !journal.IsOpen())
        result.notBegun = RenameJournal::Create(files_, journals_, Token(clock_), able, journal);
    if (!result.notBegun.IsOk() || !journal.IsOpen()) return result;
    CarryOut(files_.Calls(), loop_, folder, able, becameOf, progress);
    if (becameOf.notClosed.IsOk() && !StandsAside(able, becameOf)) becameOf.notClosed = journal.Remove();
    for (std::size_t i = 0; i < fit.size(); ++i) result.objects[fit[i]] = std::move(becameOf.objects[i]);
    result.cancelled = becameOf.cancelled;
    result.notClosed = std::move(becameOf.notClosed);
    return result;
}

std::vector<LeftRename> BatchRenames::FindLeft() {
    std::vector<std::string> paths;
    OpenFolder journals;
    if (!files_.Open(journals_, journals).IsOk()) return {};
    const Error listed = journals.ForEach(
        [&](const FolderEntry& entry) {
            if (entry.name.starts_with(RenameJournal::kNameStem) &&
                entry.name.ends_with(RenameJournal::kNameEnd))
                paths.push_back(JoinPath(journals_, entry.name));
            return true;
        },
        StatPolicy::NonFilesOnly);
    if (!listed.IsOk()) return {};
    std::ranges::sort(paths);
    std::vector<LeftRename> all;
    for (const std::string& path : paths) {
        RenameJournal journal;
        RenameBatch batch;
        bool isLeft = false;
        Folder folder;
        if (!RenameJournal::OpenLeft(files_, path, batch, journal, isLeft).IsOk() || !isLeft) continue;
        if (!OpenFolderOfBatch(files_, batch.folder, folder).IsOk()) continue;
        LeftRename left = Describe(files_.Calls(), folder, batch);
        left.journal = path;
        // One that cannot be removed is found again, and says the same.
        if (left.IsDone() && journal.Remove().IsOk()) continue;
        if (!left.IsDone()) all.push_back(std::move(left));
    }
    return all;
}

RenameResult BatchRenames::Repair(const LeftRename& left, RepairWay way) {
    RenameResult result;
    RenameJournal journal;
    RenameBatch batch;
    bool isLeft = false;
    Folder folder;
    result.notBegun = RenameJournal::OpenLeft(files_, left.journal, batch, journal, isLeft);
    if (!result.notBegun.IsOk() || !isLeft) return result;
    result.notBegun = OpenFolderOfBatch(files_, batch.folder, folder);
    if (!result.notBegun.IsOk()) return result;
    return Work(folder, RepairBatch(files_.Calls(), folder, batch, way), journal, {});
}

}  // namespace vantrel
