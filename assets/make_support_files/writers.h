#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>

// Writers for the file formats of the support files. Images are Format_Indexed8 and of one size and palette.

// An AVI file of RLE8 frames: the first whole, each later one only where it differs from the one before.
QByteArray AviFile(const QList<QImage>& frames, int frameMilliseconds);

// A GIF picture of up to four colours.
QByteArray GifFile(const QImage& picture);

// A WAVE file, PCM, 16 bits, one channel.
QByteArray WaveFile(const QList<qint16>& samples, int samplesPerSecond);
