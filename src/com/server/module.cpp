#include "com/server/module.h"

// The linker's name for the beginning of this module.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kwo::com {

HINSTANCE ThisModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

Module& Module::Instance() {
    static Module module;
    return module;
}

}  // namespace kwo::com
