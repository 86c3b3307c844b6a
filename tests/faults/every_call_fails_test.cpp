#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "com/golden_members.h"
#include "rounds.h"

namespace kwo::fault_tests {
namespace {

using Names = std::set<std::string>;

class EveryCallFails : public testing::TestWithParam<Scenario> {};

INSTANTIATE_TEST_SUITE_P(Once, EveryCallFails, testing::ValuesIn(AllScenarios()),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_P(EveryCallFails, AndTheOutcomeIsDocumented) {
    const int before = Rounds::Count();
    Rounds(GetParam()).Run();
    RecordProperty("rounds", Rounds::Count() - before);
}

/// Says how much was done, after all tests.
class Figures final : public testing::Environment {
public:
    void TearDown() override {
        std::printf("faults: %zu scenarios, %d rounds\n", AllScenarios().size(), Rounds::Count());
    }
};

[[maybe_unused]] testing::Environment* const figures = testing::AddGlobalTestEnvironment(new Figures);

/// Members of the shell alone: they keep a value for the caller and reach no logic.
const Names kOfTheShell = {"KWOTimer.get Item",         "KWOTimer.let Item",     "KWOTimer.set Item",
                           "KWOTimer.get ItemData",     "KWOTimer.let ItemData", "KWOPicBtn.get PicAlignment",
                           "KWOPicBtn.let PicAlignment"};

std::string NameOf(const std::string& className, const com_test::GoldenMember& member) {
    const std::string kind = member.kind;
    const bool isProperty = kind == "get" || kind == "let" || kind == "set";
    return className + '.' + (isProperty ? kind + ' ' : "") + member.name;
}

Names MembersOfTheLibrary() {
    Names names;
    for (const auto& list : {com_test::Golden().interfaces, com_test::Golden().eventInterfaces}) {
        for (const com_test::GoldenInterface& each : list) {
            const std::string name = each.name;
            for (const com_test::GoldenMember& member : each.members)
                names.insert(NameOf(name.substr(name.find_first_not_of('_')), member));
        }
    }
    return names;
}

Names MembersOfTheCompanion() {
    std::ifstream file(KWO_COMPANION_IDL);
    const std::string idl(std::istreambuf_iterator<char>(file), {});
    const std::regex method(R"(HRESULT (\w+)\()");
    Names names;
    for (std::sregex_iterator at(idl.begin(), idl.end(), method), end; at != end; ++at)
        names.insert("KWOInitialize." + (*at)[1].str());
    return names;
}

TEST(Scenarios, NameEveryMemberOfEveryClassAndNoOther) {
    Names members = MembersOfTheLibrary();
    const Names companion = MembersOfTheCompanion();
    ASSERT_EQ(companion.size(), 2u);
    members.insert(companion.begin(), companion.end());

    Names named = kOfTheShell;
    for (const Scenario& scenario : AllScenarios())
        named.insert(scenario.members.begin(), scenario.members.end());

    for (const std::string& member : members)
        EXPECT_TRUE(named.contains(member)) << member << " has no scenario";
    for (const std::string& name : named)
        EXPECT_TRUE(members.contains(name)) << name << " is no member";
}

/// The calls of a run without a fault. Each of them fails in its turn.
Names CallsOf(const Scenario& scenario) {
    const std::unique_ptr<Stage> stage = scenario.stage();
    stage->desktop.faults.FailAnyCall(0);
    try {
        scenario.run(*stage);
    } catch (const platform::ComponentError&) {
        // Some members fail in any case.
    }
    const std::vector<std::string>& made = stage->desktop.faults.Made();
    return {made.begin(), made.end()};
}

TEST(Scenarios, MakeEveryCallThatCanFail) {
    // The host's log hears of a dispatch that failed for no known reason.
    Names made = {"ReportEvent of the host"};
    for (const Scenario& scenario : AllScenarios())
        made.merge(CallsOf(scenario));
    for (const std::string& call : platform::simulated::SimulatedDesktop().faults.CanFail())
        EXPECT_TRUE(made.contains(call)) << "no scenario makes the call " << call;
}

TEST(Scenarios, HaveTheirOwnNames) {
    Names names;
    for (const Scenario& scenario : AllScenarios())
        EXPECT_TRUE(names.insert(scenario.name).second) << scenario.name;
}

}  // namespace
}  // namespace kwo::fault_tests
