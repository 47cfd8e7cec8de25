#include <gmock/gmock.h>

#include <cstdlib>

#include "settings/cini_file.h"
#include "settings/cregistry.h"
#include "settings/path_history.h"
#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using testing::ScriptedMessages;
using testing::TempFolder;

class StoresTest : public ::testing::Test {
  protected:
    TempFolder folder;
    SystemCalls calls;
    FileSystem files{calls};
    ProgramFolders folders{folder.Path(), folder.Path(), folder.Path(), "vantrel"};
    ScriptedMessages messages;

    std::string LastLine() const {
        return messages.shown.empty() ? "" : messages.Line(messages.shown.size() - 1);
    }
};

TEST_F(StoresTest, BothStoresAskForNameSectionAndKeyInThisOrder) {
    CIniFile ini(files, folders, messages);
    CRegistry registry(files, folder / "config", messages);
    const auto check = [&](auto& store, const std::string& title, const std::function<void()>& setName) {
        EXPECT_EQ("", store.GetStringValue("x"));
        EXPECT_EQ(title + ": Name property must be set first", LastLine());
        store.SetStringValue("x");
        EXPECT_EQ(title + ": Name property must be set first", LastLine());
        setName();
        EXPECT_EQ("", store.GetStringValue("x"));
        EXPECT_EQ(title + ": Section property must be set first", LastLine());
        store.SetStringValue("x");
        EXPECT_EQ(title + ": Section property must be set first.", LastLine());
        store.Section = "S";
        EXPECT_EQ("", store.GetStringValue("x"));
        EXPECT_EQ(title + ": Key property must be set first", LastLine());
        store.SetStringValue("x");
        EXPECT_EQ(title + ": Key property must be set first.", LastLine());
        EXPECT_EQ(MessageIcon::Stop, messages.shown.back().icon);
        setName();
    };
    check(ini, "CIniFile Error", [&] { ini.SetName(ini.Name().empty() ? "a.ini" : "b.ini"); });
    EXPECT_EQ("CIniFile Error: This IniFile Object is already in use by " + folder.Path() +
                  "a.ini\r\nCreate a new object.",
              LastLine());
    EXPECT_EQ(MessageIcon::Warning, messages.shown.back().icon);
    EXPECT_EQ("a.ini", ini.Name());
    EXPECT_FALSE(folder.Exists("a.ini"));

    check(registry, "CRegistry Error",
          [&] { registry.SetAppName(registry.AppName().empty() ? "App" : "B"); });
    EXPECT_EQ("CRegistry Error: This Registry Object is already in use by App\r\nCreate a new object.",
              LastLine());
    EXPECT_EQ("App", registry.AppName());
}

