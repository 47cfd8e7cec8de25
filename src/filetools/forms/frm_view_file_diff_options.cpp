#include "filetools/forms/frm_view_file_diff_options.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "filetools/forms/file_path_box.h"
#include "platform/forms/window_size.h"
#include "platform/names/paths.h"

namespace vantrel {

frmViewFileDiffOptions::frmViewFileDiffOptions(FileDiffsParts parts, PerSide<std::string> startFolders,
                                               QWidget* parent)
    : QDialog(parent),
      chkIgnoreWhiteSpace(new QCheckBox(QStringLiteral("Ignore &Whitespace"))),
      chkIgnoreCase(new QCheckBox(QStringLiteral("Ignore C&ase"))),
      chkShowOptionsDialog(new QCheckBox(QStringLiteral("Show this dialog every time"))),
      cmdShowDiffs(new QPushButton(QStringLiteral("OK"))),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"))),
      cmdHelp(new QPushButton(QStringLiteral("&Help"))),
      parts_(std::move(parts)),
      startFolders_(std::move(startFolders)) {
    setObjectName(QStringLiteral("frmViewFileDiffOptions"));
    setWindowTitle(QStringLiteral("View File Difference - Options"));
    chkIgnoreWhiteSpace->setObjectName(QStringLiteral("chkIgnoreWhiteSpace"));
    chkIgnoreCase->setObjectName(QStringLiteral("chkIgnoreCase"));
    chkShowOptionsDialog->setObjectName(QStringLiteral("chkShowOptionsDialog"));
    cmdShowDiffs->setObjectName(QStringLiteral("cmdShowDiffs"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
    constexpr PerSide<const char*> kBrowse{{"cmdBrowseFileOne", "cmdBrowseFileTwo"}};
    constexpr PerSide<const char*> kTips{{"Select File One", "Select File Two"}};
    for (const Side side : kBothSides) {
        txtFile[side] = new FilePathBox(side, parts_.tools.files, parts_.tools.loop,
                                        parts_.settings.autoCompleteFolderPath);
        cmdBrowse[side] = new QPushButton(QStringLiteral("..."));
        cmdBrowse[side]->setObjectName(QLatin1String(kBrowse[side]));
        cmdBrowse[side]->setToolTip(QLatin1String(kTips[side]));
        cmdBrowse[side]->setAccessibleName(QLatin1String(kTips[side]));
        cmdBrowse[side]->setAutoDefault(false);
        connect(cmdBrowse[side], &QPushButton::clicked, this, [this, side] {
            parts_.tools.reporter.GuardRun("frmViewFileDiffOptions.cmdBrowse_Click", [&] { Browse(side); });
        });
    }
    cmdHelp->setAutoDefault(false);
    LayOut();
    cmdShowDiffs->setDefault(true);
    connect(cmdShowDiffs, &QPushButton::clicked, this, [this] {
        parts_.tools.reporter.GuardRun("frmViewFileDiffOptions.cmdShowDiffs_Click",
                                       [this] { cmdShowDiffs_Click(); });
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [this] {
        parts_.tools.reporter.GuardRun("frmViewFileDiffOptions.cmdHelp_Click", parts_.showHelp);
    });
}

void frmViewFileDiffOptions::LayOut() {
    auto* grid = new QGridLayout(this);
    constexpr PerSide<const char*> kLabels{{"&Compare:", "&To:"}};
    int row = 0;
    for (const Side side : kBothSides) {
        auto* label = new QLabel(QLatin1String(kLabels[side]));
        label->setBuddy(txtFile[side]);
        cmdBrowse[side]->setFixedWidth(cmdBrowse[side]->sizeHint().height() + 8);
        grid->addWidget(label, row, 0);
        grid->addWidget(txtFile[side], row, 1);
        grid->addWidget(cmdBrowse[side], row++, 2);
    }
    for (QCheckBox* box : {chkIgnoreWhiteSpace, chkIgnoreCase, chkShowOptionsDialog})
        grid->addWidget(box, row++, 1);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdShowDiffs, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    buttons->addButton(cmdHelp, QDialogButtonBox::HelpRole);
    grid->setRowStretch(row++, 1);
    grid->addWidget(buttons, row, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    QWidget* before = nullptr;
    for (QWidget* widget : std::initializer_list<QWidget*>{
             txtFile[Side::Left], cmdBrowse[Side::Left], txtFile[Side::Right], cmdBrowse[Side::Right],
             chkIgnoreWhiteSpace, chkIgnoreCase, chkShowOptionsDialog, cmdShowDiffs, cmdCancel, cmdHelp}) {
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 90, sizeHint().height()});
}

bool frmViewFileDiffOptions::ShowForm() {
    txtFile[Side::Left]->SetPath(parts_.options.FileOne);
    txtFile[Side::Right]->SetPath(parts_.options.FileTwo);
    chkIgnoreWhiteSpace->setChecked(parts_.options.IgnoreWhitespace());
    chkIgnoreCase->setChecked(parts_.options.IgnoreCase());
    chkShowOptionsDialog->setChecked(parts_.options.ShowOptionsDialog());
    return exec() == Accepted;
}

void frmViewFileDiffOptions::Browse(Side side) {
    FileDialog dialog;
    dialog.title = side == Side::Left ? "Select File One" : "Select File Two";
    dialog.filter = "All Files (*.*)|*.*";
    const std::string path = txtFile[side]->Path();
    const std::string folder = path.empty() ? std::string() : GetParentFolderName(path);
    dialog.startFolder =
        !folder.empty() && parts_.tools.files.FolderExists(folder) ? folder : startFolders_[side];
    if (const auto chosen = parts_.tools.messages.AskForFile(dialog)) txtFile[side]->SetPath(*chosen);
}

bool frmViewFileDiffOptions::IsThere(const std::string& path, const char* unspecified, const char* missing) {
    std::string text;
    if (path.empty())
        text = unspecified;
    else if (!parts_.tools.files.FileExists(path))
        text = "\"" + path + "\"" + missing;
    if (text.empty()) return true;
    parts_.tools.messages.Ask(
        {.title = "File Not Found", .text = text, .icon = MessageIcon::Warning, .defaultAnswer = {}});
    return false;
}

void frmViewFileDiffOptions::cmdShowDiffs_Click() {
    const PerSide<std::string> paths{{txtFile[Side::Left]->Path(), txtFile[Side::Right]->Path()}};
    if (!IsThere(paths[Side::Left], "File 1 not specified.", " is not an existing file.") ||
        !IsThere(paths[Side::Right], "File 2 not specified.", "  is not an existing file."))
        return;
    parts_.options.FileOne = paths[Side::Left];
    parts_.options.FileTwo = paths[Side::Right];
    parts_.options.SetIgnoreWhitespace(chkIgnoreWhiteSpace->isChecked());
    parts_.options.SetIgnoreCase(chkIgnoreCase->isChecked());
    parts_.options.SetShowOptionsDialog(chkShowOptionsDialog->isChecked());
    accept();
}

void ShowFileDifferences(const FileDiffsParts& parts, const PerSide<std::string>& startFolders,
                         QWidget* parent) {
    if (parts.options.ShowOptionsDialog() && !frmViewFileDiffOptions(parts, startFolders, parent).ShowForm())
        return;
    frmFileDiffs(parts, parent).ShowForm();
}

}  // namespace vantrel
