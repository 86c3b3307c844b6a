#pragma once

#include <windows.h>

#include <memory>

#include "platform/platform.h"

namespace kwo::platform::windows {

/// The platform's services on Windows. One per thread that hosts a component.
class WindowsPlatform {
public:
    /// `module` is the one that holds the component.
    explicit WindowsPlatform(HINSTANCE module);
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    Platform Services();

private:
    struct Parts;
    std::unique_ptr<Parts> mParts;
};

}  // namespace kwo::platform::windows
