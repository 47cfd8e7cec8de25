#include "main/forms/frm_main.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "core/row_texts.h"
#include "main/command_table.h"
#include "main/forms/text_window.h"
#include "platform/forms/icons.h"
#include "platform/forms/other_pane_key.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"
#include "settings/options.h"
#include "views/forms/dragged_paths.h"
#include "views/forms/path_offer.h"

namespace vantrel {
namespace {

// The names of the controls of a side.
constexpr PerSide<const char*> kPathBoxes{{"cboSourcePath", "cboTargetPath"}};
constexpr PerSide<const char*> kPathIcons{{"imgSelectSource", "imgSelectTarget"}};
constexpr PerSide<const char*> kOffers{{"cmdSourcePartner", "cmdTargetPartner"}};
constexpr PerSide<const char*> kMainPanes{{"lvwSourceDirFiles", "lvwTargetDirFiles"}};

}  // namespace

frmMain::frmMain(const Parts& parts, const std::string& appVersion)
    : parts_(parts), commands_(parts_.busy, parts_.tools.reporter), popups_(commands_, parts_.panes) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Vantrel v") + ToQString(appVersion));
    setWindowIcon(ProgramIcon());
    setContextMenuPolicy(Qt::NoContextMenu);
    // Before all that the window holds: it sees the focus that a job finds, and gives it back last.
    parts_.busy.AddObserver(this);
    commands_.Build(menuBar(), MainWindowTables());
    MakeStrips();
    LayOut();
    for (const Side side : kBothSides) {
        WirePathBox(side);
        WirePane(side);
    }
    commands_.BindCheck("mnuViewViewAll", [this] { return parts_.panes.CheckedViewItem() == kViewAll; });
    commands_.BindCheck("mnuViewDifferences",
                        [this] { return parts_.panes.CheckedViewItem() == kViewDifferent; });
    commands_.BindCheck("mnuViewSimilarities",
                        [this] { return parts_.panes.CheckedViewItem() == kViewSimilar; });
    commands_.BindCheck("mnuViewOther", [this] { return parts_.panes.CheckedViewItem() == kViewCustom; });
    auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
    connect(find, &QShortcut::activated, this,
            Guarded("txtFind", "GotFocus", [this] { panesWidget_->OpenFind(); }));
    parts_.panes.AddObserver(this);
    ViewSelectionsChanged();
}

frmMain::~frmMain() {
    parts_.panes.RemoveObserver(this);
    parts_.busy.RemoveObserver(this);
}

void frmMain::MakeStrips() {
    coolBar_ = new CommandStrip(ToolbarStyle::Coolbar, ToolbarEntries(), commands_, this);
    toolbar_ = new CommandStrip(ToolbarStyle::Toolbar, ToolbarEntries(), commands_, this);
    for (CommandStrip* strip : {coolBar_, toolbar_}) {
        addToolBar(strip);
        strip->hide();
    }
}

void frmMain::LayOut() {
    const ResultIcons icons = [](ResultType type, bool colour) {
        return ResultTypeIcon(static_cast<int>(type), colour ? IconColours::Colour : IconColours::Gray);
    };
    auto* centre = new QWidget(this);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(6, 6, 6, 2);
    column->setSpacing(6);
    MakePathRow(centre, column);
    panesWidget_ = new PanesWidget(parts_.panes, parts_.tools.locale, icons, centre);
    looks_.background =
        QPixmap(DialogPath(parts_.tools.folders.SupportFile(parts_.tools.files, "lvwback.gif")));
    connect(panesWidget_, &PanesWidget::PanesResized, this, &frmMain::ResizeForm);
    column->addWidget(panesWidget_, 1);
    operationLine_ = new OperationLine(centre);
    connect(operationLine_, &OperationLine::ListAsked, this, Guarded("cmdNotDone", "Click", [this] {
                ShowText(parts_.tools, QStringLiteral("Not Done"), operationLine_->NotDone(), this);
            }));
    column->addWidget(operationLine_);
    setCentralWidget(centre);
    statusBar_ = new MainStatusBar(this);
    setStatusBar(statusBar_);
    GoBetweenByF6(*this, {&panesWidget_->View(Side::Left), &panesWidget_->View(Side::Right)});
    setTabOrder(boxes_[Side::Left]->Icon(PathIcon::Explore), cmdSwapSides_);
    setTabOrder(cmdSwapSides_, boxes_[Side::Right]->Combo());
    setTabOrder(boxes_[Side::Right]->Icon(PathIcon::Explore), offers_[Side::Left]);
    setTabOrder(offers_[Side::Left], offers_[Side::Right]);
    setTabOrder(offers_[Side::Right], &panesWidget_->View(Side::Left));
    boxes_[Side::Left]->setFocus();
}

