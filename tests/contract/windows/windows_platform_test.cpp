#include "platform/windows/windows_platform.h"

#include <gtest/gtest.h>
#include <lmcons.h>

#include "platform/file_system.h"
#include "platform/host_application.h"
#include "platform/registry_store.h"
#include "platform/screen.h"
#include "platform/system_errors.h"
#include "platform/timer_service.h"
#include "platform/window_service.h"
#include "windows/test_folder.h"

namespace kwo::platform::windows {
namespace {

class WindowsPlatformTest : public testing::Test {
protected:
    const bool mIsWine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    WindowsPlatform mWindows{::GetModuleHandleW(nullptr)};
    Platform platform = mWindows.Services();
};

TEST_F(WindowsPlatformTest, LastErrorIsThatOfTheLastCallWhateverTheSystemDoesSince) {
    EXPECT_EQ(platform.files.Attributes(u"C:\\kwo no such file"), FileSystem::kNoAttributes);
    ::SetLastError(1158);

    EXPECT_EQ(platform.errors.Last(), 2);
    EXPECT_EQ(platform.errors.Last(), 2);
}

class CountingUse final : public ModuleUse {
public:
    void Begin() noexcept override { ++count; }
    void End() noexcept override { --count; }
    int count = 0;
};

/// Stops its timer and lets nobody else use the module, in the middle of its call.
class StoppingHandler final : public TimerHandler {
public:
    StoppingHandler(TimerService& timers, CountingUse& use) : mTimers(timers), mUse(use) {}
    void TimerProc() noexcept override {
        mTimers.Stop(timer);
        countInside = mUse.count;
    }

