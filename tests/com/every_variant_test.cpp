#include "every_variant.h"
#include "com_support/exception_info.h"

#include "allocation_count.h"
#include "host_form.h"
#include "registry_sandbox.h"
#include "type_library_dump.h"

namespace kwo::com_test {
namespace {

/// The call that is running, for the message of a crash.
const char* theRunningCall = "";

LONG CALLBACK SayWhichCallCrashed(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION && *theRunningCall != '\0') {
        std::fprintf(stderr, "crash in %s\n", theRunningCall);
        std::fflush(stderr);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

/// Gives variables of the caller's another type and value whenever it is asked for something.
class Meddler final : public test_support::StandIn<> {
public:
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
        Meddle();
        *ids = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        Meddle();
        if (result == nullptr) return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_I2;
        result->iVal = 0;
        return S_OK;
    }

    std::vector<Var*> variables;

private:
    void Meddle() {
        const Var values[] = {Var(L"another text"), Var(0x7FFFFFF1), Var(), Var(1e300), Var::Null(), Var(true)};
        for (Var* const variable : variables)
            *variable = values[mTurn++ % std::size(values)];
    }

    std::size_t mTurn = 0;
};

class EveryVariantType : public RegistrySandbox, public ::testing::WithParamInterface<std::wstring> {
protected:
    void SetUp() override {
        RegistrySandbox::SetUp();
        // A subkey keeps the sandbox itself from being deleted by a key name that converts to "".
        HKEY keeper = nullptr;
        RegCreateKeyExW(mKey, L"keeper", 0, nullptr, 0, KEY_READ, nullptr, &keeper, nullptr);
        RegCloseKey(keeper);
        const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
        ASSERT_TRUE(library);
        const ComPtr<ITypeInfo> info = TypeInfoOf(library.Get(), L"_" + GetParam());
        ASSERT_TRUE(info);
        mSlots = SlotView(info.Get());
        ASSERT_TRUE(mSlots);
        mObject = Create(GetParam());
        ASSERT_TRUE(mObject);
        if (GetParam() == L"KWOUtility") ShowWindowToActivate();
        mHandler = AddVectoredExceptionHandler(1, SayWhichCallCrashed);
    }
    void TearDown() override {
        RemoveVectoredExceptionHandler(mHandler);
        mObject = {};
        if (mWindow != nullptr) DestroyWindow(mWindow);
        RegistrySandbox::TearDown();
    }

