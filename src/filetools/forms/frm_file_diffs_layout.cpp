// What the window is made of, and the wires between its parts.
#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "filetools/forms/diff_command_table.h"
#include "filetools/forms/diffs_bar_view.h"
#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_file_diffs.h"
#include "filetools/forms/pane_splitter.h"
#include "filetools/forms/status_label.h"
#include "platform/forms/icons.h"
#include "platform/forms/other_pane_key.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "views/forms/toolbars.h"

namespace vantrel {

namespace {

constexpr int kPaneMargin = 200 / 15;  // 200 twips

}  // namespace

frmFileDiffs::frmFileDiffs(FileDiffsParts parts, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint),
      pctDiffsBar(new DiffsBarView(this)),
      pctContainer(new BarMarkerView(this)),
      chkTooltip(new QCheckBox(QStringLiteral("Pane Tooltips"), this)),
      Toolbar1(new QToolBar(this)),
      lblPosition(StatusLabel("lblPosition")),
      lblDifferences(StatusLabel("lblDifferences")),
      lblForm{{StatusLabel("lblFormOne"), StatusLabel("lblFormTwo")}},
      parts_(std::move(parts)),
      commands_(busy_, parts_.tools.reporter) {
    setObjectName(QStringLiteral("frmFileDiffs"));
    setWindowTitle(QStringLiteral("File Difference Viewer"));
    setWindowIcon(ProgramIcon());
    chkTooltip->setObjectName(QStringLiteral("chkTooltip"));
    for (const Side side : kBothSides) {
        txtFile[side] = new FilePathBox(side, parts_.tools.files, parts_.tools.loop,
                                        parts_.settings.autoCompleteFolderPath, this);
        grdFile[side] = new FileGridView(side, contents_, parts_.tools.reporter, this);
        rtfLineDiff[Index(side)] = new LineBox(static_cast<int>(Index(side)), this);
    }
    auto* bar = new QMenuBar(this);
    MakeMenusAndToolbar(bar);
    LayOut();
    layout()->setMenuBar(bar);
    for (const Side side : kBothSides) WirePane(side);
    GoBetweenByF6(*this, {grdFile[Side::Left], grdFile[Side::Right]});
    WireBar();
    CoupleScrolling();
    Zoom(0);
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 190, fontMetrics().lineSpacing() * 48});
    grdFile[Side::Left]->setFocus();
}

frmFileDiffs::~frmFileDiffs() = default;

void frmFileDiffs::MakeMenusAndToolbar(QMenuBar* bar) {
    commands_.Build(bar, FileDiffTables());
    for (const CommandEntry& entry : FileDiffTables().menuBar)
        if (!entry.key.empty()) commands_.Action(entry.name)->setShortcutContext(Qt::WindowShortcut);
    commands_.BindCheck("mnuOptionsIgnoreCase", [this] { return parts_.options.IgnoreCase(); });
    commands_.BindCheck("mnuOptionsIgnoreWhitespace", [this] { return parts_.options.IgnoreWhitespace(); });
    commands_.BindCheck("mnuExtrasInlineDifferences", [this] { return parts_.settings.inlineDifferences; });
    commands_.BindCheck("mnuExtrasWrapLines", [this] { return wraps_; });
    commands_.BindCheck("mnuExtrasFoldEqualLines", [this] { return folds_; });
    InstallEncodings();

    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setIconSize(QSize(20, 20));
    int last = 0;
    for (const DiffToolbarEntry& entry : FileDiffToolbar()) {
        if (last > 0 && entry.index > last + 1) Toolbar1->addSeparator();
        last = entry.index;
        const QString tip = ToQString(entry.tip);
        auto* button = new CommandButton(commands_.Action(entry.command), tip, tip, Toolbar1);
        button->setObjectName(ToQString(entry.command));
        button->setIcon(
            CommandIcon(QLatin1String(entry.icon.data(), static_cast<qsizetype>(entry.icon.size()))));
        button->setIconSize(Toolbar1->iconSize());
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        connect(&commands_, &Commands::BusyShown, button, &CommandButton::ShowBusy);
        Toolbar1->addWidget(button);
    }
    auto* gap = new QWidget(Toolbar1);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    Toolbar1->addWidget(gap);
    Toolbar1->addWidget(chkTooltip);
}

QWidget* frmFileDiffs::MakePane(Side side) {
    auto* pane = new QWidget(this);
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(txtFile[side]);
    column->addWidget(grdFile[side], 1);
    return pane;
}

