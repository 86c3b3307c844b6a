#include "com/server/server_description.h"

#include <oleauto.h>

#include <memory>

#include "com/server/registration_failure.h"

namespace kwo::com {
namespace {

constexpr wchar_t kTypeLibraryMarshaler[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kDispatchMarshaler[] = L"{00020420-0000-0000-C000-000000000046}";

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class T>
using Owned = std::unique_ptr<T, Releaser>;

struct StringFreer {
    void operator()(OLECHAR* text) const { SysFreeString(text); }
};
using OwnedString = std::unique_ptr<OLECHAR, StringFreer>;

std::wstring RegistryForm(REFGUID id) {
    wchar_t text[39];
    StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring Hexadecimal(unsigned long number) {
    wchar_t text[9];
    swprintf(text, std::size(text), L"%lx", number);
    return text;
}

std::wstring Text(const OwnedString& text) {
    return text ? std::wstring(text.get(), SysStringLen(text.get())) : L"";
}

std::wstring PathOf(HINSTANCE module) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) ThrowIfStatus(static_cast<LSTATUS>(GetLastError()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring NameOf(ITypeInfo& type) {
    BSTR name = nullptr;
    ThrowIfFailed(type.GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr));
    return Text(OwnedString(name));
}

void DescribeType(ITypeInfo& type, const std::wstring& libraryName, ServerDescription& server) {
    TYPEATTR* raw = nullptr;
    ThrowIfFailed(type.GetTypeAttr(&raw));
    const auto release = [&type](TYPEATTR* attributes) { type.ReleaseTypeAttr(attributes); };
    const std::unique_ptr<TYPEATTR, decltype(release)> attributes(raw, release);

    const std::wstring id = RegistryForm(attributes->guid);
    if (attributes->typekind == TKIND_COCLASS && (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0) {
        server.classes.push_back({id, libraryName + L"." + NameOf(type)});
    } else if (attributes->typekind == TKIND_DISPATCH) {
        // A dual interface marshals by its whole table, one without a table only as IDispatch.
        const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        server.interfaces.push_back({id, NameOf(type), dual ? kTypeLibraryMarshaler : kDispatchMarshaler});
    }
}

void DescribeLibrary(ITypeLib& library, ServerDescription& server) {
    TLIBATTR* raw = nullptr;
    ThrowIfFailed(library.GetLibAttr(&raw));
    const auto release = [&library](TLIBATTR* attributes) { library.ReleaseTLibAttr(attributes); };
    const std::unique_ptr<TLIBATTR, decltype(release)> attributes(raw, release);

    server.libraryId = RegistryForm(attributes->guid);
    server.version = Hexadecimal(attributes->wMajorVerNum) + L"." + Hexadecimal(attributes->wMinorVerNum);
    server.locale = Hexadecimal(attributes->lcid);
    // That there is a file is a fact of this loading, not of the library.
    server.flags = std::to_wstring(attributes->wLibFlags & ~LIBFLAG_FHASDISKIMAGE);
    server.platform = attributes->syskind == SYS_WIN64 ? L"win64" : L"win32";
}

}  // namespace

ServerDescription DescribeServer(HINSTANCE module) {
    ServerDescription server;
    server.modulePath = PathOf(module);
    server.moduleFolder = server.modulePath.substr(0, server.modulePath.find_last_of(L'\\'));

    ITypeLib* loaded = nullptr;
    ThrowIfFailed(LoadTypeLibEx(server.modulePath.c_str(), REGKIND_NONE, &loaded));
    const Owned<ITypeLib> library(loaded);
    DescribeLibrary(*library, server);

    BSTR name = nullptr;
    BSTR text = nullptr;
    ThrowIfFailed(library->GetDocumentation(-1, &name, &text, nullptr, nullptr));
    const OwnedString libraryName(name);
    const OwnedString libraryText(text);
    server.libraryText = Text(libraryText);

    for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
        ITypeInfo* type = nullptr;
        ThrowIfFailed(library->GetTypeInfo(index, &type));
        const Owned<ITypeInfo> owner(type);
        DescribeType(*type, Text(libraryName), server);
    }
    return server;
}

}  // namespace kwo::com
