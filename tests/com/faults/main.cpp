#include <cstdio>

#include "allocation_count.h"
#include "com_test.h"
#include "dll_under_test.h"

namespace kwo::com_test {
namespace {

/// The companion is found in the registry; the component is not looked for there.
class RegisteredCompanion : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
        ASSERT_EQ(Hex(Call("DllRegisterServer")), Hex(S_OK));
    }
    void TearDown() override {
        EXPECT_EQ(Hex(Call("DllUnregisterServer")), Hex(S_OK));
        CoUninitialize();
    }

private:
    static HRESULT Call(const char* name) {
        using Function = HRESULT(STDAPICALLTYPE*)();
        const HMODULE module = LoadLibraryW((DistFolder() + L"\\KWOInit.dll").c_str());
        const FARPROC function = GetProcAddress(module, name);
        const HRESULT status = function != nullptr ? reinterpret_cast<Function>(reinterpret_cast<void*>(function))()
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
