#pragma once

#include <string>
#include <vector>

#include "com_values.h"
#include "event_connections.h"
#include "script_host.h"

namespace kwohost {

/// What scripts know as `WScript`. The host and the connections outlive it.
ComPtr<IDispatch> MakeWScriptObject(ScriptHost& host, EventConnections& connections,
                                    const std::vector<std::wstring>& arguments);

}  // namespace kwohost
