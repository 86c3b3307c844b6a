#include <olectl.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr HRESULT kScriptReported = static_cast<HRESULT>(0x80020101);

class TimerEvents : public TimerClient {};

TEST_F(TimerEvents, OnePointIsThereForTheEventsOfTheTimer) {
    const auto container = As<IConnectionPointContainer>(mTimer.Get(), IID_IConnectionPointContainer);
    ASSERT_TRUE(container);
    EXPECT_EQ(As<IUnknown>(container.Get(), IID_IUnknown).Get(), As<IUnknown>(mTimer.Get(), IID_IUnknown).Get());
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(Hex(container->FindConnectionPoint(mEvents, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(container->FindConnectionPoint(IID_IDispatch, point.Out())), Hex(CONNECT_E_NOCONNECTION));
    EXPECT_FALSE(point);
    ASSERT_EQ(Hex(container->FindConnectionPoint(mEvents, point.Out())), Hex(S_OK));

    IID id = {};
    EXPECT_EQ(Hex(point->GetConnectionInterface(&id)), Hex(S_OK));
    EXPECT_TRUE(id == mEvents);
    EXPECT_EQ(Hex(point->GetConnectionInterface(nullptr)), Hex(E_POINTER));
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(Hex(point->GetConnectionPointContainer(back.Out())), Hex(S_OK));
    EXPECT_EQ(back.Get(), container.Get());
    EXPECT_NE(As<IUnknown>(mTimer.Get(), IID_IUnknown).Get(), As<IUnknown>(point.Get(), IID_IUnknown).Get());
    EXPECT_FALSE(As<IDispatch>(point.Get(), IID_IDispatch));

    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(Hex(container->EnumConnectionPoints(points.Out())), Hex(S_OK));
    ComPtr<IConnectionPoint> listed;
    ULONG fetched = 0;
    EXPECT_EQ(Hex(points->Next(1, listed.Out(), &fetched)), Hex(S_OK));
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(listed.Get(), point.Get());
    EXPECT_EQ(Hex(points->Next(1, listed.Out(), nullptr)), Hex(S_FALSE));
    EXPECT_EQ(Hex(points->Skip(1)), Hex(S_FALSE));
    EXPECT_EQ(Hex(points->Reset()), Hex(S_OK));
    EXPECT_EQ(Hex(points->Skip(1)), Hex(S_OK));
    ComPtr<IEnumConnectionPoints> clone;
    EXPECT_EQ(Hex(points->Clone(clone.Out())), Hex(S_OK));
    EXPECT_EQ(Hex(clone->Next(1, listed.Out(), nullptr)), Hex(S_FALSE)) << "it goes on where the other one is";
}

TEST_F(TimerEvents, SinksComeAndGo) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    second.interfaceId = mEvents;
    const auto point = Point();
    DWORD cookie = 99;
    EXPECT_EQ(Hex(point->Advise(nullptr, &cookie)), Hex(E_POINTER));
    EXPECT_EQ(Hex(point->Advise(&first, nullptr)), Hex(E_POINTER));
    const DWORD one = Connect(first);
    const DWORD two = Connect(second);
    EXPECT_NE(one, 0u);
    EXPECT_NE(two, one);
    EXPECT_EQ(first.references, 1u);

    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(Hex(point->EnumConnections(connections.Out())), Hex(S_OK));
    CONNECTDATA data[3] = {};
    ULONG fetched = 0;
    EXPECT_EQ(Hex(connections->Next(3, data, &fetched)), Hex(S_FALSE));
    ASSERT_EQ(fetched, 2u);
    EXPECT_EQ(data[0].dwCookie, one);
    EXPECT_EQ(data[1].pUnk, &second);
    data[0].pUnk->Release();
    data[1].pUnk->Release();
    connections.Reset();

    EXPECT_EQ(Hex(Disconnect(one)), Hex(S_OK));
    EXPECT_EQ(first.references, 0u);
    EXPECT_EQ(Hex(Disconnect(one)), Hex(CONNECT_E_NOCONNECTION));
    EXPECT_EQ(Hex(Disconnect(0)), Hex(CONNECT_E_NOCONNECTION));
    Force(kTickEvent);
    EXPECT_EQ(first.calls, 0);
    EXPECT_EQ(second.calls, 1);

    mTimer.Reset();
    EXPECT_EQ(second.references, 1u) << "the point that is still held keeps the timer";
}

TEST_F(TimerEvents, ObjectThatCannotBeCalledCannotConnect) {
    class Plain final : public IUnknown {
    public:
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
            *object = iid == IID_IUnknown ? this : nullptr;
            return *object != nullptr ? S_OK : E_NOINTERFACE;
        }
        STDMETHODIMP_(ULONG) AddRef() override { return 2; }
        STDMETHODIMP_(ULONG) Release() override { return 1; }
    } plain;
    DWORD cookie = 99;

    EXPECT_EQ(Hex(Point()->Advise(&plain, &cookie)), Hex(CONNECT_E_CANNOTCONNECT));
    EXPECT_EQ(cookie, 0u);
}

TEST_F(TimerEvents, TickHandsOverTheTimerItself) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(id, kTickEvent);
        EXPECT_EQ(arguments.cArgs, 1u);
        EXPECT_EQ(arguments.cNamedArgs, 0u);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_DISPATCH);
        EXPECT_EQ(arguments.rgvarg[0].pdispVal, mTimer.Get());
        return S_OK;
    };
    Connect(sink);
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 3; }));
    EXPECT_EQ(sink.lastFlags, DISPATCH_METHOD);
    Let(mTimer.Get(), L"Enabled", false);
    const int calls = sink.calls;
    ProcessFor(150);
    EXPECT_EQ(sink.calls, calls);
}

