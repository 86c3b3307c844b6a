#pragma once

#include <activscp.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "com_values.h"
#include "error_numbers.h"
#include "error_report.h"
#include "raised_errors.h"
#include "source_file.h"

namespace kwohost {

/// Runs one script.
/// Objects that the script finds by name are added before `Run`.
///
///     ScriptHost host(ReadSource(path));
///     host.AddGlobal(L"WScript", object);
///     return host.Run();
///
/// Everything runs on one thread, which must be in an apartment. Errors go to standard error, in the words of
/// ErrorReport.
class ScriptHost {
public:
    /// Takes the script; nothing runs yet.
    explicit ScriptHost(SourceFile source);
    ScriptHost(const ScriptHost&) = delete;
    ScriptHost& operator=(const ScriptHost&) = delete;
    /// Closes the script if nobody has.
    ~ScriptHost();

    /// The path of the script.
    const std::wstring& ScriptPath() const { return mSource.path; }
    /// The script's file without its folder.
    std::wstring ScriptName() const { return mSource.path.substr(mSource.path.find_last_of(L"\\/") + 1); }
    /// The language of the script.
    Language ScriptLanguage() const { return mSource.language; }

    /// Adds an object that the script finds as `name`, before Run. The host keeps it until Close.
    void AddGlobal(const std::wstring& name, ComPtr<IDispatch> object);
    /// Adds a function of the script, before Run. It takes the place of the language's own function of that name.
    /// It is a method of `object` with that name, and the object's default member.
    void AddFunction(const std::wstring& name, ComPtr<IDispatch> object);
    /// Runs before the engine is closed, the last one added first. `action` must not raise.
    void AtClose(std::function<void()> action) { mAtClose.push_back(std::move(action)); }

    /// Runs the script's main part and returns the exit code: 0, or 1 after an error, which is reported.
    /// Timers and events of the script need Wait.
    int Run();
    /// Calls a procedure of the script for an event of a window; one that the script does not have is no error.
    /// An error inside is reported and ends the script, with the exit code 1: the call does not return then. What the
    /// procedure assigns to arguments by reference is stored for the caller.
    void HandleEvent(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result);
    /// Whether the script has a procedure of that name. False while the script is closed.
    bool HasProcedure(const std::wstring& procedure);
    /// Passes an event on to a member of any object; an object without it is no error. The rest is as for HandleEvent.
    void PassOn(IDispatch* object, const std::wstring& member, const DISPPARAMS& params);
    /// Calls a procedure for an object, which passes its error on to code of the script that has called the object.
    /// The error is returned as DISP_E_EXCEPTION, with its content in `exception`, which may be null. It is reported if
    /// no code of the script waits for the object, and later if the object keeps it to itself.
    /// DISP_E_MEMBERNOTFOUND if the script has no such procedure.
    HRESULT CallProcedure(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                          EXCEPINFO* exception);
    /// The same for an event of an object. An error that no code of the script waits for ends the script: the call does
    /// not return then.
    HRESULT HandleObjectEvent(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                              EXCEPINFO* exception);
    /// Reports an error that has no place in the script.
    /// Run then returns 1. Never fails: without memory it says only that.
    void Report(const std::wstring& source, HRESULT code, const std::wstring& description) noexcept;
    /// Reports a failure that nobody can handle, and ends the script with the exit code 1.
    void EndAfter(const std::wstring& source, const ScriptFailure& failure) noexcept;

    /// Lets timers and events run, as RunMessages does.
    /// An error in one of their procedures ends the script, and so does a request to quit, with its code.
    void Wait(std::chrono::milliseconds duration);
    /// The same until `isOver` returns true, as RunMessagesUntil does.
    void WaitUntil(const std::function<bool()>& isOver);
    /// Runs `loop`, which processes messages in its own way, as a box of the system does. The rest is as for Wait.
    void RunLoop(const std::function<void()>& loop);

    /// Takes the script down: AtClose actions, engine, globals.
    /// Nothing of the script runs afterwards. A second call does nothing.
    void Close();
    /// Closes the script and ends the process, from however deep inside the script: it does not return.
    /// Inside Close it only sets the exit code.
    void End(int exitCode);
    /// What Run returns when the script has ended.
    int ExitCode() const;

private:
    /// The engine's view of the host. Owned by the host, which outlives the engine: it counts no references.
    class Site : public IActiveScriptSite, public IActiveScriptSiteWindow {
    public:
        explicit Site(ScriptHost& host) : mHost(host) {}
        virtual ~Site() = default;

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
        /// Any number but 0: nobody frees the site.
        ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
        ULONG STDMETHODCALLTYPE Release() override { return 1; }

        /// The user's locale.
        HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override;
        /// The globals by their names; TYPE_E_ELEMENTNOTFOUND for any other.
        HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item, ITypeInfo** info) override;
        HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
        HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
        HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
        /// Takes the error. The engine then ends what it runs, and tells its caller.
        HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override;
        /// Count the calls into the engine that are in progress.
        HRESULT STDMETHODCALLTYPE OnEnterScript() override;
        HRESULT STDMETHODCALLTYPE OnLeaveScript() override;

        /// The desktop owns the engine's own boxes.
        HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
        HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    private:
        ScriptHost& mHost;
    };

    /// What the script finds by a name; the flags are those of AddNamedItem.
    struct Global {
        ComPtr<IDispatch> object;
        DWORD flags;
    };

    /// Makes the engine and runs the script's main part.
    HRESULT Start();
    /// Runs after each message: ends the script if one of its procedures has failed since now.
    std::function<void()> EndingAfterErrors();
    /// Empties the variables of VBScript, which would keep their objects.
    void LetGoOfVariables();
    /// Null if the script has no such procedure, and while it is closed.
    ComPtr<IDispatch> FindProcedure(const std::wstring& procedure, DISPID& id);
    /// Calls `target` and stores what it assigns. Takes its error under `name`.
    HRESULT Invoke(IDispatch* target, DISPID id, const std::wstring& name, const DISPPARAMS& params, VARIANT* result);
    /// Calls `target` for an event. An error ends the script.
    void Handle(IDispatch* target, DISPID id, const std::wstring& name, const DISPPARAMS& params, VARIANT* result);

    /// Kept while the script runs, for its path.
    SourceFile mSource;
    RaisedErrors mErrors;
    Site mSite{*this};
    /// Null before Run and after Close.
    ComPtr<IActiveScript> mEngine;
    std::map<std::wstring, Global> mGlobals;
    /// A script that runs before the author's and puts things in the place of the language's own.
    std::wstring mFirstScript;
    /// Null for VBScript.
    ComPtr<ErrorNumbers> mErrorNumbers;
    std::vector<std::function<void()>> mAtClose;
    /// Set by Close and never reset: no procedure is found any more.
    bool mIsClosing = false;
    /// What End was called with.
    std::optional<int> mQuitCode;
};

}  // namespace kwohost
