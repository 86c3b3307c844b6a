#include <olectl.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "allocation_faults.h"
#include "com_test.h"
#include "host_form.h"
#include "replaced_function.h"
#include "wine.h"

namespace kwo::com_test {
namespace {

/// A window of the caller's that remembers what the notification area reports.
class CallerWindow {
public:
    CallerWindow() {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = OnMessage;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"KWOTrayCaller";
        RegisterClassW(&windowClass);
        mWindow = CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                  windowClass.hInstance, nullptr);
        SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    CallerWindow(const CallerWindow&) = delete;
    CallerWindow& operator=(const CallerWindow&) = delete;
    ~CallerWindow() { DestroyWindow(mWindow); }

    long Handle() const { return static_cast<long>(reinterpret_cast<INT_PTR>(mWindow)); }

    struct Report {
        WPARAM icon;
        LPARAM message;
    };
    std::vector<Report> reports;

    bool Heard(LPARAM message) const {
        return std::any_of(reports.begin(), reports.end(),
                           [&](const Report& report) { return report.message == message; });
    }

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* const self = reinterpret_cast<CallerWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == 512 && self != nullptr) self->reports.push_back({first, second});
        return DefWindowProcW(window, message, first, second);
    }

    HWND mWindow;
};

/// A picture of one colour, owned by the picture object.
ComPtr<IDispatch> MakePicture(short type, COLORREF colour) {
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 16, 16);
    const HBITMAP mask = CreateBitmap(16, 16, 1, 1, nullptr);
    const RECT area = {0, 0, 16, 16};
    const HBRUSH brush = CreateSolidBrush(colour);
    HGDIOBJ before = SelectObject(memory, bitmap);
    FillRect(memory, &area, brush);
    SelectObject(memory, mask);
    PatBlt(memory, 0, 0, 16, 16, BLACKNESS);
    SelectObject(memory, before);
    DeleteObject(brush);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);

    PICTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.picType = static_cast<UINT>(type);
    if (type == PICTYPE_ICON) {
        ICONINFO icon = {TRUE, 0, 0, mask, bitmap};
        description.icon.hicon = CreateIconIndirect(&icon);
        DeleteObject(bitmap);
    } else {
        description.bmp.hbitmap = bitmap;
    }
    DeleteObject(mask);
    ComPtr<IDispatch> picture;
    EXPECT_EQ(Hex(OleCreatePictureIndirect(&description, IID_IDispatch, TRUE, picture.OutVoid())), Hex(S_OK));
    return picture;
}

void ProcessMessages(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < milliseconds) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        Sleep(5);
    }
}

constexpr COLORREF kMagenta = RGB(255, 0, 255);
constexpr COLORREF kGreen = RGB(0, 255, 0);

class SysTrayClass : public ::testing::Test {
protected:
    void SetUp() override {
        mTray = Create(L"KWOSysTray");
        ASSERT_TRUE(mTray);
        mIcon = MakePicture(PICTYPE_ICON, kMagenta);
        ASSERT_TRUE(mIcon);
    }
    Outcome CreateIcon(IDispatch* tray, const CallerWindow& window, IDispatch* icon, const std::wstring& tip) {
        return Call(tray, L"Create", {window.Handle(), icon, tip});
    }
    bool Creates(IDispatch* tray, const CallerWindow& window, IDispatch* icon, const std::wstring& tip = L"tip") {
        const Outcome outcome = CreateIcon(tray, window, icon, tip);
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        return outcome.result.boolVal == VARIANT_TRUE;
    }
    std::wstring Tip() { return Get(mTray.Get(), L"Tip").result.Text(); }

    CallerWindow mWindow;
    ComPtr<IDispatch> mTray;
    ComPtr<IDispatch> mIcon;
};

TEST_F(SysTrayClass, AnEndWithoutMemoryIsLeftByTheHostAlive) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"Hello"));
    {
        const AllocationFaults faults(1);
        EXPECT_EQ(mTray.Reset(), 0u);
        EXPECT_TRUE(faults.Happened());
    }
    mIcon->AddRef();
    EXPECT_EQ(mIcon->Release(), 1u) << "the object is gone for all that";
}

