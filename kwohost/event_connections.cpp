#include "event_connections.h"

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

    Disconnect(object);
    Check(object->QueryInterface(IID_PPV_ARGS(connection.identity.Out())));
    connection.sink = MakeObject<EventSink>(*events, std::move(prefix), mHandler);
    Check(connection.point->Advise(connection.sink.Get(), &connection.cookie));
    mConnections.push_back(std::move(connection));
}

void EventConnections::Disconnect(IDispatch* object) {
    ComPtr<IUnknown> identity;
    Check(object->QueryInterface(IID_PPV_ARGS(identity.Out())));
    const auto found =
        std::find_if(mConnections.begin(), mConnections.end(),
                     [&identity](const Connection& connection) { return connection.identity.Get() == identity.Get(); });
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
