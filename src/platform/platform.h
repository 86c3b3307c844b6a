#pragma once

#include <type_traits>

namespace kwo::platform {

#define SERVICE(Interface, member) class Interface;
#include "platform/services.def"
#undef SERVICE

/// Everything that a component may ask of the system: one reference for each line of services.def.
///
///     platform::windows::WindowsPlatform windows(module);
///     component::Component component(windows.Services());
///
/// The services belong to the platform that made them and must outlive the component. A component calls them on its
/// own thread only: the one that created the platform.
/// Any call that takes or returns a text may throw std::bad_alloc. What else a call raises is said at the call.
struct Platform {
#define SERVICE(Interface, member) Interface& member;
#include "platform/services.def"
#undef SERVICE
};

/// The services in `parts`, whose members have the names of Platform.
/// The references stay valid as long as `parts`.
/// To replace some services of a platform, inherit from Platform and declare members of the same names. Tests do so to
/// let one call fail.
template <class Services = Platform, class Parts>
Services ServicesOf(Parts& parts) {
    return {
#define SERVICE(Interface, member) parts.member,
#include "platform/services.def"
#undef SERVICE
    };
}

/// Makes a service, in the place where the result is kept.
/// Its constructor takes what the services of its platform share, or nothing.
template <class Service, class Shared>
Service MakeService([[maybe_unused]] Shared& shared) {
    if constexpr (std::is_default_constructible_v<Service>) {
        return Service();
    } else {
        return Service(shared);
    }
}

}  // namespace kwo::platform