TEST_F(SysTrayClass, AnIconIsAddedChangedAndRemoved) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"Hello"));
    EXPECT_EQ(Tip(), L"Hello");
    EXPECT_EQ(Get(mTray.Get(), L"Icon").result.pdispVal, mIcon.Get());

    EXPECT_EQ(Hex(Let(mTray.Get(), L"Tip", L"Changed").status), Hex(S_OK));
    EXPECT_EQ(Tip(), L"Changed");
    const ComPtr<IDispatch> other = MakePicture(PICTYPE_ICON, kGreen);
    EXPECT_EQ(Hex(Set(mTray.Get(), L"Icon", other.Get()).status), Hex(S_OK));
    EXPECT_EQ(Get(mTray.Get(), L"Icon").result.pdispVal, other.Get());

    // There is one icon for a window: a second object gets none until the first has gone.
    const ComPtr<IDispatch> second = Create(L"KWOSysTray");
    EXPECT_FALSE(Creates(second.Get(), mWindow, mIcon.Get()));
    EXPECT_EQ(Hex(Call(mTray.Get(), L"Destroy").status), Hex(S_OK));
    EXPECT_TRUE(Creates(second.Get(), mWindow, mIcon.Get()));
}

TEST_F(SysTrayClass, TheIconGoesWithTheObject) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get()));
    EXPECT_EQ(mTray.Reset(), 0u);

    mTray = Create(L"KWOSysTray");
    EXPECT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get()));
}

TEST_F(SysTrayClass, TwoWindowsHaveTheirOwnIcons) {
    const CallerWindow otherWindow;
    const ComPtr<IDispatch> other = Create(L"KWOSysTray");
    EXPECT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"one"));
    EXPECT_TRUE(Creates(other.Get(), otherWindow, mIcon.Get(), L"two"));
    EXPECT_EQ(Tip(), L"one");
    EXPECT_EQ(Get(other.Get(), L"Tip").result.Text(), L"two");
}

TEST_F(SysTrayClass, ABitmapIsRefusedAndTakesTheIconAway) {
    const ComPtr<IDispatch> bitmap = MakePicture(PICTYPE_BITMAP, kGreen);
    ASSERT_TRUE(bitmap);
    EXPECT_FALSE(Creates(mTray.Get(), mWindow, bitmap.Get()));
    EXPECT_EQ(Get(mTray.Get(), L"Icon").result.pdispVal, nullptr);

    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get()));
    EXPECT_FALSE(Creates(mTray.Get(), mWindow, bitmap.Get()));
    const ComPtr<IDispatch> second = Create(L"KWOSysTray");
    EXPECT_TRUE(Creates(second.Get(), mWindow, mIcon.Get())) << "the icon was still there";
    EXPECT_EQ(Hex(Set(mTray.Get(), L"Icon", bitmap.Get()).status), Hex(S_OK));
    EXPECT_EQ(Get(mTray.Get(), L"Icon").result.pdispVal, mIcon.Get());
}

TEST_F(SysTrayClass, HandlesCrossAsWhateverNumberHoldsThem) {
    for (const Var& window : {Var(mWindow.Handle()), Var(static_cast<long long>(mWindow.Handle())),
                              Var(static_cast<double>(mWindow.Handle())), Var(std::to_wstring(mWindow.Handle()))}) {
        const Outcome outcome = Call(mTray.Get(), L"Create", {window, mIcon.Get(), L"tip"});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << window.vt;
        EXPECT_EQ(outcome.result.boolVal, VARIANT_TRUE) << window.vt;
    }
}

TEST_F(SysTrayClass, ATipIsCutTo64Characters) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), std::wstring(63, L'x')));
    EXPECT_EQ(Tip(), std::wstring(63, L'x'));
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), std::wstring(70, L'y')));
    EXPECT_EQ(Tip(), std::wstring(64, L'y'));
    EXPECT_EQ(Hex(Let(mTray.Get(), L"Tip", std::wstring(100, L'z')).status), Hex(S_OK));
    EXPECT_EQ(Tip(), std::wstring(64, L'z'));
}

TEST_F(SysTrayClass, ATipBeforeTheIconIsDropped) {
    EXPECT_EQ(Hex(Let(mTray.Get(), L"Tip", L"early").status), Hex(S_OK));
    EXPECT_EQ(Tip(), L"");
}

