#include "contract_test.h"
#include "platform/window_service.h"

namespace kwo::contract {
namespace {

class ProgramsContract : public ContractTest {
protected:
    platform::Programs& programs = platform().programs;
};

TEST_F(ProgramsContract, AWindowIsActivatedByItsWholeTitle) {
    outside().MakeWindow(u"Contract Window");

    EXPECT_NO_THROW(programs.Activate(u"Contract Window"));
    EXPECT_NO_THROW(programs.Activate(u"CONTRACT window"));
    EXPECT_EQ(RaisedNumber([&] { programs.Activate(u"Contract"); }), 5);
    EXPECT_EQ(RaisedNumber([&] { programs.Activate(u"Contract Window 2"); }), 5);
}

TEST_F(ProgramsContract, AMinimisedWindowIsRestored) {
    const Handle window = outside().MakeWindow(u"Minimised Window");
    outside().Minimise(window);
    ASSERT_TRUE(platform().windows.IsMinimised(window));

    programs.Activate(u"Minimised Window");

    platform().messages.ProcessPending();
    EXPECT_FALSE(platform().windows.IsMinimised(window));
}

TEST_F(ProgramsContract, AHiddenWindowIsNotActivated) {
    outside().Hide(outside().MakeWindow(u"Hidden Window"));

    EXPECT_EQ(RaisedNumber([&] { programs.Activate(u"Hidden Window"); }), 5);
}

TEST_F(ProgramsContract, ACommandLineThatIsNotTakenWholeStartsNothing) {
    const Text program = u'"' + outside().ExistingFile() + u"\" --gtest_list_tests ";
    const Text tooLong(platform::Programs::kLongestCommandLine + 1 - program.size(), u'x');
    EXPECT_EQ(RaisedNumber([&] { programs.Start(program + tooLong, 1); }), 53);
    EXPECT_EQ(RaisedNumber([&] { programs.Start(program + Text(1, u'\0'), 1); }), 53);
}

TEST_F(ProgramsContract, WhatIsNoProgramIsNotStarted) {
    EXPECT_EQ(RaisedNumber([&] { programs.Start(u"C:\\no such folder\\no such program.exe -x", 1); }), 53);
    EXPECT_EQ(RaisedNumber([&] { programs.Start(u" ", 1); }), 53);
}

}  // namespace
}  // namespace kwo::contract
