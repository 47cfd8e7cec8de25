#include "main/forms/frm_specify_sub_folder.h"

#include <QDialogButtonBox>
#include <QStringListModel>
#include <QVBoxLayout>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {

frmSpecifySubFolder::frmSpecifySubFolder(const PaneList& pane, MessagePort& messages, QWidget* parent)
    : QDialog(parent), lstSubFolders(new QListView(this)), messages_(messages) {
    setObjectName(QStringLiteral("frmSpecifySubFolder"));
    setWindowTitle(QStringLiteral("Select a Sub-Folder"));
    QStringList names;
    for (std::size_t row = 0; row < pane.Count(); ++row) {
        if (pane[row].type != ResultType::DifferentFolder) continue;
        rows_.push_back(row);
        names.push_back(DisplayQString(pane[row].text));
    }
    lstSubFolders->setObjectName(QStringLiteral("lstSubFolders"));
    lstSubFolders->setAccessibleName(QStringLiteral("Sub-Folders with Differences"));
    lstSubFolders->setUniformItemSizes(true);
    lstSubFolders->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstSubFolders->setTextElideMode(Qt::ElideMiddle);
    lstSubFolders->setModel(new QStringListModel(names, this));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    OKButton = buttons->button(QDialogButtonBox::Ok);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton = buttons->button(QDialogButtonBox::Cancel);
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(lstSubFolders, 1);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmSpecifySubFolder::TakeChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(lstSubFolders, &QListView::doubleClicked, this, &frmSpecifySubFolder::TakeChosen);
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 18});
}

std::optional<std::size_t> frmSpecifySubFolder::ShowForm() {
    if (rows_.empty()) {
        messages_.ShowInformationMessage("No Sub-Folders To Display",
                                         "There are no sub-folders with differences");
        return std::nullopt;
    }
    lstSubFolders->setCurrentIndex(lstSubFolders->model()->index(0, 0));
    OKButton->setFocus();
    if (exec() != Accepted) return std::nullopt;
    return rows_[static_cast<std::size_t>(lstSubFolders->selectionModel()->selectedIndexes().front().row())];
}

void frmSpecifySubFolder::TakeChosen() {
    if (lstSubFolders->selectionModel()->hasSelection()) return accept();
    messages_.ShowInformationMessage("No Folder Selected",
                                     "Please select a folder before pressing the OK button");
}

}  // namespace vantrel
