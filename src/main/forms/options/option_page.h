#pragma once

#include <QWidget>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/toolbox.h"
#include "main/option_boxes.h"

class QBoxLayout;
class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace vantrel {

class CSoundSettings;

// What the tabs of the options window stand on. All must outlive them.
struct OptionsContext {
    const Toolbox& tools;
    const OptionEnvironment& environment;
    CSoundSettings& sounds;
    Options& edited;  // the copy that the window edits: each control writes to it at once
};

// The name of the property of a control that holds its place in the help.
inline constexpr const char* kHelpProperty = "helpPlace";

// One tab of the options window. What an option's control looks like to the user beside its value, its
// caption, its tip, its place in the help, comes from its OptionBox.
class OptionPage : public QWidget {
    Q_OBJECT
  public:
    OptionPage(OptionTab tab, const OptionsContext& context);

    OptionTab Tab() const { return tab_; }
    // Brings all controls in line with the options.
    void ShowOptions();
    // Whether all that was entered can be taken; where not, that is told and the keys are led there.
    virtual bool Check() { return true; }
    // Where the keys begin when a command has led to this tab.
    virtual QWidget* FirstControl();

  protected:
    // An item of a group that exclude each other, in the order in which they stand.
    struct Choice {
        int code;
        const char* caption;
        const char* tip;
    };

    OptionsContext& Context() { return context_; }
    Options& Edited() { return context_.edited; }
    QVBoxLayout& Column() { return *column_; }

    // Runs with each ShowOptions, and once at the end of the construction of the window.
    void OnShow(std::function<void()> show) { shows_.push_back(std::move(show)); }

    // The layout of a frame that is added to `to`.
    QVBoxLayout* AddFrame(QBoxLayout& to, const QString& title);
    QCheckBox* AddCheck(QBoxLayout& to, std::string_view key);
    // One button for each choice, named "<control>(<number>)". A click writes the code.
    std::vector<QRadioButton*> AddChoices(QBoxLayout& to, std::string_view key,
                                          std::span<const Choice> choices);
    QPushButton* NewButton(const char* name, const QString& caption);
    static QLabel* NewLabel(const char* name, const QString& text = {});
    // Gives a control its name, unless it has one, its tip and its place in the help.
    static void Describe(QWidget& control, const OptionBox& box);

    void Tell(const char* title, const std::string& text, MessageIcon icon = MessageIcon::Warning);
    // `work` as what a signal calls, as the routine "frmOptions.<routine>".
    template <typename Work>
    auto Guarded(const char* routine, Work work) {
        return [this, routine, work](const auto&... values) {
            context_.tools.reporter.GuardRun(std::string("frmOptions.") + routine, [&] {
                if constexpr (std::is_invocable_v<Work>)
                    work();
                else
                    work(values...);
            });
        };
    }

  private:
    OptionTab tab_;
    OptionsContext context_;
    QVBoxLayout* column_;
    std::vector<std::function<void()>> shows_;
};

}  // namespace vantrel
