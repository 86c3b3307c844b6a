#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/geometry.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "platform/values.h"
#include "platform/variant.h"

namespace kwo::controls {

using platform::Colour;
using platform::Handle;
using platform::HostObjectRef;
using platform::Text;
using platform::TextView;
using platform::Variant;

/// Whether the object is a picture box.
/// The name of its type decides: PictureBox. Without type information it must have the members hDC, hWnd, AutoRedraw,
/// Cls and Refresh.
/// False for null. May run code of the host, but raises nothing of it.
bool IsPictureBox(const HostObjectRef& object);

/// The object in a property; null if the property holds none or another value. Raises what the object raises.
HostObjectRef ObjectProperty(platform::HostObject& object, TextView property);

/// The caller's picture box.
/// Each call goes to the host, and no answer is kept.
///
/// A call raises what the host raises, NoObjectSet without a box, and TypeMismatch or Overflow for an answer that is
/// not a number of the right size. It may run any code of the host, which may even assign another box.
/// Calendar and button have one each.
class PictureBox {
public:
    /// `services` must outlive the object.
    explicit PictureBox(const platform::Platform& services) : mPlatform(services) {}

    /// Sets the box; null for none. Releasing the old one may run code of the host.
    void Assign(HostObjectRef box) {
        mBox = std::move(box);
        mFont = nullptr;
    }
    /// The box that was assigned; null before.
    const HostObjectRef& Object() const { return mBox; }

    /// The device context to draw on (hDC).
    /// The host owns it and may change it at any time: read it again before each drawing call.
    Handle Context() const;
    /// The handle of the box's window (hWnd).
    Handle Window() const;
    /// Empties the picture (Cls).
    void Clear() const;
    /// Shows what was drawn.
    void Refresh() const;
    /// Gives the box the keyboard focus.
    void SetFocus() const;
    /// Sets the colour of the texts that are drawn from now on.
    void SetForeColour(Colour colour) const;
    /// The colour that texts are drawn in.
    Colour ForeColour() const;
    /// Makes the box's font bold or not. The font object stays the same: everybody who shares it sees the change.
    void SetFontBold(bool bold) const;
    /// Assigns a value to any other property.
    void Let(TextView property, const Variant& value) const;
    /// A property as a number, in the box's own units: twips, as hosts must set them.
    double Number(TextView property) const;
    /// The height of a line of `text` in the box's font, in the box's own units.
    double TextHeight(TextView text) const;
    /// Fills a rectangle from corner to corner, in twips, by the box's method Line.
    void FillBox(const platform::Rect& corners, Colour colour) const;

private:
    /// Raises NoObjectSet without a box.
    platform::HostObject& Box() const;

    const platform::Platform& mPlatform;
    HostObjectRef mBox;
    /// The font as the box gave it last, because it knows the ids of its members. No value of it is kept.
    mutable HostObjectRef mFont;
};

}  // namespace kwo::controls
