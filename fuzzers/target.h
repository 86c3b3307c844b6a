#pragma once

#include <vector>

#include "input.h"

namespace kwo::fuzz {

/// A fuzzer: code that is run with any bytes, and stops the program when something does not hold.
struct Target {
    const char* name;  ///< of its source, its corpus and its crashes
    void (*run)(Input& input);
};

/// The targets that are linked into the program, by name.
const std::vector<Target>& Targets();

/// Adds a target when the program starts.
struct Registration {
    explicit Registration(const Target& target);
};

/// Prints the place and what does not hold, and stops the program.
[[noreturn]] void Stop(const char* file, int line, const char* statement);

}  // namespace kwo::fuzz

/// Defines a target: KWO_FUZZ_TARGET(registry) { ... input ... }
#define KWO_FUZZ_TARGET(target)                                                         \
    static void Run(kwo::fuzz::Input& input);                                           \
    static const kwo::fuzz::Registration kRegistration({.name = #target, .run = &Run}); \
    static void Run([[maybe_unused]] kwo::fuzz::Input& input)

/// Stops the program unless `condition` holds.
#define KWO_HOLDS(...)                                                         \
    do {                                                                       \
        if (!(__VA_ARGS__)) kwo::fuzz::Stop(__FILE__, __LINE__, #__VA_ARGS__); \
    } while (false)
