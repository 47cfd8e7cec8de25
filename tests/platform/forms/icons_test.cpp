#include "platform/forms/icons.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <set>

namespace vantrel {
namespace {

QImage Shown(const QIcon& icon, int height, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(QSize(2 * height, height), 1.0, mode).toImage();
}

// Largest difference of lightness between an opaque point of the picture and the window it is seen on.
int Contrast(const QImage& picture, const QColor& window) {
    int contrast = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (const QColor point = picture.pixelColor(x, y); point.alpha() > 200)
                contrast = std::max(contrast, std::abs(point.lightness() - window.lightness()));
    return contrast;
}

std::vector<QIcon> AllPictures() {
    std::vector<QIcon> all;
    for (const char* name : {"compare-folders",
                             "compare-files",
                             "dupes",
                             "sync",
                             "copy",
                             "move",
                             "delete",
                             "options",
                             "print",
                             "exit",
                             "help",
                             "select-folder",
                             "parent",
                             "new-folder",
                             "explore",
                             "select-file-one",
                             "select-file-two",
                             "previous-difference",
                             "next-difference",
                             "find",
                             "find-next",
                             "find-previous",
                             "toggle-bookmark",
                             "next-bookmark",
                             "previous-bookmark",
                             "clear-bookmarks",
                             "go-back",
                             "row-arrow",
                             "row-differ-arrow",
                             "row-orphan-arrow",
                             "row-bookmark",
                             "row-bookmark-arrow"})
        all.push_back(CommandIcon(QLatin1String(name)));
    for (int type = 1; type <= 8; ++type) all.push_back(ResultTypeIcon(type));
    for (int code = 0; code <= 7; ++code) all.push_back(SyncMethodIcon(code));
    all.push_back(ProgramIcon());
    return all;
}

TEST(Icons, AreAllThereDifferFromEachOtherAndCanBeSeenOnLightAndDarkWindows) {
    const QPalette before = QApplication::palette();
    for (const QColor window : {QColor(250, 250, 250), QColor(36, 39, 44)}) {
        QPalette palette = before;
        palette.setColor(QPalette::Window, window);
        QApplication::setPalette(palette);
        std::set<QByteArray> seen;
        for (const QIcon& icon : AllPictures()) {
            ASSERT_FALSE(icon.isNull());
            const QImage picture = Shown(icon, 16);
            EXPECT_GT(Contrast(picture, window), 60);
            seen.insert(
                QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
        }
        EXPECT_EQ(seen.size(), AllPictures().size());
    }
    QApplication::setPalette(before);
}

TEST(Icons, AreGrayWhereAskedAndWhenDisabled) {
    for (const QImage& picture : {Shown(ResultTypeIcon(5, IconColours::Gray), 32),
                                  Shown(CommandIcon(QLatin1String("delete")), 32, QIcon::Disabled)})
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                EXPECT_LT(picture.pixelColor(x, y).hsvSaturation() * picture.pixelColor(x, y).alpha(),
                          64 * 255);
    EXPECT_NE(Shown(ResultTypeIcon(5), 32), Shown(ResultTypeIcon(5, IconColours::Gray), 32));
}

TEST(Icons, AreDrawnAnewForADenserScreen) {
    const QPixmap dense = ResultTypeIcon(1).pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(dense.size(), QSize(32, 32));
    EXPECT_EQ(dense.devicePixelRatio(), 2.0);
    EXPECT_NE(dense.toImage(), ResultTypeIcon(1).pixmap(QSize(16, 16), 1.0).toImage().scaled(32, 32));
}

TEST(Icons, AreEmptyForWhatThereIsNot) {
    EXPECT_TRUE(CommandIcon(QLatin1String("no-such")).isNull());
    EXPECT_TRUE(ResultTypeIcon(0).isNull());
    EXPECT_TRUE(ResultTypeIcon(9).isNull());
    EXPECT_TRUE(SyncMethodIcon(8).isNull());
}

}  // namespace
}  // namespace vantrel
