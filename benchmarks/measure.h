#pragma once

#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "com_support/com_ptr.h"

/// What the benchmarks that run as automation clients have in common.
namespace kwo::bench {

using com_support::ComPtr;

inline void Must(HRESULT result, const char* what) {
    if (SUCCEEDED(result)) return;
    std::printf("%s failed: 0x%08lX\n", what, static_cast<unsigned long>(result));
    std::exit(1);
}

/// Nanoseconds for one call: the median of several rounds.
template <class Call>
double Cost(int callsPerRound, Call call) {
    constexpr int kRounds = 15;
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    std::vector<double> costs;
    for (int round = 0; round < kRounds; ++round) {
        LARGE_INTEGER begin, end;
        ::QueryPerformanceCounter(&begin);
        for (int at = 0; at < callsPerRound; ++at)
            call();
        ::QueryPerformanceCounter(&end);
        costs.push_back(1e9 * static_cast<double>(end.QuadPart - begin.QuadPart) /
                        static_cast<double>(frequency.QuadPart) / callsPerRound);
    }
    std::nth_element(costs.begin(), costs.begin() + kRounds / 2, costs.end());
    return costs[kRounds / 2];
}

inline void Row(const char* what, double nanoseconds) {
    std::printf("  %-64s %10.1f ns\n", what, nanoseconds);
}

inline void Target(const char* what, double value, const char* comparison, double limit, bool met) {
    std::printf("    -> %-60s %9.2f  (%s %g: %s)\n", what, value, comparison, limit, met ? "met" : "NOT MET");
}

inline CLSID ClassOf(const wchar_t* name) {
    CLSID id;
    Must(::CLSIDFromProgID(name, &id), "CLSIDFromProgID");
    return id;
}

inline ComPtr<IDispatch> Created(const wchar_t* name) {
    ComPtr<IDispatch> object;
    Must(::CoCreateInstance(ClassOf(name), nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid()),
         "CoCreateInstance");
    return object;
}

inline ComPtr<IClassFactory> FactoryOf(const wchar_t* name) {
    ComPtr<IClassFactory> factory;
    Must(::CoGetClassObject(ClassOf(name), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.OutVoid()),
         "CoGetClassObject");
    return factory;
}

/// An interface that the object must have.
template <class Interface>
ComPtr<Interface> Early(const ComPtr<IDispatch>& object, REFIID id) {
    auto early = object.As<Interface>(id);
    Must(early ? S_OK : E_NOINTERFACE, "QueryInterface");
    return early;
}

}  // namespace kwo::bench
