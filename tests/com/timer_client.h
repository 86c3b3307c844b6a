#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "com_test.h"
#include "type_library_dump.h"

namespace kwo::com_test {

/// The slots of the callback interfaces as early-bound clients compile them, typed by hand.
struct TickSlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Tick(IDispatch** timer) = 0;
};
struct AlarmSlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Alarm(IDispatch** timer, LONG* alarmData, DATE* newDateTime) = 0;
};

/// A client's object on the stack: it counts references and has the interfaces that it is told to have.
template <class Interface>
class ClientObject : public test_support::StandIn<Interface> {
public:
    STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT, LCID locale, DISPID* ids) override {
        Look(reserved, locale);
        if (member.empty()) return E_NOTIMPL;  // as sinks that are called by identifier alone answer
        if (lstrcmpiW(names[0], member.c_str()) != 0) return DISP_E_UNKNOWNNAME;
        *ids = 77;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT*,
                        EXCEPINFO* exception, UINT*) override {
        Look(reserved, locale);
        ++calls;
        lastFlags = flags;
        EXCEPINFO unwanted = {};  // conversions to a number or a text ask for none
        return onInvoke ? onInvoke(id, *arguments, exception != nullptr ? *exception : unwanted) : S_OK;
    }

    std::wstring member;  ///< the one that late-bound callers find
    std::function<HRESULT(DISPID, DISPPARAMS&, EXCEPINFO&)> onInvoke;
    int calls = 0;
    WORD lastFlags = 0;  ///< of the last call by identifier

private:
    /// What automation prescribes for every call.
    static void Look(REFIID reserved, LCID locale) {
        EXPECT_TRUE(IsEqualIID(reserved, IID_NULL));
        EXPECT_EQ(locale, LCID{LOCALE_USER_DEFAULT});
    }
};

using Sink = ClientObject<IDispatch>;

/// Calls back when its last reference is released.
template <class Kind>
class Leaving final : public Kind {
public:
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = Kind::Release();
        if (left == 0 && onEnd) onEnd();
        return left;
    }
    std::function<void()> onEnd;
};

class EarlyTick : public ClientObject<TickSlots> {
public:
    STDMETHODIMP Tick(IDispatch** timer) override {
        ++calls;
        return onTick ? onTick(timer) : S_OK;
    }
    std::function<HRESULT(IDispatch**)> onTick;
};

class EarlyAlarm : public ClientObject<AlarmSlots> {
public:
    STDMETHODIMP Alarm(IDispatch** timer, LONG* alarmData, DATE* newDateTime) override {
        ++calls;
        return onAlarm ? onAlarm(timer, alarmData, newDateTime) : S_OK;
    }
    std::function<HRESULT(IDispatch**, LONG*, DATE*)> onAlarm;
};

/// What a raising handler leaves.
inline HRESULT Raising(EXCEPINFO& exception, SCODE scode) {
    exception.scode = scode;
    exception.bstrSource = SysAllocString(L"the handler");
    exception.bstrDescription = SysAllocString(L"it went wrong");
    return DISP_E_EXCEPTION;
}

/// A timer of the DLL under test, and a thread that processes its messages.
class TimerClient : public ::testing::Test {
protected:
    static constexpr int kTickEvent = 1;
    static constexpr int kAlarmEvent = 2;

    void SetUp() override {
        mLibrary = TypeLibraryOfTheDll();
        ASSERT_TRUE(mLibrary);
        mEvents = IdOfType(L"__KWOTimer");
        mTimer = Create(L"KWOTimer");
        ASSERT_TRUE(mTimer);
    }
    void TearDown() override {
        if (mTimer) Call(mTimer.Get(), L"CancelTimers");
        mTimer.Reset();
        for (const Sink& sink : mSinks)
            EXPECT_EQ(sink.references, 0u);
    }

    /// A sink that outlives the timer. At the end nothing may hold it.
    Sink& NewSink() { return mSinks.emplace_back(); }

    IID IdOfType(const wchar_t* name) { return TypeAttributes(*TypeInfoOf(mLibrary.Get(), name))->guid; }

    ComPtr<IConnectionPoint> PointOf(IDispatch* timer) {
        const auto container = As<IConnectionPointContainer>(timer, IID_IConnectionPointContainer);
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(Hex(container->FindConnectionPoint(mEvents, point.Out())), Hex(S_OK));
        return point;
    }
    ComPtr<IConnectionPoint> Point() { return PointOf(mTimer.Get()); }
    static DWORD Connect(Sink& sink, IConnectionPoint* point) {
        DWORD cookie = 0;
        EXPECT_EQ(Hex(point->Advise(&sink, &cookie)), Hex(S_OK));
        return cookie;
    }
    DWORD Connect(Sink& sink) { return Connect(sink, Point().Get()); }
    HRESULT Disconnect(DWORD cookie) { return Point()->Unadvise(cookie); }

    /// Messages are processed until `done`, or much too long.
    static bool ProcessUntil(const std::function<bool()>& done) {
        constexpr DWORD kTooLongMs = 20'000;
        const DWORD begin = GetTickCount();
        while (!done() && GetTickCount() - begin < kTooLongMs) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            Process();
        }
        return done();
    }
    static void ProcessFor(DWORD ms) {
        const DWORD begin = GetTickCount();
        while (GetTickCount() - begin < ms) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            Process();
        }
    }
    /// Messages are processed until an alarm of another timer, `ms` from now, has come: what was due before it has been
    /// delivered by then.
    void WaitForAnother(int ms) {
        Sink& sink = NewSink();
        const ComPtr<IDispatch> other = Create(L"KWOTimer");
        Connect(sink, PointOf(other.Get()).Get());
        EXPECT_EQ(Hex(Call(other.Get(), L"AddRelativeAlarm", {ms, 1}).status), Hex(S_OK));
        EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; }));
    }
    static void Process() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }

    void Start(int intervalMs) {
        EXPECT_EQ(Hex(Let(mTimer.Get(), L"Interval", intervalMs).status), Hex(S_OK));
        EXPECT_EQ(Hex(Let(mTimer.Get(), L"Enabled", true).status), Hex(S_OK));
    }
    Outcome AddRelative(int ms, int tag) { return Call(mTimer.Get(), L"AddRelativeAlarm", {ms, tag}); }
    Outcome Force(int type, int tag = 0) { return Call(mTimer.Get(), L"TimerTick", {type, tag}); }

    std::deque<Sink> mSinks;
    ComPtr<ITypeLib> mLibrary;
    IID mEvents = {};
    ComPtr<IDispatch> mTimer;
};

}  // namespace kwo::com_test
