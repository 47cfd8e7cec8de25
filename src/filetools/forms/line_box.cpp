#include "filetools/forms/line_box.h"
#include "platform/forms/accessible_role.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {
constexpr int kLineBoxMargin = 4;
constexpr int kLinesShown = 3;
}  // namespace

LineBox::LineBox(int index, QWidget* parent)
    : QAbstractScrollArea(parent), lines_(font()), colours_(DiffColours::For(palette())) {
    setObjectName(QStringLiteral("rtfLineDiff(%1)").arg(index));
    setAccessibleName(index == 0 ? QStringLiteral("Line of File One") : QStringLiteral("Line of File Two"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    SetAccessibleRole(*this, QAccessible::Document);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
}

QSize LineBox::sizeHint() const {
    return {400, kLinesShown * lines_.LineHeight() + 2 * (kLineBoxMargin + frameWidth())};
}

void LineBox::SetBoxFont(const QFont& font) {
    setFont(font);
    lines_ = LinePainter(font);
    updateGeometry();
    FitScrollBar();
}

void LineBox::SetLine(std::string text, std::vector<TextRange> marks, bool underlineBlanks) {
    text_ = std::move(text);
    columns_ = TextColumns(text_);
    marks_ = std::move(marks);
    underlineBlanks_ = underlineBlanks;
    constexpr std::size_t kMostSpoken = 500;
    setAccessibleDescription(DisplayQString(std::string_view(text_).substr(0, kMostSpoken)));
    FitScrollBar();
    verticalScrollBar()->setValue(0);
}

std::int64_t LineBox::WrapWidth() const {
    return std::max<std::int64_t>(
        1, static_cast<std::int64_t>((viewport()->width() - 2 * kLineBoxMargin) / lines_.CellWidth()));
}

void LineBox::FitScrollBar() {
    const int seen = std::max(1, (viewport()->height() - 2 * kLineBoxMargin) / lines_.LineHeight());
    const std::int64_t all = (columns_.Count() + WrapWidth() - 1) / WrapWidth();
    verticalScrollBar()->setPageStep(seen);
    verticalScrollBar()->setRange(
        0, static_cast<int>(std::clamp<std::int64_t>(all - seen, 0, std::numeric_limits<int>::max() - seen)));
    viewport()->update();
}

void LineBox::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Text));
    const std::int64_t width = WrapWidth();
    const int rows = viewport()->height() / lines_.LineHeight() + 1;
    const MarkStyle style{.ground = {}, .text = colours_.difference, .underlineBlanks = underlineBlanks_};
    for (int row = 0; row < rows; ++row) {
        const std::int64_t from = (std::int64_t{verticalScrollBar()->value()} + row) * width;
        if (from >= columns_.Count()) return;
        lines_.Paint(painter, columns_, from, from + width,
                     QPointF(kLineBoxMargin, kLineBoxMargin + row * lines_.LineHeight()), marks_, style);
    }
}

void LineBox::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    FitScrollBar();
}

void LineBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(ToQString(text_));
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void LineBox::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
    const int delta = event->angleDelta().y();
    if (delta != 0) Q_EMIT ZoomRequested(delta > 0 ? 1 : -1);
    event->accept();
}

void LineBox::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    colours_ = DiffColours::For(palette());
    viewport()->update();
}

void LineBox::scrollContentsBy(int, int) {
    viewport()->update();
}

}  // namespace vantrel
