#include "dupes/forms/frm_dupe_exclusions.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {

frmDupeExclusions::frmDupeExclusions(const Toolbox& tools, clsDupeSettings settings,
                                     std::function<void()> save, QWidget* parent)
    : QDialog(parent),
      lstFilesToExclude(new QListWidget(this)),
      txtFileName(new QLineEdit(this)),
      cmdAddFile(Named(new QPushButton(QStringLiteral("&Add File to List"), this), "cmdAddFile")),
      cmdRemoveFile(Named(new QPushButton(QStringLiteral("&Remove File from List"), this), "cmdRemoveFile")),
      cmdOK(Named(new QPushButton(QStringLiteral("OK"), this), "cmdOK")),
      cmdCancel(Named(new QPushButton(QStringLiteral("Cancel"), this), "cmdCancel")),
      tools_(tools),
      settings_(settings),
      save_(std::move(save)),
      patterns_(settings.ExcludeFiles()) {
    setObjectName(QStringLiteral("frmDupeExclusions"));
    setWindowTitle(QStringLiteral("Dupes - File Exclusions"));
    lstFilesToExclude->setObjectName(QStringLiteral("lstFilesToExclude"));
    lstFilesToExclude->setAccessibleName(QStringLiteral("Files to exclude"));
    txtFileName->setObjectName(QStringLiteral("txtFileName"));
    LayOut();
    Wire();
    for (const std::string& pattern : patterns_) ShowPattern(pattern);
    ResizeWithinScreen(*this, {560, 420});
    txtFileName->setFocus();
}

void frmDupeExclusions::LayOut() {
    auto* frame = new QGroupBox(QStringLiteral("Exclude all files having the following names"), this);
    auto* list = new QVBoxLayout(frame);
    list->addWidget(lstFilesToExclude);
    auto* name = new QHBoxLayout;
    name->addWidget(txtFileName, 1);
    auto* label = new QLabel(QStringLiteral("<== Enter new file name here"), this);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(txtFileName);
    name->addWidget(label);
    auto* changes = new QHBoxLayout;
    changes->addWidget(cmdAddFile);
    changes->addWidget(cmdRemoveFile);
    changes->addStretch(1);
    changes->addWidget(cmdOK);
    changes->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(frame, 1);
    column->addLayout(name);
    column->addLayout(changes);
    setTabOrder(lstFilesToExclude, txtFileName);
}

void frmDupeExclusions::Wire() {
    const auto on = [this](QPushButton* button, void (frmDupeExclusions::*click)()) {
        connect(button, &QPushButton::clicked, this, [this, button, click] {
            const std::string routine = FromQString(objectName() + QLatin1Char('.') + button->objectName());
            tools_.reporter.GuardRun(routine + "_Click", [&] { (this->*click)(); });
        });
    };
    on(cmdAddFile, &frmDupeExclusions::cmdAddFile_Click);
    on(cmdRemoveFile, &frmDupeExclusions::cmdRemoveFile_Click);
    on(cmdOK, &frmDupeExclusions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    cmdOK->setDefault(true);
    // While a name is typed Enter adds it.
    connect(txtFileName, &QLineEdit::textChanged, this, [this](const QString& text) {
        (text.trimmed().isEmpty() ? cmdOK : cmdAddFile)->setDefault(true);
    });
}

void frmDupeExclusions::ShowPattern(const std::string& pattern) {
    lstFilesToExclude->addItem(DisplayQString(pattern));
}

void frmDupeExclusions::cmdAddFile_Click() {
    const std::string name = FromQString(txtFileName->text().trimmed());
    if (name.empty()) {
        tools_.messages.Ask({.title = "Add File Name",
                             .text = "Please enter a file name before pressing the Add button.",
                             .icon = MessageIcon::Warning});
        return;
    }
    patterns_.push_back(name);
    ShowPattern(name);
    lstFilesToExclude->scrollToBottom();
    txtFileName->clear();
    txtFileName->setFocus();
}

void frmDupeExclusions::cmdRemoveFile_Click() {
    const QList<QListWidgetItem*> chosen = lstFilesToExclude->selectedItems();
    if (chosen.isEmpty()) {
        tools_.messages.Ask(
            {.title = "Remove File Name",
             .text = "Please select a file name from the list before pressing the Remove button.",
             .icon = MessageIcon::Warning});
        return;
    }
    const int row = lstFilesToExclude->row(chosen.front());
    patterns_.erase(patterns_.begin() + row);
    delete lstFilesToExclude->takeItem(row);
}

void frmDupeExclusions::cmdOK_Click() {
    settings_.SetExcludeFiles(patterns_);
    save_();
    accept();
}

}  // namespace vantrel
