#pragma once

#include <windows.h>

#include <string>

namespace kwo::com_test {

/// A function of the test's in place of one that KWOUtil.dll takes from the system, until it goes. The DLL must be
/// loaded. Both ways are covered: what the DLL imports, and what it looks up when it is first needed.
///
///     const ReplacedFunction metrics("GetSystemMetrics", &MyMetrics);
class ReplacedFunction {
public:
    template <class Function>
    ReplacedFunction(const char* name, Function* replacement)
        : ReplacedFunction(name, reinterpret_cast<void*>(replacement)) {}
    ReplacedFunction(const char* name, void* replacement);
    ReplacedFunction(const ReplacedFunction&) = delete;
    ReplacedFunction& operator=(const ReplacedFunction&) = delete;
    ~ReplacedFunction();

private:
    HMODULE mDll = nullptr;  ///< held, so that it stays while it is changed
    std::string mName;
    void** mImport = nullptr;  ///< the place of the import; null for a function that is looked up
    void* mBefore = nullptr;
};

}  // namespace kwo::com_test
