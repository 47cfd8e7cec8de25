#include "last_resort.h"

#include <QMessageBox>
#include <QScopedValueRollback>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "platform/error.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr const char* kRoutine = "modVantrel.Main";

// Nothing that fails while it is told may end the process in another way. What comes while a box stands, as
// from a window that cannot be painted, opens no box of its own.
void Tell(const char* what) noexcept {
    static bool boxIsOpen = false;
    std::fprintf(stderr, "vantrel: unexpected error in %s: %s\n", kRoutine, what);
    if (boxIsOpen || QCoreApplication::instance() == nullptr) return;
    const QScopedValueRollback<bool> open(boxIsOpen, true);
    try {
        QMessageBox::critical(nullptr, QStringLiteral("Unexpected Error in ") + QLatin1String(kRoutine),
                              MessageQString(what));
    } catch (...) {
        std::fputs("vantrel: the error could not be shown in a window\n", stderr);
    }
}

// Whether `work` came to its end; what came out of it is told.
template <typename Work>
bool TellWhatComesOut(Work&& work) noexcept {
    try {
        work();
        return true;
    } catch (const Cancelled&) {
        // The run that it was to end is behind us.
    } catch (const std::exception& error) {
        Tell(error.what());
    } catch (...) {
        Tell("unknown");
    }
    return false;
}

}  // namespace

int RunGuarded(const std::function<int()>& program) noexcept {
    int status = EXIT_FAILURE;
    TellWhatComesOut([&] { status = program(); });
    return status;
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    TellWhatComesOut([&] { handled = QApplication::notify(receiver, event); });
    return handled;
}

}  // namespace vantrel
