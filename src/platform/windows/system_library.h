#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// A system library. It is loaded from the system's directory when it is first needed, and asked for again after a
/// failure, which may have been a lack of memory.
///
/// It stays loaded: its user may end while the loader holds its lock, when nothing can be unloaded safely.
class SystemLibrary {
public:
    /// `name` is the file's name with its extension and must stay valid. Loads nothing yet.
    explicit SystemLibrary(const wchar_t* name) : mName(name) {}
    SystemLibrary(const SystemLibrary&) = delete;
    SystemLibrary& operator=(const SystemLibrary&) = delete;

    /// A function of the library. Null if the system lacks the library or the function; the last-error value says why.
    template <class Function>
    Function* Find(const char* function) {
        if (mHandle == nullptr) mHandle = Load(mName);
        if (mHandle == nullptr) {
            ::SetLastError(ERROR_MOD_NOT_FOUND);
            return nullptr;
        }
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(mHandle, function)));
    }

private:
    static HMODULE Load(const wchar_t* name);

    const wchar_t* mName;
    HMODULE mHandle = nullptr;
};

}  // namespace kwo::platform::windows
