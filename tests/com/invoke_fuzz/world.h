#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>

#include <memory>
#include <string>
#include <vector>

#include "arguments.h"
#include "classes.h"
#include "com_support/com_ptr.h"
#include "dll_under_test.h"
#include "host_object.h"
#include "random.h"

namespace kwo::invoke_fuzz {

using com_support::ComPtr;

/// What lives as long as the program: the DLL, its classes, a registry key, a window and a device context.
struct Surroundings {
    com_test::Library library;
    std::vector<ClassDescription> classes;
    HKEY key = nullptr;
    HWND window = nullptr;
    HDC context = nullptr;
    double today = 0;
    /// What runs now, for the message of a crash. It never throws and allocates nothing.
    void (*tell)(const char* what, const std::wstring& name) = nullptr;
    /// Says what does not hold, and ends the program.
    void (*fail)(const char* what) = nullptr;
};

/// One sequence of calls: some objects of the component, a hostile host, and what is checked of them.
class World {
public:
    World(Surroundings& surroundings, std::uint64_t seed) : random(seed), mSurroundings(surroundings) {}
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    /// Runs the sequence and checks that nothing is left. Returns how many calls it made.
    int Run();

    // For the objects of the host.

    enum class Answer { Good, Other, Failure };
    /// What an object of the host does now. Before it answers, it may do something with the component.
    Answer Decide();
    VARIANT AnyAnswer() { return AnyValue(random, mIngredients); }
    /// One of the component's own objects, with a reference; nothing if there is none.
    VARIANT AnyComponentObject();
    bool HasOddFonts() { return !isCalm && random.Once(16); }
    HRESULT AnyFailure();
    IDispatch* AnyHostObject();
    bool IsSource(REFIID id) const;
    LONG Context() const;
    LONG Window() const;
    /// A procedure of the host writes into some of its arguments by reference.
    void WriteInto(DISPPARAMS* arguments);
    void Holds(bool condition, const char* what) const {
        if (!condition) mSurroundings.fail(what);
    }

    /// Ends the presses on the arrows of all calendars, as the user does.
    void ReleaseArrows();

    Random random;
    /// The host behaves from now on.
    bool isCalm = false;

private:
    struct Made {
        const ClassDescription* description;
        ComPtr<IDispatch> object;
    };
    struct Connection {
        ComPtr<IConnectionPoint> point;
        DWORD cookie;
    };

    void Act();
    void Create();
    void AskForNames(Made made);
    void Invoke(Made made);
    void InvokeElsewhere(Made made);
    VARIANT ValueOf(VARTYPE type);
    void CallEarlyBound(Made made);
    void AskForInterfaces(Made made);
    void AskForTypes(Made made);
    void Connect(Made made);
    void Enumerate(Made made);
    void Pump();
    void FillArguments(const Member& member, Arguments& arguments);
    void AddArgument(const Member& member, std::size_t at, Arguments& arguments);
    /// `silentFailures` is how many there were before the call: what the host does not explain, nobody can.
    void CheckFailure(HRESULT status, const EXCEPINFO* exception, int silentFailures) const;
    void UseControlsAgain();
    void EndEverything();
    IDispatch* AnyObject();

    Surroundings& mSurroundings;
    Ingredients mIngredients;
    std::vector<std::unique_ptr<HostObject>> mHosts;
    std::vector<Made> mMade;
    std::vector<Connection> mConnections;
    std::vector<Arguments*> mRunning;  ///< the arguments of the calls that run now
    int mSilentFailures = 0;           ///< of the host, without a description
    int mDepth = 0;
    int mCalls = 0;
};

}  // namespace kwo::invoke_fuzz
