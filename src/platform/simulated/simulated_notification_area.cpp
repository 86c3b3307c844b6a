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

bool SimulatedNotificationArea::Add(const TrayRecord& record) {
    if (!Enter("Add", record) || record.window == 0 || icons.contains(record.window)) return false;
    TrayRecord& shown = icons[record.window];
    shown.window = record.window;
    Take(shown, record);
    return true;
}

bool SimulatedNotificationArea::Modify(const TrayRecord& record) {
    if (!Enter("Modify", record)) return false;
    const auto found = icons.find(record.window);
    if (found == icons.end()) return false;
    Take(found->second, record);
    return true;
}

bool SimulatedNotificationArea::Delete(const TrayRecord& record) {
    return Enter("Delete", record) && icons.erase(record.window) != 0;
}

void SimulatedNotificationArea::RecreateTaskbar() {
    icons.clear();
    for (TaskbarListener* const listener : std::vector(listeners)) {
        if (std::ranges::find(listeners, listener) != listeners.end()) listener->TaskbarCreated();
    }
}

bool SimulatedNotificationArea::Enter(std::string_view call, const TrayRecord& record) {
    mWorld.log.Add("NotifyIcon " + std::string(call) + " " + std::to_string(record.window) +
                   " flags=" + std::to_string(record.flags) + " message=" + std::to_string(record.callbackMessage) +
                   " icon=" + std::to_string(record.icon) + " tip=\"" + Shown(TextView(record.tip)) + '"');
    return !mWorld.Fails("Shell_NotifyIcon");
}

}  // namespace kwo::platform::simulated
