// Whole comparisons by vantrel-cli against the tools that a user would take instead. Started by bench/run:
//   compare_bench VANTREL-CLI FOLDER [ROUNDS [PART...]]
// FOLDER is an empty folder for the corpora; ROUNDS are 7 without it; PART is one of flat, trees, deep,
// mixed, large, files, cold. With another program in $VANTREL_BASELINE, "--jobs 1" is held against that.
#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "corpus.h"
#include "platform/files/volumes.h"
#include "platform/workers.h"
#include "timed_command.h"

namespace vantrel::bench {
namespace {

constexpr std::size_t kFiles = 100'000;
constexpr std::size_t kFolders = 2'000;
constexpr std::size_t kMixedFiles = 1'500;
constexpr std::size_t kLargeFiles = 16;
constexpr std::size_t kLargeSize = std::size_t{128} << 20;

class Bench {
  public:
    Bench(std::string cli, std::string folder, int rounds)
        : cli_(std::move(cli)), folder_(std::move(folder)), rounds_(rounds) {}

    void Flat() {
        MakeFlatPair(folder_ + "/flat", kFiles);
        BySizeAndDate("100,000 files a side in one folder", "flat");
        ByContents("flat", 0.5);
        Alone("flat", {});
        Drop("flat");
    }
    void Trees() {
        MakeTreePair(folder_ + "/trees", kFiles, kFolders);
        BySizeAndDate("100,000 files a side in 2,000 folders", "trees");
        ByContents("trees", 0.5);
        Alone("trees", {});
        Alone("trees", {"--method", "contents"});
    }
    void Deep() {
        MakeDeepPair(folder_ + "/deep", kFiles / 2);
        BySizeAndDate("50,000 small files a side in a deep tree", "deep");
        ByContents("deep", 0.5);
        Drop("deep");
    }
    void Mixed() {
        MakeMixedPair(folder_ + "/mixed", kMixedFiles);
        BySizeAndDate("1,500 files a side, 5 % of them of 1 to 50 MiB", "mixed");
        ByContents("mixed", 0.5);
        Report("The same, CRC-32", {Cli("mixed", {"--method", "crc"}), Diff("mixed", 0.5)}, rounds_);
        Report("The same, SHA-1", {Cli("mixed", {"--method", "sha"}), HashPass("mixed", 0.6)}, rounds_);
        Drop("mixed");
    }
    void Large() {
        MakeLargePair(folder_ + "/large", kLargeFiles, kLargeSize);
        Report("16 pairs of 128 MiB, contents", {Cli("large", {"--method", "contents"}), Diff("large", 0.5)},
               rounds_);
        Report("16 pairs of 128 MiB, CRC-32", {Cli("large", {"--method", "crc"}), Diff("large", 0.5)},
               rounds_);
        Report("16 pairs of 128 MiB, SHA-1", {Cli("large", {"--method", "sha"}), HashPass("large", 0.6)},
               rounds_);
        Alone("large", {"--method", "contents"});
        Drop("large");
    }
    void Files() {
        MakeLargePair(folder_ + "/files", 1, std::size_t{2} << 30);
        Report("Two files of 2 GiB, contents", {CliFiles("contents"), OfFiles({"cmp"}, 0.5)}, rounds_);
        Report("The same, CRC-32", {CliFiles("crc"), OfFiles({"sha1sum"}, 0.6)}, rounds_);
        Report("The same, SHA-1", {CliFiles("sha"), OfFiles({"sha1sum"}, 0.6), HashPass("files", 0)},
               rounds_);
        Drop("files");
    }
    // Only root may empty the cache.
    void Cold() {
        if (!std::filesystem::exists(folder_ + "/trees")) MakeTreePair(folder_ + "/trees", kFiles, kFolders);
        if (geteuid() != 0) {
            std::printf("\nCold cache: left out, only root can empty the cache.\n");
            return;
        }
        Report("The same trees, contents, cold cache",
               {Cli("trees", {"--method", "contents"}), Diff("trees", 0.15)}, std::min(rounds_, 3), [] {
                   sync();
                   std::ofstream("/proc/sys/vm/drop_caches") << "3";
               });
    }

  private:
    std::string Left(const std::string& corpus) const { return folder_ + "/" + corpus + "/left"; }
    std::string Right(const std::string& corpus) const { return folder_ + "/" + corpus + "/right"; }

    void BySizeAndDate(const std::string& title, const std::string& corpus) const {
        Report(title + ", size and date",
               {Cli(corpus, {}), Find(corpus, 0.6), Rsync(corpus, {"-rnti", "--delete"}, 0.35)}, rounds_);
    }
    void ByContents(const std::string& corpus, double limit) const {
        Report("The same, contents", {Cli(corpus, {"--method", "contents"}), Diff(corpus, limit)}, rounds_);
    }
    // What the one thread takes without workers, against an earlier program.
    void Alone(const std::string& corpus, const std::vector<std::string>& options) const {
        const char* const baseline = std::getenv("VANTREL_BASELINE");
        if (baseline == nullptr) return;
        std::vector<std::string> alone = options;
        alone.insert(alone.end(), {"--jobs", "1"});
        Contender before = Cli(corpus, options);
        before.name = "the baseline";
        before.command[0] = baseline;
        before.limit = 1.05;
        Report("The same with --jobs 1", {Cli(corpus, alone), before}, rounds_);
    }

