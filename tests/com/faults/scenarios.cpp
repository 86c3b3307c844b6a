// What clients do with each class. A scenario may run into a failure at each step and must go on all the same.

#include <dispex.h>
#include <olectl.h>
#include <shellapi.h>

#include "com_support/module_path.h"
#include "com_support/owned_array.h"
#include "fault_rounds.h"
#include "host_box.h"
#include "host_form.h"
#include "host_pane.h"
#include "timer_client.h"
#include "timer_slots.h"

namespace kwo::com_test {
namespace {

using windows_calls::FindFunction;

constexpr long kCurrentUserKey = static_cast<long>(0x80000001);
constexpr const wchar_t* kFaultsKey = L"Software\\KWOUtilFaults";

/// A key that the caller was given is closed as the DLL's own, so that it is counted.
void CloseKey(long key) {
    auto* const close = reinterpret_cast<decltype(&RegCloseKey)>(FindFunction("RegCloseKey")->standIn);
    close(reinterpret_cast<HKEY>(static_cast<INT_PTR>(key)));
}

class RegistryScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const registry = stage.Object(L"KWORegistry");
        if (registry == nullptr) return;
        const auto text = [](const wchar_t* value) { return Var(value); };
        // The number of the key differs from run to run.
        const Outcome made = InvokeId(registry, IdOf(registry, L"KWO_RegCreateKey"), DISPATCH_METHOD,
                                      {kCurrentUserKey, text(kFaultsKey)});
        const bool hasKey = made.status == S_OK && made.result.lVal > 0;
        stage.Note("KWO_RegCreateKey", made.status == DISP_E_EXCEPTION ? made.scode : made.status,
                   hasKey ? "a key" : "no key");
        stage.Call(
            registry, L"KWO_RegSetValue",
            {kCurrentUserKey, text(kFaultsKey), text(L"a name of some length"), text(L"a value of some length")});
        Bstr value(L"some text that is replaced");
        stage.Call(registry, L"KWO_RegGetValue",
                   {kCurrentUserKey, text(kFaultsKey), text(L"a name of some length"), Var::Ref(value.InOut())});
        if (hasKey) {
            const long key = made.result.lVal;
            stage.Call(registry, L"KWO_RegGetValueEx", {key, text(L"a name of some length"), text(L"default")});
            stage.Call(registry, L"KWO_RegGetValueEx", {key, text(L"no such name at all"), 7});
            stage.Call(registry, L"KWO_RegGetValueEx", {key, text(L"a name of some length"), 7});
            CloseKey(key);
        }
        stage.Call(registry, L"KWO_RegDeleteValue",
                   {kCurrentUserKey, text(kFaultsKey), text(L"a name of some length")});
        stage.Call(registry, L"KWO_RegDeleteKey", {kCurrentUserKey, text(kFaultsKey)});
        stage.Call(registry, L"KWO_RegGetValue", {text(L"no number"), 1, 2, 3});
    }
};

/// A window of this program that can be found by its title.
class TitledWindow {
public:
    TitledWindow() {
        mWindow = CreateWindowExW(0, L"STATIC", L"KWO import faults", WS_POPUP, 0, 0, 20, 20, nullptr, nullptr, nullptr,
                                  nullptr);
    }
    TitledWindow(const TitledWindow&) = delete;
    TitledWindow& operator=(const TitledWindow&) = delete;
    ~TitledWindow() { DestroyWindow(mWindow); }
    HWND Get() const { return mWindow; }

private:
    HWND mWindow;
};

class UtilityScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const utility = stage.Object(L"KWOUtility");
        if (utility == nullptr) return;
        stage.Call(utility, L"KWO_FindInPath", {L"kernel32.dll"});
        stage.Call(utility, L"KWO_FindInPath", {L"kwo no such file.txt"});
        stage.Call(utility, L"KWO_SystemDir", {true});
        stage.Call(utility, L"KWO_WindowsDir");
        for (const wchar_t* const property :
             {L"KWO_IsWin32", L"KWO_IsWinNT", L"KWO_WinMajorVersion", L"KWO_WinMinorVersion"})
            stage.Get(utility, property);
        stage.Call(utility, L"KWO_CenterForm", {static_cast<IDispatch*>(&mForm)});
        stage.Call(utility, L"KWO_SetFormPosition",
                   {static_cast<IDispatch*>(&mForm), 0, 100, 200, 3000, 2000, static_cast<IDispatch*>(&mParent)});
        stage.Call(utility, L"KWO_Pause", {0});
        stage.Call(utility, L"KWO_Pause", {50});
    }
    ULONG References() const override { return mForm.references + mParent.references; }

