#include "platform/component_error.h"

#include <gtest/gtest.h>

namespace kwo::platform {
namespace {

TEST(ComponentErrorTest, RaiseCarriesNumberSourceAndDescription) {
    try {
        Raise(-5, u"KWORegistry.Member", u"Access is denied.");
        FAIL() << "nothing was raised";
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.number, -5);
        EXPECT_EQ(error.source, u"KWORegistry.Member");
        EXPECT_EQ(error.description, u"Access is denied.");
    }
}

TEST(ComponentErrorTest, RuntimeErrorsCarryTheNumbersAndTextsThatClientsKnow) {
    try {
        RaiseRuntime(RuntimeError::NoObjectSet);
        FAIL() << "nothing was raised";
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.number, 91);
        EXPECT_EQ(error.description, u"Object variable or With block variable not set");
    }
}

}  // namespace
}  // namespace kwo::platform
