#include "main/forms/popup_menus.h"

#include <QAction>
#include <QMenu>

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// In a caption an ampersand marks a key unless it is doubled.
QString Quoted(std::string_view name) {
    return QLatin1Char('"') + DisplayQString(name).replace(QLatin1Char('&'), QStringLiteral("&&")) +
           QLatin1Char('"');
}

}  // namespace

PopupKind PopupFor(const ResultRow* item) {
    if (!item || !item->IsReal()) return PopupKind::WholeFileMenu;
    return item->kind == RowKind::Folder ? PopupKind::FolderPopup : PopupKind::FilePopup;
}

DoubleClickKind DoubleClickFor(const ResultRow& row) {
    if (row.kind == RowKind::Folder)
        return row.type == ResultType::DifferentFolder ? DoubleClickKind::SubFolderMenu
                                                       : DoubleClickKind::ExploreFolder;
    return row.type == ResultType::Orphan ? DoubleClickKind::OpenFile : DoubleClickKind::FileMenu;
}

QMenu* PopupMenus::WithDefault(const char* menu, const char* item) {
    QMenu* found = commands_.Menu(menu);
    found->setDefaultAction(commands_.Action(item));
    return found;
}

QMenu* PopupMenus::Prepare(Side side) {
    const ResultRow* item = panes_.Pane(side).SelectedObject();
    switch (PopupFor(item)) {
        case PopupKind::WholeFileMenu:
            return commands_.Menu("mnuFile");
        case PopupKind::FilePopup:
            commands_.Action("mnuFilePopupShowDifferences")->setVisible(item->type != ResultType::Orphan);
            return WithDefault("mnuFilePopup", "mnuFilePopupOpen");
        case PopupKind::FolderPopup:
            break;
    }
    const bool differs = item->type == ResultType::DifferentFolder;
    commands_.Action("mnuFolderPopupHyphen0")->setVisible(differs);
    commands_.Action("mnuFolderPopupViewDifferences")->setVisible(differs);
    const QString name = Quoted(item->text.substr(1));
    commands_.Action("mnuGoToFolderThisSide")
        ->setText(QStringLiteral("Change this side's folder to ") + name);
    commands_.Action("mnuGoToFolderBothSidesRunCompare")
        ->setText(QStringLiteral("Compare this sub-folder to ") + name +
                  QStringLiteral(" in the other pane"));
    return WithDefault("mnuFolderPopup", "mnuFolderPopupExplore");
}

void PopupMenus::Open(Side side, const QPoint& globalPosition) {
    if (commands_.IsBusy()) return;
    Prepare(side)->popup(globalPosition);
}

void PopupMenus::DoubleClick(Side side, std::size_t row, const QPoint& globalPosition) {
    const PaneList& list = panes_.Pane(side);
    if (commands_.IsBusy() || row >= list.Count() || !list[row].IsReal()) return;
    switch (DoubleClickFor(list[row])) {
        case DoubleClickKind::OpenFile:
            commands_.Run("mnuFileOpenFile");
            break;
        case DoubleClickKind::FileMenu:
            WithDefault("mnuDiffFileDblClick", "mnuDblClickFileOpen")->popup(globalPosition);
            break;
        case DoubleClickKind::SubFolderMenu:
            WithDefault("mnuDiffSubDirDblClick", "mnuDblClickExplore")->popup(globalPosition);
            break;
        case DoubleClickKind::ExploreFolder:
            commands_.Run("mnuFolderPopupExplore");
            break;
    }
}

}  // namespace vantrel
