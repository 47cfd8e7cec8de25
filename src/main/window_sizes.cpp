#include "main/window_sizes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVariant>
#include <QWidget>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {
namespace {

constexpr const char* kSection = "Window Sizes";
constexpr const char* kResizedByUser = "resizedByUser";  // a property of windows
constexpr int kMost = 100'000;                           // pixels; more was not written by a window

// Invalid where the text is no size.
QSize SizeOf(const QString& text) {
    const qsizetype cross = text.indexOf(QLatin1Char('x'));
    if (cross <= 0) return {};
    const QSize size(text.left(cross).toInt(), text.mid(cross + 1).toInt());
    const bool usable = !size.isEmpty() && size.width() < kMost && size.height() < kMost;
    return usable ? size : QSize();
}

std::string TextOf(QSize size) {
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

bool IsKept(const QWidget& window) {
    const QString name = window.objectName();
    // The main window keeps its place among the options.
    return window.isWindow() && name.startsWith(QLatin1String("frm")) && name != QLatin1String("frmMain") &&
           window.minimumSize() != window.maximumSize();
}

}  // namespace

WindowSizes::WindowSizes(const SettingsFile& settings) : settings_(settings) {
    QCoreApplication::instance()->installEventFilter(this);
}

// What the window system sends of itself is the user's doing; a window resizes itself without that.
bool WindowSizes::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::Show && type != QEvent::Resize && type != QEvent::Hide) return false;
    if (!watched->isWidgetType()) return false;
    auto& window = static_cast<QWidget&>(*watched);
    if (!IsKept(window)) return false;
    if (type == QEvent::Resize) {
        if (event->spontaneous()) window.setProperty(kResizedByUser, true);
    } else if (!event->spontaneous()) {
        type == QEvent::Show ? Restore(window) : Keep(window);
    }
    return false;
}

void WindowSizes::Restore(QWidget& window) const {
    window.setProperty(kResizedByUser, QVariant());
    IniDocument document;
    if (!settings_.Read(document).IsOk()) return;
    const auto kept = document.Get(kSection, FromQString(window.objectName()));
    if (const QSize size = SizeOf(ToQString(kept.value_or(""))); size.isValid())
        ResizeWithinScreen(window, size.expandedTo(window.minimumSize()));
}

void WindowSizes::Keep(const QWidget& window) const {
    if (!window.property(kResizedByUser).toBool() || window.isMaximized() || window.isMinimized()) return;
    static_cast<void>(settings_.Update([&](const IniDocument&) {
        return std::vector<IniChange>{{kSection, FromQString(window.objectName()), TextOf(window.size())}};
    }));
}

}  // namespace vantrel
