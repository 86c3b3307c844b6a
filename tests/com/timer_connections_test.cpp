#include <olectl.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// The points and connections of a timer as containers list them.
class TimerConnections : public TimerClient {
protected:
    ComPtr<IConnectionPointContainer> Container() {
        return As<IConnectionPointContainer>(mTimer.Get(), IID_IConnectionPointContainer);
    }
    ComPtr<IEnumConnections> Connections() {
        ComPtr<IEnumConnections> connections;
        EXPECT_EQ(Hex(Point()->EnumConnections(connections.Out())), Hex(S_OK));
        return connections;
    }
    /// The cookies that are left, each sink released.
    static std::vector<DWORD> Rest(IEnumConnections* connections) {
        std::vector<DWORD> cookies;
        CONNECTDATA data = {};
        while (connections->Next(1, &data, nullptr) == S_OK) {
            cookies.push_back(data.dwCookie);
            data.pUnk->Release();
        }
        return cookies;
    }
};

TEST_F(TimerConnections, NullPlacesAreRefused) {
    EXPECT_EQ(Hex(Container()->EnumConnectionPoints(nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Point()->EnumConnections(nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Point()->GetConnectionPointContainer(nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Point()->QueryInterface(IID_IUnknown, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Connections()->QueryInterface(IID_IUnknown, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Connections()->Clone(nullptr)), Hex(E_POINTER));
    CONNECTDATA data[2] = {};
    ULONG fetched = 0;
    EXPECT_EQ(Hex(Connections()->Next(2, data, nullptr)), Hex(E_POINTER)) << "more than one must be counted";
    EXPECT_EQ(Hex(Connections()->Next(1, nullptr, &fetched)), Hex(E_POINTER));
}

TEST_F(TimerConnections, RefusedPlacesAreCleared) {
    void* left = this;
    EXPECT_EQ(Hex(Point()->QueryInterface(IID_IDispatch, &left)), Hex(E_NOINTERFACE));
    EXPECT_EQ(left, nullptr);
    left = this;
    EXPECT_EQ(Hex(Connections()->QueryInterface(IID_IDispatch, &left)), Hex(E_NOINTERFACE));
    EXPECT_EQ(left, nullptr);
    IConnectionPoint* point = reinterpret_cast<IConnectionPoint*>(this);
    EXPECT_EQ(Hex(Container()->FindConnectionPoint(IID_NULL, &point)), Hex(CONNECT_E_NOCONNECTION));
    EXPECT_EQ(point, nullptr);
}

TEST_F(TimerConnections, PointsAndListsHaveAnIdentityOfTheirOwn) {
    const auto point = Point();
    EXPECT_EQ(As<IConnectionPoint>(point.Get(), IID_IConnectionPoint).Get(), point.Get());
    EXPECT_EQ(Point().Get(), point.Get()) << "the same one each time";
    const auto connections = Connections();
    EXPECT_TRUE(As<IUnknown>(connections.Get(), IID_IUnknown));
    EXPECT_EQ(As<IEnumConnections>(connections.Get(), IID_IEnumConnections).Get(), connections.Get());
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(Hex(Container()->EnumConnectionPoints(points.Out())), Hex(S_OK));
    EXPECT_EQ(As<IEnumConnectionPoints>(points.Get(), IID_IEnumConnectionPoints).Get(), points.Get());
    EXPECT_FALSE(As<IEnumConnections>(points.Get(), IID_IEnumConnections));
}

TEST_F(TimerConnections, ListIsEmptyBeforeTheFirstSink) {
    CONNECTDATA data = {};
    ULONG fetched = 9;
    const auto connections = Connections();
    EXPECT_EQ(Hex(connections->Next(1, &data, &fetched)), Hex(S_FALSE));
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(Hex(connections->Next(0, &data, &fetched)), Hex(S_OK));
    EXPECT_EQ(Hex(connections->Skip(0)), Hex(S_OK));
    EXPECT_EQ(Hex(connections->Skip(1)), Hex(S_FALSE));
}

TEST_F(TimerConnections, ListSkipsGoesBackAndIsCopiedWhereItStands) {
    std::vector<DWORD> cookies;
    for (int at = 0; at < 4; ++at)
        cookies.push_back(Connect(NewSink()));
    const auto list = Connections();
    EXPECT_EQ(Rest(list.Get()), cookies);
    EXPECT_EQ(Hex(list->Reset()), Hex(S_OK));
    EXPECT_EQ(Hex(list->Skip(1)), Hex(S_OK));
    ComPtr<IEnumConnections> clone;
    ASSERT_EQ(Hex(list->Clone(clone.Out())), Hex(S_OK));

    CONNECTDATA data[2] = {};
    ULONG fetched = 0;
    ASSERT_EQ(Hex(list->Next(2, data, &fetched)), Hex(S_OK));
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(data[0].dwCookie, cookies[1]);
    EXPECT_EQ(data[1].dwCookie, cookies[2]);
    data[0].pUnk->Release();
    data[1].pUnk->Release();
    EXPECT_EQ(Hex(list->Skip(2)), Hex(S_FALSE));
    EXPECT_EQ(Rest(list.Get()), std::vector<DWORD>{}) << "all that there was is skipped";
    EXPECT_EQ(Rest(clone.Get()), std::vector<DWORD>(cookies.begin() + 1, cookies.end()));
    EXPECT_EQ(Hex(clone->Reset()), Hex(S_OK));
    EXPECT_EQ(Rest(clone.Get()), cookies);
}

TEST_F(TimerConnections, ListIsThatOfItsMomentAndHoldsTheSinks) {
    Sink& sink = NewSink();
    const DWORD cookie = Connect(sink);
    auto list = Connections();
    Connect(NewSink());
    EXPECT_EQ(Hex(Disconnect(cookie)), Hex(S_OK));
    EXPECT_EQ(sink.references, 1u);

    EXPECT_EQ(Rest(list.Get()), std::vector<DWORD>{cookie});
    EXPECT_EQ(sink.references, 1u);
    list.Reset();
    EXPECT_EQ(sink.references, 0u);
}

TEST_F(TimerConnections, ListGoesOnWithoutItsTimer) {
    Connect(NewSink());
    const auto list = Connections();
    EXPECT_EQ(mTimer.Reset(), 0u) << "it holds the sinks alone";

    EXPECT_EQ(Rest(list.Get()).size(), 1u);
}

TEST_F(TimerConnections, SinkThatConnectsTwiceIsCalledTwice) {
    Sink& sink = NewSink();
    const DWORD first = Connect(sink);
    const DWORD second = Connect(sink);
    EXPECT_NE(second, first);
    EXPECT_EQ(sink.references, 2u);
    Force(kTickEvent);
    EXPECT_EQ(sink.calls, 2);

    EXPECT_EQ(Hex(Disconnect(first)), Hex(S_OK));
    Force(kTickEvent);
    EXPECT_EQ(sink.calls, 3);
    EXPECT_EQ(Hex(Disconnect(second)), Hex(S_OK));
    EXPECT_EQ(sink.references, 0u);
}

TEST_F(TimerConnections, CookieIsNeverGivenTwice) {
    const DWORD first = Connect(NewSink());
    const DWORD second = Connect(NewSink());
    EXPECT_EQ(Hex(Disconnect(second)), Hex(S_OK));

    const DWORD third = Connect(NewSink());
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
    EXPECT_EQ(Hex(Disconnect(second)), Hex(CONNECT_E_NOCONNECTION));
}

/// Has the event interface but not IDispatch, although its interface is called as one.
class EventsOnly final : public ClientObject<IDispatch> {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (iid != IID_IDispatch) return ClientObject<IDispatch>::QueryInterface(iid, object);
        *object = nullptr;
        return E_NOINTERFACE;
    }
};

TEST_F(TimerConnections, SinkOfTheEventInterfaceAloneIsCalled) {
    EventsOnly sink;
    sink.interfaceId = mEvents;
    DWORD cookie = 0;
    ASSERT_EQ(Hex(Point()->Advise(&sink, &cookie)), Hex(S_OK));
    Force(kTickEvent);

    EXPECT_EQ(sink.calls, 1);
    EXPECT_EQ(Hex(Disconnect(cookie)), Hex(S_OK));
    EXPECT_EQ(sink.references, 0u);
}

using LeavingSink = Leaving<Sink>;

TEST_F(TimerConnections, SinkThatIsLetGoMayConnectAnother) {
    LeavingSink leaving;
    Sink& staying = NewSink();
    Sink& heir = NewSink();
    DWORD cookie = 0;
    ASSERT_EQ(Hex(Point()->Advise(&leaving, &cookie)), Hex(S_OK));
    const DWORD next = Connect(staying);

    leaving.onEnd = [&] {
        EXPECT_EQ(Rest(Connections().Get()), std::vector<DWORD>{next}) << "it is out already";
        EXPECT_EQ(Hex(Disconnect(cookie)), Hex(CONNECT_E_NOCONNECTION));
        Connect(heir);
    };
    EXPECT_EQ(Hex(Disconnect(cookie)), Hex(S_OK));
    Force(kTickEvent);
    EXPECT_EQ(leaving.calls, 0);
    EXPECT_EQ(staying.calls, 1);
    EXPECT_EQ(heir.calls, 1);
}

TEST_F(TimerConnections, SinkMayReachForTheTimerThatEndsWithIt) {
    LeavingSink leaving;
    IDispatch* const timer = mTimer.Get();
    int ended = 0;
    leaving.onEnd = [&] {
        ++ended;
        timer->AddRef();
        timer->Release();
    };
    DWORD cookie = 0;
    ASSERT_EQ(Hex(Point()->Advise(&leaving, &cookie)), Hex(S_OK));

    EXPECT_EQ(mTimer.Reset(), 0u);
    EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace kwo::com_test
