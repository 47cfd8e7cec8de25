#include "views/forms/file_type_list_view.h"

#include <QKeyEvent>

#include "platform/forms/qt_text.h"

namespace vantrel {

FileTypeList::FileTypeList(QWidget* parent) : QListWidget(parent) {
    setObjectName(QStringLiteral("lstFileTypes"));
    setUniformItemSizes(true);
    connect(this, &QListWidget::itemClicked, this, [this] {
        if (Chosen) Chosen();
    });
}

void FileTypeList::Show(QListWidgetItem& item, const std::string& entry) {
    item.setText(DisplayQString(entry));
    item.setData(Qt::UserRole, ToQString(entry));
}

void FileTypeList::Fill(const std::vector<std::string>& entries) {
    clear();
    for (const std::string& entry : entries) Show(*new QListWidgetItem(this), entry);
}

std::string FileTypeList::CurrentEntry() const {
    const QListWidgetItem* item = currentItem();
    return item != nullptr ? FromQString(item->data(Qt::UserRole).toString()) : std::string();
}

void FileTypeList::SetCurrentEntry(const std::string& entry) {
    if (currentItem() != nullptr) Show(*currentItem(), entry);
}

void FileTypeList::keyPressEvent(QKeyEvent* event) {
    const int before = currentRow();
    QListWidget::keyPressEvent(event);
    if (Chosen && (currentRow() != before || event->key() == Qt::Key_Space)) Chosen();
}

}  // namespace vantrel
