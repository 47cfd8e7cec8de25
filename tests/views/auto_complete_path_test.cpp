#include "views/auto_complete_path.h"

#include <gtest/gtest.h>

#include "support/scripted_ports.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

class AutoComplete : public ::testing::Test, protected AutoCompleteBox {
  protected:
    std::string Text() const override { return text; }
    void SetTextWithProposal(const std::string& whole, std::size_t selectFrom) override {
        text = whole;
        proposal = whole.substr(selectFrom);
        Type();  // the box says that its text has changed
    }
    void Type() { complete.Run(*this); }
    // Types the last character of `path`; gives what the box then shows, with the proposal in brackets.
    std::string Typed(const std::string& path) {
        text = path;
        proposal.clear();
        complete.SetArmed(true);
        Type();
        return text.substr(0, text.size() - proposal.size()) + (proposal.empty() ? "" : "[" + proposal + "]");
    }

    testing::TempFolder folder;
    SystemCalls calls;
    FileSystem files{calls};
    testing::ScriptedLoop loop;
    AutoCompletePath complete{files, loop};
    std::string text, proposal;
};

TEST_F(AutoComplete, ProposesTheRestOfOneLevel) {
    folder.MakeFolder("Music/Old");
    folder.MakeFolder("Pictures");
    EXPECT_EQ(Typed(folder / "Mu"), folder / "Mu[sic/]");
    EXPECT_EQ(Typed(folder / "Music"), folder / "Music[/]");
    EXPECT_EQ(Typed(folder / "Music/O"), folder / "Music/O[ld/]");
    EXPECT_EQ(Typed(folder / "Q"), folder / "Q");
    EXPECT_EQ(Typed(folder / "Gone/M"), folder / "Gone/M");
    // Finished paths, network paths and names without a folder are left alone.
    EXPECT_EQ(Typed(folder.Path()), folder.Path());
    EXPECT_EQ(Typed("\\server"), "\\server");
    EXPECT_EQ(Typed("Mu"), "Mu");
}

TEST_F(AutoComplete, LettersAreCorrectedAndExactOnesComeFirst) {
    folder.MakeFolder("music");
    folder.MakeFolder("\xC3\x84pfel");
    EXPECT_EQ(Typed(folder / "MU"), folder / "mu[sic/]");
    EXPECT_EQ(Typed(folder / "\xC3\xA4p"), folder / "\xC3\x84p[fel/]");
    folder.MakeFolder("MUsterland");
    EXPECT_EQ(Typed(folder / "MU"), folder / "MU[sterland/]");
    EXPECT_EQ(Typed(folder / "mu"), folder / "mu[sic/]");
}

TEST_F(AutoComplete, AFileOfThatBeginningEndsTheSearch) {
    folder.Write("note", "");
    folder.MakeFolder("notebook");
    EXPECT_EQ(Typed(folder / "not"), folder / "not");
    EXPECT_EQ(Typed(folder / "noteb"), folder / "noteb[ook/]");
}

TEST_F(AutoComplete, OnlyAfterAPrintableKey) {
    folder.MakeFolder("Music");
    text = folder / "Mu";
    complete.SetArmed(false);
    Type();
    EXPECT_EQ(text, folder / "Mu");
}

TEST_F(AutoComplete, AKeyDuringTheSearchBeginsAnother) {
    folder.MakeFolder("Music");
    folder.MakeFolder("Nature");
    bool typed = false;
    loop.onYield = [&] {
        if (typed) return;
        typed = true;
        text = folder / "N";
        complete.SetArmed(true);
        Type();
    };
    EXPECT_EQ(Typed(folder / "M"), folder / "N[ature/]");
}

}  // namespace
}  // namespace vantrel
