#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// A system library, for functions that not every system has and for libraries that most programs never need.
///
///     auto* const function = mShell.Find<NotifyFunction>("Shell_NotifyIconA");
///     if (function == nullptr) return false;
///
/// It is loaded from the system's directory, and from nowhere else, when it is first needed. It is asked for again
/// after a failure, which may have been a lack of memory.
/// It stays loaded: its user may end while the loader holds its lock, when nothing can be unloaded safely.
class SystemLibrary {
public:
    /// `name` is the file's name with its extension and must stay valid. Loads nothing yet.
    explicit SystemLibrary(const wchar_t* name) : mName(name) {}
    SystemLibrary(const SystemLibrary&) = delete;
    SystemLibrary& operator=(const SystemLibrary&) = delete;

    /// A function of the library, valid for the rest of the process.
    /// `Function` is its type; nothing checks that it is the right one.
    /// Null if the system lacks the library or the function; the last-error value says why: 126 or 127.
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
    /// From the system's folder only. Null if there is no such library there.
    static HMODULE Load(const wchar_t* name);

    const wchar_t* mName;
    /// Null until the library is needed and found.
    HMODULE mHandle = nullptr;
};

}  // namespace kwo::platform::windows
