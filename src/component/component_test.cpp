#include "component/component.h"

#include <gtest/gtest.h>

#include "platform/simulated/simulated_desktop.h"
#include "registry/registry.h"

namespace kwo::component {
namespace {

TEST(ComponentTest, HasNoProgramNameUntilAClassIsCreated) {
    platform::simulated::SimulatedDesktop desktop;
    Component component(desktop.Services());
    EXPECT_EQ(component.ProgramName(), u"");
    const registry::KWORegistry object(component);
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST(ComponentTest, TheErrorNumbersAreThoseThatClientsKnow) {
    EXPECT_EQ(frame::kCantCreateTimer, -2147191504);
    EXPECT_EQ(frame::kNoErrorSaved, -2147220494);
    EXPECT_EQ(frame::kObjectError, static_cast<std::int32_t>(0x80040000));
}

TEST(ComponentTest, UntracedRoutinesLeaveNoMark) {
    platform::simulated::SimulatedDesktop desktop;
    Component component(desktop.Services());
    EXPECT_EQ(component.trace.KWO_RoutinePush(u"A.B"), 0);
    EXPECT_EQ(component.trace.KWO_CurrentRoutine(), u"");
    EXPECT_FALSE(component.trace.IsRecording());
    component.trace.KWO_RoutinePop();
    EXPECT_TRUE(desktop.log.Lines().empty());
}

}  // namespace
}  // namespace kwo::component
