#pragma once

namespace kwo::platform {

#define SERVICE(Interface, member) class Interface;
#include "platform/services.def"
#undef SERVICE

/// Everything that a component may ask of the system. The services must outlive the component.
struct Platform {
#define SERVICE(Interface, member) Interface& member;
#include "platform/services.def"
#undef SERVICE
};

/// The services in `parts`, whose members have the names of Platform. To replace some services of a platform, inherit
/// from Platform and declare members of the same names.
template <class Parts>
Platform ServicesOf(Parts& parts) {
    return {
#define SERVICE(Interface, member) parts.member,
#include "platform/services.def"
#undef SERVICE
    };
}

}  // namespace kwo::platform
