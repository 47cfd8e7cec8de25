#include "main/help_key.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "platform/forms/qt_text.h"

namespace vantrel {
namespace {

struct WindowPage {
    std::string_view window, page;
};

constexpr WindowPage kPages[] = {
    {"frmMain", "index.html"},
    {"frmAbout", "index.html"},
    {"frmCompareFiles", "two-files.html"},
    {"frmCompareProgress", "comparing.html"},
    {"frmCompareResults", "views.html"},
    {"frmConfirmSync", "synchronising.html"},
    {"frmConfirmation", "files.html"},
    {"frmCreateSubFolder", "files.html"},
    {"frmCustomSync", "synchronising.html"},
    {"frmDupeExclusions", "duplicates.html"},
    {"frmErrorLog", "troubleshooting.html"},
    {"frmFileDateTimes", "renaming.html"},
    {"frmFileDiffs", "differences.html"},
    {"frmFileSync", "synchronising.html"},
    {"frmFindDuplicates", "duplicates.html"},
    {"frmHexDump", "hexdump.html"},
    {"frmMaintainFolderLists", "sessions.html"},
    {"frmOptions", "options.html"},
    {"frmPrintOptions", "printing.html"},
    {"frmPrintPreview", "printing.html"},
    {"frmProperties", "files.html"},
    {"frmRenameMultiple", "renaming.html"},
    {"frmRestoreDupes", "duplicates.html"},
    {"frmSaveResults", "printing.html"},
    {"frmSelect", "views.html"},
    {"frmShellProgress", "files.html"},
    {"frmSpecifySubFolder", "sub-folders.html"},
    {"frmSubDirDiffs", "sub-folders.html"},
    {"frmSyncLog", "synchronising.html"},
    {"frmSyncWizard", "synchronising.html"},
    {"frmViewFileDiffOptions", "differences.html"},
};

bool IsHelpKey(const QKeyEvent& key) {
    return !key.isAutoRepeat() &&
           (key.key() == Qt::Key_Help || (key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier));
}

}  // namespace

std::string_view HelpPageOf(std::string_view window) {
    for (const WindowPage& each : kPages)
        if (each.window == window) return each.page;
    return {};
}

HelpKey::HelpKey(Show show) : show_(std::move(show)) {
    QCoreApplication::instance()->installEventFilter(this);
}

// A shortcut of a window for this key never comes here: it takes the key before it is sent to a control.
bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
    if (!IsHelpKey(static_cast<const QKeyEvent&>(*event))) return false;
    QWidget* over = static_cast<QWidget*>(watched)->window();
    for (const QWidget* at = over; at != nullptr; at = at->parentWidget()) {
        const std::string_view page = HelpPageOf(FromQString(at->objectName()));
        if (page.empty()) continue;
        show_(page, over);
        return true;
    }
    return false;
}

}  // namespace vantrel
