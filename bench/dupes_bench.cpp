// Searches for duplicates by vantrel-cli against the tools that a user would take instead, and the steps of a
// search in memory. Started by bench/run:
//   dupes_bench VANTREL-CLI FOLDER [ROUNDS [PART...]]
// FOLDER is an empty folder for the corpora; ROUNDS are 5 without it; PART is one of warm, cold, ends,
// memory. Of jdupes, fdupes and rmlint those take part that are installed.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "dupes/dupe_results.h"
#include "timed_command.h"

namespace vantrel::bench {
namespace {

constexpr std::size_t kFiles = 60'000, kFolders = 2'000;
constexpr std::size_t kRecords = 1'000'000;

bool IsInstalled(const std::string& tool) {
    return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0;
}

// `files` files of 1 KiB to 1 MiB, many small and few large ones, in `folders` folders: 40 % of them in
// groups of two to five equal ones. Of the rest one in twenty is as long as another one and differs from it
// in the middle alone.
void MakeTree(const std::string& folder, std::size_t files, std::size_t folders) {
    std::mt19937_64 random(14);
    std::vector<char> bytes(std::size_t{1} << 20);
    for (std::size_t i = 0; i < folders; ++i)
        std::filesystem::create_directories(folder + "/" + std::to_string(i % 40) + "/" + std::to_string(i));
    std::size_t copiesLeft = 0, size = 0;
    const auto renew = [&] {
        const double u = std::uniform_real_distribution<double>(0, 1)(random);
        size = static_cast<std::size_t>(1'024 * std::pow(2.0, 10 * u * u * u));
        for (std::size_t at = 0; at + 8 <= size; at += 8) {
            const std::uint64_t word = random();
            std::copy_n(reinterpret_cast<const char*>(&word), sizeof word, bytes.data() + at);
        }
    };
    for (std::size_t i = 0; i < files; ++i) {
        if (copiesLeft > 0) {
            --copiesLeft;
        } else if (i % 20 == 7) {
            bytes[size / 2] = static_cast<char>(bytes[size / 2] + 1);
        } else {
            renew();
            // One group of some 3.5 for five that stand alone makes 40 %.
            if (random() % 1'000 < 160) copiesLeft = 1 + random() % 4;
        }
        const std::size_t in = random() % folders;
        std::ofstream(
            folder + "/" + std::to_string(in % 40) + "/" + std::to_string(in) + "/file" + std::to_string(i),
            std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(size));
    }
}

class Bench {
  public:
    Bench(std::string cli, std::string folder, int rounds)
        : cli_(std::move(cli)), folder_(std::move(folder)), rounds_(rounds) {}

    void Warm() {
        MakeTreeOnce();
        std::vector<Contender> contenders{Ours("tree")};
        AddPeer(contenders, "jdupes -r", {"jdupes", "-q", "-r", Tree()}, 0.6);
        AddPeer(contenders, "fdupes -r", {"fdupes", "-q", "-r", Tree()}, 0.3);
        AddPeer(contenders, "rmlint", {"rmlint", "-T", "df", "-o", "fdupes", Tree()}, 0.3);
        Report("60,000 files in 2,000 folders, sizes and contents", contenders, rounds_);
    }
    void Cold() {
        MakeTreeOnce();
        if (geteuid() != 0) {
            std::printf("\nCold cache: left out, only root can empty the cache.\n");
            return;
        }
        std::vector<Contender> contenders{Ours("tree")};
        AddPeer(contenders, "jdupes -r", {"jdupes", "-q", "-r", Tree()}, 0.5);
        Report("The same, cold cache", contenders, std::min(rounds_, 3), [] {
            sync();
            std::ofstream("/proc/sys/vm/drop_caches") << "3";
        });
    }
    void Ends() {
        constexpr std::size_t kSize = 100'000'000;
        std::vector<std::string> cat{"cat"};
        std::filesystem::create_directories(folder_ + "/ends");
        for (int i = 0; i < 100; ++i) {
            cat.push_back(folder_ + "/ends/file" + std::to_string(i));
            std::ofstream(cat.back(), std::ios::binary) << "";
            std::filesystem::resize_file(cat.back(), kSize - 1);
            std::ofstream(cat.back(), std::ios::binary | std::ios::app) << static_cast<char>(i);
        }
        Report("100 files of 100 MB that differ in the last byte alone",
               {Ours("ends"), {"cat", cat, {}, 1.1}}, rounds_);
    }
    void Memory() {
        const auto make = [] { return MakeRecords(kRecords, 3); };
        const std::vector<Timing> timings =
            Measure({{"", {}, [&] { Group(make()); }}, {"", {}, [&] { make(); }}, {"", {}, [] {}}}, rounds_);
        std::printf(
            "\n1,000,000 records, names and sizes: %.2f s (at most 2), %ld bytes a record (at most 400)\n",
            timings[0].Median() - timings[1].Median(),
            (timings[0].peakKilobytes - timings[2].peakKilobytes) * 1'024 / static_cast<long>(kRecords));
        DupeResults results = Group(MakeRecords(100'000, 3));
        std::printf("%u groups: sort %.1f ms, filter %.1f ms (at most 100 each)\n", results.GroupCount(),
                    Milliseconds([&] { results.Sort(GroupOrder::MostBytesFirst); }),
                    Milliseconds([&] { results.Filter("le 99"); }));
    }

  private:
    std::string Tree() const { return folder_ + "/tree"; }
    void MakeTreeOnce() const {
        if (!std::filesystem::exists(Tree())) MakeTree(Tree(), kFiles, kFolders);
    }
    Contender Ours(const std::string& corpus) const {
        return {
            "vantrel-cli dupes",
            {cli_, "dupes", "--names", "no", "--contents", "yes", "--format", "json", folder_ + "/" + corpus},
            {}};
    }
    static void AddPeer(std::vector<Contender>& contenders, const std::string& name,
                        const std::vector<std::string>& command, double limit) {
        if (IsInstalled(command[0]))
            contenders.push_back({name, command, {}, limit});
        else
            std::printf("\n%s is not installed: left out.\n", command[0].c_str());
    }

    // `copies` records of each name, scattered.
    static FoundFiles MakeRecords(std::size_t count, std::size_t copies) {
        FoundFiles files;
        std::mt19937_64 random(14);
        for (int i = 0; i < 1'000; ++i)
            files.AddFolder("/some folder/of the/tree " + std::to_string(i) + "/", 0);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name =
                "a file " + std::to_string(i % (count / copies) * 7'919 % 1'000'003) + ".txt";
            DupeFile file;
            file.name = name;
            file.size = static_cast<std::int64_t>(i % (count / copies) % 5'000);
            file.seen.id.inode = i;
            file.folder = static_cast<std::uint32_t>(random() % 1'000);
            files.Add(file);
        }
        return files;
    }
    static DupeResults Group(FoundFiles files) {
        const DupeCriteria criteria{.names = true, .sizes = true};
        const std::vector<DupeRun> runs = OrderByCriteria(files, criteria, [] {});
        return {std::move(files), runs, criteria};
    }
    template <typename Work>
    static double Milliseconds(const Work& work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }

    std::string cli_, folder_;
    int rounds_;
};

struct Part {
    std::string_view name;
    void (Bench::*run)();
};
constexpr std::array kParts = {Part{"warm", &Bench::Warm}, Part{"cold", &Bench::Cold},
                               Part{"ends", &Bench::Ends}, Part{"memory", &Bench::Memory}};

int Run(const std::vector<std::string>& arguments) {
    if (arguments.size() < 2) {
        std::fputs("usage: dupes_bench VANTREL-CLI FOLDER [ROUNDS [PART...]]\n", stderr);
        return 2;
    }
    Bench bench(arguments[0], arguments[1],
                arguments.size() > 2 ? std::max(1, std::atoi(arguments[2].c_str())) : 5);
    for (const Part& part : kParts)
        if (arguments.size() < 4 ||
            std::find(arguments.begin() + 3, arguments.end(), part.name) != arguments.end())
            (bench.*part.run)();
    return 0;
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** values) {
    try {
        return vantrel::bench::Run({values + std::min(count, 1), values + count});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dupes_bench: %s\n", error.what());
        return 2;
    }
}
