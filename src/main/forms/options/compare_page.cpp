#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <QVBoxLayout>

#include "core/mod_sha1_hash.h"
#include "main/forms/options/option_pages.h"
#include "platform/forms/qt_text.h"
#include "settings/chunk_size.h"

namespace vantrel {

ComparePage::ComparePage(const OptionsContext& context)
    : OptionPage(OptionTab::Compare, context), txtChunkSize(new QLineEdit) {
    static constexpr Choice kMethods[] = {
        {static_cast<int>(CompareMethod::SizeAndDate), "Size and Date/Time",
         "Files are alike when size and date agree; the fastest method."},
        {static_cast<int>(CompareMethod::Contents), "Contents",
         "Files are alike when all their bytes agree."},
        {static_cast<int>(CompareMethod::Crc32), "Cyclical Redundancy Check",
         "Files are alike when the check sums of their contents agree."},
        {static_cast<int>(CompareMethod::Sha1), "SHA-1 Message Digest",
         "Files are alike when the SHA-1 digests of their contents agree."},
    };
    const std::vector<QRadioButton*> methods =
        AddChoices(*AddFrame(Column(), QStringLiteral("Comparison Method")), "CompareType", kMethods);
    if (!IsSHA1Available()) methods.back()->setEnabled(false);

    auto* label = new QLabel(QStringLiteral("Chunk Size (in bytes):"));
    label->setBuddy(txtChunkSize);
    Describe(*txtChunkSize, BoxOf("ChunkSize"));
    txtChunkSize->setMaximumWidth(fontMetrics().averageCharWidth() * 20);
    txtChunkSize->installEventFilter(this);
    auto* chunk = new QHBoxLayout;
    chunk->addWidget(label);
    chunk->addWidget(txtChunkSize);
    chunk->addStretch(1);
    Column().addLayout(chunk);
    connect(txtChunkSize, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (const auto size = ChunkSizeOf(FromQString(text))) Edited().chunkSize = *size;
    });
    OnShow([this] {
        txtChunkSize->setText(QString::number(Edited().chunkSize));
        warnedOf_ = txtChunkSize->text();  // it is in force already
    });

    QVBoxLayout* others = AddFrame(Column(), QStringLiteral("Other Comparison Options"));
    for (const char* key :
         {"CompareSubFolders", "RemindAboutFATNTFSIssue", "Ignore2SecDiff", "IgnoreDaylightSavings"})
        AddCheck(*others, key);
    Column().addStretch(1);
}

QWidget* ComparePage::FirstControl() {
    return txtChunkSize;
}

// The check that the text loses the focus to comes once that has happened. OK makes it itself, and for Cancel
// it does not matter what stands there.
bool ComparePage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            QTimer::singleShot(0, this, [this] {
                const QWidget* now = window()->focusWidget();
                const QString name = now != nullptr ? now->objectName() : QString();
                if (!window()->isVisible() || now == txtChunkSize || name == QLatin1String("cmdOK") ||
                    name == QLatin1String("cmdCancel"))
                    return;
                Guarded("txtChunkSize_LostFocus", [this] { Check(); })();
            });
    }
    return OptionPage::eventFilter(watched, event);
}

bool ComparePage::Check() {
    if (asking_) return false;
    const QScopedValueRollback<bool> asking(asking_, true);
    const QString text = txtChunkSize->text();
    const auto size = ChunkSizeOf(FromQString(text));
    if (!size) {
        Tell("Invalid Chunk Size",
             "\"" + FromQString(text) + "\" is not a valid Chunk Size value.\r\n\r\n" +
                 "Please enter a whole number in the range of 1 byte to 10 million bytes.");
        Q_EMIT Wrong();
        txtChunkSize->setFocus();
        txtChunkSize->selectAll();
        return false;
    }
    if (*size > kLargeChunkSize && text != warnedOf_) {
        warnedOf_ = text;
        Tell("Large Chunk Memory Warning",
             "Warning: You may experience memory related issues when \r\n"
             "using a chunk size larger than two million bytes.\r\n\r\n"
             "(Depending on your computer's configuration)");
    }
    Edited().chunkSize = *size;
    return true;
}

}  // namespace vantrel
