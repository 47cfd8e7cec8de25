#pragma once

#include <QIcon>
#include <QLatin1String>

namespace vantrel {

// The pictures of the program: SVG, compiled in, crisp at every scale. Each follows the palette of the
// application: there is one set of colours for light windows and one for dark, and a selected row counts as
// dark or light by its highlight. A disabled picture is gray and pale.

enum class IconColours { Colour, Gray };

// "compare-folders", "compare-files", "dupes", "sync", "copy", "move", "delete", "options", "print", "exit",
// "help"; beside the path boxes "select-folder", "parent", "new-folder", "explore", "swap". Of the difference
// viewer: "select-file-one", "select-file-two", "previous-difference", "next-difference", "find",
// "find-next", "find-previous", "toggle-bookmark", "next-bookmark", "previous-bookmark", "clear-bookmarks",
// "go-back", and its row markers "row-arrow", "row-differ-arrow", "row-orphan-arrow", "row-bookmark",
// "row-bookmark-arrow". Of the printed page: "page-portrait", "page-landscape". The empty icon for any other
// name.
QIcon CommandIcon(QLatin1String name);

// For the result types 1 (newer) to 8 (orphan folder), drawn on a grid of 16; the empty icon for any other.
QIcon ResultTypeIcon(int type, IconColours colours = IconColours::Colour);

// For the method codes 0 to 7, twice as wide as high; the empty icon for any other.
QIcon SyncMethodIcon(int code);

// The program itself, the same on light and dark.
QIcon ProgramIcon();

}  // namespace vantrel