TEST_F(TimerEvents, AlarmHandsOverItsTagAndTakesANewDate) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(id, kAlarmEvent);
        EXPECT_EQ(arguments.cArgs, 3u);
        EXPECT_EQ(arguments.rgvarg[2].vt, VT_DISPATCH);
        EXPECT_EQ(arguments.rgvarg[2].pdispVal, mTimer.Get());
        EXPECT_EQ(arguments.rgvarg[1].vt, VT_BYREF | VT_I4);
        EXPECT_EQ(*arguments.rgvarg[1].plVal, -5);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_BYREF | VT_DATE);
        EXPECT_EQ(*arguments.rgvarg[0].pdate, 0);
        if (sink.calls == 1) *arguments.rgvarg[0].pdate = 1.5;  // long ago: in a second
        return S_OK;
    };
    Connect(sink);
    AddRelative(20, -5);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 2; }));
    EXPECT_EQ(sink.lastFlags, DISPATCH_METHOD);
    ProcessFor(1'300);
    EXPECT_EQ(sink.calls, 2);
}

TEST_F(TimerEvents, SinksAreCalledInTheOrderInWhichTheyCame) {
    std::string order;
    Sink* const sinks[] = {&NewSink(), &NewSink(), &NewSink()};
    for (int at = 0; at < 3; ++at) {
        sinks[at]->onInvoke = [&order, at](DISPID, DISPPARAMS&, EXCEPINFO&) {
            order += std::to_string(at);
            return S_OK;
        };
        Connect(*sinks[at]);
    }
    Force(kTickEvent);

    EXPECT_EQ(order, "012");
}

TEST_F(TimerEvents, FailingSinkHarmsNoOtherAndItsFailureIsRaised) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0005));
    };
    Sink& failingToo = NewSink();
    failingToo.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return kScriptReported; };
    Sink& healthy = NewSink();
    Connect(failing);
    Connect(failingToo);
    Connect(healthy);

    const Outcome outcome = Force(kTickEvent);

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION));
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A0005))) << "the first failure";
    EXPECT_EQ(outcome.source, L"the handler");
    EXPECT_EQ(outcome.description, L"it went wrong");
    EXPECT_EQ(healthy.calls, 1);
    EXPECT_EQ(failing.references, 1u) << "it stays connected";
}

TEST_F(TimerEvents, FailingSinkCostsTheRow) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_FAIL; };
    Connect(failing);
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return failing.calls >= 1; }));
    ProcessFor(200);
    EXPECT_EQ(failing.calls, 1);
    EXPECT_EQ(Get(mTimer.Get(), L"Enabled").result.boolVal, VARIANT_TRUE);
}

TEST_F(TimerEvents, SinkWithoutTheEventDoesNotFail) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    first.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return DISP_E_MEMBERNOTFOUND; };
    second.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_NOTIMPL; };
    Connect(first);
    Connect(second);

    EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK));
}

TEST_F(TimerEvents, SinkWhoseProgramIsGoneIsLetGo) {
    for (const HRESULT gone : {RPC_E_DISCONNECTED, RPC_E_SERVER_DIED, RPC_E_SERVER_DIED_DNE, CO_E_OBJNOTCONNECTED,
                               HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
                               HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE)}) {
        Sink& vanished = NewSink();
        vanished.onInvoke = [gone](DISPID, DISPPARAMS&, EXCEPINFO&) { return gone; };
        Connect(vanished);
        EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK)) << Hex(gone);
        EXPECT_EQ(vanished.references, 0u) << Hex(gone);
    }
}

TEST_F(TimerEvents, SinkMayDisconnectItselfAndOthersInsideItsCall) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    Sink& third = NewSink();
    DWORD own = 0;
    DWORD others = 0;
    first.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        EXPECT_EQ(Hex(Disconnect(own)), Hex(S_OK));
        EXPECT_EQ(Hex(Disconnect(others)), Hex(S_OK));
        return S_OK;
    };
    own = Connect(first);
    others = Connect(second);
    Connect(third);

    Force(kTickEvent);

    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0) << "it was no longer connected";
    EXPECT_EQ(third.calls, 1);
    EXPECT_EQ(first.references, 0u);
}

TEST_F(TimerEvents, SinkThatConnectsInsideACallWaitsForTheNextEvent) {
    Sink& first = NewSink();
    Sink& late = NewSink();
    first.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        if (first.calls == 1) Connect(late);
        return S_OK;
    };
    Connect(first);

    Force(kTickEvent);
    EXPECT_EQ(late.calls, 0);
    Force(kTickEvent);
    EXPECT_EQ(late.calls, 1);
}

TEST_F(TimerEvents, TimerMayLoseItsLastReferenceInsideACall) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        mTimer.Reset();
        return S_OK;
    };
    Connect(sink);
    AddRelative(20, 1);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; }));
    EXPECT_FALSE(mTimer);
    EXPECT_EQ(sink.references, 0u) << "the timer has ended";
}

TEST_F(TimerEvents, PendingAlarmKeepsTheTimerAndItsSinksAlive) {
    Sink& sink = NewSink();
    Connect(sink);
    AddRelative(100, 1);
    mTimer.Reset();
    EXPECT_EQ(sink.references, 1u);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; }));
    EXPECT_EQ(sink.references, 0u) << "it ends with its last row";
}

TEST_F(TimerEvents, MessagesProcessedInsideACallBringNoTickInsideATick) {
    Sink& sink = NewSink();
    int depth = 0;
    int deepest = 0;
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        deepest = std::max(deepest, ++depth);
        if (sink.calls == 1) ProcessFor(300);
        --depth;
        return S_OK;
    };
    Connect(sink);
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 4; })) << "it goes on afterwards";
    EXPECT_EQ(deepest, 1);
}

}  // namespace
}  // namespace kwo::com_test
