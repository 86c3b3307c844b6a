#include "controls/annotation.h"

#include <algorithm>
#include <utility>

#include "platform/accessibility.h"
#include "platform/component_error.h"
#include "platform/conversions.h"
#include "platform/host_errors.h"

namespace kwo::controls {

namespace {

using Property = platform::Accessibility::Property;

/// A text, and what readers are told when it changes (EVENT_OBJECT_).
struct Field {
    Text Spoken::*text;
    Property property;
    std::uint32_t event;
};
constexpr Field kFields[] = {
    {&Spoken::name, Property::Name, 0x800C},
    {&Spoken::value, Property::Value, 0x800E},
    {&Spoken::description, Property::Description, 0x800D},
    {&Spoken::shortcut, Property::KeyboardShortcut, 0x8012},
    {&Spoken::action, Property::DefaultAction, 0x8011},
};
constexpr std::uint32_t kStateChange = 0x800A;

}  // namespace

void Annotation::Take(Handle window, Role role) noexcept {
    if (window == mAsked) return;
    Release();
    mAsked = window;
    if (window == 0) return;
    platform::Accessibility& service = mComponent.platform.accessibility;
    auto& all = mComponent.annotatedWindows;
    const auto before = std::ranges::find_if(all, [&](const Handle* taken) { return *taken == window; });
    if (before != all.end()) {
        service.End(std::exchange(**before, 0));
        all.erase(before);
    }
    try {
        if (!service.Begin(window, static_cast<std::int32_t>(role))) return;
        mWindow = window;
        all.push_back(&mWindow);
    } catch (...) {
        // Without memory the window stays a pane without a name.
        Drop();
    }
}

void Annotation::Release() noexcept {
    Drop();
    mAsked = 0;
}

void Annotation::Drop() noexcept {
    mTold = mNow = {};
    if (mWindow == 0) return;
    std::erase(mComponent.annotatedWindows, &mWindow);
    mComponent.platform.accessibility.End(std::exchange(mWindow, 0));
}

void Annotation::TellNews() noexcept {
    if (mNow == mTold) return;
    const Handle window = mWindow;
    const Events events = NewEvents();
    if (!SetNews()) return Drop();
    for (const std::uint32_t event : events) {
        // Who hears of one may release the annotation, or take the window.
        if (event != 0 && mWindow == window) mComponent.platform.accessibility.Notify(window, event);
    }
}

Annotation::Events Annotation::NewEvents() const {
    Events events{};
    for (std::size_t at = 0; at < std::size(kFields); ++at) {
        if (mNow.*kFields[at].text != mTold.*kFields[at].text) events[at] = kFields[at].event;
    }
    if (mNow.state != mTold.state) events.back() = kStateChange;
    return events;
}

bool Annotation::SetNews() noexcept {
    platform::Accessibility& service = mComponent.platform.accessibility;
    try {
        for (const Field& field : kFields) {
            const Text& text = mNow.*field.text;
            if (text != mTold.*field.text && !service.SetText(mWindow, field.property, text)) return false;
        }
        if (mNow.state != mTold.state && !service.SetNumber(mWindow, Property::State, mNow.state.value_or(0)))
            return false;
        mTold = mNow;
        return true;
    } catch (...) {
        return false;
    }
}

Handle Annotation::WindowOf(const HostObjectRef& object) const {
    try {
        return mComponent.platform.conversions.To32Bits(platform::Required(object).Get(u"hWnd"));
    } catch (const platform::ComponentError&) {
        return 0;
    }
}

}  // namespace kwo::controls
