#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/notification_area.h"
#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::tray {

using platform::Text;
using platform::TextView;

/// One icon in the notification area, for a window of the host's. What the mouse does on the icon reaches the window as
/// the message WM_MOUSEMOVE with the mouse's own message as its parameter. The icon goes when the object goes; while it
/// is shown, it comes back by itself when the taskbar is created anew.
class KWOSysTray final : private platform::TaskbarListener {
public:
    static constexpr std::uint32_t kCallbackMessage = 512;  ///< WM_MOUSEMOVE

    explicit KWOSysTray(component::Component& component) : mComponent(component) {}
    KWOSysTray(const KWOSysTray&) = delete;
    KWOSysTray& operator=(const KWOSysTray&) = delete;
    ~KWOSysTray();

    /// Takes the place of an icon that is there already. False for a picture that is no icon and when the system adds
    /// none. Raises NoObjectSet without a picture, and what the picture raises; a picture that is refused in any of
    /// these ways changes neither Icon nor Tip.
    bool Create(platform::Handle window, const platform::HostObjectRef& icon, TextView toolTip);
    void Destroy();

    Text Tip() const;
    /// Dropped while there is no icon.
    void SetTip(TextView toolTip);
    platform::HostObjectRef Icon() const { return mIcon; }
    /// A picture that is no icon is ignored. Raises as Create does.
    void SetIcon(const platform::HostObjectRef& icon);

    /// The numbers that tell what the mouse did: button 1 is the left, 2 the right one, 0 for any other.
    static std::int32_t DoubleClickMsg(std::int16_t button);
    static std::int32_t MouseDownMsg(std::int16_t button);
    static std::int32_t MouseUpMsg(std::int16_t button);

private:
    void TaskbarCreated() override;
    bool IsIcon(const platform::HostObjectRef& picture);

    component::Component& mComponent;
    platform::HostObjectRef mIcon;
    platform::TrayRecord mRecord;
    bool mAdded = false;
};

}  // namespace kwo::tray
