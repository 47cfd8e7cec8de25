#include "conservation_support.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "platform/names/temporary_names.h"

namespace vantrel::testing {
namespace fs = std::filesystem;

namespace {

bool IsNamed(const char* path, std::string_view name) {
    const std::string_view given = path == nullptr ? "" : path;
    return given == name || given.ends_with("/" + std::string(name));
}

const char* FolderName(Side side) {
    return side == Side::Left ? "left/" : "right/";
}

// As links lead; what leads nowhere, or is neither file nor folder, is Unknown.
enum class Kind { Absent, File, Folder, Unknown };
Kind KindOf(const std::string& path) {
    std::error_code error;
    if (fs::symlink_status(path, error).type() == fs::file_type::not_found) return Kind::Absent;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::regular) return Kind::File;
    return type == fs::file_type::directory ? Kind::Folder : Kind::Unknown;
}

template <typename Visit>
void ForEachWithin(const Objects& objects, const std::string& top, const Visit& visit) {
    for (const auto& [path, what] : objects)
        if (IsWithin(path, top)) visit(path, what);
}

bool IsTemporary(const std::string& path) {
    return IsTemporaryCopyName(fs::path(path).filename().string());
}

bool IsReachedWithoutLinks(const std::string& root, const std::string& below) {
    std::error_code error;
    for (fs::path above = fs::path(below).parent_path(); !above.empty(); above = above.parent_path())
        if (!fs::is_directory(fs::symlink_status(root + above.string(), error))) return false;
    return true;
}

bool IsContent(const std::string& what) {
    return what.starts_with("f:") || what.starts_with("l:");
}

}  // namespace

int CornerCalls::OpenAt(int folder, const char* path, int flags, mode_t mode) {
    return IsNamed(path, "locked") ? -EACCES : FaultySystemCalls::OpenAt(folder, path, flags, mode);
}

int CornerCalls::StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) {
    return IsNamed(path, "unseen") ? -EACCES : FaultySystemCalls::StatxAt(folder, path, flags, mask, out);
}

RandomWorld::RandomWorld(unsigned seed, int depth) : SyncWorld(&calls), random(seed) {
    tools.folder.Write("outside/file", "outside");
    tools.folder.Write("outside/folder/inner", "inner outside");
    tools.folder.Write("outside/folder/a", "a outside");
    Grow("", {{true, true}}, depth);
    ChooseOptions(seed);
}

RandomWorld::What RandomWorld::Choose() {
    const auto number = random() % 20;
    if (number < 11) return What::File;
    if (number < 16) return What::Folder;
    return number < 19 ? What::Link : What::Special;
}

