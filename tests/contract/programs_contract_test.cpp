#include "contract_test.h"

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
    EXPECT_EQ(Raised([&] { programs.Activate(u"Contract"); }), 5);
    EXPECT_EQ(Raised([&] { programs.Activate(u"Contract Window 2"); }), 5);
}

TEST_F(ProgramsContract, WhatIsNoProgramIsNotStarted) {
    EXPECT_EQ(Raised([&] { programs.Start(u"C:\\no such folder\\no such program.exe -x", 1); }), 53);
    EXPECT_EQ(Raised([&] { programs.Start(u" ", 1); }), 53);
}

}  // namespace
}  // namespace kwo::contract
