#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::com {

/// What registration has to know of a module, read from the type library inside it. Identifiers are in registry form.
struct ServerDescription {
    struct Class {
        std::wstring clsid;
        std::wstring progId;
    };
    struct Interface {
        std::wstring iid;
        std::wstring name;
        /// The marshaler in the system that reads this interface's type information.
        std::wstring proxyStub;
    };

    std::wstring modulePath;
    std::wstring moduleFolder;
    std::wstring libraryId;
    std::wstring libraryText;
    std::wstring version;   ///< "4.5", in the hexadecimal digits that type library keys use
    std::wstring locale;    ///< hexadecimal
    std::wstring flags;     ///< decimal
    std::wstring platform;  ///< "win32" or "win64"
    std::vector<Class> classes;
    std::vector<Interface> interfaces;
};

/// Throws RegistrationFailure when the module has no type library that can be read.
ServerDescription DescribeServer(HINSTANCE module);

}  // namespace kwo::com
