#pragma once

#include <gmock/gmock.h>

#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "filetools/forms/frm_file_diffs.h"
#include "support/recording_desktop.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

// The viewer on two files of a temporary folder, with scripted messages.
class ViewerTest : public ::testing::Test {
  protected:
    static constexpr const char* kPrompt = "Select two files then press the Compare button";

    std::string Path(Side side) { return tools.folder / (side == Side::Left ? "one.txt" : "two.txt"); }
    void Write(const std::string& left, const std::string& right) {
        tools.folder.Write("one.txt", left);
        tools.folder.Write("two.txt", right);
        options.FileOne = Path(Side::Left);
        options.FileTwo = Path(Side::Right);
    }
    FileDiffsParts Parts() {
        return {.tools = tools.Get(),
                .settings = settings,
                .options = options,
                .globalDiffObject = engine,
                .desktop = desktop,
                .requestCancel = [this] { tools.loop.cancelled = true; },
                .showHelp = [this] { ++helpShown; }};
    }
    frmFileDiffs& Window() {
        if (!window) window = std::make_unique<frmFileDiffs>(Parts());
        return *window;
    }
    // Opens the window on the two files, as if it were modal.
    frmFileDiffs& Open() {
        Window().FormLoad();
        Window().show();
        Window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
        return Window();
    }
    frmFileDiffs& Open(const std::string& left, const std::string& right) {
        Write(left, right);
        return Open();
    }
    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &Window(),
                        static_cast<Qt::Key>(key), keys);
    }
    QPoint PointOf(Side side, std::int32_t row) {
        const FileGridView& grid = *Window().grdFile[side];
        return {grid.viewport()->width() / 2, grid.RectOfRow(row).center().y()};
    }
    void Click(Side side, std::int32_t row) {
        QTest::mouseClick(Window().grdFile[side]->viewport(), Qt::LeftButton, {}, PointOf(side, row));
    }
    std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < tools.messages.shown.size(); ++i) lines.push_back(tools.messages.Line(i));
        tools.messages.shown.clear();
        return lines;
    }
    bool IsEnabled(const char* command) { return Window().GetCommands().Action(command)->isEnabled(); }

    TestToolbox tools;
    Options settings;
    cViewFileDiffsOptions options{settings};
    FileDiffEngine engine{tools.Get()};
    RecordingDesktop desktop;
    int helpShown = 0;
    std::unique_ptr<frmFileDiffs> window;
};

}  // namespace vantrel::testing
