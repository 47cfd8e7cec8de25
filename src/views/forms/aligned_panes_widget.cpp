#include "views/forms/aligned_panes_widget.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/forms/qt_text.h"

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
    for (const Side side : kBothSides) MakeView(side, setting, locale, icons);
    views_[Side::Left]->setAccessibleName(QStringLiteral("Left Pane"));
    views_[Side::Right]->setAccessibleName(QStringLiteral("Right Pane"));
    scrolling_ = new PaneScrolling(*views_[Side::Left], *views_[Side::Right], this);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    row_ = new QHBoxLayout;
    row_->setSpacing(4);
    for (Side side : kBothSides) row_->addWidget(views_[side], 1);
    column->addLayout(row_, 1);
    MakeFindLine();
    column->addWidget(findLine_);
    panes_.AddObserver(this);
}

void AlignedPanesWidget::MakeView(Side side, const Setting& setting, const LocaleFormats& locale,
                                  const ResultIcons& icons) {
    selectors_[side] = std::make_unique<Selector>(panes_, side);
    auto* model = new PaneModel(panes_.Pane(side), side, setting.content, locale, icons, this);
    auto* view = new PaneView(*model, *selectors_[side], this);
    views_[side] = view;
    view->setObjectName(QLatin1String(setting.viewNames[side]));
    // Queued: the range changes in the midst of the view's own layout.
    connect(view->horizontalScrollBar(), &QScrollBar::rangeChanged, this,
            &AlignedPanesWidget::AlignHorizontalBars, Qt::QueuedConnection);
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this, side](int top) { panes_.SetTopRow(side, static_cast<std::size_t>(top)); });
    connect(view, &PaneView::RoomChanged, this, &AlignedPanesWidget::FitColumns);
}

AlignedPanesWidget::~AlignedPanesWidget() {
    panes_.RemoveObserver(this);
    // The views use the selectors, which go before the base class deletes its children.
    for (Side side : kBothSides) delete views_[side];
}

void AlignedPanesWidget::SetLooks(const PaneLooks& looks) {
    for (Side side : kBothSides) views_[side]->SetLooks(looks);
    FitColumns();
}

void AlignedPanesWidget::SetColumnsFitted(Side side, bool fitted) {
    views_[side]->SetColumnsFitted(fitted);
    FitColumns();
}

// The columns of both panes are of one width, so that pairs are read across.
void AlignedPanesWidget::FitColumns() {
    PaneView::Widths widest{};
    for (const Side side : kBothSides)
        for (const auto column : {PaneModel::Size, PaneModel::ModifiedDate})
            widest[column] = std::max(widest[column], views_[side]->WidthForContents(column));
    for (const Side side : kBothSides) views_[side]->FitColumns(widest);
}

void AlignedPanesWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT PanesResized();
}

// What moves the one pane while the other has its old rows still must not move that one.
void AlignedPanesWidget::RowsReset() {
    const PaneScrolling::Pause pause(*scrolling_);
    found_.reset();
    for (Side side : kBothSides) views_[side]->ShowNewRows();
    FitColumns();
    if (findLine_->isVisible()) ShowMarks();
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

void AlignedPanesWidget::MakeFindLine() {
    findLine_ = new FindLine(this);
    connect(findLine_, &FindLine::Wanted, this, &AlignedPanesWidget::Search);
    connect(findLine_, &FindLine::Closed, this, &AlignedPanesWidget::EndSearch);
    for (const FindLine::Step step : {FindLine::Step::Next, FindLine::Step::Previous}) {
        const QKeyCombination back = Qt::SHIFT | Qt::Key_F3;
        const QKeyCombination keys = step == FindLine::Step::Previous ? back : QKeyCombination(Qt::Key_F3);
        auto* shortcut = new QShortcut(QKeySequence(keys), this);
        connect(shortcut, &QShortcut::activated, this, [this, step] { GoOn(step); });
    }
}

void AlignedPanesWidget::GoOn(FindLine::Step step) {
    if (findLine_->isVisible() && !findLine_->Text().isEmpty())
        Search(step);
    else
        OpenFind();
}

void AlignedPanesWidget::OpenFind() {
    if (!panes_.Busy().IsBusy()) findLine_->Open();
}

PerSide<const PaneList*> AlignedPanesWidget::Lists() const {
    return {{&panes_.Pane(Side::Left), &panes_.Pane(Side::Right)}};
}

// The row found last, or else where the user is.
std::size_t AlignedPanesWidget::StartOfSearch() const {
    if (found_) return *found_;
    const PaneList& list = panes_.Pane(panes_.CurrentListview().value_or(Side::Left));
    const auto item = list.SelectedItem();
    return item ? *item : list.TopRow();
}

void AlignedPanesWidget::Search(FindLine::Step step) {
    using enum RowSearch::Direction;
    if (panes_.Busy().IsBusy()) return;
    search_ = RowSearch(FromQString(findLine_->Text()));
    const PerSide<const PaneList*> lists = Lists();
    const std::size_t count = std::max(lists[Side::Left]->Count(), lists[Side::Right]->Count());
    const bool backwards = step == FindLine::Step::Previous;
    std::size_t start = StartOfSearch();
    // From one that was found the search goes on behind it, or before it.
    if (found_ && step != FindLine::Step::Here && count > 0) start += backwards ? count - 1 : 1;
    found_ = search_.Find(lists, start, backwards ? Backwards : Forwards);
    ShowMarks();
    if (!found_) {
        findLine_->ShowAnswer(search_.IsEmpty() ? QString() : QStringLiteral("Not found"));
        return;
    }
    findLine_->ShowAnswer(QStringLiteral("Row %L1 of %L2").arg(*found_ + 1).arg(count));
    for (const Side side : kBothSides)
        if (*found_ < lists[side]->Count()) views_[side]->EnsureVisible(*found_);
}

// Only rows that are painted are asked whether they fit.
void AlignedPanesWidget::ShowMarks() {
    PaneMarks marks;
    if (!search_.IsEmpty())
        marks = {.fits = [this](std::size_t row) { return search_.Matches(Lists(), row); }, .found = found_};
    for (const Side side : kBothSides) views_[side]->SetMarks(marks);
}

// Where nothing is selected, the keys go on from what was found.
void AlignedPanesWidget::EndSearch() {
    const Side side = panes_.CurrentListview().value_or(Side::Left);
    if (found_) panes_.StandOn(side, *found_);
    found_.reset();
    search_ = {};
    ShowMarks();
    views_[side]->setFocus(Qt::OtherFocusReason);
}

}  // namespace vantrel
