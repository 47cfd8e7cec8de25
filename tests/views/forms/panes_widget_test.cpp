#include "views/forms/panes_widget.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

#include "core/row_texts.h"
#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using testing::FillAtRandom;
using testing::PanesStage;
using enum ResultType;

QIcon PlainIcon(ResultType type, bool colour) {
    QPixmap picture(16, 16);
    picture.fill(colour ? QColor::fromHsv(static_cast<int>(type) * 40, 255, 255) : QColor(Qt::gray));
    return QIcon(picture);
}

class PanesWidgetTest : public ::testing::Test {
  protected:
    void Show() {
        stage.panes.ApplyViewTypes();
        widget.resize(1100, 400);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    }
    void ShowNames(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            if (name.empty())
                AddPair(stage.hold, "only right", {}, {Orphan, 5});
            else
                AddPair(stage.hold, name, {Same, 7}, {Same, 7});
        Show();
    }
    PaneView& Left() { return widget.View(Side::Left); }
    PaneView& Right() { return widget.View(Side::Right); }
    QPoint Middle(PaneView& view, int row) { return view.visualRect(view.model()->index(row, 1)).center(); }
    void Click(PaneView& view, int row, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, keys, Middle(view, row));
    }
    void Wheel(PaneView& view, QPoint pixels, QPoint angle) {
        QWheelEvent wheel({50, 50}, view.viewport()->mapToGlobal(QPointF(50, 50)), pixels, angle,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &wheel);
    }
    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        Left().setFocus();
        QTest::keyClick(&Left(), static_cast<Qt::Key>(key), keys);
    }
    std::vector<std::size_t> Selected(Side side = Side::Left) {
        return stage.panes.Pane(side).SelectedRows();
    }

    PanesStage stage;
    PanesWidget widget{stage.panes, stage.locale, PlainIcon};
};

TEST_F(PanesWidgetTest, TheThreeColumnsShowWhatTheRowsHold) {
    AddPair(stage.hold, "big.bin", {Newer, 1'234'567}, {Older, 0});
    AddPair(stage.hold, "sub", {DifferentFolder, 10}, {DifferentFolder, 20});
    AddPair(stage.hold, "lone", {Orphan, 1}, {});
    Show();
    const auto cell = [](PaneView& view, int row, int column, int role = Qt::DisplayRole) {
        return view.model()->index(row, column).data(role);
    };
    const auto text = [&cell](PaneView& view, int row, int column) {
        return cell(view, row, column).toString().toStdString();
    };
    EXPECT_EQ(text(Left(), 0, 0), "big.bin");
    EXPECT_EQ(text(Left(), 0, 1), stage.locale.Number(Currency::FromWhole(1'234'567)));
    EXPECT_EQ(text(Left(), 0, 2), stage.locale.DateTime(FileTimeToLocalFileTime(stage.Left()[0].lastWrite)));
    EXPECT_EQ(text(Right(), 0, 1), "0");
    EXPECT_EQ(text(Left(), 1, 0), "\\sub");
    EXPECT_EQ(text(Left(), 1, 2), "");
    EXPECT_EQ(text(Right(), 2, 0) + text(Right(), 2, 1) + text(Right(), 2, 2), "");
    EXPECT_TRUE(cell(Right(), 2, 0, Qt::DecorationRole).isNull());
    EXPECT_FALSE(cell(Left(), 2, 0, Qt::DecorationRole).isNull());
    EXPECT_TRUE(cell(Left(), 0, 1, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    EXPECT_EQ(cell(Left(), 0, 0, Qt::AccessibleTextRole).toString(), QStringLiteral("big.bin, Newer"));
    EXPECT_EQ(Left().model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Modified Date"));
    EXPECT_EQ(Right().model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Modified  Date"));
}

TEST_F(PanesWidgetTest, ClicksSelectAndAClickInOnePaneClearsTheOther) {
    ShowNames({"a", "b", "", "c", "d"});
    Click(Left(), 0);
    EXPECT_THAT(Selected(), ElementsAre(0));
    Click(Left(), 4, Qt::ShiftModifier);
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 3, 4));
    Click(Left(), 1, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(0, 3, 4));
    Click(Left(), 2);
    EXPECT_THAT(Selected(), ElementsAre());
    Click(Left(), 3);
    Click(Right(), 2);
    EXPECT_THAT(Selected(), ElementsAre());
    EXPECT_THAT(Selected(Side::Right), ElementsAre(2));
    EXPECT_EQ(stage.panes.CurrentListview(), Side::Right);
    QTest::mouseClick(Right().viewport(), Qt::LeftButton, {}, QPoint(5, Right().viewport()->height() - 5));
    EXPECT_THAT(Selected(Side::Right), ElementsAre());

    const BusyState::Job job(stage.busy);
    Click(Left(), 0);
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre());
    EXPECT_EQ(stage.panes.CurrentListview(), Side::Right);
}

TEST_F(PanesWidgetTest, KeysMoveExtendAndToggle) {
    ShowNames({"a", "b", "", "c", "d", "e"});
    Key(Qt::Key_Down);
    EXPECT_THAT(Selected(), ElementsAre(0));
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 3));
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 3));
    Key(Qt::Key_Space);
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 3, 5));
    Key(Qt::Key_Home);
    EXPECT_THAT(Selected(), ElementsAre(0));
    Key(Qt::Key_PageDown);
    EXPECT_THAT(Selected(), ElementsAre(5));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre(0, 1, 3, 4, 5));
    EXPECT_EQ(stage.panes.StatusText(Side::Left), "Selected 5 object(s)  (35 Bytes)");
    Key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre());
    EXPECT_EQ(stage.Left().SelectedItem(), std::nullopt);
}