private:
    static std::map<std::wstring, Var> Place() {
        return {{L"WindowState", Var(0)},
                {L"Left", Var(10)},
                {L"Top", Var(20)},
                {L"Width", Var(300)},
                {L"Height", Var(400)}};
    }
    PropertyObject mForm{Place()};
    PropertyObject mParent{Place()};
};

class ProgramsScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const utility = stage.Object(L"KWOUtility");
        if (utility == nullptr) return;
        stage.Call(utility, L"KWO_LoadApp", {L"C:\\windows", L"program.exe", L"argument", 1, L"KWO import faults"});
        stage.Call(utility, L"KWO_LoadApp", {L"C:\\windows", L"winver.exe", L"argument", 1, L"no such title"});
        stage.Call(utility, L"KWO_LoadApp", {L"C:\\no such folder", L"no such.exe", L"", 1, L"no such title"});
    }

private:
    TitledWindow mWindow;
};

class SplitterScenario final : public Scenario {
public:
    SplitterScenario() {
        mForm.Property(L"WindowState", Var(0));
        mContainer.Property(L"hWnd", Var(static_cast<long>(reinterpret_cast<INT_PTR>(mWindow.Get()))));
        mContainer.Property(L"ScaleMode", Var(1));
        mContainer.Property(L"ScaleWidth", Var(6000.0));
        mContainer.Property(L"ScaleHeight", Var(3000.0));
        for (const wchar_t* const name : {L"ScaleX", L"ScaleY"}) {
            mContainer.Method(name, [](MemberObject::Arguments&, VARIANT* result) {
                result->vt = VT_R4;
                result->fltVal = 15.0f;
                return S_OK;
            });
        }
    }
    ~SplitterScenario() override {
        // The objects hold each other.
        for (MemberObject* const one : {static_cast<MemberObject*>(&mLeft), static_cast<MemberObject*>(&mRight),
                                        static_cast<MemberObject*>(&mBar)})
            one->values.clear();
    }
    void Run(Stage& stage) override {
        IDispatch* const splitter = stage.Object(L"KWOSplitterV");
        if (splitter == nullptr) return;
        stage.Call(splitter, L"Create",
                   {static_cast<IDispatch*>(&mLeft), static_cast<IDispatch*>(&mRight), static_cast<IDispatch*>(&mBar),
                    6, 60, 30, 90, 120});
        stage.Let(splitter, L"LeftMargin", Var(15.0));
        stage.Get(splitter, L"LeftMargin");
        stage.Call(splitter, L"Resize");
        stage.Call(splitter, L"MouseDown", {1, 0, 30.0, 0});
        stage.Call(splitter, L"MouseMove", {1, 0, 600.0, 0});
        stage.Call(splitter, L"MouseUp", {1, 0, 600.0, 0});
        // A control that raises an error: a box tells the user.
        mBar.failing = L"Left";
        stage.Call(splitter, L"Create",
                   {static_cast<IDispatch*>(&mLeft), static_cast<IDispatch*>(&mRight), static_cast<IDispatch*>(&mBar)});
        mBar.failing.clear();
    }
    ULONG References() const override {
        // Three controls hold the form and the container.
        return mForm.references + mContainer.references + mLeft.references + mRight.references + mBar.references - 6;
    }

private:
    TitledWindow mWindow;
    MemberObject mForm;
    MemberObject mContainer;
    Pane mLeft{&mContainer, &mForm, 0};
    Pane mRight{&mContainer, &mForm, 3000};
    Pane mBar{&mContainer, &mForm, 2000};
};

