#include "settings/sessions.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <cerrno>
#include <filesystem>
#include <random>

#include "settings/option_store.h"
#include "settings/session_file.h"
#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SessionsTest : public ::testing::Test {
  protected:
    SessionsTest() { Save(Options()); }
    // The settings file, as the program writes it.
    void Save(Options options) {
        options.fontSize = 10;
        ASSERT_TRUE(OptionStore(files, folders).Save(options, SaveGeometry::Yes).IsOk());
    }
    std::string Settings() const { return folder.Read("vantrel.ini"); }
    // The settings file with the text behind a key exchanged.
    std::string With(const std::string& key, const std::string& value) const {
        std::string text = Settings();
        const std::size_t at = text.find("\n" + key + "=") + key.size() + 2;
        return text.replace(at, text.find('\r', at) - at, value);
    }
    std::string Without(const std::string& key) const {
        std::string text = Settings();
        const std::size_t at = text.find("\n" + key + "=") + 1;
        return text.erase(at, text.find('\n', at) + 1 - at);
    }

    testing::TempFolder folder;
    testing::FaultySystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"};
    Sessions sessions{files, folders};
};

TEST_F(SessionsTest, ASessionIsTheSettingsFileByteForByteAndComesBackAsIt) {
    folder.Write("vantrel.ini", "; mine\r\n" + Settings() + "[Source]\r\nDir1=/a b/\r\n[Other]\r\nx=1\r\n");
    const std::string first = Settings();
    ASSERT_TRUE(sessions.Save(folder / "one.vts").IsOk());
    EXPECT_EQ(folder.Read("one.vts"), first);
    folder.Write("vantrel.ini", With("SyncMethod", "Custom"));
    const std::string second = Settings();
    ASSERT_TRUE(sessions.Load(folder / "one.vts").IsOk());
    EXPECT_EQ(Settings(), first);
    // What was in force is a session of its own, and going back to it keeps what was left.
    EXPECT_EQ(folder.Read("vantrel-previous.vts"), second);
    ASSERT_TRUE(sessions.Load(sessions.PreviousFile()).IsOk());
    EXPECT_EQ(Settings(), second);
    EXPECT_EQ(folder.Read("vantrel-previous.vts"), first);
}

// Whatever options a person can have, their session can be loaded.
TEST_F(SessionsTest, EveryValueThatTheProgramWritesIsTakenBack) {
    for (std::mt19937::result_type seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        Options options;
        for (const OptionLine& line : OptionTable()) {
            std::string text = std::to_string(random() % 60);
            if (line.kind == OptionKind::Boolean) text = random() % 2 ? "True" : "False";
            if (line.kind == OptionKind::Text) text = random() % 2 ? "" : " a\n\"b\"=[c]\xC3\xA9 ";
            if (const auto* words = std::get_if<WordField>(&line.field))
                text = words->words[random() % words->words.size()].text;
            TakeOptionText(line, text, {}, options);
        }
        Save(options);
        EXPECT_EQ(WhyNoSession(Settings()), "") << "seed " << seed;
    }
}

TEST_F(SessionsTest, WhatIsNoSessionIsRefusedBeforeAnythingIsReplaced) {
    const std::string good = Settings();
    const std::pair<std::string, std::string> cases[] = {
        {"", "no settings of this program"},
        {"[Window]\nwidth=10\n[Options]\nTheme=dark\n", "no settings of this program"},
        {good + '\0', "something else than text"},
        {"\x89PNG\r\n\x1A\n" + good, "something else than text"},
        {good + "[X]\r\na=\xC3\r\n", "something else than text"},
        {good + std::string(std::size_t{10} << 20, ' '), "too large"},
        {With("ChunkSize", "-5"), "\"ChunkSize\" cannot be \"-5\""},
        {With("NumSyncLogEntries", "99999999999999"), "\"NumSyncLogEntries\" cannot be"},
        {With("CompareType", "Quickly"), "\"CompareType\" cannot be \"Quickly\""},
        {With("SoundOn", "TRUE"), "\"SoundOn\" cannot be \"TRUE\""},
        {With("Height", "tall"), "\"Height\" cannot be \"tall\""},
        {With("FontSize", "400"), "\"FontSize\" cannot be \"400\""},
        {With("Jobs", std::string(2000, '9')), "\"Jobs\" cannot be \"99"},
        {Without("SyncMethod"), "nothing for \"SyncMethod\""},
        {good.substr(0, good.find("[Dupe Options]")), "is damaged: there is nothing for"},
    };
    for (const auto& [bytes, why] : cases) {
        folder.Write("bad.vts", bytes);
        const Error error = sessions.Load(folder / "bad.vts");
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidPropertyValue) << why;
        EXPECT_THAT(DescribeSessionError(folder / "bad.vts", error), HasSubstr(why));
        EXPECT_LT(error.Description().size(), 200U);
        EXPECT_EQ(Settings(), good);
    }
    ASSERT_EQ(mkfifo((folder / "pipe.vts").c_str(), 0600), 0);
    for (const char* name : {"pipe.vts", "gone.vts", ""}) {
        const Error error = sessions.Load(folder / name);
        EXPECT_FALSE(error.IsOk()) << name;
        EXPECT_THAT(DescribeSessionError(name, error), HasSubstr("could not be read"));
    }
    EXPECT_EQ(Settings(), good);
    EXPECT_FALSE(folder.Exists("vantrel-previous.vts"));
    // Filters, the place of the window and what came later may be missing.
    for (const char* key : {"Height", "Top", "CheckBeforeRemoval"}) EXPECT_EQ(WhyNoSession(Without(key)), "");
}

