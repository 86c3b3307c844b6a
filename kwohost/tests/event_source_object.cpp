#include "event_source_object.h"

#include <olectl.h>

#include <algorithm>

#include "com_support/exception_info.h"

namespace kwohost::tests {

namespace {

constexpr GUID kLibrary = {0x5C0D7E31, 0x2B64, 0x4F0A, {0x9E, 0x11, 0x3A, 0x77, 0x20, 0x6B, 0xD4, 0x01}};
constexpr GUID kEvents = {0x5C0D7E32, 0x2B64, 0x4F0A, {0x9E, 0x11, 0x3A, 0x77, 0x20, 0x6B, 0xD4, 0x01}};
constexpr GUID kClass = {0x5C0D7E33, 0x2B64, 0x4F0A, {0x9E, 0x11, 0x3A, 0x77, 0x20, 0x6B, 0xD4, 0x01}};

void AddEvent(ICreateTypeInfo* events, UINT index, DISPID id, const wchar_t* name) {
    FUNCDESC event = {};
    event.memid = id;
    event.funckind = FUNC_DISPATCH;
    event.invkind = INVOKE_FUNC;
    event.callconv = CC_STDCALL;
    event.elemdescFunc.tdesc.vt = VT_VOID;
    Check(events->AddFuncDesc(index, &event));
    auto* text = const_cast<LPOLESTR>(name);
    Check(events->SetFuncAndParamNames(index, &text, 1));
}

/// A class with one default source interface, described in memory.
ComPtr<ITypeInfo> DescribeClass() {
    ComPtr<ICreateTypeLib2> library;
    Check(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, L"event_source.tlb", library.Out()));
    Check(library->SetGuid(kLibrary));

    ComPtr<ICreateTypeInfo> events;
    Check(library->CreateTypeInfo(const_cast<LPOLESTR>(L"_SourceEvents"), TKIND_DISPATCH, events.Out()));
    Check(events->SetGuid(kEvents));
    AddEvent(events.Get(), 0, EventSourceObject::kTick, L"Tick");
    AddEvent(events.Get(), 1, EventSourceObject::kAsk, L"Ask");
    Check(events->LayOut());

    ComPtr<ICreateTypeInfo> description;
    ComPtr<ITypeInfo> eventsInfo;
    ComPtr<ITypeInfo> info;
    HREFTYPE reference = 0;
    Check(library->CreateTypeInfo(const_cast<LPOLESTR>(L"Source"), TKIND_COCLASS, description.Out()));
    Check(description->SetGuid(kClass));
    Check(events->QueryInterface(IID_PPV_ARGS(eventsInfo.Out())));
    Check(description->AddRefTypeInfo(eventsInfo.Get(), &reference));
    Check(description->AddImplType(0, reference));
    Check(description->SetImplTypeFlags(0, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE));
    Check(description->LayOut());
    Check(description->QueryInterface(IID_PPV_ARGS(info.Out())));
    return info;
}

}  // namespace

class EventSourceObject::Point : public ComObject<IConnectionPoint> {
public:
    explicit Point(EventSourceObject& owner) : mOwner(owner) {}

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
        *iid = kEvents;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        ComPtr<IDispatch> events;
        const HRESULT known = sink->QueryInterface(kEvents, events.OutVoid());
        if (FAILED(known)) return CONNECT_E_CANNOTCONNECT;
        if (FAILED(mOwner.refusal)) return mOwner.refusal;
        if (mSinks.size() >= mOwner.mostSinks) return CONNECT_E_ADVISELIMIT;
        mSinks.push_back({++mLastCookie, events});
        *cookie = mLastCookie;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        const auto found =
            std::find_if(mSinks.begin(), mSinks.end(), [cookie](const auto& entry) { return entry.cookie == cookie; });
        if (found == mSinks.end()) return CONNECT_E_NOCONNECTION;
        mGone.push_back(*found);
        mSinks.erase(found);
        if (mOwner.onUnadvise) mOwner.onUnadvise();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    struct Entry {
        DWORD cookie;
        ComPtr<IDispatch> sink;
    };
    std::vector<Entry> mSinks;
    std::vector<Entry> mGone;

private:
    EventSourceObject& mOwner;
    DWORD mLastCookie = 0;
};

int EventSourceObject::sLiving = 0;

EventSourceObject::EventSourceObject() : mClassInfo(DescribeClass()), mPoint(MakeObject<Point>(*this)) {
    ++sLiving;
}

EventSourceObject::~EventSourceObject() {
    --sLiving;
    if (onEnd) onEnd();
}

void EventSourceObject::Fire(DISPID event, std::vector<VARIANT> arguments, VARIANT* result) {
    Call(event, std::move(arguments), result);
}

void EventSourceObject::FireAndPassOn(DISPID event, std::vector<VARIANT> arguments) {
    const ScriptFailure failure = Call(event, std::move(arguments), nullptr);
    if (failure.code == S_OK) return;
    SetErrorInfo(0, nullptr);
    throw failure;
}

ScriptFailure EventSourceObject::Call(DISPID event, std::vector<VARIANT> arguments, VARIANT* result) {
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS params = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    auto sinks = mPoint->mSinks;
    if (firesToTheGone) sinks.insert(sinks.end(), mPoint->mGone.begin(), mPoint->mGone.end());
    ScriptFailure failure{S_OK};
    for (const auto& entry : sinks) {
        kwo::com_support::ExceptionInfo raised;
        const HRESULT called = entry.sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                                  result, &raised, nullptr);
        if (called == DISP_E_EXCEPTION)
            failure = {raised.scode,
                       std::wstring(View(raised.bstrSource)) + L" says " + std::wstring(View(raised.bstrDescription))};
        else if (FAILED(called))
            failure = {called};
    }
    return failure;
}

std::size_t EventSourceObject::Connected() const {
    return mPoint->mSinks.size();
}

HRESULT EventSourceObject::QueryInterface(REFIID iid, void** object) {
    if (iid == IID_IConnectionPointContainer)
        *object = static_cast<IConnectionPointContainer*>(this);
    else if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2)
        *object = static_cast<IProvideClassInfo2*>(this);
    else
        return ScriptObject::QueryInterface(iid, object);
    AddRef();
    return S_OK;
}

HRESULT EventSourceObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (iid != kEvents) return CONNECT_E_NOCONNECTION;
    return mPoint->QueryInterface(IID_PPV_ARGS(point));
}

HRESULT EventSourceObject::GetClassInfo(ITypeInfo** info) {
    return mClassInfo.CopyTo(info);
}

HRESULT EventSourceObject::GetGUID(DWORD kind, GUID* id) {
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *id = kEvents;
    return S_OK;
}

}  // namespace kwohost::tests
