#include "main/forms/frm_splash.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <map>

#include "support/places.h"

namespace vantrel {
namespace {

class frmSplashTest : public ::testing::Test {
  protected:
    SplashServices Services() {
        return {.logoFile = testing::AssetsFolder() + "/support/vtlogo.jpg",
                .readOption =
                    [this](const std::string& key, const std::string& defaultValue) {
                        return options.contains(key) ? options[key] : defaultValue;
                    },
                .playWave = [this](const std::string& file) { played.push_back(file); },
                .LoadNextForm =
                    [this] {
                        ++loaded;
                        // Loading takes a while and lets events through.
                        QCoreApplication::processEvents();
                    }};
    }

    static void Click(QWidget& widget) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(80, 80), QPointF(80, 80), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    std::map<std::string, std::string> options;
    std::vector<std::string> played;
    int loaded = 0;
};

TEST_F(frmSplashTest, GoesOnOnceAtAClickOnWindowOrLogoAndAtAKey) {
    for (const int way : {0, 1, 2}) {
        loaded = 0;
        frmSplash splash(Services());
        splash.Load();
        EXPECT_TRUE(splash.isVisible());
        QElapsedTimer elapsed;
        elapsed.start();
        QWidget& target = way == 1 ? *splash.findChild<QWidget*>(QStringLiteral("pctLogo")) : splash;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
        for (int twice = 0; twice < 2; ++twice)
            if (way == 2)
                QApplication::sendEvent(&target, &key);
            else
                Click(target);
        EXPECT_EQ(loaded, 1) << way;
        EXPECT_FALSE(splash.isVisible());
        EXPECT_LT(elapsed.elapsed(), 500);
    }
}

TEST_F(frmSplashTest, GoesOnByItselfAfterTwoSeconds) {
    frmSplash splash(Services());
    QElapsedTimer elapsed;
    elapsed.start();
    splash.Load();
    while (splash.isVisible() && elapsed.elapsed() < 20'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(loaded, 1);
    EXPECT_GE(elapsed.elapsed(), 1'900);
}

TEST_F(frmSplashTest, PlaysTheStartSoundThatTheSettingsFileNames) {
    const auto soundsOf = [this](std::map<std::string, std::string> given) {
        options = std::move(given);
        played.clear();
        frmSplash(Services()).Load();
        return played;
    };
    using Sounds = std::vector<std::string>;
    EXPECT_EQ(soundsOf({}), Sounds());
    EXPECT_EQ(soundsOf({{"StartSound", "/s/hello.wav"}}), Sounds{"/s/hello.wav"});
    EXPECT_EQ(soundsOf({{"StartSound", "/s/hello.wav"}, {"SoundOn", "true"}}), Sounds());
    EXPECT_EQ(soundsOf({{"StartSound", "(none)"}, {"SoundOn", "True"}}), Sounds());
}

TEST_F(frmSplashTest, HasTheShapeOfTheLogoAlsoWithoutItsPicture) {
    for (const std::string& logo : {Services().logoFile, std::string("/no/such/logo.jpg")}) {
        SplashServices services = Services();
        services.logoFile = logo;
        frmSplash splash(services);
        EXPECT_TRUE(splash.mask().contains(QPoint(80, 20)));
        EXPECT_FALSE(splash.mask().contains(QPoint(300, 20)));
        const QImage shown = splash.findChild<QLabel*>(QStringLiteral("pctLogo"))->pixmap().toImage();
        EXPECT_EQ(shown.pixelColor(300, 20).alpha(), 0);
        EXPECT_EQ(shown.pixelColor(400, 200).alpha(), 255);
        bool name = false;
        for (int x = 64; x < 200; ++x) name = name || shown.pixelColor(x, 205).lightness() > 240;
        EXPECT_TRUE(name) << "of the program";
    }
}

}  // namespace
}  // namespace vantrel
