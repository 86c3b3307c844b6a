// A client in C++. It needs kwoutil.h and two libraries of Windows, and no import library of KWOUtil:
//
//   cl /EHsc /I..\sdk client.cpp ole32.lib oleaut32.lib
//   g++ -I../sdk client.cpp -o client.exe -lole32 -loleaut32

#include <windows.h>
// Makes definitions of the identifiers that kwoutil.h declares. It stands before it in one source file of a program.
#include <initguid.h>

#include <cstdio>

#include "kwoutil.h"

namespace {

/// Says what failed, in the words of the component if there are any.
int Fail(const char* what, HRESULT result) {
    std::printf("%s failed: 0x%08lX\n", what, static_cast<unsigned long>(result));
    IErrorInfo* error = nullptr;
    if (GetErrorInfo(0, &error) == S_OK) {
        BSTR description = nullptr;
        if (SUCCEEDED(error->GetDescription(&description)) && description != nullptr) std::printf("%ls\n", description);
        SysFreeString(description);
        error->Release();
    }
    return 1;
}

/// Calls through the interface, as compiled programs do.
int PrintTheScreensSize() {
    _KWOSysMetrics* metrics = nullptr;
    HRESULT result = CoCreateInstance(CLSID_KWOSysMetrics, nullptr, CLSCTX_INPROC_SERVER, IID__KWOSysMetrics,
                                      reinterpret_cast<void**>(&metrics));
    if (FAILED(result)) return Fail("creating KWOUtil.KWOSysMetrics", result);

    short pixels = 3;
    long width = 0;
    long height = 0;
    result = metrics->put_ScaleMode(&pixels);
    // A null pointer leaves the optional argument out.
    if (SUCCEEDED(result)) result = metrics->ScreenX(nullptr, &width);
    if (SUCCEEDED(result)) result = metrics->ScreenY(nullptr, &height);
    metrics->Release();
    if (FAILED(result)) return Fail("reading the screen's size", result);

    std::printf("The screen has %ld x %ld pixels.\n", width, height);
    return 0;
}

}  // namespace

int main() {
    // The objects belong to the thread that creates them; its apartment must be single-threaded.
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) return Fail("CoInitializeEx", result);
    const int code = PrintTheScreensSize();
    CoUninitialize();
    return code;
}
