#include "com/server/server_description.h"

#include <oleauto.h>

#include <charconv>
#include <iterator>

#include "com/server/registration_failure.h"
#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/module_path.h"
#include "com_support/type_description.h"

namespace kwo::com {
namespace {

constexpr wchar_t kTypeLibraryMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kDispatchMarshaler[] = L"{00020420-0000-0000-C000-000000000046}";

using com_support::Bstr;
using com_support::ComPtr;

std::wstring RegistryForm(REFGUID id) {
    wchar_t text[39];
    StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring Digits(unsigned long number, int base) {
    char digits[10];
    const auto written = std::to_chars(digits, std::end(digits), number, base);
    return {digits, written.ptr};
}

std::wstring PathOf(HINSTANCE module) {
    std::wstring path = com_support::ModulePath(module);
    if (path.empty()) ThrowIfStatus(static_cast<LSTATUS>(GetLastError()));
    return path;
}

std::wstring NameOf(ITypeInfo& type) {
    Bstr name;
    ThrowIfFailed(type.GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr));
    return name.Text();
}

void DescribeType(ITypeInfo& type, const std::wstring& libraryName, ServerDescription& server) {
    const com_support::TypeAttributes attributes(type);
    ThrowIfFailed(attributes.Status());

    const std::wstring id = RegistryForm(attributes->guid);
    if (attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0) {
        server.classes.push_back({id, libraryName + L"." + NameOf(type)});
    } else if (attributes->typekind == TKIND_DISPATCH) {
        // A dual interface is marshalled by its virtual table, one without a virtual table as IDispatch.
        const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        server.interfaces.push_back({id, NameOf(type), dual ? kTypeLibraryMarshaler : kDispatchMarshaler});
    }
}

void DescribeLibrary(ITypeLib& library, ServerDescription& server) {
    const com_support::LibraryAttributes attributes(library);
    ThrowIfFailed(attributes.Status());

    server.libraryId = RegistryForm(attributes->guid);
    server.version = Digits(attributes->wMajorVerNum, 16) + L"." + Digits(attributes->wMinorVerNum, 16);
    server.locale = Digits(attributes->lcid, 16);
    // This flag tells how the library was loaded, not what it is.
    server.flags = Digits(attributes->wLibFlags & ~LIBFLAG_FHASDISKIMAGE, 10);
    server.platform = attributes->syskind == SYS_WIN64 ? L"win64" : L"win32";
}

}  // namespace

ServerDescription DescribeServer(HINSTANCE module) {
    ServerDescription server;
    server.modulePath = PathOf(module);
    server.moduleFolder = server.modulePath.substr(0, server.modulePath.find_last_of(L'\\'));

    ComPtr<ITypeLib> library;
    ThrowIfFailed(LoadTypeLibEx(server.modulePath.c_str(), REGKIND_NONE, library.Out()));
    DescribeLibrary(*library, server);

    Bstr name;
    Bstr text;
    ThrowIfFailed(library->GetDocumentation(-1, name.Out(), text.Out(), nullptr, nullptr));
    server.libraryText = text.Text();

    for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
        ComPtr<ITypeInfo> type;
        ThrowIfFailed(library->GetTypeInfo(index, type.Out()));
        DescribeType(*type, name.Text(), server);
    }
    return server;
}

}  // namespace kwo::com
