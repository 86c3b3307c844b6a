#include "com_test.h"
#include "dll_under_test.h"
#include "process_end.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace kwo::com_test {
namespace {

/// Without its cache every string shows up in a count of allocations. The function is in no header or import library.
void SwitchOffStringCache() {
    FARPROC function = GetProcAddress(LoadLibraryW(L"oleaut32.dll"), "SetOaNoCache");
    if (function != nullptr) reinterpret_cast<void(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(function))();
}

/// Looks after each test whether anything still uses the DLL.
class HolderSearch : public ::testing::EmptyTestEventListener {
public:
    /// The test since which the DLL has been in use; empty when it is not.
    const std::string& Holder() const { return mHolder; }

private:
    void OnTestEnd(const ::testing::TestInfo& test) override {
        if (LetTheDllGo() || !TheDllIsInUse()) {
            mHolder.clear();
        } else if (mHolder.empty()) {
            mHolder = std::string(test.test_suite_name()) + '.' + test.name();
        }
    }

    std::string mHolder;
};

/// One apartment and one machine-wide registration for all tests.
class RegisteredDll : public ::testing::Environment {
public:
    explicit RegisteredDll(const HolderSearch& search) : mSearch(search) {}

    void SetUp() override {
        ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
        Library library;
        ASSERT_TRUE(library) << Narrow(DllPath()) << " cannot be loaded, error " << GetLastError();
        ASSERT_EQ(Hex(library.RegisterServer()), Hex(S_OK));
    }
    void TearDown() override {
        {
            Library library;
            EXPECT_TRUE(library);
            EXPECT_EQ(Hex(library.UnregisterServer()), Hex(S_OK));
        }
        CoUninitialize();
        EXPECT_EQ(mSearch.Holder(), "") << "it left the DLL in use";
    }

private:
    const HolderSearch& mSearch;
};

}  // namespace
}  // namespace kwo::com_test

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kEndWithAnArmedTimer) == 0) {
        return kwo::com_test::EndWithAnArmedTimer();
    }
    // Sizes as they are, whatever the display's density.
    SetProcessDPIAware();
    ::testing::InitGoogleTest(&count, arguments);
    if (kwo::com_test::DistFolder().empty()) {
        std::fprintf(stderr, "com_tests: set KWO_DIST to the folder that holds KWOUtil.dll\n");
        return 2;
    }
    kwo::com_test::SwitchOffStringCache();
    auto* const search = new kwo::com_test::HolderSearch;
    ::testing::UnitTest::GetInstance()->listeners().Append(search);
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredDll(*search));
    return RUN_ALL_TESTS();
}
