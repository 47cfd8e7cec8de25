// Times of the difference viewer on two files of 1,000,000 lines, and on two lines of 10 MB; on the offscreen
// platform where there is no display. Prints a line for each, with what it may take.
//   viewer_bench FOLDER [ROUNDS]
#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <vector>

#include "bench_surroundings.h"
#include "filetools/forms/frm_file_diffs.h"

namespace vantrel {
namespace {

class NoDesktop : public Desktop {
  public:
    bool OpenFile(const std::string&) override { return false; }
    bool OpenInTextEditor(const std::string&) override { return false; }
    bool Explore(const std::string&) override { return false; }
    bool OpenAddress(const std::string&) override { return false; }
};

// The program around the window.
struct Stage : bench::BenchSurroundings {
    explicit Stage(const std::string& folder) : BenchSurroundings(folder) {
        options.FileOne = folder + "/one.txt";
        options.FileTwo = folder + "/two.txt";
    }
    FileDiffsParts Parts() {
        return {owned.Get(), settings, options, engine, desktop, [] {}, [] {}};
    }

    Options settings;
    cViewFileDiffsOptions options{settings};
    FileDiffEngine engine{owned.Get()};
    NoDesktop desktop;
};

double Milliseconds(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

struct Figure {
    const char* name;
    double limit;  // milliseconds
    std::vector<double> times{};

    void Print() {
        std::sort(times.begin(), times.end());
        const double median = times[times.size() / 2];
        std::printf("%-44s %8.1f ms   at most %6.0f   %s\n", name, median, limit,
                    median <= limit ? "held" : "MISSED");
    }
};

void Paint(frmFileDiffs& window) {
    QApplication::processEvents();
    for (const Side side : kBothSides) window.grdFile[side]->viewport()->repaint();
}

void WriteLines(const std::string& folder) {
    std::mt19937 random(5);
    std::ofstream one(folder + "/one.txt"), two(folder + "/two.txt");
    for (int line = 0; line < 1'000'000; ++line) {
        const std::string text = "    if (value" + std::to_string(random() % 5000) + " > " +
                                 std::to_string(line) + ") return Found(line);";
        const unsigned kind = random() % 100;
        if (kind != 0) one << text << '\n';
        if (kind != 1) two << (kind > 3 || kind < 2 ? text : text + " // changed") << '\n';
    }
}

void WriteOneLine(const std::string& folder) {
    constexpr std::size_t kSize = 10'000'000;
    std::string text;
    std::mt19937 random(6);
    while (text.size() < kSize) text += "{\"key\":" + std::to_string(random()) + "},\t\xC3\xA4";
    std::ofstream(folder + "/one.txt") << text << '\n';
    text[kSize / 2] = '#';
    std::ofstream(folder + "/two.txt") << text << '\n';
}

void MeasureLines(const std::string& folder, int rounds) {
    WriteLines(folder);
    Figure open{"1,000,000 lines a side: to the first painting", 1000};
    Figure last{"jump to the last difference", 50};
    Figure find{"search for a text that is not there", 500};
    for (int round = 0; round < rounds; ++round) {
        Stage stage(folder);
        frmFileDiffs window(stage.Parts());
        open.times.push_back(Milliseconds([&] {
            window.FormLoad();
            window.show();
            Paint(window);
        }));
        last.times.push_back(Milliseconds([&] {
            window.GetCommands().Run("mnuFileShowLastDiff");
            Paint(window);
        }));
        std::int32_t row = 0;
        window.ShowSelectedRows(1);
        find.times.push_back(
            Milliseconds([&] { window.Find("is not to be found", FindDirection::Both, row); }));
    }
    for (Figure* figure : {&open, &last, &find}) figure->Print();
}

void MeasureOneLine(const std::string& folder, int rounds) {
    WriteOneLine(folder);
    Figure open{"a line of 10 MB: to the first painting", 1000};
    Figure scroll{"scrolled sideways, the slowest painting", 100};
    Figure select{"its two lines shown below", 100};
    Figure wrap{"wrapped, and scrolled", 100};
    for (int round = 0; round < rounds; ++round) {
        Stage stage(folder);
        frmFileDiffs window(stage.Parts());
        open.times.push_back(Milliseconds([&] {
            window.FormLoad();
            window.show();
            Paint(window);
        }));
        double slowest = 0;
        for (int step = 1; step <= 10; ++step)
            slowest = std::max(slowest, Milliseconds([&] {
                                   QScrollBar* bar = window.grdFile[Side::Left]->horizontalScrollBar();
                                   bar->setValue(bar->maximum() / 10 * step);
                                   Paint(window);
                               }));
        scroll.times.push_back(slowest);
        select.times.push_back(Milliseconds([&] {
            window.ShowSelectedRows(1);
            Paint(window);
        }));
        slowest = Milliseconds([&] { window.GetCommands().Run("mnuExtrasWrapLines"); });
        QScrollBar* bar = window.grdFile[Side::Left]->verticalScrollBar();
        for (int step = 1; step <= 10; ++step)
            slowest = std::max(slowest, Milliseconds([&] {
                                   bar->setValue(bar->maximum() / 10 * step);
                                   Paint(window);
                               }));
        wrap.times.push_back(slowest);
    }
    for (Figure* figure : {&open, &scroll, &select, &wrap}) figure->Print();
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc < 2) {
        std::fputs("viewer_bench FOLDER [ROUNDS]\n", stderr);
        return 2;
    }
    const QApplication application(argc, argv);
    const int rounds = std::max(1, argc > 2 ? std::atoi(argv[2]) : 7);
    vantrel::MeasureLines(argv[1], rounds);
    vantrel::MeasureOneLine(argv[1], rounds);
    return 0;
}
