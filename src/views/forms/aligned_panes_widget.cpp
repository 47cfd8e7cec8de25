#include "views/forms/aligned_panes_widget.h"

#include <QHBoxLayout>
#include <QScrollBar>

namespace vantrel {

class AlignedPanesWidget::Selector : public PaneSelector {
  public:
    Selector(AlignedPanes& panes, Side side) : panes_(panes), side_(side) {}

    bool IsEnabled() const override { return !panes_.Busy().IsBusy(); }
    void Pressed() override { panes_.SetCurrentListview(side_); }
    void Click(std::optional<std::size_t> row, SelectionKeys keys) override {
        panes_.Click(side_, row, keys);
    }
    void MoveTo(std::size_t row, SelectionKeys keys) override { panes_.MoveTo(side_, row, keys); }
    void SelectAll() override { panes_.SelectAll(side_); }
    void DeselectAll() override { panes_.DeselectAll(side_); }

  private:
    AlignedPanes& panes_;
    Side side_;
};

AlignedPanesWidget::AlignedPanesWidget(AlignedPanes& panes, const Setting& setting,
                                       const LocaleFormats& locale, const ResultIcons& icons, QWidget* parent)
    : QWidget(parent), panes_(panes) {
    for (Side side : kBothSides) {
        selectors_[side] = std::make_unique<Selector>(panes, side);
        auto* model = new PaneModel(panes.Pane(side), side, setting.content, locale, icons, this);
        views_[side] = new PaneView(*model, *selectors_[side], this);
        views_[side]->setObjectName(QLatin1String(setting.viewNames[side]));
        // Queued: the range changes in the midst of the view's own layout.
        connect(views_[side]->horizontalScrollBar(), &QScrollBar::rangeChanged, this,
                &AlignedPanesWidget::AlignHorizontalBars, Qt::QueuedConnection);
    }
    views_[Side::Left]->setAccessibleName(QStringLiteral("Left Pane"));
    views_[Side::Right]->setAccessibleName(QStringLiteral("Right Pane"));
    scrolling_ = new PaneScrolling(*views_[Side::Left], *views_[Side::Right], setting.follows, this);

    row_ = new QHBoxLayout(this);
    row_->setContentsMargins(0, 0, 0, 0);
    row_->setSpacing(4);
    for (Side side : kBothSides) row_->addWidget(views_[side], 1);
    panes_.AddObserver(this);
}

AlignedPanesWidget::~AlignedPanesWidget() {
    panes_.RemoveObserver(this);
    // The views use the selectors, which go before the base class deletes its children.
    for (Side side : kBothSides) delete views_[side];
}

void AlignedPanesWidget::SetLooks(const PaneLooks& looks) {
    for (Side side : kBothSides) views_[side]->SetLooks(looks);
}

void AlignedPanesWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT PanesResized();
}

void AlignedPanesWidget::RowsReset() {
    for (Side side : kBothSides) views_[side]->ShowNewRows();
}

void AlignedPanesWidget::SelectionChanged(Side side) {
    views_[side]->ShowSelection();
}

void AlignedPanesWidget::EnsureVisible(Side side, std::size_t row) {
    views_[side]->EnsureVisible(row);
}

// Both panes have a horizontal scroll bar, or none: otherwise the last rows of the one would have no place to
// stand beside those of the other.
void AlignedPanesWidget::AlignHorizontalBars() {
    bool needed = false;
    for (Side side : kBothSides) needed = needed || views_[side]->horizontalScrollBar()->maximum() > 0;
    for (Side side : kBothSides)
        views_[side]->setHorizontalScrollBarPolicy(needed ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
}

}  // namespace vantrel
