#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <string>

#include "core/toolbox.h"
#include "views/forms/printers.h"
#include "views/mod_listview.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace vantrel {

// What one window has to print; all must outlive the dialog.
struct PrintParts {
    const Toolbox& tools;
    Printers& printers = SystemPrinters();
    // The name of the window that prints: "frmMain" has lists that are shown and all there are,
    // "frmSubDirDiffs" lists that are shown, "frmFileDiffs" two grids.
    std::string activeWindow;
    PerSide<PrintedList> shown{};
    PerSide<PrintedList> all{};
    // Prints the grids wanted; false where that failed, which was then reported.
    std::function<bool(const PerSide<bool>& wanted, const PrintHeader& header, Paper& paper)> printGrids{};
    std::function<void()> showHelp{};  // over the dialog
};

// "Print Options": where, what and how to print.
class frmPrintOptions : public QDialog {
    Q_OBJECT

  public:
    explicit frmPrintOptions(PrintParts parts, QWidget* parent = nullptr);

    // Shows the dialog, modal, until something was printed or the user had enough.
    void ShowForm();
    // While something is printed the dialog stays.
    void done(int result) override;

    enum What { LeftPane, RightPane, BothPanes, SideBySide };
    enum Orientation { Portrait, Landscape };

    QLabel* lblPrinterName;
    QComboBox* cboPrinters;
    std::array<QRadioButton*, 4> optSide{};
    std::array<QRadioButton*, 2> optOrientation{};
    QLabel* imgOrientation;
    QCheckBox* chkPrintDateTime;
    QCheckBox* chkPrintPageNumber;
    QCheckBox* chkPrintDisplayedOnly;
    QCheckBox* chkPrintToFile;
    QPushButton* cmdPrint;
    QPushButton* cmdPreview;
    QPushButton* CancelButton;
    QPushButton* cmdHelp;

  private:
    class Run;

    void LayOut();
    void Wire();
    bool FormLoad();
    void ShowState();
    What ChosenWhat() const;
    QPageLayout::Orientation ChosenOrientation() const;
    PrintHeader ChosenHeader() const;
    const PerSide<PrintedList>& ChosenLists() const;
    bool IsForGrids() const { return parts_.activeWindow == "frmFileDiffs"; }
    bool HasSomethingToPrint() const;
    bool RefuseEmpty();
    bool PrintOn(Paper& paper, const PrintHeader& header) const;
    bool PrintLists(Paper& paper, const PrintHeader& header) const;
    bool PrintOnPaper(const std::string& printer);
    void PrintTextReport(const std::string& path);
    void cmdPrint_Click();
    void cmdPreview_Click();
    void Tell(const char* title, const char* text);

    PrintParts parts_;
    bool isAtWork_ = false;
};

// mnuFilePrint of a window with two lists: tells where there is nothing to print, otherwise shows the dialog
// over that window.
void ShowPrintOptions(const PrintParts& parts, QWidget* over);

}  // namespace vantrel
