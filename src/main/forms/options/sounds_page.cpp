#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "diagnostics/csound_settings.h"
#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "settings/option_changes.h"

namespace vantrel {
namespace {

constexpr std::array kEvents{"StartSound", "ExitSound", "ComparisonCompleteSound", "SyncCompleteSound"};

std::string& SoundOf(Options& options, int row) {
    const auto member =
        std::get<std::string Options::*>(OptionOf(kEvents[static_cast<std::size_t>(row)]).field);
    return options.*member;
}

}  // namespace

SoundsPage::SoundsPage(const OptionsContext& context)
    : OptionPage(OptionTab::Sounds, context),
      chkSoundsOn(AddCheck(Column(), "SoundOn")),
      lvwEvents(new QTreeWidget),
      txtWaveFileSpec(new QLineEdit) {
    Describe(*lvwEvents, BoxOf(kEvents[0]));
    lvwEvents->setToolTip({});  // each row has its own
    lvwEvents->setAccessibleName(QStringLiteral("Events and their sounds"));
    lvwEvents->setHeaderLabels({QStringLiteral("Event"), QStringLiteral("Sound")});
    lvwEvents->setRootIsDecorated(false);
    lvwEvents->setUniformRowHeights(true);
    lvwEvents->setTextElideMode(Qt::ElideMiddle);
    for (const char* key : kEvents) {
        auto* item = new QTreeWidgetItem(lvwEvents, {ToQString(BoxOf(key).caption)});
        item->setToolTip(0, ToQString(BoxOf(key).tip));
    }
    lvwEvents->setColumnWidth(0, fontMetrics().averageCharWidth() * 34);
    Column().addWidget(lvwEvents, 1);

    txtWaveFileSpec->setObjectName(QStringLiteral("txtWaveFileSpec"));
    txtWaveFileSpec->setToolTip(QStringLiteral("The wave file of the selected event, or (none)."));
    auto* label = new QLabel(QStringLiteral("&Wave File:"));
    label->setBuddy(txtWaveFileSpec);
    auto* file = new QHBoxLayout;
    file->addWidget(label);
    file->addWidget(txtWaveFileSpec, 1);
    Column().addLayout(file);

    QPushButton* cmdBrowseForWave = NewButton("cmdBrowseForWave", QStringLiteral("&Browse..."));
    QPushButton* cmdNoWaveFile = NewButton("cmdNoWaveFile", QStringLiteral("&No Sound"));
    QPushButton* cmdPlay = NewButton("cmdPlay", QStringLiteral("&Play"));
    cmdBrowseForWave->setToolTip(QStringLiteral("Chooses the wave file of the selected event."));
    cmdNoWaveFile->setToolTip(QStringLiteral("The selected event has no sound."));
    cmdPlay->setToolTip(QStringLiteral("Plays the sound of the selected event."));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdBrowseForWave, cmdNoWaveFile, cmdPlay}) buttons->addWidget(button);
    buttons->addStretch(1);
    Column().addLayout(buttons);

    connect(chkSoundsOn, &QCheckBox::clicked, this,
            Guarded("chkSoundsOn_Click", [this] { chkSoundsOn_Click(); }));
    connect(lvwEvents, &QTreeWidget::currentItemChanged, this,
            [this] { txtWaveFileSpec->setText(ToQString(SoundOfRow())); });
    connect(txtWaveFileSpec, &QLineEdit::textEdited, this,
            [this](const QString& text) { SetSound(PathFromUser(FromQString(text.trimmed()))); });
    connect(cmdBrowseForWave, &QPushButton::clicked, this,
            Guarded("cmdBrowseForWave_Click", [this] { cmdBrowseForWave_Click(); }));
    connect(cmdNoWaveFile, &QPushButton::clicked, this, Guarded("cmdNoWaveFile_Click", [this] {
                SetSound(CSoundSettings::kNone);
                txtWaveFileSpec->setText(ToQString(SoundOfRow()));
            }));
    connect(cmdPlay, &QPushButton::clicked, this, Guarded("cmdPlay_Click", [this] { cmdPlay_Click(); }));
    lvwEvents->setCurrentItem(lvwEvents->topLevelItem(0));
    OnShow([this] {
        for (int row = 0; row < lvwEvents->topLevelItemCount(); ++row) ShowRow(row);
        txtWaveFileSpec->setText(ToQString(SoundOfRow()));
    });
}

QWidget* SoundsPage::FirstControl() {
    return lvwEvents;
}

// A list without a current row has the first one for it.
std::string& SoundsPage::SoundOfRow() {
    return SoundOf(Edited(), std::max(0, lvwEvents->currentIndex().row()));
}

void SoundsPage::SetSound(const std::string& file) {
    SoundOfRow() = file.empty() ? CSoundSettings::kNone : file;
    ShowRow(std::max(0, lvwEvents->currentIndex().row()));
}

void SoundsPage::ShowRow(int row) {
    const std::string& sound = SoundOf(Edited(), row);
    QTreeWidgetItem* item = lvwEvents->topLevelItem(row);
    item->setText(1, DisplayQString(sound));
    const bool isGone = sound != CSoundSettings::kNone && !Context().tools.files.FileExists(sound);
    item->setToolTip(1, isGone ? QStringLiteral("This file was not found; nothing is played.")
                               : QStringLiteral("<p>") + DisplayQString(sound).toHtmlEscaped());
    QFont font = lvwEvents->font();
    font.setStrikeOut(isGone);
    item->setFont(1, font);
}

void SoundsPage::chkSoundsOn_Click() {
    if (!chkSoundsOn->isChecked() || Context().sounds.DoesThisPCSupportWave()) return;
    Tell("No Wave File Support", "This PC does not support the playing of wave files");
    chkSoundsOn->setChecked(false);
}

void SoundsPage::cmdBrowseForWave_Click() {
    const std::string& sound = SoundOfRow();
    FileDialog dialog;
    dialog.title = "Select Wave File";
    dialog.filter = "Wave Sound Files (*.wav)|*.wav";
    if (sound != CSoundSettings::kNone) dialog.startFolder = GetParentFolderName(sound);
    if (const auto file = Context().tools.messages.AskForFile(dialog)) {
        SetSound(*file);
        txtWaveFileSpec->setText(ToQString(*file));
    }
}

void SoundsPage::cmdPlay_Click() {
    const std::string file = PathFromUser(FromQString(txtWaveFileSpec->text().trimmed()));
    if (file.empty() || file == CSoundSettings::kNone)
        return Tell("Unable to Play Wave File Sound", "Please select a valid Wave file.");
    bool played = false;
    Context().sounds.PlayWave(file, true, played);
    if (!played) Tell("Play Wave File", "Unable to play the specified .wav file.");
}

}  // namespace vantrel
