#pragma once

#include <memory>

#include "com/apartment.h"
#include "com/server/automation_object.h"

namespace kwo::com {

/// An automation object over the component of its apartment.
template <class Interface>
class ComponentObject : public AutomationObject<Interface> {
protected:
    explicit ComponentObject(ClassInfo& info)
        : AutomationObject<Interface>(info), mApartment(Apartments::Instance().Current()) {}

    frame::Component& Component() { return mApartment->component; }

private:
    std::shared_ptr<Apartment> mApartment;
};

}  // namespace kwo::com
