#include "script_host.h"

#include <utility>

#include "com_support/exception_info.h"
#include "event_arguments.h"
#include "forwarding.h"
#include "guard.h"
#include "message_loop.h"
#include "script_variables.h"

namespace kwohost {

namespace {

constexpr CLSID kVBScript = {0xB54F3741, 0x5B07, 0x11CF, {0xA4, 0xB0, 0x00, 0xAA, 0x00, 0x4A, 0x55, 0xE8}};
constexpr CLSID kJScript = {0xF414C260, 0x6AC0, 0x11CF, {0xB6, 0xD1, 0x00, 0xAA, 0x00, 0xBB, 0xBB, 0x58}};
constexpr int kScriptFailed = 1;
constexpr wchar_t kErrorSource[] = L"kwohost";
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

}  // namespace

ScriptHost::ScriptHost(SourceFile source) : mSource(std::move(source)) {}

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
    mFunctions += L"Dim " + name + L"\r\nSet " + name + L" = " + global + L"\r\n";
}

int ScriptHost::Run() {
    const HRESULT started = Start();
    if (FAILED(started) && mErrorCount == 0) Report(kErrorSource, started, L"");
    return mExitCode;
}

HRESULT ScriptHost::Start() {
    const bool isJScript = mSource.language == Language::JScript;
    const HRESULT created =
        CoCreateInstance(isJScript ? kJScript : kVBScript, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(mEngine.Out()));
    if (FAILED(created)) {
        Report(kErrorSource, created, isJScript ? L"JScript is not installed" : L"VBScript is not installed");
        return created;
    }
    ComPtr<IActiveScriptParse> parser;
    HRESULT result = mEngine->QueryInterface(IID_PPV_ARGS(parser.Out()));
    if (SUCCEEDED(result)) result = mEngine->SetScriptSite(&mSite);
    if (SUCCEEDED(result)) result = parser->InitNew();
    for (const auto& [name, global] : mGlobals)
        if (SUCCEEDED(result)) result = mEngine->AddNamedItem(name.c_str(), global.flags);
    for (const std::wstring* const text : {&mFunctions, &mSource.text})
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
    const int errorsBefore = mErrorCount;
    EventArguments arguments(params);
    kwo::com_support::ExceptionInfo raised;
    const HRESULT called = script->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.ForScript(),
                                          result, &raised, nullptr);
    if (SUCCEEDED(called)) {
        const HRESULT stored = arguments.WriteBack();
        if (SUCCEEDED(stored)) return stored;
        // The procedure has run. A code that means wrong types would make the caller try others.
        Report(procedure, stored, kCannotStore);
    } else if (mErrorCount == errorsBefore) {
        ReportFailure(procedure, called, raised);
    }
    if (!exception) return DISP_E_EXCEPTION;
    *exception = {};
    exception->scode = mLastError.code;
    exception->bstrSource = SysAllocString(mLastError.source.c_str());
    exception->bstrDescription = SysAllocString(mLastError.description.c_str());
    return DISP_E_EXCEPTION;
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
    const int errorsBefore = mErrorCount;
    EventArguments arguments(params);
    kwo::com_support::ExceptionInfo exception;
    const HRESULT called = target->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments.ForScript(),
                                          result, &exception, nullptr);
    // An engine that has reported an error itself returns a failure without details.
    if (FAILED(called) && mErrorCount == errorsBefore) ReportFailure(name, called, exception);
    const HRESULT stored = arguments.WriteBack();
    if (FAILED(stored)) Report(name, stored, kCannotStore);
    if (mErrorCount != errorsBefore) End(kScriptFailed);
}

void ScriptHost::ReportFailure(const std::wstring& procedure, HRESULT called, const EXCEPINFO& raised) {
    Report(raised.bstrSource ? Text(raised.bstrSource) : procedure, called == DISP_E_EXCEPTION ? raised.scode : called,
           Text(raised.bstrDescription));
}

void ScriptHost::Report(const std::wstring& source, HRESULT code, const std::wstring& description) noexcept {
    ShowError([&] { return ErrorReport{mSource.path, 0, 0, code, source, description}; });
}

void ScriptHost::EndAfter(const std::wstring& source, const ScriptFailure& failure) noexcept {
    Report(source, failure.code, failure.description);
    End(kScriptFailed);
}

/// The error counts, and the exit code says so, even if there is no memory left to report it.
template <class Describe>
void ScriptHost::ShowError(Describe&& describe) noexcept {
    ++mErrorCount;
    mExitCode = kScriptFailed;
    const auto show = [&] {
        mLastError = describe();
        return mErrors.Write(Format(mLastError) + L"\r\n");
    };
    const auto showShortly = [this](const ScriptFailure& failure) {
        mLastError = {};
        mLastError.code = failure.code;
        const auto giveUp = [](const ScriptFailure&) { return false; };
        return Guarded([this] { return mErrors.Write(L"kwohost: out of memory\r\n"); }, giveUp);
    };
    Guarded(show, showShortly);
}

void ScriptHost::Wait(std::chrono::milliseconds duration) {
    if (const auto quit = RunMessages(duration, EndingAfterErrors())) End(*quit);
}

void ScriptHost::WaitUntil(const std::function<bool()>& isOver) {
    if (const auto quit = RunMessagesUntil(isOver, EndingAfterErrors())) End(*quit);
}

/// A procedure that an object calls back, as no event, reports its error but cannot end the script itself.
std::function<void()> ScriptHost::EndingAfterErrors() {
    return [this, errorsBefore = mErrorCount] {
        if (mErrorCount != errorsBefore) End(mExitCode);
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

void ScriptHost::End(int exitCode) {
    mExitCode = exitCode;
    if (mIsClosing) return;
    // An engine can be told to stop only by an error, and a script can catch that (On Error Resume Next, catch) and go
    // on. So the process ends here, with the script's calls still on the stack, after everything that can be put in
    // order has been.
    Close();
    CoUninitialize();
    ExitProcess(static_cast<UINT>(mExitCode));
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

HRESULT ScriptHost::Site::OnScriptError(IActiveScriptError* error) {
    mHost.ShowError([&] { return ReportOf(error, mHost.mSource.path); });
    return S_OK;
}

HRESULT ScriptHost::Site::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return S_OK;
}

}  // namespace kwohost
