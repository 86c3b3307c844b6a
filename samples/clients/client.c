/* KWOUtil from C: the macros of kwoutil.h call through the virtual tables. A callback object shows how to implement an
   interface.

     cl /I..\..\sdk client.c ole32.lib oleaut32.lib uuid.lib
     gcc -I../../sdk client.c -o client.exe -lole32 -loleaut32 -luuid

   Bitness: that of the program. The source is the same for both. */

#define COBJMACROS

#include <windows.h>
/* Makes definitions of the identifiers that kwoutil.h declares. It stands before it in one source file of a program. */
#include <initguid.h>
#include <stdio.h>

#include "kwoutil.h"

/* The number that scripts and classic BASIC see: 6 for 0x800A0006. */
static long NumberOf(HRESULT result) {
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

/* Prints what failed. Source and description are in the thread's error object. */
static void Print(HRESULT result) {
    IErrorInfo* error = NULL;
    printf("error: %ld\n", NumberOf(result));
    if (GetErrorInfo(0, &error) == S_OK) {
        BSTR source = NULL;
        BSTR description = NULL;
        IErrorInfo_GetSource(error, &source);
        IErrorInfo_GetDescription(error, &description);
        printf("source: %ls\n", source != NULL ? source : L"");
        printf("description: %ls\n", description != NULL ? description : L"");
        SysFreeString(source);
        SysFreeString(description);
        IErrorInfo_Release(error);
    }
}

/* The callback object: one for the whole program, so it does not count its references. */
static HRESULT STDMETHODCALLTYPE FindInterface(_IKWOAlarm* self, REFIID id, void** object) {
    const int known =
        IsEqualIID(id, &IID_IUnknown) || IsEqualIID(id, &IID_IDispatch) || IsEqualIID(id, &IID__IKWOAlarm);
    *object = known ? self : NULL;
    return known ? S_OK : E_NOINTERFACE;
}
static ULONG STDMETHODCALLTYPE CountReference(_IKWOAlarm* self) {
    (void)self;
    return 1;
}
static HRESULT STDMETHODCALLTYPE CountTypes(_IKWOAlarm* self, UINT* count) {
    (void)self;
    *count = 0;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE FindType(_IKWOAlarm* self, UINT index, LCID language, ITypeInfo** type) {
    (void)self, (void)index, (void)language, (void)type;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE FindNames(_IKWOAlarm* self, REFIID unused, LPOLESTR* names, UINT count, LCID language,
                                           DISPID* ids) {
    (void)self, (void)unused, (void)names, (void)count, (void)language, (void)ids;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE CallById(_IKWOAlarm* self, DISPID id, REFIID unused, LCID language, WORD kind,
                                          DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* wrong) {
    (void)self, (void)id, (void)unused, (void)language, (void)kind;
    (void)arguments, (void)result, (void)exception, (void)wrong;
    return E_NOTIMPL;
}
/* The timer calls this member through the virtual table. */
static HRESULT STDMETHODCALLTYPE ReceiveAlarm(_IKWOAlarm* self, _KWOTimer** timer, LONG* tag, DATE* newDateTime) {
    (void)self, (void)timer, (void)newDateTime;
    printf("event: alarm %ld\n", *tag);
    return S_OK;
}
static _IKWOAlarmVtbl gListenerTable = {FindInterface, CountReference, CountReference, CountTypes,
                                        FindType,      FindNames,      CallById,       ReceiveAlarm};
static _IKWOAlarm gListener = {&gListenerTable};

static HRESULT Create(REFCLSID classId, REFIID interfaceId, void** object) {
    return CoCreateInstance(classId, NULL, CLSCTX_INPROC_SERVER, interfaceId, object);
}

/* A by-reference result: the member puts the text into the string. */
static HRESULT PrintText(_KWORegistry* registry, long root, BSTR keyName) {
    BSTR greeting = SysAllocString(L"Greeting");
    BSTR hello = SysAllocString(L"Hello");
    BSTR value = NULL;
    long status = 0;
    HRESULT result = _KWORegistry_KWO_RegSetValue(registry, &root, &keyName, &greeting, &hello, &status);
    if (SUCCEEDED(result)) result = _KWORegistry_KWO_RegGetValue(registry, &root, &keyName, &greeting, &value, &status);
    if (SUCCEEDED(result)) printf("by reference: %ls\n", value);
    SysFreeString(value);
    SysFreeString(hello);
    SysFreeString(greeting);
    return result;
}

/* A date: the default is a date, so the result is one. */
static HRESULT PrintDate(_KWORegistry* registry, long root, BSTR keyName) {
    BSTR noName = SysAllocString(L"");
    BSTR when = SysAllocString(L"When");
    BSTR moment = SysAllocString(L"2024-02-29 13:30:00");
    VARIANT noDate;
    VARIANT found;
    long key = 0;
    long status = 0;
    HRESULT result;
    VariantInit(&found);
    VariantInit(&noDate);
    V_VT(&noDate) = VT_DATE;
    V_DATE(&noDate) = 0;
    result = _KWORegistry_KWO_RegCreateKey(registry, &root, &keyName, &key);
    if (SUCCEEDED(result)) result = _KWORegistry_KWO_RegSetValue(registry, &key, &noName, &when, &moment, &status);
    if (SUCCEEDED(result)) result = _KWORegistry_KWO_RegGetValueEx(registry, &key, &when, noDate, &found);
    if (SUCCEEDED(result)) {
        SYSTEMTIME time;
        VariantTimeToSystemTime(V_DATE(&found), &time);
        printf("date: %04d-%02d-%02d %02d:%02d:%02d\n", time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute,
               time.wSecond);
    }
    SysFreeString(moment);
    SysFreeString(when);
    SysFreeString(noName);
    return result;
}

static HRESULT ReadTheRegistry(void) {
    _KWORegistry* registry = NULL;
    BSTR keyName = SysAllocString(L"Software\\KWOUtil Client");
    long root = (long)0x80000001;
    long status = 0;
    HRESULT result = Create(&CLSID_KWORegistry, &IID__KWORegistry, (void**)&registry);
    if (SUCCEEDED(result)) result = PrintText(registry, root, keyName);
    if (SUCCEEDED(result)) result = PrintDate(registry, root, keyName);
    if (SUCCEEDED(result)) result = _KWORegistry_KWO_RegDeleteKey(registry, &root, &keyName, &status);
    if (registry != NULL) _KWORegistry_Release(registry);
    SysFreeString(keyName);
    return result;
}

/* Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds. */
static HRESULT WaitForAnAlarm(_KWOUtility* utility) {
    _KWOTimer* timer = NULL;
    short milliseconds = 300;
    HRESULT result = Create(&CLSID_KWOTimer, &IID__KWOTimer, (void**)&timer);
    if (SUCCEEDED(result)) result = _KWOTimer_putref_AlarmEvents(timer, &gListener);
    if (SUCCEEDED(result)) result = _KWOTimer_AddRelativeAlarm(timer, 50, 7);
    if (SUCCEEDED(result)) result = _KWOUtility_KWO_Pause(utility, &milliseconds);
    if (timer != NULL) _KWOTimer_Release(timer);
    return result;
}

static HRESULT UseEverything(void) {
    _KWOUtility* utility = NULL;
    short seconds = 50;
    HRESULT result = ReadTheRegistry();
    if (SUCCEEDED(result)) result = Create(&CLSID_KWOUtility, &IID__KWOUtility, (void**)&utility);
    if (SUCCEEDED(result)) result = WaitForAnAlarm(utility);
    /* An error: this member refuses the seconds from 33 to 99. */
    if (SUCCEEDED(result)) result = _KWOUtility_KWO_Pause(utility, &seconds);
    if (utility != NULL) _KWOUtility_Release(utility);
    return result;
}

int main(void) {
    /* The objects belong to the thread that creates them; its apartment must be single-threaded. */
    HRESULT result = CoInitializeEx(NULL, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return 1;
    result = UseEverything();
    if (FAILED(result)) Print(result);
    CoUninitialize();
    return 0;
}
