// Copying against `cp -a` followed by `sync -f`, both until the data are safe on the disk.
//   copy_bench FOLDER [ROUNDS [SMALL-FILES [LARGE-FILES [MIB-EACH]]]]
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "shell/shell_operations.h"
#include "timed_command.h"

namespace {

namespace fs = std::filesystem;
using namespace vantrel;

class Loop : public EventLoopPort {
  public:
    void Yield() override {}
    bool CancelRequested() const override { return false; }
    void ResetCancel() override {}
};

class Questions : public ShellQuestions {
  public:
    OverwriteAnswer AskOverwrite(const Overwrite&) override { return OverwriteAnswer::Cancel; }
    ErrorAnswer AskAboutError(const Trouble& trouble) override {
        std::cerr << trouble.error.Description() << '\n';
        return ErrorAnswer::Cancel;
    }
};

void CopyFolder(const std::string& source, const std::string& target) {
    SystemCalls calls;
    const FileSystem files(calls);
    SystemVolumes volumes(files);
    SystemClock clock;
    Loop loop;
    NoShellProgress progress(loop);
    Questions questions;
    SystemShellOperations shell({files, volumes, clock, loop, progress, questions, {}});
    ShellRequest request;
    request.sources = {source};
    request.target = target;
    if (!shell.Run(request).AllDone()) std::exit(1);
}

void MakeFiles(const std::string& folder, std::size_t files, std::size_t size) {
    std::string content(size, '\0');
    std::uint64_t state = 88172645463325252ULL;
    for (char& c : content) {
        state ^= state << 13, state ^= state >> 7, state ^= state << 17;
        c = static_cast<char>(state);
    }
    for (std::size_t i = 0; i < files; ++i) {
        const std::string sub = folder + "/" + std::to_string(i / 100);
        fs::create_directories(sub);
        std::ofstream(sub + "/file" + std::to_string(i) + ".dat", std::ios::binary) << content;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const auto number = [&](int i, std::size_t otherwise) {
        return argc > i ? static_cast<std::size_t>(std::atoll(argv[i])) : otherwise;
    };
    const std::string folder = argv[1];
    const int rounds = static_cast<int>(number(2, 5));
    const std::size_t small = number(3, 10'000), large = number(4, 4), mebibytes = number(5, 1024);
    struct {
        std::string name;
        std::size_t files, size;
    } const parts[] = {{"small", small, 4096}, {"large", large, mebibytes << 20}};
    for (const auto& part : parts) {
        if (part.files == 0) continue;
        const std::string source = folder + "/" + part.name, targets = folder + "/targets";
        MakeFiles(source, part.files, part.size);
        // A new one each time, all removed at the end: what was just deleted slows down whoever makes files
        // next (ext4 takes no inode again within five seconds, and looks at every one), and its blocks are
        // given back to the disk in the next sync.
        std::size_t made = 0;
        const auto target = [&] { return targets + "/" + std::to_string(made); };
        bench::Report(
            std::to_string(part.files) + " files of " + std::to_string(part.size) + " bytes, copied",
            {{"vantrel", {}, [&] { CopyFolder(source, target()); }, 0},
             {"cp -a; sync -f",
              {},
              [&] {
                  const std::string command =
                      "cp -a '" + source + "' '" + target() + "' && sync -f '" + target() + "'";
                  if (std::system(command.c_str()) != 0) std::exit(1);
              },
              1.2}},
            rounds, [&] {
                ++made;
                fs::create_directories(target());
                std::system("sync");
            });
        fs::remove_all(targets);
        fs::remove_all(source);
    }
    return 0;
}
