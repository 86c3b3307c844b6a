#pragma once

#include "platform/platform.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

using platform::HostObjectRef;
using platform::Variant;

/// Where a stored form belongs; what is missing stays as the form has it.
struct FormPosition {
    Variant windowState = platform::Missing();
    Variant left = platform::Missing();
    Variant top = platform::Missing();
    Variant width = platform::Missing();
    Variant height = platform::Missing();
};

/// Places forms of any host that have the usual properties, in the units of the forms. What a form does not do is
/// passed over: neither operation raises.
class FormPlacement {
public:
    explicit FormPlacement(const platform::Platform& services) : mPlatform(services) {}

    /// On the screen, over `parent` when that is an object, in the client area of `parent` for an MDI child.
    void KWO_CenterForm(const HostObjectRef& form, const Variant& parent);
    /// Applies `position`, then makes the form fit on the screen, or inside `parent` when that is an object.
    void KWO_SetFormPosition(const HostObjectRef& form, const FormPosition& position, const Variant& parent);

private:
    const platform::Platform& mPlatform;
};

}  // namespace kwo::sysinfo
