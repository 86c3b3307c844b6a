#pragma once

#include <deque>
#include <functional>
#include <map>

#include "platform/simulated/world.h"
#include "platform/window_service.h"

namespace kwo::platform::simulated {

/// The windows of the desktop and the boxes it shows.
///
///     desktop.windows.windows[77] = {u"Host", true};  // a minimised window
///     desktop.windows.answers = {6};                  // the user will press Yes
///
/// The log shows `Ask owner=77 style=0x10004 title=... prompt=...` and `Flash 77 1`. Calls that can fail: IsWindow,
/// IsIconic, FlashWindow, GetWindowText and MessageBox.
class SimulatedWindowService final : public WindowService {
public:
    /// A window that a test has added.
    struct Window {
        Text title;
        bool minimised = false;
        /// Calls that inverted the caption.
        int flashes = 0;
        bool hidden = false;
    };
    /// What a message box was asked to show.
    struct Question {
        Handle owner = 0;
        Text prompt;
        Text title;
        std::uint32_t style = 0;
    };

    explicit SimulatedWindowService(World& world);

    bool WindowExists(Handle window) override;
    bool IsMinimised(Handle window) override;
    void Flash(Handle window, bool invert) override;
    Text WindowText(Handle window) override;
    /// Answered by `onAsk` where it is set, else by the first of `answers`, else by the box's first button.
    std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) override;

    /// All there are, by handle; a test adds, changes and removes them here.
    std::map<Handle, Window> windows;
    /// The buttons that the user will press, the next one first.
    std::deque<std::int32_t> answers;
    /// Runs while the box is up; what it returns is the button pressed.
    std::function<std::int32_t(const Question&)> onAsk;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
