#include "com/connection_point.h"

#include <olectl.h>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "com/server/module.h"
#include "com_support/com_object.h"
#include "platform/component_error.h"
#include "platform/windows/call_failure.h"

namespace kwo::com {

namespace {

/// A COM enumerator over a copy of a list.
template <class Interface, class Item>
class Enumerator final : public com_support::ComObject<Interface> {
public:
    using Native = decltype(std::declval<const Item&>().Native());

    Enumerator(std::vector<Item> items, std::size_t next) : mItems(std::move(items)), mNext(next) {}

    STDMETHODIMP Next(ULONG count, Native* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        ULONG given = 0;
        for (; given < count && mNext < mItems.size(); ++given)
            items[given] = mItems[mNext++].Native();
        if (fetched != nullptr) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const std::size_t skipped = std::min<std::size_t>(count, mItems.size() - mNext);
        mNext += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        mNext = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** clone) override {
        if (clone == nullptr) return E_POINTER;
        *clone = nullptr;
        try {
            return Make(mItems, mNext, clone);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

    /// `made` is not null.
    static HRESULT Make(std::vector<Item> items, std::size_t next, Interface** made) noexcept {
        *made = new (std::nothrow) Enumerator(std::move(items), next);
        return *made != nullptr ? S_OK : E_OUTOFMEMORY;
    }

private:
    ModuleLock mModuleLock;
    std::vector<Item> mItems;
    std::size_t mNext;
};

struct PointItem {
    ComPtr<IConnectionPoint> point;
    IConnectionPoint* Native() const { return ComPtr(point).Detach(); }
};

struct ConnectionItem {
    ComPtr<IDispatch> sink;
    DWORD cookie;
    CONNECTDATA Native() const { return {ComPtr(sink).Detach(), cookie}; }
};

using PointEnumerator = Enumerator<IEnumConnectionPoints, PointItem>;
using ConnectionEnumerator = Enumerator<IEnumConnections, ConnectionItem>;

/// True if the sink's program has ended, before the call or during it.
bool IsGone(HRESULT result) {
    constexpr HRESULT kServerUnavailable = static_cast<HRESULT>(0x800706BA);
    constexpr HRESULT kCallFailed = static_cast<HRESULT>(0x800706BE);
    constexpr HRESULT kCallNotExecuted = static_cast<HRESULT>(0x800706BF);
    switch (result) {
        case RPC_E_DISCONNECTED:
        case RPC_E_SERVER_DIED:
        case RPC_E_SERVER_DIED_DNE:
        case CO_E_OBJNOTCONNECTED:
        case kServerUnavailable:
        case kCallFailed:
        case kCallNotExecuted:
            return true;
        default:
            return false;
    }
}

bool DescribesMember(ITypeInfo& info, DISPID id) {
    Bstr name;
    UINT count = 0;
    return SUCCEEDED(info.GetNames(id, name.Out(), 1, &count)) && count != 0;
}

/// The id of an event for a late-bound sink: its own id of that name; the event's id if the sink says that it has the
/// event, or if it knows no names at all. DISPID_UNKNOWN if it lacks the event.
DISPID IdOfLateBound(IDispatch& sink, const Event& event) {
    auto* name = const_cast<wchar_t*>(event.name);
    DISPID id = DISPID_UNKNOWN;
    const HRESULT named = sink.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (SUCCEEDED(named)) return id;
    if (named == E_NOTIMPL) return event.id;
    ComPtr<ITypeInfo> info;
    if (FAILED(sink.GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Out())) || !info) return DISPID_UNKNOWN;
    return DescribesMember(*info, event.id) ? event.id : DISPID_UNKNOWN;
}

/// Returns false if the sink's program has ended. Raises what the handler raised.
bool Deliver(IDispatch& sink, DISPID event, std::span<VARIANT> arguments) {
    DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    com_support::ExceptionInfo exception;
    UINT badArgument = 0;
    const HRESULT result = sink.Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                                       &exception, &badArgument);
    if (SUCCEEDED(result) || result == DISP_E_MEMBERNOTFOUND || result == E_NOTIMPL) return true;
    if (IsGone(result)) return false;
    if (result == DISP_E_EXCEPTION) platform::windows::RaiseException(exception);
    platform::windows::RaiseFailure(result);
}

}  // namespace

void ConnectionPoint::Fire(DISPID event, std::span<VARIANT> arguments) {
    // Sinks may connect and disconnect while others are called, so the list is copied and checked again before each
    // call.
    const std::vector<Connection> connections = mConnections;
    const std::size_t place = PlaceOf(event);
    std::exception_ptr failure;
    for (const Connection& connection : connections) {
        if (!IsConnected(connection.cookie)) continue;
        const DISPID id = connection.ids[place];
        if (id == DISPID_UNKNOWN) continue;
        try {
            if (!Deliver(*connection.sink, id, arguments)) Disconnect(connection.cookie);
        } catch (...) {
            if (failure == nullptr) failure = std::current_exception();
        }
    }
    if (failure != nullptr) std::rethrow_exception(failure);
}

STDMETHODIMP ConnectionPoint::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points == nullptr) return E_POINTER;
    *points = nullptr;
    try {
        return PointEnumerator::Make({{ComPtr<IConnectionPoint>(&mPoint)}}, 0, points);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

STDMETHODIMP ConnectionPoint::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    if (id != mInterface) return CONNECT_E_NOCONNECTION;
    *point = ComPtr<IConnectionPoint>(&mPoint).Detach();
    return S_OK;
}

