#pragma once

#include <QStatusBar>
#include <array>
#include <string>
#include <string_view>

namespace vantrel {

class ElidedLabel;

// StatusBar1: panels 1 and 2 stand below the panes and tell of them, panel 3 of the filters, panel 4 of the
// view. What that view hides stands behind its name.
class MainStatusBar : public QStatusBar {
    Q_OBJECT

  public:
    static constexpr int kPanelCount = 4;

    explicit MainStatusBar(QWidget* parent = nullptr);

    // `number` is from 1.
    void SetPanel(int number, std::string_view text);
    QString PanelText(int number) const;
    void Reset();
    // What the view hides, or nothing. Before a view was applied its name stands there too.
    void SetHiddenTypes(std::string_view text);
    // Shown over the panels for some seconds.
    void Note(std::string_view text);
    // Panel 1 takes the width of the left pane, panel 2 begins below the right one, which begins at
    // `rightStart`; panels 3 and 4 take what they need of the width of the right one.
    void FitToPanes(int rightStart);

  private:
    static ElidedLabel* MakePanel(QWidget* parent, const QString& name);
    void ShowHiddenTypes();
    void ShareRest();

    std::array<ElidedLabel*, kPanelCount> panels_{};
    ElidedLabel* hidden_ = nullptr;
    std::string hiddenTypes_;
    int rightStart_ = 0;
};

}  // namespace vantrel
