// What the window is made of, and the wires between its parts.
#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_compare_files.h"
#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "settings/options.h"

namespace vantrel {

frmCompareFiles::frmCompareFiles(CompareFilesParts parts, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint),
      cmdCompare(new QPushButton(QStringLiteral("&Compare"), this)),
      cmdShowDiffs(new QPushButton(QStringLiteral("Show &Differences"), this)),
      cmdShowBytes(new QPushButton(QStringLiteral("Show &Bytes"), this)),
      cmdSync(new QPushButton(QStringLiteral("&Sync"), this)),
      cmdCancel(new QPushButton(QStringLiteral("C&lose"), this)),
      cmdHelp(new QPushButton(QStringLiteral("&Help"), this)),
      lvwCompareFiles(new QTreeWidget(this)),
      lblStatusInfo(new QLabel(this)),
      prgBinaryCompare(new QProgressBar(this)),
      parts_(std::move(parts)) {
    setObjectName(QStringLiteral("frmCompareFiles"));
    setWindowTitle(QStringLiteral("Compare Two Files"));
    setWindowIcon(ProgramIcon());
    MakeBoxes();
    MakeButtons();
    MakeTable();
    LayOut();
    OrderTabs();
    EnableCommands();
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 120, sizeHint().height()});
}

frmCompareFiles::~frmCompareFiles() = default;

void frmCompareFiles::Wire(QPushButton* button, const char* name, Click click) {
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this,
            [this, click, routine = std::string("frmCompareFiles.") + name + "_Click"] {
                parts_.tools.reporter.GuardRun(routine, [&] { (this->*click)(); });
            });
}

void frmCompareFiles::MakeButtons() {
    Wire(cmdCompare, "cmdCompare", &frmCompareFiles::cmdCompare_Click);
    Wire(cmdShowDiffs, "cmdShowDiffs", &frmCompareFiles::cmdShowDiffs_Click);
    Wire(cmdShowBytes, "cmdShowBytes", &frmCompareFiles::cmdShowBytes_Click);
    Wire(cmdSync, "cmdSync", &frmCompareFiles::cmdSync_Click);
    Wire(cmdCancel, "cmdCancel", &frmCompareFiles::cmdCancel_Click);
    Wire(cmdHelp, "cmdHelp", &frmCompareFiles::cmdHelp_Click);
    cmdCompare->setDefault(true);
    cmdShowBytes->setToolTip(QStringLiteral("The bytes of both files beside each other, where they differ"));
}

void frmCompareFiles::MakeBoxes() {
    constexpr PerSide<const char*> kSelect{{"cmdFileOne", "cmdFileTwo"}};
    constexpr PerSide<const char*> kSelectTips{{"Select File One", "Select File Two"}};
    constexpr PerSide<const char*> kView{{"cmdViewFileOne", "cmdViewFileTwo"}};
    constexpr PerSide<const char*> kViewTexts{{"Open File 1", "Open File 2"}};
    for (const Side side : kBothSides) {
        txtFile[side] = new FilePathBox(side, parts_.tools.files, parts_.tools.loop,
                                        parts_.options.autoCompleteFolderPath, this);
        cmdFile[side] = new QPushButton(QStringLiteral("..."), this);
        cmdFile[side]->setToolTip(QLatin1String(kSelectTips[side]));
        cmdFile[side]->setAccessibleName(QLatin1String(kSelectTips[side]));
        cmdFile[side]->setFixedWidth(cmdFile[side]->sizeHint().height() + 8);
        cmdViewFile[side] = new QPushButton(QLatin1String(kViewTexts[side]), this);
        const bool left = side == Side::Left;
        Wire(cmdFile[side], kSelect[side],
             left ? &frmCompareFiles::SelectFileOne : &frmCompareFiles::SelectFileTwo);
        Wire(cmdViewFile[side], kView[side],
             left ? &frmCompareFiles::ViewFileOne : &frmCompareFiles::ViewFileTwo);
    }
}

