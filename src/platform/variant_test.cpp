#include "platform/variant.h"

#include <gtest/gtest.h>

#include <new>
#include <vector>

#include "platform/simulated/failing_memory.h"

namespace kwo::platform {
namespace {

const Text kLong(100, u'x');

TEST(VariantTest, ACopyWithoutMemoryIsNoCopy) {
    const Variant value = kLong;
    const simulated::FailingMemory failing(1);
    EXPECT_THROW(static_cast<void>(Variant{value}), std::bad_alloc);
}

TEST(VariantTest, ACopyWithoutMemoryInAListIsNoCopy) {
    const Variant value = kLong;
    std::vector<Argument> arguments;
    const simulated::FailingMemory failing(1);
    EXPECT_THROW(arguments.push_back({value, true}), std::bad_alloc);
}

TEST(VariantTest, AnAssignmentWithoutMemoryChangesNothing) {
    const Variant value = kLong;
    Variant target = std::int32_t{7};
    {
        const simulated::FailingMemory failing(1);
        EXPECT_THROW(target = value, std::bad_alloc);
    }
    EXPECT_EQ(target, Variant(std::int32_t{7}));
}

TEST(VariantTest, AnAssignedTextWithoutMemoryChangesNothing) {
    Variant target = Text(u"old");
    {
        const simulated::FailingMemory failing(1);
        EXPECT_THROW(target = kLong, std::bad_alloc);
    }
    EXPECT_EQ(target, Variant(Text(u"old")));
}

}  // namespace
}  // namespace kwo::platform
