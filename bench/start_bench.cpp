// What a user waits for at the start, and between the command to compare two small folders and the result on
// the screen; on the offscreen platform where there is no display. Prints a line for each, with what it may
// take. The splash window's own two seconds are left out.
//   start_bench FOLDER [ROUNDS]      in an empty folder that is there
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench_surroundings.h"
#include "corpus.h"
#include "main/application.h"

namespace vantrel {
namespace {

constexpr const char* kStartOnly = "--start";
constexpr double kStartLimit = 400;    // milliseconds
constexpr double kCompareLimit = 120;  // milliseconds
constexpr std::size_t kFiles = 20;

class NoDesktop : public Desktop {
  public:
    bool OpenFile(const std::string&) override { return true; }
    bool OpenInTextEditor(const std::string&) override { return true; }
    bool Explore(const std::string&) override { return true; }
    bool OpenAddress(const std::string&) override { return true; }
};

class NoSound : public SoundDevice {
  public:
    int NumberOfDevices() override { return 0; }
    bool Play(const std::string&, bool) override { return false; }
};

// Waits until a widget has been painted after it was made.
class FirstPaint : public QObject {
  public:
    explicit FirstPaint(QWidget& widget) { widget.installEventFilter(this); }
    void Await() const {
        while (!painted_) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        painted_ |= event->type() == QEvent::Paint;
        return false;
    }

  private:
    bool painted_ = false;
};

// The whole program but its splash window, on settings of its own.
struct Program : bench::BenchSurroundings {
    explicit Program(const std::string& folder)
        : BenchSurroundings(folder),
          application({{.files = files,
                        .volumes = volumes,
                        .clock = clock,
                        .locale = locale,
                        .folders = folders,
                        .messages = messages,
                        .loop = loop},
                       loop,
                       desktop,
                       sound,
                       TrashPlaces::OfThisUser()},
                      "0.0.0") {
        application.Comparison().ShowCompareResults = nullptr;
    }
    void Load() {
        const FirstPaint paint(application.Window());
        application.FormLoad();
        paint.Await();
    }

    NoDesktop desktop;
    NoSound sound;
    Application application;
};

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void Print(const char* what, const std::vector<double>& times, double limit) {
    const double median = Median(times);
    std::printf("%-66s %7.1f ms (%.1f to %.1f), may take %.0f%s\n", what, median,
                *std::min_element(times.begin(), times.end()), *std::max_element(times.begin(), times.end()),
                limit, median <= limit ? "" : "  TOO SLOW");
}

// A process of its own that says when its window has been painted.
double StartMilliseconds(const char* program, const std::string& folder) {
    QElapsedTimer timer;
    timer.start();
    const std::string command = std::string("'") + program + "' " + kStartOnly + " '" + folder + "'";
    std::FILE* said = popen(command.c_str(), "r");
    if (said == nullptr || std::fgetc(said) == EOF) {
        std::fputs("start_bench: the program did not start\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    const double taken = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    pclose(said);
    return taken;
}

int StartOnly(int argc, char** argv) {
    QApplication qt(argc, argv);
    Program program(argv[2]);
    program.Load();
    if (write(STDOUT_FILENO, "p", 1) != 1) return EXIT_FAILURE;
    _exit(EXIT_SUCCESS);
}

double CompareMilliseconds(Application& application) {
    application.panes.RemoveListItemsAndShowNoCompareMsg();
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    application.GetCommands().Run("mnuFileCompareDirectories");
    const FirstPaint paint(*application.Window().Panes().View(Side::Right).viewport());
    application.Window().Panes().View(Side::Right).viewport()->update();
    paint.Await();
    if (!application.results.HasResult()) {
        std::fputs("start_bench: the comparison gave no result\n", stderr);
        std::exit(EXIT_FAILURE);
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

int Run(int argc, char** argv) {
    const std::string folder = argv[1];
    const int rounds = argc > 2 ? std::max(std::atoi(argv[2]), 1) : 7;
    std::vector<double> starts, comparisons;
    StartMilliseconds(argv[0], folder);  // the first run is not counted
    for (int round = 0; round < rounds; ++round) starts.push_back(StartMilliseconds(argv[0], folder));
    Print("start to a painted main window, warm", starts, kStartLimit);

    const std::string compared = folder + "/compared";
    bench::MakeFlatPair(compared, kFiles);
    QApplication qt(argc, argv);
    Program program(folder);
    program.Load();
    program.application.Window().SetPathText(Side::Left, compared + "/left");
    program.application.Window().SetPathText(Side::Right, compared + "/right");
    CompareMilliseconds(program.application);
    for (int round = 0; round < rounds; ++round)
        comparisons.push_back(CompareMilliseconds(program.application));
    Print("command to compare two folders of 20 files to the result in view", comparisons, kCompareLimit);
    const bool inTime = Median(starts) <= kStartLimit && Median(comparisons) <= kCompareLimit;
    return inTime ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("start_bench FOLDER [ROUNDS]\n", stderr);
        return EXIT_FAILURE;
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const bool startOnly = argc > 2 && std::strcmp(argv[1], vantrel::kStartOnly) == 0;
    return startOnly ? vantrel::StartOnly(argc, argv) : vantrel::Run(argc, argv);
}
