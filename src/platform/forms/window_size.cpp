#include "platform/forms/window_size.h"

#include <QScreen>
#include <QWidget>

namespace vantrel {

void ResizeWithinScreen(QWidget& window, QSize wanted) {
    constexpr QSize kFrame{16, 48};  // of the common window managers, the title bar above
    const QWidget* owner = window.parentWidget();
    const QScreen* screen = (owner != nullptr ? owner : &window)->screen();
    if (screen != nullptr) wanted = wanted.boundedTo(screen->availableSize() - kFrame);
    window.resize(wanted);
}

}  // namespace vantrel
