#include "filetools/forms/hex_view.h"
#include "platform/forms/accessible_role.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "platform/forms/qt_text.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {

HexView::HexView(Side side, HexContents& contents, QWidget* parent)
    : QAbstractScrollArea(parent),
      side_(side),
      contents_(contents),
      lines_(font()),
      colours_(DiffColours::For(palette())) {
    const bool left = side == Side::Left;
    setObjectName(left ? QStringLiteral("rtfHexDump") : QStringLiteral("rtfHexDumpBeside"));
    setAccessibleName(left ? QStringLiteral("Hex Dump") : QStringLiteral("Hex Dump of the File Beside"));
    SetAccessibleRole(*this, QAccessible::Document);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setCursor(Qt::IBeamCursor);
    verticalScrollBar()->installEventFilter(this);
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &HexView::OnBarAction);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &HexView::OnBarMoved);
}

void HexView::SetPrompt(const QString& prompt) {
    prompt_ = prompt;
    viewport()->update();
}

void HexView::SetViewFont(const QFont& font) {
    setFont(font);
    lines_ = LinePainter(font);
    FitScrollBars();
    viewport()->update();
}

void HexView::ContentsChanged() {
    FitScrollBars();
    viewport()->update();
}

int HexView::LinesSeen() const {
    return std::max(1, viewport()->height() / lines_.LineHeight());
}

void HexView::FitScrollBars() {
    const auto seen = static_cast<std::uint64_t>(LinesSeen());
    const std::uint64_t lines = contents_.LineCount();
    scale_ = ScrollScale(lines > seen ? lines - seen : 0);
    verticalScrollBar()->setPageStep(LinesSeen());
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setRange(0, scale_.Maximum());
    SetTop(top_);
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(static_cast<int>(lines_.CellWidth()) * 4);
    horizontalScrollBar()->setRange(0, std::max(0, DumpWidth() - viewport()->width()));
}

void HexView::SetTop(std::uint64_t line) {
    line = std::min(line, scale_.LastTop());
    const bool moves = line != top_;
    top_ = line;
    // One position of the bar can stand for several lines: top_ is set first, and OnBarMoved leaves it alone.
    verticalScrollBar()->setValue(scale_.PositionOf(top_));
    if (!moves) return;
    viewport()->update();
    Q_EMIT TopChanged(top_);
}

// The bar is dragged, or something else has moved it.
void HexView::OnBarMoved(int position) {
    if (position != scale_.PositionOf(top_)) SetTop(scale_.TopOf(position));
}

// Its arrows and its trough go by lines and pages, whatever a position of the bar stands for.
void HexView::OnBarAction(int action) {
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            ScrollBy(1);
            break;
        case QAbstractSlider::SliderSingleStepSub:
            ScrollBy(-1);
            break;
        case QAbstractSlider::SliderPageStepAdd:
            ScrollBy(LinesSeen());
            break;
        case QAbstractSlider::SliderPageStepSub:
            ScrollBy(-LinesSeen());
            break;
        default:
            return;
    }
    verticalScrollBar()->setSliderPosition(scale_.PositionOf(top_));
}

void HexView::ScrollBy(std::int64_t lines) {
    if (lines < 0)
        SetTop(top_ - std::min(top_, static_cast<std::uint64_t>(-lines)));
    else
        SetTop(top_ + static_cast<std::uint64_t>(lines));
}

bool HexView::IsSeen(std::uint64_t offset) const {
    const std::uint64_t line = offset / kHexDumpBytes;
    return line >= top_ && line - top_ < static_cast<std::uint64_t>(LinesSeen());
}

std::optional<std::uint64_t> HexView::OffsetAt(const QPoint& point) const {
    if (contents_.IsEmpty()) return std::nullopt;
    const int row = point.y() < 0 ? -1 : point.y() / lines_.LineHeight();
    if (row < 0 && top_ == 0) return 0;
    const std::uint64_t line =
        std::min(row < 0 ? top_ - 1 : top_ + static_cast<std::uint64_t>(row), contents_.LineCount() - 1);
    const std::size_t digits = contents_.OffsetDigits();
    const bool inCharacters =
        point.x() >= LeftOfColumn(HexDumpCharacterColumn(0, digits)) - lines_.CellWidth();
    std::size_t byte = 0;
    while (byte + 1 < kHexDumpBytes &&
           point.x() >= LeftOfColumn(inCharacters ? HexDumpCharacterColumn(byte + 1, digits)
                                                  : HexDumpDigitsColumn(byte + 1, digits)))
        ++byte;
    return std::min(line * kHexDumpBytes + byte, contents_.Size() - 1);
}

