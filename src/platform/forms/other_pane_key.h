#pragma once

#include <array>

class QWidget;

namespace vantrel {

// F6 in `window` goes from the one of two panes that has the focus to the other one, and from anywhere else
// to the first. A pane that cannot take the focus is left out.
void GoBetweenByF6(QWidget& window, std::array<QWidget*, 2> panes);

}  // namespace vantrel
