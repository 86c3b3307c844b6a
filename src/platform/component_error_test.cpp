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
    struct Row {
        RuntimeError error;
        std::int32_t number;
        TextView description;
    };
    for (const Row& row : {Row{RuntimeError::NoObjectSet, 91, u"Object variable or With block variable not set"},
                           Row{RuntimeError::CannotCreateObject, 429, u"ActiveX component can't create object"}}) {
        try {
            RaiseRuntime(row.error);
            ADD_FAILURE() << "nothing was raised";
        } catch (const ComponentError& error) {
            EXPECT_EQ(error.number, row.number);
            EXPECT_EQ(error.description, row.description);
        }
    }
}

}  // namespace
}  // namespace kwo::platform
