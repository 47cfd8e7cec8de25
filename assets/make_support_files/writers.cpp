#include "writers.h"

#include <algorithm>

namespace {

void Put16(QByteArray& to, int value) {
    to += static_cast<char>(value & 0xFF);
    to += static_cast<char>(value >> 8 & 0xFF);
}

void Put32(QByteArray& to, qsizetype value) {
    Put16(to, static_cast<int>(value & 0xFFFF));
    Put16(to, static_cast<int>(value >> 16 & 0xFFFF));
}

QByteArray Chunk(const char* id, const QByteArray& data) {
    QByteArray chunk(id);
    Put32(chunk, data.size());
    chunk += data;
    if (data.size() % 2 != 0) chunk += '\0';
    return chunk;
}

QByteArray List(const char* type, const QByteArray& content) {
    return Chunk("LIST", QByteArray(type) + content);
}

// Runs of one row from `from` up to `to`.
void PutRuns(QByteArray& data, const uchar* row, int from, int to) {
    while (from < to) {
        int end = from;
        while (end < to && end - from < 255 && row[end] == row[from]) ++end;
        data += static_cast<char>(end - from);
        data += static_cast<char>(row[from]);
        from = end;
    }
}

QByteArray RunLengths(const QImage& frame, const QImage* before) {
    QByteArray data;
    int rowsToGo = 0;  // rows without a change, not yet stepped over
    for (int y = frame.height() - 1; y >= 0; --y) {
        const uchar* row = frame.constScanLine(y);
        const uchar* old = before != nullptr ? before->constScanLine(y) : nullptr;
        int from = 0;
        int to = frame.width();
        if (old != nullptr) {
            while (from < to && row[from] == old[from]) ++from;
            while (to > from && row[to - 1] == old[to - 1]) --to;
        }
        if (from < to) {
            // One step goes 255 to the right and 255 rows on at most.
            for (int right = from; rowsToGo > 0 || right > 0;) {
                const int dx = std::min(right, 255);
                const int dy = std::min(rowsToGo, 255);
                data += QByteArray("\0\2", 2);
                data += static_cast<char>(dx);
                data += static_cast<char>(dy);
                right -= dx;
                rowsToGo -= dy;
            }
            PutRuns(data, row, from, to);
            data += QByteArray("\0\0", 2);
        } else {
            ++rowsToGo;
        }
    }
    return data + QByteArray("\0\1", 2);
}

}  // namespace

QByteArray AviFile(const QList<QImage>& frames, int frameMilliseconds) {
    const QImage& first = frames.first();
    QByteArray pictures;
    QByteArray index;
    qsizetype largest = 0;
    for (qsizetype i = 0; i < frames.size(); ++i) {
        const QByteArray data = RunLengths(frames[i], i > 0 ? &frames[i - 1] : nullptr);
        largest = std::max(largest, data.size());
        index += "00dc";
        Put32(index, i == 0 ? 0x10 : 0);  // a whole frame
        Put32(index, 4 + pictures.size());
        Put32(index, data.size());
        pictures += Chunk("00dc", data);
    }

    QByteArray main;
    for (const qsizetype value :
         {qsizetype{frameMilliseconds} * 1000, largest * 1000 / frameMilliseconds, qsizetype{0},
          qsizetype{0x10}, frames.size(), qsizetype{0}, qsizetype{1}, largest, qsizetype{first.width()},
          qsizetype{first.height()}, qsizetype{0}, qsizetype{0}, qsizetype{0}, qsizetype{0}})
        Put32(main, value);
    QByteArray stream("vidsRLE ");
    for (const qsizetype value :
         {qsizetype{0}, qsizetype{0}, qsizetype{0}, qsizetype{frameMilliseconds}, qsizetype{1000},
          qsizetype{0}, frames.size(), largest, qsizetype{-1}, qsizetype{0}})
        Put32(stream, value);
    for (const int value : {0, 0, first.width(), first.height()}) Put16(stream, value);

    QByteArray format;
    const QList<QRgb> colours = first.colorTable();
    Put32(format, 40);
    Put32(format, first.width());
    Put32(format, first.height());
    Put16(format, 1);
    Put16(format, 8);
    for (const qsizetype value :
         {qsizetype{1}, qsizetype{0}, qsizetype{0}, qsizetype{0}, colours.size(), qsizetype{0}})
        Put32(format, value);
    for (const QRgb colour : colours) Put32(format, colour & 0xFFFFFF);

    const QByteArray header =
        List("hdrl", Chunk("avih", main) + List("strl", Chunk("strh", stream) + Chunk("strf", format)));
    return Chunk("RIFF", "AVI " + header + List("movi", pictures) + Chunk("idx1", index));
}

QByteArray GifFile(const QImage& picture) {
    QByteArray file("GIF89a");
    Put16(file, picture.width());
    Put16(file, picture.height());
    file += QByteArray("\x91\0\0", 3);  // four colours for the whole file
    for (int i = 0; i < 4; ++i) {
        const QRgb colour = i < picture.colorCount() ? picture.color(i) : 0;
        for (const int part : {qRed(colour), qGreen(colour), qBlue(colour)}) file += static_cast<char>(part);
    }
    file += ',';
    for (const int value : {0, 0, picture.width(), picture.height()}) Put16(file, value);
    file += QByteArray("\0\2", 2);

    // Codes of three bits throughout: the table is cleared before it would need a fourth.
    constexpr int kClear = 4;
    constexpr int kEnd = 5;
    QByteArray codes;
    int bits = 0;
    int held = 0;
    const auto put = [&](int code) {
        held |= code << bits;
        for (bits += 3; bits >= 8; bits -= 8, held >>= 8) codes += static_cast<char>(held & 0xFF);
    };
    int sinceClear = 2;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (++sinceClear > 2) {
                put(kClear);
                sinceClear = 1;
            }
            put(picture.pixelIndex(x, y));
        }
    }
    put(kEnd);
    if (bits > 0) codes += static_cast<char>(held);
    for (qsizetype at = 0; at < codes.size(); at += 255) {
        const QByteArray block = codes.mid(at, 255);
        file += static_cast<char>(block.size());
        file += block;
    }
    return file + QByteArray("\0;", 2);
}

QByteArray WaveFile(const QList<qint16>& samples, int samplesPerSecond) {
    QByteArray format;
    Put16(format, 1);
    Put16(format, 1);
    Put32(format, samplesPerSecond);
    Put32(format, qsizetype{2} * samplesPerSecond);
    Put16(format, 2);
    Put16(format, 16);
    QByteArray data;
    for (const qint16 sample : samples) Put16(data, sample);
    return Chunk("RIFF", "WAVE" + Chunk("fmt ", format) + Chunk("data", data));
}
