#include "corpus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace vantrel::bench {

namespace {

constexpr std::array<const char*, 2> kSides = {"/left", "/right"};
constexpr std::int64_t kBaseTime = 1'600'000'000;

void MakeFolder(const std::string& path) {
    if (mkdir(path.c_str(), 0777) != 0) throw std::runtime_error("cannot make " + path);
}

void WriteFile(const std::string& path, std::string_view content, std::int64_t time) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    while (fd >= 0 && !content.empty()) {
        const ssize_t written = write(fd, content.data(), content.size());
        if (written <= 0) throw std::runtime_error("cannot write " + path);
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    const timespec stamps[2] = {{time, 0}, {time, 123'456'789}};
    if (fd < 0 || futimens(fd, stamps) != 0 || close(fd) != 0)
        throw std::runtime_error("cannot write " + path);
}

std::string Numbered(const char* format, std::size_t number) {
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

// Bytes that no file system and no comparison can shorten.
std::string RandomBytes(std::size_t size, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::vector<std::uint64_t> words((size + 7) / 8);
    for (std::uint64_t& word : words) word = random();
    return {reinterpret_cast<const char*>(words.data()), size};
}

void MakeSides(const std::string& folder) {
    MakeFolder(folder);
    for (const char* side : kSides) MakeFolder(folder + side);
}

// How the two sides of file `number` stand to each other.
struct Pair {
    std::array<bool, 2> exists{true, true};
    std::array<std::int64_t, 2> times{};
    bool otherBytes = false;
};

Pair PairOf(std::size_t number) {
    Pair pair;
    const auto time = kBaseTime + static_cast<std::int64_t>(number);
    pair.times = {time, time};
    switch (number % 100) {
        case 10:
            pair.times[0] += 60;
            pair.otherBytes = true;
            break;
        case 40:
            pair.exists[number / 100 % 2] = false;
            break;
        case 70:
            pair.otherBytes = true;
            break;
        default:
            break;
    }
    return pair;
}

void WritePair(const std::string& folder, const std::string& name, std::string content, std::size_t number) {
    const Pair pair = PairOf(number);
    for (std::size_t side = 0; side < 2; ++side) {
        if (side == 1 && pair.otherBytes && !content.empty()) content.back() ^= 1;
        if (pair.exists[side]) WriteFile(folder + kSides[side] + name, content, pair.times[side]);
    }
}

}  // namespace

void MakeFlatPair(const std::string& folder, std::size_t files) {
    MakeSides(folder);
    for (std::size_t number = 0; number < files; ++number)
        WritePair(folder, Numbered("/photo of the year %06zu.jpeg", number * 7919 % files), "x", number);
}

void MakeTreePair(const std::string& folder, std::size_t files, std::size_t folders) {
    constexpr std::size_t kFoldersBelow = 49;
    MakeSides(folder);
    std::vector<std::string> all;
    for (std::size_t number = 0; number < folders; ++number) {
        std::string name = Numbered("/project %04zu", number / (kFoldersBelow + 1));
        if (number % (kFoldersBelow + 1) != 0) name += Numbered("/part %04zu", number);
        for (const char* side : kSides) MakeFolder(folder + side + name);
        all.push_back(name);
    }
    std::mt19937 random(1);
    const std::string bytes = RandomBytes(std::size_t{1} << 20, 2);
    for (std::size_t number = 0; number < files; ++number) {
        // Mostly small, as sources and notes are.
        const std::size_t size = random() % (random() % 4 == 0 ? 16384 : 4096);
        const std::size_t offset = random() % (bytes.size() - size);
        WritePair(folder, all[number % folders] + Numbered("/document %06zu.txt", number),
                  bytes.substr(offset, size), number);
    }
}

void MakeDeepPair(const std::string& folder, std::size_t files) {
    constexpr std::size_t kPerFolder = 10, kBelow = 4, kLevels = 8;
    MakeSides(folder);
    std::vector<std::string> all = {""};
    for (std::size_t next = 0; all.size() * kPerFolder < files; ++next) {
        const auto level = std::count(all[next].begin(), all[next].end(), '/');
        if (level >= static_cast<std::ptrdiff_t>(kLevels)) continue;
        for (std::size_t below = 0; below < kBelow; ++below) {
            all.push_back(all[next] + Numbered("/level %zu", below));
            for (const char* side : kSides) MakeFolder(folder + side + all.back());
        }
    }
    std::mt19937 random(4);
    const std::string bytes = RandomBytes(std::size_t{1} << 20, 5);
    for (std::size_t number = 0; number < files; ++number) {
        const std::size_t size = random() % 4096, offset = random() % (bytes.size() - size);
        WritePair(folder, all[number % all.size()] + Numbered("/note %06zu.txt", number),
                  bytes.substr(offset, size), number);
    }
}

void MakeMixedPair(const std::string& folder, std::size_t files) {
    constexpr std::size_t kPerFolder = 50, kMebibyte = std::size_t{1} << 20;
    MakeSides(folder);
    std::mt19937 random(6);
    const std::string bytes = RandomBytes(50 * kMebibyte, 7);
    std::string name;
    for (std::size_t number = 0; number < files; ++number) {
        if (number % kPerFolder == 0) {
            name = Numbered("/album %04zu", number / kPerFolder);
            for (const char* side : kSides) MakeFolder(folder + side + name);
        }
        const bool large = number % 20 == 3;
        const std::size_t size = large ? kMebibyte * (1 + random() % 50) : random() % 16384;
        std::string content = bytes.substr(random() % (bytes.size() - size + 1), size);
        for (const char* side : kSides) {
            WriteFile(folder + side + name + Numbered("/track %06zu.flac", number), content, kBaseTime);
            if (large && number % 200 == 3) content.back() ^= 1;
        }
    }
}

void MakeLargePair(const std::string& folder, std::size_t files, std::size_t size) {
    MakeSides(folder);
    for (std::size_t number = 0; number < files; ++number) {
        const std::string bytes = RandomBytes(size, number + 3);
        for (const char* side : kSides)
            WriteFile(folder + side + Numbered("/image %02zu.iso", number), bytes, kBaseTime);
    }
}

}  // namespace vantrel::bench
