#include "views/forms/pane_scrolling.h"

#include "views/forms/pane_view.h"

namespace vantrel {

PaneScrolling::PaneScrolling(PaneView& left, PaneView& right, QObject* parent)
    : QObject(parent), views_{{&left, &right}} {
    for (Side side : kBothSides) {
        PaneView* other = views_[Other(side)];
        // Setting the top item is no move of the other's bar, so nothing comes back.
        connect(views_[side], &PaneView::ScrolledByBar, this, [this, other](int top) {
            if (on_) other->SetTopItem(top);
        });
    }
}

void PaneScrolling::SetOn(bool on) {
    if (on && !on_)
        for (Side side : kBothSides) views_[side]->SetTopItem(0);
    on_ = on;
}

}  // namespace vantrel