QWidget* frmFileDiffs::MakePanes() {
    auto* splitter = new PaneSplitter(this);
    for (const Side side : kBothSides) splitter->addWidget(MakePane(side));
    splitter->setSizes({1000, 1000});
    auto* panes = new QWidget(this);
    auto* row = new QHBoxLayout(panes);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(splitter, 1);
    row->addWidget(pctContainer);
    row->addWidget(pctDiffsBar);
    return panes;
}

void frmFileDiffs::LayOut() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(Toolbar1);
    auto* middle = new QVBoxLayout;
    middle->setContentsMargins(kPaneMargin, 0, kPaneMargin, 0);
    middle->setSpacing(4);
    middle->addWidget(MakePanes(), 1);
    for (LineBox* box : rtfLineDiff) middle->addWidget(box);
    column->addLayout(middle, 1);
    auto* status = new QStatusBar(this);
    status->addWidget(lblPosition, 2);
    status->addWidget(lblDifferences, 2);
    for (const Side side : kBothSides) {
        lblForm[side]->setContentsMargins(kPaneMargin, 0, 0, 0);
        status->addPermanentWidget(lblForm[side]);
    }
    column->addWidget(status);
    QWidget* before = txtFile[Side::Left];
    for (QWidget* widget :
         std::initializer_list<QWidget*>{txtFile[Side::Right], grdFile[Side::Left], grdFile[Side::Right],
                                         rtfLineDiff[0], rtfLineDiff[1], chkTooltip}) {
        setTabOrder(before, widget);
        before = widget;
    }
}

void frmFileDiffs::WirePane(Side side) {
    FileGridView* grid = grdFile[side];
    const char* name = side == Side::Left ? "grdFileOne_Click" : "grdFileTwo_Click";
    connect(txtFile[side], &QLineEdit::textChanged, this,
            Guarded("txtFile_Change", [this, side](const QString&) { OnPathChanged(side); }));
    connect(txtFile[side], &QLineEdit::returnPressed, this, [this] { commands_.Run("mnuFileCompare"); });
    connect(grid, &FileGridView::RowPressed, this,
            Guarded(name, [this](std::int32_t row) { OnRowPressed(row); }));
    connect(grid, &FileGridView::RowDoubleClicked, this, [this] { commands_.Run("mnuFileToggleBookmark"); });
    connect(grid, &FileGridView::FoldOpened, this, Guarded(name, [this](std::int32_t row) {
                if (busy_.IsBusy()) return;
                FoldedRows folds = contents_.layout.Folds();
                folds.Open(row);
                LayOutRows(std::move(folds));
            }));
    connect(grid, &FileGridView::RowHovered, this,
            [this, side](std::int32_t row) { ShowTooltip(side, row); });
    connect(grid, &FileGridView::MenuRequested, this, [this](const QPoint& position) {
        if (!busy_.IsBusy()) commands_.Menu("mnuFile")->popup(position);
    });
    connect(grid, &FileGridView::ZoomRequested, this, [this](int steps) { Zoom(zoom_ + steps); });
    connect(grid, &FileGridView::CopyRequested, this, [this, side] { CopyLine(side); });
    connect(grid, &FileGridView::Resized, this, Guarded("Form_Resize", [this] {
                if (wraps_ && HasResult()) LayOutRows(contents_.layout.Folds());
            }));
    connect(rtfLineDiff[Index(side)], &LineBox::ZoomRequested, this,
            [this](int steps) { Zoom(zoom_ + steps); });
}

void frmFileDiffs::WireBar() {
    connect(pctDiffsBar, &DiffsBarView::Clicked, this,
            Guarded("pctDiffsBar_Click", [this](int y) { OnBarClicked(y); }));
    connect(pctDiffsBar, &DiffsBarView::Resized, this, [this] { MarkCurrentRowInDiffsBar(); });
    connect(chkTooltip, &QCheckBox::toggled, this, [this] {
        for (const Side side : kBothSides) grdFile[side]->setToolTip({});
    });
}

void frmFileDiffs::CoupleScrolling() {
    // What cannot go as far as the other one must not pull it back.
    const auto follow = [this](QScrollBar* bar, QScrollBar* follower) {
        connect(bar, &QScrollBar::valueChanged, follower, [this, follower](int value) {
            if (coupling_) return;
            const QScopedValueRollback<bool> coupling(coupling_, true);
            follower->setValue(value);
        });
    };
    for (const Side side : kBothSides) {
        const FileGridView* grid = grdFile[side];
        const FileGridView* other = grdFile[Other(side)];
        follow(grid->verticalScrollBar(), other->verticalScrollBar());
        follow(grid->horizontalScrollBar(), other->horizontalScrollBar());
        follow(rtfLineDiff[Index(side)]->verticalScrollBar(),
               rtfLineDiff[Index(Other(side))]->verticalScrollBar());
    }
}

}  // namespace vantrel
