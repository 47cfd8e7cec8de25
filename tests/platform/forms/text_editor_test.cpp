#include "platform/forms/text_editor.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace vantrel {
namespace {

using testing::TempFolder;

class TextEditorTest : public ::testing::Test {
  protected:
    void Program(const std::string& name, const std::string& exec, const std::string& more = {}) {
        folder.Write("data/" + name, "[Desktop Entry]\nName=x\nExec=" + exec + "\n" + more +
                                         "[Desktop Action new]\nExec=other\n");
    }
    QStringList Command(const std::string& path = "/tmp/a b.txt") {
        const auto in = [&](const char* name) { return QString::fromStdString(folder / name); };
        return TextEditorCommand(
            {.settings = {in("config")}, .applications = {in("data")}, .desktops = {QStringLiteral("kde")}},
            path);
    }
    TempFolder folder;
};

TEST_F(TextEditorTest, IsTheOneThatIsSetThenTheFirstThatCan) {
    EXPECT_TRUE(Command().isEmpty());
    Program("cached.desktop", "cat %U");
    folder.Write("data/mimeinfo.cache", "[MIME Cache]\ntext/html=no.desktop;\ntext/plain=cached.desktop;\n");
    EXPECT_EQ(Command().last(), QStringLiteral("file:///tmp/a%20b.txt"));
    Program("sub/set.desktop", "env \"A=b c\" cat --new %f %i");
    folder.Write("config/mimeapps.list",
                 "[Default Applications]\ntext/plain=gone.desktop;sub-set.desktop;\n[Other]\ntext/plain=x\n");
    EXPECT_EQ(Command().mid(1), QStringList({QStringLiteral("A=b c"), QStringLiteral("cat"),
                                             QStringLiteral("--new"), QStringLiteral("/tmp/a b.txt")}));
    Program("kate.desktop", "tac");
    folder.Write("config/kde-mimeapps.list", "[Default Applications]\ntext/plain=kate.desktop\n");
    EXPECT_TRUE(Command().first().endsWith(QStringLiteral("/tac")));
    EXPECT_EQ(Command().mid(1), QStringList(QStringLiteral("/tmp/a b.txt")));
}

TEST_F(TextEditorTest, IsNoneThatIsHiddenMissingOrNeedsATerminal) {
    folder.Write("data/mimeinfo.cache", "[MIME Cache]\ntext/plain=one.desktop;two.desktop;three.desktop;\n");
    Program("one.desktop", "cat %f", "Terminal=true\n");
    Program("two.desktop", "no-such-program-at-all %f");
    EXPECT_TRUE(Command().isEmpty());
    Program("three.desktop", "cat 100%% %f");
    EXPECT_EQ(Command().at(1), QStringLiteral("100%"));
    Program("three.desktop", "cat %f", "Hidden=true\n");
    EXPECT_TRUE(Command().isEmpty());
}

}  // namespace
}  // namespace vantrel
