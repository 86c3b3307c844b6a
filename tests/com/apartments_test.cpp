// Clients of other apartments: free-threaded ones, and single-threaded ones that are not the object's own.

#include <atomic>
#include <functional>

#include "thread.h"
#include "timer_client.h"
#include "timer_slots.h"

namespace kwo::com_test {
namespace {

/// Runs `body` on a thread of its own apartment while this one processes its messages.
void OnThread(DWORD apartment, const std::function<void()>& body) {
    std::atomic<bool> done = false;
    Thread thread([&] {
        EXPECT_EQ(S_OK, CoInitializeEx(nullptr, apartment));
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
        EXPECT_EQ(Hex(S_OK), Hex(CoMarshalInterThreadInterfaceInStream(id, mTimer.Get(), stream.Out())));
        return stream;
    }
    template <class Interface>
    static ComPtr<Interface> Unmarshalled(const ComPtr<IStream>& stream, REFIID id) {
        ComPtr<Interface> object;
        stream->AddRef();  // the call releases one
        EXPECT_EQ(Hex(S_OK), Hex(CoGetInterfaceAndReleaseStream(stream.Get(), id, object.OutVoid())));
        return object;
    }
};

TEST_F(OtherApartments, FreeThreadedClientsCreateAndCallEveryClass) {
    OnThread(COINIT_MULTITHREADED, [] {
        for (const std::wstring& name : ClassNames()) {
            const ComPtr<IDispatch> object = Create(name);
            ASSERT_TRUE(object) << Narrow(name);
            EXPECT_TRUE(As<IUnknown>(object.Get(), IID_IMultiQI)) << Narrow(name) << " is no proxy";
            UINT count = 0;
            EXPECT_EQ(Hex(S_OK), Hex(object->GetTypeInfoCount(&count))) << Narrow(name);
            EXPECT_EQ(1u, count);
        }
        const ComPtr<IDispatch> utility = Create(L"KWOUtility");
        const Outcome directory = Call(utility.Get(), L"KWO_SystemDir");
        EXPECT_EQ(Hex(S_OK), Hex(directory.status));
        EXPECT_NE(L"", directory.result.Text());
        const ComPtr<IDispatch> timer = Create(L"KWOTimer");
        EXPECT_EQ(Hex(S_OK), Hex(Let(timer.Get(), L"Interval", 77).status));
        EXPECT_EQ(77, Get(timer.Get(), L"Interval").result.lVal);
        const Outcome failed = Call(timer.Get(), L"AddAlarm", {Var::Date(1e300), 1});
        EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(failed.status));
        EXPECT_EQ("0x800A000D", Hex(failed.scode));
        EXPECT_EQ(L"KWOTimer.AddAlarm", failed.source);
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
            EXPECT_EQ(Hex(S_OK), Hex(outcome.status));
            EXPECT_EQ(8, tag.lVal);
            EXPECT_EQ(2.5, date.date);
        });
        EXPECT_EQ(GetCurrentThreadId(), calledOn);
        EXPECT_EQ(Hex(S_OK), Hex(Disconnect(cookie)));
    }
}

TEST_F(OtherApartments, TheDefaultInterfaceIsMarshalled) {
    const IID own = IdOfType(L"_KWOTimer");
    const ComPtr<IStream> stream = Marshalled(own);
    OnThread(COINIT_MULTITHREADED, [&] {
        const auto timer = Unmarshalled<TimerSlots>(stream, own);
        EXPECT_EQ(Hex(S_OK), Hex(timer->LetInterval(55)));
        LONG interval = 0;
        EXPECT_EQ(Hex(S_OK), Hex(timer->GetInterval(&interval)));
        EXPECT_EQ(55, interval);
        EXPECT_EQ("0x800A000D", Hex(timer->AddAlarm(1e300, 1)));
        // Windows brings the error object along, Wine leaves it behind.
        TakeErrorObject();
    });
}

TEST_F(OtherApartments, TwoThreadsHaveAComponentEach) {
    // The picture button's scale and the saved error live there; here the objects that keep a DLL of their own alive.
    OnThread(COINIT_APARTMENTTHREADED, [] {
        const ComPtr<IDispatch> timer = Create(L"KWOTimer");
        EXPECT_EQ(Hex(S_OK), Hex(Call(timer.Get(), L"AddRelativeAlarm", {50'000, 1}).status));
        EXPECT_EQ(Hex(S_OK), Hex(Call(timer.Get(), L"CancelTimers").status));
    });
    Sink& sink = NewSink();
    Connect(sink);
    AddRelative(10, 1);
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; })) << "the other thread's end takes nothing from this one";
}

TEST_F(OtherApartments, APlainPointerUsedOnAnotherThreadIsStillAnswered) {
    // Against the rules of COM, but hosts do it: numbers are read and written, and nothing crashes.
    EXPECT_EQ(Hex(S_OK), Hex(Let(mTimer.Get(), L"Interval", 12).status));
    IDispatch* const timer = mTimer.Get();
    OnThread(COINIT_MULTITHREADED, [timer] {
        EXPECT_EQ(12, Get(timer, L"Interval").result.lVal);
        EXPECT_EQ(Hex(S_OK), Hex(Let(timer, L"ItemData", 5).status));
        const Outcome failed = Call(timer, L"AddAlarm", {Var::Date(1e300), 1});
        EXPECT_EQ("0x800A000D", Hex(failed.scode));
    });
    EXPECT_EQ(5, Get(timer, L"ItemData").result.lVal);
}

}  // namespace
}  // namespace kwo::com_test
