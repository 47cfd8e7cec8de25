#pragma once

#include <gmock/gmock.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "filetools/forms/frm_hex_dump.h"
#include "support/faulty_system_calls.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

inline constexpr const char* kUnableToLoad =
    "Hex Dump Viewer: Unable to load file contents.\r\n\r\nPossible reasons include:\r\n"
    "1) The file has no contents.\r\n2) The file is in use.";

// The window of hex dumps on files of a temporary folder, with scripted messages.
class HexWindowTest : public ::testing::Test {
  protected:
    frmHexDump& Window() {
        if (!window)
            window = std::make_unique<frmHexDump>(
                HexDumpParts{.tools = box.Get(), .completesPaths = completes, .requestCancel = [this] {
                                 box.loop.cancelled = true;
                             }});
        return *window;
    }
    std::string Path(Side side) { return box.folder / (side == Side::Left ? "left" : "right"); }
    // Opens the window on files of these contents, as if it were modal.
    frmHexDump& Open(std::string_view left, std::optional<std::string_view> right = {}) {
        box.folder.Write("left", left);
        if (right) box.folder.Write("right", *right);
        return Show({{Path(Side::Left), right ? Path(Side::Right) : std::string()}});
    }
    frmHexDump& Show(const PerSide<std::string>& paths) {
        Window().FormLoad(paths);
        Window().show();
        Window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
        QApplication::processEvents();
        return Window();
    }
    HexView& View(Side side = Side::Left) { return *Window().rtfHexDump[side]; }
    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &Window(),
                        static_cast<Qt::Key>(key), keys);
    }
    std::uint64_t Cursor() { return Window().Contents().Cursor(); }
    ByteRange Selection() { return Window().Contents().Selection(); }
    std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < box.messages.shown.size(); ++i) lines.push_back(box.messages.Line(i));
        box.messages.shown.clear();
        return lines;
    }
    bool IsEnabled(const char* command) { return Window().GetCommands().Action(command)->isEnabled(); }
    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
    // What the user types into the next box.
    void Answer(const std::string& text) { box.messages.texts.push_back(text); }

    FaultySystemCalls calls;
    TestToolbox box{calls};
    bool completes = false;
    std::unique_ptr<frmHexDump> window;
};

}  // namespace vantrel::testing
