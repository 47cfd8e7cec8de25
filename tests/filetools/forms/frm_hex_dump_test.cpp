#include "filetools/forms/frm_hex_dump.h"

#include <unistd.h>

#include <QLabel>
#include <QScrollBar>
#include <QWheelEvent>
#include <map>
#include <set>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/hex_command_table.h"
#include "hex_window_support.h"

namespace vantrel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;
using vantrel::testing::HexWindowTest;
using vantrel::testing::kUnableToLoad;

TEST_F(HexWindowTest, EveryCommandHasAKeyThatRunsItAlone) {
    Open("one", "two");
    Commands& commands = Window().GetCommands();
    std::map<std::string, int> ran;
    std::set<std::string> keys;
    for (const CommandEntry& entry : HexDumpTables().menuBar) {
        if (entry.kind == CommandKind::Menu || entry.kind == CommandKind::Separator) continue;
        const std::string name(entry.name);
        EXPECT_TRUE(commands.IsEnabled(name) || name.starts_with("mnuSearchFind")) << name;
        commands.SetHandler(name, [&ran, name] { ++ran[name]; });
    }
    for (const CommandEntry& entry : HexDumpTables().menuBar) {
        if (entry.kind != CommandKind::Command) continue;
        EXPECT_TRUE(keys.insert(std::string(entry.key)).second) << entry.key;
        ran.clear();
        const QKeySequence sequence(
            QString::fromLatin1(entry.key.data(), static_cast<int>(entry.key.size())));
        Key(sequence[0].key(), sequence[0].keyboardModifiers());
        EXPECT_THAT(ran, ElementsAre(Pair(std::string(entry.name), 1))) << entry.key;
    }
    EXPECT_EQ("frmHexDump.mnuFileOpenFile_Click", commands.RoutineName("mnuFileOpen"));
    EXPECT_EQ("frmHexDump.mnuFileSaveHexDump_Click", commands.RoutineName("mnuFileSaveHexDump"));
}

