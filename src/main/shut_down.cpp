#include <QPainter>
#include <QWidget>

#include "diagnostics/performance_check.h"
#include "main/application.h"

namespace vantrel {
namespace {

// The end takes so long at least, so that the exit sound can end before the process does.
constexpr std::uint32_t kLeastMilliseconds = 2'000;

// A pattern over the window: it no longer takes commands.
class ShutDownEffect : public QWidget {
  public:
    explicit ShutDownEffect(QWidget* window) : QWidget(window) {
        setGeometry(window->rect());
        show();
        repaint();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), QBrush(palette().color(QPalette::Shadow), Qt::Dense5Pattern));
    }
};

}  // namespace

// What the program made is released by its owners when Main ends, behind this routine.
void Application::FormUnload() {
    GuardRun("frmMain.Form_Unload", [this] {
        frmMain& window = *window_;
        const BusyPointer pointer;
        CPerformanceCheck check(around.clock);
        check.BeginPerformanceCheck();
        window.Panes().Scrolling().SetOn(false);
        SaveOptions();
        const ShutDownEffect effect(&window);
        if (sounds.SoundOn) sounds.PlayExitSound();
        check.EndPerformanceCheck();
        if (check.MilliSecondsElapsed() < kLeastMilliseconds)
            around.clock.Sleep(kLeastMilliseconds - check.MilliSecondsElapsed());
        window.hide();
    });
}

}  // namespace vantrel
