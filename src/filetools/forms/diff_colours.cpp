#include "filetools/forms/diff_colours.h"

namespace vantrel {
namespace {

QColor FromValue(std::int32_t value) {
    return {value & 0xFF, value >> 8 & 0xFF, value >> 16 & 0xFF};
}

}  // namespace

DiffColours DiffColours::For(const QPalette& palette) {
    if (palette.color(QPalette::Base).lightness() < 128)
        return {.orphan = QColor(92, 62, 30),
                .changed = QColor(50, 54, 98),
                .moved = QColor(30, 74, 52),
                .mark = QColor(88, 94, 186),
                .difference = QColor(255, 122, 112),
                .number = QColor(150, 158, 170)};
    return {.orphan = FromValue(kOrphanRowColour),
            .changed = FromValue(kChangedRowColour),
            .moved = QColor(206, 238, 214),
            .mark = QColor(166, 172, 255),
            .difference = QColor(255, 0, 0),
            .number = QColor(104, 112, 124)};
}

QColor DiffColours::OfRow(GridRowKind kind) const {
    switch (kind) {
        case GridRowKind::Orphan:
            return orphan;
        case GridRowKind::Changed:
            return changed;
        case GridRowKind::Same:
            break;
    }
    return {};
}

}  // namespace vantrel
