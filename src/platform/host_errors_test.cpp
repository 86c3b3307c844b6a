#include "platform/host_errors.h"

#include <gtest/gtest.h>

#include <new>

#include "platform/simulated/simulated_object.h"
#include "support/raised.h"

namespace kwo::platform {
namespace {

TEST(RequiredTest, IsTheObjectOrError91) {
    simulated::Log log;
    simulated::Faults faults;
    const auto form = std::make_shared<simulated::SimulatedObject>(log, faults, u"Form");
    EXPECT_EQ(&Required(form), form.get());
    EXPECT_EQ(test_support::RaisedNumber([] { Required(nullptr); }), 91);
}

TEST(TryTest, EndsAStatementAtItsError) {
    int step = 0;
    Try([&] {
        step = 1;
        RaiseRuntime(RuntimeError::Overflow);
        step = 2;
    });
    EXPECT_EQ(step, 1);
}

TEST(TryTest, PassesOnThatThereIsNoMemory) {
    EXPECT_THROW(Try([] { throw std::bad_alloc(); }), std::bad_alloc);
}

}  // namespace
}  // namespace kwo::platform
