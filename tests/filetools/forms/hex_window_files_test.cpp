// What the window of hex dumps does with files that it writes, loses or is given.
#include <unistd.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <filesystem>

#include "filetools/forms/file_path_box.h"
#include "hex_window_support.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using vantrel::testing::Call;
using vantrel::testing::kUnableToLoad;

class HexWindowFilesTest : public vantrel::testing::HexWindowTest {};

TEST_F(HexWindowFilesTest, SavesTheDumpOrLeavesWhatWasThere) {
    std::string content(300'000, 'z');
    Open(content);
    box.folder.Write("dump.txt", "old");
    const auto save = [&](const std::string& name) {
        Answer(box.folder / name);
        Key(Qt::Key_S, Qt::ControlModifier);
        std::vector<std::string> shown = Shown();
        EXPECT_FALSE(shown.empty());
        EXPECT_EQ("Save Hex Dump: Text File (*.txt)|*.txt", shown.front());
        EXPECT_FALSE(Window().IsBusy());
        EXPECT_FALSE(Window().prgProgress->isVisible());
        return shown.size() > 1 ? shown.back() : std::string();
    };
    EXPECT_EQ("Save Hex Dump: The dump cannot replace a file that is shown.", save("left"));
    EXPECT_EQ(content, box.folder.Read("left"));
    calls.FailAt(Call::Write, calls.Count(Call::Write) + 3, ENOSPC);
    EXPECT_THAT(save("dump.txt"), HasSubstr("frmHexDump.mnuFileSaveHexDump_Click"));
    EXPECT_EQ("old", box.folder.Read("dump.txt"));
    calls.ClearFaults();
    box.loop.yields = 0;
    bool showedProgress = false;
    box.loop.onYield = [&] {
        showedProgress = showedProgress || Window().prgProgress->isVisible();
        if (box.loop.yields == 3) QTest::keyClick(&Window(), Qt::Key_Escape);
    };
    EXPECT_EQ("", save("dump.txt"));
    EXPECT_EQ("old", box.folder.Read("dump.txt"));
    EXPECT_TRUE(showedProgress);
    EXPECT_TRUE(Window().isVisible());
    box.loop.onYield = nullptr;
    EXPECT_EQ("Save: The Hex Dump of the file has been saved.", save("dump.txt"));
    EXPECT_EQ(300'000U / 16 * 80, box.folder.Read("dump.txt").size());
    EXPECT_EQ(2, std::distance(std::filesystem::directory_iterator(box.folder.Path()), {}));
}

// At each yield of a search, of a walk to a difference and of a save in turn.
TEST_F(HexWindowFilesTest, ClosesBehindTheWorkThatRuns) {
    const std::string content(1'000'000, 'q');
    for (const char* command : {"mnuSearchFindText", "mnuSearchNextDiff", "mnuFileSaveHexDump"}) {
        for (std::size_t at = 1; at <= 3; ++at) {
            Open(content, content);
            Answer(command == std::string("mnuFileSaveHexDump") ? box.folder / "dump.txt" : "nowhere");
            box.loop.yields = 0;
            box.loop.onYield = [&] {
                if (box.loop.yields != at) return;
                EXPECT_TRUE(Window().IsBusy());
                Window().close();
                EXPECT_TRUE(Window().isVisible());
            };
            Window().GetCommands().Run(command);
            box.loop.onYield = nullptr;
            EXPECT_TRUE(QTest::qWaitFor([&] { return !Window().isVisible(); })) << command << at;
            EXPECT_TRUE(Window().Contents().IsEmpty());
            EXPECT_FALSE(box.folder.Exists("dump.txt"));
            window.reset();
            box.messages.texts.clear();
        }
    }
}

TEST_F(HexWindowFilesTest, TellsWhatBecomesOfTheFileThatIsShown) {
    Open(std::string(1'000, 'k'));
    const auto state = [&] {
        Window().LookAgain();
        View().viewport()->grab();
        return Window().lblFile[Side::Left]->text().toStdString();
    };
    EXPECT_EQ("1,000 bytes", state());
    ASSERT_EQ(0, truncate(Path(Side::Left).c_str(), 20));
    EXPECT_EQ("1,000 bytes. The file has become shorter. F5 reads it again.", state());
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ("Byte none", Window().lblBytes->text().toStdString());
    EXPECT_EQ("00000020  The file has become shorter.", Window().Contents().LineAt(Side::Left, 2).text);
    Key(Qt::Key_A, Qt::ControlModifier);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(Shown(), ElementsAre(HasSubstr("The file has become shorter while it was read.")));
    Answer("kkkk");
    Key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ((ByteRange{0, 4}), Selection());
    Key(Qt::Key_End, Qt::ControlModifier);
    Key(Qt::Key_F5);
    EXPECT_EQ("20 bytes", state());
    EXPECT_EQ(19U, Cursor());
    calls.FailAll(Call::PRead, EIO);
    Window().Contents().Files()[Side::Left].Forget();
    View().viewport()->grab();
    Shown();
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(Shown(), ElementsAre(HasSubstr("frmHexDump.mnuEditCopyDigits_Click")));
    calls.ClearFaults();
    std::filesystem::remove(Path(Side::Left));
    EXPECT_THAT(state(), HasSubstr("The file is gone."));
    Key(Qt::Key_F5);
    EXPECT_THAT(Shown(), ElementsAre(kUnableToLoad));
}

TEST_F(HexWindowFilesTest, TakesDroppedFiles) {
    Open("first");
    for (const char* name : {"a", "b", "c"}) box.folder.Write(name, name);
    const auto drop = [&](QWidget* target, const std::vector<std::string>& paths) {
        const std::unique_ptr<QMimeData> data(MimeDataOfPaths(paths));
        QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &event);
        EXPECT_EQ(Qt::CopyAction, event.dropAction());
        return Window().Contents().Path(Side::Left) + Window().Contents().Path(Side::Right);
    };
    EXPECT_EQ(box.folder / "c", drop(View().viewport(), {box.folder / "c"}));
    EXPECT_FALSE(Window().IsBesideShown());
    EXPECT_EQ((box.folder / "a") + (box.folder / "b"),
              drop(View().viewport(), {box.folder / "a", box.folder / "b"}));
    EXPECT_TRUE(View(Side::Right).isVisible());
    EXPECT_EQ((box.folder / "a") + (box.folder / "c"),
              drop(Window().txtFile[Side::Right], {box.folder / "c"}));
    EXPECT_THAT(Shown(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
