#include "pulse.h"

namespace kwo::soak {

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
