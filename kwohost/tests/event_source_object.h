#pragma once

#include <ocidl.h>

#include <functional>
#include <string>
#include <vector>

#include "script_object.h"

namespace kwohost::tests {

/// An object with two events, `Tick` (1) and `Ask` (2), that does on its members what the test wants.
class EventSourceObject : public ScriptObject, public IConnectionPointContainer, public IProvideClassInfo2 {
public:
    EventSourceObject();
    ~EventSourceObject() override;

    static constexpr DISPID kTick = 1;
    static constexpr DISPID kAsk = 2;
    static int Living() { return sLiving; }

    /// Lets a script call `name` with any arguments.
    void OnCall(const wchar_t* name, std::function<void(Call&)> body) {
        AddMethod(name, 0, kAnyNumber, std::move(body));
    }
    /// Fires to every connection; the arguments stand in the order of the event.
    void Fire(DISPID event, std::vector<VARIANT> arguments, VARIANT* result = nullptr);
    /// The same, and raises the failure of a sink with its description, as an object that reports by the thread's error
    /// object.
    void FireAndPassOn(DISPID event, std::vector<VARIANT> arguments);
    std::size_t Connected() const;
    /// Runs when a connection ends.
    std::function<void()> onUnadvise;
    /// Runs when the object ends.
    std::function<void()> onEnd;
    /// What it answers to a new sink if it refuses it.
    HRESULT refusal = S_OK;
    /// How many sinks it has room for.
    std::size_t mostSinks = 10;
    /// Keeps sinks that have disconnected and fires to them too, as a careless object would.
    bool firesToTheGone = false;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ScriptObject::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return ScriptObject::Release(); }
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

private:
    /// The last failure of a sink, with its description.
    ScriptFailure Call(DISPID event, std::vector<VARIANT> arguments, VARIANT* result);

    class Point;
    static int sLiving;
    ComPtr<ITypeInfo> mClassInfo;
    ComPtr<Point> mPoint;
};

}  // namespace kwohost::tests
