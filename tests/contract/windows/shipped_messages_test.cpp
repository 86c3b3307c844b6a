#include <windows.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <array>
#include <string>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/windows/windows_platform.h"

namespace kwo::platform::windows {
namespace {

std::wstring DistFolder() {
    wchar_t folder[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableW(L"KWO_DIST", folder, MAX_PATH);
    return length < MAX_PATH ? std::wstring(folder, length) : std::wstring();
}

/// The component on this system with the companion that is shipped beside it, activated without registration.
class ShippedMessages : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(DistFolder().empty()) << "KWO_DIST names the folder of KWOInit.dll";
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        const std::wstring manifest = DistFolder() + L"\\KWOInit.X.manifest";
        ACTCTXW context = {};
        context.cbSize = sizeof context;
        context.lpSource = manifest.c_str();
        mContext = CreateActCtxW(&context);
        ASSERT_NE(mContext, INVALID_HANDLE_VALUE) << GetLastError();
        ASSERT_TRUE(ActivateActCtx(mContext, &mCookie));
    }
    void TearDown() override {
        if (mCookie != 0) DeactivateActCtx(0, mCookie);
        if (mContext != INVALID_HANDLE_VALUE) ReleaseActCtx(mContext);
        CoUninitialize();
    }

    HANDLE mContext = INVALID_HANDLE_VALUE;
    ULONG_PTR mCookie = 0;
    WindowsPlatform mPlatform{GetModuleHandleW(nullptr)};
    component::Component mComponent{mPlatform.Services()};
};

TEST_F(ShippedMessages, AreLoadedAndTakeThePlaceOfTheBuiltInOnes) {
    EXPECT_EQ(mComponent.error.Message(1902, u"built in"), u"built in");
    mComponent.SetProgramName();

    mComponent.messages.KWOInitialize();

    const std::array values = {Variant(Text(u"C:\\APPS")), Variant(Text(u"DEMO.EXE"))};
    const Text started = mComponent.messages.KWO_GetMsg(1930, values);
    EXPECT_NE(started.find(u"C:\\APPS"), Text::npos);
    EXPECT_NE(started.find(u"DEMO.EXE"), Text::npos);
    EXPECT_EQ(started.find(u'%'), Text::npos);
    EXPECT_NE(mComponent.error.Message(1902, u"built in"), u"built in");
    EXPECT_EQ(mComponent.messages.KWO_GetMsg(1903), u"Undefined Message");
    EXPECT_EQ(mComponent.messages.KWO_GetMsg(1936), u"Undefined Message");
}

TEST_F(ShippedMessages, EveryNumberOfTheComponentHasAText) {
    mComponent.messages.KWOInitialize();

    for (const std::int32_t number :
         {1899, 1900, 1901, 1902, 1923, 1924, 1925, 1926, 1927, 1928, 1929, 1930, 1931, 1932, 1933, 1934, 1935})
        EXPECT_NE(mComponent.messages.KWO_GetMsg(number), u"Undefined Message") << number;
}

TEST_F(ShippedMessages, WithoutACompanionNothingCanBeCreated) {
    DeactivateActCtx(0, mCookie);
    mCookie = 0;
    std::int32_t number = 0;
    try {
        mComponent.messages.KWOInitialize();
    } catch (const ComponentError& error) {
        number = error.number;
    }
    EXPECT_EQ(number, 429);
}

}  // namespace
}  // namespace kwo::platform::windows
