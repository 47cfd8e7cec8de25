// What the main window takes from the options and gives back to them: places, sizes, fonts.
#include <QComboBox>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <vector>

#include "main/forms/frm_main.h"
#include "platform/forms/qt_text.h"
#include "settings/option_table.h"

namespace vantrel {
namespace {

// What the window manager puts around a window, as long as that is not known.
constexpr QSize kUsualFrame(16, 48);

// The dots per inch that the windows' own pixels stand for, at every scale factor.
constexpr double kLogicalDpi = 96;
constexpr QSize kLeastSize(640, 400);

TwipsRect ToTwips(const QRect& pixels) {
    return {TwipsFromPixels(pixels.left(), kLogicalDpi), TwipsFromPixels(pixels.top(), kLogicalDpi),
            TwipsFromPixels(pixels.width(), kLogicalDpi), TwipsFromPixels(pixels.height(), kLogicalDpi)};
}

QRect ToPixels(const TwipsRect& twips) {
    return {PixelsFromTwips(twips.left, kLogicalDpi), PixelsFromTwips(twips.top, kLogicalDpi),
            PixelsFromTwips(twips.width, kLogicalDpi), PixelsFromTwips(twips.height, kLogicalDpi)};
}

// The usable areas, the main screen first.
std::vector<TwipsRect> Screens() {
    std::vector<TwipsRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.insert(screen == QGuiApplication::primaryScreen() ? areas.begin() : areas.end(),
                     ToTwips(screen->availableGeometry()));
    return areas;
}

ToolbarStyle StyleOf(CoolbarStyle style) {
    switch (style) {
        case CoolbarStyle::Coolbar:
            return ToolbarStyle::Coolbar;
        case CoolbarStyle::Toolbar:
            return ToolbarStyle::Toolbar;
        case CoolbarStyle::Hidden:
            break;
    }
    return ToolbarStyle::Hidden;
}

using ColumnMembers = std::array<std::int32_t Options::*, 3>;
constexpr PerSide<ColumnMembers> kColumns{
    {ColumnMembers{&Options::sourceColumnOne, &Options::sourceColumnTwo, &Options::sourceColumnThree},
     ColumnMembers{&Options::targetColumnOne, &Options::targetColumnTwo, &Options::targetColumnThree}}};

// While they are the defaults, the columns are fitted: whoever changes one wants it so.
PaneView::Widths StoredWidths(const Options& options, Side side) {
    PaneView::Widths widths{};
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = options.*kColumns[side][i];
    return widths;
}

}  // namespace

void frmMain::ShowOption(ShownBy part) {
    switch (part) {
        case ShownBy::Geometry:
            RestoreGeometry();
            break;
        case ShownBy::Strips:
            ShowStrip();
            break;
        case ShownBy::PaneLooks:
            ShowLooks();
            break;
        case ShownBy::Scrolling:
            panesWidget_->Scrolling().SetFollows(parts_.options.coupleAllScrolling
                                                     ? PaneScrolling::Follows::AllMoves
                                                     : PaneScrolling::Follows::Bars);
            panesWidget_->Scrolling().SetOn(parts_.options.syncScrolling);
            break;
        case ShownBy::CheckMark:
        case ShownBy::PathBoxes:
        case ShownBy::SubFolderRecords:
        case ShownBy::ViewToggles:
            break;
    }
    commands_.RefreshChecks();
}

void frmMain::ShowStrip() {
    const ToolbarStyle style = StyleOf(parts_.options.coolbarStyle);
    coolBar_->setVisible(style == ToolbarStyle::Coolbar);
    toolbar_->setVisible(style == ToolbarStyle::Toolbar);
    ResizeForm();
}

void frmMain::ShowLooks() {
    const Options& options = parts_.options;
    looks_.font = ownFont_;
    if (!options.fontName.empty()) looks_.font.setFamily(ToQString(options.fontName));
    if (options.fontSize > 0) looks_.font.setPointSizeF(options.fontSize);
    panesWidget_->SetLooks(looks_);
    for (const Side side : kBothSides) boxes_[side]->Combo()->setFont(looks_.font);
    ResizeForm();
}

void frmMain::RestoreGeometry() {
    const Options& options = parts_.options;
    for (const Side side : kBothSides) {
        panesWidget_->View(side).SetColumnWidths(StoredWidths(options, side));
        panesWidget_->SetColumnsFitted(side, StoredWidths(options, side) == StoredWidths(Options(), side));
    }
    setMinimumSize(kLeastSize);
    // Of the size that is stored, and at the place that is stored for it with its frame.
    const QSize frame = isVisible() ? frameGeometry().size() - size() : kUsualFrame;
    QRect place = ToPixels({options.left, options.top, options.width, options.height});
    place.setSize(place.size() + frame);
    const TwipsRect least = ToTwips(QRect(QPoint(0, 0), kLeastSize + frame));
    place = ToPixels(FitToScreens(ToTwips(place), Screens(), least));
    resize(place.size() - frame);
    move(place.topLeft());
    if (options.windowState == WindowState::Maximized) setWindowState(Qt::WindowMaximized);
}

bool frmMain::CollectGeometry(Options& options) const {
    for (const Side side : kBothSides) {
        const PaneView& view = panesWidget_->View(side);
        const PaneView::Widths widths =
            view.AreColumnsFitted() ? StoredWidths(Options(), side) : view.ColumnWidths();
        for (std::size_t i = 0; i < widths.size(); ++i) options.*kColumns[side][i] = widths[i];
    }
    options.windowState = isMaximized() ? WindowState::Maximized : WindowState::Normal;
    if (isMaximized() || isMinimized()) return false;
    const TwipsRect place = ToTwips(QRect(pos(), size()));
    options.left = std::max(place.left, 0);
    options.top = std::max(place.top, 0);
    options.width = place.width;
    options.height = place.height;
    return true;
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    ResizeForm();
}

// The layouts keep panes and boxes fitted; what is left are the parts that must stand below or above others.
void frmMain::ResizeForm() {
    if (isMinimized()) return;
    cmdSwapSides_->setFixedWidth(panesWidget_->Toggles().width());
    const PaneView& right = panesWidget_->View(Side::Right);
    statusBar_->FitToPanes(right.mapTo(this, QPoint(0, 0)).x());
}

}  // namespace vantrel