    /// A window with the probe's name counts as running, so that no program is started and no box shows a failure.
    void ShowWindowToActivate() {
        mWindow = CreateWindowExW(0, L"STATIC", mText.Get(), WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(mWindow, nullptr);
    }
    /// Arguments that must keep their values so that no box is shown; they are converted like the others.
    static bool MustStay(const std::vector<std::string>& names, UINT position) {
        return position + 1 < names.size() &&
               (names[position + 1] == "AppName" || names[position + 1] == "LeftControl");
    }

    /// The other arguments: nothing that waits, shows a window or leaves the sandbox.
    void Surround(VARIANT& argument, const std::string& name, const ELEMDESC& parameter) {
        VARTYPE type = parameter.tdesc.vt;
        if (type == VT_PTR) type = parameter.tdesc.lptdesc->vt;
        argument = {};
        if (name == "KeyRoot" || name == "hKey") {
            argument.vt = VT_I4;
            argument.lVal = Handle();
        } else if (name == "LeftControl") {
            argument.vt = VT_DISPATCH;
            argument.pdispVal = &mPane;
        } else if (type == VT_BSTR) {
            argument.vt = VT_BSTR;
            argument.bstrVal = mText.Get();
        } else if (type == VT_DISPATCH) {
            argument.vt = VT_DISPATCH;
            argument.pdispVal = &mProbe;
        } else if (type == VT_PTR || type == VT_USERDEFINED) {
            argument.vt = VT_ERROR;
            argument.scode = DISP_E_PARAMNOTFOUND;
            if ((parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT) == 0) argument.vt = VT_DISPATCH;
            if (argument.vt == VT_DISPATCH) argument.pdispVal = nullptr;
        } else {
            argument.vt = VT_I2;
        }
    }

    /// What a member rightly keeps is taken back before anybody counts.
    void TakeBack() {
        if (GetParam() != L"KWOTimer") return;
        EXPECT_EQ(Hex(Let(mObject.Get(), L"Item", Var()).status), Hex(S_OK));
        EXPECT_EQ(Hex(Call(mObject.Get(), L"CancelTimers").status), Hex(S_OK));
    }

    /// One call with `hostile` in place `position`, counted from the first argument.
    void CallWith(const Function& function, const std::vector<std::string>& names, UINT position,
                  const ArgumentCase& hostile) {
        const UINT count = function.ArgumentCount() + (function.IsPut() ? 1u : 0u);
        std::vector<VARIANT> arguments(count);
        ArgumentStorage storage;
        for (UINT i = 0; i < count; ++i) {
            VARIANT& argument = arguments[count - 1 - i];
            const std::string name = i + 1 < names.size() ? names[i + 1] : "";
            if (i == position) {
                argument = {};
                hostile.build(storage, argument, hostile.type);
            } else {
                Surround(argument, name, function->lprgelemdescParam[i]);
            }
        }
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {arguments.data(), function.IsPut() ? &put : nullptr, count,
                                 function.IsPut() ? 1u : 0u};
        Outcome outcome;
        com_support::ExceptionInfo exception;
        outcome.status =
            mObject->Invoke(function->memid, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(function->invkind),
                            &parameters, &outcome.result, &exception, &outcome.badArgument);
        const bool explained = exception.bstrDescription != nullptr && *exception.bstrDescription != L'\0' &&
                               exception.bstrSource != nullptr && *exception.bstrSource != L'\0';
        if (names[0] == "KWO_RegCreateKey" && outcome.status == S_OK) {
            RegCloseKey(reinterpret_cast<HKEY>(static_cast<std::intptr_t>(outcome.result.lVal)));
        }
        outcome.result = Var();  // it may be the very object that was passed
        TakeBack();
        storage.Clean();
        SetErrorInfo(0, nullptr);

        const bool isAutomationError = (static_cast<unsigned>(outcome.status) & 0xFFFF0000u) == 0x80020000u;
        if (outcome.status == DISP_E_EXCEPTION) {
            EXPECT_TRUE(explained) << theRunningCall;
        } else if (outcome.status != S_OK) {
            EXPECT_TRUE(isAutomationError) << theRunningCall << ": " << Hex(outcome.status);
            EXPECT_EQ(outcome.badArgument, count - 1 - position) << theRunningCall << ": " << Hex(outcome.status);
        }
        EXPECT_EQ(storage.probe.references, 0u) << theRunningCall;
    }

    /// The argument at `at`, as a variable of exactly the member's type.
    Var VariableFor(const Function& function, const std::vector<std::string>& names, UINT at) {
        const ELEMDESC& parameter = function->lprgelemdescParam[at];
        VARIANT surrounding;
        Surround(surrounding, at + 1 < names.size() ? names[at + 1] : "", parameter);
        Var variable;
        VariantCopy(&variable, &surrounding);
        const VARTYPE type = parameter.tdesc.vt == VT_PTR ? parameter.tdesc.lptdesc->vt : parameter.tdesc.vt;
        if (variable.vt == VT_I2 && type != VT_VARIANT) VariantChangeType(&variable, &variable, 0, type);
        return variable;
    }

    /// One call with variables, and in place `position` an object that gives them all another type when it is asked.
    void CallWithChangingVariables(const Function& function, const std::vector<std::string>& names, UINT position) {
        const UINT count = function.ArgumentCount() + (function.IsPut() ? 1u : 0u);
        std::vector<Var> variables(count);
        std::vector<VARIANT> arguments(count);
        Meddler meddler;
        for (UINT i = 0; i < count; ++i) {
            VARIANT& argument = arguments[count - 1 - i];
            variables[i] = VariableFor(function, names, i);
            if (i == position || MustStay(names, i)) {
                argument = variables[i];
            } else {
                argument = Var::Ref(&variables[i]);
                meddler.variables.push_back(&variables[i]);
            }
        }
        arguments[count - 1 - position].vt = VT_DISPATCH;
        arguments[count - 1 - position].pdispVal = &meddler;
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {arguments.data(), function.IsPut() ? &put : nullptr, count,
                                 function.IsPut() ? 1u : 0u};
        Var result;
        mObject->Invoke(function->memid, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(function->invkind),
                        &parameters, &result, nullptr, nullptr);
        result = Var();
        TakeBack();
        SetErrorInfo(0, nullptr);
        for (const Var& variable : variables)
            EXPECT_TRUE((variable.vt & VT_BYREF) == 0 && variable.vt <= VT_UINT) << theRunningCall << variable.vt;
    }

    void CallEveryMember(const AllocationCount& memory) {
        for (UINT f = 0; f < TypeAttributes(*mSlots)->cFuncs; ++f) {
            const Function function(mSlots.Get(), f);
            const std::vector<std::string> names = function.Names();
            const UINT count = function.ArgumentCount() + (function.IsPut() ? 1u : 0u);
            for (UINT position = 0; position < count; ++position) {
                if (MustStay(names, position)) continue;
                for (const ArgumentCase& hostile : AllArgumentCases()) {
                    const std::string call = names[0] + " argument " + std::to_string(position) + ", " + hostile.name;
                    theRunningCall = call.c_str();
                    // A second try distinguishes a leak from something that is kept once.
                    for (int attempt = 0; attempt < 2; ++attempt) {
                        const long before = memory.InUse();
                        CallWith(function, names, position, hostile);
                        const long after = memory.InUse();
                        if (after == before) break;
                        if (attempt == 1) ADD_FAILURE() << call << " keeps " << after - before << " blocks";
                    }
                    if (HasFailure()) ++mFailedCalls;
                    // The first few are enough to see what is wrong.
                    ASSERT_LT(mFailedCalls, 40);
                }
            }
        }
        theRunningCall = "";
    }

    ComPtr<ITypeInfo> mSlots;
    ComPtr<IDispatch> mObject;
    Probe mProbe;
    /// A pane in something that is no container of controls.
    PropertyObject mPane{std::map<std::wstring, Var>{{L"Container", Var(static_cast<IDispatch*>(&mProbe))}}};
    Bstr mText{L"probe"};
    HWND mWindow = nullptr;
    int mFailedCalls = 0;
    void* mHandler = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Classes, EveryVariantType, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return Narrow(parameter.param); });

TEST_P(EveryVariantType, AtEveryArgumentIsTakenOrRefusedWithoutALeak) {
    const AllocationCount& memory = AllocationCount::Instance();

    CallEveryMember(memory);

    EXPECT_EQ(mProbe.references, 1u) << "the pane holds one";
}

TEST_P(EveryVariantType, RepeatedLeavesTheHeapAsItWas) {
    const AllocationCount& memory = AllocationCount::Instance();
    CallEveryMember(memory);
    const long before = HeapBlocksInUse();

    CallEveryMember(memory);

    // One block a call would be thousands; the heap's own tables may grow a little.
    EXPECT_LT(HeapBlocksInUse() - before, 50);
}

TEST_P(EveryVariantType, OfAVariableMayBecomeAnotherDuringTheCall) {
    const AllocationCount& memory = AllocationCount::Instance();
    for (UINT f = 0; f < TypeAttributes(*mSlots)->cFuncs; ++f) {
        const Function function(mSlots.Get(), f);
        const std::vector<std::string> names = function.Names();
        const UINT count = function.ArgumentCount() + (function.IsPut() ? 1u : 0u);
        for (UINT position = 0; position < count; ++position) {
            if (MustStay(names, position)) continue;
            const std::string call = names[0] + " argument " + std::to_string(position);
            theRunningCall = call.c_str();
            CallWithChangingVariables(function, names, position);
            const long before = memory.InUse();
            CallWithChangingVariables(function, names, position);
            EXPECT_EQ(memory.InUse(), before) << call;
        }
    }
    theRunningCall = "";
}

// The instrument itself: without this a spy that sees nothing would pass everything.
TEST(AllocationCounting, SeesStringsArraysAndHeapBlocks) {
    const AllocationCount& memory = AllocationCount::Instance();
    const long before = memory.InUse();
    BSTR text = SysAllocString(L"text");
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, 10);
    const long during = memory.InUse();
    SysFreeString(text);
    SafeArrayDestroy(array);

    EXPECT_GE(during - before, 2);
    EXPECT_EQ(memory.InUse(), before);

    const long blocks = HeapBlocksInUse();
    std::vector<void*> held;
    held.reserve(1000);
    for (int i = 0; i < 1000; ++i)
        held.push_back(HeapAlloc(GetProcessHeap(), 0, 24));
    EXPECT_GE(HeapBlocksInUse() - blocks, 900);
    for (void* block : held)
        HeapFree(GetProcessHeap(), 0, block);
}

}  // namespace
}  // namespace kwo::com_test
