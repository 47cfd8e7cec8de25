#include "dupes/forms/search_folder_list.h"

#include <QDropEvent>
#include <QMimeData>
#include <algorithm>

#include "platform/forms/qt_text.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {

namespace {

// The source keeps what it has: only its path is used.
void AcceptPaths(QDropEvent* event) {
    if (!event->mimeData()->hasUrls()) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

}  // namespace

SearchFolderList::SearchFolderList(QWidget* parent) : QListWidget(parent) {
    setObjectName(QStringLiteral("lstFolders"));
    setAccessibleName(QStringLiteral("Folders to search"));
    setAcceptDrops(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

void SearchFolderList::SetFolders(const std::vector<Folder>& folders) {
    const auto selected = SelectedFolder();
    clear();
    for (const Folder& folder : folders) {
        auto* item = new QListWidgetItem(DisplayQString(folder.path), this);
        if (folder.isProtected) item->setText(item->text() + QStringLiteral("   (protected)"));
        item->setToolTip(WithLineBreaks(item->text()));
    }
    if (selected && !folders.empty())
        setCurrentRow(static_cast<int>(std::min(*selected, folders.size() - 1)));
}

std::optional<std::size_t> SearchFolderList::SelectedFolder() const {
    const QList<QListWidgetItem*> items = selectedItems();
    if (items.isEmpty()) return std::nullopt;
    return static_cast<std::size_t>(row(items.front()));
}

void SearchFolderList::dragEnterEvent(QDragEnterEvent* event) {
    AcceptPaths(event);
}

void SearchFolderList::dragMoveEvent(QDragMoveEvent* event) {
    AcceptPaths(event);
}

void SearchFolderList::dropEvent(QDropEvent* event) {
    AcceptPaths(event);
    if (event->isAccepted()) Q_EMIT PathsDropped(DroppedPaths(*event->mimeData()));
}

QSize SearchFolderList::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 50, fontMetrics().lineSpacing() * 6};
}

}  // namespace vantrel
