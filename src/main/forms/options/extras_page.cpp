#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr int kMostNumber = 9'999;  // that can be entered; a file may hold more

}  // namespace

ExtrasPage::ExtrasPage(const OptionsContext& context) : OptionPage(OptionTab::Extras, context) {
    for (const OptionLine& line : OptionTable()) {
        const OptionBox* box = FindBox(line.key);
        if (line.section != kExtrasSection || box == nullptr) continue;
        auto* lines = new QVBoxLayout;
        lines->setSpacing(2);
        if (line.kind == OptionKind::Boolean)
            AddCheck(*lines, line.key);
        else if (line.kind == OptionKind::Number)
            AddNumber(*lines, line, *box);
        else
            AddText(*lines, line, *box);
        QLabel* sentence = NewLabel("", ToQString(box->tip));
        sentence->setForegroundRole(QPalette::PlaceholderText);
        sentence->setIndent(fontMetrics().averageCharWidth() * 4);
        lines->addWidget(sentence);
        Column().addLayout(lines);
    }
    Column().addStretch(1);
}

void ExtrasPage::AddNumber(QBoxLayout& to, const OptionLine& line, const OptionBox& box) {
    const auto& field = std::get<NumberField>(line.field);
    auto* number = new QSpinBox;
    auto* label = new QLabel(ToQString(box.caption) + QLatin1Char(':'));
    label->setBuddy(number);
    Describe(*number, box);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(number);
    row->addStretch(1);
    to.addLayout(row);
    OnShow([this, number, field] {
        const std::int32_t value = Edited().*field.member;
        number->setRange(field.minimum, std::max(std::min(field.maximum, kMostNumber), value));
        number->setValue(value);
    });
    connect(number, &QSpinBox::valueChanged, this,
            [this, member = field.member](int value) { Edited().*member = value; });
}

void ExtrasPage::AddText(QBoxLayout& to, const OptionLine& line, const OptionBox& box) {
    const auto member = std::get<std::string Options::*>(line.field);
    auto* text = new QLineEdit;
    auto* label = new QLabel(ToQString(box.caption) + QLatin1Char(':'));
    label->setBuddy(text);
    Describe(*text, box);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(text, 1);
    to.addLayout(row);
    OnShow([this, text, member] { text->setText(ToQString(Edited().*member)); });
    connect(text, &QLineEdit::textEdited, this,
            [this, member](const QString& entered) { Edited().*member = FromQString(entered); });
}

}  // namespace vantrel
