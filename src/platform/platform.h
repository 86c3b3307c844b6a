#pragma once

#include <type_traits>

namespace kwo::platform {

#define SERVICE(Interface, member) class Interface;
#include "platform/services.def"
#undef SERVICE

/// Everything that a component may ask of the system. The services must outlive the component. A component calls them
/// on its own thread only.
struct Platform {
#define SERVICE(Interface, member) Interface& member;
#include "platform/services.def"
#undef SERVICE
};

/// The services in `parts`, whose members have the names of Platform. To replace some services of a platform, inherit
/// from Platform and declare members of the same names.
template <class Services = Platform, class Parts>
Services ServicesOf(Parts& parts) {
    return {
#define SERVICE(Interface, member) parts.member,
#include "platform/services.def"
#undef SERVICE
    };
}

/// Makes a service. Its constructor takes what the services of its platform share, or nothing.
template <class Service, class Shared>
Service MakeService([[maybe_unused]] Shared& shared) {
    if constexpr (std::is_default_constructible_v<Service>) {
        return Service();
    } else {
        return Service(shared);
    }
}

}  // namespace kwo::platform
