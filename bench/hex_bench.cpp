// Times and memory of the window of hex dumps on a file of 10 GiB that takes no room on the disk, and of
// `vantrel-cli hexdump` against `xxd`; the window on the offscreen platform where there is no display.
//   hex_bench VANTREL-CLI FOLDER [ROUNDS]
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <vector>

#include "bench_surroundings.h"
#include "filetools/forms/frm_hex_dump.h"
#include "timed_command.h"

namespace vantrel {
namespace {

constexpr std::uint64_t kSize = std::uint64_t{10} << 30;

// The program around the window.
struct Stage : bench::BenchSurroundings {
    using BenchSurroundings::BenchSurroundings;
    HexDumpParts Parts() {
        return {owned.Get(), completes, [] {}};
    }

    bool completes = false;
};

double Milliseconds(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

double ResidentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    double all = 0, resident = 0;
    statm >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void Paint(frmHexDump& window) {
    QApplication::processEvents();
    for (const Side side : kBothSides) window.rtfHexDump[side]->viewport()->repaint();
}

void Print(const char* name, double value, double limit, const char* unit) {
    std::printf("%-56s %8.1f %s   at most %6.0f   %s\n", name, value, unit, limit,
                value <= limit ? "held" : "MISSED");
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void MeasureWindow(const std::string& folder, int rounds) {
    const std::string path = folder + "/sparse";
    std::ofstream(path).put('x');
    if (truncate(path.c_str(), static_cast<off_t>(kSize)) != 0) return std::perror("truncate");
    std::vector<double> open, jumps;
    double grown = 0;
    std::mt19937_64 random(7);
    for (int round = 0; round < rounds; ++round) {
        Stage stage(folder);
        frmHexDump window(stage.Parts());
        window.show();
        Paint(window);
        const double before = ResidentMegabytes();
        open.push_back(Milliseconds([&] {
            window.FormLoad({{path, {}}});
            Paint(window);
        }));
        double slowest = 0;
        for (int jump = 0; jump < 100; ++jump) {
            const std::uint64_t line = random() % (kSize / kHexDumpBytes);
            slowest = std::max(slowest, Milliseconds([&] {
                                   window.rtfHexDump[Side::Left]->SetTop(line);
                                   Paint(window);
                               }));
        }
        jumps.push_back(slowest);
        grown = std::max(grown, ResidentMegabytes() - before);
    }
    Print("a file of 10 GiB: to the first painting", Median(open), 200, "ms ");
    Print("the slowest of 100 jumps to any offset", Median(jumps), 50, "ms ");
    Print("memory above that of the empty window", grown, 60, "MiB");
    unlink(path.c_str());
}

void MeasureProgram(const std::string& program, const std::string& folder, int rounds) {
    const std::string path = folder + "/dumped";
    {
        std::mt19937_64 random(8);
        std::ofstream out(path, std::ios::binary);
        std::vector<std::uint64_t> block(1 << 17);
        for (int count = 0; count < 256; ++count) {
            for (std::uint64_t& word : block) word = random();
            out.write(reinterpret_cast<const char*>(block.data()), 1 << 20);
        }
    }
    bench::Report("the dump of 256 MiB",
                  {{"vantrel-cli hexdump", {program, "hexdump", path}, {}}, {"xxd", {"xxd", path}, {}, 0.5}},
                  rounds);
    unlink(path.c_str());
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc < 3) {
        std::fputs("hex_bench VANTREL-CLI FOLDER [ROUNDS]\n", stderr);
        return 2;
    }
    const QApplication application(argc, argv);
    const int rounds = std::max(1, argc > 3 ? std::atoi(argv[3]) : 7);
    vantrel::MeasureWindow(argv[2], rounds);
    vantrel::MeasureProgram(argv[1], argv[2], rounds);
    return 0;
}
