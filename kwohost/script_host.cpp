#include "script_host.h"

#include <utility>

#include "com_support/exception_info.h"
#include "event_arguments.h"
#include "fault_guard.h"
#include "forwarding.h"
#include "guard.h"
#include "message_loop.h"
#include "script_variables.h"

namespace kwohost {

namespace {

constexpr CLSID kVBScript = {0xB54F3741, 0x5B07, 0x11CF, {0xA4, 0xB0, 0x00, 0xAA, 0x00, 0x4A, 0x55, 0xE8}};
constexpr CLSID kJScript = {0xF414C260, 0x6AC0, 0x11CF, {0xB6, 0xD1, 0x00, 0xAA, 0x00, 0xBB, 0xBB, 0x58}};
constexpr int kScriptFailed = 1;
constexpr wchar_t kCannotStore[] = L"An argument cannot take the value that the procedure assigned to it";

std::wstring Text(BSTR text) {
    return std::wstring(View(text));
}

ErrorReport ReportOf(IActiveScriptError* error, const std::wstring& file) {
    kwo::com_support::ExceptionInfo exception;
    ErrorReport report{file};
    if (SUCCEEDED(error->GetExceptionInfo(&exception))) {
        exception.Complete();
        report.source = Text(exception.bstrSource);
        report.description = Text(exception.bstrDescription);
        report.code = exception.scode ? exception.scode : ToResult(static_cast<RuntimeError>(exception.wCode));
    }
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    if (SUCCEEDED(error->GetSourcePosition(&context, &line, &column))) {
        report.line = static_cast<long>(line);
        report.column = column + 1;
    }
    return report;
}

/// Why the engine of a language cannot be created; empty if the code says it.
const wchar_t* WhyNoEngine(HRESULT code, Language language) {
    if (code == E_OUTOFMEMORY) return L"";
    if (language == Language::JScript) return L"JScript is not installed";
    return L"VBScript is not installed. Newer versions of Windows 11 have it in the settings, under System, Optional "
           L"features. Or write the script in JScript.";
}

}  // namespace

ScriptHost::ScriptHost(SourceFile source) : mSource(std::move(source)) {
    if (mSource.language != Language::JScript) return;
    mErrorNumbers = MakeObject<ErrorNumbers>();
    AddGlobal(L"kwohost_errors", mErrorNumbers);
    mFirstScript = ErrorNumbers::Script();
}

ScriptHost::~ScriptHost() {
    Close();
}

void ScriptHost::AddGlobal(const std::wstring& name, ComPtr<IDispatch> object) {
    mGlobals[name] = {std::move(object), SCRIPTITEM_ISVISIBLE};
}

void ScriptHost::AddFunction(const std::wstring& name, ComPtr<IDispatch> object) {
    const std::wstring global = L"kwohost_" + name;
    if (mSource.language == Language::JScript) {
        mGlobals[global] = {std::move(object), SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS};
        return;
    }
    // VBScript finds its own functions before what the host has, but a script's variables before either.
    AddGlobal(global, std::move(object));
    mFirstScript += L"Dim " + name + L"\r\nSet " + name + L" = " + global + L"\r\n";
}

int ScriptHost::Run() {
    const HRESULT started = Start();
    if (FAILED(started) && mErrors.Shown() == 0) Report(kErrorSource, started, L"");
    return ExitCode();
}

HRESULT ScriptHost::Start() {
    const bool isJScript = mSource.language == Language::JScript;
    const HRESULT created =
        CoCreateInstance(isJScript ? kJScript : kVBScript, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(mEngine.Out()));
    if (FAILED(created)) {
        Report(kErrorSource, created, WhyNoEngine(created, mSource.language));
        return created;
    }
    ComPtr<IActiveScriptParse> parser;
    HRESULT result = mEngine->QueryInterface(IID_PPV_ARGS(parser.Out()));
    if (SUCCEEDED(result)) result = mEngine->SetScriptSite(&mSite);
    if (SUCCEEDED(result)) result = parser->InitNew();
    for (const auto& [name, global] : mGlobals)
        if (SUCCEEDED(result)) result = mEngine->AddNamedItem(name.c_str(), global.flags);
    for (const std::wstring* const text : {&mFirstScript, &mSource.text})
        if (SUCCEEDED(result) && !text->empty())
            result = parser->ParseScriptText(text->c_str(), nullptr, nullptr, nullptr, 0, 1, SCRIPTTEXT_ISVISIBLE,
                                             nullptr, nullptr);
    if (SUCCEEDED(result)) result = mEngine->SetScriptState(SCRIPTSTATE_CONNECTED);
    return result;
}

ComPtr<IDispatch> ScriptHost::FindProcedure(const std::wstring& procedure, DISPID& id) {
    ComPtr<IDispatch> script;
    auto* name = const_cast<LPOLESTR>(procedure.c_str());
    if (mIsClosing || !mEngine || FAILED(mEngine->GetScriptDispatch(nullptr, script.Out())) || !script ||
        FAILED(script->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)))
        return nullptr;
    return script;
}

