#include "filetools/forms/diffs_bar_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace vantrel {

DiffsBarView::DiffsBarView(QWidget* parent) : QWidget(parent), colours_(DiffColours::For(palette())) {
    setObjectName(QStringLiteral("pctDiffsBar"));
    setAccessibleName(QStringLiteral("Differences"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setCursor(Qt::PointingHandCursor);
}

QSize DiffsBarView::sizeHint() const {
    return {18, 100};
}

void DiffsBarView::Clear() {
    rows_ = nullptr;
    Measure();
}

void DiffsBarView::Draw(const AlignedRows& rows) {
    rows_ = &rows;
    Measure();
}

void DiffsBarView::Measure() {
    marks_.clear();
    if (rows_ != nullptr) marks_ = MarksOfBar(rows_->Blocks(), rows_->Rows() - 1, height());
    update();
}

void DiffsBarView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(rows_ == nullptr ? QPalette::Button : QPalette::Base));
    for (const BarMark& mark : marks_)
        painter.fillRect(QRect(0, mark.top, width(), mark.height), colours_.OfRow(mark.kind));
}

void DiffsBarView::resizeEvent(QResizeEvent*) {
    Measure();
    Q_EMIT Resized();
}

void DiffsBarView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT Clicked(event->pos().y());
}

void DiffsBarView::mouseMoveEvent(QMouseEvent* event) {
    if (rows_ != nullptr && event->buttons().testFlag(Qt::LeftButton))
        Q_EMIT Clicked(std::clamp(event->pos().y(), 0, height() - 1));
}

void DiffsBarView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    colours_ = DiffColours::For(palette());
    update();
}

BarMarkerView::BarMarkerView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("pctContainer"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

QSize BarMarkerView::sizeHint() const {
    return {10, 100};
}

void BarMarkerView::SetLine(std::optional<int> y) {
    line_ = y;
    update();
}

void BarMarkerView::paintEvent(QPaintEvent*) {
    if (!line_) return;
    constexpr int kLineWidth = 3;
    QPainter painter(this);
    painter.fillRect(QRect(0, *line_ - kLineWidth / 2, width(), kLineWidth),
                     DiffColours::For(palette()).difference);
}

}  // namespace vantrel
