#include "crash.h"

#include <windows.h>
// after <windows.h>
#include <unknwn.h>

#include <cstdlib>

#include "com_support/com_ptr.h"
#include "dll_under_test.h"

namespace kwo::com_test {

void Crash() {
    volatile int* const nowhere = nullptr;
    *nowhere = 1;
    std::abort();
}

void CrashInTheDll() {
    const Library library;
    com_support::ComPtr<IClassFactory> factory;
    const CLSID id = ClassIdIn(DllPath(), L"KWORegistry");
    void** const nowhere = reinterpret_cast<void**>(sizeof(void*));
    if (SUCCEEDED(library.GetClassObject(id, IID_IClassFactory, factory.OutVoid()))) {
        factory->CreateInstance(nullptr, IID_IUnknown, nowhere);
    }
    std::abort();
}

void OverrunHeap() {
    constexpr int kSize = 24;
    void* const block = std::malloc(kSize);
    static_cast<volatile char*>(block)[kSize] = 1;
    std::free(block);
    // An orderly end would use the damaged heap. Under Wine it may never come to its end.
    TerminateProcess(GetCurrentProcess(), 0);
    std::abort();
}

void OverrunStack() {
    volatile char array[16];
    volatile char* const place = array;
    for (int index = 0; index < 64; ++index)
        place[index] = 1;
}

}  // namespace kwo::com_test
