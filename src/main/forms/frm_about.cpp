#include "main/forms/frm_about.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>
#include <QtGlobal>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

QString SystemInformation(const std::string& appVersion, const ProgramFolders& folders) {
    QStringList lines{
        QStringLiteral("Vantrel: %1").arg(ToQString(appVersion)),
        QStringLiteral("Program folder: %1").arg(DisplayQString(folders.appPath)),
        QStringLiteral("Executable: %1")
            .arg(DisplayQString(folders.executableFolder + folders.executableName)),
        QStringLiteral("System: %1").arg(QSysInfo::prettyProductName()),
        QStringLiteral("Kernel: %1 %2").arg(QSysInfo::kernelType(), QSysInfo::kernelVersion()),
        QStringLiteral("Processor: %1").arg(QSysInfo::currentCpuArchitecture()),
        QStringLiteral("Language: %1").arg(QLocale::system().name()),
        QStringLiteral("Qt: %1 (%2)").arg(QLatin1String(qVersion()), QGuiApplication::platformName()),
    };
    for (const QScreen* screen : QGuiApplication::screens())
        lines << QStringLiteral("Screen: %1 x %2 at %3 %")
                     .arg(screen->size().width())
                     .arg(screen->size().height())
                     .arg(qRound(screen->devicePixelRatio() * 100));
    return lines.join(QLatin1Char('\n'));
}

frmAbout::frmAbout(const std::string& appVersion, const ProgramFolders& folders, QWidget* parent)
    : QDialog(parent), information_(SystemInformation(appVersion, folders)) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Vantrel"));

    auto* picture = new QLabel(this);
    picture->setPixmap(ProgramIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
    lblTitle = new QLabel(QStringLiteral("Vantrel"), this);
    QFont large = lblTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    large.setBold(true);
    lblTitle->setFont(large);
    lblVersion = new QLabel(QStringLiteral("Version %1").arg(ToQString(appVersion)), this);
    auto* purpose =
        new QLabel(QStringLiteral("Compares two folders side by side and brings them into line."), this);
    purpose->setWordWrap(true);

    cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::ShowSystemInformation);

    auto* texts = new QVBoxLayout;
    texts->addWidget(lblTitle);
    texts->addWidget(lblVersion);
    texts->addSpacing(8);
    texts->addWidget(purpose);
    texts->addStretch();
    auto* head = new QHBoxLayout;
    head->setSpacing(16);
    head->addWidget(picture, 0, Qt::AlignTop);
    head->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSysInfo);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head, 1);
    column->addSpacing(8);
    column->addLayout(buttons);
    setMinimumWidth(380);
    cmdOK->setFocus();
}

void frmAbout::ShowSystemInformation() {
    QDialog window(this);
    window.setWindowTitle(QStringLiteral("System Information"));
    auto* text = new QPlainTextEdit(information_, &window);
    text->setReadOnly(true);
    text->setAccessibleName(window.windowTitle());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &window);
    QPushButton* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, &window,
            [this] { QGuiApplication::clipboard()->setText(information_); });
    connect(buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    auto* column = new QVBoxLayout(&window);
    column->addWidget(text);
    column->addWidget(buttons);
    window.resize(520, 280);
    window.exec();
}

}  // namespace vantrel
