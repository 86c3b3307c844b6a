#include "pulse.h"

namespace kwo::soak {

double NowMs() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1'000 / static_cast<double>(frequency.QuadPart);
}

Pulse::Pulse() {
    constexpr UINT kBeatMs = 10;
    sBeating = this;
    mTimer = SetTimer(nullptr, 0, kBeatMs, Beat);
}

Pulse::~Pulse() {
    KillTimer(nullptr, mTimer);
    sBeating = nullptr;
}

void CALLBACK Pulse::Beat(HWND, UINT, UINT_PTR, DWORD) {
    if (sBeating != nullptr) sBeating->mBeats.Add(NowMs());
}

}  // namespace kwo::soak
