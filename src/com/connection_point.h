#pragma once

#include <windows.h>
#include <ocidl.h>

#include <span>
#include <vector>

#include "com/server/com_values.h"

namespace kwo::com {

/// One event of an interface.
struct Event {
    /// The dispatch id in the event interface.
    DISPID id;
    /// Late-bound sinks are asked for it by this name. It must live as long as the program.
    const wchar_t* name;
};

/// The sinks of one object's events, and the connection point by which clients add them.
///
///     mEvents.Fire(1, {});  // Tick
///
/// It is a part of the object and counts references with the object: a client that holds the point holds the object.
/// Each connected sink is a reference that the object holds. Everything runs on the object's thread.
class ConnectionPoint final : public IConnectionPointContainer {
public:
    /// `owner` contains this object. `eventInterface` and `events` must live as long as the program.
    ConnectionPoint(IUnknown& owner, const IID& eventInterface, std::span<const Event> events)
        : mOwner(owner), mPoint(*this), mInterface(eventInterface), mEvents(events) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    /// Calls every sink, in the order in which they connected.
    /// `arguments` are in reverse order, as automation passes them; all sinks get the same ones.
    /// If a sink fails, the others are still called; then the first failure is raised. A sink that lacks the event
    /// does not fail. A sink whose program has ended is disconnected.
    /// Sinks may connect and disconnect meanwhile. One that connects is not called yet, one that disconnects not any
    /// more. `event` must be one of the events.
    void Fire(DISPID event, std::span<VARIANT> arguments);

    /// Disconnects all sinks; no other can connect (CONNECT_E_CANNOTCONNECT).
    /// Called when the owner ends. Releasing a sink may run code of the client.
    void Close();

    /// These three are the owner's.
    STDMETHODIMP QueryInterface(REFIID id, void** object) override { return mOwner.QueryInterface(id, object); }
    STDMETHODIMP_(ULONG) AddRef() override { return mOwner.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return mOwner.Release(); }
    /// There is one point.
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    /// CONNECT_E_NOCONNECTION for any interface but that of the events.
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
        /// Connects a sink that implements the event interface, or an object that knows at least one event by its name
        /// or id.
        /// CONNECT_E_CANNOTCONNECT for any other. Asks the sink for names, which may run code of it.
        STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
        /// CONNECT_E_NOCONNECTION for a cookie that is not connected.
        STDMETHODIMP Unadvise(DWORD cookie) override;
        /// A list of the sinks that are connected now; later changes do not show in it.
        STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

    private:
        ConnectionPoint& mAll;
    };

    struct Connection {
        DWORD cookie;
        ComPtr<IDispatch> sink;
        /// The sink's own, in the order of the events; DISPID_UNKNOWN for an event that it lacks.
        std::vector<DISPID> ids;
    };

    /// Where an event stands in mEvents.
    std::size_t PlaceOf(DISPID event) const;
    /// For a sink that implements the event interface.
    std::vector<DISPID> OwnIds() const;
    /// For any other sink. Runs code of it.
    std::vector<DISPID> IdsOfLateBound(IDispatch& sink) const;
    /// Whether a sink is still connected.
    bool IsConnected(DWORD cookie) const;
    /// Releases the sink, which may run code of the client. False if no sink has that cookie.
    bool Disconnect(DWORD cookie);

    IUnknown& mOwner;
    Point mPoint;
    const IID& mInterface;
    const std::span<const Event> mEvents;
    std::vector<Connection> mConnections;
    /// Cookies begin with 1 and are not used again.
    DWORD mLastCookie = 0;
    bool mClosed = false;
};

}  // namespace kwo::com
