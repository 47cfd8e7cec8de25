#include "main/forms/frm_help.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "platform/names/uri_list.h"

namespace vantrel {

frmHelp::frmHelp(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Vantrel Help"));
    browser = new QTextBrowser(this);
    browser->setOpenExternalLinks(false);
    browser->setAccessibleName(windowTitle());
    // The style sheet of the pages is for browsers; here the palette of the desktop holds.
    browser->document()->setDefaultStyleSheet(QStringLiteral("td, th { padding: 3px 8px; }"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* back = buttons->addButton(QStringLiteral("&Back"), QDialogButtonBox::ActionRole);
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, browser, &QTextBrowser::backward);
    connect(browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(browser);
    column->addWidget(buttons);
    ResizeWithinScreen(*this, {680, 560});
}

void frmHelp::ShowPage(const std::string& path, std::string_view anchor) {
    QUrl address = QUrl::fromEncoded(QByteArray::fromStdString(FileUri(path)));
    if (!anchor.empty()) address.setFragment(ToQString(anchor));
    browser->setSource(address);
    // Beside the main window, which may come to the front again; above a window that waits to be closed.
    winId();
    if (parentWidget() != nullptr && !parentWidget()->isModal()) windowHandle()->setTransientParent(nullptr);
    show();
    raise();
    activateWindow();
}

}  // namespace vantrel