class ButtonScenario final : public Scenario {
public:
    ButtonScenario() {
        mForm.Method(L"OnButtonClick", [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        mForm.Property(L"ActiveControl", Var(static_cast<IDispatch*>(&mBox)));
    }
    ~ButtonScenario() override {
        mForm.values.clear();
        mBox.values.clear();
    }
    void Run(Stage& stage) override {
        IDispatch* const button = stage.Object(L"KWOPicBtn");
        if (button == nullptr) return;
        stage.Call(button, L"Create", {static_cast<IDispatch*>(&mBox), L"&Save the document"});
        stage.Let(button, L"Caption", L"&Save another document");
        stage.Get(button, L"Caption");
        stage.Let(button, L"TextAlignment", 2);
        for (const wchar_t* const member : {L"MouseDown", L"MouseMove", L"MouseUp"})
            stage.Call(button, member, {1, 0, 300.0, 150.0});
        SHORT code = 13;
        stage.Call(button, L"KeyDown", {Var::Ref(&code), 0});
        code = 'S';
        stage.Call(button, L"Form_KeyDown", {Var::Ref(&code), 4});
        for (const wchar_t* const member : {L"GotFocus", L"LostFocus", L"DblClick", L"Resize"})
            stage.Call(button, member);
        mForm.failing = L"OnButtonClick";
        stage.Call(button, L"MouseDown", {1, 0, 300.0, 150.0});
        stage.Call(button, L"MouseUp", {1, 0, 300.0, 150.0});
        mForm.failing.clear();
        // Whatever has happened, no button is down at the end.
        stage.Call(button, L"LostFocus");
    }
    ULONG References() const override { return mForm.references - 1 + mBox.references - 1; }

private:
    MemberObject mForm;
    HostBox mBox{80, 30, &mForm};
};

class FontsScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const fonts = stage.Object(L"KWOSysParams");
        if (fonts == nullptr) return;
        for (const wchar_t* const property :
             {L"CaptionFont", L"SmCaptionFont", L"MenuFont", L"StatusFont", L"MessageFont"})
            stage.Get(fonts, property);
    }
};

class TrayScenario final : public Scenario {
public:
    TrayScenario() {
        PICTDESC description = {};
        description.cbSizeofstruct = sizeof description;
        description.picType = PICTYPE_ICON;
        description.icon.hicon = LoadIconW(nullptr, IDI_APPLICATION);
        OleCreatePictureIndirect(&description, IID_IDispatch, FALSE, mIcon.OutVoid());
    }
    void Run(Stage& stage) override {
        IDispatch* const tray = stage.Object(L"KWOSysTray");
        if (tray == nullptr) return;
        const long window = static_cast<long>(reinterpret_cast<INT_PTR>(mWindow.Get()));
        stage.Call(tray, L"Create", {window, mIcon.Get(), L"a tip of some length"});
        stage.Let(tray, L"Tip", L"another tip of some length");
        stage.Get(tray, L"Tip");
        stage.Set(tray, L"Icon", Var(mIcon.Get()));
        stage.Get(tray, L"Icon");
        stage.Get(tray, L"DoubleClickMsg", {1});
        // The shell is started again.
        EnumThreadWindows(GetCurrentThreadId(), &TellOfTaskbar, 0);
        stage.Call(tray, L"Destroy");
    }
    ULONG References() const override {
        mIcon->AddRef();
        return mIcon->Release() - 1;
    }

private:
    static BOOL CALLBACK TellOfTaskbar(HWND window, LPARAM) {
        SendMessageW(window, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
        return TRUE;
    }
    TitledWindow mWindow;
    ComPtr<IDispatch> mIcon;
};

class MetricsScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const metrics = stage.Object(L"KWOSysMetrics");
        if (metrics == nullptr) return;
        stage.Let(metrics, L"ScaleMode", 1);
        stage.Get(metrics, L"ScaleMode");
        stage.Call(metrics, L"ScreenX");
        stage.Call(metrics, L"ScreenY", {3});
        stage.Call(metrics, L"MousePresent");
        stage.Call(metrics, L"MouseButtons");
    }
};

