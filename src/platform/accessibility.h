#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// What screen readers are told about a window that draws itself, by the system's annotation service
/// (IAccPropServices).
///
///     if (!accessibility.Begin(window, 43)) return;  // a push button, or the window stays as it was
///     accessibility.SetText(window, Accessibility::Property::Name, u"Save");
///     accessibility.Notify(window, 0x800C);
///     accessibility.End(window);
///
/// Everything is about the window's client area, which is what readers find. Numbers of roles, states and events are
/// the system's own (ROLE_SYSTEM_, STATE_SYSTEM_, EVENT_OBJECT_).
/// Many systems have no such service, or one that refuses. Then each Begin returns false, and only the first one asks.
class Accessibility {
public:
    enum class Property { Role, State, Name, Value, Description, KeyboardShortcut, DefaultAction };

    virtual ~Accessibility() = default;

    /// Starts the annotation of a window with its role.
    /// False if there is no service, if it refuses, or if there is no such window; nothing has changed then.
    /// Each Begin that succeeds needs one End, and the service is held until then.
    virtual bool Begin(Handle window, std::int32_t role) = 0;
    /// Sets a number between Begin and End; false if the service refuses, for example because the window is gone.
    virtual bool SetNumber(Handle window, Property property, std::int32_t number) = 0;
    /// Sets a text between Begin and End, as SetNumber. It ends at its first zero character.
    virtual bool SetText(Handle window, Property property, TextView text) = 0;
    /// Takes all properties away again. The window may be gone.
    virtual void End(Handle window) noexcept = 0;

    /// Tells that something about the window has changed (NotifyWinEvent).
    /// Readers that live in this process hear it at once: their code may call the host, and the host this component.
    virtual void Notify(Handle window, std::uint32_t event) = 0;
};

}  // namespace kwo::platform
