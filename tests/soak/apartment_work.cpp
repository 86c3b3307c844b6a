#include "apartment_work.h"

#include <atomic>

#include "com_test.h"
#include "dll_under_test.h"
#include "findings.h"
#include "member_work.h"
#include "message_loop.h"
#include "pulse.h"
#include "wine.h"

namespace kwo::soak {
namespace {

using com_test::Call;
using com_test::Get;
using com_test::Let;

/// One interface on its way to another apartment.
class Parcel {
public:
    Parcel(REFIID id, IUnknown* object) {
        if (FAILED(CoMarshalInterThreadInterfaceInStream(id, object, mStream.Out())))
            Found("an object cannot be passed");
    }
    template <class Interface>
    ComPtr<Interface> Open(REFIID id) {
        ComPtr<Interface> object;
        if (!mStream || FAILED(CoGetInterfaceAndReleaseStream(mStream.Detach(), id, object.OutVoid())))
            Found("an object does not arrive");
        return object;
    }

private:
    ComPtr<IStream> mStream;
};

/// Counts the alarms of a timer of its own thread.
class AlarmCount final : public com_test::Probe {
public:
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        constexpr DISPID kAlarmEvent = 2;
        if (event == kAlarmEvent) ++alarms;
        return S_OK;
    }
    int alarms = 0;
};

/// A thread that has its own timers and processes messages.
void WorkAlone(std::uint64_t seed) {
    constexpr int kAlarms = 5;
    constexpr int kAlarmMs = 60;
    Random random(seed);
    AlarmCount sink;
    {
        LiveObject timer(L"KWOTimer");
        auto container = com_test::As<IConnectionPointContainer>(timer.Get(), IID_IConnectionPointContainer);
        ComPtr<IEnumConnectionPoints> points;
        ComPtr<IConnectionPoint> point;
        DWORD cookie = 0;
        if (!container || FAILED(container->EnumConnectionPoints(points.Out())) ||
            points->Next(1, point.Out(), nullptr) != S_OK || FAILED(point->GetConnectionInterface(&sink.interfaceId)) ||
            FAILED(point->Advise(&sink, &cookie)))
            Found("a thread's timer has no events");
        Let(timer.Get(), L"Interval", 30);
        Let(timer.Get(), L"Enabled", true);
        for (int at = 1; at <= kAlarms; ++at)
            Call(timer.Get(), L"AddRelativeAlarm", {at * kAlarmMs, at});
        UseMetrics(random);
        // Wine's font objects of all threads measure with one device context. While a thread uses it, the fonts of
        // another thread find no name: only those of the first thread may be asked.
        com_test::IsWine() ? MakeFonts() : UseFonts(random);
        UseRegistry(random);
        const double begin = NowMs();
        while (sink.alarms < kAlarms && NowMs() - begin < 5'000)
            static_cast<void>(kwohost::RunMessages(std::chrono::milliseconds(50), [] {}));
        if (sink.alarms != kAlarms) Found("alarms of another thread are lost or came twice");
        Call(timer.Get(), L"CancelTimers");
        point.Reset();
        points.Reset();
        container.Reset();
        if (!timer.End()) Found("a timer of another thread has not ended");
    }
    if (sink.references != 0) Found("a timer of another thread keeps its sink");
}

}  // namespace

ApartmentWork::ApartmentWork(std::uint64_t seed) : mTimer(L"KWOTimer"), mUtility(L"KWOUtility") {
    const auto timer = std::make_shared<Parcel>(IID_IDispatch, mTimer.Get());
    const auto utility = std::make_shared<Parcel>(IID_IDispatch, mUtility.Get());
    CLSID id = {};
    ComPtr<IClassFactory> factory;
    CLSIDFromProgID(L"KWOUtil.KWOTimer", &id);
    // Wine never releases the class object through which a free-threaded client makes an object. So it gets that of
    // this apartment.
    if (FAILED(CoGetClassObject(id, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.OutVoid()))) {
        Found("there is no class object");
        return;
    }
    const auto maker = std::make_shared<Parcel>(IID_IClassFactory, factory.Get());
    Start(COINIT_APARTMENTTHREADED, [seed] { WorkAlone(seed); });
    Start(COINIT_APARTMENTTHREADED, [seed] { WorkAlone(seed + 1); });
    Start(COINIT_APARTMENTTHREADED, [timer] {
        const auto object = timer->Open<IDispatch>(IID_IDispatch);
        if (!object) return;
        Let(object.Get(), L"Interval", 77);
        if (Get(object.Get(), L"Interval").result.lVal != 77) Found("a call from another apartment is lost");
    });
    Start(COINIT_MULTITHREADED, [utility, maker] {
        const auto object = utility->Open<IDispatch>(IID_IDispatch);
        if (object && Call(object.Get(), L"KWO_SystemDir").result.Text().empty())
            Found("a call from no apartment is lost");
        const auto factoryThere = maker->Open<IClassFactory>(IID_IClassFactory);
        ComPtr<IDispatch> made;
        if (!factoryThere || FAILED(factoryThere->CreateInstance(nullptr, IID_IDispatch, made.OutVoid())))
            return Found("a free-threaded client makes no object");
        if (Call(made.Get(), L"AddRelativeAlarm", {100'000, 1}).status != S_OK ||
            Call(made.Get(), L"CancelTimers").status != S_OK)
            Found("a free-threaded client's object does not work");
    });
}

ApartmentWork::~ApartmentWork() {
    mThreads.clear();
    if (!mTimer.End() || !mUtility.End()) Found("an object that other apartments used has not ended");
}

void ApartmentWork::Start(DWORD apartment, std::function<void()> work) {
    ++mRunning;
    mThreads.push_back(std::make_unique<com_test::Thread>([this, apartment, work = std::move(work)]() mutable {
        if (FAILED(CoInitializeEx(nullptr, apartment))) Found("a thread has no apartment");
        work();
        work = nullptr;
        CoUninitialize();
        --mRunning;
    }));
}

}  // namespace kwo::soak
