#include "shell/forms/qt_shell_questions.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "platform/forms/ordinary_pointer.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

QString TitleOf(ShellOperation operation) {
    switch (operation) {
        case ShellOperation::Copy:
            return QStringLiteral("Copy");
        case ShellOperation::Move:
            return QStringLiteral("Move");
        case ShellOperation::Rename:
            return QStringLiteral("Rename");
        case ShellOperation::Delete:
        case ShellOperation::Recycle:
            break;
    }
    return QStringLiteral("Delete");
}

}  // namespace

QWidget* QtShellQuestions::Owner() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return parent_ ? parent_.data() : QApplication::activeWindow();
}

OverwriteAnswer QtShellQuestions::AskOverwrite(const Overwrite& question) {
    const auto described = [&](std::uint64_t size, FileTime time) {
        return QStringLiteral("%1, %2").arg(ToQString(ConvertBytesToCorrectByteTypeString(
                                                Currency::FromWhole(static_cast<std::int64_t>(size)))),
                                            ToQString(locale_.DateTime(FileTimeToLocalFileTime(time))));
    };
    QMessageBox box(Owner());
    box.setObjectName(QStringLiteral("msgOverwrite"));
    box.setIcon(QMessageBox::Question);
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(QStringLiteral("Confirm File Replace"));
    box.setText(QStringLiteral("The file\n%1\nexists already. Do you wish to replace it?")
                    .arg(DisplayQString(question.target)));
    box.setInformativeText(QStringLiteral("There: %1\nNew: %2\n(from %3)")
                               .arg(described(question.targetSize, question.targetTime),
                                    described(question.sourceSize, question.sourceTime),
                                    DisplayQString(question.source)));
    const QPushButton* yes = box.addButton(QMessageBox::Yes);
    const QPushButton* all = box.addButton(QMessageBox::YesToAll);
    const QPushButton* no = box.addButton(QMessageBox::No);
    const QPushButton* none = box.addButton(QMessageBox::NoToAll);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(QMessageBox::No);
    const OrdinaryPointer pointer;
    box.exec();
    if (box.clickedButton() == yes) return OverwriteAnswer::Yes;
    if (box.clickedButton() == all) return OverwriteAnswer::YesToAll;
    if (box.clickedButton() == none) return OverwriteAnswer::NoToAll;
    return box.clickedButton() == no ? OverwriteAnswer::No : OverwriteAnswer::Cancel;
}

ErrorAnswer QtShellQuestions::AskAboutError(const Trouble& trouble) {
    QMessageBox box(Owner());
    box.setObjectName(QStringLiteral("msgShellError"));
    box.setIcon(QMessageBox::Critical);
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(QStringLiteral("Error: %1").arg(TitleOf(trouble.operation)));
    box.setText(DisplayQString(trouble.path));
    box.setInformativeText(MessageQString(trouble.error.Description()));
    QPushButton* retry = box.addButton(QMessageBox::Retry);
    const QPushButton* skip = box.addButton(QStringLiteral("&Skip"), QMessageBox::AcceptRole);
    const QPushButton* all = box.addButton(QStringLiteral("Skip &All"), QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(retry);
    const OrdinaryPointer pointer;
    box.exec();
    if (box.clickedButton() == retry) return ErrorAnswer::Retry;
    if (box.clickedButton() == all) return ErrorAnswer::SkipAll;
    return box.clickedButton() == skip ? ErrorAnswer::Skip : ErrorAnswer::Cancel;
}

}  // namespace vantrel
