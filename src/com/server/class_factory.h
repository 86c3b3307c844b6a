#pragma once

#include <windows.h>
#include <unknwn.h>

#include <new>
#include <span>

#include "com/server/error_report.h"
#include "platform/component_error.h"

namespace kwo::com {

/// A creatable class: its identifier and what makes an object of it.
struct ClassEntry {
    const CLSID& classId;
    HRESULT (*make)(REFIID interfaceId, void** object) noexcept;
};

/// The classes of this DLL, for as long as it is loaded. Each DLL defines it for itself.
std::span<const ClassEntry> Classes();

/// A new object, as the interface asked for.
template <class Object>
HRESULT Make(REFIID interfaceId, void** object) noexcept {
    try {
        Object* const made = new Object();
        const HRESULT result = made->QueryInterface(interfaceId, object);
        made->Release();
        return result;
    } catch (const platform::ComponentError& error) {
        return ToHresult(error.number);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

}  // namespace kwo::com
