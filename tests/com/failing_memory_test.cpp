// What a client sees when there is no memory left.

#include "allocation_count.h"
#include "allocation_faults.h"
#include "dll_under_test.h"
#include "registry_sandbox.h"
#include "thread.h"
#include "timer_client.h"
#include "windows_calls/windows_calls.h"

namespace kwo::com_test {
namespace {

using windows_calls::WindowsCalls;

/// More than any member allocates.
constexpr long kTooMany = 2000;

class FailingCreation : public ::testing::TestWithParam<std::wstring> {};

INSTANTIATE_TEST_SUITE_P(Classes, FailingCreation, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return Narrow(parameter.param); });

TEST_P(FailingCreation, SaysSoAndLeavesAnErrorObject) {
    const ComPtr<IDispatch> first = Create(GetParam());
    CLSID id = {};
    ASSERT_EQ(CLSIDFromProgID((L"KWOUtil." + GetParam()).c_str(), &id), S_OK);
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.OutVoid()), S_OK);
    long failed = 0;
    for (long at = 1;; ++at) {
        ASSERT_LT(at, kTooMany);
        TakeErrorObject();
        ComPtr<IDispatch> made;
        HRESULT status = E_FAIL;
        bool happened = false;
        {
            const AllocationFaults faults(at);
            status = factory->CreateInstance(nullptr, IID_IDispatch, made.OutVoid());
            happened = faults.Happened();
        }
        if (!happened) {
            EXPECT_EQ(Hex(status), Hex(S_OK));
            break;
        }
        ++failed;
        const ErrorObject error = TakeErrorObject();
        EXPECT_EQ(Hex(status), Hex(E_OUTOFMEMORY)) << at;
        EXPECT_FALSE(made) << at;
        EXPECT_TRUE(error.present) << at;
        EXPECT_EQ(error.source, GetParam()) << at;
        EXPECT_EQ(error.description, L"Out of memory") << at;
    }
    EXPECT_LE(1, failed);
}

/// Calls `body` with every single allocation of it failing; it answers the status.
template <class Body>
void EachAllocationFails(const char* what, Body body) {
    for (long at = 1;; ++at) {
        ASSERT_LT(at, kTooMany) << what;
        HRESULT status = E_FAIL;
        bool happened = false;
        {
            const AllocationFaults faults(at);
            status = body();
            happened = faults.Happened();
        }
        if (!happened) {
            EXPECT_LT(1, at) << what << " allocates nothing";
            EXPECT_EQ(Hex(status), Hex(S_OK)) << what;
            return;
        }
        EXPECT_EQ(Hex(status), Hex(E_OUTOFMEMORY)) << what << ", allocation " << at;
    }
}

/// Where a call puts an object. It holds something else before, because a call that fails is to write null, too.
template <class Interface>
class Place {
public:
    Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() {
        if (mObject != nullptr) mObject->Release();
    }
    /// What `call` answers when it is given the place; E_UNEXPECTED if it fails and does not write null.
    template <class Call>
    HRESULT Given(Call&& call) {
        mObject = reinterpret_cast<Interface*>(this);
        const HRESULT status = call(&mObject);
        if (SUCCEEDED(status) || mObject == nullptr) return status;
        mObject = nullptr;
        return E_UNEXPECTED;
    }

private:
    Interface* mObject = nullptr;
};

class FailingConnections : public TimerClient {};

TEST_F(FailingConnections, AreOutOfMemory) {
    Connect(NewSink());
    Connect(NewSink());
    const auto point = Point();
    const auto container = As<IConnectionPointContainer>(mTimer.Get(), IID_IConnectionPointContainer);
    ComPtr<IEnumConnections> connections;
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(point->EnumConnections(connections.Out()), S_OK);
    ASSERT_EQ(container->EnumConnectionPoints(points.Out()), S_OK);

    EachAllocationFails("EnumConnections", [&] {
        return Place<IEnumConnections>().Given([&](auto** made) { return point->EnumConnections(made); });
    });
    EachAllocationFails("IEnumConnections::Clone", [&] {
        return Place<IEnumConnections>().Given([&](auto** made) { return connections->Clone(made); });
    });
    EachAllocationFails("EnumConnectionPoints", [&] {
        return Place<IEnumConnectionPoints>().Given([&](auto** made) { return container->EnumConnectionPoints(made); });
    });
    EachAllocationFails("IEnumConnectionPoints::Clone", [&] {
        return Place<IEnumConnectionPoints>().Given([&](auto** made) { return points->Clone(made); });
    });
    Sink& late = NewSink();
    EachAllocationFails("Advise", [&] {
        DWORD cookie = 0;
        return point->Advise(&late, &cookie);
    });
    EXPECT_EQ(late.references, 1u) << "only the one that succeeded";
}

class FailingClassInformation : public ::testing::TestWithParam<std::wstring> {};

INSTANTIATE_TEST_SUITE_P(Classes, FailingClassInformation, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return Narrow(parameter.param); });

