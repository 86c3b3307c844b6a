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

/// Whether the object is a picture box: by the name of its type, or, without type information, by what it answers to.
bool IsPictureBox(const HostObjectRef& object);

/// The property as an object; null when it holds none.
HostObjectRef ObjectProperty(platform::HostObject& object, TextView property);

/// The caller's picture box. Every call goes to the host; nothing of what it answers is kept. Each raises what the host
/// raises, and NoObjectSet while there is no box.
class PictureBox {
public:
    explicit PictureBox(const platform::Platform& services) : mPlatform(services) {}

    void Assign(HostObjectRef box) {
        mBox = std::move(box);
        mFont = nullptr;
    }
    const HostObjectRef& Object() const { return mBox; }

    /// The device context: to be read again before each drawing call.
    Handle Context() const;
    Handle Window() const;
    void Clear() const;
    void Refresh() const;
    void SetFocus() const;
    void SetForeColour(Colour colour) const;
    Colour ForeColour() const;
    void SetFontBold(bool bold) const;
    void Let(TextView property, const Variant& value) const;
    /// In the box's own units.
    double Number(TextView property) const;
    double TextHeight(TextView text) const;
    /// A filled box from corner to corner, in twips.
    void FillBox(const platform::Rect& corners, Colour colour) const;

private:
    platform::HostObject& Box() const;

    const platform::Platform& mPlatform;
    HostObjectRef mBox;
    mutable HostObjectRef mFont;  ///< as the box gave it last
};

}  // namespace kwo::controls
