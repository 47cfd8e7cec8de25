#include "fileops/forms/frm_file_date_times.h"

#include <gmock/gmock.h>

#include <QCalendarWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <filesystem>

#include "platform/forms/qt_text.h"
#include "support/modal.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {
namespace {

using ::testing::HasSubstr;

class StampWindow : public ::testing::Test {
  protected:
    StampWindow() {
        for (const char* name : {"a", "b", "c"}) {
            work.Write(name, name, 1'000);
            files.push_back({name, work / name, {}, FileTime::FromUnix(1'000, 0)});
        }
    }
    bool Show(const std::function<void(frmFileDateTimes&)>& act, bool confirm = true) {
        frmFileDateTimes window(box.Get(), files, confirm, [this] { ++helped; });
        WhenModal([&](QWidget*) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
            act(window);
            if (window.isVisible()) QTest::keyClick(&window, Qt::Key_Escape);
        });
        return window.ShowForm();
    }
    FileTime Time(const char* name) {
        FileInfo info;
        EXPECT_TRUE(box.files.Stat(work / name, LinkPolicy::Follow, info).IsOk());
        return info.lastWrite;
    }
    static std::string Row(const frmFileDateTimes& window, int row) {
        std::string text;
        for (int column = 0; column < 3; ++column)
            text += FromQString(window.lvwFiles->model()->index(row, column).data().toString()) + "|";
        return text;
    }
    static void Press(QWidget* control) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Space);
    }

    TestToolbox box;
    TempFolder work;
    std::vector<FileToStamp> files;
    int helped = 0;
};

TEST_F(StampWindow, BeginsWithTheClockAndSetsAllFilesToTheTimeGiven) {
    box.clock.now = FileTime::FromUnix(1'600'000'000, 0);  // 2020-09-13 12:26:40
    box.messages.answers = {MessageAnswer::No, MessageAnswer::Yes};
    EXPECT_TRUE(Show([&](frmFileDateTimes& window) {
        EXPECT_EQ(QDate(2020, 9, 13), window.MonthView1->selectedDate());
        EXPECT_EQ(QStringLiteral("12"), window.txtHour->text());
        EXPECT_EQ(QStringLiteral("40"), window.txtSecond->text());
        EXPECT_TRUE(window.optAMPM[1]->isChecked());
        EXPECT_EQ("a|1970-01-01|12:16:40 AM|", Row(window, 0));
        window.MonthView1->setSelectedDate(QDate(2001, 2, 3));
        window.txtHour->setFocus();
        QTest::qWait(0);
        QTest::keyClicks(window.txtHour, QStringLiteral("4"));
        window.txtMinute->clear();
        Press(window.cmdApply);
        EXPECT_EQ(QStringLiteral("0"), window.txtMinute->text());
        EXPECT_EQ(FileTime::FromUnix(1'000, 0), Time("a")) << "the answer was No";
        Press(window.cmdApply);
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ("c|2001-02-03|04:00:40 PM|", Row(window, 2));
        Press(window.cmdHelp);
    }));
    EXPECT_EQ(
        "Confirm Date/Time Change: The Dates/Time of these files is about to be changed to:\r\n\r\n"
        "2001-02-03 04:00:40 PM\r\n\r\nDo you wish to continue?",
        box.messages.Line(0));
    EXPECT_EQ(FileTime::FromUnix(981'216'040, 0), Time("a"));
    EXPECT_EQ(1, helped);
}

TEST_F(StampWindow, RefusesWhatIsNoTimeAndGoesOnPastAFileThatCannotBeChanged) {
    std::filesystem::permissions(work / "a", std::filesystem::perms(0400));
    std::filesystem::remove(work / "b");
    std::filesystem::create_symlink("c", work / "b");
    EXPECT_TRUE(Show(
        [&](frmFileDateTimes& window) {
            for (const auto& [field, text, name] :
                 {std::tuple(window.txtHour, "13", "Hour"), std::tuple(window.txtHour, "", "Hour"),
                  std::tuple(window.txtMinute, "60", "Minute"),
                  std::tuple(window.txtSecond, "x", "Second")}) {
                for (QLineEdit* any : {window.txtHour, window.txtMinute, window.txtSecond})
                    any->setText(QStringLiteral("12"));
                field->setText(QLatin1String(text));
                Press(window.cmdOK);
                EXPECT_EQ(std::string("Set File Date/Time: Invalid ") + name + " Value",
                          box.messages.Line(box.messages.shown.size() - 1));
                EXPECT_TRUE(field->hasFocus());
            }
            window.txtSecond->setText(QStringLiteral("12"));
            Press(window.optAMPM[0]);
            Press(window.cmdOK);
            EXPECT_FALSE(window.isVisible());
        },
        false));
    ASSERT_EQ(6U, box.messages.shown.size());
    EXPECT_THAT(box.messages.Line(4), HasSubstr("Error encountered opening the file " + (work / "a")));
    EXPECT_THAT(box.messages.Line(5), HasSubstr("2 of 3 files"));
    EXPECT_EQ(FileTime::FromUnix(1'000, 0), Time("a"));
    EXPECT_EQ(12 * 60 + 12, Time("c").ticks / FileTime::kTicksPerSecond % 86'400) << "12 AM is midnight";
}

}  // namespace
}  // namespace vantrel::testing
