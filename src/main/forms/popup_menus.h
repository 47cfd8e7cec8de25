#pragma once

#include <QPoint>

#include "core/result_row.h"
#include "views/forms/commands.h"
#include "views/result_panes.h"

namespace vantrel {

// What a press of the right button on the selected item of a pane opens; `item` is null without one.
enum class PopupKind { WholeFileMenu, FilePopup, FolderPopup };
PopupKind PopupFor(const ResultRow* item);

// What a double click on a real row does.
enum class DoubleClickKind { OpenFile, FileMenu, SubFolderMenu, ExploreFolder };
DoubleClickKind DoubleClickFor(const ResultRow& row);

// The menus that open in the panes. They do nothing while a job runs.
class PopupMenus {
  public:
    PopupMenus(Commands& commands, const ResultPanes& panes) : commands_(commands), panes_(panes) {}

    // Gets the menu of the selected item ready, with its captions and the items that fit it.
    QMenu* Prepare(Side side);
    void Open(Side side, const QPoint& globalPosition);
    void DoubleClick(Side side, std::size_t row, const QPoint& globalPosition);

  private:
    QMenu* WithDefault(const char* menu, const char* item);

    Commands& commands_;
    const ResultPanes& panes_;
};

}  // namespace vantrel
