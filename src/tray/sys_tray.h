#pragma once

#include <cstdint>

#include "component/component.h"
#include "platform/notification_area.h"
#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::tray {

using platform::Text;
using platform::TextView;

/// One icon in the notification area of the taskbar, for a window of the host.
///
/// What the mouse does on the icon reaches the window as WM_MOUSEMOVE, with the number of the real mouse message as its
/// parameter. The icon is removed when the object ends. If the taskbar restarts, a shown icon comes back by itself.
class KWOSysTray final : private platform::TaskbarListener {
public:
    /// The message that the window receives.
    static constexpr std::uint32_t kCallbackMessage = 512;  ///< WM_MOUSEMOVE

    /// `component` must outlive the object.
    explicit KWOSysTray(component::Component& component) : mComponent(component) {}
    KWOSysTray(const KWOSysTray&) = delete;
    KWOSysTray& operator=(const KWOSysTray&) = delete;
    /// Removes the icon. Raises nothing.
    ~KWOSysTray();

    /// Shows the icon and returns true if the system accepts it. An icon that is shown already is removed first.
    /// Returns false for a picture that is not an icon. Raises NoObjectSet without a picture, and whatever the picture
    /// raises. In these cases Icon and Tip stay as they were.
    bool Create(platform::Handle window, const platform::HostObjectRef& icon, TextView toolTip);
    /// Removes the icon. Does nothing if none is shown.
    void Destroy();

    /// The text beside the pointer, at most 64 characters; empty before Create.
    Text Tip() const;
    /// Changes the text of a shown icon; text after 64 characters is cut. Does nothing if no icon is shown.
    void SetTip(TextView toolTip);
    /// The picture that was set last; null before Create.
    platform::HostObjectRef Icon() const { return mIcon; }
    /// Changes the picture. Ignores a picture that is not an icon. Raises as Create does.
    void SetIcon(const platform::HostObjectRef& icon);

    /// The number of the message for a double click with `button`: 1 is the left button, 2 the right one, any other
    /// gives 0.
    static std::int32_t DoubleClickMsg(std::int16_t button);
    /// The same for a press.
    static std::int32_t MouseDownMsg(std::int16_t button);
    /// The same for a release.
    static std::int32_t MouseUpMsg(std::int16_t button);

private:
    void TaskbarCreated() override;
    bool Show();
    bool IsIcon(const platform::HostObjectRef& picture);

    component::Component& mComponent;
    platform::HostObjectRef mIcon;
    platform::TrayRecord mRecord;
    bool mAdded = false;
};

}  // namespace kwo::tray
