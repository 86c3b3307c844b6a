#pragma once

#include <string>
#include <vector>

#include "com_values.h"
#include "event_connections.h"
#include "script_host.h"

namespace kwohost {

/// The object that scripts know as `WScript`. docs/kwohost.md lists its members.
/// The host and the connections must outlive it. `arguments` are those behind the script's name on the command line.
ComPtr<IDispatch> MakeWScriptObject(ScriptHost& host, EventConnections& connections,
                                    const std::vector<std::wstring>& arguments);

}  // namespace kwohost
