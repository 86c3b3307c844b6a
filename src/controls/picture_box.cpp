#include "controls/picture_box.h"

#include <algorithm>

#include "platform/component_error.h"
#include "platform/host_errors.h"

namespace kwo::controls {

namespace {

/// Hosts expect colours as signed numbers.
Variant ToVariant(Colour colour) {
    return static_cast<std::int32_t>(colour);
}

}  // namespace

bool IsPictureBox(const HostObjectRef& object) {
    if (object == nullptr) return false;
    const Text type = object->TypeName();
    if (!type.empty()) return type == u"PictureBox" || type == u"_PictureBox";
    constexpr TextView kMembers[] = {u"hDC", u"hWnd", u"AutoRedraw", u"Cls", u"Refresh"};
    return std::ranges::all_of(kMembers, [&](TextView member) { return object->Knows(member); });
}

HostObjectRef ObjectProperty(platform::HostObject& object, TextView property) {
    const Variant value = object.Get(property);
    return platform::IsObject(value) ? std::get<HostObjectRef>(value) : nullptr;
}

Handle PictureBox::Context() const {
    return mPlatform.conversions.To32Bits(Box().Get(u"hDC"));
}

Handle PictureBox::Window() const {
    return mPlatform.conversions.To32Bits(Box().Get(u"hWnd"));
}

void PictureBox::Clear() const {
    Box().Call(u"Cls");
}

void PictureBox::Refresh() const {
    Box().Call(u"Refresh");
}

void PictureBox::SetFocus() const {
    Box().Call(u"SetFocus");
}

void PictureBox::SetForeColour(Colour colour) const {
    Let(u"ForeColor", ToVariant(colour));
}

Colour PictureBox::ForeColour() const {
    return static_cast<Colour>(mPlatform.conversions.To32Bits(Box().Get(u"ForeColor")));
}

void PictureBox::SetFontBold(bool bold) const {
    const HostObjectRef box = mBox;
    HostObjectRef font = ObjectProperty(Box(), u"Font");
    platform::Required(font);
    // The same font stays the same object here, which already knows the ids of its members.
    const HostObjectRef known = mFont;
    if (known != nullptr && known->IsSameAs(*font)) font = known;
    font->Let(u"Bold", bold);
    // Only a font is kept, or an odd host could give the very object that owns this one, which would never end then.
    // Meanwhile the host may have given this object another box.
    if (mBox == box) mFont = font;
}

void PictureBox::Let(TextView property, const Variant& value) const {
    Box().Let(property, value);
}

double PictureBox::Number(TextView property) const {
    return mPlatform.conversions.ToDouble(Box().Get(property));
}

double PictureBox::TextHeight(TextView text) const {
    const Variant arguments[] = {Text(text)};
    return mPlatform.conversions.ToDouble(Box().Call(u"TextHeight", arguments));
}

void PictureBox::FillBox(const platform::Rect& corners, Colour colour) const {
    constexpr std::int16_t kFilledBox = 38;
    const Variant arguments[] = {kFilledBox,
                                 static_cast<float>(corners.left),
                                 static_cast<float>(corners.top),
                                 static_cast<float>(corners.right),
                                 static_cast<float>(corners.bottom),
                                 ToVariant(colour)};
    Box().Call(u"Line", arguments);
}

platform::HostObject& PictureBox::Box() const {
    return platform::Required(mBox);
}

}  // namespace kwo::controls
