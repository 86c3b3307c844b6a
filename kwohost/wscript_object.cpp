#include "wscript_object.h"

#include <chrono>

#include "com_support/module_path.h"
#include "kwohost_version.h"
#include "output.h"
#include "script_object.h"
#include "text_enumerator.h"
#include "value_text.h"

namespace kwohost {

namespace {

constexpr wchar_t kLineEnd[] = L"\r\n";

/// `WScript.Arguments`: what stands behind the script's name on the command line.
class ArgumentsObject : public ScriptObject {
public:
    explicit ArgumentsObject(std::vector<std::wstring> texts) : mTexts(std::move(texts)) {
        const auto count = [this](Call& call) { call.ReturnWhole(static_cast<LONG>(mTexts.size())); };
        AddProperty(L"Count", count);
        AddProperty(L"length", count);
        AddProperty(
            L"Item", [this](Call& call) { call.ReturnText(At(call.Whole(0))); }, 1);
        SetDefault(L"Item");
        SetEnumerator([this](Call& call) { call.ReturnUnknown(EnumerateTexts(mTexts)); });
    }

private:
    const std::wstring& At(LONG index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= mTexts.size())
            Fail(RuntimeError::SubscriptOutOfRange, L"There is no argument " + std::to_wstring(index));
        return mTexts[static_cast<std::size_t>(index)];
    }

    std::vector<std::wstring> mTexts;
};

void WriteOrFail(Output& output, const std::wstring& text) {
    if (!output.Write(text)) Fail(RuntimeError::DeviceError, L"The output cannot be written");
}

/// `WScript.StdOut` and `WScript.StdErr`.
class OutputObject : public ScriptObject {
public:
    OutputObject(DWORD which, Language language) : mOutput(which), mLanguage(language) {
        AddMethod(L"Write", 1, 1, [this](Call& call) { WriteOrFail(mOutput, ValueText(call.Value(0), mLanguage)); });
        AddMethod(L"WriteLine", 0, 1, [this](Call& call) {
            WriteOrFail(mOutput, (call.Has(0) ? ValueText(call.Value(0), mLanguage) : L"") + kLineEnd);
        });
    }

private:
    Output mOutput;
    Language mLanguage;
};

ComPtr<IDispatch> CreateByName(const std::wstring& name) {
    CLSID id = CLSID_NULL;
    ComPtr<IDispatch> object;
    HRESULT result = CLSIDFromProgID(name.c_str(), &id);
    if (SUCCEEDED(result))
        result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(object.Out()));
    if (FAILED(result)) {
        const std::wstring reason = SystemText(static_cast<DWORD>(result));
        Fail(RuntimeError::CannotCreateObject,
             L"Cannot create the object '" + name + L"'" + (reason.empty() ? L"" : L": " + reason));
    }
    return object;
}

class WScriptObject : public ScriptObject {
public:
    WScriptObject(ScriptHost& host, EventConnections& connections, const std::vector<std::wstring>& arguments)
        : mHost(host), mConnections(connections) {
        AddOutputs();
        AddControl();
        AddObjects();
        AddFacts(arguments);
    }

private:
    void AddOutputs() {
        const auto output = MakeObject<OutputObject>(STD_OUTPUT_HANDLE, mHost.ScriptLanguage());
        const auto errors = MakeObject<OutputObject>(STD_ERROR_HANDLE, mHost.ScriptLanguage());
        AddProperty(L"StdOut", [output](Call& call) { call.ReturnObject(output); });
        AddProperty(L"StdErr", [errors](Call& call) { call.ReturnObject(errors); });
        AddMethod(L"Echo", 0, kAnyNumber, [this](Call& call) { Echo(call); });
    }

    void AddControl() {
        AddMethod(L"Sleep", 1, 1, [this](Call& call) { Sleep(call.Whole(0)); });
        AddMethod(L"Quit", 0, 1, [this](Call& call) { mHost.End(call.Has(0) ? call.Whole(0) : 0); });
    }

    void AddObjects() {
        AddMethod(L"CreateObject", 1, 2, [this](Call& call) {
            const ComPtr<IDispatch> object = CreateByName(call.Text(0));
            if (call.Has(1)) mConnections.Connect(object.Get(), call.Text(1));
            call.ReturnObject(object);
        });
        AddMethod(L"ConnectObject", 2, 2,
                  [this](Call& call) { mConnections.Connect(call.Object(0).Get(), call.Text(1)); });
        AddMethod(L"DisconnectObject", 1, 1, [this](Call& call) { mConnections.Disconnect(call.Object(0).Get()); });
    }

    void AddFacts(const std::vector<std::wstring>& texts) {
        const auto arguments = MakeObject<ArgumentsObject>(texts);
        AddProperty(L"Arguments", [arguments](Call& call) { call.ReturnObject(arguments); });
        AddProperty(L"ScriptFullName", [this](Call& call) { call.ReturnText(mHost.ScriptPath()); });
        AddProperty(L"ScriptName", [this](Call& call) { call.ReturnText(mHost.ScriptName()); });
        AddProperty(L"FullName", [](Call& call) { call.ReturnText(kwo::com_support::ModulePath(nullptr)); });
        AddProperty(L"Name", [](Call& call) { call.ReturnText(L"kwohost"); });
        AddProperty(L"Version", [](Call& call) { call.ReturnText(KWOHOST_VERSION); });
        SetDefault(L"Name");
    }

    void Echo(Call& call) {
        std::wstring line;
        for (int i = 0; i < call.Count(); ++i) {
            if (i > 0) line += L' ';
            line += ValueText(call.Value(i), mHost.ScriptLanguage());
        }
        WriteOrFail(mOutput, line + kLineEnd);
    }

    void Sleep(LONG ms) {
        if (ms < 0) Fail(RuntimeError::InvalidProcedureCall, L"A script cannot sleep for less than no time");
        mHost.Wait(std::chrono::milliseconds(ms));
    }

    ScriptHost& mHost;
    EventConnections& mConnections;
    Output mOutput{STD_OUTPUT_HANDLE};
};

}  // namespace

ComPtr<IDispatch> MakeWScriptObject(ScriptHost& host, EventConnections& connections,
                                    const std::vector<std::wstring>& arguments) {
    return MakeObject<WScriptObject>(host, connections, arguments);
}

}  // namespace kwohost
