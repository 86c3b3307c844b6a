#include "com_test.h"
#include "dll_under_test.h"
#include "process_resources.h"
#include "thread.h"
#include "type_library_dump.h"

#include <olectl.h>

#include <atomic>
#include <memory>

namespace kwo::com_test {
namespace {

CLSID ClassIdOf(const wchar_t* name) {
    const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
    const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), name);
    return TypeAttributes(*info)->guid;
}

/// The process's own DLL, loaded by nobody else.
class Unloading : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(LetTheDllGo()) << "an earlier test still holds the DLL"; }
};

ComPtr<IDispatch> Make(const Library& library, REFCLSID id) {
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> object;
    EXPECT_EQ(Hex(library.GetClassObject(id, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    if (!factory) return object;
    EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())), Hex(S_OK));
    return object;
}

/// Use of all that a class keeps for later: names, type information, a call.
void Use(IDispatch* object) {
    EXPECT_EQ(Hex(Call(object, L"KWO_RegDeleteKey", {0, L"x"}).status), Hex(S_OK));
    EXPECT_EQ(Hex(Call(object, L"KWO_RegDeleteKey", {L"no number", L"x"}).status), Hex(DISP_E_TYPEMISMATCH));
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(Hex(object->GetTypeInfo(0, 0, info.Out())), Hex(S_OK));
}

TEST_F(Unloading, AFreshDllMayGo) {
    const Library library;
    ASSERT_TRUE(library);

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, AnObjectKeepsTheDll) {
    const Library library;
    const CLSID id = ClassIdOf(L"KWORegistry");
    ComPtr<IDispatch> first = Make(library, id);
    ComPtr<IDispatch> second = Make(library, id);
    ASSERT_TRUE(first && second);

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
    first.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
    second.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, EveryClassOfObjectKeepsTheDll) {
    const Library library;
    for (const std::wstring& name : ClassNames()) {
        ComPtr<IDispatch> object = Make(library, ClassIdOf(name.c_str()));
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE)) << Narrow(name);
        object.Reset();
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK)) << Narrow(name);
    }
}

TEST_F(Unloading, APartOfAnObjectKeepsTheDll) {
    const Library library;
    ComPtr<IDispatch> object = Make(library, ClassIdOf(L"KWORegistry"));
    ComPtr<IProvideClassInfo> part = As<IProvideClassInfo>(object.Get(), IID_IProvideClassInfo);
    ASSERT_TRUE(part);
    object.Reset();

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
    part.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, AClassObjectKeepsTheDll) {
    const Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(library.GetClassObject(ClassIdOf(L"KWOTimer"), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
    factory.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, ALockedServerStaysUntilItsLastUnlocking) {
    const Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(library.GetClassObject(ClassIdOf(L"KWOTimer"), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    EXPECT_EQ(Hex(factory->LockServer(TRUE)), Hex(S_OK));
    EXPECT_EQ(Hex(factory->LockServer(TRUE)), Hex(S_OK));
    factory.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));

    ASSERT_EQ(Hex(library.GetClassObject(ClassIdOf(L"KWORegistry"), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    EXPECT_EQ(Hex(factory->LockServer(FALSE)), Hex(S_OK));
    EXPECT_EQ(Hex(factory->LockServer(FALSE)), Hex(S_OK));
    factory.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, ARefusedCreationKeepsNothing) {
    const Library library;
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(Hex(library.GetClassObject(ClassIdOf(L"KWOTimer"), IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
    Probe outer;
    void* object = nullptr;
    EXPECT_EQ(Hex(factory->CreateInstance(&outer, IID_IUnknown, &object)), Hex(CLASS_E_NOAGGREGATION));
    EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IStream, &object)), Hex(E_NOINTERFACE));
    EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IUnknown, nullptr)), Hex(E_POINTER));
    factory.Reset();

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, AnErrorObjectThatIsStillOnTheThreadDoesNotKeepTheDllInUse) {
    const Library library;
    ComPtr<IDispatch> timer = Make(library, ClassIdOf(L"KWOTimer"));
    ASSERT_TRUE(timer);
    Get(timer.Get(), L"Interval");
    timer.Reset();

    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
    SetErrorInfo(0, nullptr);
}

void ProcessMessagesFor(DWORD ms) {
    const DWORD begin = GetTickCount();
    while (GetTickCount() - begin < ms) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
}

TEST_F(Unloading, PendingRowsAndTheirPlatformTimerKeepTheDll) {
    const Library library;
    ComPtr<IDispatch> timer = Make(library, ClassIdOf(L"KWOTimer"));
    ASSERT_TRUE(timer);
    EXPECT_EQ(Hex(Call(timer.Get(), L"AddRelativeAlarm", {50, 1}).status), Hex(S_OK));
    timer.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));

    ProcessMessagesFor(300);
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK)) << "the last alarm has ended the timer";
}

