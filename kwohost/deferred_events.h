#pragma once

#include <deque>
#include <utility>

#include "com_values.h"

namespace kwohost {

class HostWindow;

/// Events that arise inside the system's own controls.
/// A script may close the form in any event, and the code of a control does not survive the end of its own window. So
/// these events wait until that code has returned.
///
///     events.Inside([&] { return CallWindowProcW(procedure, window, message, first, second); });
class DeferredEvents {
public:
    /// Runs code of the system and returns its result.
    /// The outermost call then fires the events that arose meanwhile, in their order.
    template <class Code>
    LRESULT Inside(Code&& code) {
        const LRESULT result = Run(std::forward<Code>(code));
        if (mDepth == 0) FireAll();
        return result;
    }
    /// Fires an event without arguments: now, or as soon as the code of the system has returned.
    void Fire(HostWindow& window, const wchar_t* event);

private:
    struct Event {
        ComPtr<HostWindow> window;
        const wchar_t* name;
    };

    /// Counts one level of the system's code, also when it raises.
    class Level {
    public:
        explicit Level(int& depth) : mDepth(depth) { ++mDepth; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --mDepth; }

    private:
        int& mDepth;
    };

    template <class Code>
    LRESULT Run(Code&& code) {
        const Level inside(mDepth);
        return std::forward<Code>(code)();
    }
    void FireAll();

    int mDepth = 0;
    std::deque<Event> mWaiting;
};

}  // namespace kwohost
