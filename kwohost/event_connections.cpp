#include "event_connections.h"

#include <olectl.h>

#include <algorithm>

namespace kwohost {

void EventConnections::Connect(IDispatch* object, std::wstring prefix) {
    if (prefix.empty()) Fail(RuntimeError::InvalidProcedureCall, L"The prefix of the event procedures is empty");
    if (!prefix.ends_with(L'_')) prefix += L'_';

    const auto events = FindEventInterface(object);
    Connection connection;
    ComPtr<IConnectionPointContainer> container;
    if (!events || FAILED(object->QueryInterface(IID_PPV_ARGS(container.Out()))) ||
        FAILED(container->FindConnectionPoint(events->id, connection.point.Out())))
        Fail(RuntimeError::NoEvents, L"The object has no events that a script can receive");

    Check(object->QueryInterface(IID_PPV_ARGS(connection.identity.Out())));
    connection.sink = MakeObject<EventSink>(*events, std::move(prefix), mHandler);
    mConnections.reserve(mConnections.size() + 1);
    const auto connect = [&] { return connection.point->Advise(connection.sink.Get(), &connection.cookie); };
    HRESULT connected = connect();
    // An object with room for one sink takes the new one only in place of the old one.
    if (connected == CONNECT_E_ADVISELIMIT) {
        CutFirstOf(connection.identity.Get());
        connected = connect();
    }
    Check(connected);
    const ComPtr<IUnknown> identity = connection.identity;
    const bool hasEarlier = Find(identity.Get()) != mConnections.end();
    mConnections.push_back(std::move(connection));
    if (hasEarlier) CutFirstOf(identity.Get());
}

void EventConnections::Disconnect(IDispatch* object) {
    ComPtr<IUnknown> identity;
    Check(object->QueryInterface(IID_PPV_ARGS(identity.Out())));
    CutFirstOf(identity.Get());
}

std::vector<EventConnections::Connection>::iterator EventConnections::Find(IUnknown* identity) {
    return std::find_if(mConnections.begin(), mConnections.end(),
                        [identity](const Connection& connection) { return connection.identity.Get() == identity; });
}

void EventConnections::CutFirstOf(IUnknown* identity) {
    const auto found = Find(identity);
    if (found == mConnections.end()) return;
    Connection connection = std::move(*found);
    mConnections.erase(found);
    Cut(connection);
}

void EventConnections::DisconnectAll() {
    while (!mConnections.empty()) {
        Connection connection = std::move(mConnections.back());
        mConnections.pop_back();
        Cut(connection);
    }
}

void EventConnections::Cut(Connection& connection) {
    connection.sink->Silence();
    connection.point->Unadvise(connection.cookie);
}

}  // namespace kwohost
