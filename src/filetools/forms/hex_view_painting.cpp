// What a view of a dump shows.
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "filetools/forms/hex_view.h"

namespace vantrel {

namespace {
constexpr int kDumpMargin = 6;
}  // namespace

double HexView::LeftOfColumn(std::size_t column) const {
    return kDumpMargin + static_cast<double>(column) * lines_.CellWidth() - horizontalScrollBar()->value();
}

int HexView::DumpWidth() const {
    const std::size_t columns = HexDumpCharacterColumn(kHexDumpBytes, contents_.OffsetDigits()) + 1;
    return 2 * kDumpMargin + static_cast<int>(std::ceil(static_cast<double>(columns) * lines_.CellWidth()));
}

QRect HexView::RectOfColumns(std::uint64_t line, std::size_t first, std::size_t end) const {
    const auto left = static_cast<int>(std::floor(LeftOfColumn(first)));
    const auto right = static_cast<int>(std::ceil(LeftOfColumn(end)));
    // Lines far away from what is seen have no place in the viewport.
    constexpr std::int64_t kFar = 10'000;
    const std::int64_t row =
        std::clamp(static_cast<std::int64_t>(line) - static_cast<std::int64_t>(top_), -kFar, kFar);
    return {left, static_cast<int>(row) * lines_.LineHeight(), right - left, lines_.LineHeight()};
}

template <typename Paint>
void HexView::ForBytes(std::uint64_t line, std::size_t first, std::size_t end, const Paint& paint) const {
    if (first >= end) return;
    const std::size_t digits = contents_.OffsetDigits();
    paint(RectOfColumns(line, HexDumpDigitsColumn(first, digits), HexDumpDigitsColumn(end - 1, digits) + 2));
    paint(RectOfColumns(line, HexDumpCharacterColumn(first, digits), HexDumpCharacterColumn(end, digits)));
}

QRect HexView::DigitsRect(std::uint64_t offset) const {
    const std::size_t column = HexDumpDigitsColumn(offset % kHexDumpBytes, contents_.OffsetDigits());
    return RectOfColumns(offset / kHexDumpBytes, column, column + 2);
}

QRect HexView::CharacterRect(std::uint64_t offset) const {
    const std::size_t column = HexDumpCharacterColumn(offset % kHexDumpBytes, contents_.OffsetDigits());
    return RectOfColumns(offset / kHexDumpBytes, column, column + 1);
}

QColor HexView::HighlightColour(QPalette::ColorRole role) const {
    return palette().color(hasFocus() ? QPalette::Active : QPalette::Inactive, role);
}

void HexView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().brush(QPalette::Base));
    if (!contents_.Has(side_)) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(kDumpMargin, 0, -kDumpMargin, 0),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, prompt_);
        return;
    }
    const int height = lines_.LineHeight();
    const std::uint64_t first = top_ + static_cast<std::uint64_t>(event->rect().top() / height);
    const std::uint64_t end = std::min(top_ + static_cast<std::uint64_t>(event->rect().bottom() / height) + 1,
                                       contents_.LineCount());
    for (std::uint64_t line = first; line < end; ++line) PaintLine(painter, line);
}

void HexView::PaintLine(QPainter& painter, std::uint64_t number) {
    const HexLine line = contents_.LineAt(side_, number);
    PaintMarks(painter, number, line);
    const std::size_t digits = contents_.OffsetDigits();
    PaintText(painter, number, line.text.substr(0, digits), 0, colours_.number);
    PaintText(painter, number, line.text, digits, palette().color(QPalette::Text));
    PaintSelection(painter, number, line.text);
}

void HexView::PaintText(QPainter& painter, std::uint64_t number, const std::string& text, std::size_t from,
                        const QColor& colour) {
    if (from >= text.size()) return;
    const QRect rect = RectOfColumns(number, from, text.size());
    painter.setPen(colour);
    lines_.Paint(painter, TextColumns(text), static_cast<std::int64_t>(from),
                 static_cast<std::int64_t>(text.size()), QPointF(LeftOfColumn(from), rect.top()));
}

void HexView::PaintMarks(QPainter& painter, std::uint64_t number, const HexLine& line) {
    for (std::size_t first = 0; first < kHexDumpBytes;) {
        const ByteMark mark = line.marks[first];
        std::size_t end = first + 1;
        while (end < kHexDumpBytes && line.marks[end] == mark) ++end;
        if (mark != ByteMark::None)
            ForBytes(number, first, end, [&](const QRect& rect) {
                painter.fillRect(rect, mark == ByteMark::Changed ? colours_.mark : colours_.orphan);
            });
        first = end;
    }
}

// One byte alone has only the frame of the cursor, so that its mark is seen.
void HexView::PaintSelection(QPainter& painter, std::uint64_t number, const std::string& text) {
    const ByteRange selection = contents_.Selection();
    const std::uint64_t begin = number * kHexDumpBytes;
    if (selection.size > 1 && selection.first < begin + kHexDumpBytes && selection.End() > begin) {
        const auto first = static_cast<std::size_t>(std::max(selection.first, begin) - begin);
        const auto end =
            static_cast<std::size_t>(std::min<std::uint64_t>(selection.End() - begin, kHexDumpBytes));
        ForBytes(number, first, end, [&](const QRect& rect) {
            painter.save();
            painter.setClipRect(rect);
            painter.fillRect(rect, HighlightColour(QPalette::Highlight));
            PaintText(painter, number, text, 0, HighlightColour(QPalette::HighlightedText));
            painter.restore();
        });
    }
    if (contents_.Cursor() / kHexDumpBytes != number) return;
    const auto cursor = static_cast<std::size_t>(contents_.Cursor() - begin);
    QColor frame = HighlightColour(selection.size > 1 ? QPalette::HighlightedText : QPalette::Text);
    if (!hasFocus()) frame.setAlpha(110);
    painter.setPen(frame);
    ForBytes(number, cursor, cursor + 1,
             [&](const QRect& rect) { painter.drawRect(rect.adjusted(0, 0, -1, -1)); });
}

}  // namespace vantrel
