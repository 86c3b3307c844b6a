#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "event_connections.h"
#include "event_source_object.h"
#include "forms_host.h"
#include "script_host.h"
#include "wscript_object.h"

namespace kwohost::tests {

using Notes = std::vector<std::wstring>;

inline VARIANT Number(LONG value) {
    VARIANT number;
    number.vt = VT_I4;
    number.lVal = value;
    return number;
}

inline VARIANT Reference(VARTYPE type, void* target) {
    VARIANT reference;
    reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
    reference.byref = target;
    return reference;
}

/// Statements of VBScript that process messages until `condition` is true, for eight seconds at most.
inline std::wstring Until(const std::wstring& condition) {
    return L"For turn = 1 To 400\r\nIf " + condition + L" Then Exit For\r\nWScript.Sleep 20\r\nNext\r\n";
}

/// One script and one source of events, which the script finds as `Source`. `notes` contains what the script notes.
class ScriptTest : public testing::Test {
protected:
    explicit ScriptTest(Language language = Language::VBScript) : mLanguage(language) {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        source = MakeObject<EventSourceObject>();
        source->OnCall(L"Note", [this](Call& call) { notes.push_back(call.Text(0)); });
        source->OnCall(L"FireTick",
                       [this](Call& call) { source->Fire(EventSourceObject::kTick, {Number(call.Whole(0))}); });
    }
    void LetSourcePassErrorsOn() {
        source->OnCall(L"PassOn", [this](Call& call) {
            source->FireAndPassOn(EventSourceObject::kTick, {Number(call.Whole(0))});
        });
    }
    ~ScriptTest() override {
        if (host) host->Close();
        connections.reset();
        host.reset();
        source.Reset();
        CoUninitialize();
    }

    int Run(const std::wstring& script) {
        host = std::make_unique<ScriptHost>(SourceFile{L"C:\\events.vbs", mLanguage, script});
        connections = std::make_unique<EventConnections>(
            [this](const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result, EXCEPINFO* exception) {
                return host->HandleObjectEvent(procedure, params, result, exception);
            });
        host->AtClose([this] { connections->DisconnectAll(); });
        host->AddGlobal(L"WScript", MakeWScriptObject(*host, *connections, {}));
        host->AddGlobal(L"Source", source);
        AddFormObjects(*host);
        return host->Run();
    }
    static DISPID IdOf(IDispatch& object, const wchar_t* member) {
        DISPID id = DISPID_UNKNOWN;
        auto* name = const_cast<LPOLESTR>(member);
        EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id), S_OK) << Bstr(member).Get();
        return id;
    }
    void Tick(LONG number) { source->Fire(EventSourceObject::kTick, {Number(number)}); }

    ComPtr<EventSourceObject> source;
    std::unique_ptr<ScriptHost> host;
    std::unique_ptr<EventConnections> connections;
    Notes notes;

private:
    Language mLanguage;
};

}  // namespace kwohost::tests