void frmMain::MakePathRow(QWidget* centre, QBoxLayout* column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    PerSide<QVBoxLayout*> halves;
    for (const Side side : kBothSides) {
        boxes_[side] = new PathBox(side, parts_.tools.files, parts_.tools.loop, centre);
        // The boxes share the width as the panes below them do, whatever their texts.
        boxes_[side]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        offers_[side] = new PathOffer(centre);
        offers_[side]->setObjectName(QLatin1String(kOffers[side]));
        connect(offers_[side], &PathOffer::Taken, this,
                Guarded(kOffers[side], "Click",
                        [this, side](const std::string& path) { SetPathText(side, path); }));
        halves[side] = new QVBoxLayout;
        halves[side]->setSpacing(2);
        halves[side]->addWidget(boxes_[side]);
        halves[side]->addWidget(offers_[side]);
        halves[side]->addStretch(1);
    }
    ownFont_ = boxes_[Side::Left]->Combo()->font();
    cmdSwapSides_ = new QToolButton(centre);
    cmdSwapSides_->setObjectName(QStringLiteral("cmdSwapSides"));
    cmdSwapSides_->setIcon(CommandIcon(QLatin1String("swap")));
    cmdSwapSides_->setIconSize({16, 16});
    cmdSwapSides_->setAutoRaise(true);
    cmdSwapSides_->setFocusPolicy(Qt::TabFocus);
    cmdSwapSides_->setToolTip(QStringLiteral("Swap the Left and the Right Folder"));
    cmdSwapSides_->setAccessibleName(cmdSwapSides_->toolTip());
    connect(cmdSwapSides_, &QToolButton::clicked, this,
            Guarded("cmdSwapSides", "Click", [this](bool) { SwapSides(); }));
    row->addLayout(halves[Side::Left], 1);
    row->addWidget(cmdSwapSides_, 0, Qt::AlignTop);
    row->addLayout(halves[Side::Right], 1);
    column->addLayout(row);
}

void frmMain::SwapSides() {
    if (parts_.busy.IsBusy()) return;
    const PerSide<std::string> paths{{PathText(Side::Left), PathText(Side::Right)}};
    for (const Side side : kBothSides) SetPathText(side, paths[Other(side)]);
}

// The folder with which the one just chosen was compared last, for the other side, if it still is in the list
// there and not in the box already.
void frmMain::OfferPartner(Side side) {
    const auto partner = parts_.history.PartnerOf(Index(side), PathText(side));
    PathBox* other = boxes_[Other(side)];
    const auto folders = other->Folders();
    if (!partner || std::ranges::find(folders, *partner) == folders.end()) return;
    if (NormalizePath(other->Path()) != NormalizePath(*partner)) offers_[Other(side)]->Offer(*partner);
}

void frmMain::HideOffers() {
    for (const Side side : kBothSides) offers_[side]->hide();
}

void frmMain::WirePathBox(Side side) {
    PathBox* box = boxes_[side];
    box->SetState({.busy = [this] { return parts_.busy.IsBusy(); },
                   .fillingOrRun = [this] { return PopulatingFolderCombos || parts_.compare.RunningCompare; },
                   .autoComplete = [this] { return parts_.options.autoCompleteFolderPath; }});
    connect(box, &PathBox::Changed, this, Guarded(kPathBoxes[side], "Change", [this] {
                HideOffers();
                parts_.panes.RemoveListItemsAndShowNoCompareMsg();
            }));
    connect(box, &PathBox::ChosenFromList, this,
            Guarded(kPathBoxes[side], "Click", [this, side] { OfferPartner(side); }));
    connect(box, &PathBox::CompareRequested, this, Guarded(kPathBoxes[side], "KeyPress", [this] {
                if (hooks_.compare) hooks_.compare();
            }));
    connect(box, &PathBox::IconClicked, this, Guarded(kPathIcons[side], "Click", [this, side](PathIcon icon) {
                if (hooks_.pathIcon) hooks_.pathIcon(side, icon);
            }));
}

