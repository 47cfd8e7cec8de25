// What the window is made of, and the wires between its parts.
#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStatusBar>
#include <QVBoxLayout>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/fixed_font.h"
#include "filetools/forms/frm_hex_dump.h"
#include "filetools/forms/hex_command_table.h"
#include "filetools/forms/pane_splitter.h"
#include "filetools/forms/status_label.h"
#include "platform/forms/icons.h"
#include "platform/forms/other_pane_key.h"
#include "platform/forms/window_size.h"

namespace vantrel {

namespace {

constexpr int kWindowMargin = 6;
constexpr int kProgressSteps = 1000;
constexpr int kLookAgain = 1000;  // milliseconds

}  // namespace

frmHexDump::frmHexDump(HexDumpParts parts, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint),
      lblPosition(StatusLabel("lblPosition")),
      lblBytes(StatusLabel("lblBytes")),
      lblFile{{StatusLabel("lblFileOne"), StatusLabel("lblFileTwo")}},
      prgProgress(new QProgressBar(this)),
      parts_(std::move(parts)),
      commands_(busy_, parts_.tools.reporter) {
    setObjectName(QStringLiteral("frmHexDump"));
    setWindowTitle(QStringLiteral("Hex Dump Viewer"));
    setWindowIcon(ProgramIcon());
    for (const Side side : kBothSides) {
        txtFile[side] =
            new FilePathBox(side, parts_.tools.files, parts_.tools.loop, parts_.completesPaths, this);
        rtfHexDump[side] = new HexView(side, contents_, this);
    }
    auto* bar = new QMenuBar(this);
    commands_.Build(bar, HexDumpTables());
    for (const CommandEntry& entry : HexDumpTables().menuBar)
        if (!entry.key.empty()) commands_.Action(entry.name)->setShortcutContext(Qt::WindowShortcut);
    commands_.BindCheck("mnuSearchIgnoreCase", [this] { return ignoresCase_; });
    commands_.RefreshChecks();
    LayOut();
    layout()->setMenuBar(bar);
    for (const Side side : kBothSides) WirePane(side);
    GoBetweenByF6(*this, {rtfHexDump[Side::Left], rtfHexDump[Side::Right]});
    connect(&lookAgain_, &QTimer::timeout, this,
            [look = Guarded("Look_Again", [this] { LookAgain(); })] { look(); });
    lookAgain_.setInterval(kLookAgain);
    Zoom(0);
    ShowBeside(false);
    ContentsChanged();
    rtfHexDump[Side::Left]->setFocus();
}

frmHexDump::~frmHexDump() = default;

QWidget* frmHexDump::MakePane(Side side) {
    auto* pane = new QWidget(this);
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(txtFile[side]);
    column->addWidget(rtfHexDump[side], 1);
    return pane;
}

QWidget* frmHexDump::MakePanes() {
    auto* splitter = new PaneSplitter(this);
    splitter->setChildrenCollapsible(false);
    for (const Side side : kBothSides) splitter->addWidget(MakePane(side));
    splitter->setSizes({1000, 1000});
    return splitter;
}

void frmHexDump::LayOut() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kWindowMargin, kWindowMargin, kWindowMargin, 0);
    column->setSpacing(4);
    column->addWidget(MakePanes(), 1);
    prgProgress->setObjectName(QStringLiteral("prgProgress"));
    prgProgress->setRange(0, kProgressSteps);
    prgProgress->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    prgProgress->setToolTip(QStringLiteral("Esc cancels"));
    auto* status = new QStatusBar(this);
    for (QLabel* label : {lblPosition, lblBytes}) {
        label->setContentsMargins(0, 0, 2 * kWindowMargin, 0);
        status->addWidget(label);
    }
    for (const Side side : kBothSides) {
        // What has no room is in the tip, and never makes the window wider.
        lblFile[side]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        status->addWidget(lblFile[side], 1);
    }
    status->addPermanentWidget(prgProgress);
    prgProgress->hide();
    column->addWidget(status);
    setTabOrder(txtFile[Side::Left], txtFile[Side::Right]);
    setTabOrder(txtFile[Side::Right], rtfHexDump[Side::Left]);
    setTabOrder(rtfHexDump[Side::Left], rtfHexDump[Side::Right]);
}

