#include "kwocheck/facts.h"

#include <algorithm>

namespace kwocheck {

namespace {

char16_t Lower(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
}

bool AreSame(TextView one, TextView other) {
    return std::ranges::equal(one, other, {}, Lower, Lower);
}

}  // namespace

bool AreSameIds(TextView one, TextView other) {
    return AreSame(one, other);
}

bool AreSamePaths(TextView one, TextView other) {
    return AreSame(one, other);
}

}  // namespace kwocheck
