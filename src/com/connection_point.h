#pragma once

#include <windows.h>
#include <ocidl.h>

#include <span>
#include <vector>

#include "com/server/com_values.h"

namespace kwo::com {

/// One event of an interface. Late-bound sinks are asked for it by this name.
struct Event {
    DISPID id;
    const wchar_t* name;
};

/// The sinks of one object's events, and the connection point by which clients add them. It is a part of the object and
/// counts references with the object.
class ConnectionPoint final : public IConnectionPointContainer {
public:
    /// `owner` contains this object.
    ConnectionPoint(IUnknown& owner, const IID& eventInterface, std::span<const Event> events)
        : mOwner(owner), mPoint(*this), mInterface(eventInterface), mEvents(events) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    /// Calls every sink, in the order in which they connected. `arguments` are in reverse order, as automation passes
    /// them. If a sink fails, the others are still called; then the first failure is raised. A sink that lacks the
    /// event does not fail. A sink whose program has ended is disconnected.
    void Fire(DISPID event, std::span<VARIANT> arguments);

    /// Disconnects all sinks; no other can connect. Called when the owner ends.
    void Close();

    STDMETHODIMP QueryInterface(REFIID id, void** object) override { return mOwner.QueryInterface(id, object); }
    STDMETHODIMP_(ULONG) AddRef() override { return mOwner.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return mOwner.Release(); }
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

private:
    /// The point itself. It is an object of its own, but counts references with the owner.
    class Point final : public IConnectionPoint {
    public:
        explicit Point(ConnectionPoint& all) : mAll(all) {}

        STDMETHODIMP QueryInterface(REFIID id, void** object) override;
        STDMETHODIMP_(ULONG) AddRef() override { return mAll.AddRef(); }
        STDMETHODIMP_(ULONG) Release() override { return mAll.Release(); }
        STDMETHODIMP GetConnectionInterface(IID* id) override;
        STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
        STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
        STDMETHODIMP Unadvise(DWORD cookie) override;
        STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

    private:
        ConnectionPoint& mAll;
    };

    struct Connection {
        DWORD cookie;
        ComPtr<IDispatch> sink;
        std::vector<DISPID> ids;  ///< the sink's own, in the order of the events
    };

    std::size_t PlaceOf(DISPID event) const;
    std::vector<DISPID> OwnIds() const;
    std::vector<DISPID> IdsOfLateBound(IDispatch& sink) const;
    bool IsConnected(DWORD cookie) const;
    bool Disconnect(DWORD cookie);

    IUnknown& mOwner;
    Point mPoint;
    const IID& mInterface;
    const std::span<const Event> mEvents;
    std::vector<Connection> mConnections;
    DWORD mLastCookie = 0;
    bool mClosed = false;
};

}  // namespace kwo::com