void frmHexDump::WirePane(Side side) {
    HexView* view = rtfHexDump[side];
    HexView* other = rtfHexDump[Other(side)];
    const auto openTyped = Guarded("txtFile_Change", [this, side] {
        if (!busy_.IsBusy() && !txtFile[side]->Path().empty()) OpenFile(side, txtFile[side]->Path());
    });
    connect(txtFile[side], &QLineEdit::returnPressed, this, openTyped);
    connect(txtFile[side], &FilePathBox::PathDropped, this, openTyped);
    connect(view, &HexView::OffsetChosen, this,
            Guarded("rtfHexDump_SelChange", [this](std::uint64_t offset, SelectionStep step) {
                GoTo(offset, step, Placing::AsFarAsItMust);
            }));
    connect(view, &HexView::FilesDropped, this,
            Guarded("rtfHexDump_OLEDragDrop",
                    [this, side](const std::vector<std::string>& paths) { OnDropped(side, paths); }));
    connect(view, &HexView::Focused, this, [this, side] {
        current_ = side;
        EnableCommands();
    });
    connect(view, &HexView::MenuRequested, this, [this](const QPoint& position) {
        if (!busy_.IsBusy()) commands_.Menu("mnuEdit")->popup(position);
    });
    connect(view, &HexView::ZoomRequested, this, [this](int steps) { Zoom(zoom_ + steps); });
    // What cannot go as far as the other one must not pull it back.
    connect(view, &HexView::TopChanged, other, [this, other](std::uint64_t line) {
        if (coupling_) return;
        const QScopedValueRollback<bool> coupling(coupling_, true);
        other->SetTop(line);
    });
    connect(view->horizontalScrollBar(), &QScrollBar::valueChanged, other->horizontalScrollBar(),
            [this, other](int value) {
                if (coupling_) return;
                const QScopedValueRollback<bool> coupling(coupling_, true);
                other->horizontalScrollBar()->setValue(value);
            });
}

// As wide as the dumps are, and no wider than the screen.
void frmHexDump::FitWidth() {
    const HexView* view = rtfHexDump[Side::Left];
    const int pane = view->DumpWidth() + view->verticalScrollBar()->sizeHint().width() +
                     2 * view->frameWidth() + kWindowMargin;
    const int wanted = pane * (isBesideShown_ ? 2 : 1) + 2 * kWindowMargin;
    const int height = wasShown_ ? this->height() : fontMetrics().lineSpacing() * 40;
    ResizeWithinScreen(*this, {wasShown_ ? std::max(width(), wanted) : wanted, height});
}

void frmHexDump::ShowBeside(bool shown) {
    isBesideShown_ = shown;
    if (!shown) {
        contents_.Close(Side::Right);
        txtFile[Side::Right]->SetPath({});
        current_ = Side::Left;
    }
    // Views of different heights would not have the same last line, and lines would not stand beside each
    // other.
    for (const Side side : kBothSides)
        rtfHexDump[side]->setHorizontalScrollBarPolicy(shown ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
    rtfHexDump[Side::Right]->parentWidget()->setVisible(shown);
    txtFile[Side::Left]->setAccessibleName(shown ? QStringLiteral("Path of File One")
                                                 : QStringLiteral("Path of the File"));
    txtFile[Side::Left]->setPlaceholderText(shown ? QStringLiteral("File One") : QStringLiteral("File"));
    lblFile[Side::Right]->setVisible(shown);
    FitWidth();
}

void frmHexDump::Zoom(int steps) {
    zoom_ = ClampedZoom(steps);
    for (const Side side : kBothSides) rtfHexDump[side]->SetViewFont(FixedFont(zoom_));
}

}  // namespace vantrel
