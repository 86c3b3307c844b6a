#pragma once

#include <functional>
#include <string>

#include "com_values.h"
#include "event_source.h"

namespace kwohost {

/// Handles an event; gets the name of its procedure, "Timer_Tick".
/// Returns what IDispatch::Invoke returns, and DISP_E_MEMBERNOTFOUND if there is no such procedure. May raise.
using EventHandler = std::function<HRESULT(const std::wstring& procedure, const DISPPARAMS& params, VARIANT* result,
                                           EXCEPINFO* exception)>;

/// Receives the events of one object and passes each one on under its prefix and name.
/// The object calls it late-bound, by the ids of its event interface.
class EventSink : public ComObject<IDispatch> {
public:
    /// `prefix` is what the procedures' names begin with, underscore included. `handler` must be usable until Silence.
    EventSink(EventInterface events, std::wstring prefix, EventHandler handler)
        : mEvents(std::move(events)), mPrefix(std::move(prefix)), mHandler(std::move(handler)) {}

    /// Ignores all further events: the object may keep the sink and call it for ever. The handler is let go of.
    void Silence() { mHandler = nullptr; }

    /// A sink describes nothing: objects know the interface that they fire.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    /// DISP_E_MEMBERNOTFOUND for an id that the event interface does not have.
    /// Returns the handler's failure. S_OK if the script has no procedure for the event.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override;

protected:
    bool AlsoAnswers(REFIID iid) const override { return iid == mEvents.id; }

private:
    /// What the object calls.
    EventInterface mEvents;
    std::wstring mPrefix;
    /// Empty once the sink is silenced.
    EventHandler mHandler;
};

}  // namespace kwohost