bool ScriptHost::HasProcedure(const std::wstring& procedure) {
    DISPID id = DISPID_UNKNOWN;
    return static_cast<bool>(FindProcedure(procedure, id));
}

HRESULT ScriptHost::CallProcedure(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                                  EXCEPINFO* exception) {
    DISPID id = DISPID_UNKNOWN;
    const ComPtr<IDispatch> script = FindProcedure(procedure, id);
    if (!script) return DISP_E_MEMBERNOTFOUND;
    mErrors.Settle();
    if (SUCCEEDED(Invoke(script.Get(), id, procedure, params, result))) return S_OK;
    // A code that means wrong types would make the caller try others.
    if (!exception) return DISP_E_EXCEPTION;
    *exception = {};
    exception->scode = mErrors.Last().code;
    exception->bstrSource = SysAllocString(mErrors.Last().source.c_str());
    exception->bstrDescription = SysAllocString(mErrors.Last().description.c_str());
    return DISP_E_EXCEPTION;
}

HRESULT ScriptHost::HandleObjectEvent(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                                      EXCEPINFO* exception) {
    const int shownBefore = mErrors.Shown();
    const HRESULT called = CallProcedure(procedure, params, result, exception);
    if (mErrors.Shown() != shownBefore) End(kScriptFailed);
    return called;
}

void ScriptHost::HandleEvent(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    const ComPtr<IDispatch> script = FindProcedure(procedure, id);
    if (script) Handle(script.Get(), id, procedure, params, result);
}

void ScriptHost::PassOn(IDispatch* object, const std::wstring& member, const DISPPARAMS& params) {
    const ComPtr<IDispatch> target(object);
    const DISPID id = mIsClosing ? DISPID_UNKNOWN : IdOfMember(object, member);
    if (id != DISPID_UNKNOWN) Handle(object, id, member, params, nullptr);
}

void ScriptHost::Handle(IDispatch* target, DISPID id, const std::wstring& name, const DISPPARAMS& params,
                        VARIANT* result) {
    mErrors.Settle();
    const int shownBefore = mErrors.Shown();
    // A window has nobody to pass an error on to.
    if (FAILED(Invoke(target, id, name, params, result))) mErrors.ShowKept();
    if (mErrors.Shown() != shownBefore) End(kScriptFailed);
}

HRESULT ScriptHost::Invoke(IDispatch* target, DISPID id, const std::wstring& name, const DISPPARAMS& params,
                           VARIANT* result) {
    const int shownBefore = mErrors.Shown();
    EventArguments arguments(params);
    const RunningProcedure running(name);
    kwo::com_support::ExceptionInfo raised;
    const HRESULT called = target->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.ForScript(),
                                          result, &raised, nullptr);
    const HRESULT stored = arguments.WriteBack();
    if (SUCCEEDED(called) && SUCCEEDED(stored)) return S_OK;
    const auto describe = [&] {
        if (SUCCEEDED(called)) return ErrorReport{mSource.path, 0, 0, stored, name, kCannotStore};
        raised.Complete();
        return ErrorReport{mSource.path,
                           0,
                           0,
                           called == DISP_E_EXCEPTION ? raised.scode : called,
                           raised.bstrSource ? Text(raised.bstrSource) : name,
                           Text(raised.bstrDescription)};
    };
    // An engine that has told of an error itself returns a failure without details.
    if (mErrors.Shown() == shownBefore) mErrors.TakeAfterCall(describe);
    return E_FAIL;
}

void ScriptHost::Report(const std::wstring& source, HRESULT code, const std::wstring& description) noexcept {
    mErrors.Show([&] { return ErrorReport{mSource.path, 0, 0, code, source, description}; });
}

void ScriptHost::EndAfter(const std::wstring& source, const ScriptFailure& failure) noexcept {
    Report(source, failure.code, failure.description);
    End(kScriptFailed);
}

