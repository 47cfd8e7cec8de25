#include "filetools/diff_output.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "script_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::LengthOf;
using testing::RandomTexts;
using testing::TempFolder;
using testing::Views;

std::string Quoted(const std::string& path) {
    return "'" + path + "'";
}

struct Scripts {
    std::string normal, unified;
};

Scripts ScriptsOf(const std::vector<Hunk>& hunks, const PerSide<std::string>& texts) {
    Scripts scripts;
    WriteNormal(hunks, Views(texts), [&](std::string_view piece) { scripts.normal += piece; });
    WriteUnified(hunks, Views(texts), {{"left", "right"}},
                 [&](std::string_view piece) { scripts.unified += piece; });
    return scripts;
}

TEST(DiffOutput, PatchMakesOneFileOfTheOther) {
    const TempFolder folder;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        const std::vector<Hunk> hunks = DiffLines(Views(texts), {}, {});
        if (hunks.empty()) continue;
        const Scripts scripts = ScriptsOf(hunks, texts);
        for (const std::string& script : {scripts.normal, scripts.unified}) {
            folder.Write("left", texts[Side::Left]);
            folder.Write("made", "");
            folder.Write("script", script);
            const std::string command = "patch --binary -s -o " + Quoted(folder / "made") + " " +
                                        Quoted(folder / "left") + " " + Quoted(folder / "script") + " > " +
                                        Quoted(folder / "said") + " 2>&1";
            ASSERT_EQ(0, std::system(command.c_str())) << folder.Read("said") << script;
            // A file that ends up empty is removed.
            ASSERT_EQ(texts[Side::Right], folder.Exists("made") ? folder.Read("made") : "") << script;
        }
    }
}

TEST(DiffOutput, NoLongerThanThatOfDiff) {
    const TempFolder folder;
    for (unsigned seed = 100; seed <= 140; ++seed) {
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        folder.Write("left", texts[Side::Left]);
        folder.Write("right", texts[Side::Right]);
        const std::string command = "diff -d --text " + Quoted(folder / "left") + " " +
                                    Quoted(folder / "right") + " > " + Quoted(folder / "script");
        const std::vector<Hunk> hunks = DiffLines(Views(texts), {}, {});
        ASSERT_EQ(hunks.empty(), std::system(command.c_str()) == 0);
        std::size_t ofDiff = 0;
        const std::string script = folder.Read("script");
        for (const std::string_view line : testing::LinesOf(script))
            ofDiff += line[0] == '<' || line[0] == '>' ? 1 : 0;
        EXPECT_LE(LengthOf(hunks), ofDiff) << "seed " << seed;
    }
}

// Line by line it is the same text, in whatever order the lines are asked for.
TEST(DiffOutput, LinesAreThoseOfTheWholeScript) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const PerSide<std::string> texts = RandomTexts(seed).Next();
        const std::vector<Hunk> hunks = DiffLines(Views(texts), {}, {});
        const HunkOutput output(hunks, Views(texts));
        std::string forth;
        std::vector<std::string> lines(static_cast<std::size_t>(output.OutputLineCount()));
        for (std::int32_t index = 0; index < output.OutputLineCount(); ++index)
            forth += lines[static_cast<std::size_t>(index)] = output.OutputLine(index) + "\n";
        EXPECT_EQ(ScriptsOf(hunks, texts).normal, forth);
        for (std::int32_t index = output.OutputLineCount(); index-- > 0;)
            EXPECT_EQ(lines[static_cast<std::size_t>(index)], output.OutputLine(index) + "\n");
        // The quick way to the headers finds those that a look at every line finds.
        for (std::int32_t index = 0; index <= output.OutputLineCount(); ++index)
            EXPECT_EQ(output.DiffOutput::NextHeader(index), output.NextHeader(index));
    }
}

TEST(DiffOutput, NamesOfAUnifiedScriptCannotBeMisread) {
    const FileTime time = FileTime::FromUnix(1'600'000'000, 123'456'700);
    EXPECT_EQ("a/b.txt\t2020-09-13 12:26:40.123456700 +0000", UnifiedName("a/b.txt", time));
    EXPECT_TRUE(UnifiedName("a b", time).starts_with("\"a b\"\t"));
    EXPECT_TRUE(UnifiedName("a\U0010F80Ab\"", time).starts_with("\"a\\012b\\\"\"\t"));
}

}  // namespace
}  // namespace vantrel
