#include "platform/windows/handles.h"

#include <gtest/gtest.h>

namespace kwo::platform::windows {
namespace {

TEST(Handles, CrossSignExtended) {
    EXPECT_EQ(ToNative<HKEY>(static_cast<Handle>(0x80000001u)), HKEY_CURRENT_USER);
    EXPECT_EQ(FromNative(HKEY_CURRENT_USER), static_cast<Handle>(0x80000001u));
    EXPECT_EQ(ToNative<HANDLE>(-1), INVALID_HANDLE_VALUE);
    EXPECT_EQ(FromNative(INVALID_HANDLE_VALUE), -1);
    EXPECT_EQ(ToNative<HWND>(0), nullptr);
    EXPECT_EQ(FromNative(ToNative<HWND>(0x7FFFFFFF)), 0x7FFFFFFF);
}

}  // namespace
}  // namespace kwo::platform::windows
