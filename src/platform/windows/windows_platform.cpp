#include "platform/windows/windows_platform.h"

#include "platform/windows/context.h"

#define SERVICE_HEADER(name) <platform/windows/windows_##name.h>
#include "platform/service_headers.def"
#undef SERVICE_HEADER

namespace kwo::platform::windows {

struct WindowsPlatform::Parts {
    Parts(HINSTANCE module, ModuleUse& use) : context{module, use} {}

    Context context;
#define SERVICE(Interface, member) Windows##Interface member = MakeService<Windows##Interface>(context);
#include "platform/services.def"
#undef SERVICE
};

WindowsPlatform::WindowsPlatform(HINSTANCE module, ModuleUse& use) : mParts(std::make_unique<Parts>(module, use)) {}

WindowsPlatform::~WindowsPlatform() = default;

Platform WindowsPlatform::Services() {
    return ServicesOf(*mParts);
}

void WindowsPlatform::StopCallbacks() noexcept {
    mParts->timers.StopAll();
    mParts->notificationArea.StopListening();
}

void WindowsPlatform::EndThread() noexcept {
    mParts->timers.EndThread();
}

}  // namespace kwo::platform::windows
