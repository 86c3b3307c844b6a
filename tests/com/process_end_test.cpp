#include "process_end.h"

#include <utility>

#include "dll_under_test.h"
#include "second_instance.h"
#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr int kNotReady = 3;
constexpr UINT kWasReleased = 77;

bool theProcessEnds = false;

/// At the end of a process the host's objects are gone, or belonged to threads that are gone: nobody may call them.
class LastingSink final : public Sink {
public:
    STDMETHODIMP_(ULONG) Release() override {
        if (theProcessEnds) TerminateProcess(GetCurrentProcess(), kWasReleased);
        return Sink::Release();
    }
};

using ReleaseFunction = ULONG(STDMETHODCALLTYPE*)(ITypeInfo*);
ReleaseFunction theSystemsRelease = nullptr;

ULONG STDMETHODCALLTYPE ReleaseTypeInfo(ITypeInfo* info) {
    if (theProcessEnds) TerminateProcess(GetCurrentProcess(), kWasReleased);
    return theSystemsRelease(info);
}

/// The DLL holds type information of its classes; from now on the release of one is seen.
bool WatchTypeInfo(IDispatch* object) {
    ComPtr<ITypeInfo> info;
    if (FAILED(object->GetTypeInfo(0, 0, info.Out()))) return false;
    constexpr std::size_t kPlaceOfRelease = 2;
    auto* const place = *reinterpret_cast<ReleaseFunction**>(info.Get()) + kPlaceOfRelease;
    DWORD protection = 0;
    if (!VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection)) return false;
    theSystemsRelease = std::exchange(*place, &ReleaseTypeInfo);
    return true;
}

bool Arm(const Library& library, Sink& sink) {
    const ComPtr<ITypeLib> types = TypeLibraryOfTheDll();
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> timer;
    ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    if (FAILED(library.GetClassObject(TypeAttributes(*TypeInfoOf(types.Get(), L"KWOTimer"))->guid, IID_IClassFactory,
                                      factory.OutVoid()))) {
        return false;
    }
    if (FAILED(factory->CreateInstance(nullptr, IID_IDispatch, timer.OutVoid()))) return false;
    if (!WatchTypeInfo(timer.Get())) return false;
    const auto container = As<IConnectionPointContainer>(timer.Get(), IID_IConnectionPointContainer);
    const IID events = TypeAttributes(*TypeInfoOf(types.Get(), L"__KWOTimer"))->guid;
    if (FAILED(container->FindConnectionPoint(events, point.Out())) || FAILED(point->Advise(&sink, &cookie)))
        return false;
    return SUCCEEDED(Let(timer.Get(), L"Interval", 10).status) && SUCCEEDED(Let(timer.Get(), L"Enabled", true).status);
}

TEST(ProcessEnd, NothingIsReleasedAnyMore) {
    EXPECT_EQ(ExitCodeOfThisProgram(kEndWithAnArmedTimer), 0u);
}

}  // namespace

int EndWithAnArmedTimer() {
    if (FAILED(CoInitialize(nullptr))) return kNotReady;
    // Neither is ever deleted: this is a process that ends without asking.
    const auto* const library = new Library();
    auto* const sink = new LastingSink();
    if (!*library || !Arm(*library, *sink) || sink->references == 0) return kNotReady;
    theProcessEnds = true;
    return 0;
}

}  // namespace kwo::com_test
