#pragma once

#include <gmock/gmock.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "dupes/forms/dupe_details_model.h"
#include "dupes/forms/dupe_groups_model.h"
#include "dupes/forms/frm_find_duplicates.h"
#include "dupes/forms/search_folder_list.h"
#include "support/modal.h"
#include "support/recording_desktop.h"
#include "support/shell_fixture.h"
#include "support/temp_folder.h"
#include "support/test_toolbox.h"

namespace vantrel::testing {

class RecordingShellCalls : public ShellCallsPort {
  public:
    bool Open(const std::string& path) override {
        asked.push_back("open " + path);
        return true;
    }
    void OpenWithChosenProgram(const std::string& path) override { asked.push_back("choose " + path); }
    void ShowPropertyPage(const std::string& path) override { asked.push_back("properties " + path); }

    std::vector<std::string> asked;
};

// The window of the duplicate finder on a folder "in" of a temporary one, over the real shell service and
// with scripted messages.
class DupeWindowTest : public ::testing::Test {
  protected:
    DupeWindowTest() {
        settings.SetDupesFormLoadedPreviously(true);
        settings.SetRemoveWarningShown(true);
        settings.SetFolderPaths({drop / "in"});
        drop.MakeFolder("in");
    }

    std::string In(const std::string& name) const { return drop / ("in/" + name); }
    void Write(const std::string& name, std::string_view content, double time = 1'500'000'000) const {
        drop.Write("in/" + name, content, time);
    }
    // Three files in one group by name and size, two in another.
    void WriteSamples() const {
        for (const char* folder : {"a/", "b/", "c/"}) Write(std::string(folder) + "one.txt", "11");
        for (const char* folder : {"a/", "b/"}) Write(std::string(folder) + "two.txt", "2222");
    }

    frmFindDuplicates& Window() {
        if (window) return *window;
        window = std::make_unique<frmFindDuplicates>(FindDuplicatesParts{
            .tools = box.Get(),
            .options = options,
            .wrappers = wrappers,
            .shellCalls = shellCalls,
            .desktop = desktop,
            .requestCancel = [this] { box.loop.cancelled = true; },
            .saveOptions = [this] { ++saved; },
            .showHelp = [this] { ++helped; },
            .compareFiles = nullptr,
            .showDifferences =
                [this](const PerSide<std::string>& paths, QWidget*) {
                    shellCalls.asked.push_back("differences " + paths[Side::Left] + " " + paths[Side::Right]);
                }});
        window->FormLoad();
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }
    // Searches by the button.
    frmFindDuplicates& Search() {
        QTest::keyClick(Window().cmdFindDupes, Qt::Key_Space);
        return Window();
    }
    void Run(const char* command) { Window().GetCommands().Action(command)->trigger(); }
    void Key(QWidget* widget, int key, Qt::KeyboardModifiers keys = {}) {
        widget->setFocus();
        QTest::keyClick(widget, static_cast<Qt::Key>(key), keys);
    }
    // Selects rows of the open group as clicks do.
    void SelectFiles(const std::vector<int>& rows) {
        auto* selection = Window().lvwDupeDetails->selectionModel();
        selection->clear();
        for (const int row : rows)
            selection->setCurrentIndex(Window().Details().index(row, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        for (int row = 0; row < Window().Groups().rowCount(); ++row)
            lines.push_back(Window().Groups().index(row, 0).data().toString().toStdString());
        return lines;
    }
    std::string Cell(int row, DupeColumn column) {
        return Window().Details().index(row, static_cast<int>(column)).data().toString().toStdString();
    }
    std::vector<std::string> Column(DupeColumn column) {
        std::vector<std::string> texts;
        for (int row = 0; row < Window().Details().rowCount(); ++row) texts.push_back(Cell(row, column));
        return texts;
    }
    std::string Status() { return Window().lblStatus->text().toStdString(); }
    std::string Marks() { return Window().lblMarks->text().toStdString(); }
    std::vector<std::string> Shown() {
        std::vector<std::string> lines;
        for (std::size_t i = 0; i < box.messages.shown.size(); ++i) lines.push_back(box.messages.Line(i));
        box.messages.shown.clear();
        return lines;
    }

    TempFolder drop;
    FaultySystemCalls calls;
    TestToolbox box{calls};
    Options options;
    clsDupeSettings settings{options};
    ScriptedProgress shellProgress;
    ScriptedQuestions questions;
    SystemShellOperations shell{
        {box.files, box.volumes, box.clock, box.loop, shellProgress, questions, {drop / "trash", geteuid()}}};
    ShellWrappers wrappers{shell, box.messages};
    RecordingShellCalls shellCalls;
    RecordingDesktop desktop;
    int saved = 0, helped = 0;
    std::unique_ptr<frmFindDuplicates> window;
};

}  // namespace vantrel::testing
