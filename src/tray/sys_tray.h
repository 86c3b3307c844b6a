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
/// What the mouse does on the icon reaches the window as WM_MOUSEMOVE, with the number of the real mouse message as
/// its parameter: the three static members give the numbers to compare with.
/// The icon is removed when the object ends. If the taskbar restarts, a shown icon comes back by itself. Every member
/// runs on the thread that created the object.
class KWOSysTray final : private platform::TaskbarListener {
public:
    /// The message that the window receives: WM_MOUSEMOVE, which forms of the host pass on as an event.
    static constexpr std::uint32_t kCallbackMessage = 512;

    /// `component` must outlive the object.
    explicit KWOSysTray(component::Component& component) : mComponent(component) {}
    KWOSysTray(const KWOSysTray&) = delete;
    KWOSysTray& operator=(const KWOSysTray&) = delete;
    /// Removes the icon. Raises nothing.
    ~KWOSysTray();

    /// Shows the icon and returns true if the system accepts it.
    /// An icon that this object shows already is removed first.
    /// The object keeps a reference to the picture until another picture is set or the object ends.
    ///
    /// Returns false for a picture that is not an icon.
    /// Raises NoObjectSet without a picture, and whatever the picture raises. In these cases Icon and Tip stay as they
    /// were. If the system refuses the icon, the result is false too, but Icon and Tip are the new ones.
    bool Create(platform::Handle window, const platform::HostObjectRef& icon, TextView toolTip);
    /// Removes the icon. Does nothing if none is shown.
    void Destroy();

    /// The text beside the pointer, at most 64 characters; empty before Create.
    Text Tip() const;
    /// Changes the text of a shown icon; text after 64 characters is cut. Does nothing if no icon is shown.
    void SetTip(TextView toolTip);
    /// The picture that was set last, by Create or SetIcon; null before that.
    platform::HostObjectRef Icon() const { return mIcon; }
    /// Changes the picture.
    /// Ignores a picture that is not an icon.
    /// Raises NoObjectSet without a picture, and whatever the picture raises.
    /// The notification area is called even while no icon is shown; it then refuses, which nobody is told.
    void SetIcon(const platform::HostObjectRef& icon);

    /// The number of the message for a double click with `button`: 1 is the left button, 2 the right one, any other
    /// gives 0.
    /// The window compares it with the parameter of WM_MOUSEMOVE.
    static std::int32_t DoubleClickMsg(std::int16_t button);
    /// The same for a press.
    static std::int32_t MouseDownMsg(std::int16_t button);
    /// The same for a release.
    static std::int32_t MouseUpMsg(std::int16_t button);

private:
    void TaskbarCreated() override;
    /// Shows the icon of `record`, which is a copy of mRecord, and listens for a new taskbar; false if the system
    /// refuses.
    bool Show(const platform::TrayRecord& record);
    bool IsIcon(const platform::HostObjectRef& picture);

    component::Component& mComponent;
    platform::HostObjectRef mIcon;
    /// What the notification area was told last.
    platform::TrayRecord mRecord;
    /// True while the icon is shown.
    bool mAdded = false;
    /// How often Show has begun, to tell whether it has run again inside itself.
    std::uint32_t mRuns = 0;
};

}  // namespace kwo::tray
