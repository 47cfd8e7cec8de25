#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <tuple>

#include "dupes_support.h"
#include "platform/names/names.h"

namespace vantrel {
namespace {

using testing::Cases;
using testing::DupesTest;
using testing::Groups;

// Names, by the number of those that are one name but for letter case.
const std::vector<std::vector<std::string>> kNames{{"a.txt", "A.txt", "a.TXT"},
                                                   {"b", "B"},
                                                   {"\xC3\xA4.doc", "\xC3\x84.doc"},
                                                   {"c d"},
                                                   {"e?[1]"},
                                                   {"\xFF\xFEodd"}};

// What the tree holds, by means of the standard library alone: every file with all that can be a criterion,
// as texts that are equal where the criterion is.
struct OracleFile {
    std::string path, name, size, created, modified, attributes, contents;
};

class Oracle {
  public:
    explicit Oracle(std::string root) : root_(std::move(root)) {}

    Groups Find(const DupeSearchOrder& order) const {
        std::map<std::vector<std::string>, std::set<std::string>> byKey;
        std::set<std::pair<dev_t, ino_t>> known;
        std::vector<std::string> paths;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root_))
            if (entry.is_regular_file() && !entry.is_symlink()) paths.push_back(entry.path().string());
        std::sort(paths.begin(), paths.end(),
                  [](const auto& a, const auto& b) { return NameFromSystem(a) < NameFromSystem(b); });
        for (const std::string& path : paths) {
            struct stat info {};
            EXPECT_EQ(0, lstat(path.c_str(), &info));
            if (order.ignoreHiddenFiles && path.substr(root_.size()).find("/.") != std::string::npos)
                continue;
            if (order.ignoreZeroByteFiles && info.st_size == 0) continue;
            if (!known.emplace(info.st_dev, info.st_ino).second) continue;
            byKey[KeyOf(path, info, order.criteria)].insert(NameFromSystem(path));
        }
        Groups groups;
        for (const auto& [key, members] : byKey)
            if (members.size() > 1) groups.insert(members);
        return groups;
    }

