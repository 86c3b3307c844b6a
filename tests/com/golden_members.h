#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kwo::com_test {

/// One accessor or method, typed by hand: the deliberate second copy that holds the interface definition in its place.
/// `signature` reads "(name: type, ...): result"; "ref" is by reference, in and out; "opt" may be left out.
struct GoldenMember {
    const char* kind;  ///< get, let, set, method, hidden method, event
    const char* name;
    unsigned id;
    const char* signature;
    const char* help = "";
};

struct GoldenInterface {
    const char* name;
    std::vector<GoldenMember> members;  ///< in slot order
};

struct GoldenEnumeration {
    const char* name;
    std::vector<std::pair<const char*, long>> values;
};

struct GoldenClass {
    const char* name;
    const char* defaultInterface;
    const char* sourceInterface;  ///< "" when it raises no events
};

struct GoldenLibrary {
    const char* name;
    int majorVersion;
    int minorVersion;
    const char* help;
    std::vector<GoldenInterface> interfaces;
    std::vector<GoldenInterface> eventInterfaces;
    std::vector<GoldenEnumeration> enumerations;
    std::vector<GoldenClass> classes;
};

const GoldenLibrary& Golden();

/// The lines that both the list and the type library are compared as.
std::string Line(const GoldenMember& member);

}  // namespace kwo::com_test
