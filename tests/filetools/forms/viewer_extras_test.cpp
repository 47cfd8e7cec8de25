// The grids of the viewer, and what its menu of extras does.
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <cstdlib>

#include "filetools/forms/diffs_bar_view.h"
#include "viewer_support.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using vantrel::testing::ViewerTest;

class ViewerExtrasTest : public ViewerTest {
  protected:
    // `count` equal lines, of which those in `changed` differ.
    void OpenLines(int count, const std::vector<int>& changed) {
        PerSide<std::string> texts;
        for (int line = 1; line <= count; ++line)
            for (const Side side : kBothSides) {
                const bool differs = std::find(changed.begin(), changed.end(), line) != changed.end();
                texts[side] += "line " + std::to_string(line) +
                               (differs ? side == Side::Left ? " here" : " there" : "") + "\n";
            }
        Open(texts[Side::Left], texts[Side::Right]);
    }
    FileGridView& Grid(Side side) { return *Window().grdFile[side]; }
    void Run(const char* item) { Window().GetCommands().Run(item); }
    QImage Picture(Side side) { return Grid(side).viewport()->grab().toImage(); }
    // Whether a grid has a point of this colour in a row.
    bool Has(Side side, std::int32_t row, const QColor& colour) {
        const QImage picture = Picture(side);
        const QRect rect = Grid(side).RectOfRow(row);
        for (int y = rect.top() + 1; y < rect.bottom() - 1; ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y) == colour) return true;
        return false;
    }
};

TEST_F(ViewerExtrasTest, BothGridsScrollAsOne) {
    OpenLines(500, {3, 400});
    for (const Side side : kBothSides) {
        QWheelEvent wheel(QPointF(50, 50), Grid(side).viewport()->mapToGlobal(QPointF(50, 50)), {},
                          {0, -1200}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        const std::int32_t before = Grid(side).TopRow();
        QApplication::sendEvent(Grid(side).viewport(), &wheel);
        EXPECT_GT(Grid(side).TopRow(), before);
        EXPECT_EQ(Grid(Side::Left).TopRow(), Grid(Side::Right).TopRow());
    }
    Key(Qt::Key_F7);
    EXPECT_EQ(Window().CurrentRow(), 400);
    EXPECT_EQ(Grid(Side::Right).TopRow(), 400);
    Key(Qt::Key_Home);
    EXPECT_EQ(Window().CurrentRow(), 1);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Window().CurrentRow(), 1 + Grid(Side::Left).LinesSeen());
    Key(Qt::Key_End);
    EXPECT_EQ(Window().CurrentRow(), 500);
    Key(Qt::Key_Down);
    EXPECT_EQ(Window().CurrentRow(), 500);
}

TEST_F(ViewerExtrasTest, TheBarShowsWhereTheDifferencesAreAndLeadsThere) {
    OpenLines(300, {1, 2, 3, 4, 5, 6, 7, 8, 200, 290, 291, 292, 293, 294, 295, 296});
    EXPECT_EQ(Window().pctDiffsBar->Marks().size(), 2U + (Window().pctDiffsBar->height() >= 150 ? 1 : 0));
    const int y = Window().pctDiffsBar->height() * 2 / 3;
    QTest::mouseClick(Window().pctDiffsBar, Qt::LeftButton, {}, QPoint(3, y));
    EXPECT_NEAR(Window().CurrentRow(), 200, 3);
    EXPECT_EQ(Window().pctContainer->Line(), y);
    EXPECT_TRUE(Grid(Side::Left).IsRowVisible(Window().CurrentRow()));
    QTest::mouseClick(Window().pctDiffsBar, Qt::LeftButton, {}, QPoint(3, 0));
    EXPECT_EQ(Window().CurrentRow(), 1);
}

