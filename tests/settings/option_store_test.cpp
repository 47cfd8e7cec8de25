#include "settings/option_store.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::TempFolder;

class OptionStoreTest : public ::testing::Test {
  protected:
    OptionEnvironment environment{
        "/opt/vantrel/vtdone.wav", "Sans Serif", 10, 28'800, 16'200, 28'800, 16'200};
    TempFolder folder;
    SystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"};

    OptionStore Store() const { return OptionStore(files, folders); }
    std::string Text() const { return folder.Read("vantrel.ini"); }
    Options Loaded() const {
        Options options;
        EXPECT_TRUE(Store().Load(environment, options).IsOk());
        return options;
    }
    Options LoadedFrom(const std::string& text) const {
        folder.Write("vantrel.ini", text);
        return Loaded();
    }
    static std::vector<std::string> Texts(const Options& options) {
        std::vector<std::string> texts;
        for (const OptionLine& line : OptionTable())
            texts.push_back(std::string(line.key) + "=" + OptionText(line, options));
        return texts;
    }
    // Values that differ from the default, as texts of the file.
    std::vector<std::string> OtherTexts(const OptionLine& line) const {
        if (line.kind == OptionKind::Boolean) return {line.defaultText == "True" ? "False" : "True"};
        if (line.kind == OptionKind::FontSize) return {"09", "50", "8.25"};
        if (std::holds_alternative<NumberField>(line.field)) return {"0000000007", "0000004321"};
        if (!std::holds_alternative<WordField>(line.field)) return {"/a b/\xC3\xA9.wav", "  \"quoted\" "};
        std::vector<std::string> words;
        for (const OptionWord& word : std::get<WordField>(line.field).words)
            if (word.text != line.defaultText) words.emplace_back(word.text);
        return words;
    }
};

TEST_F(OptionStoreTest, EveryKeySurvivesARestartAndNoOtherMoves) {
    const Options defaults = Loaded();
    EXPECT_EQ(Texts(DefaultOptions(environment)), Texts(defaults));
    for (const OptionLine& line : OptionTable()) {
        for (const std::string& text : OtherTexts(line)) {
            Options options = defaults;
            TakeOptionText(line, text, environment, options);
            ASSERT_EQ(text, OptionText(line, options)) << line.key;
            ASSERT_NE(Texts(defaults), Texts(options)) << line.key;
            ASSERT_TRUE(Store().File().Delete().IsOk());
            ASSERT_TRUE(Store().Save(options, SaveGeometry::Yes).IsOk());
            ASSERT_TRUE(Store().SaveFilters(options.includeFileTypes, options.excludeFileTypes).IsOk());
            if (line.key == "Height" || line.key == "Width") {
                // The centred place is part of what was saved, not of what is loaded.
                ASSERT_EQ(OptionText(line, options), OptionText(line, Loaded()));
                continue;
            }
            ASSERT_EQ(Texts(options), Texts(Loaded())) << line.key << " " << text;
        }
    }
}

TEST_F(OptionStoreTest, WritesTheFileAsItIsRead) {
    Options options = Loaded();
    options.top = -30;
    options.includeFileTypes = "*.cpp";
    options.fontSize = 9;
    ASSERT_TRUE(Store().Save(options, SaveGeometry::Yes).IsOk());
    const IniDocument document(Text());
    EXPECT_EQ("True", document.Get("Options", "SoundOn"));
    EXPECT_EQ("0000500000", document.Get("Options", "ChunkSize"));
    EXPECT_EQ("0000000000", document.Get("Form Dimensions", "Top"));
    EXPECT_EQ("0000000159", document.Get("ColumnWidths", "SourceColumnOne"));
    EXPECT_EQ(std::nullopt, document.Get("Options", "IncludeFileTypes"));
    EXPECT_EQ(9, Loaded().fontSize);

    folder.Write("vantrel.ini", "");
    ASSERT_TRUE(Store().Save(options, SaveGeometry::No).IsOk());
    EXPECT_EQ(std::nullopt, IniDocument(Text()).Get("Form Dimensions", "Width"));
    EXPECT_EQ("Normal", IniDocument(Text()).Get("Form Dimensions", "WindowState"));
}

