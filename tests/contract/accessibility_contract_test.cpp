#include "contract_test.h"
#include "platform/accessibility.h"

namespace kwo::contract {
namespace {

using platform::Accessibility;
using Lines = std::vector<std::string>;

class AccessibilityContract : public ContractTest {
protected:
    AccessibilityContract() { outside().InstallAnnotations(); }
    static constexpr std::int32_t kPushButton = 43;
    static constexpr Handle kNoWindow = 0x7FFF'0001;

    Handle window = outside().MakeWindow(u"Box");
    Accessibility& accessibility = platform().accessibility;
};

TEST_F(AccessibilityContract, ReadersReadWhatTheyAreTold) {
    EXPECT_TRUE(accessibility.Begin(window, kPushButton));
    EXPECT_EQ(outside().WhatReadersRead(window), (Lines{"Role 43"}));
    EXPECT_TRUE(accessibility.SetNumber(window, Accessibility::Property::State, 8));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::Name, u"Save"));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::Value, u"1"));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::Description, u"2"));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::KeyboardShortcut, u"3"));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::DefaultAction, u""));
    EXPECT_EQ(outside().WhatReadersRead(window),
              (Lines{"Role 43", "State 8", "Name \"Save\"", "Value \"1\"", "Description \"2\"",
                     "KeyboardShortcut \"3\"", "DefaultAction \"\""}));
    accessibility.Notify(window, 0x800C);
    accessibility.End(window);
    EXPECT_EQ(outside().WhatReadersRead(window), Lines{});
}

TEST_F(AccessibilityContract, ATextEndsAtItsFirstZero) {
    EXPECT_TRUE(accessibility.Begin(window, kPushButton));
    EXPECT_TRUE(accessibility.SetText(window, Accessibility::Property::Name, Text(u"a\0b", 3)));
    EXPECT_EQ(outside().WhatReadersRead(window), (Lines{"Role 43", "Name \"a\""}));
    accessibility.End(window);
}

TEST_F(AccessibilityContract, AWindowThatDoesNotExistIsRefused) {
    EXPECT_FALSE(accessibility.Begin(kNoWindow, kPushButton));
    EXPECT_FALSE(accessibility.Begin(0, kPushButton));
    EXPECT_TRUE(accessibility.Begin(window, kPushButton)) << "and others are not";
    accessibility.End(window);
}

TEST_F(AccessibilityContract, WindowsAreAnnotatedIndependently) {
    const Handle other = outside().MakeWindow(u"Other");
    EXPECT_TRUE(accessibility.Begin(window, kPushButton));
    EXPECT_TRUE(accessibility.Begin(other, 24));
    accessibility.End(window);
    EXPECT_TRUE(accessibility.SetText(other, Accessibility::Property::Name, u"May"));
    EXPECT_EQ(outside().WhatReadersRead(window), Lines{});
    EXPECT_EQ(outside().WhatReadersRead(other), (Lines{"Role 24", "Name \"May\""}));
    accessibility.End(other);
    EXPECT_TRUE(accessibility.Begin(other, 24)) << "the service is there again";
    accessibility.End(other);
}

}  // namespace
}  // namespace kwo::contract
