// Comparisons on a file system that takes its time, by 1, 2, 4 and 8 jobs, and by as many as are taken by
// default: what more jobs are worth where it is not the processor that is waited for. Started by bench/run:
//   slow_bench FOLDER
// FOLDER is an empty folder for the corpus.
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <thread>

#include "core/folder_comparison.h"
#include "corpus.h"

namespace vantrel::bench {
namespace {

constexpr std::chrono::microseconds kDelay{200};

// Every call that goes to the file system takes as long as a server nearby takes to answer.
class SlowCalls : public SystemCalls {
  public:
    int OpenAt(int folder, const char* path, int flags, mode_t mode) override {
        std::this_thread::sleep_for(kDelay);
        return SystemCalls::OpenAt(folder, path, flags, mode);
    }
    ssize_t PRead(int fd, void* buffer, std::size_t size, off_t offset) override {
        std::this_thread::sleep_for(kDelay);
        return SystemCalls::PRead(fd, buffer, size, offset);
    }
    ssize_t GetDents(int fd, void* buffer, std::size_t size) override {
        std::this_thread::sleep_for(kDelay);
        return SystemCalls::GetDents(fd, buffer, size);
    }
    int StatxAt(int folder, const char* path, int flags, unsigned mask, struct statx& out) override {
        std::this_thread::sleep_for(kDelay);
        return SystemCalls::StatxAt(folder, path, flags, mask, out);
    }
};

// Those of a server, whatever lies below it here.
class ServerVolumes : public SystemVolumes {
  public:
    using SystemVolumes::SystemVolumes;
    bool IsOnRotatingDisk(std::string_view) override { return false; }
    DriveKind GetDriveKind(std::string_view) override { return DriveKind::Remote; }
};

class NoMessages : public MessagePort {
  public:
    MessageAnswer Ask(const Message&) override { return MessageAnswer::Cancel; }
    void ShowInformationMessage(const std::string&, const std::string&) override {}
    MessageAnswer Confirm(const Confirmation&) override { return MessageAnswer::Cancel; }
    std::optional<std::string> AskForText(const std::string&, const std::string&,
                                          const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> AskForFile(const FileDialog&) override { return std::nullopt; }
    std::optional<std::string> PickDirectory(const std::string&, const std::string&,
                                             const std::string&) override {
        return std::nullopt;
    }
};

class NoEvents : public EventLoopPort {
  public:
    void Yield() override {}
    bool CancelRequested() const override { return false; }
    void ResetCancel() override {}
};

class NoProgress : public CompareProgress {
  public:
    void Show() override {}
    void SetMessage(std::string_view) override {}
    void SetFileName(std::string_view) override {}
    void SetBarRange(std::int64_t) override {}
    void SetBarValue(std::int64_t) override {}
    void SetAnimation(std::string_view) override {}
    void WaitUntilPainted() override {}
    void Unload() override {}
};

double SecondsOf(const std::string& folder, CompareMethod method, std::int32_t jobs) {
    SlowCalls calls;
    const FileSystem files(calls);
    ServerVolumes volumes(files);
    SystemClock clock;
    const LocaleFormats locale;
    const ProgramFolders folders{folder + "/", folder + "/", folder + "/", "vantrel"};
    NoMessages messages;
    NoEvents loop;
    NoProgress progress;
    const OwnedToolbox tools({files, volumes, clock, locale, folders, messages, loop});
    CCompare compare;
    compare.CompareMethod = method;
    compare.Jobs = jobs;
    FolderComparison comparison(tools.Get(), compare, progress);
    const PerSide<std::string> paths{{folder + "/slow/left", folder + "/slow/right"}};
    const auto begin = std::chrono::steady_clock::now();
    if (comparison.Compare(paths, nullptr).outcome != CompareOutcome::Completed)
        throw std::runtime_error("the comparison did not complete");
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void Run(const std::string& folder) {
    constexpr std::size_t kFiles = 4'000, kFolders = 160;
    MakeTreePair(folder + "/slow", kFiles, kFolders);
    std::printf("\n4,000 files a side in 160 folders, each call to the file system %lld microseconds late\n",
                static_cast<long long>(kDelay.count()));
    for (const CompareMethod method : {CompareMethod::SizeAndDate, CompareMethod::Contents}) {
        double alone = 0;
        for (const std::int32_t jobs : {1, 2, 4, 8, 0}) {
            const double seconds = SecondsOf(folder, method, jobs);
            if (jobs == 1) alone = seconds;
            const std::string told = jobs == 0 ? "by default" : std::to_string(jobs) + " jobs";
            std::printf("  %s, %s %8.3f s  ratio %.2f\n",
                        method == CompareMethod::Contents ? "contents" : "size and date", told.c_str(),
                        seconds, seconds / alone);
        }
    }
    std::filesystem::remove_all(folder + "/slow");
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** values) {
    if (count != 2) {
        std::fputs("usage: slow_bench FOLDER\n", stderr);
        return 2;
    }
    try {
        vantrel::bench::Run(values[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "slow_bench: %s\n", error.what());
        return 2;
    }
}