TEST_F(HexWindowTest, LoadsFilesAndTellsWhatItCannotLoad) {
    bool saidLoading = false;
    box.loop.onYield = [&] { saidLoading = saidLoading || View().Prompt() == QStringLiteral("Loading..."); };
    Open("Hello");
    EXPECT_TRUE(saidLoading);
    EXPECT_EQ("Hex Dump Viewer", Window().windowTitle().toStdString());
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(Window().lblFile[Side::Left]->text().toStdString(), "5 bytes");
    box.folder.Write("empty", "");
    for (const std::string& path : {box.folder / "empty", box.folder / "missing", box.folder.Path()}) {
        Answer(path);
        Key(Qt::Key_O, Qt::ControlModifier);
        EXPECT_THAT(Shown(), ElementsAre("Load File: All Files (*.*)|*.*", kUnableToLoad)) << path;
        EXPECT_TRUE(Window().Contents().IsEmpty());
        EXPECT_TRUE(View().Prompt().isEmpty());
        EXPECT_FALSE(Window().lblFile[Side::Left]->text().isEmpty());
        for (const char* command : {"mnuFileSaveHexDump", "mnuEditCopyDigits", "mnuSearchGoToOffset",
                                    "mnuSearchFindText", "mnuSearchNextDiff"})
            EXPECT_FALSE(IsEnabled(command)) << command;
    }
    Key(Qt::Key_O, Qt::ControlModifier);  // cancelled
    EXPECT_EQ(1U, Shown().size());
    Window().txtFile[Side::Left]->SetPath(Path(Side::Left));
    QTest::keyClick(Window().txtFile[Side::Left], Qt::Key_Return);
    EXPECT_TRUE(Window().Contents().Has(Side::Left));
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(HexWindowTest, KeysAndMouseMoveAndSelect) {
    Open(std::string(10'000, 'x'));
    const auto page = static_cast<std::uint64_t>(View().LinesSeen()) * kHexDumpBytes;
    struct Step {
        int key;
        Qt::KeyboardModifiers keys;
        std::uint64_t cursor;
    };
    for (const Step& step : std::initializer_list<Step>{{Qt::Key_Left, {}, 0},
                                                        {Qt::Key_Up, {}, 0},
                                                        {Qt::Key_Right, {}, 1},
                                                        {Qt::Key_Down, {}, 17},
                                                        {Qt::Key_End, {}, 31},
                                                        {Qt::Key_Home, {}, 16},
                                                        {Qt::Key_PageDown, {}, 16 + page},
                                                        {Qt::Key_PageUp, {}, 16},
                                                        {Qt::Key_End, Qt::ControlModifier, 9'999},
                                                        {Qt::Key_Down, {}, 9'999},
                                                        {Qt::Key_PageDown, {}, 9'999},
                                                        {Qt::Key_Home, {}, 9'984},
                                                        {Qt::Key_Home, Qt::ControlModifier, 0}}) {
        Key(step.key, step.keys);
        EXPECT_EQ(step.cursor, Cursor()) << step.key;
        EXPECT_EQ((ByteRange{step.cursor, 1}), Selection());
        EXPECT_TRUE(View().IsSeen(Cursor())) << step.key;
    }
    for (int step = 0; step < 2; ++step) Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ((ByteRange{0, 33}), Selection());
    EXPECT_EQ("33 bytes selected", Window().lblBytes->text().toStdString());
    QWidget* viewport = View().viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, View().DigitsRect(20).center());
    EXPECT_EQ((ByteRange{20, 1}), Selection());
    QTest::mousePress(viewport, Qt::LeftButton, {}, View().CharacterRect(35).center());
    QTest::mouseMove(viewport, View().CharacterRect(50).center());
    QMouseEvent move(QEvent::MouseMove, View().CharacterRect(50).center(),
                     viewport->mapToGlobal(View().CharacterRect(50).center()), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(viewport, &move);
    EXPECT_EQ((ByteRange{35, 16}), Selection());
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ((ByteRange{0, 10'000}), Selection());
    Key(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(1U, View().Top());
    EXPECT_EQ((ByteRange{0, 10'000}), Selection());
}

TEST_F(HexWindowTest, CopiesWhatIsSelected) {
    Open("Hello, hex\n" + std::string(30, '\x01'));
    for (int step = 0; step < 4; ++step) Key(Qt::Key_Right, Qt::ShiftModifier);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("48 65 6c 6c 6f", Clipboard());
    Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ("Hello", Clipboard());
    Key(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ("00000000  48 65 6c 6c 6f 2c 20 68  65 78 0a 01 01 01 01 01  |Hello, hex......|\n",
              Clipboard());
    ASSERT_EQ(0, truncate(Path(Side::Left).c_str(), 5 << 20));
    Key(Qt::Key_F5);
    Key(Qt::Key_A, Qt::ControlModifier);
    for (const Qt::KeyboardModifiers keys :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ShiftModifier),
          Qt::KeyboardModifiers(Qt::AltModifier)})
        Key(Qt::Key_C, keys | Qt::ControlModifier);
    EXPECT_THAT(Clipboard(), HasSubstr("|Hello, hex"));
    EXPECT_THAT(Shown(), Each(HasSubstr("Copy: More than 4 MB are selected")));
}

// Of 2^45 bytes, where one position of the bar stands for many lines.
TEST_F(HexWindowTest, EveryLineOfAVeryLargeFileIsReached) {
    box.folder.Write("left", "begin");
    constexpr off_t kSize = off_t{1} << 43;
    ASSERT_EQ(0, truncate(Path(Side::Left).c_str(), kSize));
    Show({{Path(Side::Left), {}}});
    const auto go = [&](const std::string& offset) {
        Answer(offset);
        Key(Qt::Key_G, Qt::ControlModifier);
    };
    const auto last = static_cast<std::uint64_t>(kSize) / kHexDumpBytes - View().LinesSeen();
    for (const std::uint64_t offset :
         {std::uint64_t{1} << 42, (std::uint64_t{1} << 42) + 16'003, static_cast<std::uint64_t>(kSize) - 1}) {
        go(std::to_string(offset));
        EXPECT_EQ(offset, Cursor());
        EXPECT_TRUE(View().IsSeen(offset));
    }
    EXPECT_EQ(last, View().Top());
    QScrollBar* bar = View().verticalScrollBar();
    EXPECT_EQ(bar->maximum(), bar->value());
    bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_EQ(last - 1, View().Top());
    bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(last - 1 - static_cast<std::uint64_t>(View().LinesSeen()), View().Top());
    QWheelEvent wheel(QPointF(5, 5), bar->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    const std::uint64_t before = View().Top();
    QApplication::sendEvent(bar, &wheel);
    EXPECT_EQ(before - static_cast<std::uint64_t>(QApplication::wheelScrollLines()), View().Top());
    bar->setValue(bar->maximum() / 2);
    EXPECT_NEAR(static_cast<double>(last) / 2, static_cast<double>(View().Top()),
                static_cast<double>(last) / 1'000);
    bar->setValue(0);
    EXPECT_EQ(0U, View().Top());
    go("0x7");
    EXPECT_EQ(7U, Cursor());
    Shown();
    go("8796093022208");
    go("seven");
    EXPECT_THAT(Shown(), ElementsAre(HasSubstr("Go to Offset: Enter"),
                                     "Go to Offset: The last byte stands at offset 8796093022207.",
                                     HasSubstr("Go to Offset: Enter"),
                                     "Go to Offset: This is no offset.  Write it as 31 or as 0x1F."));
    EXPECT_EQ(7U, Cursor());
}

TEST_F(HexWindowTest, FindsTextAndBytesInBothDirections) {
    Open("needle" + std::string(600'000, '.') + "NEEDLE..needle");
    EXPECT_FALSE(IsEnabled("mnuSearchFindNext"));
    Answer("Needle");
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ((ByteRange{0, 6}), Selection());
    const auto press = [&](Qt::KeyboardModifiers keys) {
        Key(Qt::Key_F3, keys);
        return Cursor();
    };
    EXPECT_EQ(600'006U, press({}));
    EXPECT_TRUE(View().IsSeen(600'006));
    EXPECT_EQ(600'014U, press({}));
    Shown();
    EXPECT_EQ(600'014U, press({}));
    EXPECT_THAT(Shown(),
                ElementsAre("Find Text: The text cannot be found between here and the end of the file."));
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(0U, press(Qt::ShiftModifier));  // the one that stands there is not found again
    EXPECT_EQ(1U, Shown().size());
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(600'014U, press(Qt::ShiftModifier));
    Window().GetCommands().Run("mnuSearchIgnoreCase");
    EXPECT_EQ(600'014U, press(Qt::ShiftModifier));
    EXPECT_THAT(
        Shown(),
        ElementsAre("Find Text: The text cannot be found between here and the beginning of the file."));
    Answer("4e 45");
    Key(Qt::Key_B, Qt::ControlModifier);
    Shown();
    EXPECT_EQ(600'006U, press(Qt::ShiftModifier));
    EXPECT_EQ((ByteRange{600'006, 2}), Selection());
    Answer("4");
    Key(Qt::Key_B, Qt::ControlModifier);
    EXPECT_THAT(Shown().back(), "Find Bytes: Each byte is two hexadecimal digits, as in 48 65 6c.");
    EXPECT_EQ(600'006U, press({}));
}

TEST_F(HexWindowTest, StepsThroughTheDifferencesOfTwoFiles) {
    std::string left(900'000, 'a');
    std::string right = left;
    right.replace(100, 3, "bbb");
    right[500'000] = 'b';
    right.resize(899'990);
    Open(left, right);
    EXPECT_EQ(100U, Cursor());  // the first one is gone to at once
    std::vector<std::uint64_t> steps;
    const auto press = [&](Qt::KeyboardModifiers keys) {
        Key(Qt::Key_F7, keys);
        steps.push_back(Cursor());
    };
    for (int step = 0; step < 3; ++step) press({});
    EXPECT_THAT(Shown(), ElementsAre("Next Difference: No more differences"));
    for (int step = 0; step < 3; ++step) press(Qt::ShiftModifier);
    EXPECT_THAT(Shown(), ElementsAre("Previous Difference: No more differences"));
    press(Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ("Byte 61 (97) | none", Window().lblBytes->text().toStdString());
    press(Qt::ControlModifier);
    EXPECT_THAT(steps, ElementsAre(500'000, 899'990, 899'990, 500'000, 100, 100, 899'990, 100));
    EXPECT_EQ("Byte 61 (97) | 62 (98)", Window().lblBytes->text().toStdString());
    View(Side::Right).setFocus();
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("62", Clipboard());
    Key(Qt::Key_PageDown);
    EXPECT_EQ(View(Side::Left).Top(), View(Side::Right).Top());
    Key(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(View(Side::Right).isVisible());
    EXPECT_FALSE(IsEnabled("mnuSearchNextDiff"));
    Open("same", "same");
    EXPECT_TRUE(View(Side::Right).isVisible());
    Shown();
    press(Qt::ControlModifier);
    press(Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(Shown(), ElementsAre("First Difference: The files are identical",
                                     "Last Difference: The files are identical"));
}

// Where one byte differs there are points of the mark's colour at its digits and its character alone.
TEST_F(HexWindowTest, MarksDifferingBytesInLightAndDark) {
    const QPalette before = QApplication::palette();
    for (const bool dark : {false, true}) {
        QPalette palette(dark ? QColor(40, 44, 52) : QColor(240, 240, 240));
        palette.setColor(QPalette::Base, dark ? QColor(30, 30, 34) : QColor(Qt::white));
        QApplication::setPalette(palette);
        Open("0123456789abcdefXX", "0123456#89abcdef");
        Window().resize(1'600, 500);
        const DiffColours colours = DiffColours::For(palette);
        for (const Side side : kBothSides) {
            const QImage picture = View(side).viewport()->grab().toImage();
            const auto has = [&](const QRect& rect, const QColor& colour) {
                for (int y = rect.top(); y <= rect.bottom(); ++y)
                    for (int x = rect.left(); x <= rect.right(); ++x)
                        if (picture.pixelColor(x, y) == colour) return true;
                return false;
            };
            for (std::uint64_t byte = 0; byte < 16; ++byte) {
                EXPECT_EQ(byte == 7, has(View(side).DigitsRect(byte), colours.mark)) << byte;
                EXPECT_EQ(byte == 7, has(View(side).CharacterRect(byte), colours.mark)) << byte;
            }
            EXPECT_TRUE(has(View(side).DigitsRect(17), colours.orphan));
        }
        window.reset();
    }
    QApplication::setPalette(before);
}

}  // namespace
}  // namespace vantrel
