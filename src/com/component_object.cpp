#include "com/component_object.h"

#include <utility>

#include "com/apartment.h"

namespace kwo::com {

std::shared_ptr<component::Component> CurrentComponent() {
    std::shared_ptr<Apartment> apartment = Apartments::Instance().Current();
    component::Component* const component = &apartment->component;
    return {std::move(apartment), component};
}

HRESULT RunTraced(component::Component& component, const ClassInfo& info, const char16_t* member, void (*call)(void*),
                  void* body) noexcept {
    return Guarded(
        [&] {
            return MemberName{info.name, member, &info.interfaceId};
        },
        [&] {
            // Only a trace needs to know how long the name is.
            const TextView name = component.trace.IsOn() ? TextView(member) : TextView();
            const frame::TracedRoutine traced(component.trace, info.name, name);
            call(body);
        });
}

}  // namespace kwo::com
