// What the window is made of, and the wires between its parts.
#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include "dupes/forms/dupe_command_table.h"
#include "dupes/forms/dupe_details_model.h"
#include "dupes/forms/dupe_groups_model.h"
#include "dupes/forms/dupe_preview.h"
#include "dupes/forms/frm_find_duplicates.h"
#include "dupes/forms/search_folder_list.h"
#include "filetools/forms/file_path_box.h"
#include "platform/forms/animation_view.h"
#include "platform/forms/icons.h"
#include "platform/forms/window_size.h"

namespace vantrel {

namespace {

constexpr int kMargin = 6;

constexpr std::array kCriterionCaptions{
    "File Names must be the same",
    "File Sizes must be the same",
    "File Create Date/Times must be the same",
    "File Last Mod Date/Times must be the same",
    "File Attributes must be the same",
    "File Contents must be the same",
};

// No button is the default one: Enter belongs to the lists and boxes.
QPushButton* Button(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QLabel* PlainLabel(const char* name, const QString& text = {}) {
    auto* label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

// In a dark list the box alone would be as dark as its ground.
class CheckBoxDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        if (!(item.features & QStyleOptionViewItem::HasCheckIndicator)) return;
        const QWidget* view = option.widget;
        const QRect box = view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, view);
        QColor line = option.palette.color(QPalette::Text);
        line.setAlphaF(0.4F);
        painter->setPen(line);
        painter->drawRect(box.adjusted(0, 0, -1, -1));
    }
};

QTableView* Table(const char* name, const QString& title) {
    auto* table = new QTableView;
    table->setObjectName(QLatin1String(name));
    table->setAccessibleName(title);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideMiddle);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    table->setCornerButtonEnabled(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setMinimumSectionSize(1);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().lineSpacing() + 4);
    return table;
}

}  // namespace

frmFindDuplicates::frmFindDuplicates(FindDuplicatesParts parts, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint),
      parts_(std::move(parts)),
      settings_(parts_.options),
      commands_(busy_, parts_.tools.reporter),
      finder_(parts_.tools, *this),
      removal_(parts_.tools, parts_.wrappers.Shell(), *this),
      groups_(new DupeGroupsModel(finder_.Results(), this)),
      details_(new DupeDetailsModel(parts_.tools, finder_.Results(), this)) {
    setObjectName(QStringLiteral("frmFindDuplicates"));
    setWindowTitle(QStringLiteral("Find Duplicate Files"));
    setWindowIcon(ProgramIcon());
    auto* bar = new QMenuBar(this);
    commands_.Build(bar, FindDuplicatesTables());
    for (const CommandEntry& entry : FindDuplicatesTables().menuBar)
        if (!entry.key.empty()) commands_.Action(entry.name)->setShortcutContext(Qt::WindowShortcut);
    LayOut();
    layout()->setMenuBar(bar);
    BindCommands();
    BindChecks();
    Wire();
    WireLists();
    OrderTabs();
    const int character = fontMetrics().averageCharWidth();
    ResizeWithinScreen(*this, {character * 150, fontMetrics().lineSpacing() * 42});
    ListsChanged();
    lstFolders->setFocus();
}

frmFindDuplicates::~frmFindDuplicates() = default;

