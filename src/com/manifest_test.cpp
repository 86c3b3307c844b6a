// The manifest is made from the IDL file; here it is held against the type library, which the IDL compiler made.

#include <windows.h>
#include <gtest/gtest.h>

#include <objbase.h>

#include <string>

#include "com/server/server_description.h"

namespace kwo::com {
namespace {

/// The build puts it beside this program.
std::wstring ManifestPath() {
    return DescribeServer(GetModuleHandleW(nullptr)).moduleFolder + L"\\KWOUtil.X.manifest";
}

std::wstring ManifestText() {
    const HANDLE file =
        CreateFileW(ManifestPath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) read = 0;
    CloseHandle(file);
    return std::wstring(bytes.begin(), bytes.begin() + read);
}

std::size_t Count(const std::wstring& text, const std::wstring& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

class Manifest : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(mText.empty()); }

    const std::wstring mText = ManifestText();
    const ServerDescription mServer = DescribeServer(GetModuleHandleW(nullptr));
};

TEST_F(Manifest, NamesTheAssemblyAndTheTypeLibrary) {
    const std::wstring architecture = sizeof(void*) == 8 ? L"amd64" : L"x86";

    EXPECT_EQ(Count(mText,
                    L"<assemblyIdentity type=\"win32\" name=\"KWOUtil.X\" version=\"4.5.0.0\" "
                    L"processorArchitecture=\"" +
                        architecture + L"\"/>"),
              1u);
    EXPECT_EQ(Count(mText, L"<file name=\"KWOUtil.dll\">"), 1u);
    EXPECT_EQ(Count(mText, L"<typelib tlbid=\"" + mServer.libraryId + L"\" version=\"4.5\" helpdir=\"\"/>"), 1u);
}

TEST_F(Manifest, HasEveryClassOfTheTypeLibraryAndNoOther) {
    EXPECT_EQ(mServer.classes.size(), 11u);
    EXPECT_EQ(Count(mText, L"<comClass "), mServer.classes.size());
    for (const ServerDescription::Class& one : mServer.classes) {
        EXPECT_EQ(Count(mText, L"<comClass clsid=\"" + one.clsid + L"\" progid=\"" + one.progId +
                                   L"\" threadingModel=\"Apartment\" tlbid=\"" + mServer.libraryId + L"\"/>"),
                  1u);
    }
}

TEST_F(Manifest, HasEveryInterfaceOfTheTypeLibraryAndNoOther) {
    EXPECT_EQ(mServer.interfaces.size(), 12u);
    EXPECT_EQ(Count(mText, L"<comInterfaceExternalProxyStub "), mServer.interfaces.size());
    for (const ServerDescription::Interface& one : mServer.interfaces) {
        EXPECT_EQ(
            Count(mText, L"<comInterfaceExternalProxyStub name=\"" + one.name + L"\" iid=\"" + one.iid +
                             L"\" tlbid=\"" + mServer.libraryId + L"\" proxyStubClsid32=\"" + one.proxyStub + L"\"/>"),
            1u);
    }
}

TEST_F(Manifest, ActivatesAndResolvesEveryProgrammaticIdentifier) {
    ACTCTXW context{};
    context.cbSize = sizeof(context);
    const std::wstring path = ManifestPath();
    context.lpSource = path.c_str();
    const HANDLE handle = CreateActCtxW(&context);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(handle, &cookie));

    for (const ServerDescription::Class& one : mServer.classes) {
        CLSID classId;
        EXPECT_EQ(CLSIDFromProgID(one.progId.c_str(), &classId), S_OK);
    }

    DeactivateActCtx(0, cookie);
    ReleaseActCtx(handle);
}

}  // namespace
}  // namespace kwo::com