TEST_F(PanesWidgetTest, TypedLettersSearchAndTheSameLetterGoesOn) {
    ShowNames({"apple", "banana", "bear", "beast of", "berry"});
    Left().keyboardSearch(QStringLiteral("b"));
    EXPECT_THAT(Selected(), ElementsAre(1));
    Left().keyboardSearch(QStringLiteral("b"));
    EXPECT_THAT(Selected(), ElementsAre(2));
    Key(Qt::Key_Home);
    for (char letter : std::string("beast o")) QTest::keyClick(&Left(), letter);
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(PanesWidgetTest, SignalsTellOfDoubleClicksMenusDeletesAndDrags) {
    ShowNames({"a", "b", "", "c"});
    QSignalSpy activated(&Left(), &PaneView::RowActivated), menu(&Left(), &PaneView::MenuRequested);
    QSignalSpy removed(&Left(), &PaneView::DeleteRequested), dragged(&Left(), &PaneView::DragRequested);
    QTest::mouseDClick(Left().viewport(), Qt::LeftButton, {}, Middle(Left(), 1));
    QTest::mouseDClick(Left().viewport(), Qt::LeftButton, {}, Middle(Left(), 2));
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated[0][0].value<std::size_t>(), 1U);

    Click(Left(), 0);
    Click(Left(), 1, Qt::ControlModifier);
    // The right button keeps a selection that it is pressed on, and moves one that it is not.
    for (int row : {1, 3}) {
        QTest::mousePress(Left().viewport(), Qt::RightButton, {}, Middle(Left(), row));
        QContextMenuEvent event(QContextMenuEvent::Mouse, Middle(Left(), row), QCursor::pos());
        QApplication::sendEvent(Left().viewport(), &event);
        EXPECT_EQ(Selected().size(), row == 1 ? 2U : 1U);
    }
    EXPECT_EQ(menu.size(), 2);

    Key(Qt::Key_Delete);
    Key(Qt::Key_Delete, Qt::ShiftModifier);
    ASSERT_EQ(removed.size(), 2);
    EXPECT_FALSE(removed[0][0].toBool());
    EXPECT_TRUE(removed[1][0].toBool());

    // A drag of two rows leaves them selected; a click without a move selects the one.
    const auto dragFrom = [this](int row) {
        QTest::mousePress(Left().viewport(), Qt::LeftButton, {}, Middle(Left(), row));
        const QPointF goal = Middle(Left(), row) + QPoint(60, 0);
        QMouseEvent move(QEvent::MouseMove, goal, Left().viewport()->mapToGlobal(goal), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Left().viewport(), &move);
        QTest::mouseRelease(Left().viewport(), Qt::LeftButton, {}, goal.toPoint());
    };
    Click(Left(), 0);
    Click(Left(), 1, Qt::ShiftModifier);
    dragFrom(0);
    EXPECT_EQ(dragged.size(), 1);
    EXPECT_THAT(Selected(), ElementsAre(0, 1));
    Click(Left(), 0);
    EXPECT_THAT(Selected(), ElementsAre(0));
    dragFrom(2);
    EXPECT_EQ(dragged.size(), 1);
}

