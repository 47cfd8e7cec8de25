#include "views/forms/pane_view.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "views/forms/pane_delegate.h"
#include "views/forms/tiled_background.h"

namespace vantrel {
namespace {

// Widths at first start: 3,704, 1,411 and 2,540 twips at 15 twips a pixel.
constexpr PaneView::Widths kFirstWidths{247, 94, 169};
constexpr int kRoomAroundText = 6;
constexpr int kRoomAroundIcon = 4;

// Tells the moves that were made with the bar itself from those that the wheel makes through it.
class PaneScrollBar : public QScrollBar {
  public:
    PaneScrollBar(QWidget* parent, std::function<void(int)> moved)
        : QScrollBar(Qt::Vertical, parent), moved_(std::move(moved)) {
        connect(this, &QScrollBar::actionTriggered, this, [this] {
            if (!inWheel_) moved_(sliderPosition());
        });
    }

  protected:
    void wheelEvent(QWheelEvent* event) override {
        const QScopedValueRollback<bool> guard(inWheel_, true);
        QScrollBar::wheelEvent(event);
    }
    void contextMenuEvent(QContextMenuEvent* event) override {
        QScrollBar::contextMenuEvent(event);
        moved_(value());
    }

  private:
    std::function<void(int)> moved_;
    bool inWheel_ = false;
};

}  // namespace

PaneView::PaneView(PaneModel& model, PaneSelector& selector, QWidget* parent)
    : QTableView(parent), model_(model), selector_(selector) {
    setVerticalScrollBar(new PaneScrollBar(this, [this](int top) { Q_EMIT ScrolledByBar(top); }));
    setModel(&model_);
    setItemDelegate(new PaneDelegate(*this));
    SetUpLook();
    SetUpHeaders();
    SetColumnWidths(kFirstWidths);
    FitRowHeight();
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
}

void PaneView::SetUpLook() {
    setSelectionMode(NoSelection);  // the rows hold the selection
    setEditTriggers(NoEditTriggers);
    setFocusPolicy(Qt::StrongFocus);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
}

void PaneView::SetUpHeaders() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionsClickable(false);
    header->setSectionsMovable(false);
    header->setHighlightSections(false);
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(24);
    // The table's own way would ask a great many rows.
    disconnect(header, &QHeaderView::sectionHandleDoubleClicked, this, nullptr);
    connect(header, &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        setColumnWidth(column, WidthForContents(static_cast<PaneModel::Column>(column)));
    });
    connect(header, &QHeaderView::sectionResized, this, [this] {
        if (!fitting_) fitted_ = false;
    });
}

void PaneView::FitRowHeight() {
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({icon, icon});
    const int height = std::max(fontMetrics().height() + kRoomAroundText, icon + kRoomAroundIcon);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(height);
}

PaneView::Widths PaneView::ColumnWidths() const {
    Widths widths{};
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = columnWidth(static_cast<int>(i));
    return widths;
}

void PaneView::SetColumnWidths(const Widths& widths) {
    fitted_ = false;
    for (std::size_t i = 0; i < widths.size(); ++i)
        if (widths[i] > 0) setColumnWidth(static_cast<int>(i), widths[i]);
}

void PaneView::SetLooks(const PaneLooks& looks) {
    setFont(looks.font);
    FitRowHeight();
    setShowGrid(looks.lines);
    background_ = looks.background;
    viewport()->update();
}

void PaneView::ShowNewRows() {
    // Taken first: while the rows change, the view scrolls by itself.
    const auto top = static_cast<int>(List().TopRow());
    marks_ = {};
    model_.Reset();
    clearSpans();
    // What stands in the place of results has the whole width.
    if (List().Rows().IsSentinel()) setSpan(0, 0, 1, model_.columnCount());
    ShowSelection();
    SetTopItem(top);
}

void PaneView::SetMarks(PaneMarks marks) {
    marks_ = std::move(marks);
    viewport()->update();
}

void PaneView::ShowSelection() {
    const auto item = List().SelectedItem();
    const QModelIndex index = item ? model_.index(static_cast<int>(*item), 0) : QModelIndex();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    viewport()->update();
}

int PaneView::RowsOnPage() const {
    return std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize());
}

void PaneView::EnsureVisible(std::size_t row) {
    executeDelayedItemsLayout();
    const int number = static_cast<int>(row);
    if (number < TopItem())
        SetTopItem(number);
    else if (number >= TopItem() + RowsOnPage())
        SetTopItem(number - RowsOnPage() + 1);
}

int PaneView::TopItem() const {
    return verticalScrollBar()->value();
}

void PaneView::SetTopItem(int row) {
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(row);
}

std::optional<std::size_t> PaneView::RowAt(const QPoint& position) const {
    const int row = rowAt(position.y());
    if (row < 0 || columnAt(position.x()) < 0) return std::nullopt;
    return static_cast<std::size_t>(row);
}

QRect PaneView::RectOfRow(std::size_t row) const {
    return visualRect(model_.index(static_cast<int>(row), 0));
}

void PaneView::paintEvent(QPaintEvent* event) {
    if (!background_.isNull()) {
        QPainter painter(viewport());
        PaintTiles(painter, *viewport(), background_);
    }
    QTableView::paintEvent(event);
}

void PaneView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    Q_EMIT RoomChanged();
}

void PaneView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    // The tiles stand still while the rows move over them.
    if (!background_.isNull()) viewport()->update();
}

// The table's own handlers of both would change the current index by themselves.
void PaneView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
}

void PaneView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
}

void PaneView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    FitRowHeight();
    Q_EMIT RoomChanged();
}

}  // namespace vantrel
