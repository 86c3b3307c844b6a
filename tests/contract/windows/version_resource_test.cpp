#include "platform/windows/version_resource.h"

#include <gtest/gtest.h>

#include "windows/test_folder.h"

namespace kwo::platform::windows {
namespace {

TEST(VersionResource, TellsWhatTheFileTells) {
    SystemLibrary versions(L"version.dll");
    const VersionResource resource(versions, ProgramPath());

    EXPECT_EQ(resource.String(L"FileDescription"), u"Pr\u00FCfstand f\u00FCr Fenster");
    EXPECT_EQ(resource.String(L"ProductName"), u"KWOUtil contract");
    EXPECT_EQ(resource.String(L"CompanyName"), u"");
    EXPECT_EQ(resource.Number().major, 3);
    EXPECT_EQ(resource.Number().minor, 14);
    EXPECT_EQ(resource.Number().revision, 9);
}

TEST(VersionResource, IsEmptyForAFileThatHasNone) {
    SystemLibrary versions(L"version.dll");
    for (const wchar_t* const path : {L"C:\\windows\\win.ini", L"C:\\kwo no such file.exe", L""}) {
        const VersionResource resource(versions, path);
        EXPECT_EQ(resource.String(L"FileDescription"), u"") << path;
        EXPECT_EQ(resource.Number().major, 0) << path;
        EXPECT_EQ(resource.Number().minor, 0) << path;
        EXPECT_EQ(resource.Number().revision, 0) << path;
    }
}

TEST(VersionResource, TellsNothingWithoutTheSystemsLibrary) {
    SystemLibrary none(L"kwo no such library.dll");
    const VersionResource resource(none, ProgramPath());

    EXPECT_EQ(resource.String(L"FileDescription"), u"");
    EXPECT_EQ(resource.Number().major, 0);
}

}  // namespace
}  // namespace kwo::platform::windows
