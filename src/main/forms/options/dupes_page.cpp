#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <string>

#include "dupes/forms/frm_dupe_exclusions.h"
#include "main/forms/options/option_pages.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

constexpr const char* kSystemFiles =
    "Unchecking this option can expose critical System files to possible deletion.\r\n\r\n"
    "Most System files SHOULD NOT BE DELETED.\r\n";
constexpr const char* kHiddenFiles =
    "Unchecking this option can expose critical Hidden files to possible deletion.\r\n\r\n"
    "Most Hidden files SHOULD NOT BE DELETED.\r\n";
constexpr const char* kWindowsFiles =
    "Unchecking this option can expose critical Windows files to possible deletion.\r\n\r\n"
    "Most duplicate files found within the Windows folder tree SHOULD NOT BE DELETED.\r\n";
constexpr const char* kDiscouraged =
    "Deleting these files may cause your computer to become unstable or unusable.\r\n\r\n"
    "You are strongly discouraged from unchecking this option.";

}  // namespace

DupesPage::DupesPage(const OptionsContext& context)
    : OptionPage(OptionTab::FindDupes, context), lblMoveFolder(new PathLabel) {
    auto* left = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    auto* row = new QHBoxLayout;
    row->addLayout(left);
    row->addLayout(right);
    Column().addLayout(row);
    Column().addStretch(1);

    QVBoxLayout* criteria = AddFrame(*left, QStringLiteral("Duplicate Criteria"));
    for (const char* key : {"NamesMustMatch", "SizesMustMatch", "CreateTimestampsMustMatch",
                            "LastModTimestampsMustMatch", "AttributesMustMatch", "ContentsMustMatch"})
        AddCheck(*criteria, key);
    QVBoxLayout* ignore = AddFrame(*left, QStringLiteral("Ignore Options"));
    AddCheck(*ignore, "IgnoreZeroByteFiles");
    AddIgnore(*ignore, "IgnoreSystemFiles", kSystemFiles);
    AddIgnore(*ignore, "IgnoreHiddenFiles", kHiddenFiles);
    AddIgnore(*ignore, "IgnoreFilesInWindowsDir", kWindowsFiles);

    static constexpr Choice kRemovals[] = {
        {static_cast<int>(RemovalMethod::Delete), "Delete Permanently",
         "The duplicates are deleted and cannot be had back."},
        {static_cast<int>(RemovalMethod::Recycle), "Send To Recycle Bin",
         "The duplicates can be had back from the desktop's trash."},
        {static_cast<int>(RemovalMethod::MoveToDupesFolder), "Move to DUPES Folder",
         "The duplicates can be had back by the finder itself."},
        {static_cast<int>(RemovalMethod::MoveToOtherFolder), "Move to Other Folder...",
         "The duplicates go to a folder that you choose."},
    };
    QVBoxLayout* removal = AddFrame(*right, QStringLiteral("Removal Methods"));
    connect(AddChoices(*removal, "RemovalMethod", kRemovals).back(), &QRadioButton::clicked, this,
            Guarded("optRemovalMethods_Click", [this] { ChooseOtherFolder(); }));
    lblMoveFolder->setObjectName(QStringLiteral("lblMoveFolder"));
    removal->addWidget(lblMoveFolder);
    OnShow([this] { ShowFolder(); });

    static constexpr Choice kHashes[] = {
        {static_cast<int>(HashMethod::Crc16), "CRC-16", "The shortest sum."},
        {static_cast<int>(HashMethod::Crc32), "CRC-32", "A longer sum."},
        {static_cast<int>(HashMethod::Md5), "MD5", "The longest sum."},
    };
    AddChoices(*AddFrame(*right, QStringLiteral("Hash Method for Content Search")), "HashMethod", kHashes);
    QPushButton* cmdFilesToExclude = NewButton("cmdFilesToExclude", QStringLiteral("&Files To Exclude..."));
    Describe(*cmdFilesToExclude, BoxOf("ExcludeFiles"));
    right->addWidget(cmdFilesToExclude, 0, Qt::AlignLeft);
    left->addStretch(1);
    right->addStretch(1);
    connect(cmdFilesToExclude, &QPushButton::clicked, this, Guarded("cmdFilesToExclude_Click", [this] {
                // Into the copy: OK of this window keeps it.
                frmDupeExclusions(
                    Context().tools, clsDupeSettings(Edited()), [] {}, window())
                    .exec();
            }));
}

void DupesPage::AddIgnore(QBoxLayout& to, std::string_view key, const char* warning) {
    QCheckBox* check = AddCheck(to, key);
    connect(check, &QCheckBox::clicked, this, [this, check, warning](bool on) {
        if (on) return;
        const std::string routine = "frmOptions." + FromQString(check->objectName()) + "_Click";
        Context().tools.reporter.GuardRun(routine, [&] {
            const MessageAnswer answer =
                Context().tools.messages.Ask({.title = "Warning!",
                                              .text = std::string(warning) + kDiscouraged,
                                              .icon = MessageIcon::Warning,
                                              .buttons = MessageButtons::OkCancel,
                                              .defaultAnswer = MessageAnswer::Cancel});
            if (answer != MessageAnswer::Ok) check->setChecked(true);
        });
    });
}

void DupesPage::ChooseOtherFolder() {
    const auto folder = Context().tools.messages.PickDirectory(
        "Browse for Folder", "Specify the folder where the file(s) will be moved to.",
        Edited().userDefinedMoveFolderPath);
    if (folder && !folder->empty()) {
        Edited().userDefinedMoveFolderPath = *folder;
        return ShowFolder();
    }
    Tell("Change Remove Method", "No folder was selected. Remove method will be set to Move To DUPES.");
    Edited().removalMethod = RemovalMethod::MoveToDupesFolder;
    ShowOptions();
}

void DupesPage::ShowFolder() {
    lblMoveFolder->SetPath(Edited().userDefinedMoveFolderPath);
}

}  // namespace vantrel
