#pragma once

#include <QDialog>
#include <string>
#include <string_view>

class QTextBrowser;

namespace vantrel {

// Shows the pages of the help where the desktop has no program for them.
class frmHelp : public QDialog {
    Q_OBJECT

  public:
    explicit frmHelp(QWidget* parent);

    // A full path in the engine's form, and an anchor of the page or nothing; shows the window, which stays
    // open beside the others.
    void ShowPage(const std::string& path, std::string_view anchor = {});

    QTextBrowser* browser;
};

}  // namespace vantrel
