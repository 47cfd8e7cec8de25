// Makes the support files of the program: make-support-files LOGO.svg FOLDER
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "animations.h"
#include "writers.h"

namespace {

// A bell of two notes, the second a fourth above the first.
QByteArray Chime() {
    constexpr int kRate = 22'050;
    constexpr double kSeconds = 0.9;
    constexpr double kPartials[][2] = {{1.0, 0.62}, {2.0, 0.22}, {3.01, 0.10}, {4.2, 0.06}};
    QList<qint16> samples;
    for (int i = 0; i < kRate * kSeconds; ++i) {
        double value = 0;
        for (const auto& [frequency, begins] : {std::pair(783.99, 0.0), std::pair(1046.5, 0.14)}) {
            const double time = static_cast<double>(i) / kRate - begins;
            if (time < 0) continue;
            const double attack = std::min(1.0, time / 0.004);
            for (const auto& [multiple, weight] : kPartials)
                value += 0.4 * weight * attack * std::exp(-time * (4.5 + 2.5 * multiple)) *
                         std::sin(2 * std::numbers::pi * frequency * multiple * time);
        }
        const double end = std::min(1.0, (kSeconds - static_cast<double>(i) / kRate) / 0.05);
        samples += static_cast<qint16>(std::lround(std::clamp(value * end, -1.0, 1.0) * 32'000));
    }
    return WaveFile(samples, kRate);
}

// Fine diagonal lines, hardly darker than paper.
QByteArray Background() {
    QImage tile(32, 32, QImage::Format_Indexed8);
    tile.setColorTable({0xFFFFFFFF, 0xFFF9FAFC});
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x) tile.setPixel(x, y, (x + y) % 16 < 2 ? 1 : 0);
    return GifFile(tile);
}

// Twice as large as shown, for dense screens.
bool SaveLogo(const QString& svg, const QString& file) {
    QSvgRenderer renderer(svg);
    QImage logo(renderer.defaultSize() * 2, QImage::Format_RGB32);
    if (logo.isNull()) return false;
    QPainter painter(&logo);
    renderer.render(&painter);
    painter.end();
    return logo.save(file, "JPG", 88);
}

bool Save(const QString& file, const QByteArray& bytes) {
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "make-support-files LOGO.svg FOLDER\n");
        return 2;
    }
    const QString folder = QFile::decodeName(argv[2]) + QLatin1Char('/');
    const bool saved =
        Save(folder + QStringLiteral("scanfiles.avi"), AviFile(ScanFilesFrames(), kFrameMilliseconds)) &&
        Save(folder + QStringLiteral("filetreelist.avi"),
             AviFile(FileTreeListFrames(), kFrameMilliseconds)) &&
        Save(folder + QStringLiteral("small_find_computer.avi"),
             AviFile(FindComputerFrames(), kFrameMilliseconds)) &&
        Save(folder + QStringLiteral("vtdone.wav"), Chime()) &&
        Save(folder + QStringLiteral("lvwback.gif"), Background()) &&
        SaveLogo(QFile::decodeName(argv[1]), folder + QStringLiteral("vtlogo.jpg"));
    if (!saved) std::fprintf(stderr, "A support file could not be made.\n");
    return saved ? 0 : 1;
}
