// What the window is made of, and the wires between its parts.
#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "main/application.h"
#include "main/forms/frm_sub_dir_diffs.h"
#include "main/forms/text_window.h"
#include "main/sub_dir_command_table.h"
#include "platform/forms/icons.h"
#include "platform/forms/other_pane_key.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "views/forms/operation_line.h"
#include "views/forms/toolbars.h"

namespace vantrel {
namespace {

constexpr int kMargin = 6;
constexpr PerSide<const char*> kSubDirPanes{{"lvwDirOneDiffs", "lvwDirTwoDiffs"}};
constexpr PerSide<const char*> kFolderLabels{{"lblFolderOne", "lblFolderTwo"}};

// The rest of a pane's width is shared by names and dates as it was before; the size takes a tenth, and as
// much as it needs at least.
PaneView::Widths ColumnsFor(const PaneView& view, int width, bool isFirst) {
    const PaneView::Widths now = view.ColumnWidths();
    const int size = std::max(width / 10, view.WidthForContents(PaneModel::Size));
    const int rest = std::max(width - size, 2);
    int date = 0;
    if (isFirst) {
        date = std::min(rest * 2 / 5, view.WidthForContents(PaneModel::ModifiedDate));
    } else {
        date = now[PaneModel::ModifiedDate] * rest /
               std::max(now[PaneModel::Name] + now[PaneModel::ModifiedDate], 1);
    }
    return {rest - date, size, date};
}

}  // namespace

template <typename Work>
auto frmSubDirDiffs::Guarded(const char* control, const char* event, Work work) {
    return [this, routine = std::string("frmSubDirDiffs.") + control + event, work](const auto&... values) {
        application_.GuardRun(routine, [&] { work(values...); });
    };
}

frmSubDirDiffs::frmSubDirDiffs(Application& application, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint),
      txtFilter(new QLineEdit(this)),
      lblLeftAlone(new QLabel(this)),
      application_(application),
      lists_(application.reporter, application.busy),
      commands_(application.busy, application.reporter),
      operations_(application.tools, application.operations->Wrappers(), *this),
      synchronization_(application.tools, operations_, application.operations->syncSettings, *this) {
    setObjectName(QStringLiteral("frmSubDirDiffs"));
    setWindowTitle(QStringLiteral("View Sub-Folder Differences"));
    setWindowIcon(ProgramIcon());
    lists_.SetLocale(application.around.locale);
    LayOut();
    for (const Side side : kBothSides) WirePane(side);
    connect(txtFilter, &QLineEdit::textChanged, this,
            Guarded("txtFilter", "_Change", [this](const QString&) { FilterChanged(); }));
    txtFilter->installEventFilter(this);
    lists_.AddObserver(this);
    application_.busy.AddObserver(this);
    lists_.SetCurrentListview(Side::Left);
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 160, fontMetrics().lineSpacing() * 38});
    View(Side::Left).setFocus();
}

frmSubDirDiffs::~frmSubDirDiffs() {
    application_.busy.RemoveObserver(this);
    lists_.RemoveObserver(this);
    // It observes the lists, which go before the base class deletes its children.
    delete panes_;
}

void frmSubDirDiffs::MakeMenusAndToolbar() {
    auto* bar = new QMenuBar(this);
    commands_.Build(bar, SubDirDiffsTables());
    for (const char* command : {"mnuFileClose", "mnuExtrasFilter", "mnuExtrasHelp"})
        commands_.Action(command)->setShortcutContext(Qt::WindowShortcut);
    layout()->setMenuBar(bar);
    InstallHandlers();
    const bool large = application_.options.coolbarStyle == CoolbarStyle::Coolbar;
    SubDirDiffsToolbar = new CommandStrip(large ? ToolbarStyle::Coolbar : ToolbarStyle::Toolbar,
                                          SubDirDiffsToolbarEntries(), commands_, this);
    SubDirDiffsToolbar->setObjectName(QStringLiteral("SubDirDiffsToolbar"));
    SubDirDiffsToolbar->setContextMenuPolicy(Qt::NoContextMenu);
    connect(&commands_, &Commands::BusyShown, SubDirDiffsToolbar,
            [this](bool busy) { SubDirDiffsToolbar->setEnabled(!busy); });
}

