#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::com {

/// What registration needs to know about a module, from the type library inside it. Identifiers are in registry form.
struct ServerDescription {
    struct Class {
        std::wstring clsid;
        std::wstring progId;
    };
    struct Interface {
        std::wstring iid;
        std::wstring name;
        /// The system's marshaller that reads this interface's type information.
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

/// Throws RegistrationFailure if the module has no readable type library.
ServerDescription DescribeServer(HINSTANCE module);

}  // namespace kwo::com
