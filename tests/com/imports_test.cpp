#include <algorithm>
#include <set>
#include <string>

#include "com_test.h"
#include "dll_under_test.h"

namespace kwo::com_test {
namespace {

struct Imports {
    std::set<std::string> libraries;  ///< in lower case
    std::set<std::string> functions;
};

/// What the loader was asked for when it loaded the module.
Imports ImportsOf(HMODULE module) {
    Imports imports;
    const auto* const base = reinterpret_cast<const char*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& place = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* one = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + place.VirtualAddress);
         one->Name != 0; ++one) {
        std::string name = base + one->Name;
        std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
        imports.libraries.insert(name);
        const auto* function = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + one->OriginalFirstThunk);
        for (; function->u1.AddressOfData != 0; ++function) {
            if (IMAGE_SNAP_BY_ORDINAL(function->u1.Ordinal)) continue;
            const auto* const byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + function->u1.AddressOfData);
            imports.functions.insert(reinterpret_cast<const char*>(byName->Name));
        }
    }
    return imports;
}

class ImportsOfTheDlls : public ::testing::TestWithParam<const wchar_t*> {
protected:
    void SetUp() override {
        ASSERT_NE(mModule, nullptr);
        mImports = ImportsOf(mModule);
        ASSERT_GT(mImports.functions.size(), 50u);
    }
    void TearDown() override { FreeLibrary(mModule); }

    HMODULE mModule = LoadLibraryW((DistFolder() + L"\\" + GetParam()).c_str());
    Imports mImports;
};

/// Any other library could be one that somebody put beside the host's program; it is loaded late, from the system's
/// folder.
TEST_P(ImportsOfTheDlls, AreOfLibrariesThatTheSystemTakesFromItsOwnFolder) {
    const std::set<std::string> known = {"advapi32.dll", "gdi32.dll",    "kernel32.dll", "msvcrt.dll",
                                         "ole32.dll",    "oleaut32.dll", "shell32.dll",  "user32.dll"};
    for (const std::string& library : mImports.libraries)
        EXPECT_TRUE(known.contains(library)) << library;
}

/// Who cannot ask for a thread-local slot cannot lose one. The compiler's thread library and its emulation of
/// thread-local data both ask.
TEST_P(ImportsOfTheDlls, HaveNoWayToTakeAThreadLocalSlot) {
    EXPECT_FALSE(mImports.functions.contains("TlsAlloc"));
    EXPECT_FALSE(mImports.functions.contains("FlsAlloc"));
}

INSTANTIATE_TEST_SUITE_P(Both, ImportsOfTheDlls, ::testing::Values(L"KWOUtil.dll", L"KWOInit.dll"),
                         [](const auto& tested) { return tested.index == 0 ? "Component" : "Companion"; });

}  // namespace
}  // namespace kwo::com_test
