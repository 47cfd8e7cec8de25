#include "views/file_type_list.h"

#include <gmock/gmock.h>

namespace vantrel {
namespace {

using ::testing::ElementsAre;

void AddFile(ResultList& rows, const std::string& name, RowKind kind = RowKind::File) {
    ResultRow row;
    row.text = row.realName = name;
    row.kind = kind;
    rows.AddCopy(row);
}

TEST(FileTypeList, HasOneEntryForEachTypeOfFilesThatAreThere) {
    ResultList rows;
    for (const char* name :
         {"b.txt", "gone.GIF", "a.TXT", "README", ".hidden", "x.gif", "odd.(1,2]#", "no.type", "lost.doc"})
        AddFile(rows, name);
    AddFile(rows, "Folder.dir", RowKind::Folder);
    rows.AddPlaceholder();
    std::vector<std::string> described;
    const FileTypeSources sources{
        .exists =
            [](const ResultRow& row) { return row.realName != "gone.GIF" && row.realName != "lost.doc"; },
        .describe =
            [&described](std::string_view name) {
                described.emplace_back(name);
                return name.ends_with("type") ? std::string() : name == "b.txt" ? "plain text" : "An image";
            }};
    EXPECT_THAT(FileTypeEntries(rows, sources),
                ElementsAre("All Files  (*)", "An image  (*.?1?2\?\?)", "An image  (*.gif)",
                            "plain text  (*.txt)", "User-defined..."));
    EXPECT_THAT(described, ElementsAre("b.txt", "x.gif", "odd.(1,2]#", "no.type"));

    ResultList sentinel;
    sentinel.SetToSentinel();
    EXPECT_THAT(FileTypeEntries(sentinel, sources), ElementsAre("All Files  (*)", "User-defined..."));
}

TEST(FileTypeList, PatternsAreReadBackFromTheLastBrackets) {
    EXPECT_EQ(ExtractTypes("Image (raster)  (*.gif)"), "*.gif");
    EXPECT_EQ(ExtractTypes("All Files  (*)"), "*");
    EXPECT_EQ(ExtractTypes("User-defined..."), "");
    EXPECT_EQ(ExtractTypes(""), "");
    EXPECT_EQ(ExtractTypes(")("), "");
    EXPECT_EQ(ExtractTypes("a (b"), "b");

    EXPECT_EQ(ProposedPatterns("User-defined..."), "*.bmp, *.jpg, *.gif");
    const std::string entry = UserDefinedEntry("*(1).txt, b*");
    EXPECT_EQ(entry, "User-defined...  (*?1?.txt, b*)");
    EXPECT_TRUE(IsUserDefined(entry));
    EXPECT_EQ(ProposedPatterns(entry), "*?1?.txt, b*");
}

}  // namespace
}  // namespace vantrel
