#pragma once

#include <windows.h>
#include <unknwn.h>

#include <span>

#include "com/server/com_values.h"
#include "com_support/com_object.h"

namespace kwo::com {

/// A creatable class: its identifier, its name, and the function that creates an object.
struct ClassEntry {
    const CLSID& classId;
    TextView name;
    HRESULT (*make)(REFIID interfaceId, void** object);  ///< may raise
};
using ClassSource = ClassEntry (*)();

/// The classes of this DLL. Each DLL defines this function.
std::span<const ClassSource> Classes();

/// Creates an object and returns the interface asked for. Raises what the constructor raises.
template <class Object>
HRESULT Make(REFIID interfaceId, void** object) {
    return com_support::MakeObject<Object>()->QueryInterface(interfaceId, object);
}

}  // namespace kwo::com
