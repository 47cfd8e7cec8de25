#include "platform/forms/qt_ports.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <ctime>
#include <utility>

#include "platform/forms/ordinary_pointer.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr std::pair<MessageAnswer, QMessageBox::StandardButton> kAnswers[] = {
    {MessageAnswer::Ok, QMessageBox::Ok},       {MessageAnswer::Cancel, QMessageBox::Cancel},
    {MessageAnswer::Retry, QMessageBox::Retry}, {MessageAnswer::Yes, QMessageBox::Yes},
    {MessageAnswer::No, QMessageBox::No},
};

QMessageBox::StandardButton ButtonOf(MessageAnswer answer) {
    for (const auto& [candidate, button] : kAnswers)
        if (candidate == answer) return button;
    return QMessageBox::NoButton;
}

QMessageBox::StandardButtons ButtonsOf(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::Ok:
            return QMessageBox::Ok;
        case MessageButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case MessageButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case MessageButtons::RetryCancel:
            return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

MessageAnswer FirstButton(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::YesNo:
        case MessageButtons::YesNoCancel:
            return MessageAnswer::Yes;
        case MessageButtons::RetryCancel:
            return MessageAnswer::Retry;
        case MessageButtons::Ok:
        case MessageButtons::OkCancel:
            break;
    }
    return MessageAnswer::Ok;
}

QMessageBox::Icon IconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::None:
            return QMessageBox::NoIcon;
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::Warning:
            return QMessageBox::Warning;
        case MessageIcon::Stop:
            return QMessageBox::Critical;
        case MessageIcon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

MessageAnswer AskWithDetails(QWidget* owner, const Message& message, const QString& details) {
    const OrdinaryPointer pointer;
    QMessageBox box(owner);
    box.setWindowTitle(ToQString(message.title));
    box.setTextFormat(Qt::PlainText);
    box.setText(WithLineBreaks(MessageQString(message.text)));
    box.setIcon(IconOf(message.icon));
    box.setStandardButtons(ButtonsOf(message.buttons));
    box.setDefaultButton(ButtonOf(message.defaultAnswer.value_or(FirstButton(message.buttons))));
    if (!details.isEmpty()) box.setDetailedText(details);
    const int pressed = box.exec();
    for (const auto& [answer, button] : kAnswers)
        if (pressed == button) return answer;
    return message.buttons == MessageButtons::YesNo ? MessageAnswer::No
           : message.buttons == MessageButtons::Ok  ? MessageAnswer::Ok
                                                    : MessageAnswer::Cancel;
}

// The nearest folder above a path that exists, so that a dialog opens close to where it was asked to.
QString NearestFolder(std::string_view path) {
    if (path.empty()) return QDir::currentPath();
    QFileInfo info(DialogPath(path));
    while (!info.isDir() && !info.isRoot() && info.path() != info.filePath()) info.setFile(info.path());
    return info.isDir() ? info.absoluteFilePath() : QDir::currentPath();
}

std::int64_t CoarseMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

}  // namespace

QStringList NameFilters(std::string_view filter) {
    const QStringList parts = ToQString(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i].trimmed();
        if (const auto bracket = description.lastIndexOf(QLatin1Char('(')); bracket > 0)
            description = description.left(bracket).trimmed();
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        // Names here need no dot.
        for (QString& pattern : patterns)
            if (pattern == QStringLiteral("*.*")) pattern = QStringLiteral("*");
        filters += description + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return filters;
}

QWidget* QtMessages::Owner() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : parent_.data();
}

MessageAnswer QtMessages::Ask(const Message& message) {
    return AskWithDetails(Owner(), message, {});
}

void QtMessages::ShowInformationMessage(const std::string& title, const std::string& text) {
    static_cast<void>(Ask({.title = title, .text = text, .icon = MessageIcon::Information}));
}

MessageAnswer QtMessages::Confirm(const Confirmation& confirmation) {
    if (showConfirmation) {
        const OrdinaryPointer pointer;
        return showConfirmation(confirmation);
    }
    QStringList names;
    for (const std::string& name : confirmation.names) names += DisplayQString(name);
    return AskWithDetails(Owner(),
                          {.title = confirmation.title,
                           .text = confirmation.question,
                           .icon = MessageIcon::Question,
                           .buttons = MessageButtons::YesNo},
                          names.join(QLatin1Char('\n')));
}

std::optional<std::string> QtMessages::AskForText(const std::string& title, const std::string& prompt,
                                                  const std::string& proposal) {
    const OrdinaryPointer pointer;
    QInputDialog dialog(Owner());
    dialog.setWindowTitle(ToQString(title));
    dialog.setLabelText(MessageQString(prompt));
    dialog.setTextValue(ToQString(proposal));
    // A prompt may quote a name that looks like markup.
    for (QLabel* label : dialog.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return FromQString(dialog.textValue());
}

std::optional<std::string> QtMessages::AskForFile(const FileDialog& asked) {
    const OrdinaryPointer pointer;
    const QStringList filters = NameFilters(asked.filter);
    QFileDialog dialog(Owner(), ToQString(asked.title), NearestFolder(asked.startFolder));
    dialog.setAcceptMode(asked.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(asked.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    const qsizetype suffix = filters.isEmpty() ? -1 : filters.first().lastIndexOf(QStringLiteral("(*."));
    if (asked.save && suffix >= 0) dialog.setDefaultSuffix(filters.first().mid(suffix + 3).chopped(1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FromDialogPath(dialog.selectedFiles().constFirst());
}

std::optional<std::string> QtMessages::PickDirectory(const std::string& title, const std::string& prompt,
                                                     const std::string& startFolder) {
    const OrdinaryPointer pointer;
    QFileDialog dialog(Owner(), ToQString(title), NearestFolder(startFolder));
    // The desktop's own dialog has no place for the prompt.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setFileMode(QFileDialog::Directory);
    auto* label = new QLabel(MessageQString(prompt), &dialog);
    label->setObjectName(QStringLiteral("lblPrompt"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMargin(9);
    // The place of a menu bar is the only one above the dialog's own grid.
    dialog.layout()->setMenuBar(label);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FromDialogPath(QDir::cleanPath(dialog.selectedFiles().constFirst()));
}

void QtEventLoop::Yield() {
    constexpr std::int64_t kPace = 15;
    if (CoarseMilliseconds() - lastTurn_ < kPace) return;
    YieldNow();
}

void QtEventLoop::YieldNow() {
    QCoreApplication::processEvents();
    lastTurn_ = CoarseMilliseconds();  // after the events: however long they took, the job gets its turn
}

}  // namespace vantrel
