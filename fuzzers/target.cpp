#include "target.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kwo::fuzz {

namespace {

std::vector<Target>& Registered() {
    static std::vector<Target> targets;
    return targets;
}

}  // namespace

const std::vector<Target>& Targets() {
    return Registered();
}

Registration::Registration(const Target& target) {
    std::vector<Target>& targets = Registered();
    const auto isBefore = [](const Target& a, const Target& b) { return std::strcmp(a.name, b.name) < 0; };
    targets.insert(std::lower_bound(targets.begin(), targets.end(), target, isBefore), target);
}

void Stop(const char* file, int line, const char* statement) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, statement);
    std::abort();
}

}  // namespace kwo::fuzz