void ScriptHost::Wait(std::chrono::milliseconds duration) {
    RunLoop([&] {
        if (const auto quit = RunMessages(duration, EndingAfterErrors())) End(*quit);
    });
}

void ScriptHost::WaitUntil(const std::function<bool()>& isOver) {
    RunLoop([&] {
        if (const auto quit = RunMessagesUntil(isOver, EndingAfterErrors())) End(*quit);
    });
}

void ScriptHost::RunLoop(const std::function<void()>& loop) {
    mErrors.Settle();
    const auto endAfterErrors = EndingAfterErrors();
    {
        const RaisedErrors::Loop inLoop(mErrors);
        loop();
    }
    endAfterErrors();
}

/// A procedure that an object calls without the host reports its error but cannot end the script itself.
std::function<void()> ScriptHost::EndingAfterErrors() {
    return [this, shownBefore = mErrors.Shown()] {
        if (mErrors.Shown() != shownBefore) End(kScriptFailed);
    };
}

void ScriptHost::Close() {
    if (std::exchange(mIsClosing, true)) return;
    for (auto action = mAtClose.rbegin(); action != mAtClose.rend(); ++action)
        (*action)();
    mAtClose.clear();
    if (mSource.language == Language::VBScript) LetGoOfVariables();
    if (mEngine) mEngine->Close();
    mEngine.Reset();
    mGlobals.clear();
}

/// VBScript keeps the variables of a script that is still running, inside an event for instance, when it is closed.
void ScriptHost::LetGoOfVariables() {
    ComPtr<IDispatch> script;
    if (!mEngine || FAILED(mEngine->GetScriptDispatch(nullptr, script.Out())) || !script) return;
    Guarded([&script] {
        EmptyVariables(script.Get());
        return S_OK;
    });
}

int ScriptHost::ExitCode() const {
    return mQuitCode.value_or(mErrors.Shown() > 0 ? kScriptFailed : 0);
}

void ScriptHost::End(int exitCode) {
    mErrors.Settle();
    mQuitCode = exitCode;
    if (mIsClosing) return;
    // An engine can be told to stop only by an error, and a script can catch that (On Error Resume Next, catch) and go
    // on. So the process ends here, with the script's calls still on the stack, after everything that can be put in
    // order has been.
    Close();
    CoUninitialize();
    ExitProcess(static_cast<UINT>(exitCode));
}

HRESULT ScriptHost::Site::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == __uuidof(IActiveScriptSite)) *object = static_cast<IActiveScriptSite*>(this);
    if (iid == __uuidof(IActiveScriptSiteWindow)) *object = static_cast<IActiveScriptSiteWindow*>(this);
    return *object ? S_OK : E_NOINTERFACE;
}

HRESULT ScriptHost::Site::GetLCID(LCID* locale) {
    if (!locale) return E_POINTER;
    *locale = GetUserDefaultLCID();
    return S_OK;
}

HRESULT ScriptHost::Site::GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo** info) {
    if (item) *item = nullptr;
    if (info) *info = nullptr;
    return Guarded([&] {
        const auto found = mHost.mGlobals.find(name);
        if (found == mHost.mGlobals.end() || (mask & SCRIPTINFO_ITYPEINFO)) return TYPE_E_ELEMENTNOTFOUND;
        if ((mask & SCRIPTINFO_IUNKNOWN) && item) {
            *item = found->second.object.Get();
            (*item)->AddRef();
        }
        return S_OK;
    });
}

HRESULT ScriptHost::Site::OnEnterScript() {
    mHost.mErrors.BeginCall();
    return S_OK;
}

HRESULT ScriptHost::Site::OnLeaveScript() {
    mHost.mErrors.EndCall();
    return S_OK;
}

/// An engine passes the code of an error on to its caller only if the site does not take the error.
HRESULT ScriptHost::Site::OnScriptError(IActiveScriptError* error) {
    const auto describe = [&] {
        ErrorReport report = ReportOf(error, mHost.mSource.path);
        if (report.code == E_FAIL && mHost.mErrorNumbers)
            report.code = mHost.mErrorNumbers->CodeOf(report.description).value_or(E_FAIL);
        return report;
    };
    return mHost.mErrors.TakeFromCall(describe) ? E_FAIL : S_OK;
}

HRESULT ScriptHost::Site::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return S_OK;
}

}  // namespace kwohost
