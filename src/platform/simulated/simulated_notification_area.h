#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "platform/notification_area.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The notification area: one icon for a window.
/// Every call stands in the log, as `NotifyIcon Add 77 flags=7 message=512 icon=5 tip="text"`.
/// Calls that can fail: Shell_NotifyIcon and, for lack of memory alone, CreateWindowEx, which stands for Listen.
class SimulatedNotificationArea final : public NotificationArea {
public:
    explicit SimulatedNotificationArea(World& world) : mWorld(world) {
        world.faults.Declare(
            {{"Shell_NotifyIcon", {1460, 5, Faults::kNoMemory}}, {"CreateWindowEx", {Faults::kNoMemory}}});
    }

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool Delete(const TrayRecord& record) override;

    void Listen(TaskbarListener& listener) override {
        const Call call(mWorld, "CreateWindowEx");
        if (std::ranges::find(listeners, &listener) == listeners.end()) listeners.push_back(&listener);
    }
    void Unlisten(TaskbarListener& listener) noexcept override { std::erase(listeners, &listener); }

    /// What happens when the shell is started again: all icons are gone, and the listeners are told.
    void RecreateTaskbar();

    /// Runs before and after the shell has done what a call asks for, as messages of the host do.
    std::function<void()> whileCalled;
    /// Those between Listen and Unlisten.
    std::vector<TaskbarListener*> listeners;
    /// What is shown, by the handle of the window. The tips are as their readers see them.
    std::map<Handle, TrayRecord> icons;

private:
    /// Runs whileCalled, now and at its end.
    class ShellCall;

    void Note(std::string_view verb, const TrayRecord& record);

    World& mWorld;
};

}  // namespace kwo::platform::simulated
