#include "views/forms/frm_save_results.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/forms/busy_pointer.h"
#include "platform/forms/named_control.h"
#include "platform/forms/window_size.h"

namespace vantrel {

namespace {

struct Format {
    const char* caption;
    const char* name;
    const char* filter;
};
constexpr Format kFormats[]{
    {"&Page for a browser (HTML)", "optFormat(0)", "HTML Pages (*.html)|*.html"},
    {"&Table for a spreadsheet (CSV)", "optFormat(1)", "CSV Files (*.csv)|*.csv"},
    {"&Lines for programs (JSON)", "optFormat(2)", "JSON Lines (*.jsonl)|*.jsonl"},
};

}  // namespace

frmSaveResults::frmSaveResults(Parts parts, QWidget* parent)
    : QDialog(parent),
      chkDisplayedOnly(MakeNamed<QCheckBox>("Only what the panes &display", "chkDisplayedOnly")),
      cmdSave(MakeNamed<QPushButton>("&Save...", "cmdSave")),
      CancelButton(MakeNamed<QPushButton>("Cancel", "CancelButton")),
      cmdHelp(MakeNamed<QPushButton>("&Help", "cmdHelp")),
      parts_(std::move(parts)) {
    setObjectName(QStringLiteral("frmSaveResults"));
    setWindowTitle(QStringLiteral("Save Results As"));
    for (std::size_t i = 0; i < optFormat.size(); ++i)
        optFormat[i] = MakeNamed<QRadioButton>(kFormats[i].caption, kFormats[i].name);
    optFormat[0]->setChecked(true);
    chkDisplayedOnly->setChecked(true);
    for (QPushButton* button : {CancelButton, cmdHelp}) button->setAutoDefault(false);
    LayOut();
    cmdSave->setDefault(true);
    connect(cmdSave, &QPushButton::clicked, this, [this] {
        parts_.tools.reporter.GuardRun("frmSaveResults.cmdSave_Click", [this] { cmdSave_Click(); });
    });
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this,
            [this] { parts_.tools.reporter.GuardRun("frmSaveResults.cmdHelp_Click", parts_.showHelp); });
}

void frmSaveResults::LayOut() {
    auto* format = MakeNamed<QGroupBox>("Format", "fraFormat");
    auto* formats = new QVBoxLayout(format);
    for (QRadioButton* option : optFormat) formats->addWidget(option);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdSave, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    buttons->addButton(cmdHelp, QDialogButtonBox::HelpRole);
    auto* column = new QVBoxLayout(this);
    column->addWidget(format);
    column->addWidget(chkDisplayedOnly);
    column->addStretch();
    column->addWidget(buttons);
    ResizeWithinScreen(
        *this, {std::max(sizeHint().width(), fontMetrics().averageCharWidth() * 50), sizeHint().height()});
}

void frmSaveResults::Tell(const char* text) {
    parts_.tools.messages.Ask(
        {.title = "Save Results As", .text = text, .icon = MessageIcon::Information, .defaultAnswer = {}});
}

void frmSaveResults::cmdSave_Click() {
    if (!isEnabled()) return;  // at work
    const auto chosen = std::find_if(optFormat.begin(), optFormat.end(),
                                     [](const QRadioButton* option) { return option->isChecked(); });
    const auto number = static_cast<std::size_t>(chosen - optFormat.begin());
    const ResultsReport report = parts_.makeReport(chkDisplayedOnly->isChecked());
    if (std::all_of(report.parts.begin(), report.parts.end(),
                    [](const ReportPart& part) { return part.IsEmpty(); }))
        return Tell("The panes display nothing that could be saved.");
    const auto path = parts_.tools.messages.AskForFile(
        {.title = "Save Results As", .filter = kFormats[number].filter, .save = true, .startFolder = {}});
    if (!path) return;
    Error error;
    {
        const BusyPointer pointer;
        setEnabled(false);
        error = SaveResults(parts_.tools, report, static_cast<ResultsFormat>(number), *path);
        setEnabled(true);
    }
    ThrowIfFailed(std::move(error));
    Tell("The results have been saved.");
    accept();
}

}  // namespace vantrel
