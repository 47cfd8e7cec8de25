#include "fileops/forms/frm_properties.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeDatabase>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "fileops/tree_size.h"
#include "platform/forms/qt_text.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

QString TypeText(const ObjectProperties& properties) {
    if (properties.isLink) return QStringLiteral("Link to %1").arg(DisplayQString(properties.leadsTo));
    if (properties.kind == EntryKind::Folder) return QStringLiteral("Folder");
    if (properties.kind == EntryKind::Other) return QStringLiteral("Special file");
    return QMimeDatabase()
        .mimeTypeForFile(ToQString(properties.name), QMimeDatabase::MatchExtension)
        .comment();
}

QLabel* Value(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

// Label columns of equal width, as of one form.
void AlignLabels(const QList<QFormLayout*>& forms) {
    QWidgetList labels;
    int width = 0;
    for (const QFormLayout* form : forms)
        for (int row = 0; row < form->rowCount(); ++row)
            if (const QLayoutItem* item = form->itemAt(row, QFormLayout::LabelRole)) {
                labels.append(item->widget());
                width = std::max(width, item->widget()->sizeHint().width());
            }
    for (QWidget* label : labels) label->setMinimumWidth(width);
}

}  // namespace

frmProperties::frmProperties(const Toolbox& tools, QWidget* parent)
    : QDialog(parent),
      txtName(new QLineEdit),
      lblType(Value({})),
      lblLocation(Value({})),
      lblSize(Value({})),
      tools_(tools),
      times_(new QFormLayout) {
    setObjectName(QStringLiteral("frmProperties"));
    txtName->setObjectName(QStringLiteral("txtName"));
    lblSize->setObjectName(QStringLiteral("lblSize"));
    txtName->setReadOnly(true);
    lblSize->setMinimumWidth(fontMetrics().averageCharWidth() * 48);
    LayOut();
}

void frmProperties::LayOut() {
    auto* top = new QVBoxLayout(this);
    auto* general = new QFormLayout;
    general->addRow(QStringLiteral("Name:"), txtName);
    general->addRow(QStringLiteral("Type:"), lblType);
    general->addRow(QStringLiteral("Location:"), lblLocation);
    general->addRow(QStringLiteral("Size:"), lblSize);
    top->addLayout(general);
    top->addLayout(times_);

    auto* group = new QGroupBox(QStringLiteral("Permissions"));
    auto* grid = new QGridLayout(group);
    const std::array<QString, 3> who{QStringLiteral("Owner"), QStringLiteral("Group"),
                                     QStringLiteral("Others")};
    const std::array<QString, 3> what{QStringLiteral("Read"), QStringLiteral("Write"),
                                      QStringLiteral("Execute")};
    for (int row = 0; row < 3; ++row) {
        grid->addWidget(new QLabel(who[static_cast<std::size_t>(row)]), row, 0);
        for (int column = 0; column < 3; ++column) {
            auto* box = new QCheckBox(what[static_cast<std::size_t>(column)]);
            box->setAccessibleName(who[static_cast<std::size_t>(row)] + QLatin1Char(' ') + box->text());
            chkPermissions[static_cast<std::size_t>(row) * 3 + static_cast<std::size_t>(column)] = box;
            grid->addWidget(box, row, column + 1);
            connect(box, &QCheckBox::clicked, this,
                    [this] { cmdApply->setEnabled(ModeShown() != (properties_.mode & 0777)); });
        }
    }
    top->addWidget(group);
    top->addStretch();
    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    cmdOK = buttons->button(QDialogButtonBox::Ok);
    cmdCancel = buttons->button(QDialogButtonBox::Cancel);
    cmdApply = buttons->button(QDialogButtonBox::Apply);
    top->addWidget(buttons);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        if (Apply()) accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdApply, &QPushButton::clicked, this, &frmProperties::Apply);
}