// A session cut short anywhere is refused, or has lost nothing but the end of the last value of all.
TEST_F(SessionsTest, ACutSessionLosesNoOption) {
    const std::string good = Settings();
    const std::size_t extras = good.find("[Extras]");
    ASSERT_NE(extras, std::string::npos);
    for (std::size_t length = 0; length + 2 < extras; length += 7)
        if (WhyNoSession(good.substr(0, length)).empty()) {
            EXPECT_GT(length, good.rfind("HashMethod=", extras)) << length;
        }
}

TEST_F(SessionsTest, AFailureAtAnyCallLeavesOldOrNewSettingsAndTheSessionWhole) {
    ASSERT_TRUE(sessions.Save(folder / "a.vts").IsOk());
    const std::string session = folder.Read("a.vts");
    folder.Write("vantrel.ini", With("SyncMethod", "Custom"));
    const std::string before = Settings();
    bool loaded = false;
    for (std::size_t call = 1; !loaded; ++call) {
        folder.Write("vantrel.ini", before);
        calls.ResetCount();
        calls.FailAt(call, ENOSPC);
        loaded = sessions.Load(folder / "a.vts").IsOk() && calls.Count() < call;
        calls.ClearFaults();
        const std::string now = Settings();
        EXPECT_TRUE(now == before || now == session) << call;
        if (now == session) {
            EXPECT_EQ(folder.Read("vantrel-previous.vts"), before) << call;
        }
        EXPECT_EQ(folder.Read("a.vts"), session);
        ASSERT_LT(call, 200U);
    }
    bool saved = false;
    for (std::size_t call = 1; !saved; ++call) {
        folder.Write("b.vts", "old");
        calls.ResetCount();
        calls.FailAt(call, EIO);
        saved = sessions.Save(folder / "b.vts").IsOk() && calls.Count() < call;
        calls.ClearFaults();
        EXPECT_TRUE(folder.Read("b.vts") == "old" || folder.Read("b.vts") == Settings()) << call;
        ASSERT_LT(call, 200U);
    }
}

// The other one saves in the middle: at each call of this one, wherever that is.
TEST_F(SessionsTest, TwoProgramsThatSaveAtOnceLeaveOneWholeSession) {
    testing::TempFolder other;
    other.Write("vantrel.ini", With("SyncMethod", "Custom"));
    SystemCalls theirCalls;
    const FileSystem theirFiles(theirCalls);
    const ProgramFolders theirFolders{other.Path(), other.Path(), other.Path(), "vantrel"};
    const Sessions theirs(theirFiles, theirFolders);
    std::size_t at = 1, count = 0;
    for (bool reached = true; reached; ++at) {
        reached = false;
        count = 0;
        calls.before = [&](const testing::FaultySystemCalls::Record&) {
            if (++count != at) return;
            reached = true;
            EXPECT_TRUE(theirs.Save(folder / "shared.vts").IsOk());
        };
        EXPECT_TRUE(sessions.Save(folder / "shared.vts").IsOk());
        calls.before = nullptr;
        const std::string shared = folder.Read("shared.vts");
        EXPECT_TRUE(shared == Settings() || shared == other.Read("vantrel.ini")) << at;
    }
    EXPECT_GT(at, 4U);
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_TRUE(entry.path().filename() == "vantrel.ini" || entry.path().filename() == "shared.vts")
            << entry.path();
}

TEST_F(SessionsTest, RecentOnesAreHeldOnceTheLastFirst) {
    EXPECT_THAT(sessions.Recent(), ElementsAre());
    for (const char* path : {"/a.vts", "/b.vts", "/c.vts", "/a.vts", "/d.vts", "/e.vts", "/f.vts"})
        ASSERT_TRUE(sessions.AddRecent(path).IsOk());
    EXPECT_THAT(sessions.Recent(), ElementsAre("/f.vts", "/e.vts", "/d.vts", "/a.vts", "/c.vts"));
    ASSERT_TRUE(sessions.Save(folder / "one.vts").IsOk());
    ASSERT_TRUE(sessions.Load(folder / "one.vts").IsOk());
    EXPECT_EQ(sessions.Recent().size(), 5U) << "a session exchanges the settings, not its own list";
}

}  // namespace
}  // namespace vantrel