TEST_F(Unloading, APlatformTimerThatRunsOnForATimerWithoutRowsKeepsTheDll) {
    const Library library;
    ComPtr<IDispatch> timer = Make(library, ClassIdOf(L"KWOTimer"));
    ASSERT_TRUE(timer);
    Call(timer.Get(), L"AddRelativeAlarm", {20, 1});
    ProcessMessagesFor(200);
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));

    timer.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, ADllThatIsTornOutStopsItsPlatformTimers) {
    const CLSID id = ClassIdOf(L"KWOTimer");
    for (int round = 0; round < 20; ++round) {
        const Library library;
        IDispatch* const leaked = [&] {
            ComPtr<IDispatch> timer = Make(library, id);
            Let(timer.Get(), L"Interval", 10);
            Let(timer.Get(), L"Enabled", true);
            timer->AddRef();
            return timer.Get();
        }();
        ASSERT_NE(leaked, nullptr);
        ProcessMessagesFor(15);
    }
    ASSERT_EQ(GetModuleHandleW(L"KWOUtil.dll"), nullptr);
    // A timer that was left running would now call into nothing.
    ProcessMessagesFor(200);
}

ComPtr<IDispatch> UsualIcon() {
    PICTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = LoadIconW(nullptr, IDI_APPLICATION);
    ComPtr<IDispatch> picture;
    EXPECT_EQ(Hex(OleCreatePictureIndirect(&description, IID_IDispatch, FALSE, picture.OutVoid())), Hex(S_OK));
    return picture;
}

/// Shows an icon and keeps it, as a client does that holds itself in a circle.
void LeakAnIcon(const Library& library, HWND window) {
    ComPtr<IDispatch> tray = Make(library, ClassIdOf(L"KWOSysTray"));
    ASSERT_TRUE(tray);
    const auto number = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window));
    EXPECT_EQ(Hex(Call(tray.Get(), L"Create", {number, UsualIcon().Get(), L"tip"}).status), Hex(S_OK));
    static_cast<void>(tray.Detach());
}

/// Where a module is, or was.
struct Place {
    explicit Place(HMODULE module) : begin(reinterpret_cast<LONG_PTR>(module)) {
        const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
        const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + dos->e_lfanew);
        end = begin + static_cast<LONG_PTR>(headers->OptionalHeader.SizeOfImage);
    }
    LONG_PTR begin;
    LONG_PTR end;
};

struct WindowCount {
    const Place& place;
    int count = 0;
};

BOOL CALLBACK CountIfThere(HWND window, LPARAM parameter) {
    auto& counted = *reinterpret_cast<WindowCount*>(parameter);
    const LONG_PTR procedure = GetWindowLongPtrW(window, GWLP_WNDPROC);
    if (procedure >= counted.place.begin && procedure < counted.place.end) ++counted.count;
    return TRUE;
}

/// How many windows of this thread have their procedure there.
int WindowsOf(const Place& module) {
    WindowCount counted{module};
    EnumThreadWindows(GetCurrentThreadId(), CountIfThere, reinterpret_cast<LPARAM>(&counted));
    return counted.count;
}

TEST_F(Unloading, ADllThatIsTornOutListensToNoTaskbarAnyMore) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 9, 9, HWND_MESSAGE, nullptr, nullptr, nullptr);
    auto library = std::make_unique<const Library>();
    const Place dll(GetModuleHandleW(L"KWOUtil.dll"));
    LeakAnIcon(*library, window);
    EXPECT_EQ(WindowsOf(dll), 1);

    library.reset();
    EXPECT_EQ(GetModuleHandleW(L"KWOUtil.dll"), nullptr);
    EXPECT_EQ(WindowsOf(dll), 0);
    DestroyWindow(window);
}

