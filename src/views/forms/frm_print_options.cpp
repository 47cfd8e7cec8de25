#include "views/forms/frm_print_options.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

#include "platform/forms/icons.h"
#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "views/forms/frm_print_preview.h"

namespace vantrel {

namespace {

constexpr const char* kWhat[]{"&Left Pane", "&Right Pane", "&Both Panes", "Both Panes (&Side-by-Side)"};
constexpr const char* kOrientations[]{"P&ortrait", "L&andscape"};
constexpr const char* kPictures[]{"page-portrait", "page-landscape"};
constexpr const char* kPictureNames[]{"imgPortrait", "imgLandscape"};
constexpr int kPictureSize = 48;

std::string NameOfElement(const char* array, std::size_t index) {
    return std::string(array) + "(" + std::to_string(index) + ")";
}

QGroupBox* Group(const char* title, const char* name, std::initializer_list<QWidget*> widgets) {
    auto* group = MakeNamed<QGroupBox>(title, name);
    auto* column = new QVBoxLayout(group);
    for (QWidget* widget : widgets) column->addWidget(widget);
    column->addStretch();
    return group;
}

// Says how far the job is, and lets the user end it.
class PrintProgress {
  public:
    PrintProgress(EventLoopPort& loop, QWidget* parent) : loop_(loop), dialog_(parent) {
        dialog_.setObjectName(QStringLiteral("frmPrintProgress"));
        dialog_.setWindowTitle(QStringLiteral("Print"));
        dialog_.setWindowModality(Qt::WindowModal);
        dialog_.setMinimumDuration(500);
        dialog_.setAutoClose(false);
        dialog_.setAutoReset(false);
        // However it is closed, the job ends.
        QObject::connect(&dialog_, &QDialog::rejected, &dialog_, &QProgressDialog::cancel);
        dialog_.setLabelText(QStringLiteral("Printing page 1"));
        ResizeWithinScreen(dialog_, {dialog_.fontMetrics().averageCharWidth() * 50, 0});
    }
    void operator()(std::size_t page, std::size_t pages) {
        dialog_.setMaximum(static_cast<int>(pages));
        dialog_.setLabelText(QStringLiteral("Printing page %1 of %2").arg(page).arg(pages));
        dialog_.setValue(static_cast<int>(page - 1));
        loop_.Yield();
        if (dialog_.wasCanceled()) throw Cancelled();
    }

