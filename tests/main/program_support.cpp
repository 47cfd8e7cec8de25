#include "program_support.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <QAction>
#include <QCoreApplication>
#include <QMenu>

namespace vantrel::testing {

TestProgram::TestProgram() {
    folder.Write("help/index.html", "<p>help</p>");
    folder.Write("help/troubleshooting.html", "<p>help</p>");
}

TestProgram::~TestProgram() {
    application.reset();
}

Application& TestProgram::Start() {
    application = std::make_unique<Application>(Surroundings{{.files = files,
                                                              .volumes = volumes,
                                                              .clock = clock,
                                                              .locale = locale,
                                                              .folders = folders,
                                                              .messages = messages,
                                                              .loop = loop},
                                                             loop,
                                                             desktop,
                                                             sound,
                                                             {trash / "Trash", geteuid()}},
                                                "1.2.3");
    if (!showsSummaries) application->Comparison().ShowCompareResults = nullptr;
    application->FormLoad();
    return *application;
}

Application& TestProgram::Start(const std::string& settings) {
    folder.Write("vantrel.ini", settings);
    return Start();
}

void TestProgram::CompareSamples() {
    constexpr double kTime = 1'600'000'000;
    for (const char* side : {"left/", "right/"}) {
        const bool isLeft = side[0] == 'l';
        const std::string at = side;
        workspace.Write(at + "binary.txt", isLeft ? "1234" : "123", kTime);
        workspace.Write(at + "newer.txt", "1234", isLeft ? kTime + 100 : kTime);
        workspace.Write(at + "same.txt", "same", kTime);
        workspace.Write(at + "Different/in.txt", isLeft ? "12" : "1", kTime);
        workspace.Write(at + "Identical/in.txt", "1", kTime);
    }
    workspace.Write("left/alone.txt", "left", kTime);
    workspace.Write("right/Alone/in.txt", "right", kTime);
    left = workspace / "left";
    right = workspace / "right";
    Window().SetPathText(Side::Left, left);
    Window().SetPathText(Side::Right, right);
    application->GetCommands().Run("mnuFileCompareDirectories");
    ASSERT_TRUE(application->results.HasResult());
}

std::size_t TestProgram::Row(Side side, std::string_view text) {
    const PaneList& list = application->panes.Pane(side);
    for (std::size_t row = 0; row < list.Count(); ++row)
        if (list[row].text == text) return row;
    ADD_FAILURE() << "no row " << text;
    return 0;
}

void TestProgram::Select(Side side, std::string_view text) {
    application->panes.SetCurrentListview(side);
    application->panes.Click(side, Row(side, text), {});
}

std::vector<std::string> TestProgram::VisibleItems(QMenu* menu) const {
    std::vector<std::string> items;
    for (const QAction* action : menu->actions())
        if (action->isVisible() && !action->isSeparator())
            items.push_back(action->objectName().toStdString() + ": " + action->text().toStdString());
    return items;
}

}  // namespace vantrel::testing