class CalendarScenario final : public Scenario {
public:
    CalendarScenario() {
        for (const wchar_t* const name : {L"OnChangeMonth", L"OnChangeDate"})
            mForm.Method(name, [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        // A font of our own: each use of Wine's font object by name loses a key of the registry.
        mFont.Property(L"Bold", Var(false));
        mBox.values[L"Font"] = Var(static_cast<IDispatch*>(&mFont));
    }
    ~CalendarScenario() override { mBox.values.clear(); }
    void Run(Stage& stage) override {
        IDispatch* const view = stage.Object(L"KWOMonthView");
        if (view == nullptr) return;
        const auto day = [](double date) { return Var::Date(date); };
        stage.Call(view, L"Create",
                   {static_cast<IDispatch*>(&mBox), day(46347), Var::Missing(), true, Var::Missing(), true,
                    Var::Missing(), true});
        stage.Call(view, L"ShowMonth", {3, 2027});
        stage.Call(view, L"ShowMonth", {11, 2026});
        stage.Call(view, L"SelDaysAdd", {day(46350)});
        stage.Get(view, L"IsSelected", {day(46350)});
        stage.Call(view, L"SelDaysRemove", {day(46350)});
        stage.Call(view, L"MouseDown", {1, 0, 1500.0, 1800.0});
        stage.Call(view, L"MouseUp", {1, 0, 1500.0, 1800.0});
        SHORT code = 13;
        stage.Call(view, L"KeyDown", {Var::Ref(&code), 0});
        stage.Let(view, L"MinDate", day(46000));
        stage.Let(view, L"MaxDate", day(47000));
        stage.Let(view, L"DayFontColor", 255);
        stage.Call(view, L"Resize");
        stage.Call(view, L"SelDaysClear");
        stage.Call(view, L"SelDaysAdd", {day(1e9)});
    }
    ULONG References() const override { return mForm.references - 1 + mBox.references + mFont.references - 1; }

private:
    MemberObject mForm;
    MemberObject mFont;
    HostBox mBox{160, 140, &mForm};
};

/// The clock of the rounds, so that it does not depend on the machine what is due, or how often a wait asks. Waits take
/// no time: what they would take is added here. Each look takes a little, so that a wait that fails at once ends, too.
LONGLONG theMicroseconds = 0;
constexpr LONGLONG kPerSecond = 1'000'000;

LONGLONG LookAtTheClock() {
    constexpr LONGLONG kTakes = 10;
    return theMicroseconds += kTakes;
}
void Spend(DWORD ms) {
    theMicroseconds += ms * (kPerSecond / 1000);
}
DWORD WaitAtOnce(DWORD ms) {
    if (ms != INFINITE) Spend(ms);
    return WAIT_TIMEOUT;
}

/// The timer that the component has asked for. It fires when the scenario says so.
struct AskedTimer {
    TIMERPROC procedure = nullptr;
    UINT_PTR id = 0;
};
AskedTimer theTimer;

class TimerScenario final : public Scenario {
public:
    TimerScenario() {
        mTick.onTick = [](IDispatch**) { return S_OK; };
        mSink.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return S_OK; };
        mScript.member = L"Alarm";
        mScript.interfaceId = __uuidof(IDispatchEx);
    }
    void Run(Stage& stage) override {
        IDispatch* const timer = stage.Object(L"KWOTimer");
        if (timer == nullptr) return;
        DWORD cookie = 0;
        ComPtr<IConnectionPointContainer> container =
            As<IConnectionPointContainer>(timer, IID_IConnectionPointContainer);
        ComPtr<IEnumConnectionPoints> points;
        ComPtr<IConnectionPoint> point;
        stage.Note("EnumConnectionPoints", container->EnumConnectionPoints(points.Out()));
        if (points) points->Next(1, point.Out(), nullptr);
        if (point) stage.Note("Advise", point->Advise(&mSink, &cookie));
        stage.Let(timer, L"Item", L"an item of some length");
        stage.Get(timer, L"Item");
        stage.Let(timer, L"Interval", 1);
        stage.Let(timer, L"Enabled", true);
        stage.Call(timer, L"AddRelativeAlarm", {1, 7});
        // In the last second of a day, so that a text is made.
        stage.Call(timer, L"AddAlarm", {Var::Date(60'000.99999), 8});
        Fire();
        stage.Set(timer, L"AlarmEvents", Var(static_cast<IDispatch*>(&mScript)));
        stage.Get(timer, L"AlarmEvents");
        stage.Call(timer, L"AddRelativeAlarm", {1, 9});
        Fire();
        stage.Call(timer, L"TimerTick", {1});
        stage.Call(timer, L"TimerTick", {2, 8});
        stage.Set(timer, L"AlarmEvents", Var(static_cast<IDispatch*>(nullptr)));
        stage.Call(timer, L"AddAlarm", {Var::Date(1e300), 7});
        stage.Let(timer, L"Enabled", false);
        stage.Call(timer, L"CancelTimers");
        if (point && cookie != 0) stage.Note("Unadvise", point->Unadvise(cookie));
    }
    ULONG References() const override { return mTick.references + mSink.references + mScript.references; }

private:
    /// What is due within two milliseconds is delivered.
    static void Fire() {
        Spend(2);
        if (theTimer.procedure != nullptr) theTimer.procedure(nullptr, WM_TIMER, theTimer.id, 0);
    }
    EarlyTick mTick;
    Sink mSink;
    Sink mScript;
};

class ClassInformationScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const object = stage.Object(L"IKWOAlarm");
        if (object == nullptr) return;
        const auto provider = As<IProvideClassInfo>(object, IID_IProvideClassInfo);
        ComPtr<ITypeInfo> info;
        stage.Note("GetClassInfo", provider->GetClassInfo(info.Out()));
        info.Reset();
        stage.Note("GetTypeInfo", object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out()));
        stage.Call(object, L"Alarm", {Var(static_cast<IDispatch*>(nullptr)), 1, Var::Date(1)});
        ComPtr<IDispatch> tick = stage.Another(L"IKWOTimer");
        if (tick) stage.Call(tick.Get(), L"Tick", {Var(static_cast<IDispatch*>(nullptr))});
    }
};

/// One object of each class, and no more.
class AllClassesScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        for (const std::wstring& name : ClassNames()) {
            const ComPtr<IDispatch> object = stage.Another(name.c_str());
            if (object)
                stage.Note(Narrow(name), IdOf(object.Get(), L"no such member") == DISPID_UNKNOWN ? S_OK : E_FAIL);
        }
    }
};

class CompanionScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        IDispatch* const companion = stage.Object(L"KWOInitialize");
        if (companion == nullptr) return;
        Bstr program(L"KWOUtil");
        Bstr path(DistFile());
        LONG first = 0, last = 0, size = 0, language = 0;
        stage.Note("KWO_MsgTableSize", StatusOf(CallNamed(companion, L"KWO_MsgTableSize", {},
                                                          {{L"ProgramName", Var::Ref(program.InOut())},
                                                           {L"MsgFilePath", Var::Ref(path.InOut())},
                                                           {L"IdxArrayStart", Var::Ref(&first)},
                                                           {L"IdxArrayEnd", Var::Ref(&last)},
                                                           {L"TextArraySize", Var::Ref(&size)}})));
        if (size <= 0 || last < first) return;
        // Not a vector: where one grows, Wine does not free what it had.
        com_support::OwnedArray index(VT_I2, first, static_cast<ULONG>(last - first + 1));
        com_support::OwnedArray texts(VT_BSTR, 1, static_cast<ULONG>(size));
        stage.Note("KWO_MsgTableLoad",
                   StatusOf(CallNamed(companion, L"KWO_MsgTableLoad", {},
                                      {{L"Language", Var::Ref(&language)},
                                       {L"IdxArray", Var::Reference(VT_ARRAY | VT_I2, index.InOut())},
                                       {L"TextArray", Var::Reference(VT_ARRAY | VT_BSTR, texts.InOut())}})));
    }

private:
    static HRESULT StatusOf(const Outcome& outcome) {
        return outcome.status == DISP_E_EXCEPTION ? outcome.scode : outcome.status;
    }
    static std::wstring DistFile();
};

class RegistrationScenario final : public Scenario {
public:
    void Run(Stage& stage) override {
        // Both are always tried: what a failed registration left is to be removed.
        stage.Note("DllRegisterServer", Call(stage, "DllRegisterServer"));
        stage.Note("DllUnregisterServer", Call(stage, "DllUnregisterServer"));
    }

private:
    static HRESULT Call(Stage& stage, const char* name) {
        using Function = HRESULT(STDAPICALLTYPE*)();
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(stage.Module(), name)))();
    }
};

std::wstring CompanionScenario::DistFile() {
    const std::wstring file = com_support::ModulePath(GetModuleHandleW(L"KWOInit.dll"));
    return file.substr(0, file.rfind(L'\\')) + L"\\KWOInit.nls";
}

template <class Kind>
NamedScenario Named(const char* name, const wchar_t* module = L"KWOUtil.dll", bool loadsAnew = false) {
    return {name, module, [] { return std::make_unique<Kind>(); }, loadsAnew};
}

