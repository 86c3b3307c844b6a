#include "com/server/module.h"

// The linker's name for the beginning of this module.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kwo::com {

namespace {

constinit Module gModule;

}  // namespace

HINSTANCE ThisModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

Module& Module::Instance() {
    return gModule;
}

}  // namespace kwo::com
