#pragma once

#include <QObject>

#include "core/side.h"

namespace vantrel {

class PaneView;

// Scrolls two panes together: while it is on, a move of the one brings the other to the same top row.
class PaneScrolling : public QObject {
    Q_OBJECT
  public:
    // Which moves count: those of the scroll bars alone, or also those of wheel, keys and touch.
    enum class Follows { Bars, AllMoves };

    PaneScrolling(PaneView& left, PaneView& right, Follows follows, QObject* parent = nullptr);

    // Turning on, when not already on, brings both panes to their top.
    void SetOn(bool on);

  private:
    PerSide<PaneView*> views_;
    bool on_ = false;
};

}  // namespace vantrel
