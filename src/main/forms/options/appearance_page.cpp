#include <QFontDatabase>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

// A larger size would be another one after the next start.
constexpr double kLargestFont = 50;

}  // namespace

AppearancePage::AppearancePage(const OptionsContext& context)
    : OptionPage(OptionTab::Appearance, context),
      lblCurrentFont(NewLabel("lblCurrentFont")),
      lblFontMissing(
          NewLabel("lblFontMissing",
                   QStringLiteral("This font is not on this computer: another one takes its place."))) {
    QPushButton* cmdChangeFont = NewButton("cmdChangeFont", QStringLiteral("&Change Font..."));
    Describe(*cmdChangeFont, BoxOf("FontName"));
    QVBoxLayout* font = AddFrame(Column(), QStringLiteral("Font"));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdChangeFont);
    row->addWidget(lblCurrentFont, 1);
    font->addLayout(row);
    font->addWidget(lblFontMissing);
    connect(cmdChangeFont, &QPushButton::clicked, this,
            Guarded("cmdChangeFont_Click", [this] { cmdChangeFont_Click(); }));
    OnShow([this] { ShowFont(); });

    static constexpr Choice kStyles[] = {
        {static_cast<int>(CoolbarStyle::Toolbar), "Use Smaller Icons and Standard style Toolbar",
         "The strip below the menus has small buttons."},
        {static_cast<int>(CoolbarStyle::Coolbar), "Use Larger Icons and Coolbar style Toolbar",
         "The strip below the menus has large buttons with captions."},
        {static_cast<int>(CoolbarStyle::Hidden), "Hide Toolbar", "There is no strip below the menus."},
    };
    AddChoices(*AddFrame(Column(), QStringLiteral("Toolbar")), "CoolbarStyle", kStyles);
    Column().addStretch(1);
}

void AppearancePage::ShowFont() {
    const QString name = ToQString(Edited().fontName);
    lblCurrentFont->setText(
        QStringLiteral("Current Font: %1 %2").arg(name, QString::number(Edited().fontSize)));
    lblFontMissing->setVisible(!name.isEmpty() && !QFontDatabase::hasFamily(name));
}

void AppearancePage::cmdChangeFont_Click() {
    QFont font = this->font();
    font.setFamily(ToQString(Edited().fontName));
    if (Edited().fontSize > 0) font.setPointSizeF(Edited().fontSize);
    QFontDialog dialog(font, window());
    dialog.setObjectName(QStringLiteral("FontDialog"));
    if (dialog.exec() != QDialog::Accepted) return;
    const QFont chosen = dialog.selectedFont();
    Edited().fontName = FromQString(chosen.family());
    if (chosen.pointSizeF() > 0) Edited().fontSize = std::min(chosen.pointSizeF(), kLargestFont);
    ShowFont();
}

}  // namespace vantrel