TEST_F(PanesWidgetTest, DropsOfFileListsAreAcceptedAndHandedOn) {
    ShowNames({"a"});
    QList<QUrl> dropped;
    QObject::connect(&Right(), &PaneView::UrisDropped,
                     [&dropped](const QList<QUrl>& uris, Qt::KeyboardModifiers) { dropped = uris; });
    QMimeData files, text;
    files.setUrls({QUrl(QStringLiteral("file:///tmp/x%FFy"))});
    text.setText(QStringLiteral("no file"));
    for (const QMimeData* data : {&text, &files}) {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Right().viewport(), &enter);
        EXPECT_EQ(enter.isAccepted(), data == &files);
        QDropEvent drop({5, 5}, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Right().viewport(), &drop);
    }
    ASSERT_EQ(dropped.size(), 1);
    EXPECT_EQ(dropped[0].toEncoded(), QByteArray("file:///tmp/x%FFy"));
}

TEST_F(PanesWidgetTest, TheScrollBarOfOnePaneMovesTheOtherAndWheelAndKeysDoNot) {
    std::mt19937 random(1);
    FillAtRandom(stage.hold, 500, random);
    Show();
    widget.Scrolling().SetFollows(PaneScrolling::Follows::Bars);
    widget.Scrolling().SetOn(false);
    Left().SetTopItem(40);
    widget.Scrolling().SetOn(true);
    EXPECT_EQ(Left().TopItem(), 0);

    Left().verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_GT(Left().TopItem(), 0);
    EXPECT_EQ(Right().TopItem(), Left().TopItem());
    Right().verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(Left().TopItem(), Right().TopItem());
    EXPECT_EQ(Left().TopItem(), Left().verticalScrollBar()->maximum());

    const int before = Right().TopItem();
    Key(Qt::Key_Home);
    EXPECT_EQ(Left().TopItem(), 0);
    Wheel(Left(), {}, {0, -240});
    EXPECT_GT(Left().TopItem(), 0);
    EXPECT_EQ(Right().TopItem(), before);

    widget.Scrolling().SetOn(false);
    Left().verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    EXPECT_EQ(Right().TopItem(), before);
}

TEST_F(PanesWidgetTest, TheTipOfARowTellsWhyItIsLeftAlone) {
    AddPair(stage.hold, "odd", {Same, 1}, {Same, 1});
    for (const Side side : kBothSides) {
        stage.hold[side][0].kind = RowKind::Unknown;
        stage.hold[side][0].type = None;
    }
    stage.hold[Side::Left][0].reason = UnknownReason::LeadsNowhere;
    Show();
    const QPoint place = Middle(Left(), 0);
    QHelpEvent help(QEvent::ToolTip, place, Left().viewport()->mapToGlobal(place));
    QApplication::sendEvent(Left().viewport(), &help);
    EXPECT_EQ(QToolTip::text().toStdString(), WhyUnknown(stage.hold[Side::Left][0]));
    QToolTip::hideText();
}

