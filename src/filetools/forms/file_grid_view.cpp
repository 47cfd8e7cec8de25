#include "filetools/forms/file_grid_view.h"
#include "platform/forms/accessible_role.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <limits>

namespace vantrel {

FileGridView::FileGridView(Side side, GridContents& contents, ErrorReporter& reporter, QWidget* parent)
    : QAbstractScrollArea(parent),
      side_(side),
      contents_(contents),
      reporter_(reporter),
      lines_(font()),
      colours_(DiffColours::For(palette())) {
    const bool left = side == Side::Left;
    setObjectName(left ? QStringLiteral("grdFileOne") : QStringLiteral("grdFileTwo"));
    setAccessibleName(left ? QStringLiteral("File One") : QStringLiteral("File Two"));
    // Both grids keep the same height and width whatever they show.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    SetAccessibleRole(*this, QAccessible::Document);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::ArrowCursor);
}

void FileGridView::SetPrompt(const QString& prompt) {
    prompt_ = prompt;
    viewport()->update();
}

void FileGridView::ContentsChanged() {
    longLines_.clear();
    FitScrollBars();
    viewport()->update();
}

void FileGridView::SetGridFont(const QFont& font) {
    setFont(font);
    lines_ = LinePainter(font);
    FitScrollBars();
    viewport()->update();
}

int FileGridView::LinesSeen() const {
    return std::max(1, viewport()->height() / lines_.LineHeight());
}

int FileGridView::ColumnsSeen() const {
    return std::max(1, static_cast<int>((viewport()->width() - GutterWidth()) / lines_.CellWidth()));
}

void FileGridView::FitScrollBars() {
    const int seen = LinesSeen();
    verticalScrollBar()->setPageStep(seen);
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setRange(0,
                                  contents_.HasResult() ? std::max(0, contents_.layout.Lines() - seen) : 0);
    const int columns = ColumnsSeen();
    const bool wraps = contents_.layout.WrapWidth() > 0;
    const std::int64_t most = contents_.HasResult() && !wraps ? contents_.widest + 1 - columns : 0;
    horizontalScrollBar()->setPageStep(columns);
    horizontalScrollBar()->setSingleStep(4);
    horizontalScrollBar()->setRange(
        0, static_cast<int>(std::clamp<std::int64_t>(most, 0, std::numeric_limits<int>::max() - columns)));
}

std::int32_t FileGridView::TopRow() const {
    return contents_.HasResult() ? contents_.layout.RowAt(verticalScrollBar()->value()) : 1;
}

void FileGridView::SetTopRow(std::int32_t row) {
    verticalScrollBar()->setValue(contents_.HasResult() ? contents_.layout.LineOfRow(row) : 0);
}

bool FileGridView::IsRowVisible(std::int32_t row) const {
    const int top = verticalScrollBar()->value();
    const int line = contents_.layout.LineOfRow(row);
    const int height = std::min(contents_.layout.HeightOfRow(row), LinesSeen());
    return line >= top && line + height <= top + LinesSeen();
}

std::int32_t FileGridView::RowAt(const QPoint& point) const {
    if (!contents_.HasResult() || point.y() < 0) return 0;
    const int line = verticalScrollBar()->value() + point.y() / lines_.LineHeight();
    if (line >= contents_.layout.Lines() - 1) return 0;
    return contents_.layout.RowAt(line);
}

QRect FileGridView::RectOfRow(std::int32_t row) const {
    const int line = contents_.layout.LineOfRow(row) - verticalScrollBar()->value();
    return {0, line * lines_.LineHeight(), viewport()->width(), lines_.LineHeight()};
}

void FileGridView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    FitScrollBars();
    Q_EMIT Resized();
}

void FileGridView::scrollContentsBy(int, int) {
    viewport()->update();
}

void FileGridView::mousePressEvent(QMouseEvent* event) {
    const std::int32_t row = RowAt(event->pos());
    if (event->button() != Qt::LeftButton || row == 0) return;
    const int line = verticalScrollBar()->value() + event->pos().y() / lines_.LineHeight();
    if (contents_.layout.Folds().FoldAt(contents_.layout.At(line).position) != nullptr)
        Q_EMIT FoldOpened(row);
    else
        Q_EMIT RowPressed(row);
}

void FileGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    const std::int32_t row = RowAt(event->pos());
    if (event->button() == Qt::LeftButton && row != 0) Q_EMIT RowDoubleClicked(row);
}

void FileGridView::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT RowHovered(RowAt(event->pos()));
}

void FileGridView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint point =
        byKey ? viewport()->mapToGlobal(RectOfRow(contents_.currentRow).bottomLeft()) : event->globalPos();
    Q_EMIT MenuRequested(point);
}

