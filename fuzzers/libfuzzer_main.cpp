// What libFuzzer calls: the one target of the program.

#include "target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kwo::fuzz::Input input({data, size});
    kwo::fuzz::Targets().front().run(input);
    return 0;
}
