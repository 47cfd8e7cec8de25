#include "dupes/dupe_set_up.h"

#include <gtest/gtest.h>

#include "dupes/protected_folders.h"
#include "support/scripted_ports.h"

namespace vantrel {
namespace {

class DupeSetUpTest : public ::testing::Test {
  protected:
    Options options;
    clsDupeSettings settings{options};
    testing::ScriptedMessages messages;
};

TEST_F(DupeSetUpTest, TellsTheImportantThingsOnce) {
    TellImportantInformation(messages, settings);
    TellImportantInformation(messages, settings);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_TRUE(messages.Line(0).starts_with("IMPORTANT INFORMATION: PLEASE READ\r\n\r\nDo not run any"));
}

TEST_F(DupeSetUpTest, UncheckingWhatProtectsIsAskedAboutAndCheckingIsNot) {
    for (const IgnoreOption option : {IgnoreOption::SystemFiles, IgnoreOption::HiddenFiles,
                                      IgnoreOption::FilesInWindowsDir, IgnoreOption::ZeroByteFiles}) {
        const bool asks = option != IgnoreOption::ZeroByteFiles;
        ASSERT_TRUE(IsIgnored(settings, option));
        FlipIgnoreOption(messages, settings, option);
        EXPECT_EQ(asks, IsIgnored(settings, option));  // No is the default
        if (asks) {
            EXPECT_TRUE(
                messages.Line(0).ends_with("\r\nYou are strongly discouraged from unchecking this option.\r\n"
                                           "Do you still want to uncheck this option?"));
            messages.answers = {MessageAnswer::Yes};
            FlipIgnoreOption(messages, settings, option);
            EXPECT_FALSE(IsIgnored(settings, option));
        }
        EXPECT_EQ(asks ? 2U : 0U, messages.shown.size());
        FlipIgnoreOption(messages, settings, option);
        EXPECT_TRUE(IsIgnored(settings, option));
        EXPECT_EQ(asks ? 2U : 0U, messages.shown.size());
        messages.shown.clear();
    }
}

TEST_F(DupeSetUpTest, TheListHoldsAFolderOnce) {
    EXPECT_TRUE(AddSearchFolder(messages, settings, "/a/what?/"));
    EXPECT_TRUE(AddSearchFolder(messages, settings, "/b"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(AddSearchFolder(messages, settings, "/a/./what?"));
    EXPECT_EQ("Find Duplicates: The specified folder is already in the list.", messages.Line(0));
    messages.texts = {std::nullopt, "/b/", "/a/what?", "/c"};
    for (const bool changed : {false, false, false, true})
        EXPECT_EQ(changed, EditSearchFolder(messages, settings, 1));
    EXPECT_EQ((std::vector<std::string>{"/a/what?", "/c"}), settings.FolderPaths());
}

TEST_F(DupeSetUpTest, MovingElsewhereNeedsAFolder) {
    EXPECT_EQ(RemovalMethod::MoveToDupesFolder, settings.RemoveMethod());
    EXPECT_TRUE(ChooseRemoveMethod(messages, settings, RemovalMethod::Delete));
    messages.texts = {std::nullopt, "/there"};
    EXPECT_FALSE(ChooseRemoveMethod(messages, settings, RemovalMethod::MoveToOtherFolder));
    EXPECT_EQ("Change Remove Method: No folder was selected.  Remove method not changed.",
              messages.Line(messages.shown.size() - 1));
    EXPECT_EQ(RemovalMethod::Delete, settings.RemoveMethod());
    EXPECT_TRUE(ChooseRemoveMethod(messages, settings, RemovalMethod::MoveToOtherFolder));
    EXPECT_EQ("/there", settings.UserDefinedMoveFolderPath());
    EXPECT_EQ(RemovalMethod::MoveToOtherFolder, settings.RemoveMethod());
}

// The mark of a folder goes where the folder goes.
TEST_F(DupeSetUpTest, ProtectionBelongsToAFolderOfTheList) {
    settings.SetFolderPaths({"/a", "/b?"});
    for (const char* folder : {"/a", "/b?"}) SetProtectedFolder(settings, folder, true);
    SetProtectedFolder(settings, "/a", true);  // once is enough
    EXPECT_EQ((std::vector<std::string>{"/b?", "/a"}), settings.ProtectedFolders());
    MoveProtection(settings, "/a", "/c");
    MoveProtection(settings, "/nobody", "/d");
    RemoveSearchFolder(settings, 1);
    RemoveSearchFolder(settings, 7);
    EXPECT_EQ((std::vector<std::string>{"/a"}), settings.FolderPaths());
    EXPECT_EQ((std::vector<std::string>{"/c"}), settings.ProtectedFolders());
    EXPECT_FALSE(IsProtectedFolder(settings, "/b?"));
}

}  // namespace
}  // namespace vantrel
