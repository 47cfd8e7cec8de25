#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "core/toolbox.h"
#include "main/option_boxes.h"

class QPushButton;
class QTabWidget;

namespace vantrel {

class ComparePage;
class CSoundSettings;
class FilterPage;
class OptionPage;

// The options window. It edits a copy of the options and gives it back whole at OK.
class frmOptions : public QDialog {
    Q_OBJECT

  public:
    // All must outlive the window.
    struct Parts {
        const Toolbox& tools;
        CSoundSettings& sounds;
        OptionEnvironment environment;             // for the defaults
        std::function<void(const Options&)> take;  // at OK
        // A place of the help, file and anchor, in a window over this one.
        std::function<void(const std::string& place, QWidget* over)> showHelp;
    };
    frmOptions(Parts parts, const Options& options, QWidget* parent = nullptr);
    ~frmOptions() override;

    // Shows the window on that tab until it is closed.
    void ShowTab(OptionTab tab);
    OptionPage& Page(OptionTab tab) const { return *pages_[static_cast<std::size_t>(tab) - 1]; }

    QTabWidget* tbsOptions;
    QPushButton* cmdRestoreTab;
    QPushButton* cmdHelp;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

  private:
    void MakePages();
    void LayOut();
    void Wire();
    void SelectTab(OptionTab tab);
    OptionTab CurrentTab() const;
    void ShowDefaultButton();
    // The options of the tab in view get their defaults; OK makes them hold.
    void cmdRestoreTab_Click();
    // Of the control that has the focus, or of the tab where that has none.
    void cmdHelp_Click();
    void cmdOK_Click();

    Parts parts_;
    Options edited_;
    std::vector<OptionPage*> pages_;  // by number of the tab, less 1
    ComparePage* compare_ = nullptr;
    FilterPage* filters_ = nullptr;
};

}  // namespace vantrel
