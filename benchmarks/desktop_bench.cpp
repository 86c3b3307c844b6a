#include <windows.h>
#include <oleauto.h>

#include <cstdio>
#include <string>

#include "com_support/bstr.h"
#include "com_support/owned_variant.h"
#include "kwoutil.h"
#include "measure.h"
#include "process_resources.h"

// What asking the desktop costs beside the system's own calls, and what objects leave behind. KWOUtil must be
// registered.

namespace {

using namespace kwo::bench;
using kwo::com_support::Bstr;
using kwo::com_support::OwnedVariant;
namespace com_test = kwo::com_test;

void MeasureMetric(const wchar_t* name, DISPID id, int index, int callsPerRound) {
    constexpr DISPID kScaleMode = 0x6803001C;
    const auto metrics = Created(L"KWOUtil.KWOSysMetrics");
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    OwnedVariant result;
    const auto invoke = [&](DISPID member, WORD kind) {
        return Cost(callsPerRound, [&] {
            metrics->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &none, &result, nullptr, nullptr);
        });
    };
    std::printf("\nA metric (KWOSysMetrics.%ls)\n", name);
    volatile int sink = 0;
    const double system = Cost(callsPerRound, [&] { sink = ::GetSystemMetrics(index); });
    const double property = invoke(kScaleMode, DISPATCH_PROPERTYGET);
    const double metric = invoke(id, DISPATCH_METHOD);
    Row("GetSystemMetrics", system);
    Row("a property without anything behind it, by Invoke", property);
    Row("the metric, by Invoke", metric);
    Row("the metric less GetSystemMetrics", metric - system);
}

/// The same probes as the search makes, in a plain loop.
bool PlainSearch(const std::wstring& path, const std::wstring& name) {
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find(L';', at), path.size());
        const std::wstring candidate = path.substr(at, end - at) + L"\\" + name;
        WIN32_FIND_DATAW entry;
        const HANDLE listing = ::FindFirstFileW(candidate.c_str(), &entry);
        if (listing != INVALID_HANDLE_VALUE) {
            ::FindClose(listing);
            return true;
        }
        at = end + 1;
    }
    return false;
}

void MeasureSearch() {
    wchar_t folder[MAX_PATH];
    ::GetWindowsDirectoryW(folder, MAX_PATH);
    std::wstring path;
    constexpr int kEntries = 1000;
    for (int entry = 0; entry < kEntries; ++entry)
        path += std::wstring(folder) + L"\\fonts;";
    ::SetEnvironmentVariableW(L"PATH", path.c_str());
    const auto utility = Early<_KWOUtility>(Created(L"KWOUtil.KWOUtility"), IID__KWOUtility);
    Bstr name(std::wstring_view(L"no such file"));

    std::printf("\nA file that is nowhere in a path of %d entries\n", kEntries);
    const double plain = Cost(1, [&] { PlainSearch(path, L"no such file"); });
    const double search = Cost(1, [&] {
        Bstr found;
        utility->KWO_FindInPath(name.InOut(), found.Out());
    });
    Row("a plain loop of the same probes", plain);
    Row("KWO_FindInPath", search);
    Target("KWO_FindInPath against the plain loop", search / plain, "at most", 1.1, search <= 1.1 * plain);
}

struct Use {
    com_test::Resources process = com_test::ResourcesInUse();
    long drawingObjects = static_cast<long>(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS));
    long userObjects = static_cast<long>(::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS));
};

/// What counts nothing finds no leak: it must see a block and a handle.
void ProveTheCounting() {
    const Use before;
    void* const block = ::HeapAlloc(::GetProcessHeap(), 0, 12'345);
    const HANDLE handle = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const com_test::Resources more = Use().process - before.process;
    Must(more.heapBytes >= 12'345 ? S_OK : E_UNEXPECTED, "counting the heap");
    Must(more.handles == 1 ? S_OK : E_UNEXPECTED, "counting handles");
    ::CloseHandle(handle);
    ::HeapFree(::GetProcessHeap(), 0, block);
}

void MeasureLeaks() {
    constexpr int kObjects = 10'000;
    constexpr const wchar_t* kClasses[] = {L"KWORegistry",  L"KWOUtility", L"KWOSplitterV",  L"KWOPicBtn",
                                           L"KWOSysParams", L"KWOSysTray", L"KWOSysMetrics", L"KWOMonthView",
                                           L"KWOTimer",     L"IKWOTimer",  L"IKWOAlarm"};
    ProveTheCounting();
    std::printf("\n%d objects of each class created and released: what is left\n", kObjects);
    for (const wchar_t* const name : kClasses) {
        const auto factory = FactoryOf((std::wstring(L"KWOUtil.") + name).c_str());
        const auto make = [&](int count) {
            for (int at = 0; at < count; ++at) {
                ComPtr<IDispatch> object;
                Must(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid()), "CreateInstance");
            }
        };
        // What is made once and kept is no leak.
        make(100);
        const Use before;
        make(kObjects);
        const Use after;
        const com_test::Resources left = after.process - before.process;
        std::printf("  %-16ls %6ld handles %6ld drawing objects %6ld windows and menus %8lld bytes\n", name,
                    left.handles, after.drawingObjects - before.drawingObjects, after.userObjects - before.userObjects,
                    left.heapBytes);
    }
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Must(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    // The first is a constant of the system, the second is asked of the display.
    MeasureMetric(L"BorderX", 0x60030034, SM_CXBORDER, 200'000);
    MeasureMetric(L"ScreenX", 0x60030024, SM_CXSCREEN, 100);
    MeasureSearch();
    MeasureLeaks();
    ::CoUninitialize();
    return 0;
}
