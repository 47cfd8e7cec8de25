#include "views/forms/frm_print_options.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <cerrno>

#include "../panes_support.h"
#include "platform/names/names.h"
#include "support/faulty_system_calls.h"
#include "support/modal.h"
#include "support/test_toolbox.h"
#include "views/forms/frm_print_preview.h"

namespace vantrel {
namespace {

using enum ResultType;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using vantrel::testing::AddPair;
using vantrel::testing::Call;
using vantrel::testing::FaultySystemCalls;
using vantrel::testing::TestToolbox;
using vantrel::testing::WhenModal;

// Printers as the test wants them. All but the PDF file print into `file`.
struct FakePrinters : Printers {
    std::vector<std::string> names{"Office", std::string(kPrintToPdf)};
    std::string standard = "Office";
    QPageLayout::Orientation orientation = QPageLayout::Landscape;
    std::string file;

    std::vector<std::string> Names() const override { return names; }
    std::string DefaultName() const override { return standard; }
    QPageLayout::Orientation OrientationOf(const std::string&) const override { return orientation; }
    std::unique_ptr<QPrinter> Open(const std::string& name, QPageLayout::Orientation wanted) const override {
        auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        printer->setOutputFormat(QPrinter::PdfFormat);
        if (name != kPrintToPdf) printer->setOutputFileName(QString::fromStdString(file));
        printer->setPageOrientation(wanted);
        return printer;
    }
};

// What one of poppler's tools says of a PDF file.
std::string Ask(const char* tool, const QStringList& arguments) {
    QProcess process;
    process.start(QLatin1String(tool), arguments);
    EXPECT_TRUE(process.waitForFinished()) << tool;
    EXPECT_EQ(0, process.exitCode()) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput().toStdString();
}
std::string TextOf(const std::string& pdf) {
    return Ask("pdftotext", {QStringLiteral("-layout"), QString::fromStdString(pdf), QStringLiteral("-")});
}
int PagesOf(const std::string& pdf) {
    const std::string info = Ask("pdfinfo", {QString::fromStdString(pdf)});
    return std::stoi(info.substr(info.find("Pages:") + 6));
}

class PrintOptionsTest : public ::testing::Test {
  protected:
    PrintOptionsTest() : tools(calls) {
        printers.file = tools.folder / "office.pdf";
        AddPair(hold, "newer.txt", {Newer, 1'234'567}, {Older, 3});
        AddPair(hold, "same.txt", {Same, 12}, {Same, 12});
        AddPair(hold, "left only", {Orphan, 1}, {});
        for (const Side side : kBothSides) {
            shown[side].ShareTexts(hold[side]);
            for (const std::size_t row : {0U, 2U}) shown[side].Add(hold[side][row]);
        }
    }
    PrintParts Parts(const std::string& window = "frmMain") {
        PrintParts parts{.tools = tools.Get(), .printers = printers, .activeWindow = window};
        constexpr PerSide<const char*> kFolders{{"/the/left/", "/the/right/"}};
        for (const Side side : kBothSides) {
            parts.shown[side] = {&shown[side], kFolders[side]};
            parts.all[side] = {&hold[side], kFolders[side]};
        }
        return parts;
    }
    // The dialog of `parts`, on which `act` acts once it stands.
    void Open(const PrintParts& parts, const std::function<void(frmPrintOptions&)>& act) {
        bool stood = false;
        WhenModal([&](QWidget* window) {
            stood = true;
            auto& dialog = dynamic_cast<frmPrintOptions&>(*window);
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            act(dialog);
            dialog.reject();
        });
        ShowPrintOptions(parts, nullptr);
        EXPECT_TRUE(stood);
    }
    static void Press(QWidget* widget) {
        ASSERT_TRUE(widget->isVisible() && widget->isEnabled()) << widget->objectName().toStdString();
        QTest::keyClick(widget, Qt::Key_Space);
    }
    std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        // Without the dialogs that ask for a file.
        for (std::size_t i = 0; i < tools.messages.shown.size(); ++i)
            if (const std::string line = tools.messages.Line(i); !line.starts_with("Print To File: "))
                lines.push_back(line);
        tools.messages.shown.clear();
        return lines;
    }

