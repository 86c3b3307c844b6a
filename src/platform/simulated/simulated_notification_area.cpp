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
    const Call call(mWorld, "Shell_NotifyIcon");
    Note("Add", record);
    if (call.Fails() || record.window == 0 || icons.contains(record.window)) return false;
    TrayRecord& shown = icons[record.window];
    shown.window = record.window;
    Take(shown, record);
    return true;
}

bool SimulatedNotificationArea::Modify(const TrayRecord& record) {
    const Call call(mWorld, "Shell_NotifyIcon");
    Note("Modify", record);
    if (call.Fails()) return false;
    const auto found = icons.find(record.window);
    if (found == icons.end()) return false;
    Take(found->second, record);
    return true;
}

bool SimulatedNotificationArea::Delete(const TrayRecord& record) {
    const Call call(mWorld, "Shell_NotifyIcon");
    Note("Delete", record);
    return !call.Fails() && icons.erase(record.window) != 0;
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
