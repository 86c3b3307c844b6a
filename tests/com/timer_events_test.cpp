#include <olectl.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr HRESULT kScriptReported = static_cast<HRESULT>(0x80020101);

class TimerEvents : public TimerClient {};

TEST_F(TimerEvents, OnePointIsThereForTheEventsOfTheTimer) {
    const auto container = As<IConnectionPointContainer>(mTimer.Get(), IID_IConnectionPointContainer);
    ASSERT_TRUE(container);
    EXPECT_EQ(As<IUnknown>(mTimer.Get(), IID_IUnknown).Get(), As<IUnknown>(container.Get(), IID_IUnknown).Get());
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(Hex(E_POINTER), Hex(container->FindConnectionPoint(mEvents, nullptr)));
    EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(container->FindConnectionPoint(IID_IDispatch, point.Out())));
    EXPECT_FALSE(point);
    ASSERT_EQ(Hex(S_OK), Hex(container->FindConnectionPoint(mEvents, point.Out())));

    IID id = {};
    EXPECT_EQ(Hex(S_OK), Hex(point->GetConnectionInterface(&id)));
    EXPECT_TRUE(id == mEvents);
    EXPECT_EQ(Hex(E_POINTER), Hex(point->GetConnectionInterface(nullptr)));
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(Hex(S_OK), Hex(point->GetConnectionPointContainer(back.Out())));
    EXPECT_EQ(container.Get(), back.Get());
    EXPECT_NE(As<IUnknown>(point.Get(), IID_IUnknown).Get(), As<IUnknown>(mTimer.Get(), IID_IUnknown).Get());
    EXPECT_FALSE(As<IDispatch>(point.Get(), IID_IDispatch));

    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(Hex(S_OK), Hex(container->EnumConnectionPoints(points.Out())));
    ComPtr<IConnectionPoint> listed;
    ULONG fetched = 0;
    EXPECT_EQ(Hex(S_OK), Hex(points->Next(1, listed.Out(), &fetched)));
    EXPECT_EQ(1u, fetched);
    EXPECT_EQ(point.Get(), listed.Get());
    EXPECT_EQ(Hex(S_FALSE), Hex(points->Next(1, listed.Out(), nullptr)));
    EXPECT_EQ(Hex(S_FALSE), Hex(points->Skip(1)));
    EXPECT_EQ(Hex(S_OK), Hex(points->Reset()));
    EXPECT_EQ(Hex(S_OK), Hex(points->Skip(1)));
    ComPtr<IEnumConnectionPoints> clone;
    EXPECT_EQ(Hex(S_OK), Hex(points->Clone(clone.Out())));
    EXPECT_EQ(Hex(S_FALSE), Hex(clone->Next(1, listed.Out(), nullptr))) << "it goes on where the other one is";
}

TEST_F(TimerEvents, SinksComeAndGo) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    second.interfaceId = mEvents;
    const auto point = Point();
    DWORD cookie = 99;
    EXPECT_EQ(Hex(E_POINTER), Hex(point->Advise(nullptr, &cookie)));
    EXPECT_EQ(Hex(E_POINTER), Hex(point->Advise(&first, nullptr)));
    const DWORD one = Connect(first);
    const DWORD two = Connect(second);
    EXPECT_NE(0u, one);
    EXPECT_NE(one, two);
    EXPECT_EQ(1u, first.references);

    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(Hex(S_OK), Hex(point->EnumConnections(connections.Out())));
    CONNECTDATA data[3] = {};
    ULONG fetched = 0;
    EXPECT_EQ(Hex(S_FALSE), Hex(connections->Next(3, data, &fetched)));
    ASSERT_EQ(2u, fetched);
    EXPECT_EQ(one, data[0].dwCookie);
    EXPECT_EQ(&second, data[1].pUnk);
    data[0].pUnk->Release();
    data[1].pUnk->Release();
    connections.Reset();

    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(one)));
    EXPECT_EQ(0u, first.references);
    EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(Disconnect(one)));
    EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(Disconnect(0)));
    Force(kTickEvent);
    EXPECT_EQ(0, first.calls);
    EXPECT_EQ(1, second.calls);

    mTimer.Reset();
    EXPECT_EQ(1u, second.references) << "the point that is still held keeps the timer";
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

    EXPECT_EQ(Hex(CONNECT_E_CANNOTCONNECT), Hex(Point()->Advise(&plain, &cookie)));
    EXPECT_EQ(0u, cookie);
}

