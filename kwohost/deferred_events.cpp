#include "deferred_events.h"

#include "host_window.h"

namespace kwohost {

void DeferredEvents::Fire(HostWindow& window, const wchar_t* event) {
    if (mDepth == 0) return window.Fire(event);
    mWaiting.push_back({ComPtr<HostWindow>(&window), event});
}

void DeferredEvents::FireAll() {
    while (!mWaiting.empty()) {
        const Event next = std::move(mWaiting.front());
        mWaiting.pop_front();
        next.window->Fire(next.name);
    }
}

}  // namespace kwohost