void frmFindDuplicates::LayOut() {
    content_ = new QWidget(this);
    auto* inner = new QVBoxLayout(content_);
    inner->setContentsMargins(kMargin, kMargin, kMargin, 0);
    inner->addWidget(MakeSetUp());
    inner->addWidget(MakeReview(), 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(content_, 1);
    column->addWidget(MakeStatusBar());
}

QWidget* frmFindDuplicates::MakeSetUp() {
    lstFolders = new SearchFolderList;
    txtPath = new FilePathBox(Side::Left, parts_.tools.files, parts_.tools.loop,
                              parts_.options.autoCompleteFolderPath);
    txtPath->setObjectName(QStringLiteral("txtPath"));
    txtPath->setAccessibleName(QStringLiteral("Path of a folder to add"));
    txtPath->setPlaceholderText(QStringLiteral("Path of a folder, or empty to choose one"));
    cmdSelectFolder = Button("cmdSelectFolder", QStringLiteral("Add a Folder"));
    cmdRemoveFolder = Button("cmdRemoveFolder", QStringLiteral("Remove Selected Folder from List"));
    chkIncludeSubFolders = new QCheckBox(QStringLiteral("Include Sub Folders?"));
    chkIncludeSubFolders->setObjectName(QStringLiteral("chkIncludeSubFolders"));
    cmdFindDupes = Button("cmdFindDupes", QStringLiteral("&Find Duplicates"));
    Animation1 = new AnimationView;
    Animation1->setObjectName(QStringLiteral("Animation1"));
    Animation1->setMinimumHeight(fontMetrics().lineSpacing() * 2);

    auto* folders = new QGridLayout;
    folders->addWidget(txtPath, 0, 0, 1, 2);
    folders->addWidget(cmdSelectFolder, 0, 2);
    folders->addWidget(lstFolders, 1, 0, 1, 3);
    folders->addWidget(chkIncludeSubFolders, 2, 0);
    // Beside the box it would make the window too wide for a small screen.
    folders->addWidget(cmdRemoveFolder, 3, 0, 1, 3, Qt::AlignRight);
    folders->setColumnStretch(0, 1);
    auto* search = new QVBoxLayout;
    search->addWidget(cmdFindDupes);
    search->addWidget(Animation1, 1, Qt::AlignCenter);

    auto* widget = new QWidget;
    widget->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addLayout(folders, 1);
    row->addWidget(MakeCriteria());
    row->addLayout(search);
    return widget;
}

QWidget* frmFindDuplicates::MakeCriteria() {
    auto* frame = new QGroupBox(QStringLiteral("Duplicate Criteria"));
    auto* column = new QVBoxLayout(frame);
    column->setSpacing(2);
    for (std::size_t i = 0; i < kCriteria; ++i) {
        chkDupeCriteria[i] = new QCheckBox(QLatin1String(kCriterionCaptions[i]));
        chkDupeCriteria[i]->setObjectName(QStringLiteral("chkDupeCriteria(%1)").arg(i));
        column->addWidget(chkDupeCriteria[i]);
    }
    return frame;
}

QWidget* frmFindDuplicates::MakeGroups() {
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(QStringLiteral("Duplicates Found:"));
    txtFilter = new QLineEdit;
    txtFilter->setObjectName(QStringLiteral("txtFilter"));
    txtFilter->setAccessibleName(QStringLiteral("Filter of the groups"));
    txtFilter->setPlaceholderText(QStringLiteral("Filter by name or path"));
    txtFilter->setClearButtonEnabled(true);
    lstDupeGroups = Table("lstDupeGroups", QStringLiteral("Duplicates Found"));
    lstDupeGroups->setSelectionMode(QAbstractItemView::SingleSelection);
    lstDupeGroups->horizontalHeader()->hide();
    lstDupeGroups->setModel(groups_);
    label->setBuddy(lstDupeGroups);
    column->addWidget(label);
    column->addWidget(txtFilter);
    column->addWidget(lstDupeGroups, 1);
    return widget;
}

QWidget* frmFindDuplicates::MakeDetails() {
    lblRemoveInstructions =
        PlainLabel("lblRemoveInstructions",
                   QStringLiteral("Place a checkmark next to all of the files that you want to remove."));
    lblRemoveInstructions->setWordWrap(true);
    lvwDupeDetails = Table("lvwDupeDetails", QStringLiteral("Files of the group"));
    lvwDupeDetails->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lvwDupeDetails->setModel(details_);
    lvwDupeDetails->setItemDelegate(new CheckBoxDelegate(lvwDupeDetails));
    lvwDupeDetails->horizontalHeader()->setHighlightSections(false);
    picPreview = new DupePreview(parts_.tools.files);
    auto* both = new QSplitter(Qt::Horizontal);
    both->setObjectName(QStringLiteral("splPreview"));
    both->setChildrenCollapsible(false);
    both->addWidget(lvwDupeDetails);
    both->addWidget(picPreview);
    both->setSizes({700, 170});
    both->setStretchFactor(0, 1);
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(lblRemoveInstructions);
    column->addWidget(both, 1);
    return widget;
}

QWidget* frmFindDuplicates::MakeReview() {
    auto* lists = new QSplitter(Qt::Horizontal);
    lists->setObjectName(QStringLiteral("splGroups"));
    lists->setChildrenCollapsible(false);
    lists->addWidget(MakeGroups());
    lists->addWidget(MakeDetails());
    lists->setSizes({270, 730});
    lists->setStretchFactor(1, 1);
    cmdRemoveMarkedFiles = Button("cmdRemoveMarkedFiles", QStringLiteral("&Remove Marked Files"));
    cmdCRC32 = Button("cmdCRC32", QStringLiteral("Calculate &CRC 32"));
    cmdHelp = Button("cmdHelp", QStringLiteral("&Help"));
    cmdCancel = Button("cmdCancel", QStringLiteral("C&lose"));
    lblMarks = PlainLabel("lblMarks");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdRemoveMarkedFiles);
    buttons->addWidget(cmdCRC32);
    buttons->addSpacing(kMargin);
    buttons->addWidget(lblMarks, 1);
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdCancel);
    auto* widget = new QWidget;
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(lists, 1);
    column->addLayout(buttons);
    return widget;
}