std::size_t ConnectionPoint::PlaceOf(DISPID event) const {
    return static_cast<std::size_t>(std::ranges::find(mEvents, event, &Event::id) - mEvents.begin());
}

std::vector<DISPID> ConnectionPoint::OwnIds() const {
    std::vector<DISPID> ids;
    for (const Event& event : mEvents)
        ids.push_back(event.id);
    return ids;
}

std::vector<DISPID> ConnectionPoint::IdsOfLateBound(IDispatch& sink) const {
    std::vector<DISPID> ids;
    for (const Event& event : mEvents)
        ids.push_back(IdOfLateBound(sink, event));
    return ids;
}

void ConnectionPoint::Close() {
    mClosed = true;
    while (!mConnections.empty())
        Disconnect(mConnections.front().cookie);
}

bool ConnectionPoint::IsConnected(DWORD cookie) const {
    return std::ranges::any_of(mConnections, [cookie](const auto& one) { return one.cookie == cookie; });
}

bool ConnectionPoint::Disconnect(DWORD cookie) {
    const auto found = std::ranges::find_if(mConnections, [cookie](const auto& one) { return one.cookie == cookie; });
    if (found == mConnections.end()) return false;
    // The sink may call back when it is released.
    const ComPtr<IDispatch> last = std::move(found->sink);
    mConnections.erase(found);
    return true;
}

STDMETHODIMP ConnectionPoint::Point::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
    *object = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Point::GetConnectionInterface(IID* id) {
    if (id == nullptr) return E_POINTER;
    *id = mAll.mInterface;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Point::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = ComPtr<IConnectionPointContainer>(&mAll).Detach();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Point::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    if (mAll.mClosed) return CONNECT_E_CANNOTCONNECT;
    // The sink is asked for interfaces and names: it may release the owner meanwhile.
    const ComPtr<IUnknown> owner(&mAll.mOwner);
    const ComPtr<IUnknown> given(sink);
    auto called = given.As<IDispatch>(mAll.mInterface);
    const bool isOurs = static_cast<bool>(called);
    if (!isOurs) called = given.As<IDispatch>(IID_IDispatch);
    if (!called) return CONNECT_E_CANNOTCONNECT;
    try {
        std::vector<DISPID> ids = isOurs ? mAll.OwnIds() : mAll.IdsOfLateBound(*called);
        // An object with none of the events was connected by mistake: its owner would wait for ever.
        if (std::ranges::all_of(ids, [](DISPID id) { return id == DISPID_UNKNOWN; })) return CONNECT_E_CANNOTCONNECT;
        mAll.mConnections.push_back({mAll.mLastCookie + 1, std::move(called), std::move(ids)});
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    *cookie = ++mAll.mLastCookie;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Point::Unadvise(DWORD cookie) {
    return mAll.Disconnect(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ConnectionPoint::Point::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) return E_POINTER;
    *connections = nullptr;
    try {
        std::vector<ConnectionItem> items;
        for (const Connection& one : mAll.mConnections)
            items.push_back({one.sink, one.cookie});
        return ConnectionEnumerator::Make(std::move(items), 0, connections);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace kwo::com
