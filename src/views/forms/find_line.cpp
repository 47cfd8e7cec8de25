#include "views/forms/find_line.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

#include "platform/forms/icons.h"

namespace vantrel {

FindLine::FindLine(QWidget* parent) : QWidget(parent), txtFind(new QLineEdit), lblFound(new QLabel) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(4);
    auto* label = new QLabel(QStringLiteral("Find:"));
    txtFind->setObjectName(QStringLiteral("txtFind"));
    txtFind->setAccessibleName(QStringLiteral("Find a Name"));
    txtFind->setPlaceholderText(QStringLiteral("Part of a name, or a pattern as *.txt"));
    txtFind->setClearButtonEnabled(true);
    txtFind->installEventFilter(this);
    connect(txtFind, &QLineEdit::textChanged, this, [this] { Q_EMIT Wanted(Step::Here); });
    cmdFindPrevious = MakeButton("cmdFindPrevious", "find-previous", "Previous (Shift+F3)");
    cmdFindNext = MakeButton("cmdFindNext", "find-next", "Next (F3)");
    cmdFindClose = MakeButton("cmdFindClose", "", "Close (Esc)");
    cmdFindClose->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton, nullptr, this));
    connect(cmdFindPrevious, &QToolButton::clicked, this, [this] { Q_EMIT Wanted(Step::Previous); });
    connect(cmdFindNext, &QToolButton::clicked, this, [this] { Q_EMIT Wanted(Step::Next); });
    connect(cmdFindClose, &QToolButton::clicked, this, &FindLine::Close);
    lblFound->setObjectName(QStringLiteral("lblFound"));
    lblFound->setTextFormat(Qt::PlainText);

    txtFind->setMaximumWidth(fontMetrics().averageCharWidth() * 50);
    line->addWidget(label);
    line->addWidget(txtFind, 2);
    for (QToolButton* button : {cmdFindPrevious, cmdFindNext}) line->addWidget(button);
    line->addWidget(lblFound, 1);
    line->addWidget(cmdFindClose);
    hide();
}

QToolButton* FindLine::MakeButton(const char* name, const char* icon, const char* tip) {
    auto* button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setIcon(CommandIcon(QLatin1String(icon)));
    button->setIconSize({16, 16});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(QLatin1String(tip));
    button->setAccessibleName(button->toolTip());
    return button;
}

void FindLine::Open() {
    show();
    txtFind->setFocus(Qt::ShortcutFocusReason);
    txtFind->selectAll();
    Q_EMIT Wanted(Step::Here);
}

QString FindLine::Text() const {
    return txtFind->text();
}

void FindLine::ShowAnswer(const QString& answer) {
    lblFound->setText(answer);
}

void FindLine::Close() {
    hide();
    Q_EMIT Closed();
}

// The keys of the line must not go on to a dialog, which would close by them, or to a command.
bool FindLine::TakeKey(const QEvent& event) {
    const auto& key = static_cast<const QKeyEvent&>(event);
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isEnter && key.key() != Qt::Key_Escape) return false;
    if (event.type() == QEvent::KeyPress) {
        if (!isEnter)
            Close();
        else
            Q_EMIT Wanted(key.modifiers().testFlag(Qt::ShiftModifier) ? Step::Previous : Step::Next);
    }
    return true;
}

bool FindLine::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (watched != txtFind || !isKey || !TakeKey(*event)) return QWidget::eventFilter(watched, event);
    event->accept();
    return true;
}

}  // namespace vantrel
