#include "com/component_object.h"

namespace kwo::com {

HRESULT RunTraced(frame::CallTrace& trace, const ClassInfo& info, const char16_t* member, void (*call)(void*),
                  void* body) noexcept {
    return Guarded(
        [&] {
            return MemberName{info.name, member, &info.interfaceId};
        },
        [&] {
            // Only a trace needs to know how long the name is.
            const TextView name = trace.IsOn() ? TextView(member) : TextView();
            const frame::TracedRoutine traced(trace, info.name, name);
            call(body);
        });
}

}  // namespace kwo::com
