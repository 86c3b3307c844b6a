// KWOUtil from C++, early bound: calls go through the virtual tables that kwoutil.h declares. The program needs three
// libraries of Windows, and no import library of KWOUtil:
//
//   cl /EHsc /I..\..\sdk early_bound.cpp ole32.lib oleaut32.lib uuid.lib
//   g++ -I../../sdk early_bound.cpp -o early_bound.exe -lole32 -loleaut32 -luuid
//
// Bitness: that of the program. The source is the same for both.

#include <windows.h>
// Makes definitions of the identifiers that kwoutil.h declares. It stands before it in one source file of a program.
#include <initguid.h>

#include <cstdio>

#include "kwoutil.h"

namespace {

/// Owns a string. Members take strings by reference, because they may replace them.
class Text {
public:
    explicit Text(const wchar_t* text = L"") : mText(SysAllocString(text)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(mText); }
    BSTR* operator&() { return &mText; }
    const wchar_t* Get() const { return mText == nullptr ? L"" : mText; }

private:
    BSTR mText;
};

/// Owns an object of KWOUtil.
template <class Interface>
class Owned {
public:
    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (mObject != nullptr) mObject->Release();
    }
    Interface** operator&() { return &mObject; }
    Interface* operator->() const { return mObject; }

private:
    Interface* mObject = nullptr;
};

/// The number that scripts and classic BASIC see: 6 for 0x800A0006.
long NumberOf(HRESULT result) {
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

/// Prints what failed. Source and description are in the thread's error object.
void Print(HRESULT result) {
    std::printf("error: %ld\n", NumberOf(result));
    Owned<IErrorInfo> error;
    if (GetErrorInfo(0, &error) != S_OK) return;
    Text source;
    Text description;
    error->GetSource(&source);
    error->GetDescription(&description);
    std::printf("source: %ls\ndescription: %ls\n", source.Get(), description.Get());
}

/// Ends the steps of a function when one fails.
struct Failure {
    HRESULT result;
};
void Check(HRESULT result) {
    if (FAILED(result)) throw Failure{result};
}

template <class Interface>
void Create(REFCLSID classId, REFIID interfaceId, Owned<Interface>& object) {
    Check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, reinterpret_cast<void**>(&object)));
}

/// Receives the events of a timer. It lives on the stack, so it does not count its references.
class AlarmSink final : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == DIID___KWOTimer;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    /// Events come by their identifiers in kwoutil.idl, their arguments in reverse order.
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        constexpr DISPID kAlarm = 2;
        if (id == kAlarm) std::printf("event: alarm %ld\n", *arguments->rgvarg[1].plVal);
        return S_OK;
    }
};

void ReadTheRegistry() {
    Owned<_KWORegistry> registry;
    Create(CLSID_KWORegistry, IID__KWORegistry, registry);
    Text keyName(L"Software\\KWOUtil Client");
    Text noName;
    long root = static_cast<long>(0x80000001);
    long status = 0;

    // A by-reference result: the member puts the text into the string.
    Text greeting(L"Greeting");
    Text hello(L"Hello");
    Text value;
    Check(registry->KWO_RegSetValue(&root, &keyName, &greeting, &hello, &status));
    Check(registry->KWO_RegGetValue(&root, &keyName, &greeting, &value, &status));
    std::printf("by reference: %ls\n", value.Get());

    // A date: the default is a date, so the result is one.
    Text when(L"When");
    Text moment(L"2024-02-29 13:30:00");
    long key = 0;
    Check(registry->KWO_RegCreateKey(&root, &keyName, &key));
    Check(registry->KWO_RegSetValue(&key, &noName, &when, &moment, &status));
    VARIANT noDate;
    noDate.vt = VT_DATE;
    noDate.date = 0;
    VARIANT found;
    VariantInit(&found);
    Check(registry->KWO_RegGetValueEx(&key, &when, noDate, &found));
    SYSTEMTIME time = {};
    VariantTimeToSystemTime(found.date, &time);
    std::printf("date: %04d-%02d-%02d %02d:%02d:%02d\n", time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute,
                time.wSecond);
    Check(registry->KWO_RegDeleteKey(&root, &keyName, &status));
}

void WaitForAnAlarm(_KWOUtility* utility) {
    Owned<_KWOTimer> timer;
    Create(CLSID_KWOTimer, IID__KWOTimer, timer);
    Owned<IConnectionPointContainer> container;
    Check(timer->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)));
    Owned<IConnectionPoint> events;
    Check(container->FindConnectionPoint(DIID___KWOTimer, &events));
    AlarmSink sink;
    DWORD connection = 0;
    Check(events->Advise(&sink, &connection));

    // Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
    Check(timer->AddRelativeAlarm(50, 7));
    short milliseconds = 300;
    const HRESULT paused = utility->KWO_Pause(&milliseconds);
    events->Unadvise(connection);
    Check(paused);
}

void UseEverything() {
    ReadTheRegistry();
    Owned<_KWOUtility> utility;
    Create(CLSID_KWOUtility, IID__KWOUtility, utility);
    WaitForAnAlarm(utility.operator->());

    // An error: this member refuses the seconds from 33 to 99.
    short seconds = 50;
    Check(utility->KWO_Pause(&seconds));
}

}  // namespace

int main() {
    // The objects belong to the thread that creates them; its apartment must be single-threaded.
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    try {
        UseEverything();
    } catch (const Failure& failure) {
        Print(failure.result);
    }
    CoUninitialize();
}