    Contender HashPass(const std::string& corpus, double limit) const {
        return {"one SHA-1 pass over each side", {}, [this, corpus] { HashAll(corpus); }, limit};
    }
    Contender Cli(const std::string& corpus, const std::vector<std::string>& options) const {
        std::vector<std::string> command = {cli_, "compare", "--format", "json"};
        command.insert(command.end(), options.begin(), options.end());
        command.insert(command.end(), {Left(corpus), Right(corpus)});
        return {"vantrel-cli compare", command, {}};
    }
    // A command on the two files that the sides of "files" hold.
    Contender OfFiles(std::vector<std::string> command, double limit) const {
        const std::string name = command.front();
        for (const std::string& side : {Left("files"), Right("files")})
            command.push_back(std::filesystem::directory_iterator(side)->path());
        return {name, std::move(command), {}, limit};
    }
    Contender CliFiles(const std::string& method) const {
        Contender contender = OfFiles({cli_, "files", "--true-sizes", "yes", "--only", method}, 0);
        contender.name = "vantrel-cli files";
        return contender;
    }
    Contender Find(const std::string& corpus, double limit) const {
        return {"find -printf", {"find", Left(corpus), Right(corpus), "-printf", "%s %T@ %p\\n"}, {}, limit};
    }
    Contender Rsync(const std::string& corpus, const std::vector<std::string>& options, double limit) const {
        std::vector<std::string> command = {"rsync"};
        std::string name = "rsync";
        for (const std::string& option : options) {
            command.push_back(option);
            name += " " + option;
        }
        command.insert(command.end(), {Left(corpus) + "/", Right(corpus) + "/"});
        return {name, command, {}, limit};
    }
    Contender Diff(const std::string& corpus, double limit) const {
        return {"diff -rq", {"diff", "-rq", Left(corpus), Right(corpus)}, {}, limit};
    }

    // What the library needs for the same bytes: every file read once in large pieces and hashed.
    void HashAll(const std::string& corpus) const {
        std::vector<unsigned char> buffer(std::size_t{1} << 20);
        EVP_MD* sha1 = EVP_MD_fetch(nullptr, "SHA1", nullptr);
        EVP_MD_CTX* context = EVP_MD_CTX_new();
        for (const std::string& side : {Left(corpus), Right(corpus)}) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(side)) {
                if (!entry.is_regular_file()) continue;
                const int fd = open(entry.path().c_str(), O_RDONLY | O_CLOEXEC);
                EVP_DigestInit_ex2(context, sha1, nullptr);
                for (ssize_t got; (got = read(fd, buffer.data(), buffer.size())) > 0;)
                    EVP_DigestUpdate(context, buffer.data(), static_cast<std::size_t>(got));
                std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
                EVP_DigestFinal_ex(context, digest.data(), nullptr);
                close(fd);
            }
        }
        EVP_MD_CTX_free(context);
        EVP_MD_free(sha1);
    }
    void Drop(const std::string& corpus) const { std::filesystem::remove_all(folder_ + "/" + corpus); }

    std::string cli_, folder_;
    int rounds_;
};

struct Part {
    std::string_view name;
    void (Bench::*run)();
};
constexpr std::array kParts = {Part{"flat", &Bench::Flat},   Part{"trees", &Bench::Trees},
                               Part{"deep", &Bench::Deep},   Part{"mixed", &Bench::Mixed},
                               Part{"large", &Bench::Large}, Part{"files", &Bench::Files},
                               Part{"cold", &Bench::Cold}};

// As in "ext4".
std::string FileSystemOf(const std::string& folder) {
    SystemCalls calls;
    const FileSystem files(calls);
    SystemVolumes volumes(files);
    return volumes.GetFileSystemName(volumes.GetDriveName(folder));
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.size() < 2) {
        std::fputs("usage: compare_bench VANTREL-CLI FOLDER [ROUNDS [PART...]]\n", stderr);
        return 2;
    }
    Bench bench(arguments[0], arguments[1],
                arguments.size() > 2 ? std::max(1, std::atoi(arguments[2].c_str())) : 7);
    std::printf("%zu processors, %s\n", ProcessorCount(), FileSystemOf(arguments[1]).c_str());
    std::printf(
        "Medians of interleaved runs (least to most), and peak memory. Caches are warm unless said.\n");
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
        std::fprintf(stderr, "compare_bench: %s\n", error.what());
        return 2;
    }
}
