#include "sync/forms/frm_file_sync.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIcon>
#include <QMimeDatabase>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/forms/busy_pointer.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "platform/names/paths.h"

namespace vantrel {

namespace {

// The icon of this kind of file. Its name tells the kind: the file is not opened for it.
QIcon IconOfFile(const std::string& path, const QWidget& widget) {
    const QString name = DisplayQString(std::string(GetLastItemInPath(path)));
    const QMimeType type = QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    const QIcon plain = widget.style()->standardIcon(QStyle::SP_FileIcon);
    return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName(), plain));
}

}  // namespace

frmFileSync::frmFileSync(const Toolbox& tools, ShellWrappers& shell, const PerSide<std::string>& paths,
                         QWidget* parent)
    : QDialog(parent),
      optFileTwoSameAsFileOne(new QRadioButton(QStringLiteral("Replace File 2 with File 1"))),
      optFileOneSameAsFileTwo(new QRadioButton(QStringLiteral("Replace File 1 with File 2"))),
      OKButton(new QPushButton(QStringLiteral("OK"))),
      CancelButton(new QPushButton(QStringLiteral("Cancel"))),
      tools_(tools),
      sync_(tools, shell, paths) {
    setObjectName(QStringLiteral("frmFileSync"));
    setWindowTitle(QStringLiteral("File Synchronization Method"));
    optFileTwoSameAsFileOne->setObjectName(QStringLiteral("optFileTwoSameAsFileOne"));
    optFileOneSameAsFileTwo->setObjectName(QStringLiteral("optFileOneSameAsFileTwo"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    constexpr PerSide<const char*> kLabels{{"lblFileOne", "lblFileTwo"}};
    constexpr PerSide<const char*> kIcons{{"pctFileOneSmallIcon", "pctFileTwoSmallIcon"}};
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    for (const Side side : kBothSides) {
        lblFile[side] = new PathLabel(paths[side]);
        lblFile[side]->setObjectName(QLatin1String(kLabels[side]));
        pctFileSmallIcon[side] = new QLabel;
        pctFileSmallIcon[side]->setObjectName(QLatin1String(kIcons[side]));
        pctFileSmallIcon[side]->setPixmap(
            IconOfFile(paths[side], *this).pixmap(QSize(size, size), devicePixelRatioF()));
    }
    optFileTwoSameAsFileOne->setChecked(true);
    LayOut();
    connect(OKButton, &QPushButton::clicked, this,
            [this] { tools_.reporter.GuardRun("frmFileSync.OKButton_Click", [this] { OKButton_Click(); }); });
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void frmFileSync::LayOut() {
    auto* message = new QLabel(
        QStringLiteral("Please specify the synchronization method to use.  Press OK to continue."));
    message->setObjectName(QStringLiteral("lblConfirmMsg"));
    message->setWordWrap(true);
    auto* files = new QGridLayout;
    constexpr PerSide<const char*> kLabels{{"File 1:", "File 2:"}};
    int row = 0;
    for (const Side side : kBothSides) {
        files->addWidget(new QLabel(QLatin1String(kLabels[side])), row, 0);
        files->addWidget(pctFileSmallIcon[side], row, 1);
        files->addWidget(lblFile[side], row++, 2);
    }
    files->setColumnStretch(2, 1);
    auto* methods = new QGroupBox(QStringLiteral("Sync Methods"));
    methods->setObjectName(QStringLiteral("frmFileSyncMethods"));
    auto* options = new QVBoxLayout(methods);
    options->addWidget(optFileTwoSameAsFileOne);
    options->addWidget(optFileOneSameAsFileTwo);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    buttons->addButton(CancelButton, QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(message);
    layout->addLayout(files);
    layout->addWidget(methods);
    layout->addStretch(1);
    layout->addWidget(buttons);
    // Enter alone starts nothing that cannot be taken back.
    CancelButton->setDefault(true);
    optFileTwoSameAsFileOne->setFocus();
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 80, sizeHint().height()});
}

std::optional<SyncedPair> frmFileSync::ShowForm() {
    synced_.reset();
    exec();
    return synced_;
}

void frmFileSync::OKButton_Click() {
    if (running_) return;
    {
        const QScopedValueRollback<bool> running(running_, true);
        const BusyPointer pointer;
        synced_ = sync_.Replace(optFileOneSameAsFileTwo->isChecked() ? Side::Left : Side::Right);
    }
    if (synced_) accept();
}

// What works on the files has a window of its own to be cancelled in.
void frmFileSync::done(int result) {
    if (!running_) QDialog::done(result);
}

}  // namespace vantrel