QWidget* frmFindDuplicates::MakeStatusBar() {
    lblStatus = PlainLabel("lblStatus");
    // What has no room is in the tip, and never makes the window wider.
    lblStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblFigures = PlainLabel("lblFigures");
    ProgressBar1 = new QProgressBar;
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, 1);
    ProgressBar1->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    ProgressBar1->setToolTip(QStringLiteral("Esc cancels"));
    ProgressBar1->hide();
    auto* bar = new QStatusBar;
    bar->setObjectName(QStringLiteral("StatusBar1"));
    lblStatus->setContentsMargins(kMargin, 0, 0, 0);
    bar->addWidget(lblStatus, 1);
    bar->addPermanentWidget(lblFigures);
    bar->addPermanentWidget(ProgressBar1);
    return bar;
}

void frmFindDuplicates::OrderTabs() {
    QWidget* before = txtPath;
    const auto then = [&before](QWidget* next) {
        setTabOrder(before, next);
        before = next;
    };
    then(cmdSelectFolder);
    then(lstFolders);
    then(chkIncludeSubFolders);
    then(cmdRemoveFolder);
    for (QCheckBox* box : chkDupeCriteria) then(box);
    for (QWidget* next : std::initializer_list<QWidget*>{cmdFindDupes, txtFilter, lstDupeGroups,
                                                         lvwDupeDetails, picPreview->txtText,
                                                         cmdRemoveMarkedFiles, cmdCRC32, cmdHelp, cmdCancel})
        then(next);
}

void frmFindDuplicates::Wire() {
    const auto press = [this](QPushButton* button, const char* routine, void (frmFindDuplicates::*run)()) {
        connect(button, &QPushButton::clicked, this, Guarded(routine, [this, run] { (this->*run)(); }));
    };
    press(cmdSelectFolder, "cmdSelectFolder_Click", &frmFindDuplicates::AddFolder);
    press(cmdRemoveFolder, "cmdRemoveFolder_Click", &frmFindDuplicates::RemoveFolder);
    press(cmdFindDupes, "cmdFindDupes_Click", &frmFindDuplicates::FindDupes);
    press(cmdRemoveMarkedFiles, "cmdRemoveMarkedFiles_Click", &frmFindDuplicates::RemoveMarked);
    press(cmdCRC32, "cmdCRC32_Click", &frmFindDuplicates::CalculateCrc);
    press(cmdCancel, "cmdCancel_Click", &frmFindDuplicates::Exit);
    connect(cmdHelp, &QPushButton::clicked, this, Guarded("cmdHelp_Click", [this] { parts_.showHelp(); }));
    connect(txtPath, &QLineEdit::returnPressed, this, Guarded("cmdSelectFolder_Click", [this] {
                if (!txtPath->Path().empty()) AddFolder();
            }));
    connect(chkIncludeSubFolders, &QCheckBox::clicked, this,
            Guarded("chkIncludeSubFolders_Click", [this](bool on) { SetIncludeSubFolders(on); }));
    for (std::size_t i = 0; i < kCriteria; ++i)
        connect(chkDupeCriteria[i], &QCheckBox::clicked, this,
                Guarded("chkDupeCriteria_Click", [this, i](bool on) { SetCriterion(i, on); }));
    connect(txtFilter, &QLineEdit::textChanged, this,
            Guarded("txtFilter_Change", [this] { FilterChanged(); }));
}

void frmFindDuplicates::WireLists() {
    connect(lstFolders, &SearchFolderList::PathsDropped, this,
            Guarded("lstFolders_OLEDragDrop",
                    [this](const std::vector<std::string>& paths) { FoldersDropped(paths); }));
    connect(lstFolders, &QListWidget::itemDoubleClicked, this, [this] { commands_.Run("mnuFoldersEdit"); });
    connect(lstFolders, &QListWidget::itemSelectionChanged, this, [this] { commands_.RefreshChecks(); });
    connect(lstFolders, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        if (!busy_.IsBusy() && lstFolders->SelectedFolder())
            commands_.Menu("mnuFolders")->popup(lstFolders->viewport()->mapToGlobal(at));
    });
    connect(lstDupeGroups->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            Guarded("lstDupeGroups_Click", [this] { GroupChosen(); }));
    connect(lvwDupeDetails->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            Guarded("lvwDupeDetails_ItemClick", [this] { ShowPreview(); }));
    connect(lvwDupeDetails, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        if (!busy_.IsBusy() && details_->rowCount() > 0)
            commands_.Menu("mnuDetails")->popup(lvwDupeDetails->viewport()->mapToGlobal(at));
    });
    connect(details_, &DupeDetailsModel::MarksChanged, this, [this] { ShowMarks(); });
    for (QWidget* list : std::initializer_list<QWidget*>{lstFolders, lstDupeGroups, lstDupeGroups->viewport(),
                                                         lvwDupeDetails})
        list->installEventFilter(this);
}

}  // namespace vantrel
