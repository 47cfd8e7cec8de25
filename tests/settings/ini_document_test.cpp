#include "settings/ini_document.h"

#include <gmock/gmock.h>

#include <map>
#include <random>
#include <sstream>

namespace vantrel {
namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::string Lower(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\v\f");
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(" \t\r\v\f") + 1 - first);
}

// A reader written another way: the first value of every key, by section and key in small letters.
std::map<std::pair<std::string, std::string>, std::string> AllKeys(std::string text) {
    std::map<std::pair<std::string, std::string>, std::string> keys;
    if (text.rfind("\xEF\xBB\xBF", 0) == 0) text.erase(0, 3);
    std::string section;
    bool inSection = false;
    for (const std::string& each : Lines(text)) {
        const std::string line = Trimmed(each);
        if (line.empty() || line[0] == ';') continue;
        if (line[0] == '[') {
            if (line.rfind(']') == std::string::npos) continue;
            section = Lower(Trimmed(line.substr(1, line.rfind(']') - 1)));
            inSection = true;
        } else if (const std::size_t equals = line.find('='); inSection && equals != std::string::npos) {
            std::string value = Trimmed(line.substr(equals + 1));
            if (value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\''))
                value = value.substr(1, value.size() - 2);
            keys.try_emplace({section, Lower(Trimmed(line.substr(0, equals)))}, value);
        }
    }
    return keys;
}

TEST(IniDocument, ReadsAsTheProfileCallsDo) {
    const IniDocument document(
        "\xEF\xBB\xBF; heading\r\nlost=no section\r\n[ Options ]\r\n  SoundOn =  \"True\" \r\nA='x\r\n"
        "B=\"\"\r\n;C=3\r\nnonsense\r\nE=a=b\r\n[Other\r\n[options]\r\nsoundon=False\r\nF=late\r\n[End]\nG="
        "1");
    EXPECT_EQ("True", document.Get("OPTIONS", "soundON"));
    EXPECT_EQ("'x", document.Get("Options", "A"));
    EXPECT_EQ("", document.Get("Options", "B"));
    EXPECT_EQ(std::nullopt, document.Get("Options", "C"));
    EXPECT_EQ("a=b", document.Get("Options", "E"));
    EXPECT_EQ("late", document.Get("Options", "F"));
    EXPECT_EQ("1", document.Get("End", "G"));
    EXPECT_EQ(std::nullopt, document.Get("", "lost"));
}

TEST(IniDocument, KeepsWhatItDoesNotChange) {
    IniDocument document("; mine\n[A]\nx = 1 \n\n; about B\n[B]\ny=2");
    const std::vector<IniChange> changes = {
        {"a", "X", "old"}, {"A", "z", " 3 "}, {"C", "w", "\"q\""}, {"B", "v", ""}, {"a", "x", "new"}};
    EXPECT_TRUE(document.Apply(changes));
    EXPECT_EQ("; mine\n[A]\nx = new \nz=\" 3 \"\n\n; about B\n[B]\ny=2\nv=\n\n[C]\nw=\"\"q\"\"\n",
              document.Text());
    EXPECT_EQ(" 3 ", document.Get("A", "z"));
    EXPECT_EQ("\"q\"", document.Get("C", "w"));
    EXPECT_FALSE(document.Apply(changes));

    IniDocument empty;
    EXPECT_TRUE(empty.Apply(std::vector<IniChange>{{"S", "k", "a\r\nb"}}));
    EXPECT_EQ("[S]\r\nk=a  b\r\n", empty.Text());
}

TEST(IniDocument, StandsRubbish) {
    const std::vector<std::string> scraps = {
        "[",     "]",     "=", ";",  "\n",    "\r\n", "\"",           "'",    " ",
        "\t",    "a",     "A", "bC", "[a]\n", "[B]",  "\xEF\xBB\xBF", "\xFF", std::string(1, '\0'),
        "a=1\n", "B= x\n"};
    std::mt19937 random(20'200'913);
    const auto pick = [&random](std::size_t count) { return random() % count; };
    for (int round = 0; round < 3'000; ++round) {
        std::string text;
        for (std::size_t i = pick(60); i > 0; --i) text += scraps[pick(scraps.size())];
        IniDocument document(text);
        ASSERT_EQ(text, document.Text());
        auto keys = AllKeys(text);
        for (const auto& [name, value] : keys)
            ASSERT_EQ(value, document.Get(name.first, name.second)) << text;

        const std::string section = pick(2) ? "a" : "new";
        const std::string key = pick(2) ? "A" : "bc";
        const std::string value = scraps[pick(scraps.size() - 3)] + "v" + scraps[pick(9)];
        const bool changed = document.Apply(std::vector<IniChange>{{section, key, value}});
        std::string expected = value;
        for (char& c : expected) c = c == '\r' || c == '\n' ? ' ' : c;
        ASSERT_EQ(expected, document.Get(section, key)) << text;
        ASSERT_TRUE(changed || text == document.Text());
        keys[{section, Lower(key)}] = expected;
        ASSERT_EQ(keys, AllKeys(document.Text())) << text;

        // What was taken out lies within one line; all before and behind it is there still.
        const std::string& now = document.Text();
        const auto [head, unused] = std::mismatch(text.begin(), text.end(), now.begin(), now.end());
        const auto tail = std::mismatch(text.rbegin(), std::make_reverse_iterator(head), now.rbegin(),
                                        now.rend() - (head - text.begin()));
        ASSERT_EQ(tail.first.base(), std::find(head, tail.first.base(), '\n')) << text;
    }
}

TEST(IniDocument, ReadsTenMegabytesInOnePass) {
    std::string text;
    for (int i = 0; text.size() < (10U << 20); ++i) text += "[s" + std::to_string(i % 7) + "]\nk=1\nj=\n";
    IniDocument document(std::move(text));
    std::vector<IniChange> changes;
    for (int i = 0; i < 100; ++i) changes.push_back({"s3", "new" + std::to_string(i), "v"});
    EXPECT_TRUE(document.Apply(changes));
    EXPECT_EQ("v", document.Get("S3", "NEW99"));
}

TEST(ProfileText, KeepsTheRulesOfTheBuffer) {
    EXPECT_EQ("default", ProfileText(std::nullopt, "default"));
    EXPECT_EQ("default", ProfileText("x", "default"));
    EXPECT_EQ("default", ProfileText("\xC3\xA9", "default"));
    EXPECT_EQ("xy", ProfileText("xy", "default"));
    EXPECT_EQ(std::string(255, 'a'), ProfileText(std::string(300, 'a'), ""));
    std::string accents;
    for (int i = 0; i < 300; ++i) accents += "\xC3\xA9";
    EXPECT_EQ(accents.substr(0, 510), ProfileText(accents, ""));
}

}  // namespace
}  // namespace vantrel