void frmProperties::ShowForm(const std::string& path) {
    if (const Error error = ReadProperties(tools_, path, properties_); !error.IsOk()) {
        tools_.reporter.ReportError("modVantrel.ShowProperties", error);
        return;
    }
    Fill();
    stopCounting_ = false;
    QTimer::singleShot(0, this, &frmProperties::CountSize);
    exec();
}

void frmProperties::Fill() {
    setWindowTitle(QStringLiteral("%1 Properties").arg(DisplayQString(properties_.name)));
    txtName->setText(DisplayQString(properties_.name));
    txtName->setCursorPosition(0);
    cmdOK->setFocus();
    lblType->setText(TypeText(properties_));
    lblLocation->setText(DisplayQString(properties_.folder));
    lblSize->setText(QStringLiteral("Counting..."));
    while (times_->rowCount() > 0) times_->removeRow(0);
    if (!properties_.created.empty())
        times_->addRow(QStringLiteral("Created:"), Value(ToQString(properties_.created)));
    times_->addRow(QStringLiteral("Modified:"), Value(ToQString(properties_.modified)));
    times_->addRow(QStringLiteral("Accessed:"), Value(ToQString(properties_.accessed)));
    times_->addRow(QStringLiteral("Owner:"),
                   Value(DisplayQString(properties_.owner + " (" + properties_.group + ")")));
    AlignLabels(findChildren<QFormLayout*>());
    for (std::size_t i = 0; i < chkPermissions.size(); ++i) {
        chkPermissions[i]->setChecked((properties_.mode & (0400U >> i)) != 0);
        chkPermissions[i]->setEnabled(!properties_.isLink);
    }
    cmdApply->setEnabled(false);
}

// Runs in turns of the event loop: closing the page ends it.
void frmProperties::CountSize() {
    TreeSize size;
    const Error error = CountTreeSize(tools_, properties_.path, size, &stopCounting_);
    if (stopCounting_) return;
    QString text = QStringLiteral("%1 (%2 bytes)")
                       .arg(ToQString(ConvertBytesToCorrectByteTypeString(size.bytes)),
                            ToQString(tools_.locale.Number(size.bytes)));
    if (properties_.kind == EntryKind::Folder && !properties_.isLink)
        text += QStringLiteral("\n%1 file(s), %2 folder(s)").arg(size.files).arg(size.folders);
    if (!error.IsOk())
        text = QStringLiteral("At least %1\n%2").arg(text, MessageQString(error.Description()));
    lblSize->setText(text);
}

std::uint32_t frmProperties::ModeShown() const {
    std::uint32_t mode = 0;
    for (std::size_t i = 0; i < chkPermissions.size(); ++i) {
        if (chkPermissions[i]->isChecked()) mode |= 0400U >> i;
    }
    return mode;
}

bool frmProperties::Apply() {
    if (properties_.isLink || ModeShown() == (properties_.mode & 0777)) return true;
    if (const Error error = ApplyPermissions(tools_, properties_.path, ModeShown()); !error.IsOk()) {
        tools_.reporter.ReportError("modVantrel.ShowProperties", error);
        return false;
    }
    properties_.mode = (properties_.mode & ~0777U) | ModeShown();
    cmdApply->setEnabled(false);
    return true;
}

void frmProperties::done(int result) {
    stopCounting_ = true;
    QDialog::done(result);
}

void QtShellCalls::OpenWithChosenProgram(const std::string& path) {
    const auto program = tools_.messages.AskForFile({"Open With", "All Files (*)|*", false, "/usr/bin/"});
    if (!program) return;
    if (!QProcess::startDetached(DialogPath(*program), {DialogPath(path)}))
        tools_.reporter.ReportError("modVantrel.OpenFile",
                                    Error(ErrorNumber::FileNotFound, "Cannot start \"" + *program + "\""));
}

void QtShellCalls::ShowPropertyPage(const std::string& path) {
    QWidget* modal = QApplication::activeModalWidget();
    frmProperties(tools_, modal ? modal : QApplication::activeWindow()).ShowForm(path);
}

}  // namespace vantrel