void ReplaceTime(windows_calls::WindowsCalls& calls) {
    calls.Replace("MsgWaitForMultipleObjects",
                  [](DWORD, const HANDLE*, BOOL, DWORD ms, DWORD) -> DWORD { return WaitAtOnce(ms); });
    calls.Replace("MsgWaitForMultipleObjectsEx",
                  [](DWORD, const HANDLE*, DWORD ms, DWORD, DWORD) -> DWORD { return WaitAtOnce(ms); });
    calls.Replace("GetTickCount", []() -> DWORD { return static_cast<DWORD>(LookAtTheClock() * 1000 / kPerSecond); });
    calls.Replace("QueryPerformanceCounter", [](LARGE_INTEGER* count) -> BOOL {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        count->QuadPart = LookAtTheClock() * frequency.QuadPart / kPerSecond;
        return TRUE;
    });
}

}  // namespace

void BeginAtAFullSecond() {
    theMicroseconds += kPerSecond - theMicroseconds % kPerSecond;
}

void ReplaceWhatTheUserWouldSee(windows_calls::WindowsCalls& calls) {
    ReplaceTime(calls);
    theTimer = {};
    calls.Replace("SetTimer", [](HWND, UINT_PTR, UINT, TIMERPROC procedure) -> UINT_PTR {
        theTimer = {procedure, 4711};
        return 4711;
    });
    calls.Replace("KillTimer", [](HWND, UINT_PTR) -> BOOL {
        theTimer = {};
        return TRUE;
    });
    calls.Replace("MessageBoxA", [](HWND, LPCSTR, LPCSTR, UINT) -> int { return IDOK; });
    calls.Replace("Shell_NotifyIconA", [](DWORD, NOTIFYICONDATAA*) -> BOOL { return TRUE; });
    calls.Replace("SetForegroundWindow", [](HWND) -> BOOL { return TRUE; });
    calls.Replace("IsWindowVisible", [](HWND) -> BOOL { return TRUE; });
    calls.Replace("ReportEventW",
                  [](HANDLE, WORD, WORD, DWORD, PSID, WORD, DWORD, LPCWSTR*, LPVOID) -> BOOL { return TRUE; });
    calls.Replace("CreateProcessW",
                  [](LPCWSTR, LPWSTR line, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                     STARTUPINFOW*, PROCESS_INFORMATION* process) -> BOOL {
                      if (std::wstring(line).find(L"no such") != std::wstring::npos) {
                          SetLastError(ERROR_FILE_NOT_FOUND);
                          return FALSE;
                      }
                      const HANDLE self = GetCurrentProcess();
                      *process = {nullptr, nullptr, 77, 88};
                      DuplicateHandle(self, self, self, &process->hProcess, 0, FALSE, DUPLICATE_SAME_ACCESS);
                      DuplicateHandle(self, self, self, &process->hThread, 0, FALSE, DUPLICATE_SAME_ACCESS);
                      return TRUE;
                  });
}

const std::vector<NamedScenario>& Scenarios() {
    static const std::vector<NamedScenario> scenarios = {
        Named<RegistryScenario>("Registry"),
        Named<UtilityScenario>("Utility"),
        Named<ProgramsScenario>("Programs"),
        Named<SplitterScenario>("Splitter"),
        Named<ButtonScenario>("Button"),
        Named<FontsScenario>("Fonts"),
        Named<TrayScenario>("Tray"),
        Named<MetricsScenario>("Metrics"),
        Named<CalendarScenario>("Calendar"),
        Named<TimerScenario>("Timer"),
        Named<ClassInformationScenario>("ClassInformation"),
        Named<AllClassesScenario>("AllClassesOfAFreshDll", L"KWOUtil.dll", true),
        Named<TimerScenario>("TimerOfAFreshDll", L"KWOUtil.dll", true),
        Named<CompanionScenario>("Companion", L"KWOInit.dll"),
        Named<CompanionScenario>("CompanionOfAFreshDll", L"KWOInit.dll", true),
        Named<RegistrationScenario>("Registration"),
        Named<RegistrationScenario>("RegistrationOfTheCompanion", L"KWOInit.dll"),
    };
    return scenarios;
}

}  // namespace kwo::com_test
