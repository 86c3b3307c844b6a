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
        EXPECT_EQ(Hex(S_OK), Hex(Point()->EnumConnections(connections.Out())));
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
    EXPECT_EQ(Hex(E_POINTER), Hex(Container()->EnumConnectionPoints(nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Point()->EnumConnections(nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Point()->GetConnectionPointContainer(nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Point()->QueryInterface(IID_IUnknown, nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Connections()->QueryInterface(IID_IUnknown, nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Connections()->Clone(nullptr)));
    CONNECTDATA data[2] = {};
    ULONG fetched = 0;
    EXPECT_EQ(Hex(E_POINTER), Hex(Connections()->Next(2, data, nullptr))) << "more than one must be counted";
    EXPECT_EQ(Hex(E_POINTER), Hex(Connections()->Next(1, nullptr, &fetched)));
}

TEST_F(TimerConnections, RefusedPlacesAreCleared) {
    void* left = this;
    EXPECT_EQ(Hex(E_NOINTERFACE), Hex(Point()->QueryInterface(IID_IDispatch, &left)));
    EXPECT_EQ(nullptr, left);
    left = this;
    EXPECT_EQ(Hex(E_NOINTERFACE), Hex(Connections()->QueryInterface(IID_IDispatch, &left)));
    EXPECT_EQ(nullptr, left);
    IConnectionPoint* point = reinterpret_cast<IConnectionPoint*>(this);
    EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(Container()->FindConnectionPoint(IID_NULL, &point)));
    EXPECT_EQ(nullptr, point);
}

TEST_F(TimerConnections, PointsAndListsHaveAnIdentityOfTheirOwn) {
    const auto point = Point();
    EXPECT_EQ(point.Get(), As<IConnectionPoint>(point.Get(), IID_IConnectionPoint).Get());
    EXPECT_EQ(point.Get(), Point().Get()) << "the same one each time";
    const auto connections = Connections();
    EXPECT_TRUE(As<IUnknown>(connections.Get(), IID_IUnknown));
    EXPECT_EQ(connections.Get(), As<IEnumConnections>(connections.Get(), IID_IEnumConnections).Get());
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(Hex(S_OK), Hex(Container()->EnumConnectionPoints(points.Out())));
    EXPECT_EQ(points.Get(), As<IEnumConnectionPoints>(points.Get(), IID_IEnumConnectionPoints).Get());
    EXPECT_FALSE(As<IEnumConnections>(points.Get(), IID_IEnumConnections));
}

TEST_F(TimerConnections, ListIsEmptyBeforeTheFirstSink) {
    CONNECTDATA data = {};
    ULONG fetched = 9;
    const auto connections = Connections();
    EXPECT_EQ(Hex(S_FALSE), Hex(connections->Next(1, &data, &fetched)));
    EXPECT_EQ(0u, fetched);
    EXPECT_EQ(Hex(S_OK), Hex(connections->Next(0, &data, &fetched)));
    EXPECT_EQ(Hex(S_OK), Hex(connections->Skip(0)));
    EXPECT_EQ(Hex(S_FALSE), Hex(connections->Skip(1)));
}

TEST_F(TimerConnections, ListSkipsGoesBackAndIsCopiedWhereItStands) {
    std::vector<DWORD> cookies;
    for (int at = 0; at < 4; ++at)
        cookies.push_back(Connect(NewSink()));
    const auto list = Connections();
    EXPECT_EQ(cookies, Rest(list.Get()));
    EXPECT_EQ(Hex(S_OK), Hex(list->Reset()));
    EXPECT_EQ(Hex(S_OK), Hex(list->Skip(1)));
    ComPtr<IEnumConnections> clone;
    ASSERT_EQ(Hex(S_OK), Hex(list->Clone(clone.Out())));

    CONNECTDATA data[2] = {};
    ULONG fetched = 0;
    ASSERT_EQ(Hex(S_OK), Hex(list->Next(2, data, &fetched)));
    EXPECT_EQ(2u, fetched);
    EXPECT_EQ(cookies[1], data[0].dwCookie);
    EXPECT_EQ(cookies[2], data[1].dwCookie);
    data[0].pUnk->Release();
    data[1].pUnk->Release();
    EXPECT_EQ(Hex(S_FALSE), Hex(list->Skip(2)));
    EXPECT_EQ(std::vector<DWORD>{}, Rest(list.Get())) << "all that there was is skipped";
    EXPECT_EQ(std::vector<DWORD>(cookies.begin() + 1, cookies.end()), Rest(clone.Get()));
    EXPECT_EQ(Hex(S_OK), Hex(clone->Reset()));
    EXPECT_EQ(cookies, Rest(clone.Get()));
}

TEST_F(TimerConnections, ListIsThatOfItsMomentAndHoldsTheSinks) {
    Sink& sink = NewSink();
    const DWORD cookie = Connect(sink);
    auto list = Connections();
    Connect(NewSink());
    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(cookie)));
    EXPECT_EQ(1u, sink.references);

    EXPECT_EQ(std::vector<DWORD>{cookie}, Rest(list.Get()));
    EXPECT_EQ(1u, sink.references);
    list.Reset();
    EXPECT_EQ(0u, sink.references);
}

TEST_F(TimerConnections, ListGoesOnWithoutItsTimer) {
    Connect(NewSink());
    const auto list = Connections();
    EXPECT_EQ(0u, mTimer.Reset()) << "it holds the sinks alone";

    EXPECT_EQ(1u, Rest(list.Get()).size());
}

TEST_F(TimerConnections, SinkThatConnectsTwiceIsCalledTwice) {
    Sink& sink = NewSink();
    const DWORD first = Connect(sink);
    const DWORD second = Connect(sink);
    EXPECT_NE(first, second);
    EXPECT_EQ(2u, sink.references);
    Force(kTickEvent);
    EXPECT_EQ(2, sink.calls);

    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(first)));
    Force(kTickEvent);
    EXPECT_EQ(3, sink.calls);
    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(second)));
    EXPECT_EQ(0u, sink.references);
}

