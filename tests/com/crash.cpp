#include "crash.h"

#include <cstdlib>

namespace kwo::com_test {

void Crash() {
    volatile int* const nowhere = nullptr;
    *nowhere = 1;
    std::abort();
}

}  // namespace kwo::com_test
