#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include "support/places.h"

namespace vantrel {
namespace {

QString Kept(const char* name) {
    return QString::fromStdString(testing::AssetsFolder()) + QStringLiteral("/support/") +
           QLatin1String(name);
}

TEST(KeptSupportFiles, AreAllThereAndSmall) {
    for (const char* name : {"vantrel.hlp", "vtlogo.jpg", "vtdone.wav", "scanfiles.avi", "filetreelist.avi",
                             "small_find_computer.avi", "lvwback.gif"}) {
        EXPECT_GT(QFile(Kept(name)).size(), 0) << name;
        EXPECT_LT(QFile(Kept(name)).size(), 60'000) << name;
    }
}

TEST(KeptSupportFiles, HoldABackgroundThatLeavesTextAlone) {
    const QImage tile(Kept("lvwback.gif"));
    ASSERT_FALSE(tile.isNull());
    for (int y = 0; y < tile.height(); ++y)
        for (int x = 0; x < tile.width(); ++x) EXPECT_GT(tile.pixelColor(x, y).lightness(), 240);
}

// PCM, one channel, 16 bits; it begins and ends in silence, so that it does not click.
TEST(KeptSupportFiles, HoldAChimeThatBeginsAndEndsInSilence) {
    QFile file(Kept("vtdone.wav"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray wave = file.readAll();
    ASSERT_EQ(wave.left(4), "RIFF");
    EXPECT_EQ(wave.mid(8, 8), "WAVEfmt ");
    EXPECT_EQ(wave.mid(20, 4), QByteArray("\1\0\1\0", 4));
    EXPECT_EQ(wave.mid(34, 6), QByteArray("\x10\0data", 6));
    const auto sample = [&](qsizetype index) {
        return static_cast<qint16>(static_cast<uchar>(wave[44 + 2 * index]) |
                                   static_cast<uchar>(wave[45 + 2 * index]) << 8);
    };
    const qsizetype count = (wave.size() - 44) / 2;
    int loudest = 0;
    for (qsizetype i = 0; i < count; ++i) loudest = std::max(loudest, std::abs(int{sample(i)}));
    EXPECT_GT(loudest, 4'000);
    EXPECT_LT(loudest, 32'000) << "cut off at the top";
    EXPECT_LT(std::abs(int{sample(0)}), 200);
    EXPECT_LT(std::abs(int{sample(count - 1)}), 200);
}

}  // namespace
}  // namespace vantrel
