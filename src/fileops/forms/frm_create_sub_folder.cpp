#include "fileops/forms/frm_create_sub_folder.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

// More are no help to a person, and a listing of very many would be waited for.
constexpr std::size_t kMostSubFolders = 500;

// The folders from the root to `path`.
std::vector<std::string> Ancestors(const std::string& path) {
    std::vector<std::string> folders;
    for (std::string at = WithoutTrailingSlash(path); !at.empty(); at = GetParentFolderName(at))
        folders.push_back(at);
    std::reverse(folders.begin(), folders.end());
    return folders;
}

// The first of the sub-folders, in the order of lists. What cannot be listed has none to show.
std::vector<std::string> SubFolders(const FileSystem& files, const std::string& folder) {
    std::vector<std::string> names;
    OpenFolder open;
    if (!files.Open(folder, open).IsOk()) return names;
    const Error error = open.ForEach(
        [&names](const FolderEntry& entry) {
            if (entry.kind == EntryKind::Folder) names.emplace_back(entry.name);
            return names.size() < kMostSubFolders;
        },
        StatPolicy::NonFilesOnly);
    if (!error.IsOk()) names.clear();
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return CompareIgnoringCase(a, b) < 0; });
    return names;
}

}  // namespace

frmCreateSubFolder::frmCreateSubFolder(const Toolbox& tools, QWidget* parent)
    : QDialog(parent),
      Label1(new QLabel(QStringLiteral("Please enter a name for the new sub-folder:"), this)),
      txtNewSubFolderName(new QLineEdit(QStringLiteral("New Sub-Folder"), this)),
      Dir1(new QListWidget(this)),
      OKButton(new QPushButton(QStringLiteral("OK"), this)),
      CancelButton(new QPushButton(QStringLiteral("Cancel"), this)),
      tools_(tools) {
    setObjectName(QStringLiteral("frmCreateSubFolder"));
    setWindowTitle(QStringLiteral("Create New Sub-Folder"));
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setBuddy(txtNewSubFolderName);
    txtNewSubFolderName->setObjectName(QStringLiteral("txtNewSubFolderName"));
    Dir1->setObjectName(QStringLiteral("Dir1"));
    Dir1->setAccessibleName(QStringLiteral("Parent folder"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    OKButton->setDefault(true);
    LayOut();
    connect(OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    // A click or a key is behind the list before it is taken back.
    connect(Dir1, &QListWidget::currentItemChanged, this,
            [this] { QTimer::singleShot(0, this, &frmCreateSubFolder::TakeMoveBack); });
}

void frmCreateSubFolder::LayOut() {
    Dir1->setTextElideMode(Qt::ElideMiddle);
    Dir1->setUniformItemSizes(true);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    buttons->addStretch(1);
    auto* fields = new QVBoxLayout;
    fields->addWidget(Label1);
    fields->addWidget(txtNewSubFolderName);
    fields->addWidget(Dir1, 1);
    auto* row = new QHBoxLayout(this);
    row->addLayout(fields, 1);
    row->addLayout(buttons);
    ResizeWithinScreen(*this, {440, 320});
}

std::string frmCreateSubFolder::ShowForm(const std::string& parentPath) {
    parentPath_ = parentPath;
    FillDir1();
    txtNewSubFolderName->setFocus();
    txtNewSubFolderName->selectAll();
    if (exec() != QDialog::Accepted) return {};
    return FromQString(txtNewSubFolderName->text().trimmed());
}

void frmCreateSubFolder::FillDir1() {
    const QSignalBlocker quiet(Dir1);
    Dir1->clear();
    const auto add = [this](std::string_view name, std::size_t depth) {
        auto* item = new QListWidgetItem(
            CommandIcon(QLatin1String("explore")),
            QString(static_cast<qsizetype>(depth) * 3, QLatin1Char(' ')) + DisplayQString(name), Dir1);
        item->setData(Qt::AccessibleTextRole, DisplayQString(name));
        return item;
    };
    std::size_t depth = 0;
    for (const std::string& folder : Ancestors(parentPath_)) {
        const std::string_view name = GetLastItemInPath(folder);
        parentItem_ = add(name.empty() ? std::string_view(folder) : name, depth++);
        parentItem_->setToolTip(WithLineBreaks(DisplayQString(folder)));
    }
    for (const std::string& name : SubFolders(tools_.files, parentPath_)) add(name, depth);
    StayAtParent();
}

void frmCreateSubFolder::StayAtParent() {
    const QSignalBlocker quiet(Dir1);
    Dir1->setCurrentItem(parentItem_);
    if (parentItem_) Dir1->scrollToItem(parentItem_);
}

void frmCreateSubFolder::TakeMoveBack() {
    if (Dir1->currentItem() == parentItem_) return;
    StayAtParent();
    tools_.messages.Ask({.title = "Create New Sub-Folder",
                         .text = "The parent folder cannot be changed here.",
                         .icon = MessageIcon::Information,
                         .defaultAnswer = {}});
}

}  // namespace vantrel
