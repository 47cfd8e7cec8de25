
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QJsonArray>

#include "program_support.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::Objects;
using testing::ProgramRun;
using testing::RunProgram;
using testing::TempFolder;

TEST(ConsoleDupes, TellsGroupsAsTextAndJson) {
    const TempFolder folder;
    folder.Write("a/same.txt", "hello", 1'600'000'000);
    folder.Write("b/SAME.txt", "hello", 1'600'000'000);
    folder.Write("b/other.txt", "world", 1'600'000'000);
    ASSERT_EQ(0, link((folder / "b/SAME.txt").c_str(), (folder / "b/zz \"link\"").c_str()));
    const ProgramRun text = RunProgram({"dupes", folder / "a", folder / "b/", "--contents", "yes"});
    EXPECT_EQ(1, text.status);
    EXPECT_EQ("", text.err);
    EXPECT_EQ("same.txt - (2 files)\n  " + folder / "a/same.txt" + "\n  " + folder / "b/SAME.txt" +
                  "\n    also " + folder / "b/zz \"link\"" +
                  "\n2 duplicates found in 1 groups.  (10 Bytes)\n",
              text.out);
    const ProgramRun json =
        RunProgram({"dupes", "--format=json", folder / "a", folder / "b", "--names", "no"});
    EXPECT_EQ(1, json.status);
    const auto objects = Objects(json.out);
    ASSERT_EQ(1U, objects.size());
    EXPECT_EQ("5", objects[0][QLatin1String("label")].toString().toStdString());
    EXPECT_EQ(5, objects[0][QLatin1String("size")].toInt());
    const QJsonArray files = objects[0][QLatin1String("files")].toArray();
    ASSERT_EQ(3, files.size());
    EXPECT_EQ("2020-09-13T12:26:40.0000000Z",
              files[0].toObject()[QLatin1String("modified")].toString().toStdString());
    EXPECT_EQ(folder / "b/zz \"link\"",
              files[1].toObject()[QLatin1String("otherNames")].toArray()[0].toString().toStdString());
    EXPECT_EQ(folder / "b/other.txt", files[2].toObject()[QLatin1String("path")].toString().toStdString());
}

TEST(ConsoleDupes, StatusTellsDuplicatesNoneAndTrouble) {
    const TempFolder folder;
    folder.Write("a/x", "1");
    folder.Write("a/sub/x", "2");
    EXPECT_EQ(0, RunProgram({"dupes", folder / "a", "--contents=yes"}).status);
    EXPECT_EQ(1, RunProgram({"dupes", folder / "a", "--jobs=1"}).status);
    EXPECT_EQ(0, RunProgram({"dupes", folder / "a", "--sub-folders", "no"}).status);
    EXPECT_EQ(0, RunProgram({"dupes", folder / "a", "--exclude", "y,X"}).status);
    const std::vector<std::vector<std::string>> wrong{{"dupes"},
                                                      {"dupes", folder / "gone"},
                                                      {"dupes", folder / "a", folder / "a/sub"},
                                                      {"dupes", folder / "a", "--names=no", "--sizes=no"}};
    for (const auto& arguments : wrong) {
        const ProgramRun run = RunProgram(arguments);
        EXPECT_EQ(2, run.status);
        EXPECT_EQ("", run.out);
        EXPECT_NE("", run.err);
    }
}

}  // namespace
}  // namespace vantrel
