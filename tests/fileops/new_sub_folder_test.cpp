#include "fileops/new_sub_folder.h"

#include <gtest/gtest.h>
#include <cerrno>

#include "support/faulty_system_calls.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

TEST(NewSubFolder, IsOneLevelAndTouchesNothingThatStandsThere) {
    testing::TempFolder folder;
    testing::FaultySystemCalls calls;
    const FileSystem files(calls);
    folder.MakeFolder("Taken");
    folder.Write("file", "kept");
    const auto make = [&](std::string_view name) { return MakeSubFolder(files, folder.Path(), name); };
    EXPECT_EQ(make("New Sub-Folder"), "");
    EXPECT_TRUE(folder.Exists("New Sub-Folder"));
    EXPECT_EQ(make("Taken"), "A folder named \"Taken\"already exists.");
    EXPECT_EQ(make("file"), "A file named \"file\" already exists.");
    EXPECT_EQ(folder.Read("file"), "kept");
    for (const char* place : {"../beside", "a/b", "/", ".", ".."})
        EXPECT_EQ(make(place), "The name of a folder cannot contain \"/\", and cannot be \".\" or \"..\".")
            << place;
    EXPECT_FALSE(folder.Exists("a"));
    calls.FailAll(testing::Call::Mkdir, EACCES);
    EXPECT_TRUE(make("other").starts_with("The folder \"other\" could not be created: Permission denied"))
        << make("other");
}

TEST(NewSubFolder, ANameHoldsWhatWasTyped) {
    testing::TempFolder folder;
    SystemCalls calls;
    for (const char* typed : {"a\\b", "~", "~x", "*", "-rf"}) {
        EXPECT_EQ(MakeSubFolder(FileSystem(calls), folder.Path(), NameFromUser(typed)), "");
        EXPECT_TRUE(folder.Exists(typed)) << typed;
    }
}

}  // namespace
}  // namespace vantrel
