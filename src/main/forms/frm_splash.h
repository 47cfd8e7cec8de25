#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>

namespace vantrel {

// What the splash needs of the program, which has not loaded its options yet when the splash shows.
struct SplashServices {
    std::string logoFile;  // full path of "vtlogo.jpg"
    // A text of the section "Options" of the settings file, straight from the file.
    std::function<std::string(const std::string& key, const std::string& defaultValue)> readOption;
    std::function<void(const std::string& file)> playWave;
    std::function<void()> LoadNextForm;  // loads frmMain
};

// The splash window, in the shape of the logo. After two seconds, or at a click or a key press, it stops its
// timer, calls LoadNextForm and unloads itself, once. Where the picture is missing it shows a plainer one.
class frmSplash : public QWidget {
  public:
    explicit frmSplash(SplashServices services);

    // Shows the window, plays the start sound, starts the timer.
    void Load();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void PlayStartSound();
    void Leave();

    SplashServices services_;
    QTimer timer1_;
    bool left_ = false;
};

}  // namespace vantrel
