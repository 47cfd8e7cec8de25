#include "diagnostics/forms/frm_error_log.h"

#include <QDialogButtonBox>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {
namespace {

// The last `limit` bytes of a file, from the beginning of a line.
std::string EndOfFile(const FileSystem& files, const std::string& path, std::uint64_t limit,
                      std::uint64_t& size) {
    ReadFile file;
    ThrowIfFailed(files.OpenForReading(path, file));
    size = file.Size();
    std::string text(std::min(size, limit), '\0');
    std::size_t got = 0;
    ThrowIfFailed(file.ReadAt(size - text.size(), text.data(), text.size(), got));
    text.resize(got);
    if (size > limit) text.erase(0, std::min(text.find('\n'), text.size() - 1) + 1);
    return text;
}

}  // namespace

frmErrorLog::frmErrorLog(const FileSystem& files, ErrorReporter& reporter, QWidget* parent)
    : QDialog(parent),
      txtMsg(new QPlainTextEdit),
      cmdClear(new QPushButton(QStringLiteral("&Clear"))),
      OKButton(new QPushButton(QStringLiteral("OK"))),
      files_(files),
      reporter_(reporter) {
    setObjectName(QStringLiteral("frmErrorLog"));
    setWindowTitle(QStringLiteral("Error Log"));
    txtMsg->setObjectName(QStringLiteral("txtMsg"));
    txtMsg->setReadOnly(true);
    txtMsg->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtMsg->setTabChangesFocus(true);
    txtMsg->setAccessibleName(QStringLiteral("Log"));
    cmdClear->setObjectName(QStringLiteral("cmdClear"));
    cmdClear->setToolTip(QStringLiteral("Empty the log file"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    cmdClear->setAutoDefault(false);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdClear, QDialogButtonBox::ResetRole);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);
    auto* column = new QVBoxLayout(this);
    column->addWidget(txtMsg);
    column->addWidget(buttons);
    OKButton->setDefault(true);
    ResizeWithinScreen(*this, {fontMetrics().averageCharWidth() * 84, fontMetrics().lineSpacing() * 24});

    connect(OKButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdClear, &QPushButton::clicked, this, &frmErrorLog::Clear);
    setTabOrder(txtMsg, cmdClear);
    setTabOrder(cmdClear, OKButton);
    OKButton->setFocus();
}

void frmErrorLog::DisplayFile(const std::string& path) {
    path_ = path;
    txtMsg->clear();
    cmdClear->setEnabled(false);
    reporter_.Guard("frmErrorLog.DisplayFile", [&] {
        if (!files_.Exists(path_)) ThrowIfFailed(files_.AppendToFile(path_, {}));
        std::uint64_t size = 0;
        const std::string text = EndOfFile(files_, path_, kMostBytes, size);
        if (size == 0) {
            if (windowTitle() == QStringLiteral("Error Log"))
                txtMsg->setPlainText(QStringLiteral("No Errors Encountered During Last Comparison."));
            return;
        }
        QString shown = MessageQString(text);
        if (size > kMostBytes)
            shown.prepend(QStringLiteral("The log holds %1. Its end is shown here.\n\n")
                              .arg(locale().formattedDataSize(static_cast<qint64>(size))));
        txtMsg->setPlainText(shown);
        cmdClear->setEnabled(true);
    });
}

void frmErrorLog::Clear() {
    const bool cleared =
        reporter_.Guard("frmErrorLog.cmdClear_Click", [&] { ThrowIfFailed(files_.ReplaceFile(path_, {})); });
    if (!cleared) return;
    DisplayFile(path_);
    OKButton->setFocus();
}

}  // namespace vantrel
