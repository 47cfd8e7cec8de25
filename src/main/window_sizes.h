#pragma once

#include <QObject>

#include "settings/settings_file.h"

class QWidget;

namespace vantrel {

// Windows come back in the size that the user gave them. A window of a name ("frm...") that can be resized
// takes its size from the section "Window Sizes" of the settings file when it is shown, as far as the screen
// has room for it, and leaves it there when it is hidden. The main window has a place of its own among the
// options.
class WindowSizes : public QObject {
    Q_OBJECT

  public:
    // Watches all windows of the program. `settings` must outlive the object; a size that cannot be read or
    // written is forgotten without a word.
    explicit WindowSizes(const SettingsFile& settings);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Restore(QWidget& window) const;
    void Keep(const QWidget& window) const;

    const SettingsFile& settings_;
};

}  // namespace vantrel