  private:
    EventLoopPort& loop_;
    QProgressDialog dialog_;
};

}  // namespace

// The dialog at work: it takes no input.
class frmPrintOptions::Run {
  public:
    explicit Run(frmPrintOptions& form) : form_(form), focus_(form.focusWidget()) {
        form_.isAtWork_ = true;
        form_.setEnabled(false);
    }
    ~Run() {
        form_.isAtWork_ = false;
        form_.setEnabled(true);
        if (focus_ != nullptr) focus_->setFocus();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

  private:
    frmPrintOptions& form_;
    QWidget* focus_;
};

frmPrintOptions::frmPrintOptions(PrintParts parts, QWidget* parent)
    : QDialog(parent),
      lblPrinterName(MakeNamed<QLabel>("Pri&nter:", "lblPrinterName")),
      cboPrinters(Named(new QComboBox, "cboPrinters")),
      imgOrientation(Named(new QLabel, "imgOrientation")),
      chkPrintDateTime(MakeNamed<QCheckBox>("&Date/Time", "chkPrintDateTime")),
      chkPrintPageNumber(MakeNamed<QCheckBox>("Pa&ge Numbers", "chkPrintPageNumber")),
      chkPrintDisplayedOnly(MakeNamed<QCheckBox>("Only Files Displayed in Panes", "chkPrintDisplayedOnly")),
      chkPrintToFile(MakeNamed<QCheckBox>("Print To File", "chkPrintToFile")),
      cmdPrint(MakeNamed<QPushButton>("&Print", "cmdPrint")),
      cmdPreview(MakeNamed<QPushButton>("Pre&view...", "cmdPreview")),
      CancelButton(MakeNamed<QPushButton>("Cancel", "CancelButton")),
      cmdHelp(MakeNamed<QPushButton>("&Help", "cmdHelp")),
      parts_(std::move(parts)) {
    setObjectName(QStringLiteral("frmPrintOptions"));
    setWindowTitle(QStringLiteral("Print Options"));
    for (std::size_t i = 0; i < optSide.size(); ++i)
        optSide[i] = MakeNamed<QRadioButton>(kWhat[i], NameOfElement("optSide", i).c_str());
    for (std::size_t i = 0; i < optOrientation.size(); ++i)
        optOrientation[i] =
            MakeNamed<QRadioButton>(kOrientations[i], NameOfElement("optOrientation", i).c_str());
    lblPrinterName->setBuddy(cboPrinters);
    optSide[LeftPane]->setChecked(true);
    optOrientation[Portrait]->setChecked(true);
    for (QCheckBox* box : {chkPrintDateTime, chkPrintPageNumber, chkPrintDisplayedOnly})
        box->setChecked(true);
    for (QPushButton* button : {cmdPreview, CancelButton, cmdHelp}) button->setAutoDefault(false);
    LayOut();
    cmdPrint->setDefault(true);
    Wire();
    ShowState();
}

void frmPrintOptions::LayOut() {
    auto* printer = new QHBoxLayout;
    printer->addWidget(lblPrinterName);
    printer->addWidget(cboPrinters, 1);
    auto* what = Group("Print What?", "fraPrintWhat", {optSide[0], optSide[1], optSide[2], optSide[3]});
    auto* orientation = Group("Orientation", "fraOrientation", {optOrientation[0], optOrientation[1]});
    static_cast<QVBoxLayout*>(orientation->layout())->addWidget(imgOrientation, 0, Qt::AlignHCenter);
    auto* header = Group("Header", "fraHeader", {chkPrintDateTime, chkPrintPageNumber});
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdPrint, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdPreview, QDialogButtonBox::ActionRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    buttons->addButton(cmdHelp, QDialogButtonBox::HelpRole);
    auto* grid = new QGridLayout(this);
    grid->addLayout(printer, 0, 0, 1, 3);
    grid->addWidget(what, 1, 0);
    grid->addWidget(orientation, 1, 1);
    grid->addWidget(header, 1, 2);
    grid->addWidget(chkPrintDisplayedOnly, 2, 0, 1, 3);
    grid->addWidget(chkPrintToFile, 3, 0, 1, 3);
    grid->setRowStretch(4, 1);
    grid->addWidget(buttons, 5, 0, 1, 3);
    QWidget* before = nullptr;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             cboPrinters, optSide[0], optSide[1], optSide[2], optSide[3], optOrientation[0],
             optOrientation[1], chkPrintDateTime, chkPrintPageNumber, chkPrintDisplayedOnly, chkPrintToFile,
             cmdPrint, cmdPreview, CancelButton, cmdHelp}) {
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
    ResizeWithinScreen(*this, sizeHint());
}

void frmPrintOptions::Wire() {
    const auto guarded = [this](QPushButton* button, const char* routine, auto work) {
        connect(button, &QPushButton::clicked, this, [this, name = std::string(routine), work] {
            parts_.tools.reporter.GuardRun("frmPrintOptions." + name + "_Click", work);
        });
    };
    guarded(cmdPrint, "cmdPrint", [this] { cmdPrint_Click(); });
    guarded(cmdPreview, "cmdPreview", [this] { cmdPreview_Click(); });
    guarded(cmdHelp, "cmdHelp", [this] {
        if (parts_.showHelp) parts_.showHelp();
    });
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    for (QRadioButton* option : optOrientation)
        connect(option, &QRadioButton::toggled, this, [this] { ShowState(); });
    connect(chkPrintToFile, &QCheckBox::toggled, this, [this] { ShowState(); });
}

// The picture of the orientation, and what makes no sense for a text file.
void frmPrintOptions::ShowState() {
    const int orientation = optOrientation[Landscape]->isChecked() ? Landscape : Portrait;
    imgOrientation->setPixmap(
        CommandIcon(QLatin1String(kPictures[orientation])).pixmap(kPictureSize, kPictureSize));
    imgOrientation->setAccessibleName(QLatin1String(kPictureNames[orientation]));
    const bool isForPaper = !chkPrintToFile->isChecked();
    cmdPreview->setEnabled(isForPaper);
    for (QRadioButton* option : optOrientation) option->setEnabled(isForPaper);
    chkPrintPageNumber->setEnabled(isForPaper);
}

bool frmPrintOptions::FormLoad() {
    const std::vector<std::string> names = parts_.printers.Names();
    if (names.empty()) {
        Tell("Print",
             "There are no printers set up on your computer.  "
             "Go to Control Panel --> Printers to add a printer.");
        return false;
    }
    for (const std::string& name : names) cboPrinters->addItem(ToQString(name));
    const std::string standard = parts_.printers.DefaultName();
    cboPrinters->setCurrentText(ToQString(standard));
    const bool isLandscape = parts_.printers.OrientationOf(standard) == QPageLayout::Landscape;
    optOrientation[isLandscape ? Landscape : Portrait]->setChecked(true);

    if (parts_.activeWindow == "frmSubDirDiffs" || IsForGrids()) {
        chkPrintDisplayedOnly->setEnabled(false);
        chkPrintToFile->setEnabled(!IsForGrids());
        optSide[SideBySide]->setEnabled(!IsForGrids());
    } else if (parts_.activeWindow != "frmMain") {
        Tell("Print Options", "Oops!  Unexpected value in frmPrintOptions.Form_Load");
    }
    return true;
}

void frmPrintOptions::ShowForm() {
    bool isLoaded = false;
    parts_.tools.reporter.GuardRun("frmPrintOptions.Form_Load", [&] { isLoaded = FormLoad(); });
    if (isLoaded) exec();
}

void frmPrintOptions::done(int result) {
    if (!isAtWork_) QDialog::done(result);
}

void frmPrintOptions::Tell(const char* title, const char* text) {
    parts_.tools.messages.Ask(
        {.title = title, .text = text, .icon = MessageIcon::Information, .defaultAnswer = {}});
}

frmPrintOptions::What frmPrintOptions::ChosenWhat() const {
    const auto chosen = std::find_if(optSide.begin(), optSide.end(),
                                     [](const QRadioButton* option) { return option->isChecked(); });
    return static_cast<What>(chosen - optSide.begin());
}

QPageLayout::Orientation frmPrintOptions::ChosenOrientation() const {
    return optOrientation[Landscape]->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

PrintHeader frmPrintOptions::ChosenHeader() const {
    const EngineSurroundings& around = parts_.tools;
    return {chkPrintPageNumber->isChecked(), chkPrintDateTime->isChecked(),
            around.locale.DateTime(FileTimeToLocalFileTime(around.clock.Now()))};
}

const PerSide<PrintedList>& frmPrintOptions::ChosenLists() const {
    return parts_.activeWindow == "frmMain" && !chkPrintDisplayedOnly->isChecked() ? parts_.all
                                                                                   : parts_.shown;
}

bool frmPrintOptions::HasSomethingToPrint() const {
    if (IsForGrids()) return true;
    const PerSide<PrintedList>& lists = ChosenLists();
    switch (ChosenWhat()) {
        case LeftPane:
            return !lists[Side::Left].IsEmpty();
        case RightPane:
            return !lists[Side::Right].IsEmpty();
        default:
            return !lists[Side::Left].IsEmpty() || !lists[Side::Right].IsEmpty();
    }
}

bool frmPrintOptions::RefuseEmpty() {
    if (HasSomethingToPrint()) return false;
    Tell("Unable to Print", "Cannot print a results window with no items in it.");
    return true;
}

bool frmPrintOptions::PrintLists(Paper& paper, const PrintHeader& header) const {
    const PerSide<PrintedList>& lists = ChosenLists();
    const What what = ChosenWhat();
    if (what == SideBySide) return PrintListviewsSideBySide(parts_.tools, lists, header, paper);
    for (const Side side : kBothSides) {
        const bool isWanted = what == BothPanes || what == (side == Side::Left ? LeftPane : RightPane);
        if (isWanted && !PrintListview(parts_.tools, lists[side], header, paper)) return false;
    }
    return true;
}

bool frmPrintOptions::PrintOn(Paper& paper, const PrintHeader& header) const {
    if (!IsForGrids()) return PrintLists(paper, header);
    const What what = ChosenWhat();
    return parts_.printGrids({{what != RightPane, what != LeftPane}}, header, paper);
}

void frmPrintOptions::PrintTextReport(const std::string& path) {
    const PerSide<PrintedList>& lists = ChosenLists();
    const PrintHeader header = ChosenHeader();
    std::span<const PrintedList> wanted = lists.values;
    if (ChosenWhat() == LeftPane) wanted = wanted.first(1);
    if (ChosenWhat() == RightPane) wanted = wanted.last(1);
    PrintListviewToFile(parts_.tools, wanted, path, header.hasDateTime ? header.now : std::string());
}

// False where the user gave no file, or the job failed and said so.
bool frmPrintOptions::PrintOnPaper(const std::string& printer) {
    std::optional<std::string> path;
    if (printer == kPrintToPdf) {
        path = parts_.tools.messages.AskForFile(
            {.title = "Print To File", .filter = "PDF Files (*.pdf)|*.pdf", .save = true, .startFolder = {}});
        if (!path) return false;
    }
    const Run run(*this);
    PrintProgress progress(parts_.tools.loop, this);
    const PrintJob job{[this, header = ChosenHeader()](Paper& paper) { return PrintOn(paper, header); },
                       [&progress](std::size_t page, std::size_t pages) { progress(page, pages); }};
    if (path) return PrintToPdf(parts_.tools.files, *path, ChosenOrientation(), job);
    return PrintOnPrinter(*parts_.printers.Open(printer, ChosenOrientation()), job);
}

void frmPrintOptions::cmdPrint_Click() {
    if (isAtWork_) return;
    if (chkPrintToFile->isChecked()) {
        const auto path = parts_.tools.messages.AskForFile(
            {.title = "Print To File", .filter = "All Files (*.*)|*.*", .save = true, .startFolder = {}});
        if (!path || RefuseEmpty()) return;
        const Run run(*this);
        PrintTextReport(*path);
    } else if (RefuseEmpty() || !PrintOnPaper(FromQString(cboPrinters->currentText()))) {
        return;
    }
    Tell("Print", "Printing is complete.");
    accept();
}

void frmPrintOptions::cmdPreview_Click() {
    if (isAtWork_ || RefuseEmpty()) return;
    const auto printer = parts_.printers.Open(FromQString(cboPrinters->currentText()), ChosenOrientation());
    frmPrintPreview preview(
        parts_.tools, *printer,
        [this, header = ChosenHeader()](Paper& paper) { return PrintOn(paper, header); }, this);
    // The window shows the pages that the button then prints.
    if (preview.exec() == QDialog::Accepted) cmdPrint_Click();
}

void ShowPrintOptions(const PrintParts& parts, QWidget* over) {
    if (parts.shown[Side::Left].IsEmpty() && parts.shown[Side::Right].IsEmpty()) {
        parts.tools.messages.Ask({.title = "Unable to Print",
                                  .text = "There are no items to print.",
                                  .icon = MessageIcon::Information,
                                  .defaultAnswer = {}});
        return;
    }
    frmPrintOptions(parts, over).ShowForm();
}

}  // namespace vantrel
