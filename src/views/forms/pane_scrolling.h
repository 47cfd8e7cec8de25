#pragma once

#include <QObject>

#include "core/side.h"

namespace vantrel {

class PaneView;

// Scrolls two panes together: while it is on, a move of the scroll bar of one brings the other to the same
// top row. Wheel and keys move one pane alone.
class PaneScrolling : public QObject {
    Q_OBJECT
  public:
    PaneScrolling(PaneView& left, PaneView& right, QObject* parent = nullptr);

    // Turning on, when not already on, brings both panes to their top.
    void SetOn(bool on);

  private:
    PerSide<PaneView*> views_;
    bool on_ = false;
};

}  // namespace vantrel