TEST_P(FailingClassInformation, IsOutOfMemory) {
    const ComPtr<IDispatch> object = Create(GetParam());
    const auto provider = As<IProvideClassInfo>(object.Get(), IID_IProvideClassInfo);
    EachAllocationFails("GetClassInfo", [&] {
        return Place<ITypeInfo>().Given([&](auto** info) { return provider->GetClassInfo(info); });
    });
}

class FailingMembers : public RegistrySandbox {
protected:
    /// The number that the caller sees, S_OK for success; a failure of the member explains itself.
    static HRESULT Number(const Outcome& outcome, const wchar_t* source) {
        if (outcome.status != DISP_E_EXCEPTION) return outcome.status;
        EXPECT_EQ(outcome.description, L"Out of memory");
        EXPECT_EQ(outcome.source, source);
        return outcome.scode;
    }
};

TEST_F(FailingMembers, AreOutOfMemory) {
    PutText(L"a value with a long name", L"a text that is not short either");
    const ComPtr<IDispatch> utility = Create(L"KWOUtility");
    EachAllocationFails("KWO_RegGetValue", [&] {
        return Number(Call(mRegistry.Get(), L"KWO_RegGetValue",
                           {kCurrentUser, kSandbox, L"a value with a long name", L"some text to be replaced"}),
                      L"KWORegistry.KWO_RegGetValue");
    });
    EachAllocationFails("KWO_SystemDir",
                        [&] { return Number(Call(utility.Get(), L"KWO_SystemDir"), L"KWOUtility.KWO_SystemDir"); });
}

TEST_F(FailingMembers, ThatFailLeakNothing) {
    PutText(L"a value with a long name", L"a text that is not short either");
    const AllocationCount& memory = AllocationCount::Instance();
    Bstr name(L"a value with a long name");
    for (long at = 1; at < 40; ++at) {
        const auto call = [&] {
            const AllocationFaults faults(at);
            Call(mRegistry.Get(), L"KWO_RegGetValueEx",
                 {Handle(), Var::Ref(name.InOut()), L"a fallback of some length"});
        };
        call();
        SetErrorInfo(0, nullptr);
        const long before = memory.InUse();
        call();
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(memory.InUse(), before) << at;
    }
}

/// What a client gets if a program cannot be started and the texts of the message about it cannot be loaded. On a
/// thread of its own, which has no texts yet.
HRESULT StartWithoutMessages(WindowsCalls& calls, int& boxes) {
    static int shown = 0;
    shown = 0;
    calls.Replace("MessageBoxA", [](HWND, LPCSTR, LPCSTR, UINT) -> int { return ++shown, IDOK; });
    HRESULT status = S_OK;
    Thread([&] {
        CoInitialize(nullptr);
        calls.WatchThisThread();
        {
            const ComPtr<IDispatch> utility = Create(L"KWOUtility");
            const Outcome outcome = Call(utility.Get(), L"KWO_LoadApp", {L"C:\\", L"kwo no such.exe", L"", 1, L""});
            status = outcome.status == DISP_E_EXCEPTION ? outcome.scode : outcome.status;
            SetErrorInfo(0, nullptr);
        }
        CoUninitialize();
    }).Join();
    boxes = shown;
    return status;
}

TEST(FailingCompanion, WithoutMemoryIsNotAMissingOne) {
    const Library library;
    const auto found = [](LPCOLESTR, CLSID* id) -> HRESULT {
        *id = CLSID_NULL;
        return S_OK;
    };
    const auto told = [&](auto lookUp, auto create) {
        WindowsCalls calls({library.Module()}, {"CLSIDFromProgID", "CoCreateInstance", "MessageBoxA"});
        calls.Replace("CLSIDFromProgID", lookUp);
        calls.Replace("CoCreateInstance", create);
        int boxes = 0;
        const HRESULT status = StartWithoutMessages(calls, boxes);
        return Hex(status) + ", boxes: " + std::to_string(boxes);
    };
    const auto createWithoutMemory = [](REFCLSID, IUnknown*, DWORD, REFIID, void** object) -> HRESULT {
        *object = nullptr;
        return E_OUTOFMEMORY;
    };
    const auto createNothing = [](REFCLSID, IUnknown*, DWORD, REFIID, void** object) -> HRESULT {
        *object = nullptr;
        return REGDB_E_CLASSNOTREG;
    };

    const std::string outOfMemory = Hex(E_OUTOFMEMORY) + ", boxes: 0";
    EXPECT_EQ(told([](LPCOLESTR, CLSID*) -> HRESULT { return E_OUTOFMEMORY; }, createNothing), outOfMemory);
    EXPECT_EQ(told(found, createWithoutMemory), outOfMemory);
    EXPECT_EQ(told(found, createNothing), Hex(S_OK) + ", boxes: 1");
}

}  // namespace
}  // namespace kwo::com_test
