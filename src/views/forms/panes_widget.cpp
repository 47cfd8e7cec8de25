#include "views/forms/panes_widget.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QToolButton>

namespace vantrel {

class PanesWidget::Selector : public PaneSelector {
  public:
    Selector(ResultPanes& panes, Side side) : panes_(panes), side_(side) {}

    bool IsEnabled() const override { return !panes_.Busy().IsBusy(); }
    void Pressed() override { panes_.SetCurrentListview(side_); }
    void Click(std::optional<std::size_t> row, SelectionKeys keys) override {
        panes_.Click(side_, row, keys);
    }
    void MoveTo(std::size_t row, SelectionKeys keys) override { panes_.MoveTo(side_, row, keys); }
    void SelectAll() override { panes_.SelectAll(side_); }
    void DeselectAll() override { panes_.DeselectAll(side_); }

  private:
    ResultPanes& panes_;
    Side side_;
};

PanesWidget::PanesWidget(ResultPanes& panes, const LocaleFormats& locale, const ResultIcons& icons,
                         QWidget* parent)
    : QWidget(parent), panes_(panes) {
    for (Side side : kBothSides) {
        selectors_[side] = std::make_unique<Selector>(panes, side);
        auto* model = new PaneModel(panes.Pane(side), side, locale, icons, this);
        views_[side] = new PaneView(*model, *selectors_[side], this);
        // Queued: the range changes in the midst of the view's own layout.
        connect(views_[side]->horizontalScrollBar(), &QScrollBar::rangeChanged, this,
                &PanesWidget::AlignHorizontalBars, Qt::QueuedConnection);
    }
    views_[Side::Left]->setObjectName(QStringLiteral("lvwSourceDirFiles"));
    views_[Side::Left]->setAccessibleName(QStringLiteral("Left Pane"));
    views_[Side::Right]->setObjectName(QStringLiteral("lvwTargetDirFiles"));
    views_[Side::Right]->setAccessibleName(QStringLiteral("Right Pane"));

    toggles_ = new ViewToggles(icons, this);
    connect(toggles_, &ViewToggles::Toggled, this, [this](ResultType type) {
        panes_.ToggleView(type);
        ViewSelectionsChanged();  // also where nothing changed: the button has moved already
    });
    scrolling_ = new PaneScrolling(*views_[Side::Left], *views_[Side::Right], this);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(views_[Side::Left], 1);
    row->addWidget(toggles_, 0);
    row->addWidget(views_[Side::Right], 1);
    setTabOrder(views_[Side::Left], toggles_->imgViews(ResultType::Newer));
    setTabOrder(toggles_->imgViews(ResultType::OrphanFolder), views_[Side::Right]);

    panes_.AddObserver(this);
    ViewSelectionsChanged();
}

PanesWidget::~PanesWidget() {
    panes_.RemoveObserver(this);
    // The views use the selectors, which go before the base class deletes its children.
    for (Side side : kBothSides) delete views_[side];
}

void PanesWidget::SetLooks(const PaneLooks& looks) {
    for (Side side : kBothSides) views_[side]->SetLooks(looks);
}

void PanesWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT PanesResized();
}

void PanesWidget::RowsReset() {
    for (Side side : kBothSides) views_[side]->ShowNewRows();
}

void PanesWidget::SelectionChanged(Side side) {
    views_[side]->ShowSelection();
}

void PanesWidget::EnsureVisible(Side side, std::size_t row) {
    views_[side]->EnsureVisible(row);
}

void PanesWidget::ViewSelectionsChanged() {
    toggles_->DisplayViewSelections(panes_.ViewSelections());
}

void PanesWidget::ShowBusy(bool busy) {
    toggles_->setEnabled(!busy);
}

// Both panes have a horizontal scroll bar, or none: otherwise the last rows of the one would have no place to
// stand beside those of the other.
void PanesWidget::AlignHorizontalBars() {
    bool needed = false;
    for (Side side : kBothSides) needed = needed || views_[side]->horizontalScrollBar()->maximum() > 0;
    for (Side side : kBothSides)
        views_[side]->setHorizontalScrollBarPolicy(needed ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
}

}  // namespace vantrel