    std::int32_t timer = 0;
    int countInside = -1;

private:
    TimerService& mTimers;
    CountingUse& mUse;
};

TEST_F(WindowsPlatformTest, TheModuleIsUsedUntilTheHandlerOfATimerReturns) {
    CountingUse use;
    WindowsPlatform windows(::GetModuleHandleW(nullptr), use);
    TimerService& timers = windows.Services().timers;
    StoppingHandler handler(timers, use);
    handler.timer = timers.Start(1, handler);
    ASSERT_NE(handler.timer, 0);
    for (int wait = 0; wait < 1000 && handler.countInside < 0; ++wait) {
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
            ::DispatchMessageW(&message);
    }

    EXPECT_EQ(handler.countInside, 1) << "the timer itself is stopped by then";
    EXPECT_EQ(use.count, 0);
}

TEST_F(WindowsPlatformTest, LastErrorIsSharedByTheServices) {
    platform.errors.SetLast(5);
    EXPECT_EQ(::GetLastError(), 5u);

    EXPECT_EQ(platform.windows.WindowText(0x7FFFFFF0), u"");
    EXPECT_EQ(platform.errors.Last(), 1400);
    platform.errors.ModuleText(u"kwo no such module.dll", 12007);
    EXPECT_EQ(platform.errors.Last(), 126);
}

TEST_F(WindowsPlatformTest, NamesEndAtAZeroCharacter) {
    constexpr TextView kFolder(u"C:\\windows\0\\no such file", 24);

    EXPECT_NE(platform.files.Attributes(kFolder), FileSystem::kNoAttributes);
    EXPECT_NE(platform.files.AttributesAnsi(kFolder), FileSystem::kNoAttributes);
}

TEST_F(WindowsPlatformTest, WildKeysAreInvalidHandles) {
    RegistryStore& registry = platform.registry;
    // A process, a thread, far-off numbers, and the program's own memory.
    for (const Handle key : {-1, -2, 1, 3, 0x7FFFFFF0, 0x12345678, static_cast<Handle>(0x8000FFFFu), 0x400000}) {
        EXPECT_EQ(registry.OpenKey(key, u"x", 1).status, 6) << key;
        EXPECT_EQ(registry.OpenKey(key, u"x", 1).key, 0) << key;
        EXPECT_EQ(registry.CreateKey(key, u"x", 1, true).status, 6) << key;
        EXPECT_EQ(registry.DeleteKey(key, u"x"), 6) << key;
        EXPECT_EQ(registry.DeleteValue(key, u"x"), 6) << key;
        const auto read = registry.Query(key, u"x", 4, '#');
        EXPECT_EQ(read.status, 6) << key;
        EXPECT_EQ(read.bytes, "####") << key;
        EXPECT_EQ(registry.SetString(key, u"x", u"v", 2), 6) << key;
    }
}

TEST_F(WindowsPlatformTest, FailedQueryLeavesNoPartOfTheValue) {
    RegistryStore& registry = platform.registry;
    const auto made =
        registry.CreateKey(static_cast<Handle>(0x80000001u), u"Software\\KWOUtilWindows", 0x20006 | 1, true);
    ASSERT_EQ(made.status, 0);
    ASSERT_EQ(registry.SetString(made.key, u"n", u"secret", 7), 0);

    const auto read = registry.Query(made.key, u"n", 6, '#');
    EXPECT_EQ(read.status, RegistryStore::kMoreData);
    EXPECT_EQ(read.length, 7u);
    EXPECT_EQ(read.bytes, "######");
    EXPECT_EQ(registry.Query(made.key, u"n", 7, '#').bytes, std::string("secret\0", 7));

    EXPECT_EQ(registry.CloseKey(made.key), 0);
    EXPECT_EQ(registry.DeleteKey(static_cast<Handle>(0x80000001u), u"Software\\KWOUtilWindows"), 0);
}

TEST_F(WindowsPlatformTest, KeyHandleIsInheritableAsAsked) {
    RegistryStore& registry = platform.registry;
    for (const bool inheritable : {true, false}) {
        const auto made =
            registry.CreateKey(static_cast<Handle>(0x80000001u), u"Software\\KWOUtilWindows", 1, inheritable);
        ASSERT_EQ(made.status, 0);
        DWORD flags = 0;
        EXPECT_TRUE(::GetHandleInformation(reinterpret_cast<HANDLE>(static_cast<INT_PTR>(made.key)), &flags));
        // Wine ignores the access with which a key is created.
        EXPECT_EQ((flags & HANDLE_FLAG_INHERIT) != 0, inheritable && !mIsWine);
        EXPECT_EQ(registry.CloseKey(made.key), 0);
    }
    EXPECT_EQ(registry.DeleteKey(static_cast<Handle>(0x80000001u), u"Software\\KWOUtilWindows"), 0);
}

TEST_F(WindowsPlatformTest, ProgramIsDescribedByItsVersionResource) {
    EXPECT_EQ(platform.host.Title(), u"Pr\u00FCfstand f\u00FCr Fenster");
    EXPECT_EQ(platform.host.ProductName(), u"KWOUtil contract");
    const HostApplication::Version version = platform.host.ProgramVersion();
    EXPECT_EQ(version.major, 3);
    EXPECT_EQ(version.minor, 14);
    EXPECT_EQ(version.revision, 9);
    EXPECT_EQ(platform.host.ExecutableName(), u"contract_tests");
}

TEST_F(WindowsPlatformTest, NamesAreThoseOfThePlainCalls) {
    wchar_t computer[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD computerLength = MAX_COMPUTERNAME_LENGTH + 1;
    ASSERT_TRUE(::GetComputerNameW(computer, &computerLength));
    wchar_t user[UNLEN + 1];
    DWORD userSize = UNLEN + 1;
    ASSERT_TRUE(::GetUserNameW(user, &userSize));

    Text name;
    EXPECT_TRUE(platform.host.ComputerName(name));
    EXPECT_EQ(name, Text(computer, computer + computerLength));
    EXPECT_TRUE(platform.host.UserName(name));
    EXPECT_EQ(name, Text(user, user + userSize - 1));
}

TEST_F(WindowsPlatformTest, ModuleIsTheOneGivenNotTheProgram) {
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    WindowsPlatform other(static_cast<HINSTANCE>(kernel));

    const Text name = other.Services().host.ModuleFileName();

    EXPECT_NE(name, platform.host.ModuleFileName());
    EXPECT_EQ(name.substr(name.rfind(u'.')), u".dll");
}

TEST_F(WindowsPlatformTest, LongModuleNameIsCutToItsBuffer) {
    const std::wstring folder = ProgramFolder();
    ASSERT_LT(folder.size(), 240u);
    const CopyOfProgram copy(folder + L'\\' + std::wstring(253 - folder.size(), L'm') + L".dll");
    ASSERT_EQ(copy.Path().size(), 258u);
    ASSERT_TRUE(copy.Made());
    const HMODULE module = ::LoadLibraryW(copy.Path().c_str());
    ASSERT_NE(module, nullptr);
    WindowsPlatform other(static_cast<HINSTANCE>(module));

    const Text name = other.Services().host.ModuleFileName();

    EXPECT_GE(name.size(), 254u);
    EXPECT_LE(name.size(), 255u);
    EXPECT_EQ(name, Text(copy.Path().begin(), copy.Path().begin() + static_cast<std::ptrdiff_t>(name.size())));
    ::FreeLibrary(module);
}

TEST_F(WindowsPlatformTest, InternetResponseOfNoBufferIsEmpty) {
    const auto response = platform.errors.LastInternetResponse(0);

    EXPECT_TRUE(response.succeeded);
    EXPECT_EQ(response.length, 0u);
    EXPECT_EQ(response.text, u"");
}

TEST_F(WindowsPlatformTest, TextsOfAModuleAreReadWhereItIsLoaded) {
    const HMODULE internet = ::LoadLibraryW(L"wininet.dll");
    ASSERT_NE(internet, nullptr);

    EXPECT_FALSE(platform.errors.ModuleText(u"wininet.dll", 12007).empty());
    EXPECT_EQ(platform.errors.ModuleText(u"wininet.dll", 12999), u"");
    EXPECT_EQ(platform.errors.SystemText(12999), u"");
    ::FreeLibrary(internet);
}

TEST_F(WindowsPlatformTest, ATextThatAsksForInsertsCannotBeGiven) {
    EXPECT_EQ(platform.errors.SystemText(193), u"");
    EXPECT_EQ(platform.errors.Last(), ERROR_INVALID_PARAMETER);
}

TEST_F(WindowsPlatformTest, PointerZeroIsTheArrow) {
    platform.screen.SetMousePointer(reinterpret_cast<std::intptr_t>(::LoadCursorW(nullptr, IDC_WAIT)));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(platform.screen.MousePointer(), reinterpret_cast<std::intptr_t>(::GetCursor()));

    platform.screen.SetMousePointer(0);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(platform.screen.MousePointer(), 0);
}

TEST_F(WindowsPlatformTest, AHiddenPointerIsHiddenAgain) {
    ::SetCursor(nullptr);
    const std::intptr_t hidden = platform.screen.MousePointer();
    platform.screen.SetMousePointer(0);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
    platform.screen.SetMousePointer(hidden);
    EXPECT_EQ(::GetCursor(), nullptr);
    platform.screen.SetMousePointer(0);
}

}  // namespace
}  // namespace kwo::platform::windows
