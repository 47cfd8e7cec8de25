#include "core/comparison_oracle_support.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "platform/names/names.h"

namespace vantrel::testing {
namespace {

namespace fs = std::filesystem;

constexpr double kBase = 1'600'000'000;

// One entry of a folder, as the oracle sees it.
struct Found {
    enum Kind { File, Folder, Other } kind = Other;
    UnknownReason reason = UnknownReason::None;
    bool isLink = false;
    bool keptAsFile = false;
    std::string name;
    fs::path path;
    std::string content;     // of a file
    std::string target;      // of a link
    std::int64_t ticks = 0;  // of the last write, since 1970
};
using Level = std::vector<Found>;

// The halves of one line; one of them may be missing.
using Pair = PerSide<const Found*>;

std::string ReadAll(const fs::path& path) {
    std::string text(fs::file_size(path), 0);
    if (FILE* file = std::fopen(path.c_str(), "rb")) {
        text.resize(std::fread(text.data(), 1, text.size(), file));
        std::fclose(file);
    }
    return text;
}

std::int64_t TicksOf(const fs::path& path, bool follow) {
    struct stat found {};
    EXPECT_EQ(0, fstatat(AT_FDCWD, path.c_str(), &found, follow ? 0 : AT_SYMLINK_NOFOLLOW));
    return std::int64_t{found.st_mtim.tv_sec} * 10'000'000 + found.st_mtim.tv_nsec / 100;
}

Found Examine(const fs::directory_entry& entry) {
    Found found;
    found.path = entry.path();
    found.name = found.path.filename();
    if (found.name == CornerCalls::kDenied || found.name == CornerCalls::kFlickers) {
        found.reason = UnknownReason::NotTold;
        return found;
    }
    found.isLink = entry.is_symlink();
    if (found.isLink) found.target = fs::read_symlink(found.path);
    std::error_code error;
    const fs::file_status status = fs::status(found.path, error);
    const bool nowhere = error || status.type() == fs::file_type::not_found;
    found.ticks = TicksOf(found.path, !nowhere && status.type() != fs::file_type::directory);
    if (nowhere) {
        found.reason = UnknownReason::LeadsNowhere;
    } else if (fs::is_directory(status)) {
        found.kind = Found::Folder;
    } else if (fs::is_regular_file(status)) {
        found.kind = Found::File;
        found.content = ReadAll(found.path);
    } else {
        found.reason = UnknownReason::SpecialObject;
    }
    return found;
}

// Whether two entries of one folded name are a pair, asked of each two of them.
bool ArePair(const Found& left, const Found& right, const PerSide<Level>& levels) {
    const auto fit = [](const Found& a, const Found& b) {
        return a.kind == b.kind || a.kind == Found::Other || b.kind == Found::Other;
    };
    if (!fit(left, right) || FoldCase(left.name) != FoldCase(right.name)) return false;
    if (left.name == right.name) return true;
    PerSide<std::vector<const Found*>> rest;
    for (const Side side : kBothSides) {
        for (const Found& one : levels[side]) {
            if (FoldCase(one.name) != FoldCase(left.name)) continue;
            const Level& others = levels[Other(side)];
            if (std::none_of(others.begin(), others.end(),
                             [&](const Found& other) { return other.name == one.name && fit(one, other); }))
                rest[side].push_back(&one);
        }
    }
    const auto isOther = [](const Found* one) { return one->kind == Found::Other; };
    const bool anyOther = std::any_of(rest[Side::Left].begin(), rest[Side::Left].end(), isOther) ||
                          std::any_of(rest[Side::Right].begin(), rest[Side::Right].end(), isOther);
    PerSide<const Found*> wanted{{&left, &right}};
    for (const Side side : kBothSides) {
        auto& names = rest[side];
        if (!anyOther) std::erase_if(names, [&](const Found* one) { return one->kind != left.kind; });
        if (names.size() != 1 || names.front() != wanted[side]) return false;
    }
    return true;
}

// In a walk a folder stands where its files belong among whole paths.
std::vector<Pair> PairsOf(const PerSide<Level>& levels, std::string_view endOfFolder) {
    std::vector<Pair> pairs;
    std::set<const Found*> paired;
    for (const Found& left : levels[Side::Left]) {
        for (const Found& right : levels[Side::Right]) {
            if (!ArePair(left, right, levels)) continue;
            pairs.push_back({{&left, &right}});
            paired.insert({&left, &right});
        }
    }
    for (const Side side : kBothSides) {
        for (const Found& one : levels[side]) {
            Pair alone{};
            alone[side] = &one;
            if (!paired.contains(&one)) pairs.push_back(alone);
        }
    }
    const auto orderOf = [&](const Pair& pair) {
        const Found& first = pair[Side::Left] ? *pair[Side::Left] : *pair[Side::Right];
        std::string key = FoldCase(first.name);
        if (first.kind == Found::Folder) key += endOfFolder;
        return std::pair(key, first.name);
    };
    std::sort(pairs.begin(), pairs.end(),
              [&](const Pair& a, const Pair& b) { return orderOf(a) < orderOf(b); });
    return pairs;
}

bool Holds(const Pair& pair, Found::Kind kind) {
    return std::any_of(kBothSides.begin(), kBothSides.end(),
                       [&](Side side) { return pair[side] && pair[side]->kind == kind; });
}

// A like rule for the few patterns the tests use: a star at either end, or none.
bool Fits(const std::string& name, const std::string& pattern) {
    const std::string text = FoldCase(name), wanted = FoldCase(pattern);
    if (wanted == "*") return true;
    if (wanted.starts_with('*')) return text.ends_with(wanted.substr(1));
    if (wanted.ends_with('*')) return text.starts_with(wanted.substr(0, wanted.size() - 1));
    return text == wanted;
}

std::vector<std::string> Pieces(const std::string& list) {
    std::vector<std::string> pieces(1);
    for (const char c : list) {
        if (c == ',')
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    return pieces;
}

bool FitsAny(const std::string& name, const std::string& list) {
    const auto pieces = Pieces(list);
    return std::any_of(pieces.begin(), pieces.end(), [&](const auto& piece) { return Fits(name, piece); });
}

std::string WithoutFolderPatterns(const std::string& list, const std::string& instead) {
    std::string rest;
    for (const std::string& piece : Pieces(list))
        if (!piece.starts_with('\\')) rest += (rest.empty() ? "" : ",") + piece;
    return rest.empty() ? instead : rest;
}

class Oracle {
  public:
    explicit Oracle(const ComparisonBench& bench) : bench_(bench), options_(bench.compare) {
        if (options_.IncludeFilters.empty()) options_.IncludeFilters = "*";
    }

    ExpectedResult Run() {
        PerSide<Level> levels;
        for (const Side side : kBothSides) {
            for (const auto& entry : fs::directory_iterator(Root(side))) {
                Found found = Examine(entry);
                found.keptAsFile = KeepsFile(found.name, options_.IncludeFilters, options_.ExcludeFilters);
                const bool asFolder = KeepsTopFolder(found.name);
                if ((found.kind != Found::Folder && found.keptAsFile) ||
                    (found.kind != Found::File && asFolder))
                    levels[side].push_back(std::move(found));
            }
        }
        const std::vector<Pair> pairs = PairsOf(levels, "");
        for (const Pair& pair : pairs) {
            if (Holds(pair, Found::Folder)) continue;
            if (Holds(pair, Found::Other))
                AddOccupied(result_.rows, "", "", pair, true);
            else
                AddFiles(result_.rows, "", "", pair, true);
        }
        for (const Pair& pair : pairs) {
            if (!Holds(pair, Found::Folder) || !options_.CompareSubFolders()) continue;
            if (Holds(pair, Found::Other))
                AddUnknown(result_.rows, "\\", "", pair);
            else
                AddFolder(pair);
        }
        return result_;
    }

  private:
    fs::path Root(Side side) const { return bench_.folder / ComparisonBench::NameOf(side); }
    bool KeepsFile(const std::string& name, const std::string& include, const std::string& exclude) const {
        if (options_.ExcludeHiddenFiles && name.starts_with('.')) return false;
        return FitsAny(name, include) && (exclude.empty() || !FitsAny(name, exclude));
    }
    bool KeepsTopFolder(const std::string& name) const {
        if (options_.ExcludeHiddenFolders && name.starts_with('.')) return false;
        const auto holds = [](const std::string& list) { return list.find('\\') != std::string::npos; };
        if (holds(options_.IncludeFilters) && !FitsAny("\\" + name, options_.IncludeFilters)) return false;
        return !holds(options_.ExcludeFilters) || !FitsAny("\\" + name, options_.ExcludeFilters);
    }

    double AllowedDifference(const Found& left, const Found& right) const {
        const double difference = std::nearbyint(static_cast<double>(left.ticks - right.ticks) / 1e7);
        const double size = std::fabs(difference);
        std::set<double> forgiven;
        if (options_.IgnoreFAT_NTFS_TwoSecDiff) forgiven = {1, 2};
        if (options_.IgnoreFAT_NTFS_DaylightSavings) forgiven.insert(3600);
        if (forgiven.size() == 3) forgiven.insert({3598, 3599, 3601, 3602});
        return forgiven.contains(size) ? 0 : difference;
    }

    // Two numbers of types, or two zeros where a pair does not count as different.
    std::pair<int, int> TypesOf(const Found& left, const Found& right, bool inTree) const {
        const bool byContents = options_.CompareMethod != CompareMethod::SizeAndDate;
        const bool differ =
            byContents ? left.content != right.content : left.content.size() != right.content.size();
        const double difference = AllowedDifference(left, right);
        const std::pair same = inTree ? std::pair(0, 0) : std::pair(3, 3);
        if (byContents && !differ) return same;
        if (difference != 0) return difference > 0 ? std::pair(1, 2) : std::pair(2, 1);
        return differ ? std::pair(5, 5) : same;
    }

    std::string ShownName(const Pair& pair) const {
        return pair[Side::Left] ? pair[Side::Left]->name : pair[Side::Right]->name;
    }

    void AddObjects(std::vector<std::string>& lines, const std::string& head,
                    const PerSide<std::string>& below, const Pair& pair, std::pair<int, int> types) const {
        PerSide<std::string> half;
        const std::string shown =
            (pair[Side::Left] ? below[Side::Left] : below[Side::Right]) + ShownName(pair);
        for (const Side side : kBothSides) {
            if (!pair[side]) continue;
            half[side] = DescribeFile(
                shown, below[side] + pair[side]->name, static_cast<std::int64_t>(pair[side]->content.size()),
                {pair[side]->ticks + FileTime::kUnixEpochSeconds * FileTime::kTicksPerSecond},
                static_cast<ResultType>(side == Side::Left ? types.first : types.second), pair[side]->isLink);
        }
        lines.push_back(head + half[Side::Left] + std::string(kBetweenSides) + half[Side::Right]);
    }
    void AddObjects(std::vector<std::string>& lines, const std::string& head, const std::string& below,
                    const Pair& pair, std::pair<int, int> types) const {
        AddObjects(lines, head, {{below, below}}, pair, types);
    }

    bool AddFiles(std::vector<std::string>& lines, const std::string& head, const PerSide<std::string>& below,
                  const Pair& pair, bool top) const {
        std::pair types(4, 4);
        if (pair[Side::Left] && pair[Side::Right])
            types = TypesOf(*pair[Side::Left], *pair[Side::Right], !top);
        if (types.first == 0) return false;
        AddObjects(lines, head, below, pair, types);
        return true;
    }
    void AddFiles(std::vector<std::string>& lines, const std::string& head, const std::string& below,
                  const Pair& pair, bool top) const {
        AddFiles(lines, head, {{below, below}}, pair, top);
    }

    // `marker` stands before the text of a folder's row.
    void AddUnknown(std::vector<std::string>& lines, const std::string& head,
                    const PerSide<std::string>& below, const Pair& pair, bool circular = false) {
        PerSide<std::string> half;
        const std::string shown =
            head + (pair[Side::Left] ? below[Side::Left] : below[Side::Right]) + ShownName(pair);
        for (const Side side : kBothSides) {
            if (!pair[side]) continue;
            UnknownReason reason = pair[side]->reason;
            if (circular && side == circularSide_) reason = UnknownReason::LeadsNowhere;
            if (reason == UnknownReason::NotTold) result_.trouble = incomplete_ = true;
            half[side] = DescribeUnknown(shown, below[side] + pair[side]->name, reason);
        }
        lines.push_back(half[Side::Left] + std::string(kBetweenSides) + half[Side::Right]);
    }
    void AddUnknown(std::vector<std::string>& lines, const std::string& head, const std::string& below,
                    const Pair& pair) {
        // The text of a folder's row is that of the folder, whichever side it stands on.
        Pair folderFirst = pair;
        if (!head.empty() && pair[Side::Left]->kind != Found::Folder) {
            const std::string line = DescribeUnknown(head + pair[Side::Right]->name, pair[Side::Left]->name,
                                                     pair[Side::Left]->reason) +
                                     std::string(kBetweenSides) +
                                     DescribeUnknown(head + pair[Side::Right]->name, pair[Side::Right]->name,
                                                     pair[Side::Right]->reason);
            result_.trouble = result_.trouble || pair[Side::Left]->reason == UnknownReason::NotTold;
            lines.push_back(line);
            return;
        }
        AddUnknown(lines, head, {{below, below}}, folderFirst);
    }

    // A line for a name that is occupied by what is no file and no folder, if there is one.
    bool AddOccupied(std::vector<std::string>& lines, const std::string& head,
                     const PerSide<std::string>& below, const Pair& pair, bool top) {
        constexpr auto kSpecial = UnknownReason::SpecialObject;
        const Found* const left = pair[Side::Left];
        const Found* const right = pair[Side::Right];
        if (left && right) {
            if (left->reason == kSpecial && right->reason == kSpecial) return false;
            if (left->reason == UnknownReason::LeadsNowhere && right->reason == left->reason &&
                left->target == right->target) {
                if (top) AddObjects(lines, head, below, pair, {3, 3});
                return top;
            }
        } else {
            const Found& alone = left ? *left : *right;
            if (alone.isLink) {
                if (alone.keptAsFile) AddObjects(lines, head, below, pair, {4, 4});
                return alone.keptAsFile;
            }
            if (alone.reason == kSpecial) return false;
        }
        std::vector<std::string> line;
        AddUnknown(line, "", below, pair);
        lines.push_back(head + line.front());
        return true;
    }
    void AddOccupied(std::vector<std::string>& lines, const std::string& head, const std::string& below,
                     const Pair& pair, bool top) {
        AddOccupied(lines, head, {{below, below}}, pair, top);
    }

    using Branch = std::set<fs::path>;

    // Bytes of all files below; the folders on the way to it are not entered again.
    std::int64_t SizeOf(const fs::path& folder, Branch branch) const {
        if (!branch.insert(fs::canonical(folder)).second) return 0;
        std::int64_t size = 0;
        for (const auto& entry : fs::directory_iterator(folder)) {
            const Found found = Examine(entry);
            size += static_cast<std::int64_t>(found.content.size());
            if (found.kind == Found::Folder) size += SizeOf(found.path, branch);
        }
        return size;
    }

    // Whether something below cannot be looked at.
    bool HoldsTrouble(const fs::path& folder, Branch branch) const {
        if (!branch.insert(fs::canonical(folder)).second) return false;
        for (const auto& entry : fs::directory_iterator(folder)) {
            const Found found = Examine(entry);
            if (found.reason == UnknownReason::NotTold) return true;
            if (found.kind == Found::Folder && HoldsTrouble(found.path, branch)) return true;
        }
        return false;
    }

    bool KeepsWalkedFolder(const std::string& name) const {
        return !(options_.ExcludeHiddenFolders && name.starts_with('.'));
    }

    // The differences below; a side without a folder has an empty path.
    bool Walk(const std::string& head, const PerSide<fs::path>& folders, const PerSide<std::string>& below,
              PerSide<Branch> branches) {
        PerSide<Level> levels;
        for (const Side side : kBothSides) {
            if (folders[side].empty()) continue;
            branches[side].insert(fs::canonical(folders[side]));
            for (const auto& entry : fs::directory_iterator(folders[side])) {
                Found found = Examine(entry);
                found.keptAsFile = KeepsFile(found.name, WithoutFolderPatterns(options_.IncludeFilters, "*"),
                                             WithoutFolderPatterns(options_.ExcludeFilters, ""));
                if ((found.kind != Found::Folder && found.keptAsFile) ||
                    (found.kind != Found::File && KeepsWalkedFolder(found.name)))
                    levels[side].push_back(std::move(found));
            }
        }
        bool differ = false;
        for (const Pair& pair : PairsOf(levels, "/")) {
            if (Holds(pair, Found::Other))
                differ |= AddOccupied(result_.records, head, below, pair, false);
            else if (Holds(pair, Found::Folder))
                differ |= WalkFolders(head, pair, below, branches);
            else
                differ |= AddFiles(result_.records, head, below, pair, false);
        }
        return differ;
    }

    bool WalkFolders(const std::string& head, const Pair& pair, const PerSide<std::string>& below,
                     const PerSide<Branch>& branches) {
        PerSide<fs::path> folders;
        PerSide<std::string> names = below;
        PerSide<bool> circular;
        for (const Side side : kBothSides) {
            if (!pair[side]) continue;
            if (!pair[Other(side)] && pair[side]->isLink) {
                AddObjects(result_.records, head, below, pair, {4, 4});
                return true;
            }
            names[side] += pair[side]->name + "/";
            circular[side] = branches[side].contains(fs::canonical(pair[side]->path));
            if (!circular[side]) folders[side] = pair[side]->path;
        }
        if (!pair[Side::Left] || !pair[Side::Right] || circular[Side::Left] == circular[Side::Right])
            return Walk(head, folders, names, branches);
        circularSide_ = circular[Side::Left] ? Side::Left : Side::Right;
        std::vector<std::string> line;
        AddUnknown(line, "", below, pair, true);
        result_.records.push_back(head + line.front());
        const Side other = Other(circularSide_);
        if (HoldsTrouble(folders[other], branches[other])) result_.trouble = incomplete_ = true;
        return true;
    }

    void AddFolder(const Pair& pair) {
        PerSide<fs::path> folders;
        PerSide<Branch> branches;
        PerSide<std::string> half;
        const std::string text = "\\" + ShownName(pair);
        auto type = ResultType::OrphanFolder;
        incomplete_ = false;
        for (const Side side : kBothSides) {
            branches[side].insert(fs::canonical(Root(side)));
            if (pair[side]) folders[side] = pair[side]->path;
        }
        if (pair[Side::Left] && pair[Side::Right]) {
            const bool differ = WalkTop(text + ": ", folders, branches);
            type = differ || incomplete_ ? ResultType::DifferentFolder : ResultType::IdenticalFolder;
        } else {
            const Side side = pair[Side::Left] ? Side::Left : Side::Right;
            if (HoldsTrouble(folders[side], branches[side])) result_.trouble = incomplete_ = true;
        }
        for (const Side side : kBothSides)
            if (pair[side])
                half[side] = DescribeFolder(text, pair[side]->name, SizeOf(folders[side], branches[side]),
                                            type, incomplete_, pair[side]->isLink);
        result_.rows.push_back(half[Side::Left] + std::string(kBetweenSides) + half[Side::Right]);
    }

    // A top folder that is a link to its own root holds nothing of its own, and nothing is known of it beside
    // one that is a folder.
    bool WalkTop(const std::string& head, PerSide<fs::path> folders, const PerSide<Branch>& branches) {
        PerSide<bool> circular;
        for (const Side side : kBothSides) {
            circular[side] = branches[side].contains(fs::canonical(folders[side]));
            if (circular[side]) folders[side].clear();
        }
        if (circular[Side::Left] == circular[Side::Right]) return Walk(head, folders, {}, branches);
        const Side other = circular[Side::Left] ? Side::Right : Side::Left;
        if (HoldsTrouble(folders[other], branches[other])) result_.trouble = true;
        incomplete_ = true;
        return true;
    }

    bool incomplete_ = false;
    Side circularSide_ = Side::Left;
    const ComparisonBench& bench_;
    CCompare options_;
    ExpectedResult result_;
};

// A link to `name`, nearby, to nothing or in circles, a FIFO or a socket.
void MakeCorner(const std::string& path, const std::string& name, std::mt19937& random) {
    const std::string targets[] = {name, "../" + name, "nowhere", "nowhere else", ".", "..", path};
    switch (random() % 8) {
        case 0:
            ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
            break;
        case 1:
            ASSERT_EQ(0, mknod(path.c_str(), S_IFSOCK | 0600, 0));
            break;
        default:
            fs::create_symlink(targets[random() % std::size(targets)], path);
    }
}

void MakeRandomFolder(const ComparisonBench& bench, Side side, const std::string& folder, int depth,
                      bool corners, std::mt19937& random) {
    static const std::vector<std::string> kNames = {"a",
                                                    "A",
                                                    "b.txt",
                                                    "B.txt",
                                                    "b-1",
                                                    "b",
                                                    "c_d",
                                                    "cD",
                                                    ".hid",
                                                    "\xC3\x89t\xC3\xA9",
                                                    "\xC3\xA9T\xC3\xA9",
                                                    "Z.doc",
                                                    "No Comparison Results",
                                                    "-dash",
                                                    " blank",
                                                    "\xF0\x9F\x98\x80"};
    static const std::vector<std::string> kContents = {"", "x", "y", "xx", "yy", std::string(70'000, 'q')};
    static const std::vector<double> kTimes = {0,   0, 0,       0.4,  0.5,  1,    1.5, 2,
                                               2.5, 3, 3597.25, 3598, 3600, 3602, 3603};
    const auto pick = [&random](const auto& from) -> const auto& {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(random)];
    };
    const int count = std::uniform_int_distribution<int>(0, depth == 0 ? 9 : 5)(random);
    for (int i = 0; i < count; ++i) {
        std::string name = folder + pick(kNames);
        if (corners && random() % 12 == 0)
            name = folder + (random() % 2 == 0 ? CornerCalls::kDenied : CornerCalls::kFlickers);
        const std::string full = ComparisonBench::NameOf(side) + "/" + name;
        if (fs::exists(fs::symlink_status(bench.folder / full))) continue;
        if (corners && random() % 3 == 0) {
            MakeCorner(bench.folder / full, pick(kNames), random);
        } else if (depth < 3 && random() % 3 == 0) {
            bench.folder.MakeFolder(full);
            MakeRandomFolder(bench, side, name + "/", depth + 1, corners, random);
        } else {
            bench.Write(side, name, pick(kContents), kBase + pick(kTimes));
        }
    }
}

}  // namespace

int CornerCalls::OpenAt(int folder, const char* path, int flags, mode_t mode) {
    if (path == std::string_view(kDenied)) return -EACCES;
    return path == std::string_view(kFlickers) ? -ENOENT : SystemCalls::OpenAt(folder, path, flags, mode);
}

int CornerCalls::StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) {
    if (path == std::string_view(kDenied)) return -EACCES;
    return path == std::string_view(kFlickers) ? -ENOENT
                                               : SystemCalls::StatxAt(folder, path, flags, mask, out);
}

void MakeRandomTrees(const ComparisonBench& bench, bool corners, std::mt19937& random) {
    for (const Side side : kBothSides) MakeRandomFolder(bench, side, "", 0, corners, random);
}

ExpectedResult Expect(const ComparisonBench& bench) {
    return Oracle(bench).Run();
}

}  // namespace vantrel::testing
