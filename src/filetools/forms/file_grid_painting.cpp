// What a grid shows.
#include <QElapsedTimer>
#include <QLocale>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "filetools/forms/file_grid_view.h"
#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr int kMarkerSize = 16;
constexpr int kGap = 3;

QIcon PictureOf(RowMarker marker) {
    switch (marker) {
        case RowMarker::Arrow:
            return CommandIcon(QLatin1String("row-arrow"));
        case RowMarker::DifferArrow:
            return CommandIcon(QLatin1String("row-differ-arrow"));
        case RowMarker::OrphanArrow:
            return CommandIcon(QLatin1String("row-orphan-arrow"));
        case RowMarker::Bookmark:
            return CommandIcon(QLatin1String("row-bookmark"));
        case RowMarker::BookmarkArrow:
            return CommandIcon(QLatin1String("row-bookmark-arrow"));
        case RowMarker::None:
            break;
    }
    return {};
}

}  // namespace

// The time that one painting may take to find out which characters differ. Rows that get none of it are
// painted without, and again soon.
class FileGridView::Budget {
  public:
    Budget() { clock_.start(); }
    bool Take() {
        const bool isLeft = clock_.elapsed() < kMilliseconds;
        ranOut_ = ranOut_ || !isLeft;
        return isLeft;
    }
    bool RanOut() const { return ranOut_; }

  private:
    static constexpr qint64 kMilliseconds = 12;
    QElapsedTimer clock_;
    bool ranOut_ = false;
};

int FileGridView::MarkerWidth() const {
    return side_ == Side::Left ? kMarkerSize + 2 * kGap : 0;
}

int FileGridView::GutterWidth() const {
    // One blank, the digits of the last line and a point.
    const LineNumber lines = contents_.HasResult() ? contents_.grids.LineCount(side_) : 0;
    const auto digits = static_cast<double>(std::to_string(std::max(lines, 1)).size());
    return MarkerWidth() + static_cast<int>(std::ceil((digits + 2) * lines_.CellWidth())) + kGap;
}

void FileGridView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().brush(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    const int height = lines_.LineHeight();
    if (!contents_.HasResult()) {
        const std::string text = prompt_.toStdString();
        lines_.Paint(painter, TextColumns(text), 0, static_cast<std::int64_t>(text.size()),
                     QPointF(MarkerWidth() + lines_.CellWidth(), 0));
        return;
    }
    Budget budget;
    const int first = verticalScrollBar()->value();
    const int from = first + event->rect().top() / height;
    const int to = std::min(first + event->rect().bottom() / height, contents_.layout.Lines() - 1);
    for (int line = from; line <= to; ++line) PaintLine(painter, line, (line - first) * height, budget);
    if (budget.RanOut()) QTimer::singleShot(0, viewport(), [this] { viewport()->update(); });
}

void FileGridView::PaintLine(QPainter& painter, std::int32_t line, int top, Budget& budget) {
    const RowLayout::Place place = contents_.layout.At(line);
    const QRect rect(0, top, viewport()->width(), lines_.LineHeight());
    if (const FoldedRows::Fold* fold = contents_.layout.Folds().FoldAt(place.position))
        return PaintFold(painter, *fold, rect);
    const std::int32_t row = contents_.layout.Folds().RowAt(place.position);
    if (row > contents_.grids.Rows().LastRow()) return;
    const GridRowKind kind = contents_.grids.Rows().KindAt(row);
    QColor ground = colours_.OfRow(kind);
    if (kind != GridRowKind::Same && contents_.MovedAt(side_, row) != nullptr) ground = colours_.moved;
    if (ground.isValid()) painter.fillRect(rect.adjusted(MarkerWidth(), 0, 0, 0), ground);
    PaintText(painter, row, place.part, top, budget);
    if (place.part == 0) PaintGutter(painter, row, top);
    if (row != contents_.currentRow) return;
    QColor frame = palette().color(QPalette::Highlight);
    if (!hasFocus()) frame.setAlpha(110);
    const bool last = place.part + 1 == contents_.layout.HeightOfRow(row);
    if (place.part == 0) painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), 1), frame);
    if (last) painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), frame);
}

