#pragma once

#include <windows.h>

#include <string>

namespace kwo::com_test {

/// The folder that KWO_DIST names, without a final backslash; empty when it is not set or holds no KWOUtil.dll.
const std::wstring& DistFolder();
/// The full path of KWOUtil.dll.
std::wstring DllPath();
/// The full path of KWOInit.dll beside it.
std::wstring CompanionPath();

/// A DLL of the component loaded by its path, with the functions that it exports; freed at the end.
class Library {
public:
    explicit Library(const std::wstring& path = DllPath());
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    explicit operator bool() const { return mModule != nullptr; }
    HMODULE Module() const { return mModule; }
    HRESULT GetClassObject(REFCLSID classId, REFIID iid, void** object) const;
    HRESULT CanUnloadNow() const;
    HRESULT RegisterServer() const;
    HRESULT UnregisterServer() const;
    HRESULT Install(bool install, const wchar_t* commandLine) const;

private:
    template <class Function>
    Function Export(const char* name) const;

    HMODULE mModule;
};

/// The identifier of a class from the type library of the file at `path`; CLSID_NULL if that knows no such class. An
/// object of no class cannot be made.
CLSID ClassIdIn(const std::wstring& path, const std::wstring& name);

/// Lets the object libraries that COM loaded go, as far as they agree, so that the DLL is not in the process.
/// False when it stays.
bool LetTheDllGo();

}  // namespace kwo::com_test