TEST_F(ViewerExtrasTest, FoldsEqualLinesAndOpensWhatIsWanted) {
    OpenLines(300, {50, 250});
    Key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(Window().CurrentRow(), 50);
    const RowLayout& layout = Window().Contents().layout;
    EXPECT_EQ(layout.Lines(), 1 + 7 + 1 + 7 + 1 + 1);
    Key(Qt::Key_F7);
    EXPECT_EQ(Window().CurrentRow(), 250);
    // Keys step over a fold; the plus key opens it.
    for (int step = 0; step < 4; ++step) Key(Qt::Key_Up);
    EXPECT_EQ(Window().CurrentRow(), 53);
    Key(Qt::Key_Plus);
    Key(Qt::Key_Down);
    EXPECT_EQ(Window().CurrentRow(), 54);
    tools.messages.texts.push_back("line 299");
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(Window().CurrentRow(), 299);
    EXPECT_TRUE(Grid(Side::Left).IsRowVisible(299));
    Key(Qt::Key_Home);
    EXPECT_EQ(Window().CurrentRow(), 47);
    Key(Qt::Key_Plus);
    EXPECT_EQ(layout.Lines(), 301);
}

TEST_F(ViewerExtrasTest, WrapsLongLinesInBothGridsAlike) {
    const std::string wide(2000, 'w');
    Open("short\n" + wide + "\nend\n", "shorter\n" + wide + "\nend\n");
    EXPECT_GT(Grid(Side::Left).horizontalScrollBar()->maximum(), 0);
    Grid(Side::Right).horizontalScrollBar()->setValue(100);
    EXPECT_EQ(Grid(Side::Left).horizontalScrollBar()->value(), 100);
    Key(Qt::Key_L, Qt::ControlModifier);
    const RowLayout& layout = Window().Contents().layout;
    const int width = std::min(Grid(Side::Left).ColumnsSeen(), Grid(Side::Right).ColumnsSeen());
    EXPECT_EQ(layout.HeightOfRow(2), (2000 + width - 1) / width);
    EXPECT_EQ(Grid(Side::Left).horizontalScrollBar()->maximum(), 0);
    Window().resize(Window().width() * 2 / 3, Window().height());
    EXPECT_EQ(layout.WrapWidth(), std::min(Grid(Side::Left).ColumnsSeen(), Grid(Side::Right).ColumnsSeen()));
    Key(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(layout.Lines(), 4);
}

TEST_F(ViewerExtrasTest, RowsHaveTheirGroundsAndMarksInLightAndDark) {
    const QPalette before = QApplication::palette();
    for (const bool dark : {false, true}) {
        QPalette palette(dark ? QColor(40, 44, 52) : QColor(240, 240, 240));
        palette.setColor(QPalette::Base, dark ? QColor(30, 30, 34) : QColor(Qt::white));
        QApplication::setPalette(palette);
        settings.inlineDifferences = true;
        const std::string moved = "a line that is found at another place\nand its neighbour goes along\n";
        std::string equal;
        for (int line = 0; line < 9; ++line) equal += "equal " + std::to_string(line) + "\n";
        Open("x\nchanged one\n" + equal + "only here\n" + moved + "z\n",
             "x\nchanged two\n" + moved + equal + "z\n");
        const DiffColours colours = DiffColours::For(palette);
        EXPECT_EQ(colours.orphan == QColor(255, 225, 196), !dark);
        EXPECT_TRUE(Has(Side::Left, 2, colours.changed));
        EXPECT_TRUE(Has(Side::Right, 2, colours.mark));
        EXPECT_TRUE(Has(Side::Right, 3, colours.moved));
        EXPECT_FALSE(Has(Side::Left, 1, colours.changed));
        EXPECT_EQ(Has(Side::Left, 14, colours.orphan), true);
        Key(Qt::Key_D, Qt::ControlModifier);
        EXPECT_FALSE(settings.inlineDifferences);
        EXPECT_FALSE(Has(Side::Right, 2, colours.mark));
        Click(Side::Left, 3);
        Key(Qt::Key_M, Qt::ControlModifier);
        EXPECT_EQ(Window().CurrentRow(), 15);
        EXPECT_THAT(Window().lblPosition->text().toStdString(), HasSubstr("also in row 3"));
        window.reset();
    }
    QApplication::setPalette(before);
}

TEST_F(ViewerExtrasTest, ZoomsByWheelAndKeys) {
    OpenLines(5, {2});
    const int lines = Grid(Side::Left).LinesSeen();
    QWheelEvent wheel(QPointF(50, 50), Grid(Side::Left).viewport()->mapToGlobal(QPointF(50, 50)), {},
                      {0, 120}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    for (int turn = 0; turn < 6; ++turn) QApplication::sendEvent(Grid(Side::Left).viewport(), &wheel);
    EXPECT_LT(Grid(Side::Right).LinesSeen(), lines);
    Key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(Grid(Side::Right).LinesSeen(), lines);
}

TEST_F(ViewerExtrasTest, ToolTipsShowTheRowUnderTheMouseAsPlainText) {
    Open("<b>bold</b> " + std::string(400, 'x') + "\n", "\n");
    const auto hover = [&] {
        QTest::mouseMove(Grid(Side::Left).viewport(), QPoint(60, 3));
        QTest::mouseMove(Grid(Side::Left).viewport(), QPoint(62, 4));
        return Grid(Side::Left).toolTip();
    };
    EXPECT_EQ(hover(), QString());
    QTest::mouseClick(Window().chkTooltip, Qt::LeftButton, {}, QPoint(5, Window().chkTooltip->height() / 2));
    ASSERT_TRUE(Window().chkTooltip->isChecked());
    EXPECT_THAT(hover().toStdString(), HasSubstr(" 1.&lt;b&gt;bold"));
    Window().chkTooltip->setChecked(false);
    EXPECT_EQ(Grid(Side::Left).toolTip(), QString());
}

TEST_F(ViewerExtrasTest, TheStatusTellsPlaceDifferencesAndEncodings) {
    tools.folder.Write("one.txt", "a\nb\xE4\n");
    Open("a\nb\xE4\n",
         "\xEF\xBB\xBF"
         "a\r\nc\r\n");
    EXPECT_EQ(Window().lblPosition->text(), QStringLiteral("Row 2 of 2"));
    EXPECT_EQ(Window().lblDifferences->text(), QStringLiteral("Difference 1 of 1 (line ends differ)"));
    EXPECT_EQ(Window().lblForm[Side::Left]->text(), QStringLiteral("File One: windows-1252, LF"));
    EXPECT_EQ(Window().lblForm[Side::Right]->text(),
              QStringLiteral("File Two: UTF-8 with byte order mark, CR LF"));
    Run("mnuExtrasEncodingOne(13)");
    EXPECT_EQ(Window().lblForm[Side::Left]->text(), QStringLiteral("File One: ISO-8859-1, LF"));
    EXPECT_TRUE(Window().GetCommands().Action("mnuExtrasEncodingOne(13)")->isChecked());
}

// What is saved makes file two of file one, byte for byte, whatever the window ignores.
TEST_F(ViewerExtrasTest, SavesAPatchThatPatchTakes) {
    settings.viewFileDiffIgnoreCase = true;
    const std::string right = "A\r\nline two\r\nnew\r\nlast";
    Open("a\r\nline 2\r\nlast", right);
    tools.messages.texts.push_back(tools.folder / "out.patch");
    Key(Qt::Key_S, Qt::ControlModifier);
    const std::string folder = tools.folder.Path();
    ASSERT_EQ(std::system(("cd " + folder + " && patch --binary -s -o made one.txt out.patch").c_str()), 0);
    EXPECT_EQ(tools.folder.Read("made"), right);
    EXPECT_THAT(Shown(), ElementsAre(HasSubstr("Save as Patch")));
    tools.messages.texts.push_back(Path(Side::Right));
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(Shown().back(), HasSubstr("cannot replace one of the two files"));
    EXPECT_EQ(tools.folder.Read("two.txt"), right);
}

TEST_F(ViewerExtrasTest, PaintsOddTextWithoutHarm) {
    const std::string odd = std::string("\x1B[31m\x01\xFF\xE6\t", 9) +
                            "\xE2\x80\xAE"
                            "\xD7\xA9\xD7\x9C"
                            "e\xCC\x81"
                            "\xE6\xBC\xA2";
    Open(odd + "\n" + odd + "x\n\n\n", odd + "\n" + odd + "y\n");
    for (const Side side : kBothSides) EXPECT_FALSE(Picture(side).isNull());
    Key(Qt::Key_L, Qt::ControlModifier);
    Window().resize(300, 300);
    EXPECT_FALSE(Picture(Side::Left).isNull());
}

}  // namespace
}  // namespace vantrel
