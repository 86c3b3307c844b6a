#include <olectl.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// Who may connect to the events.
class EventSinks : public TimerClient {
protected:
    HRESULT Advise(IUnknown* sink) {
        DWORD cookie = 99;
        const HRESULT status = Point()->Advise(sink, &cookie);
        EXPECT_EQ(SUCCEEDED(status), cookie != 0);
        return status;
    }
};

TEST_F(EventSinks, ObjectsThatHaveNeitherEventAreRefused) {
    Probe deaf;
    EXPECT_EQ(Hex(CONNECT_E_CANNOTCONNECT), Hex(Advise(&deaf)));
    EXPECT_EQ(0u, deaf.references);
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    EXPECT_EQ(Hex(CONNECT_E_CANNOTCONNECT), Hex(Advise(registry.Get())));
    Sink& other = NewSink();
    other.member = L"Elapsed";
    EXPECT_EQ(Hex(CONNECT_E_CANNOTCONNECT), Hex(Advise(&other)));
}

TEST_F(EventSinks, LateBoundObjectsAreCalledByTheirOwnIdentifiersOfTheEventsTheyHave) {
    Sink& listener = NewSink();
    listener.member = L"ALARM";
    std::vector<DISPID> ids;
    listener.onInvoke = [&](DISPID id, DISPPARAMS&, EXCEPINFO&) {
        ids.push_back(id);
        return S_OK;
    };
    ASSERT_EQ(Hex(S_OK), Hex(Advise(&listener)));

    EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status));
    EXPECT_EQ(Hex(S_OK), Hex(Force(kAlarmEvent, 3).status));
    EXPECT_EQ(std::vector<DISPID>{77}, ids);
}

TEST_F(EventSinks, ObjectsThatKnowNoNamesAreCalledByTheEventsIdentifiers) {
    Sink& sink = NewSink();
    std::vector<DISPID> ids;
    sink.onInvoke = [&](DISPID id, DISPPARAMS&, EXCEPINFO&) {
        ids.push_back(id);
        return S_OK;
    };
    ASSERT_EQ(Hex(S_OK), Hex(Advise(&sink)));

    Force(kTickEvent);
    Force(kAlarmEvent, 3);
    EXPECT_EQ((std::vector<DISPID>{kTickEvent, kAlarmEvent}), ids);
}

/// Described by the type library's event interface, and found by no name.
class DescribedSink final : public ClientObject<IDispatch> {
public:
    explicit DescribedSink(ComPtr<ITypeInfo> description) : mDescription(std::move(description)) {}
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = mDescription.Get();
        mDescription->AddRef();
        return S_OK;
    }

private:
    ComPtr<ITypeInfo> mDescription;
};

TEST_F(EventSinks, ObjectsThatDescribeTheEventsIdentifiersAreTaken) {
    {
        DescribedSink sink(TypeInfoOf(mLibrary.Get(), L"__KWOTimer"));
        ASSERT_EQ(Hex(S_OK), Hex(Advise(&sink)));
        Force(kTickEvent);
        EXPECT_EQ(1, sink.calls);
        mTimer.Reset();
        EXPECT_EQ(0u, sink.references);
    }
    mTimer = Create(L"KWOTimer");
    DescribedSink other(TypeInfoOf(mLibrary.Get(), L"_KWORegistry"));
    EXPECT_EQ(Hex(CONNECT_E_CANNOTCONNECT), Hex(Advise(&other)));
}

}  // namespace
}  // namespace kwo::com_test
