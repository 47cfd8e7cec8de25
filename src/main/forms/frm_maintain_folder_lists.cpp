#include "main/forms/frm_maintain_folder_lists.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

// The item shows what is safe to show, and holds the path itself.
void AddItem(QListWidget& list, const std::string& path) {
    auto* item = new QListWidgetItem(DisplayQString(path), &list);
    item->setData(Qt::UserRole, ToQString(path));
    item->setToolTip(WithLineBreaks(DisplayQString(path)));
}

std::string PathOf(const QListWidgetItem& item) {
    return FromQString(item.data(Qt::UserRole).toString());
}

// As comparisons write folders into the lists. The text of an empty path box is no folder.
std::string FolderFromUser(const QString& typed, const ProgramFolders& folders) {
    const std::string path = PathFromUser(FromQString(typed.trimmed()));
    if (path.empty() || path == kNoFolderPrompt) return {};
    return ProperCase(NormalizePath(path.starts_with('/') ? path : folders.startDir + path));
}

}  // namespace

frmMaintainFolderLists::frmMaintainFolderLists(const Toolbox& tools, const PathHistory::Lists& lists,
                                               Save save, QWidget* parent)
    : QDialog(parent),
      optFolderList{
          {Named(new QRadioButton(QStringLiteral("&Left Folder List"), this), "optFolderList(0)"),
           Named(new QRadioButton(QStringLiteral("&Right Folder List"), this), "optFolderList(1)")}},
      lstLeftFolderList(Named(new QListWidget(this), "lstLeftFolderList")),
      lstRightFolderList(Named(new QListWidget(this), "lstRightFolderList")),
      txtNewFolderName(Named(new QLineEdit(this), "txtNewFolderName")),
      cmdAdd(Named(new QPushButton(QStringLiteral("&Add"), this), "cmdAdd")),
      cmdDelete(Named(new QPushButton(QStringLiteral("Re&move"), this), "cmdDelete")),
      cmdBrowseForFolder(Named(new QPushButton(QStringLiteral("&Browse..."), this), "cmdBrowseForFolder")),
      OKButton(Named(new QPushButton(QStringLiteral("OK"), this), "OKButton")),
      CancelButton(Named(new QPushButton(QStringLiteral("Cancel"), this), "CancelButton")),
      tools_(tools),
      save_(std::move(save)) {
    setObjectName(QStringLiteral("frmMaintainFolderLists"));
    setWindowTitle(QStringLiteral("Maintain Folder Lists"));
    for (const Side side : kBothSides) {
        for (const std::string& path : lists[Index(side)])
            if (path != kNoFolderPrompt) AddItem(*ListOf(side), path);
        ListOf(side)->setCurrentRow(-1);
        ListOf(side)->installEventFilter(this);
        connect(optFolderList[side], &QRadioButton::toggled, this, &frmMaintainFolderLists::ShowList);
    }
    LayOut();
    optFolderList[Side::Left]->setChecked(true);
    ShowList();
    OKButton->setDefault(true);
    for (QPushButton* button : {cmdAdd, cmdDelete, cmdBrowseForFolder}) button->setAutoDefault(false);
    connect(cmdAdd, &QPushButton::clicked, this, Guarded("cmdAdd_Click", [this] { cmdAdd_Click(); }));
    connect(cmdDelete, &QPushButton::clicked, this,
            Guarded("cmdDelete_Click", [this] { cmdDelete_Click(); }));
    connect(cmdBrowseForFolder, &QPushButton::clicked, this,
            Guarded("cmdBrowseForFolder_Click", [this] { cmdBrowseForFolder_Click(); }));
    connect(OKButton, &QPushButton::clicked, this, Guarded("OKButton_Click", [this] {
                save_(Lists());
                accept();
            }));
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void frmMaintainFolderLists::LayOut() {
    for (const Side side : kBothSides) {
        QListWidget* list = ListOf(side);
        list->setTextElideMode(Qt::ElideMiddle);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setAccessibleName(side == Side::Left ? QStringLiteral("Left folder list")
                                                   : QStringLiteral("Right folder list"));
    }
    auto* label = new QLabel(QStringLiteral("&New folder:"), this);
    label->setBuddy(txtNewFolderName);
    auto* choice = new QHBoxLayout;
    for (const Side side : kBothSides) choice->addWidget(optFolderList[side]);
    choice->addStretch(1);
    auto* grid = new QGridLayout;
    grid->addLayout(choice, 0, 0);
    grid->addWidget(lstLeftFolderList, 1, 0);
    grid->addWidget(lstRightFolderList, 1, 0);
    grid->addWidget(cmdDelete, 1, 1, Qt::AlignTop);
    auto* entry = new QHBoxLayout;
    entry->addWidget(label);
    entry->addWidget(txtNewFolderName, 1);
    entry->addWidget(cmdBrowseForFolder);
    grid->addLayout(entry, 2, 0);
    grid->addWidget(cmdAdd, 2, 1);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(0, 1);
    auto* ends = new QHBoxLayout;
    ends->addStretch(1);
    ends->addWidget(OKButton);
    ends->addWidget(CancelButton);
    auto* column = new QVBoxLayout(this);
    column->addLayout(grid, 1);
    column->addLayout(ends);
    QWidget* before = optFolderList[Side::Right];
    for (QWidget* next :
         std::initializer_list<QWidget*>{lstLeftFolderList, lstRightFolderList, cmdDelete, txtNewFolderName,
                                         cmdBrowseForFolder, cmdAdd, OKButton, CancelButton}) {
        setTabOrder(before, next);
        before = next;
    }
    ResizeWithinScreen(*this, {600, 400});
    txtNewFolderName->installEventFilter(this);
}

// Enter behind a typed folder adds it, as a person expects who has just typed it.
bool frmMaintainFolderLists::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (watched == txtNewFolderName && isEnter && !txtNewFolderName->text().trimmed().isEmpty()) {
            cmdAdd->click();
            return true;
        }
        if (watched == ListInView() && key == Qt::Key_Delete) {
            cmdDelete->click();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

QListWidget* frmMaintainFolderLists::ListInView() const {
    return ListOf(optFolderList[Side::Left]->isChecked() ? Side::Left : Side::Right);
}

void frmMaintainFolderLists::ShowList() {
    for (const Side side : kBothSides) ListOf(side)->setVisible(ListOf(side) == ListInView());
}

PathHistory::Lists frmMaintainFolderLists::Lists() const {
    PathHistory::Lists lists;
    for (const Side side : kBothSides)
        for (int row = 0; row < ListOf(side)->count(); ++row)
            lists[Index(side)].push_back(PathOf(*ListOf(side)->item(row)));
    return lists;
}

void frmMaintainFolderLists::Tell(const char* title, const std::string& text) {
    tools_.messages.Ask(
        {.title = title, .text = text, .icon = MessageIcon::Information, .defaultAnswer = {}});
}

// A folder that the list has already is shown there: each stands in it once.
void frmMaintainFolderLists::cmdAdd_Click() {
    QListWidget& list = *ListInView();
    if (list.count() >= static_cast<int>(PathHistory::kMostEntries))
        return Tell("Maximum Folders in List",
                    "Only " + std::to_string(PathHistory::kMostEntries) + " folders may be saved per list.");
    const std::string path = FolderFromUser(txtNewFolderName->text(), tools_.folders);
    if (path.empty()) {
        Tell("Add Folder to List", "Please enter a folder name before pressing the Add button.");
        txtNewFolderName->setFocus();
        return;
    }
    int row = 0;
    while (row < list.count() && PathOf(*list.item(row)) != path) ++row;
    if (row == list.count()) AddItem(list, path);
    list.setCurrentRow(row);
    txtNewFolderName->clear();
    txtNewFolderName->setFocus();
}

void frmMaintainFolderLists::cmdDelete_Click() {
    const QList<QListWidgetItem*> chosen = ListInView()->selectedItems();
    if (chosen.isEmpty())
        return Tell("Remove Folder from List",
                    "Please select a folder from the list before pressing the Remove button.");
    qDeleteAll(chosen);
}

void frmMaintainFolderLists::cmdBrowseForFolder_Click() {
    const auto picked =
        tools_.messages.PickDirectory("Browse for Folder", "Specify the folder to add.",
                                      FolderFromUser(txtNewFolderName->text(), tools_.folders));
    if (picked) txtNewFolderName->setText(ToQString(*picked));
    txtNewFolderName->setFocus();
}

}  // namespace vantrel
