#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <cstdint>
#include <vector>

#include "filetools/inline_differences.h"
#include "filetools/text_columns.h"

class QPainter;

namespace vantrel {

// How the characters of a line look that are marked; the others have the pen of the painter.
struct MarkStyle {
    QColor ground;                 // behind them; invalid for none
    QColor text;                   // invalid: as the others
    bool underlineBlanks = false;  // under blanks and tabs, which could not be seen otherwise
};

// Paints lines in the cells of a grid, each character in its column, so that only what is seen of a line is
// looked at. What would disturb a line or change its direction has stand-ins.
class LinePainter {
  public:
    // `font` should be one of fixed width.
    explicit LinePainter(const QFont& font);

    double CellWidth() const { return cellWidth_; }
    int LineHeight() const { return lineHeight_; }

    // Columns `from` to `to` of a line; `topLeft` is the corner of column `from`. The painter must have the
    // font.
    void Paint(QPainter& painter, const TextColumns& line, std::int64_t from, std::int64_t to,
               QPointF topLeft, const std::vector<TextRange>& marks = {}, const MarkStyle& style = {}) const;

  private:
    struct Piece;
    Piece NextPiece(std::string_view text, TextColumns::Place at, std::size_t limit, std::int64_t to) const;
    void PaintPiece(QPainter& painter, const Piece& piece, double x, double top,
                    const MarkStyle* style) const;

    double cellWidth_ = 1;
    int lineHeight_ = 1;
    double ascent_ = 1;
};

}  // namespace vantrel
