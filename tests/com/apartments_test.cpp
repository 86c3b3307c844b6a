// Clients of other apartments: free-threaded ones, and single-threaded ones that are not the object's own.

#include <atomic>
#include <functional>

#include "dll_under_test.h"
#include "thread.h"
#include "timer_client.h"
#include "timer_slots.h"
#include "wine.h"

namespace kwo::com_test {
namespace {

/// Runs `body` on a thread of its own apartment while this one processes its messages.
void OnThread(DWORD apartment, const std::function<void()>& body) {
    std::atomic<bool> done = false;
    Thread thread([&] {
        EXPECT_EQ(CoInitializeEx(nullptr, apartment), S_OK);
        body();
        CoUninitialize();
        done = true;
    });
    while (!done) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    thread.Join();
}

class OtherApartments : public TimerClient {
protected:
    /// The timer for one thread of another apartment.
    ComPtr<IStream> Marshalled(REFIID id = IID_IDispatch) {
        ComPtr<IStream> stream;
        EXPECT_EQ(Hex(CoMarshalInterThreadInterfaceInStream(id, mTimer.Get(), stream.Out())), Hex(S_OK));
        return stream;
    }
    template <class Interface>
    static ComPtr<Interface> Unmarshalled(const ComPtr<IStream>& stream, REFIID id) {
        ComPtr<Interface> object;
        stream->AddRef();  // the call releases one
        EXPECT_EQ(Hex(CoGetInterfaceAndReleaseStream(stream.Get(), id, object.OutVoid())), Hex(S_OK));
        return object;
    }
};

/// Without a timer of its own, which would hold the DLL.
class FreeThreadedClients : public OtherApartments {
protected:
    void SetUp() override { ASSERT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_OK)) << "an earlier test still holds the DLL"; }

    const Library mDll;
};

TEST_F(FreeThreadedClients, LeaveNoObjectBehind) {
    for (const std::wstring& name : ClassNames()) {
        CLSID id = {};
        ComPtr<IClassFactory> factory;
        ComPtr<IStream> stream;
        ASSERT_EQ(Hex(CLSIDFromProgID((L"KWOUtil." + name).c_str(), &id)), Hex(S_OK));
        ASSERT_EQ(Hex(mDll.GetClassObject(id, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
        EXPECT_EQ(Hex(CoMarshalInterThreadInterfaceInStream(IID_IClassFactory, factory.Get(), stream.Out())),
                  Hex(S_OK));
        OnThread(COINIT_MULTITHREADED, [&] {
            const auto maker = Unmarshalled<IClassFactory>(stream, IID_IClassFactory);
            ComPtr<IDispatch> object;
            EXPECT_EQ(Hex(maker->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())), Hex(S_OK)) << Narrow(name);
        });
    }

    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(S_OK));
}

TEST_F(FreeThreadedClients, LeaveTheClassObjectsOfTheirHostApartmentBehindUnderWine) {
    OnThread(COINIT_MULTITHREADED, [] { EXPECT_TRUE(Create(L"KWOUtility")); });

    // The system makes the object in an apartment of its own. Wine never releases the class object that it used.
    EXPECT_EQ(Hex(mDll.CanUnloadNow()), Hex(IsWine() ? S_FALSE : S_OK));
}

TEST_F(OtherApartments, FreeThreadedClientsCreateAndCallEveryClass) {
    OnThread(COINIT_MULTITHREADED, [] {
        for (const std::wstring& name : ClassNames()) {
            const ComPtr<IDispatch> object = Create(name);
            ASSERT_TRUE(object) << Narrow(name);
            EXPECT_TRUE(As<IUnknown>(object.Get(), IID_IMultiQI)) << Narrow(name) << " is no proxy";
            UINT count = 0;
            EXPECT_EQ(Hex(object->GetTypeInfoCount(&count)), Hex(S_OK)) << Narrow(name);
            EXPECT_EQ(count, 1u);
        }
        const ComPtr<IDispatch> utility = Create(L"KWOUtility");
        const Outcome directory = Call(utility.Get(), L"KWO_SystemDir");
        EXPECT_EQ(Hex(directory.status), Hex(S_OK));
        EXPECT_NE(directory.result.Text(), L"");
        const ComPtr<IDispatch> timer = Create(L"KWOTimer");
        EXPECT_EQ(Hex(Let(timer.Get(), L"Interval", 77).status), Hex(S_OK));
        EXPECT_EQ(Get(timer.Get(), L"Interval").result.lVal, 77);
        const Outcome failed = Call(timer.Get(), L"AddAlarm", {Var::Date(1e300), 1});
        EXPECT_EQ(Hex(failed.status), Hex(DISP_E_EXCEPTION));
        EXPECT_EQ(Hex(failed.scode), "0x800A000D");
        EXPECT_EQ(failed.source, L"KWOTimer.AddAlarm");
    });
}

TEST_F(OtherApartments, CallsFromAnotherApartmentRunOnTheObjectsThread) {
    for (const DWORD apartment : {DWORD{COINIT_MULTITHREADED}, DWORD{COINIT_APARTMENTTHREADED}}) {
        Sink& sink = NewSink();
        DWORD calledOn = 0;
        sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            calledOn = GetCurrentThreadId();
            *arguments.rgvarg[1].plVal += 1;
            *arguments.rgvarg[0].pdate = 2.5;
            return S_OK;
        };
        const DWORD cookie = Connect(sink);
        const ComPtr<IStream> stream = Marshalled();
        OnThread(apartment, [&] {
            const auto timer = Unmarshalled<IDispatch>(stream, IID_IDispatch);
            Var tag(7);
            Var date = Var::Date(0);
            const Outcome outcome = Call(timer.Get(), L"TimerTick", {2, Var::Ref(&tag), Var::Ref(&date)});
            EXPECT_EQ(Hex(outcome.status), Hex(S_OK));
            EXPECT_EQ(tag.lVal, 8);
            EXPECT_EQ(date.date, 2.5);
        });
        EXPECT_EQ(calledOn, GetCurrentThreadId());
        EXPECT_EQ(Hex(Disconnect(cookie)), Hex(S_OK));
    }
}

