#include "tray/sys_tray.h"

#include <utility>

#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/host_errors.h"
#include "platform/pictures.h"

namespace kwo::tray {

namespace {

using platform::TrayRecord;

constexpr std::uint32_t kEverything = TrayRecord::kMessage | TrayRecord::kIcon | TrayRecord::kTip;

/// The tip as the record holds it: with a zero character at its end, cut or padded with blanks.
// Intended: a tip of 64 characters or more has no zero character at its end.
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
        // A release cannot report a failure, and the host must go on. The icon is removed with its window.
        mComponent.platform.notificationArea.Unlisten(*this);
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
    // The picture may have called Create while it was asked, and the host while the shell removed an icon. No such icon
    // must stay behind.
    while (mAdded)
        Destroy();
    const TrayRecord shown = record;
    mIcon = icon;
    mRecord = std::move(record);
    return Show(shown);
}

/// Listens first, because that may need memory: an icon that is shown is never lost.
bool KWOSysTray::Show(const TrayRecord& record) {
    platform::NotificationArea& area = mComponent.platform.notificationArea;
    const std::uint32_t run = ++mRuns;
    area.Listen(*this);
    bool isAdded = false;
    try {
        isAdded = area.Add(record);
    } catch (...) {
        area.Unlisten(*this);
        throw;
    }
    // Messages run while the shell is called. If the host has called Create again meanwhile, that call counts.
    const bool isLatest = run == mRuns;
    if (isLatest) mAdded = isAdded;
    if (!mAdded) area.Unlisten(*this);
    if (!isLatest && isAdded) area.Delete(record);
    return mAdded;
}

void KWOSysTray::Destroy() {
    // At once: messages run while the shell is called, and the host may call Create again meanwhile.
    if (!std::exchange(mAdded, false)) return;
    mComponent.platform.notificationArea.Unlisten(*this);
    try {
        mComponent.platform.notificationArea.Delete(mRecord);
    } catch (...) {
        // The shell was not called: the icon is still shown.
        mAdded = true;
        mComponent.platform.notificationArea.Listen(*this);
        throw;
    }
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
    // Intended: called even if no icon is shown; the system then refuses.
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
    if (!mAdded) return;
    // The shell refuses if it still has the icon or is too busy. Nobody can be told; the next taskbar gets the icon
    // again.
    mRecord.flags = kEverything;
    mComponent.platform.notificationArea.Add(mRecord);
}

bool KWOSysTray::IsIcon(const platform::HostObjectRef& picture) {
    return mComponent.platform.pictures.Type(platform::Required(picture)) == platform::Pictures::kIcon;
}

}  // namespace kwo::tray
