#include "start_arguments.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace vantrel {
namespace {

TEST(StartArguments, ASessionIsGivenInThreeWays) {
    const std::string here = std::filesystem::current_path().native() + "/";
    for (const auto& [arguments, session] :
         std::initializer_list<std::pair<std::vector<std::string_view>, std::string>>{
             {{}, ""},
             {{"--session", "/a b.vts"}, "/a b.vts"},
             {{"--session=x.vts"}, here + "x.vts"},
             {{"--session", "-x.vts"}, here + "-x.vts"},
             {{"/x\\y.vts"}, "/x\xF4\x8F\xA1\x9Cy.vts"},
         }) {
        const StartArguments taken = TakeStartArguments(arguments);
        EXPECT_EQ(taken.error, "");
        EXPECT_EQ(taken.session, session);
    }
    for (const std::vector<std::string_view>& wrong : std::initializer_list<std::vector<std::string_view>>{
             {"--session"}, {"--session="}, {"--sessions=x"}, {"-x"}, {"a.vts", "b.vts"}})
        EXPECT_NE(TakeStartArguments(wrong).error, "") << wrong.front();
}

// The library knows an argument of nearly that name, and takes what it knows away.
TEST(StartArguments, TheLibraryLeavesTheSessionToTheProgram) {
    const char* const given[] = {"vantrel", "-style", "fusion", "--session", "a b.vts", "c.vts", "--session"};
    EXPECT_EQ(
        WithSessionInOneWord(7, given),
        (std::vector<std::string>{"vantrel", "-style", "fusion", "--session=a b.vts", "c.vts", "--session"}));
    const int status =
        std::system(VANTREL " --session /a --session /b 2>&1 | grep -q 'more than one session'");
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace vantrel
