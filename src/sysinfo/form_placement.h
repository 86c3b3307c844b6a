#pragma once

#include "platform/platform.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

using platform::HostObjectRef;
using platform::Variant;

/// A stored position of a form. A missing value leaves the form as it is; an empty one is assigned, but for the state.
struct FormPosition {
    /// 0 normal, 1 minimised, 2 maximised. An empty one leaves the state that the form had.
    Variant windowState = platform::Missing();
    Variant left = platform::Missing();
    Variant top = platform::Missing();
    Variant width = platform::Missing();
    Variant height = platform::Missing();
};

/// Places forms of any host that have the usual properties: Left, Top, Width, Height, WindowState, MDIChild,
/// ScaleWidth and ScaleHeight.
///
/// All values are in the units of the forms; for top-level forms that is whole twips. Where a form lacks a property or
/// raises an error, that step is skipped: nothing is raised but lack of memory. Each step may run code of the host.
class FormPlacement {
public:
    /// `services` must outlive the object; the size of the screen comes from there, at each call anew.
    explicit FormPlacement(const platform::Platform& services) : mPlatform(services) {}

    /// Restores a minimised form and centres it: over `parent` if that holds an object, in the client area of `parent`
    /// for an MDI child, else on the primary screen.
    /// Negative positions become 0. An MDI child without a parent does not move. The size stays. A null form does
    /// nothing.
    void KWO_CenterForm(const HostObjectRef& form, const Variant& parent);
    /// Restores a minimised form, applies `position`, and then fits the form into `parent` if that holds an object,
    /// else onto the whole primary screen.
    /// At last the form gets its window state.
    /// A form that sticks out on the right or below moves in; one that is too large is made smaller. A form beyond the
    /// left edge moves in too, but a form above the top edge stays there: see docs/intended.md.
    void KWO_SetFormPosition(const HostObjectRef& form, const FormPosition& position, const Variant& parent);

private:
    const platform::Platform& mPlatform;
};

}  // namespace kwo::sysinfo
