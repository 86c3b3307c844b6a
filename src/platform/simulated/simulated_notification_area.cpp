#include "platform/simulated/simulated_notification_area.h"

#include <algorithm>
#include <string>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

void Take(TrayRecord& shown, const TrayRecord& told) {
    if ((told.flags & TrayRecord::kMessage) != 0) shown.callbackMessage = told.callbackMessage;
    if ((told.flags & TrayRecord::kIcon) != 0) shown.icon = told.icon;
    if ((told.flags & TrayRecord::kTip) != 0) shown.tip = ThroughAnsi(told.tip);
}

}  // namespace

/// The shell has its own copy of the record by then.
class SimulatedNotificationArea::ShellCall {
public:
    explicit ShellCall(const SimulatedNotificationArea& area) : mArea(area) { Run(); }
    ShellCall(const ShellCall&) = delete;
    ShellCall& operator=(const ShellCall&) = delete;
    ~ShellCall() { Run(); }

private:
    void Run() const {
        if (mArea.whileCalled) mArea.whileCalled();
    }

    const SimulatedNotificationArea& mArea;
};

bool SimulatedNotificationArea::Add(const TrayRecord& record) {
    const Call call(mWorld, "Shell_NotifyIcon");
    const TrayRecord told = record;
    Note("Add", told);
    const ShellCall shell(*this);
    if (call.Fails() || told.window == 0 || icons.contains(told.window)) return false;
    TrayRecord& shown = icons[told.window];
    shown.window = told.window;
    Take(shown, told);
    return true;
}

bool SimulatedNotificationArea::Modify(const TrayRecord& record) {
    const Call call(mWorld, "Shell_NotifyIcon");
    const TrayRecord told = record;
    Note("Modify", told);
    const ShellCall shell(*this);
    if (call.Fails()) return false;
    const auto found = icons.find(told.window);
    if (found == icons.end()) return false;
    Take(found->second, told);
    return true;
}

bool SimulatedNotificationArea::Delete(const TrayRecord& record) {
    const Call call(mWorld, "Shell_NotifyIcon");
    const Handle window = record.window;
    Note("Delete", record);
    const ShellCall shell(*this);
    return !call.Fails() && icons.erase(window) != 0;
}

void SimulatedNotificationArea::RecreateTaskbar() {
    icons.clear();
    for (TaskbarListener* const listener : std::vector(listeners)) {
        if (std::ranges::find(listeners, listener) == listeners.end()) continue;
        const CountedMemory counted;
        listener->TaskbarCreated();
    }
}

void SimulatedNotificationArea::Note(std::string_view verb, const TrayRecord& record) {
    mWorld.log.Add("NotifyIcon " + std::string(verb) + " " + std::to_string(record.window) +
                   " flags=" + std::to_string(record.flags) + " message=" + std::to_string(record.callbackMessage) +
                   " icon=" + std::to_string(record.icon) + " tip=\"" + Shown(TextView(record.tip)) + '"');
}

}  // namespace kwo::platform::simulated
