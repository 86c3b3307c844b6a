#include "sysinfo/form_placement.h"

#include <cstdint>
#include <utility>

#include "platform/component_error.h"
#include "platform/conversions.h"
#include "platform/host_errors.h"
#include "platform/screen.h"
#include "platform/text.h"

namespace kwo::sysinfo {

namespace {

using platform::Text;
using platform::TextView;
using platform::Try;

constexpr std::int16_t kNormal = 0;
constexpr std::int16_t kMinimised = 1;

HostObjectRef ObjectOf(const Variant& value) {
    return platform::IsObject(value) ? std::get<HostObjectRef>(value) : nullptr;
}

/// A form, or another object with places and sizes, by its properties.
class Form {
public:
    Form(const HostObjectRef& object, platform::Conversions& conversions)
        : mObject(object), mConversions(conversions) {}

    float Single(TextView property) const { return mConversions.ToSingle(Object().Get(property)); }
    std::int16_t State() const { return mConversions.ToInt16(Object().Get(u"WindowState")); }
    bool IsMdiChild() const { return mConversions.ToBoolean(Object().Get(u"MDIChild")); }
    void Let(TextView property, const Variant& value) const { Object().Let(property, value); }

    void Unminimise() const {
        Try([&] {
            if (State() == kMinimised) Let(u"WindowState", kNormal);
        });
    }

private:
    platform::HostObject& Object() const { return platform::Required(mObject); }

    const HostObjectRef& mObject;
    platform::Conversions& mConversions;
};

/// The area that a form must fit into.
struct Bounds {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    float right = 0;
    float bottom = 0;
};

Bounds BoundsOf(const Form& parent, Bounds bounds) {
    Try([&] { bounds.top = parent.Single(u"Top"); });
    Try([&] { bounds.left = parent.Single(u"Left"); });
    Try([&] { bounds.height = parent.Single(u"Height"); });
    Try([&] { bounds.width = parent.Single(u"Width"); });
    bounds.bottom = bounds.top + bounds.height;
    bounds.right = bounds.left + bounds.width;
    return bounds;
}

void FitHorizontally(const Form& form, const Bounds& bounds) {
    Try([&] {
        if (form.Single(u"Left") < bounds.left) form.Let(u"Left", bounds.left);
    });
    bool sticksOut = false;
    bool tooWide = false;
    Try([&] { sticksOut = form.Single(u"Left") + form.Single(u"Width") > bounds.right; });
    if (!sticksOut) return;
    Try([&] { tooWide = form.Single(u"Width") > bounds.width; });
    if (tooWide) {
        Try([&] { form.Let(u"Left", bounds.left); });
        Try([&] { form.Let(u"Width", bounds.width); });
    } else {
        Try([&] { form.Let(u"Left", bounds.right - form.Single(u"Width")); });
    }
}

void FitVertically(const Form& form, const Bounds& bounds) {
    // Intended: unlike the left edge, a top edge above the bounds stays where it is.
    bool sticksOut = false;
    bool tooHigh = false;
    Try([&] { sticksOut = form.Single(u"Top") + form.Single(u"Height") > bounds.bottom; });
    if (!sticksOut) return;
    Try([&] { tooHigh = form.Single(u"Height") > bounds.height; });
    if (tooHigh) {
        Try([&] { form.Let(u"Top", bounds.top); });
        Try([&] { form.Let(u"Height", bounds.height); });
    } else {
        Try([&] { form.Let(u"Top", bounds.bottom - form.Single(u"Height")); });
    }
}

/// 0 for a negative value, and for a value that is not a number.
float AtLeastZero(float value) {
    return value >= 0 ? value : 0;
}

}  // namespace

void FormPlacement::KWO_CenterForm(const HostObjectRef& formObject, const Variant& parentForm) {
    const Form form(formObject, mPlatform.conversions);
    const HostObjectRef parentObject = ObjectOf(parentForm);
    const Form parent(parentObject, mPlatform.conversions);
    float top = 0;
    float left = 0;
    bool isChild = false;

    form.Unminimise();
    Try([&] { top = (mPlatform.screen.Height() - form.Single(u"Height")) / 2; });
    Try([&] { left = (mPlatform.screen.Width() - form.Single(u"Width")) / 2; });
    Try([&] { isChild = form.IsMdiChild(); });
    if (isChild) {
        if (parentObject == nullptr) return;
        Try([&] { top = parent.Single(u"ScaleHeight") / 2 - form.Single(u"Height") / 2; });
        Try([&] { left = parent.Single(u"ScaleWidth") / 2 - form.Single(u"Width") / 2; });
    } else if (parentObject != nullptr) {
        Try([&] { top = (parent.Single(u"Top") + parent.Single(u"Height") / 2) - form.Single(u"Height") / 2; });
        Try([&] { left = (parent.Single(u"Left") + parent.Single(u"Width") / 2) - form.Single(u"Width") / 2; });
    }
    Try([&] { form.Let(u"Top", AtLeastZero(top)); });
    Try([&] { form.Let(u"Left", AtLeastZero(left)); });
}

void FormPlacement::KWO_SetFormPosition(const HostObjectRef& formObject, const FormPosition& position,
                                        const Variant& parentForm) {
    platform::Conversions& conversions = mPlatform.conversions;
    const Form form(formObject, conversions);
    std::int16_t state = kNormal;
    Try([&] { state = form.State(); });
    Try([&] {
        if (platform::IsMissing(position.windowState)) return;
        if (!conversions.ToText(position.windowState).empty()) state = conversions.ToInt16(position.windowState);
    });
    form.Unminimise();

    const std::pair<TextView, const Variant&> places[] = {
        {u"Left", position.left}, {u"Top", position.top}, {u"Width", position.width}, {u"Height", position.height}};
    // Intended: an empty position or size is assigned like any other; an empty window state is ignored.
    for (const auto& place : places) {
        const auto& property = place.first;
        const Variant& value = place.second;
        if (!platform::IsMissing(value)) Try([&] { form.Let(property, value); });
    }

    Bounds bounds;
    Try([&] { bounds.height = bounds.bottom = mPlatform.screen.Height(); });
    Try([&] { bounds.width = bounds.right = mPlatform.screen.Width(); });
    if (const HostObjectRef parent = ObjectOf(parentForm); parent != nullptr) {
        bounds = BoundsOf(Form(parent, conversions), bounds);
    }
    FitHorizontally(form, bounds);
    FitVertically(form, bounds);
    Try([&] { form.Let(u"WindowState", state); });
}

}  // namespace kwo::sysinfo
