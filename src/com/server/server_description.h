#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::com {

/// What registration needs to know about a module, from the type library inside it.
/// Identifiers are in registry form: "{00020424-0000-0000-C000-000000000046}".
struct ServerDescription {
    /// A class that clients may create.
    struct Class {
        std::wstring clsid;
        /// Library and class: "KWOUtil.KWOTimer".
        std::wstring progId;
    };
    /// A dual interface or an event interface.
    struct Interface {
        std::wstring iid;
        std::wstring name;
        /// The system's marshaller that reads this interface's type information.
        std::wstring proxyStub;
    };

    /// The full path of the file, and of its folder without a backslash at the end.
    std::wstring modulePath;
    std::wstring moduleFolder;
    std::wstring libraryId;
    /// What tools show for the library.
    std::wstring libraryText;
    /// "4.5", in the hexadecimal digits that type library keys use.
    std::wstring version;
    /// The language in hexadecimal digits; "0" is neutral.
    std::wstring locale;
    /// Decimal.
    std::wstring flags;
    /// "win32" or "win64".
    std::wstring platform;
    std::vector<Class> classes;
    std::vector<Interface> interfaces;
};

/// Describes a module that is loaded.
/// Registers and changes nothing.
/// Throws RegistrationFailure if the module has no readable type library, and std::bad_alloc.
ServerDescription DescribeServer(HINSTANCE module);

}  // namespace kwo::com
