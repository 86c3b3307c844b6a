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
        EXPECT_EQ(cookie != 0, SUCCEEDED(status));
        return status;
    }
};

TEST_F(EventSinks, ObjectsThatHaveNeitherEventAreRefused) {
    Probe deaf;
    EXPECT_EQ(Hex(Advise(&deaf)), Hex(CONNECT_E_CANNOTCONNECT));
    EXPECT_EQ(deaf.references, 0u);
    const ComPtr<IDispatch> registry = Create(L"KWORegistry");
    EXPECT_EQ(Hex(Advise(registry.Get())), Hex(CONNECT_E_CANNOTCONNECT));
    Sink& other = NewSink();
    other.member = L"Elapsed";
    EXPECT_EQ(Hex(Advise(&other)), Hex(CONNECT_E_CANNOTCONNECT));
}

TEST_F(EventSinks, LateBoundObjectsAreCalledByTheirOwnIdentifiersOfTheEventsTheyHave) {
    Sink& listener = NewSink();
    listener.member = L"ALARM";
    std::vector<DISPID> ids;
    listener.onInvoke = [&](DISPID id, DISPPARAMS&, EXCEPINFO&) {
        ids.push_back(id);
        return S_OK;
    };
    ASSERT_EQ(Hex(Advise(&listener)), Hex(S_OK));

    EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK));
    EXPECT_EQ(Hex(Force(kAlarmEvent, 3).status), Hex(S_OK));
    EXPECT_EQ(ids, std::vector<DISPID>{77});
}

TEST_F(EventSinks, ObjectsThatKnowNoNamesAreCalledByTheEventsIdentifiers) {
    Sink& sink = NewSink();
    std::vector<DISPID> ids;
    sink.onInvoke = [&](DISPID id, DISPPARAMS&, EXCEPINFO&) {
        ids.push_back(id);
        return S_OK;
    };
    ASSERT_EQ(Hex(Advise(&sink)), Hex(S_OK));

    Force(kTickEvent);
    Force(kAlarmEvent, 3);
    EXPECT_EQ(ids, (std::vector<DISPID>{kTickEvent, kAlarmEvent}));
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
        ASSERT_EQ(Hex(Advise(&sink)), Hex(S_OK));
        Force(kTickEvent);
        EXPECT_EQ(sink.calls, 1);
        mTimer.Reset();
        EXPECT_EQ(sink.references, 0u);
    }
    mTimer = Create(L"KWOTimer");
    DescribedSink other(TypeInfoOf(mLibrary.Get(), L"_KWORegistry"));
    EXPECT_EQ(Hex(Advise(&other)), Hex(CONNECT_E_CANNOTCONNECT));
}

}  // namespace
}  // namespace kwo::com_test
