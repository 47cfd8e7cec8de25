#include "main/forms/options/option_page.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <variant>

#include "platform/forms/qt_text.h"
#include "settings/option_changes.h"

namespace vantrel {

OptionPage::OptionPage(OptionTab tab, const OptionsContext& context)
    : tab_(tab), context_(context), column_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("picOptions(%1)").arg(static_cast<int>(tab) - 1));
    setProperty(kHelpProperty, ToQString(OptionTabs()[static_cast<std::size_t>(tab) - 1].help));
}

void OptionPage::ShowOptions() {
    for (const auto& show : shows_) show();
}

QWidget* OptionPage::FirstControl() {
    for (QWidget* next = nextInFocusChain(); next != this && isAncestorOf(next);
         next = next->nextInFocusChain())
        if (next->isEnabled() && next->isVisibleTo(this) && (next->focusPolicy() & Qt::TabFocus) != 0)
            return next;
    return this;
}

QVBoxLayout* OptionPage::AddFrame(QBoxLayout& to, const QString& title) {
    auto* frame = new QGroupBox(title);
    auto* column = new QVBoxLayout(frame);
    to.addWidget(frame);
    return column;
}

void OptionPage::Describe(QWidget& control, const OptionBox& box) {
    if (control.objectName().isEmpty()) control.setObjectName(ToQString(box.control));
    if (control.toolTip().isEmpty()) control.setToolTip(ToQString(box.tip));
    control.setAccessibleDescription(ToQString(box.tip));
    control.setProperty(kHelpProperty, ToQString(box.help));
}

QCheckBox* OptionPage::AddCheck(QBoxLayout& to, std::string_view key) {
    const OptionBox& box = BoxOf(key);
    const auto member = std::get<bool Options::*>(OptionOf(key).field);
    auto* check = new QCheckBox(ToQString(box.caption));
    Describe(*check, box);
    to.addWidget(check);
    connect(check, &QCheckBox::toggled, this, [this, member](bool on) { Edited().*member = on; });
    OnShow([this, member, check] { check->setChecked(Edited().*member); });
    return check;
}

std::vector<QRadioButton*> OptionPage::AddChoices(QBoxLayout& to, std::string_view key,
                                                  std::span<const Choice> choices) {
    const OptionBox& box = BoxOf(key);
    const auto* field = &std::get<WordField>(OptionOf(key).field);
    auto* group = new QButtonGroup(this);
    std::vector<QRadioButton*> buttons;
    for (const Choice& choice : choices) {
        auto* button = new QRadioButton(QString::fromLatin1(choice.caption));
        button->setObjectName(QStringLiteral("%1(%2)").arg(ToQString(box.control)).arg(buttons.size()));
        button->setToolTip(QString::fromLatin1(choice.tip));
        Describe(*button, box);
        group->addButton(button);
        to.addWidget(button);
        buttons.push_back(button);
        connect(button, &QRadioButton::clicked, this,
                [this, field, code = choice.code] { field->set(Edited(), code); });
        OnShow(
            [this, field, button, code = choice.code] { button->setChecked(field->get(Edited()) == code); });
    }
    return buttons;
}

// No button of a tab is the default one: Enter belongs to OK.
QPushButton* OptionPage::NewButton(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QLabel* OptionPage::NewLabel(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void OptionPage::Tell(const char* title, const std::string& text, MessageIcon icon) {
    context_.tools.messages.Ask({.title = title, .text = text, .icon = icon, .defaultAnswer = {}});
}

}  // namespace vantrel