void HexView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    FitScrollBars();
}

void HexView::scrollContentsBy(int, int) {
    viewport()->update();
}

void HexView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    if (const auto offset = OffsetAt(event->pos()))
        Q_EMIT OffsetChosen(*offset, extends ? SelectionStep::Extend : SelectionStep::Move);
}

void HexView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) return;
    if (const auto offset = OffsetAt(event->pos())) Q_EMIT OffsetChosen(*offset, SelectionStep::Extend);
}

void HexView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    Q_EMIT MenuRequested(byKey ? viewport()->mapToGlobal(DigitsRect(contents_.Cursor()).bottomLeft())
                               : event->globalPos());
}

// Keys that move what is seen and leave the cursor where it is.
bool HexView::ScrollsByKey(const QKeyEvent& event) {
    if (!event.modifiers().testFlag(Qt::ControlModifier)) return false;
    if (event.key() == Qt::Key_Up)
        ScrollBy(-1);
    else if (event.key() == Qt::Key_Down)
        ScrollBy(1);
    else
        return false;
    return true;
}

// The byte that a key leads to.
std::optional<std::uint64_t> HexView::GoalOfKey(const QKeyEvent& event) const {
    const std::uint64_t now = contents_.Cursor(), last = contents_.Size() - 1;
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    const std::uint64_t inLine = now % kHexDumpBytes;
    const auto linesBack = [&](std::uint64_t lines) {
        return now - std::min(lines, now / kHexDumpBytes) * kHexDumpBytes;
    };
    const auto linesOn = [&](std::uint64_t lines) {
        lines = std::min(lines, last / kHexDumpBytes - now / kHexDumpBytes);
        return std::min(now + lines * kHexDumpBytes, last);
    };
    const auto page = static_cast<std::uint64_t>(LinesSeen());
    switch (event.key()) {
        case Qt::Key_Left:
            return now - std::min<std::uint64_t>(now, 1);
        case Qt::Key_Right:
            return std::min(now + 1, last);
        case Qt::Key_Up:
            return linesBack(1);
        case Qt::Key_Down:
            return linesOn(1);
        case Qt::Key_PageUp:
            return linesBack(page);
        case Qt::Key_PageDown:
            return linesOn(page);
        case Qt::Key_Home:
            return control ? 0 : now - inLine;
        case Qt::Key_End:
            return control ? last : std::min(now - inLine + kHexDumpBytes - 1, last);
        default:
            return std::nullopt;
    }
}

void HexView::keyPressEvent(QKeyEvent* event) {
    if (contents_.IsEmpty()) return QAbstractScrollArea::keyPressEvent(event);
    if (ScrollsByKey(*event)) return;
    const std::optional<std::uint64_t> goal = GoalOfKey(*event);
    if (!goal) return event->ignore();
    // A page goes with the cursor, which keeps its place in the view.
    if (event->key() == Qt::Key_PageUp) ScrollBy(-LinesSeen());
    if (event->key() == Qt::Key_PageDown) ScrollBy(LinesSeen());
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    Q_EMIT OffsetChosen(*goal, extends ? SelectionStep::Extend : SelectionStep::Move);
}

void HexView::wheelEvent(QWheelEvent* event) {
    const QPoint delta = event->angleDelta();
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (delta.y() != 0) Q_EMIT ZoomRequested(delta.y() > 0 ? 1 : -1);
        return;
    }
    if (std::abs(delta.x()) > std::abs(delta.y())) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - delta.x());
        return;
    }
    constexpr int kNotch = 120;
    wheelRest_ += delta.y() * QApplication::wheelScrollLines();
    ScrollBy(-(wheelRest_ / kNotch));
    wheelRest_ %= kNotch;
}

// The wheel over the bar goes by lines as well.
bool HexView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != verticalScrollBar() || event->type() != QEvent::Wheel)
        return QAbstractScrollArea::eventFilter(watched, event);
    wheelEvent(static_cast<QWheelEvent*>(event));
    return true;
}

void HexView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    Q_EMIT Focused();
}

void HexView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void HexView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        colours_ = DiffColours::For(palette());
        viewport()->update();
    }
}

void HexView::dragEnterEvent(QDragEnterEvent* event) {
    if (!event->mimeData()->hasUrls()) return event->ignore();
    // The source keeps what it has: only its path is used.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void HexView::dragMoveEvent(QDragMoveEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void HexView::dropEvent(QDropEvent* event) {
    const std::vector<std::string> paths = DroppedPaths(*event->mimeData());
    if (paths.empty()) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT FilesDropped(paths);
}

}  // namespace vantrel
