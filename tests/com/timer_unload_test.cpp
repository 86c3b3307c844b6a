#include <atomic>

#include "allocation_count.h"
#include "dll_under_test.h"
#include "process_resources.h"
#include "thread.h"
#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// The life of the DLL around timers: its own copy in the process, loaded by nobody else.
class TimerUnloading : public TimerClient {
protected:
    void SetUp() override {
        ASSERT_TRUE(LetTheDllGo()) << "an earlier test still holds the DLL";
        const ComPtr<ITypeLib> library = TypeLibraryOfTheDll();
        ASSERT_TRUE(library);
        mEvents = TypeAttributes(*TypeInfoOf(library.Get(), L"__KWOTimer"))->guid;
        mTickInterface = TypeAttributes(*TypeInfoOf(library.Get(), L"_IKWOTimer"))->guid;
        mClass = TypeAttributes(*TypeInfoOf(library.Get(), L"KWOTimer"))->guid;
    }
    ComPtr<IDispatch> Make(const Library& library) const {
        ComPtr<IClassFactory> factory;
        ComPtr<IDispatch> object;
        EXPECT_EQ(Hex(library.GetClassObject(mClass, IID_IClassFactory, factory.OutVoid())), Hex(S_OK));
        EXPECT_EQ(Hex(factory->CreateInstance(nullptr, IID_IDispatch, object.OutVoid())), Hex(S_OK));
        return object;
    }
    /// Everything that a timer does, and its end.
    void UseATimer(const Library& library) {
        Sink sink;
        Sink late;
        late.member = L"Alarm";
        EarlyTick tick;
        tick.interfaceId = mTickInterface;
        ComPtr<IDispatch> timer = Make(library);
        const DWORD cookie = Connect(sink, PointOf(timer.Get()).Get());
        Let(timer.Get(), L"Item", L"text");
        Let(timer.Get(), L"Interval", 5);
        Let(timer.Get(), L"Enabled", true);
        EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 1; }));
        Set(timer.Get(), L"TimerEvents", static_cast<IDispatch*>(&tick));
        Set(timer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&late));
        Call(timer.Get(), L"AddRelativeAlarm", {2, 7});
        EXPECT_TRUE(ProcessUntil([&] { return tick.calls >= 1 && late.calls == 1; }));
        Call(timer.Get(), L"AddAlarm", {Var::Date(1e300), 7});
        Call(timer.Get(), L"AddAlarm", {Var::Date(80'000), 8});
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
        EXPECT_EQ(Hex(Call(timer.Get(), L"CancelTimers").status), Hex(S_OK));
        EXPECT_EQ(Hex(PointOf(timer.Get())->Unadvise(cookie)), Hex(S_OK));
        EXPECT_EQ(timer.Reset(), 0u);
        EXPECT_EQ(sink.references + late.references + tick.references, 0u);
    }

    IID mTickInterface = {};
    CLSID mClass = {};
};

TEST_F(TimerUnloading, PendingTickKeepsTheDllUntilItIsCancelled) {
    const Library library;
    Sink sink;
    ComPtr<IDispatch> timer = Make(library);
    Connect(sink, PointOf(timer.Get()).Get());
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
        if (sink.calls == 2) Call(arguments.rgvarg[0].pdispVal, L"CancelTimers");
        return S_OK;
    };
    Let(timer.Get(), L"Interval", 10);
    Let(timer.Get(), L"Enabled", true);
    timer.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));

    EXPECT_TRUE(ProcessUntil([&] { return sink.references == 0; }));
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(TimerUnloading, FarAlarmKeepsTheDllUntilItIsCancelled) {
    const Library library;
    ComPtr<IDispatch> timer = Make(library);
    EXPECT_EQ(Hex(Call(timer.Get(), L"AddAlarm", {Var::Date(80'000), 1}).status), Hex(S_OK));
    EXPECT_EQ(Hex(Call(timer.Get(), L"CancelTimers", {2, 5}).status), Hex(S_OK));
    IDispatch* const borrowed = timer.Get();
    ASSERT_EQ(timer.Reset(), 1u) << "the row holds it";
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));

    EXPECT_EQ(Hex(Call(borrowed, L"CancelTimers", {2, 1}).status), Hex(S_OK));
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(TimerUnloading, PartsOfATimerKeepTheDll) {
    const Library library;
    ComPtr<IDispatch> timer = Make(library);
    Sink sink;
    ComPtr<IConnectionPoint> point = PointOf(timer.Get());
    Connect(sink, point.Get());
    timer.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE));
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(Hex(point->EnumConnections(connections.Out())), Hex(S_OK));
    point.Reset();
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_FALSE)) << "the list's code is in the DLL";
    connections.Reset();
    EXPECT_EQ(sink.references, 0u);
    EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
}

