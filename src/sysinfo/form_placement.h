#pragma once

#include "platform/platform.h"
#include "platform/variant.h"

namespace kwo::sysinfo {

using platform::HostObjectRef;
using platform::Variant;

/// A stored position of a form. A missing value leaves the form as it is; an empty one is assigned.
struct FormPosition {
    Variant windowState = platform::Missing();  ///< 0 normal, 1 minimised, 2 maximised
    Variant left = platform::Missing();
    Variant top = platform::Missing();
    Variant width = platform::Missing();
    Variant height = platform::Missing();
};

/// Places forms of any host that have the usual properties. All values are in the units of the forms; for top-level
/// forms that is whole twips. Where a form lacks a property or raises an error, that step is skipped: nothing is
/// raised.
class FormPlacement {
public:
    /// `services` must outlive the object; the size of the screen comes from there.
    explicit FormPlacement(const platform::Platform& services) : mPlatform(services) {}

    /// Restores a minimised form and centres it: over `parent` if that holds an object, in the client area of `parent`
    /// for an MDI child, else on the primary screen. Negative positions become 0. An MDI child without a parent does
    /// not move.
    void KWO_CenterForm(const HostObjectRef& form, const Variant& parent);
    /// Restores a minimised form, applies `position`, and then fits the form into `parent` if that holds an object,
    /// else onto the whole primary screen. A form above the top edge stays there. At last the form gets its window
    /// state.
    void KWO_SetFormPosition(const HostObjectRef& form, const FormPosition& position, const Variant& parent);

private:
    const platform::Platform& mPlatform;
};

}  // namespace kwo::sysinfo
