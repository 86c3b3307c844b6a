#include "run_script.h"

#include <memory>

#include "event_connections.h"
#include "forms_host.h"
#include "script_host.h"
#include "wscript_object.h"

namespace kwohost {

int RunScript(SourceFile source, const std::vector<std::wstring>& arguments) {
    ScriptHost host(std::move(source));
    // Shared with what runs when the script is closed, which may be after this scope has been left by an exception.
    const auto connections = std::make_shared<EventConnections>(
        [&host](const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result, EXCEPINFO* exception) {
            return host.HandleObjectEvent(procedure, params, result, exception);
        });
    host.AtClose([connections] { connections->DisconnectAll(); });
    host.AddGlobal(L"WScript", MakeWScriptObject(host, *connections, arguments));
    AddFormObjects(host);
    host.Run();
    host.Close();
    return host.ExitCode();
}

}  // namespace kwohost
