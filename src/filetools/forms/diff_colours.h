#pragma once

#include <QColor>
#include <QPalette>

#include "filetools/aligned_rows.h"

namespace vantrel {

// The colours of the difference viewer: one set for light windows and one for dark.
struct DiffColours {
    QColor orphan, changed;  // grounds of rows that differ: OrphanRowColour and ChangedRowColour
    QColor moved;            // ground of lines that stand at another place in the other file
    QColor mark;             // ground of differing characters inside a row
    QColor difference;       // of differing characters in the pair of lines, and of the line in the bar
    QColor number;           // of line numbers and folds

    static DiffColours For(const QPalette& palette);
    // Invalid for equal rows: they have the ground of the window.
    QColor OfRow(GridRowKind kind) const;
};

}  // namespace vantrel
