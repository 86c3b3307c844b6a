#pragma once

#include <activscp.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com_values.h"
#include "error_report.h"
#include "output.h"
#include "source_file.h"

namespace kwohost {

/// Runs one script. Objects that the script finds by name are added before `Run`.
class ScriptHost {
public:
    /// Takes the script; nothing runs yet.
    explicit ScriptHost(SourceFile source);
    ScriptHost(const ScriptHost&) = delete;
    ScriptHost& operator=(const ScriptHost&) = delete;
    ~ScriptHost();

    /// The path of the script.
    const std::wstring& ScriptPath() const { return mSource.path; }
    /// The language of the script.
    Language ScriptLanguage() const { return mSource.language; }

    /// Adds an object that the script finds as `name`. The host keeps it until Close.
    void AddGlobal(const std::wstring& name, ComPtr<IDispatch> object);
    /// Runs before the engine is closed, the last one added first.
    void AtClose(std::function<void()> action) { mAtClose.push_back(std::move(action)); }

    /// Runs the script's main part and returns the exit code.
    int Run();
    /// Calls a procedure of the script for an event; one that the script does not have is no error. An error inside is
    /// reported and ends the script. What the procedure assigns to arguments by reference is stored for the caller.
    void HandleEvent(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result);
    /// Whether the script has a procedure of that name.
    bool HasProcedure(const std::wstring& procedure);
    /// Calls a procedure for somebody who handles its error: it is reported and returned, with its content.
    HRESULT CallProcedure(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                          EXCEPINFO* exception);
    /// Reports an error that has no place in the script.
    void Report(const std::wstring& source, HRESULT code, const std::wstring& description) noexcept;
    /// Reports a failure that nobody can handle, and ends the script.
    void EndAfter(const std::wstring& source, const ScriptFailure& failure) noexcept;
    /// Reports that `procedure` failed: `called` is what the engine returned, `raised` what it filled in.
    void ReportFailure(const std::wstring& procedure, HRESULT called, const EXCEPINFO& raised);

    /// Lets timers and events run, as RunMessages does. An error in one of their procedures ends the script, and so
    /// does a request to quit, with its code.
    void Wait(std::chrono::milliseconds duration);

    /// Takes the script down: AtClose actions, engine, globals. Nothing of the script runs afterwards.
    void Close();
    /// Ends the process, from however deep inside the script. Inside Close it only sets the exit code.
    void End(int exitCode);
    /// What Run returns when the script has ended.
    int ExitCode() const { return mExitCode; }

private:
    /// The engine's view of the host. Owned by the host, which outlives the engine: it counts no references.
    class Site : public IActiveScriptSite, public IActiveScriptSiteWindow {
    public:
        explicit Site(ScriptHost& host) : mHost(host) {}
        virtual ~Site() = default;

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
        ULONG STDMETHODCALLTYPE Release() override { return 1; }

        HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override;
        HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo** info) override;
        HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
        HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
        HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override;
        HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
        HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

        HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
        HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    private:
        ScriptHost& mHost;
    };

    HRESULT Start();
    void LetGoOfVariables();
    /// Null when the script has no such procedure.
    ComPtr<IDispatch> FindProcedure(const std::wstring& procedure, DISPID& id);
    /// `describe` returns the report, and may fail for lack of memory.
    template <class Describe>
    void ShowError(Describe&& describe) noexcept;

    SourceFile mSource;
    Output mErrors{STD_ERROR_HANDLE};
    Site mSite{*this};
    ComPtr<IActiveScript> mEngine;
    std::map<std::wstring, ComPtr<IDispatch>> mGlobals;
    std::vector<std::function<void()>> mAtClose;
    bool mIsClosing = false;
    int mErrorCount = 0;
    ErrorReport mLastError;
    int mExitCode = 0;
};

}  // namespace kwohost