void FileGridView::PaintFold(QPainter& painter, const FoldedRows::Fold& fold, const QRect& rect) {
    painter.fillRect(rect, palette().brush(QPalette::AlternateBase));
    painter.save();
    painter.setPen(colours_.number);
    const int left = GutterWidth();
    const int middle = rect.center().y();
    painter.drawText(rect.adjusted(left, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     QStringLiteral("+  %1 equal lines").arg(locale().toString(fold.count)));
    painter.drawLine(rect.left() + kGap, middle, left - 2 * kGap, middle);
    painter.restore();
}

void FileGridView::PaintGutter(QPainter& painter, std::int32_t row, int top) {
    const int height = lines_.LineHeight();
    if (side_ == Side::Left) {
        const QIcon picture = PictureOf(contents_.MarkerOf(row));
        const int size = std::min(kMarkerSize, height);
        if (!picture.isNull()) picture.paint(&painter, QRect(kGap, top + (height - size) / 2, size, size));
    }
    const LineNumber line = contents_.grids.Rows().LineAt(side_, row);
    if (line == 0) return;
    const std::string number = " " + std::to_string(line) + ".";
    const double left = GutterWidth() - kGap - static_cast<double>(number.size()) * lines_.CellWidth();
    const QPen before = painter.pen();
    painter.setPen(colours_.number);
    lines_.Paint(painter, TextColumns(number), 0, static_cast<std::int64_t>(number.size()),
                 QPointF(left, top));
    painter.setPen(before);
}

TextColumns FileGridView::ColumnsOf(std::int32_t row) {
    const std::string_view text = contents_.grids.Line(side_, row);
    if (text.size() <= 2 * TextColumns::kStep) return TextColumns(text);
    const auto known = longLines_.find(row);
    if (known != longLines_.end()) return known->second;
    constexpr std::size_t kMostKept = 64;
    if (longLines_.size() >= kMostKept) longLines_.clear();
    return longLines_[row] = TextColumns(text);
}

const LineDifferences* FileGridView::DifferencesOf(std::int32_t row, Budget& budget) {
    if (!contents_.markCharacters || contents_.grids.Rows().KindAt(row) != GridRowKind::Changed)
        return nullptr;
    for (const Side side : kBothSides)
        if (contents_.grids.Line(side, row).empty() || contents_.MovedAt(side, row) != nullptr)
            return nullptr;
    const LineDifferences* found = contents_.differences.Find(row);
    if (found != nullptr || !budget.Take()) return found;
    return &contents_.differences.Make(reporter_, contents_.grids, row, contents_.ignoreCase);
}

void FileGridView::PaintText(QPainter& painter, std::int32_t row, std::int32_t part, int top,
                             Budget& budget) {
    const int left = GutterWidth();
    const std::int32_t width = contents_.layout.WrapWidth();
    const std::int64_t from =
        width > 0 ? std::int64_t{part} * width : std::int64_t{horizontalScrollBar()->value()};
    const std::int64_t to = from + (width > 0 ? width : ColumnsSeen() + 1);
    const TextColumns columns = ColumnsOf(row);
    if (from >= columns.Count()) return;
    const LineDifferences* differences = DifferencesOf(row, budget);
    painter.save();
    painter.setClipRect(QRect(left, top, viewport()->width() - left, lines_.LineHeight()));
    static const std::vector<TextRange> kNone;
    lines_.Paint(painter, columns, from, to, QPointF(left, top),
                 differences == nullptr ? kNone : (*differences)[side_],
                 {.ground = colours_.mark, .text = {}});
    painter.restore();
}

}  // namespace vantrel
