#include "text_pairs.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <stdexcept>
#include <vector>

namespace vantrel::bench {

namespace {

class LineMaker {
  public:
    LineMaker(LineKind kind, unsigned seed) : kind_(kind), random_(seed) {}

    std::string Next() {
        switch (kind_) {
            case LineKind::NearlyUnique:
                return Unique();
            case LineKind::SourceCode:
                return Code();
            case LineKind::Log:
                return Log();
            case LineKind::Words:
                return "word" + std::to_string(Below(50)) + "\n";
            case LineKind::Numbers:
                break;
        }
        return std::to_string(number_++) + "\n";
    }
    std::size_t Below(std::size_t limit) { return random_() % limit; }

  private:
    std::string Unique() {
        std::string line;
        while (line.size() < 110) line += std::to_string(random_()) + " ";
        return line + "\n";
    }
    std::string Code() {
        static constexpr std::array kCommon = {
            "}\n",      "\n",          "    }\n",      "{\n",      "    return 0;\n",
            "  else\n", "        }\n", "    break;\n", "#endif\n", "public:\n"};
        if (Below(100) < 45) return kCommon[Below(kCommon.size())];
        std::string line(4 * Below(5), ' ');
        for (std::size_t words = 2 + Below(8); words > 0; --words)
            line += "name" + std::to_string(Below(3'000)) + (Below(2) == 0 ? "(" : " ");
        return line + ";\n";
    }
    std::string Log() {
        time_ += Below(3);
        char stamp[64];
        std::snprintf(stamp, sizeof stamp, "2026-01-%02zu %02zu:%02zu:%02zu ", 1 + time_ / 86'400 % 28,
                      time_ / 3'600 % 24, time_ / 60 % 60, time_ % 60);
        return stamp + std::string("INFO worker-") + std::to_string(Below(8)) + ": message " +
               std::to_string(Below(40)) + " done\n";
    }

    LineKind kind_;
    std::mt19937 random_;
    std::size_t number_ = 0;
    std::size_t time_ = 0;  // seconds
};

void Write(const std::string& folder, const std::string& name, const std::vector<std::string>& lines) {
    std::filesystem::create_directories(folder);
    std::ofstream file(folder + "/" + name, std::ios::binary);
    for (const std::string& line : lines) file << line;
    if (!file.flush()) throw std::runtime_error("cannot write " + folder + "/" + name);
}

std::vector<std::string> Lines(LineKind kind, std::size_t count, unsigned seed) {
    LineMaker maker(kind, seed);
    std::vector<std::string> lines(count);
    for (std::string& line : lines) line = maker.Next();
    return lines;
}

std::string OutputOf(const std::string& command) {
    std::string text;
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return text;
    std::array<char, 65'536> buffer{};
    for (std::size_t got = 0; (got = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        text.append(buffer.data(), got);
    pclose(pipe);
    return text;
}

}  // namespace

void MakeEditedPair(const std::string& folder, LineKind kind, std::size_t lines, unsigned changed) {
    const std::vector<std::string> left = Lines(kind, lines, 1);
    LineMaker other(kind, 2);
    std::vector<std::string> right;
    for (const std::string& line : left) {
        if (other.Below(1'000) >= changed) {
            right.push_back(line);
            continue;
        }
        const std::size_t how = other.Below(4);
        if (how == 1) right.push_back(line);
        if (how != 0) right.push_back(other.Next());
    }
    Write(folder, "left", left);
    Write(folder, "right", right);
}

void MakeUnlikePair(const std::string& folder, LineKind kind, std::size_t lines) {
    Write(folder, "left", Lines(kind, lines, 1));
    Write(folder, "right", Lines(kind, lines, 2));
}

void MakeShuffledPair(const std::string& folder, std::size_t lines) {
    std::vector<std::string> text = Lines(LineKind::Numbers, lines, 1);
    Write(folder, "left", text);
    std::shuffle(text.begin(), text.end(), std::mt19937(3));
    Write(folder, "right", text);
}

void MakeHugePair(const std::string& folder, std::size_t bytes, std::size_t changes) {
    std::filesystem::create_directories(folder);
    std::ofstream left(folder + "/left", std::ios::binary);
    std::ofstream right(folder + "/right", std::ios::binary);
    LineMaker maker(LineKind::SourceCode, 1);
    std::size_t nextChange = bytes / changes / 2;
    std::string line;
    std::string block;
    for (std::size_t written = 0; written < bytes; written += line.size()) {
        line = maker.Next();
        left << line;
        if (written >= nextChange) {
            nextChange += bytes / changes;
            right << "changed " << written << "\n";
        } else {
            right << line;
        }
    }
    if (!left.flush() || !right.flush()) throw std::runtime_error("cannot write the huge pair");
}

std::size_t MakeHistoryPairs(const std::string& folder, std::size_t most) {
    // One line for each change of a file: ":100644 100644 OLD NEW M\tPATH".
    const std::string changes =
        OutputOf("git log --no-merges --no-renames --diff-filter=M --raw --no-abbrev --format= 2>/dev/null");
    std::size_t pairs = 0;
    for (std::size_t at = 0; at < changes.size() && pairs < most;) {
        const std::size_t end = std::min(changes.find('\n', at), changes.size());
        const std::string line = changes.substr(at, end - at);
        at = end + 1;
        constexpr std::size_t kModes = 15;
        constexpr std::size_t kName = 40;
        if (line.size() < kModes + 2 * kName + 1) continue;
        const std::string pair = folder + "/" + std::to_string(++pairs);
        std::filesystem::create_directories(pair);
        std::ofstream(pair + "/left", std::ios::binary)
            << OutputOf("git cat-file blob " + line.substr(kModes, kName));
        std::ofstream(pair + "/right", std::ios::binary)
            << OutputOf("git cat-file blob " + line.substr(kModes + kName + 1, kName));
    }
    return pairs;
}

}  // namespace vantrel::bench