void frmMain::WirePane(Side side) {
    PaneView* view = &panesWidget_->View(side);
    view->setAcceptDrops(false);
    view->viewport()->setAcceptDrops(false);
    const auto guarded = [this, side](const char* event, auto work) {
        return Guarded(kMainPanes[side], event, work);
    };
    connect(view, &PaneView::RowActivated, this,
            guarded("DblClick", [this, side](std::size_t row, const QPoint& position) {
                popups_.DoubleClick(side, row, position);
            }));
    connect(view, &PaneView::MenuRequested, this,
            guarded("MouseUp", [this, side](const QPoint& position) { popups_.Open(side, position); }));
    connect(
        view, &PaneView::DeleteRequested, this, guarded("KeyDown", [this](bool permanently) {
            commands_.Run(permanently ? "mnuFileDeletePermanently" : "mnuFileSendSelectedFilesToRecycleBin");
        }));
    connect(view, &PaneView::DragRequested, this, guarded("OLEStartDrag", [this, side] { DragOut(side); }));
    connect(view, &PaneView::UrisDropped, this,
            guarded("OLEDragDrop", [this, side](const QList<QUrl>& uris, Qt::KeyboardModifiers keys) {
                OnDrop(side, uris, keys);
            }));
}

void frmMain::SetDropHandler(DropHandler handler) {
    dropHandler_ = std::move(handler);
    for (const Side side : kBothSides) {
        panesWidget_->View(side).setAcceptDrops(bool(dropHandler_));
        panesWidget_->View(side).viewport()->setAcceptDrops(bool(dropHandler_));
    }
}

// The drop ends first: the program that it comes from waits, and what follows may ask the user.
void frmMain::OnDrop(Side side, const QList<QUrl>& uris, Qt::KeyboardModifiers keys) {
    const DropKeys pressed{.control = keys.testFlag(Qt::ControlModifier),
                           .shift = keys.testFlag(Qt::ShiftModifier)};
    const auto drop = [this, paths = DroppedPaths(uris), folder = PaneFolder(side), pressed] {
        if (parts_.busy.IsBusy() || !dropHandler_) return;
        const DropAction action = ProcessOLEDragDrop(parts_.tools, paths, folder, pressed);
        if (action != DropAction::None) dropHandler_(action, paths, folder);
    };
    QTimer::singleShot(0, this, Guarded(kMainPanes[side], "OLEDragDrop", drop));
}

void frmMain::DragOut(Side side) {
    if (parts_.busy.IsBusy()) return;
    const PaneList& list = parts_.panes.Pane(side);
    std::vector<std::string> paths;
    for (const std::size_t row : list.SelectedRows())
        paths.push_back(ObjectPath(parts_.results.folders[side], list[row]));
    DragPaths(&panesWidget_->View(side), paths);
}

void frmMain::StatusTextsChanged() {
    statusBar_->SetPanel(1, parts_.panes.StatusText(Side::Left));
    statusBar_->SetPanel(2, parts_.panes.StatusText(Side::Right));
    statusBar_->SetPanel(4, parts_.panes.ViewText());
}

void frmMain::ViewSelectionsChanged() {
    commands_.RefreshChecks();
    statusBar_->SetHiddenTypes(parts_.panes.ViewSelections().HiddenTypesText());
}

void frmMain::PopulateDirComboBoxesFromIniFile() {
    PathHistory::Lists lists;
    const Error error = parts_.history.PopulateDirComboBoxesFromIniFile(lists);
    ShowFolders(lists);
    if (!error.IsOk()) parts_.tools.reporter.ReportError("frmMain.PopulateDirComboBoxesFromIniFile", error);
}

