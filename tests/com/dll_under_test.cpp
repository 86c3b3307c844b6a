#include "dll_under_test.h"

#include <objbase.h>

#include <algorithm>

#include "com_support/bstr.h"
#include "com_support/com_ptr.h"
#include "com_support/type_description.h"

namespace kwo::com_test {
namespace {

std::wstring FolderFromEnvironment() {
    wchar_t text[1024] = {};
    const DWORD length = GetEnvironmentVariableW(L"KWO_DIST", text, 1024);
    // A path of the system that Wine runs on is below its drive Z.
    std::wstring folder = text[0] == L'/' ? L"Z:" : L"";
    if (length < 1024) folder += text;
    std::replace(folder.begin(), folder.end(), L'/', L'\\');
    while (!folder.empty() && folder.back() == L'\\')
        folder.pop_back();
    if (GetFileAttributesW((folder + L"\\KWOUtil.dll").c_str()) == INVALID_FILE_ATTRIBUTES) folder.clear();
    return folder;
}

}  // namespace

const std::wstring& DistFolder() {
    static const std::wstring folder = FolderFromEnvironment();
    return folder;
}

std::wstring DllPath() {
    return DistFolder() + L"\\KWOUtil.dll";
}

std::wstring CompanionPath() {
    return DistFolder() + L"\\KWOInit.dll";
}

Library::Library(const std::wstring& path) : mModule(LoadLibraryW(path.c_str())) {}

Library::~Library() {
    if (mModule != nullptr) FreeLibrary(mModule);
}

template <class Function>
Function Library::Export(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(mModule, name)));
}

HRESULT Library::GetClassObject(REFCLSID classId, REFIID iid, void** object) const {
    const auto function = Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
    return function != nullptr ? function(classId, iid, object) : TYPE_E_DLLFUNCTIONNOTFOUND;
}

HRESULT Library::CanUnloadNow() const {
    const auto function = Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow");
    return function != nullptr ? function() : TYPE_E_DLLFUNCTIONNOTFOUND;
}

HRESULT Library::RegisterServer() const {
    const auto function = Export<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer");
    return function != nullptr ? function() : TYPE_E_DLLFUNCTIONNOTFOUND;
}

HRESULT Library::UnregisterServer() const {
    const auto function = Export<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer");
    return function != nullptr ? function() : TYPE_E_DLLFUNCTIONNOTFOUND;
}

HRESULT Library::Install(bool install, const wchar_t* commandLine) const {
    const auto function = Export<HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR)>("DllInstall");
    return function != nullptr ? function(install ? TRUE : FALSE, commandLine) : TYPE_E_DLLFUNCTIONNOTFOUND;
}

CLSID ClassIdIn(const std::wstring& path, const std::wstring& name) {
    com_support::ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Out()))) return CLSID_NULL;
    for (UINT at = 0; at < library->GetTypeInfoCount(); ++at) {
        com_support::ComPtr<ITypeInfo> info;
        com_support::Bstr itsName;
        library->GetTypeInfo(at, info.Out());
        info->GetDocumentation(MEMBERID_NIL, itsName.Out(), nullptr, nullptr, nullptr);
        const com_support::TypeAttributes attributes(*info);
        if (itsName.Text() == name && attributes->typekind == TKIND_COCLASS) return attributes->guid;
    }
    return CLSID_NULL;
}

bool LetTheDllGo() {
    for (int round = 0; round < 3; ++round)
        CoFreeUnusedLibrariesEx(0, 0);
    return GetModuleHandleW(L"KWOUtil.dll") == nullptr;
}

}  // namespace kwo::com_test