TEST_F(PanesWidgetTest, ColumnsCanBeResizedHeadersDoNotReactAndTheLastRowsStandBesideEachOther) {
    std::mt19937 random(1);
    FillAtRandom(stage.hold, 200, random);
    Show();
    EXPECT_EQ(Left().ColumnWidths(), (PaneView::Widths{247, 94, 169}));
    EXPECT_EQ(Left().width(), Right().width());
    EXPECT_FALSE(Left().horizontalHeader()->sectionsClickable());
    const auto order = Left().model()->index(0, 0).data().toString();
    QTest::mouseClick(Left().horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(30, 8));
    EXPECT_EQ(Left().model()->index(0, 0).data().toString(), order);

    Left().SetColumnWidths({900, 80, 0});
    EXPECT_EQ(Left().ColumnWidths(), (PaneView::Widths{900, 80, 169}));
    QApplication::processEvents();
    EXPECT_EQ(Left().verticalScrollBar()->maximum(), Right().verticalScrollBar()->maximum());
    Left().SetColumnWidths({100, 80, 60});
    QApplication::processEvents();
    EXPECT_EQ(Left().viewport()->height(), Right().viewport()->height());

    QFont font = widget.font();
    font.setPointSize(24);
    const int height = Left().rowHeight(0);
    widget.SetLooks({.font = font, .background = {}});
    EXPECT_GT(Left().rowHeight(0), height);
    EXPECT_EQ(Left().rowHeight(150), Right().rowHeight(0));
}

TEST_F(PanesWidgetTest, HoweverOnePaneIsScrolledTheOtherFollowsWhereAllMovesCount) {
    std::mt19937 random(1);
    FillAtRandom(stage.hold, 500, random);
    AddPair(stage.hold, "zebra", {Orphan, 1}, {});
    Show();
    widget.Scrolling().SetOn(true);
    widget.Scrolling().SetFollows(PaneScrolling::Follows::AllMoves);
    int last = 0;
    const auto moved = [&](const char* how) {
        EXPECT_NE(Left().TopItem(), last) << how;
        EXPECT_EQ(Right().TopItem(), Left().TopItem()) << how;
        last = Left().TopItem();
    };
    Wheel(Left(), {}, {0, -240});
    moved("wheel");
    Wheel(Right(), {0, -90}, {0, -240});
    moved("touchpad");
    Key(Qt::Key_End);
    moved("keys");
    Key(Qt::Key_Home);
    moved("keys");
    for (const char letter : std::string("zeb")) QTest::keyClick(&Left(), letter);
    moved("letters");
    Right().verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    moved("bar");
    // A pane that cannot go as far does not pull the other one back.
    stage.panes.Click(Side::Left, 0, {});
    Key(Qt::Key_A, Qt::ControlModifier);
    stage.panes.ShowOnlySelectedObjects();
    ASSERT_EQ(stage.Right().Count(), 0U);
    Wheel(Left(), {}, {0, -240});
    EXPECT_GT(Left().TopItem(), 0);
}

TEST_F(PanesWidgetTest, TheTopRowStaysWhenTheViewChangesAndTheSelectionIsShown) {
    for (int i = 0; i < 200; ++i)
        AddPair(stage.hold, "name" + std::to_string(1000 + i), {i % 2 == 0 ? Same : Newer, i},
                {i % 2 == 0 ? Same : Older, i});
    Show();
    widget.Scrolling().SetOn(true);
    Left().verticalScrollBar()->setValue(101);
    Right().verticalScrollBar()->setValue(101);
    Click(Left(), 103);
    stage.panes.ToggleView(Same);
    for (const Side side : kBothSides)
        EXPECT_EQ(stage.panes.Pane(side)[static_cast<std::size_t>(widget.View(side).TopItem())].text,
                  "name1101");
    EXPECT_EQ(Left().currentIndex().row(), 51);
    EXPECT_THAT(Selected(), ElementsAre(51));
    stage.panes.ToggleView(Same);
    EXPECT_EQ(Left().TopItem(), 101);
    EXPECT_EQ(Right().TopItem(), 101);
    EXPECT_THAT(Selected(), ElementsAre(103));
    // The hidden row under the top gives its place to the next one.
    Left().verticalScrollBar()->setValue(100);
    stage.panes.ToggleView(Same);
    EXPECT_EQ(stage.Left()[static_cast<std::size_t>(Left().TopItem())].text, "name1101");
}

