#pragma once

#include <memory>
#include <type_traits>

#include "com/server/automation_object.h"

namespace kwo::component {
class Component;
}

namespace kwo::com {

/// The component of the calling thread's apartment. It keeps the apartment alive. Never null. Raises std::bad_alloc.
std::shared_ptr<component::Component> CurrentComponent();
/// Calls `call(body)`, the body of the member `member` of the class `info`, and marks the member on the trace of the
/// component. Returns what Guarded returns.
HRESULT RunTraced(component::Component& component, const ClassInfo& info, const char16_t* member, void (*call)(void*),
                  void* body) noexcept;

/// An automation object that uses the component of its apartment, and keeps the apartment alive.
/// Every shell of a class derives from it:
///
///     STDMETHODIMP TimerObject::CancelTimers(...) {
///         return Run(u".CancelTimers", [&] { mTimer.CancelTimers(type, tag); });
///     }
template <class Interface>
class ComponentObject : public AutomationObject<Interface> {
protected:
    /// Runs on the thread that creates the object, which decides its apartment.
    /// Raises what reading the type library raises, and std::bad_alloc.
    explicit ComponentObject(ClassInfo& info) : AutomationObject<Interface>(info), mComponent(CurrentComponent()) {}

    /// The component of the object's apartment. Use it on the apartment's thread only.
    component::Component& Component() { return *mComponent; }

    /// Runs the body of a member and marks the member on the call trace.
    /// Returns S_OK, or the HRESULT of what the body raises; the thread's error object is then set.
    /// The object lives until the member returns, even if the host releases it meanwhile. `member` begins with a dot:
    /// ".AddAlarm".
    template <class Body>
    HRESULT Run(const char16_t* member, Body&& body) noexcept {
        return RunHeld(member, &Call<std::remove_reference_t<Body>>, &body);
    }

private:
    template <class Body>
    static void Call(void* body) {
        (*static_cast<Body*>(body))();
    }
    /// Does not know the type of the body, so each class has it once and not once for each member.
    HRESULT RunHeld(const char16_t* member, void (*call)(void*), void* body) noexcept {
        const typename AutomationObject<Interface>::SelfReference hold(*this);
        return RunTraced(Component(), this->Class(), member, call, body);
    }

    std::shared_ptr<component::Component> mComponent;
};

}  // namespace kwo::com
