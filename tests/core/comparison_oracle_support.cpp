#include "core/comparison_oracle_support.h"

#include <gtest/gtest.h>

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

struct Found {
    std::string realName;  // relative path
    std::string content;
    std::int64_t ticks = 0;  // of the last write, since 1970
};
using Tree = std::map<std::string, Found>;  // by folded relative path

std::string ReadAll(const fs::path& path) {
    std::string text(fs::file_size(path), 0);
    if (FILE* file = std::fopen(path.c_str(), "rb")) {
        text.resize(std::fread(text.data(), 1, text.size(), file));
        std::fclose(file);
    }
    return text;
}

std::int64_t TicksOf(const fs::path& path) {
    struct stat found {};
    EXPECT_EQ(0, stat(path.c_str(), &found));
    return std::int64_t{found.st_mtim.tv_sec} * 10'000'000 + found.st_mtim.tv_nsec / 100;
}

// Of equal keys the least real name stays.
void Keep(Tree& tree, const std::string& realName, const fs::path& path) {
    const std::string key = FoldCase(realName);
    const auto [at, fresh] = tree.try_emplace(key);
    if (fresh || realName < at->second.realName) at->second = {realName, ReadAll(path), TicksOf(path)};
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
        PerSide<Tree> files;
        PerSide<std::map<std::string, std::string>> folders;
        std::set<std::string> fileKeys, folderKeys;
        for (const Side side : kBothSides) {
            for (const auto& entry : fs::directory_iterator(Root(side))) {
                const std::string name = entry.path().filename();
                if (entry.is_directory()) {
                    if (!KeepsTopFolder(name)) continue;
                    auto& real = folders[side][FoldCase(name)];
                    if (real.empty() || name < real) real = name;
                    folderKeys.insert(FoldCase(name));
                } else if (KeepsFile(name, options_.IncludeFilters, options_.ExcludeFilters)) {
                    Keep(files[side], name, entry.path());
                    fileKeys.insert(FoldCase(name));
                }
            }
        }
        for (const std::string& key : fileKeys) AddLine(result_.rows, "", key, files, true);
        if (options_.CompareSubFolders())
            for (const std::string& key : folderKeys) AddFolder(key, folders);
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

    bool AddLine(std::vector<std::string>& lines, const std::string& head, const std::string& key,
                 const PerSide<Tree>& files, bool top) const {
        PerSide<const Found*> found;
        for (const Side side : kBothSides)
            if (const auto at = files[side].find(key); at != files[side].end()) found[side] = &at->second;
        std::pair types(4, 4);
        if (found[Side::Left] && found[Side::Right])
            types = TypesOf(*found[Side::Left], *found[Side::Right], !top);
        if (types.first == 0) return false;
        PerSide<std::string> half;
        const Found& first = found[Side::Left] ? *found[Side::Left] : *found[Side::Right];
        for (const Side side : kBothSides) {
            if (!found[side]) continue;
            half[side] = DescribeFile(
                first.realName, found[side]->realName, static_cast<std::int64_t>(found[side]->content.size()),
                {found[side]->ticks + FileTime::kUnixEpochSeconds * FileTime::kTicksPerSecond},
                static_cast<ResultType>(side == Side::Left ? types.first : types.second));
        }
        lines.push_back(head + half[Side::Left] + std::string(kBetweenSides) + half[Side::Right]);
        return true;
    }

    void ReadTree(const fs::path& root, const fs::path& folder, Tree& tree, std::int64_t& size, bool kept) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            const std::string name = entry.path().filename();
            if (entry.is_directory()) {
                ReadTree(root, entry.path(), tree, size,
                         kept && !(options_.ExcludeHiddenFolders && name.starts_with('.')));
                continue;
            }
            size += static_cast<std::int64_t>(entry.file_size());
            if (kept && KeepsFile(name, WithoutFolderPatterns(options_.IncludeFilters, "*"),
                                  WithoutFolderPatterns(options_.ExcludeFilters, "")))
                Keep(tree, entry.path().lexically_relative(root), entry.path());
        }
    }

    void AddFolder(const std::string& key, const PerSide<std::map<std::string, std::string>>& folders) {
        PerSide<Tree> trees;
        PerSide<std::int64_t> size;
        PerSide<std::string> real, half;
        std::set<std::string> keys;
        for (const Side side : kBothSides) {
            if (!folders[side].contains(key)) continue;
            real[side] = folders[side].at(key);
            ReadTree(Root(side) / real[side], Root(side) / real[side], trees[side], size[side], true);
            for (const auto& [path, found] : trees[side]) keys.insert(path);
        }
        const std::string text = "\\" + (real[Side::Left].empty() ? real[Side::Right] : real[Side::Left]);
        auto type = ResultType::OrphanFolder;
        if (!real[Side::Left].empty() && !real[Side::Right].empty()) {
            type = ResultType::IdenticalFolder;
            for (const std::string& path : keys)
                if (AddLine(result_.records, text + ": ", path, trees, false))
                    type = ResultType::DifferentFolder;
        }
        for (const Side side : kBothSides)
            if (!real[side].empty()) half[side] = DescribeFolder(text, real[side], size[side], type);
        result_.rows.push_back(half[Side::Left] + std::string(kBetweenSides) + half[Side::Right]);
    }

    const ComparisonBench& bench_;
    CCompare options_;
    ExpectedResult result_;
};

void MakeRandomFolder(const ComparisonBench& bench, Side side, const std::string& folder, int depth,
                      std::mt19937& random) {
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
        const std::string name = folder + pick(kNames);
        const std::string full = ComparisonBench::NameOf(side) + "/" + name;
        if (bench.folder.Exists(full)) continue;
        if (depth < 3 && random() % 3 == 0) {
            bench.folder.MakeFolder(full);
            MakeRandomFolder(bench, side, name + "/", depth + 1, random);
        } else {
            bench.Write(side, name, pick(kContents), kBase + pick(kTimes));
        }
    }
}

}  // namespace

void MakeRandomTrees(const ComparisonBench& bench, std::mt19937& random) {
    for (const Side side : kBothSides) MakeRandomFolder(bench, side, "", 0, random);
}

ExpectedResult Expect(const ComparisonBench& bench) {
    return Oracle(bench).Run();
}

}  // namespace vantrel::testing
