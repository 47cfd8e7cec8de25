#include "filetools/forms/line_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "filetools/visible_text.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

bool IsPlainLetter(char letter) {
    return letter >= 0x20 && letter < 0x7F;
}

}  // namespace

// Characters that are painted in one go: a run of plain ones, or one other with what combines with it.
struct LinePainter::Piece {
    std::string_view text;
    int columns = 0;
};

LinePainter::LinePainter(const QFont& font) {
    constexpr int kSample = 64;
    const QFontMetricsF metrics(font);
    cellWidth_ = std::max(1.0, metrics.horizontalAdvance(QString(kSample, QLatin1Char('0'))) / kSample);
    lineHeight_ = std::max(1, static_cast<int>(std::ceil(metrics.height())) + 1);
    ascent_ = metrics.ascent();
}

LinePainter::Piece LinePainter::NextPiece(std::string_view text, TextColumns::Place at, std::size_t limit,
                                          std::int64_t to) const {
    std::size_t end = at.offset;
    while (end < limit && at.column + static_cast<std::int64_t>(end - at.offset) < to &&
           IsPlainLetter(text[end]))
        ++end;
    if (end > at.offset) return {text.substr(at.offset, end - at.offset), static_cast<int>(end - at.offset)};
    const int columns = ColumnsOfCharacter(NextCharacter(text, end));
    constexpr std::size_t kMostCombined = 64;  // bytes
    while (end < text.size() && end - at.offset < kMostCombined) {
        std::size_t next = end;
        if (ColumnsOfCharacter(NextCharacter(text, next)) != 0) break;
        end = next;
    }
    return {text.substr(at.offset, end - at.offset), columns};
}

void LinePainter::PaintPiece(QPainter& painter, const Piece& piece, double x, double top,
                             const MarkStyle* style) const {
    if (style != nullptr && style->ground.isValid())
        painter.fillRect(QRectF(x, top, piece.columns * cellWidth_, lineHeight_), style->ground);
    const QPen before = painter.pen();
    if (style != nullptr && style->text.isValid()) painter.setPen(style->text);
    const bool isTab = piece.text == "\t";
    if (!isTab) painter.drawText(QPointF(x, top + ascent_), ToQString(VisibleText(piece.text)));
    if (style != nullptr && style->underlineBlanks) {
        const double y = top + ascent_ + 2;
        if (isTab) painter.drawLine(QPointF(x, y), QPointF(x + piece.columns * cellWidth_ - 1, y));
        for (std::size_t index = 0; index < piece.text.size(); ++index)
            if (piece.text[index] == ' ')
                painter.drawLine(QPointF(x + static_cast<double>(index) * cellWidth_, y),
                                 QPointF(x + static_cast<double>(index + 1) * cellWidth_ - 1, y));
    }
    painter.setPen(before);
}

void LinePainter::Paint(QPainter& painter, const TextColumns& line, std::int64_t from, std::int64_t to,
                        QPointF topLeft, const std::vector<TextRange>& marks, const MarkStyle& style) const {
    const std::string_view text = line.Text();
    TextColumns::Place at = line.At(from);
    auto mark =
        std::upper_bound(marks.begin(), marks.end(), at.offset,
                         [](std::size_t offset, const TextRange& range) { return offset < range.end; });
    while (at.offset < text.size() && at.column < to) {
        while (mark != marks.end() && mark->end <= at.offset) ++mark;
        const bool marked = mark != marks.end() && mark->begin <= at.offset;
        const std::size_t limit = mark == marks.end() ? text.size() : marked ? mark->end : mark->begin;
        const Piece piece = NextPiece(text, at, std::min(limit, text.size()), to);
        const double x = topLeft.x() + static_cast<double>(at.column - from) * cellWidth_;
        PaintPiece(painter, piece, x, topLeft.y(), marked ? &style : nullptr);
        at = {at.offset + piece.text.size(), at.column + piece.columns};
    }
}

}  // namespace vantrel