TEST_F(SysTrayClass, WhatIsNoPictureIsRefused) {
    const Outcome none = CreateIcon(mTray.Get(), mWindow, nullptr, L"tip");
    EXPECT_EQ(Hex(none.scode), Hex(static_cast<HRESULT>(0x800A005B)));
    EXPECT_EQ(none.source, L"KWOSysTray.Create");
    EXPECT_EQ(Hex(Set(mTray.Get(), L"Icon", static_cast<IDispatch*>(nullptr)).scode),
              Hex(static_cast<HRESULT>(0x800A005B)));
    Probe stranger;
    EXPECT_EQ(Hex(CreateIcon(mTray.Get(), mWindow, &stranger, L"tip").scode), Hex(static_cast<HRESULT>(0x800A01B6)));
    EXPECT_EQ(Hex(Call(mTray.Get(), L"Create", {mWindow.Handle(), L"no picture", L"tip"}).status),
              Hex(DISP_E_TYPEMISMATCH));
    EXPECT_EQ(stranger.references, 0u);
}

/// A picture that has the dispatch identifiers of pictures and nothing else.
class DispatchPicture final : public PropertyObject {
public:
    DispatchPicture(short type, OLE_HANDLE handle)
        : PropertyObject(std::map<std::wstring, Var>()), mType(type), mHandle(handle) {
        interfaceId = IID_IPictureDisp;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                        UINT*) override {
        if ((flags & DISPATCH_PROPERTYGET) == 0 || parameters->cArgs != 0) return DISP_E_MEMBERNOTFOUND;
        if (id == 3) {
            result->vt = VT_I2;
            result->iVal = mType;
            return failure.empty() ? S_OK : Fail(info);
        }
        if (id != 0) return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_I4;
        result->lVal = static_cast<LONG>(mHandle);
        return S_OK;
    }
    std::wstring failure;

private:
    HRESULT Fail(EXCEPINFO* info) {
        info->scode = static_cast<SCODE>(0x800A01E1);
        info->bstrSource = SysAllocString(L"Host");
        info->bstrDescription = SysAllocString(failure.c_str());
        return DISP_E_EXCEPTION;
    }
    short mType;
    OLE_HANDLE mHandle;
};

TEST_F(SysTrayClass, PicturesAreReachedByTheirDispatchIdentifiers) {
    const ComPtr<IPicture> native = As<IPicture>(mIcon.Get(), IID_IPicture);
    OLE_HANDLE handle = 0;
    native->get_Handle(&handle);
    DispatchPicture picture(3, handle);
    EXPECT_TRUE(Creates(mTray.Get(), mWindow, &picture));
    EXPECT_EQ(Get(mTray.Get(), L"Icon").result.pdispVal, &picture);

    DispatchPicture bitmap(1, handle);
    EXPECT_FALSE(Creates(mTray.Get(), mWindow, &bitmap));
    picture.failure = L"Invalid picture";
    const Outcome outcome = CreateIcon(mTray.Get(), mWindow, &picture, L"tip");
    EXPECT_EQ(Hex(outcome.scode), "0x800A01E1");
    EXPECT_EQ(outcome.source, L"Host");
    EXPECT_EQ(outcome.description, L"Invalid picture");
    EXPECT_EQ(bitmap.references, 0u);
    mTray = {};
    EXPECT_EQ(picture.references, 0u);
}

TEST_F(SysTrayClass, MessageNumbersAreThoseOfTheMouse) {
    const auto number = [&](const wchar_t* property, short button) {
        return Get(mTray.Get(), property, {Var(button)}).result.lVal;
    };
    EXPECT_EQ(number(L"MouseDownMsg", 1), WM_LBUTTONDOWN);
    EXPECT_EQ(number(L"MouseDownMsg", 2), WM_RBUTTONDOWN);
    EXPECT_EQ(number(L"MouseUpMsg", 1), WM_LBUTTONUP);
    EXPECT_EQ(number(L"MouseUpMsg", 2), WM_RBUTTONUP);
    EXPECT_EQ(number(L"DoubleClickMsg", 1), WM_LBUTTONDBLCLK);
    EXPECT_EQ(number(L"DoubleClickMsg", 2), WM_RBUTTONDBLCLK);
    EXPECT_EQ(number(L"MouseUpMsg", 3), 0);
}

/// Records what the notification area would be told.
struct Told {
    DWORD message;
    NOTIFYICONDATAA record;
    std::string Tip() const { return std::string(record.szTip, 64); }
};
std::vector<Told> theTold;
BOOL theAnswer = TRUE;

BOOL WINAPI HearNotifyIcon(DWORD message, NOTIFYICONDATAA* record) {
    Told told = {message, {}};
    std::memcpy(&told.record, record, std::min<std::size_t>(record->cbSize, sizeof told.record));
    theTold.push_back(told);
    return theAnswer;
}

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