TEST_F(StoresTest, IniFileGetsAndSets) {
    folder.Write("a.ini", "[S]\nn=-12x\nbig=99999\none=7\nempty=\n");
    CIniFile ini(files, folders, messages);
    ini.SetName("a.ini");
    ini.Section = "s";
    const auto number = [&](const char* key) { return ini.Key = key, ini.GetIntegerValue(5); };
    EXPECT_EQ(-12, number("N"));
    EXPECT_EQ(32'767, number("big"));
    EXPECT_EQ(7, number("one"));
    EXPECT_EQ(5, number("empty"));
    EXPECT_EQ(5, number("missing"));
    ini.Key = "one";
    EXPECT_EQ("default", ini.GetStringValue("default"));
    ini.SetStringValue("two");
    EXPECT_EQ("two", ini.GetStringValue("default"));
    EXPECT_EQ("[S]\nn=-12x\nbig=99999\none=two\nempty=\n", folder.Read("a.ini"));

    std::filesystem::remove(folder / "a.ini");
    folder.MakeFolder("a.ini");
    ini.SetStringValue("three");
    EXPECT_FALSE(ini.LastError().IsOk());
    EXPECT_EQ("default", ini.GetStringValue("default"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(StoresTest, RegistryIsAFileOfTheUser) {
    CRegistry registry(files, folder / "new/config", messages);
    registry.SetAppName("Some/App");
    registry.Section = "S";
    registry.Key = "k";
    EXPECT_EQ("default", registry.GetStringValue("default"));
    registry.SetStringValue("1");
    EXPECT_EQ("1", registry.GetStringValue("default"));
    EXPECT_TRUE(folder.Exists("new/config/Some_App.conf"));

    ASSERT_EQ(0, setenv("XDG_CONFIG_HOME", "/some/where/", 1));
    EXPECT_EQ("/some/where", UserConfigFolder());
    ASSERT_EQ(0, setenv("XDG_CONFIG_HOME", "relative", 1));
    ASSERT_EQ(0, setenv("HOME", "/home/me", 1));
    EXPECT_EQ("/home/me/.config", UserConfigFolder());
}

TEST_F(StoresTest, PathHistoryHoldsTwentyFoldersOnceEach) {
    const PathHistory history(files, folders);
    PathHistory::Lists lists;
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(lists).IsOk());
    EXPECT_THAT(lists, ElementsAre(ElementsAre(kNoFolderPrompt), ElementsAre(kNoFolderPrompt)));

    for (int i = 1; i <= 21; ++i)
        ASSERT_TRUE(history.AddPathsToIni("/left/" + std::to_string(i), "/", lists).IsOk());
    PathHistory::Lists stored;
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(stored).IsOk());
    EXPECT_EQ(lists, stored);
    ASSERT_EQ(20U, stored[0].size());
    EXPECT_EQ("/left/21/", stored[0].front());
    EXPECT_EQ("/left/2/", stored[0].back());
    EXPECT_THAT(stored[1], ElementsAre("/"));

    ASSERT_TRUE(history.AddPathsToIni("/LEFT/5/", "/" + std::string(300, 'x'), lists).IsOk());
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(stored).IsOk());
    EXPECT_EQ("/LEFT/5/", stored[0].front());
    EXPECT_EQ(20U, stored[0].size());
    EXPECT_EQ(1, std::count_if(stored[0].begin(), stored[0].end(),
                               [](const std::string& path) { return path.find("/5/") != path.npos; }));
    EXPECT_THAT(stored[1], ElementsAre("/" + std::string(300, 'x') + "/", "/"));
}

TEST_F(StoresTest, PathHistoryKnowsTheLastPartnerOfAFolder) {
    const PathHistory history(files, folders);
    PathHistory::Lists lists;
    EXPECT_EQ(history.PartnerOf(0, "/a"), std::nullopt);
    for (const auto& [left, right] :
         {std::pair("/a", "/b"), std::pair("/a", "/c"), std::pair("/d", "/b"), std::pair("/a", "/b")})
        ASSERT_TRUE(history.AddPathsToIni(left, right, lists).IsOk());
    EXPECT_EQ(history.PartnerOf(0, "/a/"), "/b/");
    EXPECT_EQ(history.PartnerOf(1, "/b"), "/a/");
    EXPECT_EQ(history.PartnerOf(1, "/c"), "/a/");
    EXPECT_EQ(history.PartnerOf(1, "/a"), std::nullopt);  // on that side it never was
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(history.AddPathsToIni("/many/" + std::to_string(i), "/x", lists).IsOk());
    EXPECT_EQ(history.PartnerOf(0, "/many/0"), "/x/");
    EXPECT_EQ(history.PartnerOf(0, "/a"), std::nullopt);
    EXPECT_EQ(history.PartnerOf(1, "/x"), "/many/19/");
}

TEST_F(StoresTest, PathHistoryPassesOverHolesAndThePrompt) {
    folder.Write("vantrel.ini",
                 "[Source]\nDir1=\nDir2=Press the folder icon with three dots -->\nDir20=/a/\nDir21=/no/\n");
    const PathHistory history(files, folders);
    PathHistory::Lists lists;
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(lists).IsOk());
    EXPECT_THAT(lists[0], ElementsAre("/a/"));
    ASSERT_TRUE(history.AddPathsToIni("/b", "/c", lists).IsOk());
    EXPECT_EQ(
        "[Source]\nDir1=/b/\nDir2=/a/\nDir20=\nDir21=/no/\n\n[Target]\nDir1=/c/\n\n[Extras]\n"
        "PairLeft1=/b/\nPairRight1=/c/\n",
        folder.Read("vantrel.ini"));
    ASSERT_TRUE(history.SaveFolderLists({}).IsOk());
    ASSERT_TRUE(history.PopulateDirComboBoxesFromIniFile(lists).IsOk());
    EXPECT_THAT(lists[0], ElementsAre(kNoFolderPrompt));
}

}  // namespace
}  // namespace vantrel
