#pragma once

#include <memory>
#include <utility>

#include "com/apartment.h"
#include "com/server/automation_object.h"

namespace kwo::com {

/// An automation object that uses the component of its apartment, and keeps the apartment alive.
template <class Interface>
class ComponentObject : public AutomationObject<Interface> {
protected:
    explicit ComponentObject(ClassInfo& info)
        : AutomationObject<Interface>(info), mApartment(Apartments::Instance().Current()) {}

    component::Component& Component() { return mApartment->component; }

    /// Runs the body of a member and marks the member on the call trace.
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