TEST_F(TimerEvents, TickHandsOverTheTimerItself) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(kTickEvent, id);
        EXPECT_EQ(1u, arguments.cArgs);
        EXPECT_EQ(0u, arguments.cNamedArgs);
        EXPECT_EQ(VT_DISPATCH, arguments.rgvarg[0].vt);
        EXPECT_EQ(mTimer.Get(), arguments.rgvarg[0].pdispVal);
        return S_OK;
    };
    Connect(sink);
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 3; }));
    EXPECT_EQ(DISPATCH_METHOD, sink.lastFlags);
    Let(mTimer.Get(), L"Enabled", false);
    const int calls = sink.calls;
    ProcessFor(150);
    EXPECT_EQ(calls, sink.calls);
}

TEST_F(TimerEvents, AlarmHandsOverItsTagAndTakesANewDate) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(kAlarmEvent, id);
        EXPECT_EQ(3u, arguments.cArgs);
        EXPECT_EQ(VT_DISPATCH, arguments.rgvarg[2].vt);
        EXPECT_EQ(mTimer.Get(), arguments.rgvarg[2].pdispVal);
        EXPECT_EQ(VT_BYREF | VT_I4, arguments.rgvarg[1].vt);
        EXPECT_EQ(-5, *arguments.rgvarg[1].plVal);
        EXPECT_EQ(VT_BYREF | VT_DATE, arguments.rgvarg[0].vt);
        EXPECT_EQ(0, *arguments.rgvarg[0].pdate);
        if (sink.calls == 1) *arguments.rgvarg[0].pdate = 1.5;  // long ago: in a second
        return S_OK;
    };
    Connect(sink);
    AddRelative(20, -5);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 2; }));
    EXPECT_EQ(DISPATCH_METHOD, sink.lastFlags);
    ProcessFor(1'300);
    EXPECT_EQ(2, sink.calls);
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

    EXPECT_EQ("012", order);
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

    EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(outcome.status));
    EXPECT_EQ(Hex(static_cast<HRESULT>(0x800A0005)), Hex(outcome.scode)) << "the first failure";
    EXPECT_EQ(L"the handler", outcome.source);
    EXPECT_EQ(L"it went wrong", outcome.description);
    EXPECT_EQ(1, healthy.calls);
    EXPECT_EQ(1u, failing.references) << "it stays connected";
}

TEST_F(TimerEvents, FailingSinkCostsTheRow) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_FAIL; };
    Connect(failing);
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return failing.calls >= 1; }));
    ProcessFor(200);
    EXPECT_EQ(1, failing.calls);
    EXPECT_EQ(VARIANT_TRUE, Get(mTimer.Get(), L"Enabled").result.boolVal);
}

TEST_F(TimerEvents, SinkWithoutTheEventDoesNotFail) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    first.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return DISP_E_MEMBERNOTFOUND; };
    second.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_NOTIMPL; };
    Connect(first);
    Connect(second);

    EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status));
}

TEST_F(TimerEvents, SinkWhoseProgramIsGoneIsLetGo) {
    for (const HRESULT gone : {RPC_E_DISCONNECTED, RPC_E_SERVER_DIED, RPC_E_SERVER_DIED_DNE, CO_E_OBJNOTCONNECTED,
                               HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)}) {
        Sink& vanished = NewSink();
        vanished.onInvoke = [gone](DISPID, DISPPARAMS&, EXCEPINFO&) { return gone; };
        Connect(vanished);
        EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status)) << Hex(gone);
        EXPECT_EQ(0u, vanished.references) << Hex(gone);
    }
}

TEST_F(TimerEvents, SinkMayDisconnectItselfAndOthersInsideItsCall) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    Sink& third = NewSink();
    DWORD own = 0;
    DWORD others = 0;
    first.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        EXPECT_EQ(Hex(S_OK), Hex(Disconnect(own)));
        EXPECT_EQ(Hex(S_OK), Hex(Disconnect(others)));
        return S_OK;
    };
    own = Connect(first);
    others = Connect(second);
    Connect(third);

    Force(kTickEvent);

    EXPECT_EQ(1, first.calls);
    EXPECT_EQ(0, second.calls) << "it was no longer connected";
    EXPECT_EQ(1, third.calls);
    EXPECT_EQ(0u, first.references);
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
    EXPECT_EQ(0, late.calls);
    Force(kTickEvent);
    EXPECT_EQ(1, late.calls);
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
    EXPECT_EQ(0u, sink.references) << "the timer has ended";
}

TEST_F(TimerEvents, PendingAlarmKeepsTheTimerAndItsSinksAlive) {
    Sink& sink = NewSink();
    Connect(sink);
    AddRelative(100, 1);
    mTimer.Reset();
    EXPECT_EQ(1u, sink.references);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; }));
    EXPECT_EQ(0u, sink.references) << "it ends with its last row";
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
    EXPECT_EQ(1, deepest);
}

}  // namespace
}  // namespace kwo::com_test
