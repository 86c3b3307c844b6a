#pragma once

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "com_test.h"
#include "windows_calls/windows_calls.h"

namespace kwo::com_test {

/// What a caller got from one step of a scenario.
struct Answer {
    std::string step;
    /// S_OK, the HRESULT of the call, or the number of the error that the member raised.
    HRESULT status = S_OK;
    std::string value;
    /// Of an error that the member raised.
    std::string source = {};
    std::string description = {};

    /// Without the texts of an error: they may tell that no messages could be loaded, which lasts.
    std::string Text() const { return step + ": " + Hex(status) + ' ' + value; }
    std::string TextWithError() const { return Text() + ' ' + source + ": " + description; }
    /// Whether this is that answer; an error may have come without its texts.
    bool IsLike(const Answer& usual) const {
        return step == usual.step && status == usual.status && value == usual.value &&
               (source.empty() || source == usual.source) && (description.empty() || description == usual.description);
    }
};

/// Where a scenario runs: the object of the DLL that it uses, and the answers it gets.
class Stage {
public:
    Stage(HMODULE module, windows_calls::WindowsCalls& calls) : mModule(module), mCalls(calls) {}

    /// The object of the class, which stays from one run of the scenario to the next. Null if it cannot be created.
    IDispatch* Object(const wchar_t* className);
    /// Another object, which the scenario owns.
    ComPtr<IDispatch> Another(const wchar_t* className);
    void Release() { mObject.Reset(); }
    bool HasObject() const { return static_cast<bool>(mObject); }

    Outcome Call(IDispatch* object, const wchar_t* member, const std::vector<Var>& arguments = {});
    Outcome Get(IDispatch* object, const wchar_t* property, const std::vector<Var>& arguments = {});
    Outcome Let(IDispatch* object, const wchar_t* property, const Var& value);
    Outcome Set(IDispatch* object, const wchar_t* property, const Var& value);
    /// Any other step: its status, and what it brought.
    void Note(const std::string& step, HRESULT status, const std::string& value = {}) {
        mAnswers.push_back({step, status, value});
    }

    HMODULE Module() const { return mModule; }
    windows_calls::WindowsCalls& Calls() { return mCalls; }
    std::vector<Answer> TakeAnswers() { return std::exchange(mAnswers, {}); }

private:
    Outcome Noted(const wchar_t* member, Outcome outcome);

    HMODULE mModule;
    windows_calls::WindowsCalls& mCalls;
    ComPtr<IDispatch> mObject;
    std::vector<Answer> mAnswers;
};

/// What a client does with one object. Run again on the same object, it gets the same answers.
class Scenario {
public:
    virtual ~Scenario() = default;
    virtual void Run(Stage& stage) = 0;
    /// References to the host's objects that somebody still holds.
    virtual ULONG References() const { return 0; }
};

struct NamedScenario {
    const char* name;
    /// Which DLL it uses.
    const wchar_t* module;
    std::function<std::unique_ptr<Scenario>()> make;
    /// Whether the DLL is loaded anew for each round, so that its first steps are seen.
    bool loadsAnew = false;
};

inline void PrintTo(const NamedScenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

const std::vector<NamedScenario>& Scenarios();

/// The class's object, made by the DLL's own class factory: without the registry.
HRESULT CreateFrom(HMODULE module, const wchar_t* className, IDispatch** object);

}  // namespace kwo::com_test