TEST_F(TimerUnloading, AHundredRoundsOfArmedTimersLeaveNothingBehind) {
    const auto round = [this] {
        const Library library;
        UseATimer(library);
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK));
    };
    for (int i = 0; i < 3; ++i)
        round();
    const long before = HandlesInUse();
    for (int i = 0; i < 100; ++i) {
        round();
        ASSERT_EQ(GetModuleHandleW(L"KWOUtil.dll"), nullptr) << "round " << i;
        ASSERT_FALSE(HasFailure()) << "round " << i;
    }

    EXPECT_LT(HandlesInUse(), before + 20);
}

TEST_F(TimerUnloading, UseOfTimersTakesNoMemoryForGood) {
    const Library library;
    const ComPtr<IDispatch> keepsTheApartmentUsed = Make(library);
    for (int i = 0; i < 5; ++i)
        UseATimer(library);
    const long blocks = HeapBlocksInUse();
    const long automation = AllocationCount::Instance().InUse();
    for (int i = 0; i < 40; ++i)
        UseATimer(library);

    EXPECT_EQ(AllocationCount::Instance().InUse(), automation);
    EXPECT_LT(HeapBlocksInUse(), blocks + 40) << "less than one block a round";
}

TEST_F(TimerUnloading, ThreadThatEndsWithAnArmedTimerLeavesNothingBehind) {
    for (const bool leavesItsApartment : {true, false}) {
        Sink sink;
        Sink item;
        Sink late;
        late.member = L"Alarm";
        EarlyTick tick;
        tick.interfaceId = mTickInterface;
        const Library library;
        Thread([&] {
            if (leavesItsApartment) CoInitialize(nullptr);
            ComPtr<IDispatch> timer = Make(library);
            Connect(sink, PointOf(timer.Get()).Get());
            Set(timer.Get(), L"Item", static_cast<IDispatch*>(&item));
            Set(timer.Get(), L"TimerEvents", static_cast<IDispatch*>(&tick));
            Set(timer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&late));
            Let(timer.Get(), L"Interval", 5);
            Let(timer.Get(), L"Enabled", true);
            Call(timer.Get(), L"AddRelativeAlarm", {90'000, 1});
            EXPECT_TRUE(ProcessUntil([&] { return tick.calls >= 2; }));
            timer.Reset();
            EXPECT_NE(tick.references, 0u) << "the pending tick holds it";
            if (leavesItsApartment) CoUninitialize();
        }).Join();

        EXPECT_EQ(sink.references, 0u) << leavesItsApartment;
        EXPECT_EQ(item.references, 0u) << leavesItsApartment;
        EXPECT_EQ(tick.references, 0u) << leavesItsApartment;
        EXPECT_EQ(late.references, 0u) << leavesItsApartment;
        EXPECT_EQ(Hex(library.CanUnloadNow()), Hex(S_OK)) << leavesItsApartment;
    }
}

TEST_F(TimerUnloading, ThreadThatStaysInItsApartmentKeepsItsTicks) {
    Sink sink;
    const Library library;
    ComPtr<IDispatch> timer = Make(library);
    Connect(sink, PointOf(timer.Get()).Get());
    Let(timer.Get(), L"Interval", 5);
    Let(timer.Get(), L"Enabled", true);

    EXPECT_EQ(Hex(CoInitialize(nullptr)), Hex(S_FALSE));
    CoUninitialize();
    Thread([] {
        CoInitialize(nullptr);
        CoUninitialize();
    }).Join();

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 3; }));
    Call(timer.Get(), L"CancelTimers");
}