void frmSubDirDiffs::LayOut() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    MakeMenusAndToolbar();

    txtFilter->setObjectName(QStringLiteral("txtFilter"));
    txtFilter->setAccessibleName(QStringLiteral("Filter by Name"));
    txtFilter->setPlaceholderText(QStringLiteral("Filter by name"));
    txtFilter->setToolTip(
        QStringLiteral("Shows only files whose path holds this text; /text: begins with it"));
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setMaximumWidth(fontMetrics().averageCharWidth() * 36);
    auto* top = new QHBoxLayout;
    top->setContentsMargins(0, 0, kMargin, 0);
    top->addWidget(SubDirDiffsToolbar, 1);
    top->addWidget(txtFilter);
    column->addLayout(top);

    auto* middle = new QVBoxLayout;
    middle->setContentsMargins(kMargin, 0, kMargin, 0);
    middle->setSpacing(4);
    lblLeftAlone->setObjectName(QStringLiteral("lblLeftAlone"));
    lblLeftAlone->setTextFormat(Qt::PlainText);
    lblLeftAlone->setWordWrap(true);
    lblLeftAlone->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblLeftAlone->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblLeftAlone->hide();
    middle->addWidget(lblLeftAlone);
    auto* folders = new QHBoxLayout;
    folders->setSpacing(4);
    for (const Side side : kBothSides) {
        lblFolder[side] = new PathLabel;
        lblFolder[side]->setObjectName(QLatin1String(kFolderLabels[side]));
        folders->addWidget(lblFolder[side], 1);
    }
    middle->addLayout(folders);
    const ResultIcons icons = [](ResultType type, bool colour) {
        return ResultTypeIcon(static_cast<int>(type), colour ? IconColours::Colour : IconColours::Gray);
    };
    panes_ =
        new AlignedPanesWidget(lists_, {.viewNames = kSubDirPanes, .content = PaneModel::Content::SubFolder},
                               application_.tools.locale, icons, this);
    panes_->SetLooks(application_.Window().Looks());
    panes_->Scrolling().SetFollows(application_.options.coupleAllScrolling ? PaneScrolling::Follows::AllMoves
                                                                           : PaneScrolling::Follows::Bars);
    panes_->Scrolling().SetOn(application_.options.syncScrolling);
    connect(panes_, &AlignedPanesWidget::PanesResized, this, &frmSubDirDiffs::FitPanes);
    middle->addWidget(panes_, 1);
    operationLine_ = new OperationLine(this);
    connect(operationLine_, &OperationLine::ListAsked, this, Guarded("cmdNotDone", "_Click", [this] {
                ShowText(application_.tools, QStringLiteral("Not Done"), operationLine_->NotDone(), this);
            }));
    middle->addWidget(operationLine_);
    column->addLayout(middle, 1);
    GoBetweenByF6(*this, {&View(Side::Left), &View(Side::Right)});
    StatusBar1 = new MainStatusBar(this);
    column->addWidget(StatusBar1);
}

void frmSubDirDiffs::WirePane(Side side) {
    PaneView* view = &View(side);
    const auto guarded = [this, side](const char* event, auto work) {
        return Guarded(kSubDirPanes[side], event, work);
    };
    connect(view, &PaneView::RowActivated, this,
            guarded("_DblClick", [this, side](std::size_t row, const QPoint&) { OpenRow(side, row); }));
    connect(view, &PaneView::MenuRequested, this, [this](const QPoint& position) {
        if (!commands_.IsBusy()) commands_.Menu("mnuFile")->popup(position);
    });
    connect(view, &PaneView::DeleteRequested, this, [this](bool permanently) {
        commands_.Run(permanently ? "mnuFileDeletePermanently" : "mnuFileDeleteRecycle");
    });
    connect(view, &PaneView::DragRequested, this, guarded("_OLEStartDrag", [this, side] { DragOut(side); }));
    // The drop ends first: what follows may ask the user.
    connect(view, &PaneView::UrisDropped, this,
            [this, side](const QList<QUrl>& uris, Qt::KeyboardModifiers keys) {
                QTimer::singleShot(0, this, Guarded("ProcessDragDrop", "", [this, side, uris, keys] {
                                       ProcessDragDrop(side, uris, keys);
                                   }));
            });
}

void frmSubDirDiffs::FitPanes() {
    for (const Side side : kBothSides) {
        PaneView& view = View(side);
        const int width = view.width() - 2 * view.frameWidth() - view.verticalScrollBar()->sizeHint().width();
        if (width <= 0 || width == laidOutWidths_[side]) continue;
        view.SetColumnWidths(ColumnsFor(view, width, laidOutWidths_[side] == 0));
        laidOutWidths_[side] = width;
    }
    StatusBar1->FitToPanes(showsProgress_ ? width() : View(Side::Right).mapTo(this, QPoint(0, 0)).x());
}

bool frmSubDirDiffs::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtFilter || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            if (txtFilter->text().isEmpty()) return false;
            txtFilter->clear();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            View(PressedPane()).setFocus();
            return true;
        default:
            return false;
    }
}

}  // namespace vantrel
