#pragma once

#include <memory>
#include <utility>

#include "com/apartment.h"
#include "com/server/automation_object.h"

namespace kwo::com {

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
    explicit ComponentObject(ClassInfo& info)
        : AutomationObject<Interface>(info), mApartment(Apartments::Instance().Current()) {}

    /// The component of the object's apartment. Use it on the apartment's thread only.
    component::Component& Component() { return mApartment->component; }

    /// Runs the body of a member and marks the member on the call trace.
    /// Returns S_OK, or the HRESULT of what the body raises; the thread's error object is then set.
    /// The object lives until the member returns, even if the host releases it meanwhile. `member` begins with a dot:
    /// ".AddAlarm".
    template <class Body>
    HRESULT Run(TextView member, Body&& body) noexcept {
        return AutomationObject<Interface>::Run(member, [&] {
            const frame::TracedRoutine traced(Component().trace, this->ClassName(), member);
            std::forward<Body>(body)();
        });
    }

private:
    std::shared_ptr<Apartment> mApartment;
};

}  // namespace kwo::com
