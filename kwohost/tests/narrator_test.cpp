#include <initguid.h>

#include <oleacc.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "com_values.h"
#include "memory.h"
#include "narrator.h"

namespace kwohost::tests {

namespace {

/// A narrator that writes into a pipe, and the annotation service that components find.
class NarratorTest : public testing::Test {
protected:
    NarratorTest() {
        CreatePipe(&mRead, &mWrite, nullptr, 0);
        const HANDLE before = GetStdHandle(STD_OUTPUT_HANDLE);
        SetStdHandle(STD_OUTPUT_HANDLE, mWrite);
        output.emplace(STD_OUTPUT_HANDLE);
        SetStdHandle(STD_OUTPUT_HANDLE, before);
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        narrator.emplace(*output);
        CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices, service.OutVoid());
    }
    ~NarratorTest() override {
        service.Reset();
        narrator.reset();
        CoUninitialize();
        CloseHandle(mRead);
        CloseHandle(mWrite);
    }

    HRESULT Tell(const MSAAPROPID& property, const wchar_t* text) {
        return service->SetHwndPropStr(GetDesktopWindow(), 0, 0, property, text);
    }
    HRESULT Tell(const MSAAPROPID& property, LONG number) {
        VARIANT value = {};
        value.vt = VT_I4;
        value.lVal = number;
        return service->SetHwndProp(GetDesktopWindow(), 0, 0, property, value);
    }
    /// All that has been written since the last call.
    std::string Written() {
        DWORD count = 0;
        PeekNamedPipe(mRead, nullptr, 0, nullptr, &count, nullptr);
        std::string text(count, '\0');
        if (count > 0) ReadFile(mRead, text.data(), count, &count, nullptr);
        return text;
    }

    std::optional<Output> output;
    std::optional<Narrator> narrator;
    ComPtr<IAccPropServices> service;

private:
    HANDLE mRead = nullptr;
    HANDLE mWrite = nullptr;
};

}  // namespace

TEST_F(NarratorTest, NumbersAreSpokenAsWords) {
    EXPECT_EQ(Tell(PROPID_ACC_ROLE, ROLE_SYSTEM_PUSHBUTTON), S_OK);
    EXPECT_EQ(Tell(PROPID_ACC_STATE, STATE_SYSTEM_FOCUSED | STATE_SYSTEM_PRESSED), S_OK);
    EXPECT_EQ(Tell(PROPID_ACC_ROLE, -7), S_OK);

    EXPECT_EQ(Written(), "reader: role push button\r\nreader: state focused, pressed\r\nreader: role -7\r\n");
}

TEST_F(NarratorTest, RoleAndStateThatAreNoNumbersAreSpokenAsTheyAre) {
    EXPECT_EQ(Tell(PROPID_ACC_ROLE, L"dial"), S_OK);
    EXPECT_EQ(Tell(PROPID_ACC_STATE, L""), S_OK);
    EXPECT_EQ(Tell(PROPID_ACC_STATE, L"99999999999999999999"), S_OK);

    EXPECT_EQ(Written(), "reader: role dial\r\nreader: state \r\nreader: state 99999999999999999999\r\n");
}

TEST_F(NarratorTest, MissingTextIsAnInvalidArgument) {
    EXPECT_EQ(Tell(PROPID_ACC_NAME, nullptr), E_INVALIDARG);

    EXPECT_EQ(Written(), "");
}

TEST_F(NarratorTest, LackOfMemoryIsTheResultOfTheCall) {
    constexpr wchar_t kText[] = L"longer than what fits without an allocation";
    const MSAAPROPID name = PROPID_ACC_NAME;
    const auto clear = [&] { return service->ClearHwndProps(GetDesktopWindow(), 0, 0, &name, 1); };
    const auto tellNumber = [&] { return Tell(PROPID_ACC_KEYBOARDSHORTCUT, -1'234'567); };
    const auto tellText = [&] { return Tell(PROPID_ACC_NAME, kText); };
    const auto failures = [](const auto& call) {
        int count = 0;
        for (HRESULT result = E_OUTOFMEMORY; result == E_OUTOFMEMORY; ++count) {
            const FailingAllocation failing(count);
            result = call();
            if (result == S_OK) return count;
        }
        return -1;
    };

    EXPECT_GT(failures(tellNumber), 0);
    EXPECT_GT(failures(tellText), 1);
    EXPECT_GE(failures(clear), 0);
}

}  // namespace kwohost::tests