    FaultySystemCalls calls;
    TestToolbox tools;
    FakePrinters printers;
    HoldLists hold;
    PerSide<ResultList> shown;
};

TEST_F(PrintOptionsTest, OpensAsThePrinterAndTheWindowSay) {
    Open(Parts(), [&](frmPrintOptions& dialog) {
        EXPECT_EQ(2, dialog.cboPrinters->count());
        EXPECT_EQ(QStringLiteral("Office"), dialog.cboPrinters->currentText());
        EXPECT_TRUE(dialog.optOrientation[frmPrintOptions::Landscape]->isChecked());
        EXPECT_EQ(QStringLiteral("imgLandscape"), dialog.imgOrientation->accessibleName());
        Press(dialog.optOrientation[frmPrintOptions::Portrait]);
        EXPECT_EQ(QStringLiteral("imgPortrait"), dialog.imgOrientation->accessibleName());
        for (const QWidget* widget : std::initializer_list<QWidget*>{
                 dialog.chkPrintDisplayedOnly, dialog.chkPrintToFile, dialog.optSide[3], dialog.cmdPreview})
            EXPECT_TRUE(widget->isEnabled());
        Press(dialog.chkPrintToFile);
        EXPECT_FALSE(dialog.cmdPreview->isEnabled() || dialog.optOrientation[0]->isEnabled());
    });
    Open(Parts("frmSubDirDiffs"), [&](frmPrintOptions& dialog) {
        EXPECT_FALSE(dialog.chkPrintDisplayedOnly->isEnabled());
        EXPECT_TRUE(dialog.chkPrintToFile->isEnabled() && dialog.optSide[3]->isEnabled());
    });
    Open(Parts("frmFileDiffs"), [&](frmPrintOptions& dialog) {
        EXPECT_FALSE(dialog.chkPrintDisplayedOnly->isEnabled() || dialog.chkPrintToFile->isEnabled() ||
                     dialog.optSide[3]->isEnabled());
    });
    EXPECT_THAT(Shown(), IsEmpty());
    Open(Parts("frmOther"), [](frmPrintOptions&) {});
    EXPECT_THAT(Shown(), ElementsAre("Print Options: Oops!  Unexpected value in frmPrintOptions.Form_Load"));
}

TEST_F(PrintOptionsTest, StaysAwayWhereNothingCanBePrinted) {
    printers.names.clear();
    ShowPrintOptions(Parts(), nullptr);
    EXPECT_THAT(Shown(), ElementsAre("Print: There are no printers set up on your computer.  Go to Control "
                                     "Panel --> Printers to add a printer."));
    for (ResultList& list : shown.values) list.SetToSentinel();
    ShowPrintOptions(Parts(), nullptr);
    for (ResultList& list : shown.values) list.Clear();
    ShowPrintOptions(Parts(), nullptr);
    EXPECT_THAT(Shown(), ElementsAre("Unable to Print: There are no items to print.",
                                     "Unable to Print: There are no items to print."));
}

// The pane that is chosen may have nothing while the other one has. The file is asked for before that is
// said.
TEST_F(PrintOptionsTest, RefusesAnEmptyPane) {
    shown[Side::Right].Clear();
    tools.messages.texts = {tools.folder / "never.txt"};
    Open(Parts(), [&](frmPrintOptions& dialog) {
        Press(dialog.optSide[1]);
        Press(dialog.cmdPrint);
        Press(dialog.cmdPreview);
        Press(dialog.chkPrintToFile);
        Press(dialog.cmdPrint);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(tools.messages.texts.empty());
        // All there is has rows on the right.
        Press(dialog.chkPrintDisplayedOnly);
        Press(dialog.cmdPrint);
    });
    const char* refused = "Unable to Print: Cannot print a results window with no items in it.";
    EXPECT_THAT(Shown(), ElementsAre(refused, refused, refused));
    EXPECT_FALSE(tools.folder.Exists("never.txt"));
}

TEST_F(PrintOptionsTest, WritesTextReportsOfWhatIsChosen) {
    const auto report = [&](frmPrintOptions::What what, bool all, bool date) {
        tools.messages.texts = {tools.folder / "report.txt"};
        Open(Parts(), [&](frmPrintOptions& dialog) {
            Press(dialog.optSide[what]);
            Press(dialog.chkPrintToFile);
            if (all) Press(dialog.chkPrintDisplayedOnly);
            if (!date) Press(dialog.chkPrintDateTime);
            Press(dialog.cmdPrint);
            EXPECT_FALSE(dialog.isVisible());
        });
        EXPECT_THAT(Shown(), ElementsAre("Print: Printing is complete."));
        return tools.folder.Read("report.txt");
    };
    const std::string left = report(frmPrintOptions::LeftPane, false, true);
    EXPECT_THAT(left, StartsWith("Vantrel - [2020-09-13 12:26:40]\r\n\r\n/the/left/\r\n"));
    EXPECT_THAT(left, Not(HasSubstr("same.txt")));
    const std::string right = report(frmPrintOptions::RightPane, true, false);
    EXPECT_THAT(right, StartsWith("\r\n/the/right/\r\n"));
    EXPECT_THAT(right, HasSubstr("=  same.txt"));
    const std::string both = report(frmPrintOptions::BothPanes, false, true);
    EXPECT_THAT(both, HasSubstr("\r\n\r\n\r\n\r\n/the/right/\r\n"));
    EXPECT_EQ(both, report(frmPrintOptions::SideBySide, false, true));
}

TEST_F(PrintOptionsTest, PrintsOnAPrinterAndAsPdf) {
    Open(Parts(), [&](frmPrintOptions& dialog) {
        Press(dialog.optSide[2]);
        Press(dialog.cmdPrint);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(2, PagesOf(printers.file));
    const std::string both = TextOf(printers.file);
    EXPECT_THAT(both, ::testing::ContainsRegex("Vantrel - Page 1 +.2020-09-13 12:26:40."));
    EXPECT_THAT(both, HasSubstr("+ newer.txt"));
    EXPECT_THAT(both, HasSubstr("- newer.txt"));
    EXPECT_THAT(both, Not(HasSubstr("Page 2")));  // each pane is a print of its own

    tools.messages.texts = {tools.folder / "paper.pdf"};
    Open(Parts(), [&](frmPrintOptions& dialog) {
        dialog.cboPrinters->setCurrentIndex(1);
        Press(dialog.optSide[3]);
        for (QWidget* box :
             {dialog.chkPrintDisplayedOnly, dialog.chkPrintDateTime, dialog.chkPrintPageNumber})
            Press(box);
        Press(dialog.cmdPrint);
    });
    EXPECT_THAT(Shown(), ElementsAre("Print: Printing is complete.", "Print: Printing is complete."));
    EXPECT_EQ(1, PagesOf(tools.folder / "paper.pdf"));
    const std::string pairs = TextOf(tools.folder / "paper.pdf");
    EXPECT_THAT(pairs,
                ::testing::ContainsRegex("\u2713 ?same.txt +12 +2020-09-13 12:26:52 +\u2713 ?same.txt"));
    EXPECT_THAT(pairs, Not(HasSubstr("[")));
}

// A long list breaks into pages, with a header on each; wide, right to left and odd names are no trouble.
TEST_F(PrintOptionsTest, PrintsManyPagesAndOddNames) {
    ResultList& list = shown[Side::Left];
    list.Clear();
    HoldLists odd;
    const std::string wide = [] {
        std::string name;
        for (int i = 0; i < 85; ++i) name += "\u6F22";
        return name;
    }();
    for (const std::string& name :
         {wide, std::string("\u05E9\u05DC\u05D5\u05DD.txt"), NameFromSystem("line\nfeed\xFF")})
        AddPair(odd, name, {Orphan, 1}, {});
    for (int i = 0; i < 500; ++i) AddPair(odd, "file" + std::to_string(i), {Orphan, i}, {});
    list.ShareTexts(odd[Side::Left]);
    for (const ResultRow& row : odd[Side::Left]) list.Add(row);
    Open(Parts(), [&](frmPrintOptions& dialog) { Press(dialog.cmdPrint); });
    const int pages = PagesOf(printers.file);
    EXPECT_GT(pages, 5);
    const std::string text = TextOf(printers.file);
    for (int page = 1; page <= pages; ++page)
        EXPECT_THAT(text, HasSubstr("Page " + std::to_string(page) + " "));
    EXPECT_THAT(text, HasSubstr("file499"));
    EXPECT_THAT(text, ::testing::ContainsRegex("O line.{1,8}feed"));
}

TEST_F(PrintOptionsTest, CancelledDialogsAndFailuresLeaveNothing) {
    tools.folder.Write("paper.pdf", "old");
    const auto print = [&](bool toFile, std::optional<std::string> path) {
        tools.messages.texts = {std::move(path)};
        Open(Parts(), [&](frmPrintOptions& dialog) {
            dialog.cboPrinters->setCurrentIndex(1);
            if (toFile) Press(dialog.chkPrintToFile);
            Press(dialog.cmdPrint);
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_TRUE(dialog.isEnabled());
        });
    };
    for (const bool toFile : {false, true}) print(toFile, std::nullopt);
    EXPECT_THAT(Shown(), IsEmpty());
    for (const bool toFile : {false, true}) {
        print(toFile, tools.folder / "no/such/folder/paper.pdf");
        EXPECT_THAT(Shown(), ElementsAre(HasSubstr("frmPrintOptions.cmdPrint_Click")));
        calls.FailAll(Call::Write, ENOSPC);
        print(toFile, tools.folder / "paper.pdf");
        calls.ClearFaults();
        EXPECT_THAT(Shown(), ElementsAre(::testing::AllOf(HasSubstr("isk full"), HasSubstr("paper.pdf"))));
        EXPECT_EQ("old", tools.folder.Read("paper.pdf"));
    }
}

// The job says which page it is at, and ends when the user wants it to; nothing of it is kept.
TEST_F(PrintOptionsTest, CanBeCancelled) {
    ResultList& list = shown[Side::Left];
    for (int i = 0; i < 2'000; ++i) list.AddCopy(hold[Side::Left][0]);
    tools.folder.Write("paper.pdf", "old");
    tools.messages.texts = {tools.folder / "paper.pdf"};
    std::string label;
    Open(Parts(), [&](frmPrintOptions& dialog) {
        dialog.cboPrinters->setCurrentIndex(1);
        tools.loop.onYield = [&] {
            auto* progress = dialog.findChild<QProgressDialog*>();
            ASSERT_NE(nullptr, progress);
            EXPECT_FALSE(dialog.isEnabled());
            dialog.reject();  // does not come through
            if (tools.loop.yields != 3) return;
            label = progress->labelText().toStdString();
            progress->show();
            Press(progress->findChild<QPushButton*>());
        };
        Press(dialog.cmdPrint);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dialog.isEnabled());
    });
    EXPECT_THAT(label, StartsWith("Printing page 3 of "));
    EXPECT_EQ(3U, tools.loop.yields);
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_EQ("old", tools.folder.Read("paper.pdf"));
}

TEST_F(PrintOptionsTest, PreviewShowsThePagesAndPrintsThem) {
    ResultList& list = shown[Side::Left];
    for (int i = 0; i < 200; ++i) list.AddCopy(hold[Side::Left][0]);
    Open(Parts(), [&](frmPrintOptions& dialog) {
        WhenModal([&](QWidget* window) {
            auto& preview = dynamic_cast<frmPrintPreview&>(*window);
            EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
            const int pages = preview.View()->pageCount();
            EXPECT_GT(pages, 2);
            EXPECT_EQ("Page 1 of " + std::to_string(pages), preview.lblPage->text().toStdString());
            EXPECT_FALSE(preview.cmdPrevious->isEnabled());
            Press(preview.cmdNext);
            EXPECT_EQ(2, preview.View()->currentPage());
            EXPECT_THAT(preview.lblPage->text().toStdString(), StartsWith("Page 2 of"));
            EXPECT_FALSE(tools.folder.Exists("office.pdf"));
            Press(preview.cmdPrint);
        });
        Press(dialog.cmdPreview);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(tools.folder.Exists("office.pdf"));
    EXPECT_THAT(Shown(), ElementsAre("Print: Printing is complete."));
}

TEST_F(PrintOptionsTest, PreviewOfALongListShowsItsFirstPages) {
    ResultList& list = shown[Side::Left];
    for (int i = 0; i < 20'000; ++i) list.AddCopy(hold[Side::Left][0]);
    Open(Parts(), [&](frmPrintOptions& dialog) {
        WhenModal([&](QWidget* window) {
            auto& preview = dynamic_cast<frmPrintPreview&>(*window);
            EXPECT_EQ(100, preview.View()->pageCount());
            EXPECT_EQ("Page 1 of 100 shown here; more are printed", preview.lblPage->text().toStdString());
            QTest::keyClick(&preview, Qt::Key_Escape);
        });
        Press(dialog.cmdPreview);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_FALSE(tools.folder.Exists("office.pdf"));
}

// The grids of the difference viewer: the sides stand for them.
TEST_F(PrintOptionsTest, AsksForTheGridsWanted) {
    std::vector<std::string> wanted;
    PrintParts parts = Parts("frmFileDiffs");
    parts.printGrids = [&](const PerSide<bool>& sides, const PrintHeader& header, Paper& paper) {
        wanted.push_back(std::string(sides[Side::Left] ? "L" : "") + (sides[Side::Right] ? "R" : ""));
        return PrintListview(tools.Get(), Parts().shown[Side::Left], header, paper);
    };
    for (const std::size_t what : {0U, 1U, 2U})
        Open(parts, [&](frmPrintOptions& dialog) {
            Press(dialog.optSide[what]);
            Press(dialog.cmdPrint);
        });
    EXPECT_THAT(wanted, ElementsAre("L", "R", "LR"));
    // What failed said so itself, and the dialog stays.
    Shown();
    parts.printGrids = [](const PerSide<bool>&, const PrintHeader&, Paper&) { return false; };
    Open(parts, [&](frmPrintOptions& dialog) {
        Press(dialog.cmdPrint);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_THAT(Shown(), IsEmpty());
}

// Without any printer of its own a computer has the PDF file.
TEST(SystemPrinters, AlwaysHaveThePdfFile) {
    EXPECT_THAT(SystemPrinters().Names(), ::testing::Contains(std::string(kPrintToPdf)));
    EXPECT_THROW(SystemPrinters().Open("no such printer", QPageLayout::Portrait), ErrorException);
}

}  // namespace
}  // namespace vantrel
