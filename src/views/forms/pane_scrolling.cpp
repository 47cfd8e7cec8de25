#include "views/forms/pane_scrolling.h"

#include <QScrollBar>

#include "views/forms/pane_view.h"

namespace vantrel {

PaneScrolling::PaneScrolling(PaneView& left, PaneView& right, QObject* parent)
    : QObject(parent), views_{{&left, &right}} {
    for (const Side side : kBothSides) {
        connect(views_[side], &PaneView::ScrolledByBar, this, [this, side](int top) { Follow(side, top); });
        connect(views_[side]->verticalScrollBar(), &QScrollBar::valueChanged, this, [this, side](int top) {
            if (follows_ == Follows::AllMoves) Follow(side, top);
        });
    }
}

// What the other pane does then is no move of its own: where it cannot go as far, it must not pull back.
void PaneScrolling::Follow(Side moved, int top) {
    PaneView* other = views_[Other(moved)];
    if (!on_ || paused_ || other->TopItem() == top) return;
    const Pause pause(*this);
    other->SetTopItem(top);
}

void PaneScrolling::SetOn(bool on) {
    if (on && !on_)
        for (const Side side : kBothSides) views_[side]->SetTopItem(0);
    on_ = on;
}

}  // namespace vantrel
