#pragma once

#include <unistd.h>

#include <set>
#include <string>

#include "dupes/dupe_removal.h"
#include "dupes_support.h"
#include "platform/names/paths.h"
#include "support/fake_volumes.h"
#include "support/shell_fixture.h"

namespace vantrel::testing {

// A search, marks and their removal by the real shell service.
class DupeRemovalTest : public DupesTest {
  protected:
    DupeRemovalTest() {
        settings.SetRemoveWarningShown(true);
        drop.MakeFolder("moved");
        settings.SetUserDefinedMoveFolderPath(drop / "moved");
        // So that a trash of a volume is in the temporary folder as well.
        volumes.drives = {{GetParentFolderName(drop / "in"), {}}, {"/", {}}};
    }
    SystemShellOperations Shell() {
        return SystemShellOperations({tools.files,
                                      volumes,
                                      tools.clock,
                                      tools.loop,
                                      shellProgress,
                                      questions,
                                      {drop / "trash", geteuid()}});
    }
    void FindAll() { ASSERT_EQ(DupeOutcome::Completed, Find()); }
    DupeResults& Results() { return finder.Results(); }
    // Marks the files of these names below the folder of the search.
    void Mark(const std::set<std::string>& names) {
        for (std::uint32_t group = 0; group < Results().AllGroups(); ++group)
            for (const std::uint32_t file : Results().Group(group).members)
                if (names.contains(Results().Files().PathOf(file).substr(In("").size())))
                    Results().Mark(file, true);
    }
    RemovalReport Remove() {
        SystemShellOperations shell = Shell();
        DupeRemoval removal(tools.Get(), shell, progress);
        return removal.RemoveMarkedFiles(Results(), Results().GroupsWithMarks(), settings);
    }
    // Every content of one letter below the temporary folders, of the DUPES folder and the trash as well.
    std::set<std::string> AllContents() const {
        std::set<std::string> contents;
        for (const std::string& root : {drop.Path(), tools.folder.Path()})
            for (const auto& [path, what] : TreeOf(root))
                if (what.starts_with("f:") && what.size() == 3) contents.insert(what);
        return contents;
    }

    FakeVolumes volumes;
    Options options;
    clsDupeSettings settings{options};
    ScriptedProgress shellProgress;
    ScriptedQuestions questions;
};

}  // namespace vantrel::testing
