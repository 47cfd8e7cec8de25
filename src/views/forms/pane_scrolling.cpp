#include "views/forms/pane_scrolling.h"

#include <QScrollBar>

#include "views/forms/pane_view.h"

namespace vantrel {

PaneScrolling::PaneScrolling(PaneView& left, PaneView& right, Follows follows, QObject* parent)
    : QObject(parent), views_{{&left, &right}} {
    for (Side side : kBothSides) {
        PaneView* other = views_[Other(side)];
        const auto follow = [this, other](int top) {
            if (on_ && other->TopItem() != top) other->SetTopItem(top);
        };
        // Setting the top item is no move of the other's bar, so nothing comes back.
        if (follows == Follows::Bars)
            connect(views_[side], &PaneView::ScrolledByBar, this, follow);
        else
            connect(views_[side]->verticalScrollBar(), &QScrollBar::valueChanged, this, follow);
    }
}

void PaneScrolling::SetOn(bool on) {
    if (on && !on_)
        for (Side side : kBothSides) views_[side]->SetTopItem(0);
    on_ = on;
}

}  // namespace vantrel
