#pragma once

#include <windows.h>
#include <unknwn.h>

#include <span>

#include "com/server/com_values.h"

namespace kwo::com {

/// A creatable class: its identifier, its name and what makes an object of it.
struct ClassEntry {
    const CLSID& classId;
    TextView name;
    HRESULT (*make)(REFIID interfaceId, void** object);  ///< may raise
};
using ClassSource = ClassEntry (*)();

/// The classes of this DLL, for as long as it is loaded. Each DLL defines it for itself.
std::span<const ClassSource> Classes();

/// A new object, as the interface asked for. Raises what its constructor raises.
template <class Object>
HRESULT Make(REFIID interfaceId, void** object) {
    Object* const made = new Object();
    const HRESULT result = made->QueryInterface(interfaceId, object);
    made->Release();
    return result;
}

}  // namespace kwo::com