class NotificationAreaIsTold : public SysTrayClass {
protected:
    void SetUp() override {
        SysTrayClass::SetUp();
        theTold.clear();
        theAnswer = TRUE;
        mReplaced.emplace("Shell_NotifyIconA", &HearNotifyIcon);
        mHandle = HandleOf(mIcon.Get());
    }
    void TearDown() override { mTray = {}; }
    static HICON HandleOf(IDispatch* picture) {
        OLE_HANDLE handle = 0;
        As<IPicture>(picture, IID_IPicture)->get_Handle(&handle);
        return reinterpret_cast<HICON>(static_cast<INT_PTR>(static_cast<LONG>(handle)));
    }
    static std::string TipOf(std::string text) {
        text.push_back('\0');
        text.resize(64, ' ');
        return text;
    }
    /// What the shell does when it is started again.
    static void RecreateTaskbar() {
        for (const HWND window : Windows())
            PostMessageW(window, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
        ProcessMessages(20);
    }
    /// The top-level windows of this thread.
    static std::vector<HWND> Windows() {
        std::vector<HWND> windows;
        EnumThreadWindows(GetCurrentThreadId(), AddWindow, reinterpret_cast<LPARAM>(&windows));
        return windows;
    }

    std::optional<ReplacedFunction> mReplaced;
    HICON mHandle = nullptr;
};

TEST_F(NotificationAreaIsTold, TheWholeRecordWhenAnIconIsAdded) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"Hello"));

    ASSERT_EQ(theTold.size(), 1u);
    const NOTIFYICONDATAA& record = theTold[0].record;
    EXPECT_EQ(theTold[0].message, static_cast<DWORD>(NIM_ADD));
    EXPECT_EQ(record.cbSize, sizeof(void*) == 4 ? 88u : 104u);
    EXPECT_EQ(static_cast<long>(reinterpret_cast<INT_PTR>(record.hWnd)), mWindow.Handle());
    EXPECT_EQ(record.uID, static_cast<UINT>(reinterpret_cast<UINT_PTR>(GetModuleHandleW(L"KWOUtil.dll"))));
    EXPECT_EQ(record.uFlags, static_cast<UINT>(NIF_MESSAGE | NIF_ICON | NIF_TIP));
    EXPECT_EQ(record.uCallbackMessage, 512u);
    EXPECT_EQ(record.hIcon, mHandle);
    EXPECT_EQ(theTold[0].Tip(), TipOf("Hello"));
}

TEST_F(NotificationAreaIsTold, OnlyWhatChanges) {
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"Hello"));
    Let(mTray.Get(), L"Tip", L"Changed");
    const ComPtr<IDispatch> other = MakePicture(PICTYPE_ICON, kGreen);
    Set(mTray.Get(), L"Icon", other.Get());
    Call(mTray.Get(), L"Destroy");

    ASSERT_EQ(theTold.size(), 4u);
    EXPECT_EQ(theTold[1].message, static_cast<DWORD>(NIM_MODIFY));
    EXPECT_EQ(theTold[1].record.uFlags, static_cast<UINT>(NIF_TIP));
    EXPECT_EQ(theTold[1].Tip(), TipOf("Changed"));
    EXPECT_EQ(theTold[2].message, static_cast<DWORD>(NIM_MODIFY));
    EXPECT_EQ(theTold[2].record.uFlags, static_cast<UINT>(NIF_ICON));
    EXPECT_EQ(theTold[2].record.hIcon, HandleOf(other.Get()));
    EXPECT_EQ(theTold[3].message, static_cast<DWORD>(NIM_DELETE));
    for (const Told& told : theTold) {
        EXPECT_EQ(told.record.cbSize, theTold[0].record.cbSize);
        EXPECT_EQ(told.record.hWnd, theTold[0].record.hWnd);
        EXPECT_EQ(told.record.uID, theTold[0].record.uID);
    }
}

TEST_F(NotificationAreaIsTold, ATipOf64BytesWithoutAnEnd) {
    Creates(mTray.Get(), mWindow, mIcon.Get(), std::wstring(63, L'x'));
    Let(mTray.Get(), L"Tip", std::wstring(64, L'y'));
    Let(mTray.Get(), L"Tip", std::wstring(70, L'z'));

    ASSERT_EQ(theTold.size(), 3u);
    EXPECT_EQ(theTold[0].Tip(), TipOf(std::string(63, 'x')));
    EXPECT_EQ(theTold[1].Tip(), std::string(64, 'y'));
    EXPECT_EQ(theTold[2].Tip(), std::string(64, 'z'));
}

