#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "com_values.h"
#include "event_sink.h"

namespace kwohost {

/// The connections of a script to the events of objects.
/// It holds the objects and the sinks; it is used on the script's thread.
///
///     connections.Connect(timer, L"Timer_");  // events call Timer_Tick and Timer_Alarm
class EventConnections {
public:
    /// `handler` runs for each event of each connected object, with the name of the procedure.
    /// It may raise; the object gets the failure.
    explicit EventConnections(EventHandler handler) : mHandler(std::move(handler)) {}
    EventConnections(const EventConnections&) = delete;
    EventConnections& operator=(const EventConnections&) = delete;
    ~EventConnections() { DisconnectAll(); }

    /// Events call `prefix_Name`; the prefix may end with its underscore.
    /// Replaces an earlier connection of the same object, by identity.
    /// Raises 459 for an object without events, 5 for an empty prefix, and what the object answers if it refuses. An
    /// earlier connection then stays, unless the object has room for one alone.
    void Connect(IDispatch* object, std::wstring prefix);
    /// Does nothing for an object that is not connected.
    void Disconnect(IDispatch* object);
    /// Ends all connections, the last one first. An object that still fires is not heard.
    void DisconnectAll();

private:
    /// An object, its connection point, the sink and the number of the connection.
    struct Connection {
        ComPtr<IUnknown> identity;
        ComPtr<IConnectionPoint> point;
        ComPtr<EventSink> sink;
        DWORD cookie = 0;
    };

    std::vector<Connection>::iterator Find(IUnknown* identity);
    /// Does nothing if the object is not connected.
    void CutFirstOf(IUnknown* identity);
    /// Silences the sink first: the object may fire while it is disconnected.
    static void Cut(Connection& connection);

    EventHandler mHandler;
    std::vector<Connection> mConnections;
};

}  // namespace kwohost