TEST_F(Unloading, FreeingTheDllTakesItOutOfTheProcess) {
    {
        const Library library;
        ComPtr<IDispatch> object = Make(library, ClassIdOf(L"KWORegistry"));
        ASSERT_TRUE(object);
        Use(object.Get());
        object.Reset();
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
        EXPECT_NE(GetModuleHandleW(L"KWOUtil.dll"), nullptr);
    }
    EXPECT_EQ(GetModuleHandleW(L"KWOUtil.dll"), nullptr);
}

TEST_F(Unloading, AHundredRoundsOfLoadingAndUseLeaveNoHandleBehind) {
    const CLSID id = ClassIdOf(L"KWORegistry");
    const auto round = [&id] {
        const Library library;
        ComPtr<IDispatch> object = Make(library, id);
        ASSERT_TRUE(object);
        Use(object.Get());
        object.Reset();
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
    };
    for (int i = 0; i < 3; ++i)
        round();
    const long before = HandlesInUse();

    for (int i = 0; i < 100; ++i) {
        round();
        ASSERT_EQ(GetModuleHandleW(L"KWOUtil.dll"), nullptr) << "round " << i;
    }

    EXPECT_LT(HandlesInUse(), before + 20);
}

TEST_F(Unloading, AThreadThatIsOlderThanTheDllUsesItToo) {
    const CLSID id = ClassIdOf(L"KWOTimer");
    const HANDLE loaded = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const Library* library = nullptr;
    Thread older([&] {
        WaitForSingleObject(loaded, INFINITE);
        CoInitialize(nullptr);
        for (int round = 0; round < 3; ++round) {
            const ComPtr<IDispatch> timer = Make(*library, id);
            EXPECT_EQ(Hex(Call(timer.Get(), L"AddAlarm", {Var::Date(1e300), 7}).status), Hex(DISP_E_EXCEPTION));
        }
        CoUninitialize();
    });
    const Library mine;
    library = &mine;
    SetEvent(loaded);
    older.Join();
    CloseHandle(loaded);
    SetErrorInfo(0, nullptr);

    EXPECT_EQ(Hex(mine.CanUnloadNow()), Hex(S_OK));
}

TEST_F(Unloading, TheSystemLetsAnUnusedDllGo) {
    ComPtr<IDispatch> object = Create(L"KWORegistry");
    ASSERT_TRUE(object);
    EXPECT_FALSE(LetTheDllGo());
    Use(object.Get());
    object.Reset();

    EXPECT_TRUE(LetTheDllGo());
}

// Apartments

TEST(Apartments, TwoAtOnceEachHaveTheirObjects) {
    std::atomic<int> good = 0;
    const auto work = [&good] {
        if (FAILED(CoInitialize(nullptr))) return;
        bool fine = true;
        for (int i = 0; i < 50; ++i) {
            const ComPtr<IDispatch> registry = Create(L"KWORegistry");
            const ComPtr<IDispatch> timer = Create(L"KWOTimer");
            fine = fine && registry && timer &&
                   Call(registry.Get(), L"KWO_RegDeleteKey", {0, L"x"}).result.lVal == ERROR_INVALID_HANDLE &&
                   static_cast<bool>(Reached(Get(timer.Get(), L"Interval"), L"KWOTimer"));
        }
        CoUninitialize();
        if (fine) ++good;
    };
    Thread first(work);
    Thread second(work);
    first.Join();
    second.Join();

    EXPECT_EQ(good, 2);
}

TEST(Apartments, AnObjectOutlivesAnotherApartmentsEnd) {
    const ComPtr<IDispatch> mine = Create(L"KWORegistry");
    ASSERT_TRUE(mine);
    Thread other([] {
        CoInitialize(nullptr);
        Create(L"KWORegistry");
        CoUninitialize();
    });
    other.Join();

    EXPECT_EQ(Hex(Call(mine.Get(), L"KWO_RegDeleteKey", {0, L"x"}).status), Hex(S_OK));
}

TEST(Apartments, AfterAllOfThemTheDllMayGo) {
    Thread other([] {
        CoInitialize(nullptr);
        Create(L"KWOTimer");
        CoUninitialize();
    });
    other.Join();

    EXPECT_TRUE(LetTheDllGo());
}

}  // namespace
}  // namespace kwo::com_test
