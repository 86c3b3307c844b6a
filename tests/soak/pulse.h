#pragma once

#include <windows.h>

#include "lateness.h"
#include "support/clock.h"

namespace kwo::soak {

using test_support::NowMs;

/// A plain timer of this thread that notes when it fired: the thread processed timers then. Only one at a time.
class Pulse {
public:
    Pulse();
    Pulse(const Pulse&) = delete;
    Pulse& operator=(const Pulse&) = delete;
    ~Pulse();

    /// How often timers were processed between two moments. Each expired timer has its turn before one has a second.
    int BeatsBetween(double from, double to) const { return mBeats.Between(from, to); }
    /// The longest time without a beat.
    double LongestGap() const { return mBeats.LongestGap(); }

private:
    static void CALLBACK Beat(HWND, UINT, UINT_PTR, DWORD);

    inline static Pulse* sBeating = nullptr;
    Beats mBeats{NowMs()};
    UINT_PTR mTimer = 0;
};

}  // namespace kwo::soak