TEST_F(OptionStoreTest, HandEditedTextsFallToTheirRules) {
    const Options options = LoadedFrom(
        "[options]\nSoundOn=TRUE\nStartSound=x\nSyncMethod=custom\nViewType=Most\nCompareType=sha\n"
        "ChunkSize=many\nNumSyncLogEntries=-5\nLeftFolderNewFilesAction=Erase\n"
        "LeftFolderOrphanFilesAction=Replace\nFontSize=51\nCoolbarStyle=\n"
        "[Form Dimensions]\nWindowState=Minimized\nHeight=1000\nTop=16201\nLeft=left\n"
        "[ColumnWidths]\nSourceColumnOne=1e3\nSourceColumnTwo=wide\n"
        "[Dupe Options]\nRemovalMethod=delete\nHashMethod=MD4\n");
    EXPECT_FALSE(options.soundOn);
    EXPECT_EQ("(none)", options.startSound);
    EXPECT_EQ(SyncMethod::ReplaceOlderCopyOrphans, options.syncMethod);
    EXPECT_EQ(ViewType::All, options.viewType);
    EXPECT_EQ(CompareMethod::SizeAndDate, options.compareType);
    EXPECT_EQ(500'000, options.chunkSize);
    EXPECT_EQ(20, options.numSyncLogEntries);
    EXPECT_EQ(SyncAction::Leave, options.leftFolderNewFilesAction);
    EXPECT_EQ(SyncAction::Leave, options.leftFolderOrphanFilesAction);
    EXPECT_EQ(8, options.fontSize);
    EXPECT_EQ(CoolbarStyle::Coolbar, options.coolbarStyle);
    EXPECT_EQ(WindowState::Normal, options.windowState);
    EXPECT_EQ((16'200 - 1'000) / 2, options.top);
    EXPECT_EQ(0, options.left);
    EXPECT_EQ(1'000, options.sourceColumnOne);
    EXPECT_EQ(72, options.sourceColumnTwo);
    EXPECT_EQ(RemovalMethod::MoveToDupesFolder, options.removalMethod);
    EXPECT_EQ(HashMethod::Crc16, options.hashMethod);
}

TEST_F(OptionStoreTest, TheLengthOfTheHistoryHasItsBounds) {
    const std::pair<const char*, std::int32_t> cases[] = {{"01", 1},         {"00", 20},        {"0.4", 20},
                                                          {"32000", 32'000}, {"99999", 32'000}, {"-1e9", 20}};
    for (const auto& [text, entries] : cases)
        EXPECT_EQ(entries,
                  LoadedFrom("[Options]\nNumSyncLogEntries=" + std::string(text) + "\n").numSyncLogEntries)
            << text;
}

TEST_F(OptionStoreTest, ANumberThatIsNoneLeavesWhatTheHolderHas) {
    folder.Write("vantrel.ini", "[Options]\nChunkSize=lots\n");
    Options options;
    options.chunkSize = 4'096;
    ASSERT_TRUE(Store().Load(environment, options).IsOk());
    EXPECT_EQ(4'096, options.chunkSize);
}

TEST_F(OptionStoreTest, KeepsWhatASecondProgramChanged) {
    OptionStore mine = Store(), theirs = Store();
    Options options = Loaded(), other = Loaded();
    ASSERT_TRUE(mine.Save(options, SaveGeometry::Yes).IsOk());
    ASSERT_TRUE(mine.Load(environment, options).IsOk());
    ASSERT_TRUE(theirs.Load(environment, other).IsOk());
    other.soundOn = false;
    other.chunkSize = 1'024;
    ASSERT_TRUE(theirs.Save(other, SaveGeometry::Yes).IsOk());
    ASSERT_TRUE(theirs.SaveFilters("*.h", "").IsOk());
    folder.Write("vantrel.ini", "; a note\r\n" + Text() + "[Extra]\r\nkey=value\r\n");

    options.chunkSize = 2'048;
    options.syncScrolling = false;
    for (int saves = 0; saves < 2; ++saves) ASSERT_TRUE(mine.Save(options, SaveGeometry::Yes).IsOk());
    const Options now = Loaded();
    EXPECT_FALSE(now.soundOn);
    EXPECT_EQ(2'048, now.chunkSize);
    EXPECT_FALSE(now.syncScrolling);
    EXPECT_EQ("*.h", now.includeFileTypes);
    EXPECT_THAT(Text(), ::testing::StartsWith("; a note\r\n[Options]"));
    EXPECT_THAT(Text(), ::testing::EndsWith("[Extra]\r\nkey=value\r\n"));

    // What only looks different is written as it should be.
    folder.Write("vantrel.ini", "[Options]\nSoundOn=FALSE\nChunkSize=2048\n");
    ASSERT_TRUE(mine.Load(environment, options).IsOk());
    ASSERT_TRUE(mine.Save(options, SaveGeometry::Yes).IsOk());
    EXPECT_THAT(Text(), ::testing::StartsWith("[Options]\nSoundOn=False\nChunkSize=0000002048\n"));
}

TEST_F(OptionStoreTest, RestoreDefaultsForgetsTheFile) {
    EXPECT_TRUE(Store().IsFirstRun());
    Options options = LoadedFrom("[Options]\nSoundOn=False\n[Source]\nDir1=/tmp/\n");
    EXPECT_FALSE(Store().IsFirstRun());
    ASSERT_TRUE(Store().RestoreDefaults(environment, options).IsOk());
    EXPECT_TRUE(options.soundOn);
    EXPECT_FALSE(folder.Exists("vantrel.ini"));
}

TEST_F(OptionStoreTest, AFileThatCannotBeReadGivesDefaultsAndIsNotOverwritten) {
    folder.MakeFolder("vantrel.ini");
    Options options;
    EXPECT_FALSE(Store().Load(environment, options).IsOk());
    EXPECT_EQ(Texts(DefaultOptions(environment)), Texts(options));
    EXPECT_FALSE(Store().Save(options, SaveGeometry::Yes).IsOk());

    std::filesystem::remove(folder / "vantrel.ini");
    folder.Write("vantrel.ini", "[Options]\nSoundOn=False\n");
    ASSERT_EQ(0, chmod((folder / "vantrel.ini").c_str(), 0444));
    EXPECT_EQ(ErrorNumber::PermissionDenied, Store().Save(options, SaveGeometry::Yes).Number());
    EXPECT_EQ("[Options]\nSoundOn=False\n", Text());

    ASSERT_EQ(0, chmod((folder / "vantrel.ini").c_str(), 0644));
    ASSERT_EQ(0, truncate((folder / "vantrel.ini").c_str(), SettingsFile::kMostBytes + 1));
    EXPECT_FALSE(Store().Load(environment, options).IsOk());
    EXPECT_FALSE(Store().Save(options, SaveGeometry::Yes).IsOk());
}

// Whatever call fails on the way, the file is wholly the old one or wholly the new one, and a save that says
// it went well did.
TEST_F(OptionStoreTest, ASaveThatFailsLeavesTheOldFile) {
    const std::string before = "; mine\n[Options]\nSoundOn=False\n";
    Options options = LoadedFrom(before);
    options.chunkSize = 77;
    ASSERT_TRUE(Store().Save(options, SaveGeometry::Yes).IsOk());
    const std::string after = Text();

    std::size_t tried = 0, refused = 0;
    for (const int code : {ENOSPC, EIO}) {
        for (std::size_t number = 1;; ++number, ++tried) {
            folder.Write("vantrel.ini", before);
            testing::FaultySystemCalls faulty;
            faulty.FailAt(number, code);
            const FileSystem failing(faulty);
            const Error error = OptionStore(failing, folders).Save(options, SaveGeometry::Yes);
            if (faulty.Count() < number) break;
            ASSERT_TRUE(Text() == before || Text() == after) << number << "\n" << Text();
            ASSERT_TRUE(!error.IsOk() || Text() == after) << number;
            refused += !error.IsOk();
        }
    }
    EXPECT_GT(refused, tried / 3);
}

}  // namespace
}  // namespace vantrel