// The row that a key leads to; 0 where it leads nowhere. Folds are stepped over.
std::int32_t FileGridView::GoalOfKey(int key) const {
    const FoldedRows& folds = contents_.layout.Folds();
    const std::int32_t last = folds.Positions() - 2;
    const std::int32_t now = folds.PositionOf(contents_.currentRow);
    std::int32_t goal = now + 1;
    int step = 1;
    switch (key) {
        case Qt::Key_Up:
            goal = now - 1;
            step = -1;
            break;
        case Qt::Key_Down:
            break;
        case Qt::Key_PageUp:
            goal = contents_.layout
                       .At(std::max(0, contents_.layout.LineOfRow(contents_.currentRow) - LinesSeen()))
                       .position;
            goal = std::min(goal, now - 1);
            step = -1;
            break;
        case Qt::Key_PageDown:
            goal = contents_.layout
                       .At(std::min(contents_.layout.Lines() - 1,
                                    contents_.layout.LineOfRow(contents_.currentRow) + LinesSeen()))
                       .position;
            goal = std::max(goal, now + 1);
            break;
        case Qt::Key_Home:
            goal = 1;
            break;
        case Qt::Key_End:
            goal = last;
            step = -1;
            break;
        default:
            return 0;
    }
    goal = std::clamp(goal, std::min(1, last), last);
    while (goal >= 1 && goal <= last && folds.FoldAt(goal) != nullptr) goal += step;
    return goal >= 1 && goal <= last ? folds.RowAt(goal) : 0;
}

// A wrapped row can be higher than the grid: keys first show what is left of it.
bool FileGridView::ScrollInsideRow(int key) {
    const bool page = key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    const bool up = key == Qt::Key_PageUp || key == Qt::Key_Up;
    if (!page && key != Qt::Key_Up && key != Qt::Key_Down) return false;
    const int top = verticalScrollBar()->value();
    const int line = contents_.layout.LineOfRow(contents_.currentRow);
    const int end = line + contents_.layout.HeightOfRow(contents_.currentRow);
    const int step = page ? LinesSeen() : 1;
    if (end - line <= LinesSeen() || end <= top || line >= top + LinesSeen()) return false;
    if (up ? line >= top : end <= top + LinesSeen()) return false;
    verticalScrollBar()->setValue(up ? std::max(line, top - step) : std::min(end - LinesSeen(), top + step));
    return true;
}

// The first hidden row of the fold next to the current row, below or else above; 0 for none.
std::int32_t FileGridView::NextFold() const {
    const FoldedRows& folds = contents_.layout.Folds();
    const std::int32_t now = folds.PositionOf(contents_.currentRow);
    const std::int32_t last = folds.Positions() - 2;
    for (std::int32_t distance = 1; distance <= last; ++distance)
        for (const std::int32_t position : {now + distance, now - distance})
            if (const FoldedRows::Fold* fold = folds.FoldAt(position)) return fold->row;
    return 0;
}

void FileGridView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        Q_EMIT CopyRequested();
        return;
    }
    const int sideways = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
    if (sideways != 0) {
        QScrollBar* bar = horizontalScrollBar();
        const bool page = event->modifiers().testFlag(Qt::ControlModifier);
        bar->setValue(bar->value() + sideways * (page ? bar->pageStep() : bar->singleStep()));
        return;
    }
    if (!contents_.HasResult()) return QAbstractScrollArea::keyPressEvent(event);
    if (event->key() == Qt::Key_Plus && event->modifiers().testFlag(Qt::ControlModifier) == false) {
        if (const std::int32_t row = NextFold(); row > 0) Q_EMIT FoldOpened(row);
        return;
    }
    if (ScrollInsideRow(event->key())) return;
    const std::int32_t row = GoalOfKey(event->key());
    if (row == 0) return event->ignore();
    // Keys move row by row, so the top goes along only as far as it must.
    if (!IsRowVisible(row)) {
        const bool down = row > contents_.currentRow;
        const int height = std::min(contents_.layout.HeightOfRow(row), LinesSeen());
        const int line = contents_.layout.LineOfRow(row);
        verticalScrollBar()->setValue(down ? line + height - LinesSeen() : line);
    }
    Q_EMIT RowPressed(row);
}

void FileGridView::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    const int delta = event->angleDelta().y();
    if (delta != 0) Q_EMIT ZoomRequested(delta > 0 ? 1 : -1);
    event->accept();
}

void FileGridView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void FileGridView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void FileGridView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        colours_ = DiffColours::For(palette());
        viewport()->update();
    }
}

}  // namespace vantrel
