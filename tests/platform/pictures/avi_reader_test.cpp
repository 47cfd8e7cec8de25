#include "platform/pictures/avi_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vantrel {
namespace {

std::string Number(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 0xFF);
    return text;
}

std::string Chunk(const std::string& id, const std::string& data) {
    return id + Number(static_cast<std::uint32_t>(data.size()), 4) + data +
           (data.size() % 2 != 0 ? std::string(1, '\0') : "");
}

struct Film {
    std::uint32_t width = 4, height = 2, bits = 8, compression = 1, colours = 3, rate = 10;
    std::vector<std::string> frames;
    std::string frameId = "00dc";
    bool bundled = false;

    std::string Bytes() const {
        const std::string avih = Number(50'000, 4) + std::string(52, '\0');
        const std::string strh =
            "vidsRLE " + std::string(12, '\0') + Number(1, 4) + Number(rate, 4) + std::string(28, '\0');
        std::string strf = Number(40, 4) + Number(width, 4) + Number(height, 4) + Number(1, 2) +
                           Number(bits, 2) + Number(compression, 4) + std::string(12, '\0') +
                           Number(colours, 4) + Number(0, 4);
        for (std::uint32_t i = 0; i < colours; ++i) strf += Number(0x111111 * i, 4);
        std::string movi;
        for (const std::string& frame : frames) movi += Chunk(frameId, frame);
        if (bundled) movi = Chunk("LIST", "rec " + movi);
        return Chunk(
            "RIFF", "AVI " +
                        Chunk("LIST", "hdrl" + Chunk("avih", avih) +
                                          Chunk("LIST", "strl" + Chunk("strh", strh) + Chunk("strf", strf))) +
                        Chunk("JUNK", "odd") + Chunk("LIST", "movi" + movi) + Chunk("idx1", ""));
    }
};

using Raw = std::initializer_list<int>;
std::string Bytes(Raw values) {
    std::string text;
    for (const int value : values) text += static_cast<char>(value);
    return text;
}

// The frames as rows of colour numbers, frames parted by a blank and rows by "/"; or the error's text.
std::string FramesOf(const std::string& bytes) {
    Animation animation;
    if (const Error error = ReadAvi(bytes, animation); !error.IsOk()) {
        EXPECT_TRUE(animation.frames.empty());
        return error.Description();
    }
    std::string seen;
    for (const auto& frame : animation.frames) {
        if (!seen.empty()) seen += ' ';
        for (std::size_t i = 0; i < frame.size(); ++i) {
            if (i > 0 && i % static_cast<std::size_t>(animation.width) == 0) seen += '/';
            EXPECT_EQ(frame[i] >> 24, 0xFFu);
            seen += static_cast<char>('0' + (frame[i] & 0xF));
        }
    }
    return seen;
}

Film ValidFilm() {
    Film film;
    // Runs from the bottom row up; then literal points, padded; then a step over to one point; then nothing
    // new.
    film.frames = {Bytes({4, 1, 0, 0, 4, 2, 0, 1}), Bytes({0, 3, 0, 1, 2, 0, 1, 1, 0, 1}),
                   Bytes({0, 2, 3, 1, 1, 0, 0, 1}), ""};
    return film;
}

TEST(AviReader, LaysRunsLiteralsAndStepsOverTheFrameBefore) {
    Film film = ValidFilm();
    EXPECT_EQ(FramesOf(film.Bytes()), "2222/1111 2222/0121 2220/0121 2220/0121");
    film.bundled = true;
    EXPECT_EQ(FramesOf(film.Bytes()), "2222/1111 2222/0121 2220/0121 2220/0121");
    Animation animation;
    ASSERT_TRUE(ReadAvi(film.Bytes(), animation).IsOk());
    EXPECT_EQ(animation.frameMilliseconds, 100);
    film.rate = 0;
    ASSERT_TRUE(ReadAvi(film.Bytes(), animation).IsOk());
    EXPECT_EQ(animation.frameMilliseconds, 50);
}

TEST(AviReader, ReadsTheOtherKindsOfFrames) {
    Film film;
    film.bits = 4;
    film.compression = 2;
    film.frames = {Bytes({4, 0x12, 0, 0, 0, 4, 0x21, 0x02, 0, 1})};
    EXPECT_EQ(FramesOf(film.Bytes()), "2102/1212");
    film = {.bits = 8, .compression = 0, .frames = {Bytes({0, 1, 2, 1, 2, 2, 2, 2})}, .frameId = "00db"};
    EXPECT_EQ(FramesOf(film.Bytes()), "2222/0121");
    film.height = static_cast<std::uint32_t>(-2);  // rows from the top down
    EXPECT_EQ(FramesOf(film.Bytes()), "0121/2222");
    film = {.width = 1,
            .height = 2,
            .bits = 24,
            .compression = 0,
            .colours = 0,
            .frames = {Bytes({5, 0, 0, 99, 6, 0, 0, 99})}};
    EXPECT_EQ(FramesOf(film.Bytes()), "6/5");
}

TEST(AviReader, RefusesWhatIsDamagedOrTooLarge) {
    const auto refused = [](auto change) {
        Film film = ValidFilm();
        change(film);
        return FramesOf(film.Bytes());
    };
    const std::string head = "Not a playable AVI file: ";
    EXPECT_EQ(refused([](Film& f) { f.width = 1025; }), head + "the size of its frames");
    EXPECT_EQ(refused([](Film& f) { f.height = 0x80000000; }), head + "the size of its frames");
    EXPECT_EQ(refused([](Film& f) { f.height = static_cast<std::uint32_t>(-2); }),
              head + "the kind of its frames");
    EXPECT_EQ(refused([](Film& f) { f.compression = 0x34363248; }), head + "the kind of its frames");
    EXPECT_EQ(refused([](Film& f) { f.colours = 257; }), head + "its colours");
    EXPECT_EQ(refused([](Film& f) { f.frames.clear(); }), head + "no frames");
    EXPECT_EQ(refused([](Film& f) { f.frameId = "00pc"; }), head + "a change of colours");
    EXPECT_EQ(refused([](Film& f) { f.frames.resize(1001); }), head + "too many frames");
    EXPECT_EQ(refused([](Film& f) {
                  f.width = f.height = 1024;
                  f.frames.resize(17);
                  f.frames[0] = Bytes({0, 1});
                  f.frames[1] = f.frames[2] = "";
              }),
              head + "too many frames");
    for (const Raw& frame :
         {Raw{5, 1, 0, 1}, Raw{0, 5, 1, 1, 1, 1, 1, 0, 0, 1}, Raw{0, 3, 1}, Raw{0, 2, 5, 0}, Raw{0, 2, 0},
          Raw{0, 0, 0, 0, 1, 1}, Raw{0, 0, 0, 0, 0, 0}, Raw{4, 1, 0}})
        EXPECT_EQ(refused([&](Film& f) { f.frames = {Bytes(frame)}; }), head + "a damaged frame");
    EXPECT_EQ(FramesOf("MZ"), head + "another kind of file");
    const std::string whole = ValidFilm().Bytes();
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(FramesOf(whole.substr(0, size)).find(head), std::string::npos) << size;
}

TEST(AviReader, SurvivesAnyDamage) {
    std::mt19937 random(20201);
    const std::string whole = ValidFilm().Bytes();
    for (int round = 0; round < 20'000; ++round) {
        std::string damaged = whole;
        for (unsigned changes = random() % 6 + 1; changes > 0; --changes) {
            const std::size_t at = random() % damaged.size();
            switch (random() % 4) {
                case 0:
                    damaged[at] = static_cast<char>(random());
                    break;
                case 1:
                    damaged.erase(at, random() % 8);
                    break;
                case 2:
                    damaged.insert(at, std::string(random() % 8, static_cast<char>(random())));
                    break;
                default:
                    damaged.replace(at, 4, Number(random() >> random() % 32, 4));
                    break;
            }
            if (damaged.empty()) break;
        }
        Animation animation;
        const Error error = ReadAvi(damaged, animation);
        ASSERT_EQ(error.IsOk(), !animation.frames.empty());
        for (const auto& frame : animation.frames)
            ASSERT_EQ(frame.size(), static_cast<std::size_t>(animation.width) * animation.height);
    }
}

}  // namespace
}  // namespace vantrel
