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
    for (const Row& row :
         {Row{RuntimeError::InvalidProcedureCall, 5, u"Invalid procedure call or argument"},
          Row{RuntimeError::Overflow, 6, u"Overflow"},
          Row{RuntimeError::SubscriptOutOfRange, 9, u"Subscript out of range"},
          Row{RuntimeError::TypeMismatch, 13, u"Type mismatch"}, Row{RuntimeError::FileNotFound, 53, u"File not found"},
          Row{RuntimeError::NoObjectSet, 91, u"Object variable or With block variable not set"},
          Row{RuntimeError::ObjectRequired, 424, u"Object required"},
          Row{RuntimeError::CannotCreateObject, 429, u"ActiveX component can't create object"},
          Row{RuntimeError::NoSuchMember, 438, u"Object doesn't support this property or method"},
          Row{static_cast<RuntimeError>(7), 7, u"Unknown error."}}) {
        try {
            RaiseRuntime(row.error);
            ADD_FAILURE() << "nothing was raised";
        } catch (const ComponentError& error) {
            EXPECT_EQ(error.number, row.number);
            EXPECT_EQ(error.description, row.description);
            EXPECT_EQ(error.source, u"");
        }
    }
}

}  // namespace
}  // namespace kwo::platform