TEST_F(TimerConnections, CookieIsNeverGivenTwice) {
    const DWORD first = Connect(NewSink());
    const DWORD second = Connect(NewSink());
    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(second)));

    const DWORD third = Connect(NewSink());
    EXPECT_NE(first, third);
    EXPECT_NE(second, third);
    EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(Disconnect(second)));
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
    ASSERT_EQ(Hex(S_OK), Hex(Point()->Advise(&sink, &cookie)));
    Force(kTickEvent);

    EXPECT_EQ(1, sink.calls);
    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(cookie)));
    EXPECT_EQ(0u, sink.references);
}

using LeavingSink = Leaving<Sink>;

TEST_F(TimerConnections, SinkThatIsLetGoMayConnectAnother) {
    LeavingSink leaving;
    Sink& staying = NewSink();
    Sink& heir = NewSink();
    DWORD cookie = 0;
    ASSERT_EQ(Hex(S_OK), Hex(Point()->Advise(&leaving, &cookie)));
    const DWORD next = Connect(staying);

    leaving.onEnd = [&] {
        EXPECT_EQ(std::vector<DWORD>{next}, Rest(Connections().Get())) << "it is out already";
        EXPECT_EQ(Hex(CONNECT_E_NOCONNECTION), Hex(Disconnect(cookie)));
        Connect(heir);
    };
    EXPECT_EQ(Hex(S_OK), Hex(Disconnect(cookie)));
    Force(kTickEvent);
    EXPECT_EQ(0, leaving.calls);
    EXPECT_EQ(1, staying.calls);
    EXPECT_EQ(1, heir.calls);
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
    ASSERT_EQ(Hex(S_OK), Hex(Point()->Advise(&leaving, &cookie)));

    EXPECT_EQ(0u, mTimer.Reset());
    EXPECT_EQ(1, ended);
}

}  // namespace
}  // namespace kwo::com_test