TEST_F(TimerUnloading, ThreadThatEndsWithAnArmedTimerTakesItsTicksAlong) {
    Sink theirs;
    Sink mine;
    const Library library;
    Thread([&] {
        CoInitialize(nullptr);
        ComPtr<IDispatch> timer = Make(library);
        Connect(theirs, PointOf(timer.Get()).Get());
        Let(timer.Get(), L"Interval", 5);
        Let(timer.Get(), L"Enabled", true);
        EXPECT_TRUE(ProcessUntil([&] { return theirs.calls >= 2; }));
        timer.Reset();
        CoUninitialize();
    }).Join();
    const int calls = theirs.calls;

    ComPtr<IDispatch> timer = Make(library);
    Connect(mine, PointOf(timer.Get()).Get());
    Let(timer.Get(), L"Interval", 20);
    Let(timer.Get(), L"Enabled", true);
    EXPECT_TRUE(ProcessUntil([&] { return mine.calls >= 5; }));
    EXPECT_EQ(theirs.calls, calls);
    Call(timer.Get(), L"CancelTimers");
    EXPECT_EQ(timer.Reset(), 0u);
    EXPECT_EQ(mine.references, 0u);
}

/// A thread with an apartment, a timer and a sink of its own; it processes messages until it is told to end.
class TickingThread {
public:
    explicit TickingThread(const IID& events) : mThread([this, events] { Work(events); }) {}
    ~TickingThread() { End(); }
    void End() {
        mEnd = true;
        mThread.Join();
    }
    int Ticks() const { return mTicks; }
    bool AllOnItsOwnThread() const { return mAllOnItsOwnThread; }

private:
    void Work(const IID& events) {
        if (FAILED(CoInitialize(nullptr))) return;
        Tick(events);
        CoUninitialize();
    }
    void Tick(const IID& events) {
        Sink sink;
        ComPtr<IDispatch> timer = Create(L"KWOTimer");
        const DWORD thread = GetCurrentThreadId();
        sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            if (GetCurrentThreadId() != thread || arguments.rgvarg[0].pdispVal != timer.Get()) {
                mAllOnItsOwnThread = false;
            }
            ++mTicks;
            return S_OK;
        };
        ComPtr<IConnectionPoint> point;
        As<IConnectionPointContainer>(timer.Get(), IID_IConnectionPointContainer)
            ->FindConnectionPoint(events, point.Out());
        DWORD cookie = 0;
        point->Advise(&sink, &cookie);
        point.Reset();
        Let(timer.Get(), L"Interval", 10);
        Let(timer.Get(), L"Enabled", true);
        while (!mEnd) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
        Call(timer.Get(), L"CancelTimers");
        timer.Reset();
        if (sink.references != 0) mAllOnItsOwnThread = false;
    }

    std::atomic<int> mTicks = 0;
    std::atomic<bool> mEnd = false;
    std::atomic<bool> mAllOnItsOwnThread = true;
    Thread mThread;
};

TEST_F(TimerUnloading, EndOfOneApartmentLeavesTheTicksOfTheOthers) {
    Sink sink;
    ComPtr<IDispatch> timer = Create(L"KWOTimer");
    Connect(sink, PointOf(timer.Get()).Get());
    Let(timer.Get(), L"Interval", 10);
    Let(timer.Get(), L"Enabled", true);
    TickingThread staying(mEvents);
    {
        TickingThread ending(mEvents);
        EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 3 && staying.Ticks() >= 3 && ending.Ticks() >= 3; }));
        ending.End();
        EXPECT_TRUE(ending.AllOnItsOwnThread());
    }
    const int mine = sink.calls;
    const int theirs = staying.Ticks();
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= mine + 3 && staying.Ticks() >= theirs + 3; }));

    Call(timer.Get(), L"CancelTimers");
    const int cancelled = sink.calls;
    const int after = staying.Ticks();
    EXPECT_TRUE(ProcessUntil([&] { return staying.Ticks() >= after + 3; })) << "one's cancelling is not the other's";
    EXPECT_EQ(sink.calls, cancelled);
    staying.End();
    EXPECT_TRUE(staying.AllOnItsOwnThread());
    timer.Reset();
    EXPECT_EQ(sink.references, 0u);
    EXPECT_TRUE(LetTheDllGo());
}

}  // namespace
}  // namespace kwo::com_test
