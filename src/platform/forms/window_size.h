#pragma once

#include <QSize>

class QWidget;

namespace vantrel {

// Gives a window the size wanted, in logical pixels, as far as the screen that it is shown on, or will be,
// has room for it and its frame.
void ResizeWithinScreen(QWidget& window, QSize wanted);

}  // namespace vantrel