TEST_F(OtherApartments, TheDefaultInterfaceIsMarshalled) {
    const IID own = IdOfType(L"_KWOTimer");
    const ComPtr<IStream> stream = Marshalled(own);
    OnThread(COINIT_MULTITHREADED, [&] {
        const auto timer = Unmarshalled<TimerSlots>(stream, own);
        EXPECT_EQ(Hex(timer->LetInterval(55)), Hex(S_OK));
        LONG interval = 0;
        EXPECT_EQ(Hex(timer->GetInterval(&interval)), Hex(S_OK));
        EXPECT_EQ(interval, 55);
        EXPECT_EQ(Hex(timer->AddAlarm(1e300, 1)), "0x800A000D");
        // Windows brings the error object along, Wine leaves it behind.
        TakeErrorObject();
    });
}

TEST_F(OtherApartments, TimersOfAnotherThreadAreNotThisThreads) {
    Sink& sink = NewSink();
    Connect(sink);
    AddRelative(200, 1);
    OnThread(COINIT_APARTMENTTHREADED, [] {
        const ComPtr<IDispatch> timer = Create(L"KWOTimer");
        EXPECT_EQ(Hex(Call(timer.Get(), L"AddRelativeAlarm", {50'000, 1}).status), Hex(S_OK));
        EXPECT_EQ(Hex(Call(timer.Get(), L"CancelTimers").status), Hex(S_OK));
    });

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; })) << "the other thread cancels its own alarms alone";
}

TEST_F(OtherApartments, APlainPointerUsedOnAnotherThreadIsStillAnswered) {
    // Against the rules of COM, but hosts do it: numbers are read and written, and nothing crashes.
    EXPECT_EQ(Hex(Let(mTimer.Get(), L"Interval", 12).status), Hex(S_OK));
    IDispatch* const timer = mTimer.Get();
    OnThread(COINIT_MULTITHREADED, [timer] {
        EXPECT_EQ(Get(timer, L"Interval").result.lVal, 12);
        EXPECT_EQ(Hex(Let(timer, L"ItemData", 5).status), Hex(S_OK));
        const Outcome failed = Call(timer, L"AddAlarm", {Var::Date(1e300), 1});
        EXPECT_EQ(Hex(failed.scode), "0x800A000D");
    });
    EXPECT_EQ(Get(timer, L"ItemData").result.lVal, 5);
}

}  // namespace
}  // namespace kwo::com_test
