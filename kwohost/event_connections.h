#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "com_values.h"
#include "event_sink.h"

namespace kwohost {

/// The connections of a script to the events of objects.
class EventConnections {
public:
    /// `handler` runs for each event of each connected object.
    explicit EventConnections(EventHandler handler) : mHandler(std::move(handler)) {}
    EventConnections(const EventConnections&) = delete;
    EventConnections& operator=(const EventConnections&) = delete;
    ~EventConnections() { DisconnectAll(); }

    /// Events call `prefix_Name`; the prefix may end with its underscore. Replaces an earlier connection of the same
    /// object. Raises 459 for an object without events, 5 for an empty prefix.
    void Connect(IDispatch* object, std::wstring prefix);
    /// Does nothing for an object that is not connected.
    void Disconnect(IDispatch* object);
    /// Ends all connections. An object that still fires is not heard.
    void DisconnectAll();

private:
    struct Connection {
        ComPtr<IUnknown> identity;
        ComPtr<IConnectionPoint> point;
        ComPtr<EventSink> sink;
        DWORD cookie = 0;
    };

    static void Cut(Connection& connection);

    EventHandler mHandler;
    std::vector<Connection> mConnections;
};

}  // namespace kwohost