TEST_F(NotificationAreaIsTold, CharactersThatTheCodePageLacksAreReplaced) {
    Creates(mTray.Get(), mWindow, mIcon.Get(), L"a\u4E00b");

    ASSERT_EQ(theTold.size(), 1u);
    char expected[10] = "";
    WideCharToMultiByte(CP_ACP, 0, L"a\u4E00b", -1, expected, 10, nullptr, nullptr);
    EXPECT_EQ(theTold[0].Tip(), TipOf(expected));
    EXPECT_EQ(Tip(), L"a\u4E00b");
}

TEST_F(NotificationAreaIsTold, OfShownIconsAgainWhenTheTaskbarIsCreatedAnew) {
    const CallerWindow otherWindow;
    const ComPtr<IDispatch> other = Create(L"KWOSysTray");
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"Hello"));
    ASSERT_TRUE(Creates(other.Get(), otherWindow, mIcon.Get(), L"Other"));
    Let(mTray.Get(), L"Tip", L"Changed");
    const std::vector<Told> before = std::exchange(theTold, {});

    RecreateTaskbar();

    ASSERT_EQ(theTold.size(), 2u);
    EXPECT_EQ(theTold[0].Tip(), TipOf("Changed"));
    EXPECT_EQ(theTold[1].Tip(), TipOf("Other"));
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(theTold[i].message, static_cast<DWORD>(NIM_ADD));
        EXPECT_EQ(theTold[i].record.hWnd, before[i].record.hWnd);
        EXPECT_EQ(theTold[i].record.uID, before[i].record.uID);
        EXPECT_EQ(theTold[i].record.uFlags, static_cast<UINT>(NIF_MESSAGE | NIF_ICON | NIF_TIP));
        EXPECT_EQ(theTold[i].record.uCallbackMessage, 512u);
        EXPECT_EQ(theTold[i].record.hIcon, mHandle);
    }

    // An icon that the shell would not take is still the object's: the next taskbar gets it.
    theAnswer = FALSE;
    RecreateTaskbar();
    theAnswer = TRUE;
    Call(other.Get(), L"Destroy");
    theTold.clear();
    RecreateTaskbar();
    EXPECT_EQ(theTold.size(), 1u);
}

TEST_F(NotificationAreaIsTold, OfNoIconThatIsNotShown) {
    const std::size_t windows = Windows().size();
    theAnswer = FALSE;
    EXPECT_FALSE(Creates(mTray.Get(), mWindow, mIcon.Get()));
    theAnswer = TRUE;
    EXPECT_EQ(Windows().size(), windows);
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get()));
    EXPECT_EQ(Windows().size(), windows + 1);
    Call(mTray.Get(), L"Destroy");
    EXPECT_EQ(Windows().size(), windows);
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get()));
    mTray = {};
    EXPECT_EQ(Windows().size(), windows);

    theTold.clear();
    RecreateTaskbar();
    EXPECT_EQ(theTold.size(), 0u);
}

/// Processes messages until `holds` answers true, for 20 seconds at most. The last answer.
template <class Condition>
bool Becomes(const Condition& holds) {
    constexpr DWORD kPatienceMs = 20'000;
    const DWORD start = GetTickCount();
    while (!holds() && GetTickCount() - start < kPatienceMs)
        ProcessMessages(20);
    return holds();
}

