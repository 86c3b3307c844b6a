#include "contract_test.h"
#include "platform/component_factory.h"

namespace kwo::contract {
namespace {

class ComponentFactoryContract : public ContractTest {
protected:
    platform::ComponentFactory& components = platform().components;
};

TEST_F(ComponentFactoryContract, MakesObjectsByName) {
    const platform::HostObjectRef first = components.Create(outside().InstalledClass());
    const platform::HostObjectRef second = components.Create(outside().InstalledClass());
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);

    EXPECT_FALSE(first->IsSameAs(*second));
    EXPECT_EQ(std::get<std::int32_t>(first->Get(u"Count")), 0);
}

TEST_F(ComponentFactoryContract, LetterCaseOfANameDoesNotMatter) {
    Text name = outside().InstalledClass();
    for (char16_t& c : name) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    EXPECT_NE(components.Create(name), nullptr);
}

TEST_F(ComponentFactoryContract, NameThatNobodyHasCannotBeCreated) {
    EXPECT_EQ(RaisedNumber([&] { components.Create(u"KWOUtil.NoSuchClass"); }), 429);
    EXPECT_EQ(RaisedNumber([&] { components.Create(u""); }), 429);
}

}  // namespace
}  // namespace kwo::contract
