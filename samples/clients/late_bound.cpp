// KWOUtil from C++, late bound: members are called by name, so the program needs nothing of KWOUtil to be compiled.
//
//   cl /EHsc late_bound.cpp ole32.lib oleaut32.lib uuid.lib
//   g++ late_bound.cpp -o late_bound.exe -lole32 -loleaut32 -luuid
//
// Bitness: that of the program. The source is the same for both.

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

/// Owns a value of any type.
struct Value : VARIANT {
    Value() { VariantInit(this); }
    explicit Value(const wchar_t* text) : Value() {
        vt = VT_BSTR;
        bstrVal = SysAllocString(text);
    }
    explicit Value(long number) : Value() {
        vt = VT_I4;
        lVal = number;
    }
    /// A reference to a variable that stays the caller's.
    explicit Value(VARIANT* variable) : Value() {
        vt = VT_VARIANT | VT_BYREF;
        pvarVal = variable;
    }
    explicit Value(IDispatch* object) : Value() {
        vt = VT_DISPATCH;
        pdispVal = object;
        object->AddRef();
    }
    Value(const Value& other) : Value() { VariantCopy(this, const_cast<Value*>(&other)); }
    Value& operator=(const Value&) = delete;
    ~Value() { VariantClear(this); }
};

/// What a member raised.
struct Failure {
    HRESULT result = S_OK;
    std::wstring source;
    std::wstring description;
};
std::wstring Taken(BSTR text) {
    const std::wstring copy(text == nullptr ? L"" : text);
    SysFreeString(text);
    return copy;
}
[[noreturn]] void Throw(const EXCEPINFO& raised) {
    SysFreeString(raised.bstrHelpFile);
    throw Failure{raised.scode, Taken(raised.bstrSource), Taken(raised.bstrDescription)};
}
void Check(HRESULT result) {
    if (FAILED(result)) throw Failure{result, L"", L""};
}

/// Calls a member by its name. The arguments stand in the usual order.
Value Call(IDispatch* object, const wchar_t* name, const std::vector<Value>& arguments, WORD kind = DISPATCH_METHOD) {
    auto* nameToFind = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    Check(object->GetIDsOfNames(IID_NULL, &nameToFind, 1, LOCALE_USER_DEFAULT, &id));

    std::vector<VARIANTARG> reversed(arguments.rbegin(), arguments.rend());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if (kind == DISPATCH_PROPERTYPUTREF) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    Value result;
    EXCEPINFO raised = {};
    const HRESULT called = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                          kind == DISPATCH_METHOD ? &result : nullptr, &raised, nullptr);
    if (called == DISP_E_EXCEPTION) Throw(raised);
    Check(called);
    return result;
}

/// Any object with a procedure of the name Alarm is a callback object. It lives on the stack, so it does not count its
/// references.
class AlarmListener final : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDispatch;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = lstrcmpiW(names[0], L"Alarm") == 0 ? kAlarm : DISPID_UNKNOWN;
        return ids[0] == kAlarm ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        if (id != kAlarm) return DISP_E_MEMBERNOTFOUND;
        // The arguments are references and stand in reverse order: the new date, the tag, the timer.
        Value tag;
        VariantCopyInd(&tag, &arguments->rgvarg[1]);
        std::printf("event: alarm %ld\n", tag.lVal);
        return S_OK;
    }

private:
    static constexpr DISPID kAlarm = 1;
};

Value Create(const wchar_t* name) {
    CLSID classId;
    Check(CLSIDFromProgID(name, &classId));
    Value object;
    Check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(&object.pdispVal)));
    object.vt = VT_DISPATCH;
    return object;
}

void ReadTheRegistry() {
    const Value object = Create(L"KWOUtil.KWORegistry");
    IDispatch* const registry = object.pdispVal;
    const Value root(static_cast<long>(0x80000001));
    const Value keyName(L"Software\\KWOUtil Client");

    // A by-reference result: the member puts the text into the variable.
    const Value greeting(L"Greeting");
    Value value;
    Call(registry, L"KWO_RegSetValue", {root, keyName, greeting, Value(L"Hello")});
    Call(registry, L"KWO_RegGetValue", {root, keyName, greeting, Value(&value)});
    std::printf("by reference: %ls\n", value.bstrVal);

    // A date: the default is a date, so the result is one.
    const Value when(L"When");
    const Value key = Call(registry, L"KWO_RegCreateKey", {root, keyName});
    Call(registry, L"KWO_RegSetValue", {key, Value(L""), when, Value(L"2024-02-29 13:30:00")});
    Value noDate;
    noDate.vt = VT_DATE;
    noDate.date = 0;
    const Value found = Call(registry, L"KWO_RegGetValueEx", {key, when, noDate});
    SYSTEMTIME time = {};
    VariantTimeToSystemTime(found.date, &time);
    std::printf("date: %04d-%02d-%02d %02d:%02d:%02d\n", time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute,
                time.wSecond);
    Call(registry, L"KWO_RegDeleteKey", {root, keyName});
}

void UseEverything() {
    ReadTheRegistry();
    AlarmListener listener;
    const Value timer = Create(L"KWOUtil.KWOTimer");
    const Value utility = Create(L"KWOUtil.KWOUtility");

    // Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
    Call(timer.pdispVal, L"AlarmEvents", {Value(&listener)}, DISPATCH_PROPERTYPUTREF);
    Call(timer.pdispVal, L"AddRelativeAlarm", {Value(50L), Value(7L)});
    Call(utility.pdispVal, L"KWO_Pause", {Value(300L)});
    // The timer lets go of the listener.
    Call(timer.pdispVal, L"CancelTimers", {});

    // An error: this member refuses the seconds from 33 to 99.
    Call(utility.pdispVal, L"KWO_Pause", {Value(50L)});
}

/// The number that scripts and classic BASIC see: 6 for 0x800A0006.
long NumberOf(HRESULT result) {
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

}  // namespace

int main() {
    // The objects belong to the thread that creates them; its apartment must be single-threaded.
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    try {
        UseEverything();
    } catch (const Failure& failure) {
        std::printf("error: %ld\n", NumberOf(failure.result));
        std::printf("source: %ls\n", failure.source.c_str());
        std::printf("description: %ls\n", failure.description.c_str());
    }
    CoUninitialize();
}