void frmMain::ShowFolders(const PathHistory::Lists& lists) {
    const QScopedValueRollback<bool> populating(PopulatingFolderCombos, true);
    for (const Side side : kBothSides) boxes_[side]->SetFolders(lists[Index(side)]);
}

std::string frmMain::PaneFolder(Side side) const {
    return parts_.results.HasResult() ? parts_.results.folders[side] : PathText(side);
}

std::string frmMain::SelectedPath() const {
    const auto side = parts_.panes.CurrentListview();
    const ResultRow* row = side ? parts_.panes.Pane(*side).SelectedObject() : nullptr;
    return row ? ObjectPath(parts_.results.folders[*side], *row) : std::string();
}

std::string frmMain::PathText(Side side) const {
    return boxes_[side]->Path();
}

void frmMain::SetPathText(Side side, const std::string& path) {
    boxes_[side]->SetPath(path);
}

void frmMain::BusyChanged(bool busy) {
    // What is disabled loses the focus: buttons and path boxes, not the panes.
    if (busy) {
        QWidget* at = focusWidget();
        const bool inBox =
            std::ranges::any_of(boxes_.values, [at](PathBox* box) { return box->isAncestorOf(at); });
        focusBeforeJob_ = inBox || qobject_cast<QToolButton*>(at) ? at : nullptr;
    }
    for (const Side side : kBothSides) boxes_[side]->ShowBusy(busy);
    panesWidget_->ShowBusy(busy);
    cmdSwapSides_->setEnabled(!busy);
    if (busy) HideOffers();
    operationLine_->setEnabled(!busy);
    if (busy) return;
    if (focusBeforeJob_) focusBeforeJob_->setFocus();
    if (closeAfterJob_) QTimer::singleShot(0, this, &frmMain::close);
}

void frmMain::SetFilterPanel(std::string_view text) {
    statusBar_->SetPanel(3, text);
}

void frmMain::RaiseMainWindow() {
    if (!isMinimized()) raise();
}

void frmMain::StayInViewOnce() {
    constexpr int kComesUpWithin = 15'000;  // milliseconds; a browser may have to start
    constexpr int kPaintsWithin = 500;
    raise();
    activateWindow();
    auto* watch = new QTimer(this);
    watch->setSingleShot(true);
    connect(watch, &QTimer::timeout, watch, &QObject::deleteLater);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, watch,
            [this, watch](Qt::ApplicationState now) {
                if (now == Qt::ApplicationActive) return;
                watch->deleteLater();
                QTimer::singleShot(kPaintsWithin, this, &frmMain::RaiseMainWindow);
            });
    watch->start(kComesUpWithin);
}

void frmMain::AddPathsToIni(const std::string& left, const std::string& right) {
    PathHistory::Lists lists;
    const Error error = parts_.history.AddPathsToIni(left, right, lists);
    ShowFolders(lists);
    if (!error.IsOk()) parts_.tools.reporter.ReportError("frmMain.AddPathsToIni", error);
}

void frmMain::ShowFileComparisonResults(const std::string& text) {
    ShowText(parts_.tools, QStringLiteral("Comparison Results"), text, this);
}

void frmMain::TellOperation(const std::string& text, const std::string& notDone) {
    if (text.empty())
        operationLine_->hide();
    else
        operationLine_->Tell(text, notDone);
}

void frmMain::closeEvent(QCloseEvent* event) {
    // A job holds on to what the window owns: it is asked to end, and the window closes behind it.
    if (parts_.busy.IsBusy()) {
        event->ignore();
        if (closeAfterJob_ || asksToStop_) return;
        const QScopedValueRollback<bool> asks(asksToStop_, true);
        if (hooks_.mayStopJob && !hooks_.mayStopJob()) return;
        closeAfterJob_ = true;
        if (hooks_.cancelJob) hooks_.cancelJob();
        return;
    }
    closed_ = true;
    if (const auto unload = std::exchange(hooks_.unload, nullptr)) unload();
    event->accept();
}

}  // namespace vantrel
