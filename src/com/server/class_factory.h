#pragma once

#include <windows.h>
#include <unknwn.h>

#include <span>

#include "com/server/com_values.h"
#include "com_support/com_object.h"

namespace kwo::com {

/// A creatable class: its identifier, its name, and the function that creates an object.
struct ClassEntry {
    /// These two must live as long as the program.
    const CLSID& classId;
    TextView name;
    /// Creates an object on the calling thread and gives the interface to the caller.
    /// It may raise; the class factory turns that into an HRESULT.
    HRESULT (*make)(REFIID interfaceId, void** object);
};
/// How Classes names a class. A function, because the identifiers are known only when the program runs.
using ClassSource = ClassEntry (*)();

/// The classes of this DLL. Each DLL defines this function; DllGetClassObject reads it.
std::span<const ClassSource> Classes();

/// Creates an object and returns the interface asked for: E_NOINTERFACE if the object lacks it, and the object is gone
/// again.
/// Raises what the constructor raises.
template <class Object>
HRESULT Make(REFIID interfaceId, void** object) {
    return com_support::MakeObject<Object>()->QueryInterface(interfaceId, object);
}

}  // namespace kwo::com
