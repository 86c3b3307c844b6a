#include <cstdio>

#include "allocation_count.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "rights.h"

namespace kwo::com_test {
namespace {

/// The companion is found in the registry; the component is not looked for there.
class RegisteredCompanion : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
        ASSERT_EQ(Hex(Register(true)), Hex(S_OK));
    }
    void TearDown() override {
        EXPECT_EQ(Hex(Register(false)), Hex(S_OK));
        CoUninitialize();
    }

private:
    /// For everybody or, without the rights, for the user; false unregisters.
    static HRESULT Register(bool install) {
        using Function = HRESULT(STDAPICALLTYPE*)(BOOL, LPCWSTR);
        const HMODULE module = LoadLibraryW((DistFolder() + L"\\KWOInit.dll").c_str());
        const FARPROC function = GetProcAddress(module, "DllInstall");
        const wchar_t* const scope = MayRegisterForAll() ? L"machine" : L"user";
        const HRESULT status = function != nullptr
                                   ? reinterpret_cast<Function>(reinterpret_cast<void*>(function))(install, scope)
                                   : TYPE_E_DLLFUNCTIONNOTFOUND;
        if (module != nullptr) FreeLibrary(module);
        return status;
    }
};

}  // namespace
}  // namespace kwo::com_test

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (kwo::com_test::DistFolder().empty()) {
        std::fprintf(stderr, "import_fault_tests: set KWO_DIST to the folder that holds KWOUtil.dll\n");
        return 2;
    }
    kwo::com_test::SwitchOffStringCache();
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredCompanion);
    return RUN_ALL_TESTS();
}