  private:
    static std::vector<std::string> KeyOf(const std::string& path, const struct stat& info,
                                          const DupeCriteria& criteria) {
        std::vector<std::string> key;
        const std::string name = path.substr(path.rfind('/') + 1);
        if (criteria.names) {
            for (std::size_t kind = 0; kind < kNames.size(); ++kind)
                for (const std::string& each : kNames[kind])
                    if (name == each || name == "." + each)
                        key.push_back(std::to_string(kind) + (name[0] == '.' ? "hidden" : ""));
        }
        if (criteria.sizes) key.push_back(std::to_string(info.st_size));
        if (criteria.lastModTimes) key.push_back(std::to_string(info.st_mtim.tv_sec));
        if (criteria.attributes)
            key.push_back(std::to_string(info.st_mode & S_IWUSR) + (name[0] == '.' ? "hidden" : ""));
        if (criteria.contents) {
            std::ifstream file(path, std::ios::binary);
            key.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
        return key;
    }
    std::string root_;
};

class RandomDupesTest : public DupesTest {
  protected:
    void MakeTree(std::mt19937& random) {
        std::vector<std::string> folders{""};
        for (int i = 0; i < 5; ++i) {
            const std::string above = folders[random() % folders.size()];
            folders.push_back(above + (random() % 6 == 0 ? ".h" : "f") + std::to_string(i) + "/");
            drop.MakeFolder("in/" + folders.back());
        }
        const int count = static_cast<int>(random() % 25);
        std::vector<std::string> made;
        for (int i = 0; i < count; ++i) {
            const auto& spellings = kNames[random() % kNames.size()];
            std::string name = folders[random() % folders.size()] + (random() % 8 == 0 ? "." : "") +
                               spellings[random() % spellings.size()];
            if (std::filesystem::exists(In(name))) continue;
            if (!made.empty() && random() % 10 == 0) {
                if (random() % 2 == 0)
                    std::filesystem::create_hard_link(In(made[random() % made.size()]), In(name));
                else
                    std::filesystem::create_symlink(In(made[random() % made.size()]), In(name));
                continue;
            }
            Write(
                name, Content(random),
                1'500'000'000 + static_cast<double>(random() % 2) + static_cast<double>(random() % 2) * 0.25);
            if (random() % 4 == 0) chmod(In(name).c_str(), 0444);
            made.push_back(name);
        }
    }
    static std::string Content(std::mt19937& random) {
        const std::size_t sizes[]{0, 1, 40, 40, 4'096, 131'073};
        std::string text(sizes[random() % 6], 'x');
        if (!text.empty() && random() % 2 == 0)
            text[random() % 2 == 0 ? text.size() / 2 : text.size() - 1] =
                static_cast<char>('a' + random() % 2);
        return text;
    }
    void ChooseOrder(std::mt19937& random) {
        const auto yes = [&] { return random() % 2 == 0; };
        order.criteria = {yes(), yes(), false, yes(), yes(), yes()};
        if (!order.criteria.names && !order.criteria.sizes) order.criteria.sizes = true;
        order.ignoreHiddenFiles = yes();
        order.ignoreZeroByteFiles = yes();
    }
    // As the list shows them, so that the order is seen as well.
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        const DupeResults& results = finder.Results();
        for (const std::uint32_t group : results.Shown()) {
            lines.push_back(results.Group(group).Line());
            for (const std::uint32_t file : results.Group(group).members) {
                lines.push_back(results.Files().PathOf(file));
                for (const std::string& other : results.Files().OtherNamesOf(results.Files()[file]))
                    lines.push_back("  " + other);
            }
        }
        return lines;
    }
};

// All criteria, with a hash that tells hardly anything apart, by any number of workers.
TEST_F(RandomDupesTest, GroupsAreThoseOfTheOracle) {
    for (int seed = 0; seed < Cases("VANTREL_DUPE_CASES", 250); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(static_cast<unsigned>(seed));
        std::filesystem::remove_all(drop / "in");
        drop.MakeFolder("in");
        MakeTree(random);
        ChooseOrder(random);
        Workers none(0), some(2);
        ASSERT_EQ(DupeOutcome::Completed, finder.Find(order, none, testing::WeakHash()));
        EXPECT_EQ(Oracle(drop / "in").Find(order), Found());
        EXPECT_TRUE(finder.Results().IsConsistent());
        const std::vector<std::string> lines = Lines();

        // What is known of contents serves the second search, which reads nothing.
        progress.onStatus = [this](std::string_view text) {
            if (text.find("Press ESC") != std::string_view::npos) calls.ResetCount();
        };
        ASSERT_EQ(DupeOutcome::Completed, finder.Find(order, some, testing::WeakHash()));
        EXPECT_EQ(lines, Lines());
        EXPECT_EQ(0U, order.criteria.contents && finder.FoundFileCount() > 0
                          ? calls.Count(testing::Call::PRead)
                          : 0U);
        progress.onStatus = nullptr;

        // Other criteria with what is known, and another finder that knows nothing.
        order.criteria.names = !order.criteria.names || !order.criteria.sizes;
        order.criteria.contents = true;
        ASSERT_EQ(DupeOutcome::Completed, finder.Find(order, some, testing::WeakHash()));
        EXPECT_EQ(Oracle(drop / "in").Find(order), Found());
        const std::vector<std::string> known = Lines();
        DuplicateFinder another(tools.Get(), progress);
        ASSERT_EQ(DupeOutcome::Completed, another.Find(order, some, testing::WeakHash()));
        std::swap(finder.Results(), another.Results());
        EXPECT_EQ(known, Lines());
        if (HasFailure()) break;
    }
}

}  // namespace
}  // namespace vantrel
