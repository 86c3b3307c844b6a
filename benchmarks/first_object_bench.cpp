#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "com_support/module_path.h"
#include "com_support/owned_variant.h"
#include "measure.h"

// What the first object costs in a process that has used none: the DLL is loaded, its class factory makes an object,
// and a property is read by Invoke. Beside it the same of the platform's own component. Each run is a process of its
// own. KWOUtil must be registered.

namespace {

using namespace kwo::bench;
using kwo::com_support::OwnedVariant;

struct Subject {
    const wchar_t* programId;
    const wchar_t* property;
};
constexpr Subject kSubjects[] = {{L"KWOUtil.KWOTimer", L"Interval"}, {L"Scripting.Dictionary", L"Count"}};

/// Microseconds from loading the DLL to the first result.
unsigned FirstUse(const Subject& subject) {
    const CLSID id = ClassOf(subject.programId);
    LARGE_INTEGER frequency, begin, end;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&begin);
    ComPtr<IClassFactory> factory;
    Must(::CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.OutVoid()),
         "CoGetClassObject");
    ComPtr<IDispatch> object;
    Must(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid()), "CreateInstance");
    LPOLESTR names[] = {const_cast<LPOLESTR>(subject.property)};
    DISPID member = DISPID_UNKNOWN;
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    OwnedVariant result;
    Must(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &member), "GetIDsOfNames");
    Must(object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
         "Invoke");
    ::QueryPerformanceCounter(&end);
    return static_cast<unsigned>((end.QuadPart - begin.QuadPart) * 1'000'000 / frequency.QuadPart);
}

/// Runs this program again for one subject; its exit code is the time.
unsigned InAProcessOfItsOwn(int subject) {
    std::wstring command = L"\"" + kwo::com_support::ModulePath(nullptr) + L"\" --first " + std::to_wstring(subject);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process;
    Must(::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)
             ? S_OK
             : E_FAIL,
         "CreateProcess");
    DWORD microseconds = 0;
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::GetExitCodeProcess(process.hProcess, &microseconds);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    // Must ends a process that fails with 1.
    Must(microseconds > 1 ? S_OK : E_FAIL, "the first use in a process of its own");
    return microseconds;
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Must(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    if (argc == 3 && std::string(argv[1]) == "--first")
        return static_cast<int>(FirstUse(kSubjects[std::atoi(argv[2])]));

    constexpr int kRounds = 21;
    std::vector<unsigned> times[2];
    for (int round = 0; round < kRounds; ++round) {
        for (int subject = 0; subject < 2; ++subject)
            times[subject].push_back(InAProcessOfItsOwn(subject));
    }
    double medians[2];
    std::printf("\nThe first object of a process: loaded, created, and a property read by its name\n");
    for (int subject = 0; subject < 2; ++subject) {
        std::nth_element(times[subject].begin(), times[subject].begin() + kRounds / 2, times[subject].end());
        medians[subject] = 1e3 * times[subject][kRounds / 2];
        std::printf("  %-64ls %10.1f us\n", kSubjects[subject].programId, medians[subject] / 1e3);
    }
    Target("KWOUtil against Scripting.Dictionary", medians[0] / medians[1], "at most", 1, medians[0] <= medians[1]);
    ::CoUninitialize();
    return 0;
}