void RandomWorld::Grow(const std::string& below, const PerSide<bool>& on, int depth) {
    for (const char* name : {"a", "A", "b.txt", "B.TXT", "d", "D", "\xC3\xA4", "locked", "unseen"}) {
        const bool isCorner = std::string_view(name).ends_with("ed") || std::string_view(name) == "unseen";
        if (random() % (isCorner ? 8 : 5) >= (below.empty() ? 3U : 2U) - (isCorner ? 1U : 0U)) continue;
        const What usual = Choose();
        const bool alike = random() % 4 == 0;
        const std::string shared = "alike " + std::to_string(++made_);
        PerSide<bool> folders;
        for (const Side side : kBothSides) {
            if (!on[side] || random() % 4 == 0) continue;
            const What what = random() % 8 == 0 ? Choose() : usual;
            const std::string own = std::to_string(++made_) + std::string(random() % 3, 'x') +
                                    std::string(random() % 40 == 0 ? 200'000 : 0, 'y');
            Make(FolderName(side) + below + name, what, alike ? shared : own,
                 alike ? 1'500'000'000 : 1'600'000'000 + static_cast<double>(random() % 3) * 10);
            folders[side] = what == What::Folder;
        }
        if (depth > 1 && (folders[Side::Left] || folders[Side::Right]))
            Grow(below + name + "/", folders, depth - 1);
    }
}

void RandomWorld::Make(const std::string& path, What what, const std::string& content, double time) {
    const std::string full = tools.folder / path;
    switch (what) {
        case What::File:
            return tools.folder.Write(path, content, time);
        case What::Folder:
            return tools.folder.MakeFolder(path);
        case What::Link:
            return fs::create_symlink(LinkTarget(fs::path(path).filename()), full);
        case What::Special:
            break;
    }
    ASSERT_EQ(0, mknod(full.c_str(), (random() % 2 == 0 ? S_IFIFO : S_IFSOCK) | 0600, 0)) << full;
}

std::string RandomWorld::LinkTarget(const std::string& name) {
    const std::vector<std::string> targets{"a",
                                           "../a",
                                           "d",
                                           "nowhere",
                                           ".",
                                           "..",
                                           name,
                                           "b.txt",
                                           tools.folder / "outside/file",
                                           tools.folder / "outside/folder",
                                           Folder(Side::Left) + "a",
                                           Folder(Side::Right) + "d",
                                           Folder(Side::Right)};
    return targets[random() % targets.size()];
}

void RandomWorld::ChooseOptions(unsigned seed) {
    settings.SetSyncMethod(static_cast<int>(seed % 8));
    if (settings.SyncMethod() == static_cast<int>(SyncMethod::Custom)) {
        for (const Side side : kBothSides)
            for (int cell = 0; cell < kSyncCellCount; ++cell)
                settings.SetAction(side, static_cast<SyncCell>(cell), static_cast<SyncAction>(random() % 4));
    }
    compare.SetCompareSubFolders(random() % 4 != 0);
    compare.CompareMethod = random() % 2 == 0 ? CompareMethod::Contents : CompareMethod::SizeAndDate;
    options.goOnAfterFailure = random() % 2 == 0;
    if (random() % 4 == 0) compare.ExcludeFilters = std::array{"b*", "\\d", "A,\\D"}[random() % 3];
    if (random() % 10 == 0) compare.IncludeFilters = "a*";
    if (random() % 10 == 0) questions.answer = ErrorAnswer::Cancel;
}

Snapshot RandomWorld::Look() const {
    Snapshot snapshot;
    for (const Side side : kBothSides) snapshot.sides[side] = TreeOf(Folder(side));
    snapshot.outside = TreeOf(tools.folder / "outside/");
    snapshot.trash = TreeOf(TrashFiles());
    snapshot.aside = TreeOf(tools.folder / "aside/");
    return snapshot;
}

bool RandomWorld::ShowConfirmSync(const SyncPlan& shown) {
    plan = shown;
    ExpectNoOrphanIsOccupied(*this);
    if (onConfirm) onConfirm();
    confirmed = Look();
    return true;
}

std::string Below(const SyncPlan& plan, Side side, const std::string& fullPath) {
    EXPECT_TRUE(fullPath.starts_with(plan.folders[side])) << fullPath;
    return fullPath.substr(plan.folders[side].size());
}

bool IsWithin(const std::string& path, const std::string& top) {
    return path == top || path.starts_with(top + "/");
}

void ForgetTemporaries(Snapshot& snapshot) {
    for (const Side side : kBothSides)
        std::erase_if(snapshot.sides[side], [](const auto& object) { return IsTemporary(object.first); });
}

Reach::Reach(const SyncPlan& plan, const Snapshot& before) {
    plan.ForEach([&](const PlannedAction& action) {
        const std::string source = Below(plan, action.side, action.source);
        const Side other = Other(action.side);
        ++actions[action.side][source];
        if (action.action == SyncAction::Delete) {
            ForEachWithin(before.sides[action.side], source, [&](const std::string& path, const auto&) {
                mayGo[action.side].insert(path);
                if (action.folder.empty()) toTrash[action.side].insert(path);
            });
            return;
        }
        const std::string target = Below(plan, other, action.target);
        ++actions[other][target];
        ForEachWithin(before.sides[action.side], source, [&](const std::string& path, const auto& what) {
            mayBecome[other][target + path.substr(source.size())].insert(what);
        });
        for (fs::path above = fs::path(target).parent_path(); !above.empty(); above = above.parent_path())
            mayBecome[other][above.string()].insert("d");
    });
}

bool Reach::MayBecome(Side side, const std::string& path, const std::string& what) const {
    const auto found = mayBecome[side].find(path);
    return found != mayBecome[side].end() && found->second.contains(what);
}

void ExpectConserved(const SyncPlan& plan, const Snapshot& before, const Snapshot& after) {
    EXPECT_EQ(before.outside, after.outside);
    const Reach reach(plan, before);
    std::set<std::string> inTrash;
    for (const auto& [path, what] : after.trash) inTrash.insert(what);
    for (const Side side : kBothSides) {
        for (const auto& [path, what] : before.sides[side]) {
            if (IsTemporary(path)) continue;  // of a run that was killed: to be cleared away
            const auto now = after.sides[side].find(path);
            if (now != after.sides[side].end() && now->second == what) continue;
            const std::string shown = FolderName(side) + path + " was " + what.substr(0, 40);
            if (now == after.sides[side].end())
                EXPECT_TRUE(reach.mayGo[side].contains(path)) << shown << " and is lost";
            else
                EXPECT_TRUE(reach.MayBecome(side, path, now->second))
                    << shown << " and is " << now->second.substr(0, 40);
            if (reach.toTrash[side].contains(path) && IsContent(what)) {
                EXPECT_TRUE(inTrash.contains(what)) << shown << " and is not in the trash";
            }
        }
        for (const auto& [path, what] : after.sides[side]) {
            if (before.sides[side].contains(path)) continue;
            EXPECT_TRUE(reach.MayBecome(side, path, what))
                << FolderName(side) << path << " is new: " << what.substr(0, 40);
        }
    }
}

void ExpectNoOrphanIsOccupied(const RandomWorld& world) {
    if (!world.results.taken.HasNoFilters()) return;
    world.plan.ForEach([&](const PlannedAction& action) {
        if (action.type != ResultType::Orphan && action.type != ResultType::OrphanFolder) return;
        const std::string path = Below(world.plan, action.side, action.source);
        const Kind own = KindOf(action.source), other = KindOf(world.Folder(Other(action.side)) + path);
        const bool twoKinds =
            (own == Kind::File && other == Kind::Folder) || (own == Kind::Folder && other == Kind::File);
        EXPECT_TRUE(other == Kind::Absent || twoKinds) << action.source << " is taken for an orphan";
    });
}

void ExpectTruth(const SyncPlan& plan, const SyncReport& report, const Snapshot& before,
                 const Snapshot& after) {
    const Reach reach(plan, before);
    EXPECT_EQ(report.actions.size(), report.done + report.notDone);
    if (report.notDone > 0) {
        EXPECT_TRUE(report.cancelled);
    }
    for (const ActionOutcome& at : report.actions) {
        const PlannedAction& action = *at.action;
        if (at.outcome == ItemOutcome::Failed) {
            EXPECT_FALSE(at.error.IsOk()) << action.source;
            EXPECT_TRUE(std::ranges::any_of(report.troubles, [&](const SyncTrouble& trouble) {
                return trouble.action == &action;
            })) << action.source;
        }
        if (at.outcome != ItemOutcome::Done) continue;
        const std::string source = Below(plan, action.side, action.source);
        // What two actions speak of, the second of them decides.
        if (reach.actions[action.side].at(source) > 1) continue;
        if (action.action == SyncAction::Delete) {
            const auto now = after.sides[action.side].find(source);
            EXPECT_TRUE(now == after.sides[action.side].end() ||
                        reach.MayBecome(action.side, source, now->second))
                << action.source << " is there";
            continue;
        }
        const Side other = Other(action.side);
        const std::string target = Below(plan, other, action.target);
        if (reach.actions[other].at(target) > 1) continue;
        ForEachWithin(before.sides[action.side], source, [&](const std::string& path, const auto& what) {
            if (what == "s") return;  // passed over
            const auto copy = after.sides[other].find(target + path.substr(source.size()));
            EXPECT_TRUE(copy != after.sides[other].end() && copy->second == what)
                << action.source << " is not wholly copied: " << path;
        });
    }
}

std::pair<Side, std::string> Editor::Pick() {
    std::vector<std::pair<Side, std::string>> candidates;
    world_.plan.ForEach([&](const PlannedAction& action) {
        candidates.emplace_back(action.side, Below(world_.plan, action.side, action.source));
        if (!action.target.empty())
            candidates.emplace_back(Other(action.side),
                                    Below(world_.plan, Other(action.side), action.target));
        if (!action.isWholeFolder) return;
        ForEachWithin(
            TreeOf(world_.Folder(action.side)), Below(world_.plan, action.side, action.source),
            [&](const std::string& path, const auto&) { candidates.emplace_back(action.side, path); });
    });
    if (candidates.empty()) return {};
    auto [side, path] = candidates[world_.random() % candidates.size()];
    const std::string above = fs::path(path).parent_path().string();
    if (!above.empty() && world_.random() % 6 == 0) path = above;
    return {side, path};
}

std::string Editor::NewContent() {
    std::string content = "edited " + std::to_string(++count_);
    written.insert("f:" + content);
    return content;
}

void Editor::Destroy(const std::string& path) {
    std::error_code error;
    if (fs::is_symlink(path)) destroyed.insert("l:" + fs::read_symlink(path).string());
    if (fs::is_regular_file(fs::symlink_status(path, error)))
        destroyed.insert(
            "f:" +
            std::string(std::istreambuf_iterator<char>(std::ifstream(path, std::ios::binary).rdbuf()), {}));
    if (fs::is_directory(fs::symlink_status(path, error)))
        for (const auto& [below, what] : TreeOf(path + "/")) destroyed.insert(what);
    fs::remove_all(path, error);
}

void Editor::EditOne() {
    const auto [side, below] = Pick();
    if (below.empty()) return;
    const std::string path = world_.Folder(side) + below;
    std::error_code error;
    const fs::file_type type = fs::symlink_status(path, error).type();
    if (!IsReachedWithoutLinks(world_.Folder(side), below)) return;
    switch (world_.random() % 6) {
        case 0:  // as a program writes that keeps its file
            if (type != fs::file_type::regular) return;
            destroyed.insert(TreeOf(fs::path(path).parent_path().string() + "/")[fs::path(path).filename()]);
            std::ofstream(path, std::ios::binary) << NewContent();
            break;
        case 1:  // as an editor saves
            Destroy(path);
            world_.tools.folder.Write("saved", NewContent());
            fs::rename(world_.tools.folder / "saved", path);
            break;
        case 2:
            if (type == fs::file_type::not_found) return;
            Destroy(path);
            break;
        case 3:
            Destroy(path);
            fs::create_symlink(
                world_.tools.folder / (world_.random() % 2 == 0 ? "outside/file" : "outside/folder"), path);
            break;
        case 4:
            Destroy(path);
            fs::create_directory(path);
            std::ofstream(path + "/x", std::ios::binary) << NewContent();
            break;
        default:  // the same by name, and another one
            if (type == fs::file_type::not_found) return;
            world_.tools.folder.MakeFolder("aside");
            fs::rename(path, world_.tools.folder / ("aside/" + std::to_string(++count_)));
            fs::create_symlink(world_.tools.folder / "outside/folder", path);
            break;
    }
    touched.emplace(side, below);
}

}  // namespace vantrel::testing
