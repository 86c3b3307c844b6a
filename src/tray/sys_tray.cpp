#include "tray/sys_tray.h"

#include <utility>

#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/pictures.h"

namespace kwo::tray {

namespace {

using platform::TrayRecord;

constexpr std::uint32_t kEverything = TrayRecord::kMessage | TrayRecord::kIcon | TrayRecord::kTip;

/// The tip as the record holds it: with its end, cut or filled with blanks.
// Intended: a tip of 64 characters or more loses its end.
Text Fitted(TextView toolTip) {
    constexpr std::size_t kTipSize = 64;
    Text fitted(toolTip);
    fitted.push_back(u'\0');
    fitted.resize(kTipSize, u' ');
    return fitted;
}

std::int32_t ForButton(std::int16_t button, std::int32_t left, std::int32_t right) {
    if (button == 1) return left;
    return button == 2 ? right : 0;
}

}  // namespace

KWOSysTray::~KWOSysTray() {
    try {
        Destroy();
    } catch (...) {
        // A release has no way to tell of it, and the host must live on. The icon goes with its window.
    }
}

bool KWOSysTray::Create(platform::Handle window, const platform::HostObjectRef& icon, TextView toolTip) {
    if (mAdded) Destroy();
    if (!IsIcon(icon)) return false;
    TrayRecord record = {.window = window,
                         .flags = kEverything,
                         .callbackMessage = kCallbackMessage,
                         .icon = mComponent.platform.pictures.NativeHandle(*icon),
                         .tip = Fitted(toolTip)};
    // The picture may have called Create itself while it was asked: no icon is left that nobody removes.
    Destroy();
    mIcon = icon;
    mRecord = std::move(record);
    mAdded = mComponent.platform.notificationArea.Add(mRecord);
    if (mAdded) mComponent.platform.notificationArea.Listen(*this);
    return mAdded;
}

void KWOSysTray::Destroy() {
    if (!mAdded) return;
    mComponent.platform.notificationArea.Unlisten(*this);
    mComponent.platform.notificationArea.Delete(mRecord);
    mAdded = false;
}

Text KWOSysTray::Tip() const {
    return frame::KWO_CutAtNul(mRecord.tip);
}

void KWOSysTray::SetTip(TextView toolTip) {
    if (!mAdded) return;
    mRecord.tip = Fitted(toolTip);
    mRecord.flags = TrayRecord::kTip;
    mComponent.platform.notificationArea.Modify(mRecord);
}

void KWOSysTray::SetIcon(const platform::HostObjectRef& icon) {
    if (!IsIcon(icon)) return;
    mRecord.icon = mComponent.platform.pictures.NativeHandle(*icon);
    mIcon = icon;
    mRecord.flags = TrayRecord::kIcon;
    // Intended: also without an icon in the area, whereupon the system refuses.
    mComponent.platform.notificationArea.Modify(mRecord);
}

std::int32_t KWOSysTray::DoubleClickMsg(std::int16_t button) {
    return ForButton(button, 515, 518);
}

std::int32_t KWOSysTray::MouseDownMsg(std::int16_t button) {
    return ForButton(button, 513, 516);
}

std::int32_t KWOSysTray::MouseUpMsg(std::int16_t button) {
    return ForButton(button, 514, 517);
}

void KWOSysTray::TaskbarCreated() {
    // The shell refuses when it still has the icon, or is too busy: there is nobody to tell, and the next taskbar is
    // told again.
    mRecord.flags = kEverything;
    mComponent.platform.notificationArea.Add(mRecord);
}

bool KWOSysTray::IsIcon(const platform::HostObjectRef& picture) {
    if (picture == nullptr) platform::RaiseRuntime(platform::RuntimeError::NoObjectSet);
    return mComponent.platform.pictures.Type(*picture) == platform::Pictures::kIcon;
}

}  // namespace kwo::tray