void frmCompareFiles::MakeTable() {
    lvwCompareFiles->setObjectName(QStringLiteral("lvwCompareFiles"));
    lvwCompareFiles->setAccessibleName(QStringLiteral("Findings"));
    lvwCompareFiles->setHeaderLabels({QStringLiteral("Method"), QStringLiteral("File #1"),
                                      QStringLiteral("File #2"), QStringLiteral("Result")});
    lvwCompareFiles->setRootIsDecorated(false);
    lvwCompareFiles->setUniformRowHeights(true);
    lvwCompareFiles->setAllColumnsShowFocus(true);
    for (const FileMethod method : kFileMethods) {
        if (!IsAvailable(method)) continue;
        methods_.push_back(method);
        auto* item = new QTreeWidgetItem(lvwCompareFiles);
        // The blanks keep the caption clear of the box.
        item->setText(Method, QStringLiteral("   ") + ToQString(FileMethodCaption(method)));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                       Qt::ItemNeverHasChildren);
        item->setCheckState(Method, Qt::Checked);
    }
    lvwCompareFiles->setCurrentItem(lvwCompareFiles->topLevelItem(0));

    const QFontMetrics metrics = lvwCompareFiles->fontMetrics();
    QHeaderView* header = lvwCompareFiles->header();
    header->setStretchLastSection(false);
    // What is found in the files takes the room that the words beside it leave.
    for (const Column column : {FileOne, FileTwo}) header->setSectionResizeMode(column, QHeaderView::Stretch);
    header->resizeSection(Method, metrics.horizontalAdvance(QStringLiteral("   Binary Contents")) + 48);
    header->resizeSection(
        Result, metrics.horizontalAdvance(QStringLiteral("Version not available for both files")) + 24);
    // No row is hidden behind a scroll bar.
    const int rows = static_cast<int>(methods_.size());
    const int row = lvwCompareFiles->sizeHintForRow(0);
    lvwCompareFiles->setMinimumHeight(header->sizeHint().height() + (rows + 1) * row);

    auto* copy = new QAction(QStringLiteral("&Copy"), lvwCompareFiles);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &frmCompareFiles::CopyRow);
    lvwCompareFiles->addAction(copy);
    lvwCompareFiles->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmCompareFiles::LayOut() {
    lblStatusInfo->setObjectName(QStringLiteral("lblStatusInfo"));
    lblStatusInfo->setTextFormat(Qt::PlainText);
    prgBinaryCompare->setObjectName(QStringLiteral("prgBinaryCompare"));
    prgBinaryCompare->setAccessibleName(QStringLiteral("Progress"));
    prgBinaryCompare->setRange(0, 100);
    prgBinaryCompare->setValue(0);
    prgBinaryCompare->setTextVisible(false);

    auto* files = new QGridLayout;
    constexpr PerSide<const char*> kLabels{{"File &1:", "File &2:"}};
    int row = 0;
    for (const Side side : kBothSides) {
        auto* label = new QLabel(QLatin1String(kLabels[side]));
        label->setBuddy(txtFile[side]);
        files->addWidget(label, row, 0);
        files->addWidget(txtFile[side], row, 1);
        files->addWidget(cmdFile[side], row, 2);
        files->addWidget(cmdViewFile[side], row++, 3);
    }
    files->setColumnStretch(1, 1);
    auto* status = new QHBoxLayout;
    status->addWidget(lblStatusInfo, 1);
    status->addWidget(prgBinaryCompare, 1);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdCompare, cmdShowDiffs, cmdShowBytes, cmdSync}) buttons->addWidget(button);
    buttons->addStretch(1);
    for (QPushButton* button : {cmdCancel, cmdHelp}) buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(files);
    layout->addWidget(lvwCompareFiles, 1);
    layout->addLayout(status);
    layout->addLayout(buttons);
}

void frmCompareFiles::OrderTabs() {
    QWidget* before = nullptr;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             txtFile[Side::Left], cmdFile[Side::Left], cmdViewFile[Side::Left], txtFile[Side::Right],
             cmdFile[Side::Right], cmdViewFile[Side::Right], lvwCompareFiles, cmdCompare, cmdShowDiffs,
             cmdShowBytes, cmdSync, cmdCancel, cmdHelp}) {
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
    cmdCompare->setFocus();
}

}  // namespace vantrel
