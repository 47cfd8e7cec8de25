#pragma once

#include <QObject>
#include <QScopedValueRollback>

#include "core/side.h"

namespace vantrel {

class PaneView;

// Scrolls two panes together: while it is on, a move of the one brings the other to the same top row.
class PaneScrolling : public QObject {
    Q_OBJECT
  public:
    // Which moves count: those of the scroll bars alone, or also those of wheel, keys and touch.
    enum class Follows { Bars, AllMoves };

    PaneScrolling(PaneView& left, PaneView& right, QObject* parent = nullptr);

    // Turning on, when not already on, brings both panes to their top.
    void SetOn(bool on);
    void SetFollows(Follows follows) { follows_ = follows; }

    // Each pane scrolls for itself for as long as the object lives: while their rows change.
    class Pause {
      public:
        explicit Pause(PaneScrolling& scrolling) : paused_(scrolling.paused_, true) {}

      private:
        QScopedValueRollback<bool> paused_;
    };

  private:
    void Follow(Side moved, int top);

    PerSide<PaneView*> views_;
    Follows follows_ = Follows::Bars;
    bool on_ = false;
    bool paused_ = false;
};

}  // namespace vantrel