TEST_F(PanesWidgetTest, FittedColumnsShowEverySizeAndDateAndLeaveTheRestToTheNames) {
    AddPair(stage.hold, "a", {Same, 98'888'888'888}, {Same, 1});
    AddPair(stage.hold, "b", {Newer, 1'111}, {Older, 2});
    Show();
    for (const Side side : kBothSides) widget.SetColumnsFitted(side, true);
    for (const int points : {6, 10, 22}) {
        QFont font = widget.font();
        font.setPointSize(points);
        widget.SetLooks({.font = font, .background = {}});
        QApplication::processEvents();
        for (const Side side : kBothSides) {
            SCOPED_TRACE(points);
            PaneView& view = widget.View(side);
            const PaneView::Widths widths = view.ColumnWidths();
            for (const int column : {PaneModel::Size, PaneModel::ModifiedDate}) {
                EXPECT_GE(widths[static_cast<std::size_t>(column)],
                          view.sizeHintForIndex(view.model()->index(0, column)).width());
            }
            EXPECT_GE(widths[0] + widths[1] + widths[2], view.viewport()->width());
            if (points < 22) {
                EXPECT_EQ(widths[0] + widths[1] + widths[2], view.viewport()->width());
            }
        }
        EXPECT_EQ(Left().ColumnWidths(), Right().ColumnWidths());
    }
    // They follow the window, and what is in them, until the user takes one of them.
    widget.SetLooks({.font = widget.font(), .background = {}});
    const PaneView::Widths before = Left().ColumnWidths();
    widget.resize(1300, 400);
    QApplication::processEvents();
    EXPECT_EQ(Left().ColumnWidths()[0], before[0] + 100);
    QHeaderView* header = Left().horizontalHeader();
    const int border = header->sectionViewportPosition(1) + header->sectionSize(1) - 1;
    const QPoint grip(border, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, grip);
    QMouseEvent drag(QEvent::MouseMove, grip - QPoint(40, 0),
                     header->viewport()->mapToGlobal(grip - QPoint(40, 0)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(header->viewport(), &drag);
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, grip - QPoint(40, 0));
    EXPECT_FALSE(Left().AreColumnsFitted());
    EXPECT_TRUE(Right().AreColumnsFitted());
    EXPECT_EQ(Left().ColumnWidths()[1], before[1] - 40);
    widget.resize(1100, 400);
    QApplication::processEvents();
    EXPECT_EQ(Left().ColumnWidths()[0], before[0] + 100);
    EXPECT_EQ(Right().ColumnWidths(), before);
}

TEST_F(PanesWidgetTest, ADoubleClickOnABorderFitsTheColumnToItsContents) {
    const std::string longest(60, 'm');
    AddPair(stage.hold, longest, {Same, 1}, {Same, 1});
    AddPair(stage.hold, "short", {Same, 123'456'789}, {Same, 1});
    Show();
    Left().SetColumnWidths({80, 30, 40});
    for (const int column : {2, 1, 0}) {
        QHeaderView* header = Left().horizontalHeader();
        const int border = header->sectionViewportPosition(column) + header->sectionSize(column) - 1;
        QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, QPoint(border, header->height() / 2));
    }
    const QFontMetrics font = Left().fontMetrics();
    const auto text = [this](int row, int column) {
        return Left().model()->index(row, column).data().toString();
    };
    EXPECT_GE(Left().columnWidth(0), font.horizontalAdvance(text(0, 0)) + Left().iconSize().width());
    EXPECT_GE(Left().columnWidth(1), font.horizontalAdvance(text(1, 1)));
    EXPECT_GE(Left().columnWidth(2), font.horizontalAdvance(text(0, 2)));
    EXPECT_LT(Left().columnWidth(1), 3 * font.horizontalAdvance(text(1, 1)));
}

TEST_F(PanesWidgetTest, AMenuOpensAtTheRowWhereEnterWasPressed) {
    std::vector<std::string> names;
    for (int i = 0; i < 100; ++i) names.push_back("n" + std::to_string(100 + i));
    ShowNames(names);
    QSignalSpy activated(&Left(), &PaneView::RowActivated);
    Click(Left(), 5);
    Left().verticalScrollBar()->setValue(60);  // out of sight
    Key(Qt::Key_Return);
    ASSERT_EQ(activated.size(), 1);
    const QPoint place = Left().viewport()->mapFromGlobal(activated[0][1].toPoint());
    EXPECT_TRUE(Left().viewport()->rect().contains(place));
    EXPECT_EQ(Left().rowAt(place.y()), 5);
}

TEST_F(PanesWidgetTest, TheFindLineGoesFromNameToNameAndChangesNoSelection) {
    std::vector<std::string> names;
    for (int i = 0; i < 300; ++i)
        names.push_back((i % 100 == 50 ? "Wanted " : "other ") + std::to_string(1000 + i));
    ShowNames(names);
    widget.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    Click(Left(), 3);
    Click(Left(), 5, Qt::ControlModifier);
    FindLine& line = widget.Find();
    const auto answer = [&line] { return line.lblFound->text().toStdString(); };
    const auto found = [this] { return Left().Marks().found ? static_cast<int>(*Left().Marks().found) : -1; };
    widget.OpenFind();
    EXPECT_TRUE(line.isVisible());
    QTest::keyClicks(line.txtFind, QStringLiteral("want"));
    EXPECT_EQ(answer(), "Row 51 of 300");
    for (PaneView* view : {&Left(), &Right()}) {
        EXPECT_EQ(view->Marks().found, 50U);
        EXPECT_TRUE(view->Marks().fits(150));
        EXPECT_FALSE(view->Marks().fits(151));
        EXPECT_TRUE(view->viewport()->rect().intersects(view->visualRect(view->model()->index(50, 0))));
    }
    QTest::keyClick(line.txtFind, Qt::Key_Return);
    EXPECT_EQ(found(), 150);
    QTest::keyClick(line.txtFind, Qt::Key_F3);
    EXPECT_EQ(found(), 250);
    QTest::keyClick(line.txtFind, Qt::Key_F3);
    EXPECT_EQ(found(), 50);
    QTest::keyClick(line.txtFind, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(found(), 250);
    QTest::keyClick(line.txtFind, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(found(), 150);
    line.txtFind->clear();
    QTest::keyClicks(line.txtFind, QStringLiteral("*d 12?0"));
    EXPECT_EQ(found(), 250);
    QTest::keyClicks(line.txtFind, QStringLiteral("x"));
    EXPECT_EQ(answer(), "Not found");
    EXPECT_EQ(found(), -1);
    EXPECT_THAT(Selected(), ElementsAre(3, 5));
    EXPECT_EQ(Left().model()->rowCount(), 300);

    QTest::keyClick(line.txtFind, Qt::Key_Escape);
    EXPECT_FALSE(line.isVisible());
    EXPECT_FALSE(Left().Marks().fits);
    EXPECT_EQ(stage.Left().SelectedItem(), 5U);
    // Where nothing is selected, the keys go on from what was found.
    Key(Qt::Key_D, Qt::ControlModifier);
    QTest::keyClick(&Left(), Qt::Key_F3);
    ASSERT_TRUE(line.isVisible());
    line.txtFind->setText(QStringLiteral("1150"));
    QTest::keyClick(line.txtFind, Qt::Key_Escape);
    EXPECT_EQ(stage.Left().SelectedItem(), 150U);
    EXPECT_THAT(Selected(), ElementsAre());
    const BusyState::Job job(stage.busy);
    widget.OpenFind();
    EXPECT_FALSE(line.isVisible());
}

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// The letters are seen against the ground as far as standards of legibility ask for, and empty rows that
// follow each other are told apart.
TEST_F(PanesWidgetTest, QuietTextsAreLegibleAndEmptyRowsHaveALineOnEveryPalette) {
    stage.panes.RemoveListItemsAndShowNoCompareMsg();
    Show();
    QFont large = widget.font();
    large.setPointSize(24);  // with pixels that are wholly ink
    widget.SetLooks({.font = large, .background = {}});
    const auto palette = [](QColor text, QColor base) {
        QPalette made(text, base);
        made.setColor(QPalette::Base, base);
        made.setColor(QPalette::Text, text);
        made.setColor(QPalette::PlaceholderText, base);
        return made;
    };
    const auto shown = [this] {
        return Left().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const std::vector<std::pair<QColor, QColor>> palettes{{Qt::black, Qt::white},
                                                          {Qt::white, QColor(30, 30, 30)},
                                                          {QColor(70, 70, 70), QColor(230, 230, 220)},
                                                          {Qt::yellow, Qt::black}};
    for (const auto& [text, base] : palettes) {
        widget.setPalette(palette(text, base));
        const QImage picture = shown();
        double strongest = 1;
        for (int x = 0; x < 200; ++x)
            for (int y = 0; y < Left().rowHeight(0); ++y) {
                const auto [low, high] = std::minmax({Luminance(picture.pixelColor(x, y)), Luminance(base)});
                strongest = std::max(strongest, (high + 0.05) / (low + 0.05));
            }
        EXPECT_GE(strongest, 4.5) << base.name().toStdString();
    }
    for (Side side : kBothSides) stage.hold[side].Clear();
    for (const char* name : {"a", "b", "c"}) AddPair(stage.hold, name, {}, {Orphan, 1});
    stage.panes.ApplyViewTypes();
    for (const auto& [text, base] : palettes) {
        widget.setPalette(palette(text, base));
        const QImage picture = shown();
        const int last = 2 * Left().rowHeight(0) - 1;  // of the second row
        EXPECT_NE(picture.pixel(60, last), picture.pixel(60, last - 3));
        EXPECT_NE(picture.pixel(60, last), picture.pixel(60, last + 3));
    }
}

TEST_F(PanesWidgetTest, TogglesShowTheFlagsAndChangeThem) {
    stage.panes.RemoveListItemsAndShowNoCompareMsg();
    Show();
    QToolButton* same = widget.Toggles().imgViews(Same);
    EXPECT_EQ(same->toolTip(), QStringLiteral("View/Hide the files which are Identical"));
    QTest::mouseClick(same, Qt::LeftButton);
    EXPECT_EQ(stage.messages.Line(0), "View Types: These buttons require that a comparison be run first");
    EXPECT_TRUE(same->isChecked());

    for (Side side : kBothSides) stage.hold[side].Clear();
    AddPair(stage.hold, "a", {Same}, {Same});
    AddPair(stage.hold, "b", {Newer}, {Older});
    stage.panes.ApplyViewTypes();
    const qint64 colour = same->icon().cacheKey();
    same->setFocus();
    QTest::keyClick(same, Qt::Key_Space);
    EXPECT_EQ(Left().model()->rowCount(), 1);
    EXPECT_NE(same->icon().cacheKey(), colour);
    stage.panes.ChooseView(kViewSimilar);
    EXPECT_EQ(same->icon().cacheKey(), colour);
    EXPECT_FALSE(widget.Toggles().imgViews(Newer)->isChecked());
    EXPECT_EQ(Right().model()->index(0, 0).data().toString(), QStringLiteral("a"));
}

TEST_F(PanesWidgetTest, AMillionRowsAreSelectedRightAndPainted) {
    std::mt19937 random(6);
    FillAtRandom(stage.hold, 1'000'000, random);
    Show();
    Key(Qt::Key_A, Qt::ControlModifier);
    std::size_t real = 0;
    for (const ResultRow& row : stage.hold[Side::Left]) real += row.IsReal();
    EXPECT_EQ(stage.Left().SelectedCount(), real);
    EXPECT_EQ(stage.panes.StatusText(Side::Left).find("Selected " + std::to_string(real)), 0U);
    Key(Qt::Key_End);
    EXPECT_EQ(stage.Left().SelectedItem(), 999'999U);
    EXPECT_LE(stage.Left().SelectedCount(), 1U);
    EXPECT_EQ(Left().rowAt(Left().viewport()->height() - Left().rowHeight(0) / 2 - 2), 999'999);
    EXPECT_FALSE(widget.grab().isNull());
}

}  // namespace
}  // namespace vantrel
