#include "views/forms/frm_compare_results.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QCheckBox>
#include <QHelpEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolTip>
#include <QTreeWidget>
#include <cmath>
#include <memory>
#include <numbers>

#include "views/forms/pie_chart.h"
#include "views/panes_support.h"

namespace vantrel {
namespace {

using testing::AddPair;
using ::testing::ElementsAre;
using enum ResultType;

class FrmCompareResultsTest : public ::testing::Test {
  protected:
    void Open(bool showAfterCompare = true) {
        window = std::make_unique<frmCompareResults>(
            frmCompareResults::Parts{.reporter = stage.reporter,
                                     .hold = stage.hold,
                                     .paths = {{"/left", "/right"}},
                                     .icons = {},
                                     .background = {},
                                     .showAfterCompare = showAfterCompare,
                                     .storeShowAfterCompare = [this](bool show) { stored.push_back(show); }});
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    std::vector<std::string> List() const {
        std::vector<std::string> rows;
        for (int i = 0; i < window->lvwFileTypes->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = window->lvwFileTypes->topLevelItem(i);
            rows.push_back((item->text(0) + QLatin1Char('|') + item->text(1)).toStdString());
        }
        return rows;
    }
    // A place at that part of the full turn and of the radius.
    static QPoint At(double percent, double part = 0.6) {
        const double angle = percent / 50 * std::numbers::pi;
        return {static_cast<int>(std::lround(70 + 68 * part * std::cos(angle))),
                static_cast<int>(std::lround(70 - 68 * part * std::sin(angle)))};
    }
    QColor Colour(QPoint at) const { return window->picPieChart->grab().toImage().pixelColor(at); }
    static QColor Of(ResultType type) {
        const SliceColour colour = ColourOf(type);
        return {colour.red, colour.green, colour.blue};
    }

    testing::PanesStage stage;
    std::unique_ptr<frmCompareResults> window;
    std::vector<bool> stored;
};

TEST_F(FrmCompareResultsTest, ListsAndDrawsOneSideAtATime) {
    AddPair(stage.hold, "a", {Newer, 1}, {Older, 1});
    AddPair(stage.hold, "b", {Newer, 1}, {Older, 1});
    AddPair(stage.hold, "c", {Orphan, 1}, {});
    AddPair(stage.hold, "d", {IdenticalFolder, 1}, {IdenticalFolder, 1});
    Open();
    EXPECT_THAT(List(),
                ElementsAre("/left|4", "|", "Newer Files|2", "Older Files|0",
                            "Different but same date/time Files|0", "Identical Files|0", "Orphan Files|1",
                            "Different Folders|0", "Identical Folders|1", "Orphan Folders|0"));
    EXPECT_EQ(Colour(At(25)), Of(Newer));
    EXPECT_EQ(Colour(At(62)), Of(Orphan));
    EXPECT_EQ(Colour(At(88)), Of(IdenticalFolder));
    EXPECT_EQ(Colour(At(50)).rgb(), window->palette().color(QPalette::WindowText).rgb())
        << "slices are parted by a line";
    for (const double percent : {10.0, 62.0, 88.0, 99.0})
        EXPECT_EQ(window->picPieChart->TypeAt(At(percent)), percent < 50   ? Newer
                                                            : percent < 75 ? Orphan
                                                                           : IdenticalFolder);
    EXPECT_EQ(window->picPieChart->TypeAt({1, 1}), None);

    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(window->picPieChart);
    EXPECT_EQ(spoken->text(QAccessible::Description),
              QStringLiteral("Newer Files: 2 (50%), Orphan Files: 1 (25%), Identical Folders: 1 (25%)"));
    QHelpEvent help(QEvent::ToolTip, At(62), window->picPieChart->mapToGlobal(At(62)));
    QCoreApplication::sendEvent(window->picPieChart, &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Orphan Files: 1 (25%)"));

    window->optLeftFolder->setFocus();
    QTest::keyClick(window->optLeftFolder, Qt::Key_Down);
    ASSERT_TRUE(window->optRightFolder->isChecked());
    EXPECT_THAT(List(),
                ElementsAre("/right|3", "|", "Newer Files|0", "Older Files|2",
                            "Different but same date/time Files|0", "Identical Files|0", "Orphan Files|0",
                            "Different Folders|0", "Identical Folders|1", "Orphan Folders|0"));
    EXPECT_EQ(Colour(At(25)), Of(Older));
    EXPECT_NE(spoken->text(QAccessible::Name).indexOf(QStringLiteral("right")), -1);
}

TEST_F(FrmCompareResultsTest, OneTypeAloneIsACircleWithoutARadiusAndNoneAnOutline) {
    AddPair(stage.hold, "a", {Orphan, 1}, {});
    Open();
    for (const double percent : {0.0, 1.0, 50.0, 99.9})
        for (const double part : {0.1, 0.5, 0.9}) EXPECT_EQ(Colour(At(percent, part)), Of(Orphan)) << percent;
    window->optLeftFolder->setFocus();
    QTest::keyClick(window->optLeftFolder, Qt::Key_Down);
    EXPECT_EQ(List().front(), "/right|0");
    EXPECT_EQ(Colour(At(30)).rgb(), window->palette().color(QPalette::Window).rgb());
    EXPECT_NEAR(Colour({70, 139}).lightness(), window->palette().color(QPalette::Dark).lightness(), 8)
        << "the shadow, below the pie";
}

TEST_F(FrmCompareResultsTest, OnlyOkStoresTheOption) {
    AddPair(stage.hold, "a", {Same, 1}, {Same, 1});
    Open();
    EXPECT_TRUE(window->chkAutoShowGraphAfterCompare->isChecked());
    QTest::keyClick(window->chkAutoShowGraphAfterCompare, Qt::Key_Space);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_TRUE(stored.empty());
    Open(false);
    QTest::keyClick(window->chkAutoShowGraphAfterCompare, Qt::Key_Space);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_THAT(stored, ElementsAre(true));
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace vantrel
