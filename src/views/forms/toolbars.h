#pragma once

#include <QToolBar>
#include <QToolButton>
#include <span>

#include "views/forms/command_entry.h"

class QAction;

namespace vantrel {

class Commands;

enum class ToolbarStyle { Hidden, Coolbar, Toolbar };

// A button of a strip: it has a caption, a tip and a picture of its own and runs the action that the menus
// show too. While it is held down, picture and caption move a little; it acts when it is let go.
class CommandButton : public QToolButton {
    Q_OBJECT

  public:
    CommandButton(QAction* action, const QString& caption, const QString& tip, QWidget* parent);

    void ShowBusy(bool busy);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void Follow();

    QAction* action_;
    bool busy_ = false;
};

// VTToolbar (small pictures beside their captions) or the CoolBar (large pictures above them), made from the
// same table. While a job runs, their buttons are disabled.
class CommandStrip : public QToolBar {
    Q_OBJECT

  public:
    // A button for each of `entries`, which must outlive the strip.
    CommandStrip(ToolbarStyle style, std::span<const ToolbarEntry> entries, Commands& commands,
                 QWidget* parent);

    CommandButton* Button(std::string_view command) const;

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    Commands& commands_;
};

}  // namespace vantrel