/// What is on the screen.
class ScreenShot {
public:
    ScreenShot() {
        const HDC screen = GetDC(nullptr);
        mWidth = GetSystemMetrics(SM_CXSCREEN);
        mHeight = GetSystemMetrics(SM_CYSCREEN);
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof info.bmiHeader, mWidth, mHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HDC memory = CreateCompatibleDC(screen);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, mWidth, mHeight, screen, 0, 0, SRCCOPY);
        GdiFlush();
        mPixels.assign(static_cast<DWORD*>(bits), static_cast<DWORD*>(bits) + mWidth * mHeight);
        SelectObject(memory, before);
        DeleteDC(memory);
        DeleteObject(bitmap);
        ReleaseDC(nullptr, screen);
    }
    /// The middle of the first area of that colour of some size; false when there is none.
    bool Find(COLORREF colour, POINT& place) const {
        const DWORD wanted = GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour);
        for (int y = 0; y < mHeight; ++y) {
            for (int x = 0; x + 10 < mWidth; ++x) {
                if (At(x, y) == wanted && At(x + 10, y) == wanted) {
                    place = {x + 6, y + 6};
                    return true;
                }
            }
        }
        return false;
    }
    /// As a bitmap file in the folder for pictures, if there is one.
    void Save(const wchar_t* name) const {
        wchar_t folder[1024];
        const DWORD length = GetEnvironmentVariableW(L"KWO_PICTURES", folder, 1024);
        if (length == 0 || length >= 1024) return;
        const DWORD size = static_cast<DWORD>(mPixels.size() * sizeof(DWORD));
        BITMAPFILEHEADER file = {0x4D42, static_cast<DWORD>(sizeof file + sizeof(BITMAPINFOHEADER)) + size, 0, 0,
                                 static_cast<DWORD>(sizeof file + sizeof(BITMAPINFOHEADER))};
        BITMAPINFOHEADER info = {sizeof info, mWidth, mHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        FILE* const output = _wfopen((std::wstring(folder) + L"\\" + name).c_str(), L"wb");
        ASSERT_NE(output, nullptr);
        std::fwrite(&file, sizeof file, 1, output);
        std::fwrite(&info, sizeof info, 1, output);
        std::fwrite(mPixels.data(), sizeof(DWORD), mPixels.size(), output);
        std::fclose(output);
    }

private:
    /// The rows stand upside down.
    DWORD At(int x, int y) const {
        return mPixels[static_cast<std::size_t>((mHeight - 1 - y) * mWidth + x)] & 0xFFFFFF;
    }
    int mWidth;
    int mHeight;
    std::vector<DWORD> mPixels;
};

void Move(POINT to) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = MulDiv(to.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = MulDiv(to.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    SendInput(1, &input, sizeof input);
}

void Press(DWORD down, DWORD up) {
    for (const DWORD flag : {down, up}) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        SendInput(1, &input, sizeof input);
    }
}

TEST_F(SysTrayClass, TheIconIsOnTheScreenAndReportsThePointer) {
    // Windows puts a new icon where the user does not see it. Wine has a window of its own for icons.
    if (!IsWine()) GTEST_SKIP() << "the icon may be hidden";
    Move({500, 500});
    POINT place = {};
    ASSERT_FALSE(ScreenShot().Find(kMagenta, place)) << "something else has the colour of the icon";
    ASSERT_TRUE(Creates(mTray.Get(), mWindow, mIcon.Get(), L"An icon of one colour"));
    ASSERT_TRUE(Becomes([&] { return ScreenShot().Find(kMagenta, place); }));
    ScreenShot().Save(L"tray-icon.bmp");

    const auto hears = [&](LPARAM message) { return Becomes([&] { return mWindow.Heard(message); }); };
    Move(place);
    Press(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(hears(WM_MOUSEMOVE));
    EXPECT_TRUE(hears(Get(mTray.Get(), L"MouseDownMsg", {1}).result.lVal));
    EXPECT_TRUE(hears(Get(mTray.Get(), L"MouseUpMsg", {1}).result.lVal));
    EXPECT_FALSE(mWindow.Heard(Get(mTray.Get(), L"MouseDownMsg", {2}).result.lVal));
    Press(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    Press(MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
    EXPECT_TRUE(hears(Get(mTray.Get(), L"DoubleClickMsg", {1}).result.lVal));
    Press(MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    EXPECT_TRUE(hears(Get(mTray.Get(), L"MouseDownMsg", {2}).result.lVal));
    EXPECT_TRUE(hears(Get(mTray.Get(), L"MouseUpMsg", {2}).result.lVal));
    for (const CallerWindow::Report& report : mWindow.reports)
        EXPECT_EQ(report.icon, mWindow.reports[0].icon);

    const ComPtr<IDispatch> other = MakePicture(PICTYPE_ICON, kGreen);
    Set(mTray.Get(), L"Icon", other.Get());
    Move({500, 500});
    EXPECT_TRUE(Becomes([&] { return ScreenShot().Find(kGreen, place) && !ScreenShot().Find(kMagenta, place); }));
    mTray = {};
    EXPECT_TRUE(Becomes([&] { return !ScreenShot().Find(kGreen, place); }));
}

}  // namespace
}  // namespace kwo::com_test
