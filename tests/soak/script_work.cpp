#include "script_work.h"

#include <chrono>
#include <string_view>

#include "com_support/bstr.h"
#include "com_test.h"
#include "event_connections.h"
#include "findings.h"
#include "message_loop.h"
#include "script_folder.h"
#include "script_host.h"
#include "wscript_object.h"

namespace kwo::soak {

/// The errors that the scripts raise are reported to standard error: nobody wants to read them.
class QuietErrors {
public:
    QuietErrors() : mBefore(GetStdHandle(STD_ERROR_HANDLE)) { SetStdHandle(STD_ERROR_HANDLE, nullptr); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;
    ~QuietErrors() { SetStdHandle(STD_ERROR_HANDLE, mBefore); }

private:
    HANDLE mBefore;
};

namespace {

/// The result of a procedure without arguments; empty if it fails.
com_support::OwnedVariant Do(kwohost::ScriptHost& host, const wchar_t* procedure) {
    DISPPARAMS none = {};
    com_support::OwnedVariant result;
    if (FAILED(host.CallProcedure(procedure, none, &result, nullptr)))
        Found("a procedure of a script fails: " + com_test::Narrow(procedure));
    return result;
}

}  // namespace

struct FailingScript::Parts {
    explicit Parts(const std::wstring& file)
        : name(file),
          host(Script(file)),
          connections(
              [this](const std::wstring& procedure, const DISPPARAMS& parameters, VARIANT* result,
                     EXCEPINFO* exception) { return host.CallProcedure(procedure, parameters, result, exception); }) {}

    std::wstring name;
    QuietErrors quiet;
    kwohost::ScriptHost host;
    kwohost::EventConnections connections;
};

FailingScript::FailingScript(const std::wstring& name) : mParts(std::make_unique<Parts>(name)) {
    Parts& parts = *mParts;
    parts.host.AtClose([&parts] { parts.connections.DisconnectAll(); });
    parts.host.AddGlobal(L"WScript", kwohost::MakeWScriptObject(parts.host, parts.connections, {}));
    if (parts.host.Run() != 0) Found(com_test::Narrow(name) + " does not run");
}

FailingScript::~FailingScript() {
    constexpr std::chrono::milliseconds kStep(20);
    constexpr int kMostSteps = 250;
    const auto said = [this] {
        const auto result = Do(mParts->host, L"Said");
        return result.vt == VT_BSTR ? std::wstring(com_support::View(result.bstrVal)) : std::wstring();
    };
    constexpr std::wstring_view kExpected = L"tick 1, alarm 1, called tick 1, called alarm 1, direct 1";
    for (int step = 0; step < kMostSteps && said() != kExpected; ++step)
        static_cast<void>(kwohost::RunMessages(kStep, [] {}));
    if (said() != kExpected) Found(com_test::Narrow(mParts->name) + " says: " + com_test::Narrow(said()));
    Do(mParts->host, L"Finish");
    mParts->host.Close();
}

}  // namespace kwo::soak
