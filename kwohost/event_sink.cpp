#include "event_sink.h"

#include "guard.h"

namespace kwohost {

HRESULT EventSink::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                          UINT*) {
    if (!params) return E_POINTER;
    if (params->cNamedArgs > 0) return DISP_E_NONAMEDARGS;
    const auto name = mEvents.names.find(id);
    if (name == mEvents.names.end()) return DISP_E_MEMBERNOTFOUND;
    if (!mHandler) return S_OK;
    // The procedure may disconnect its own object.
    const ComPtr<EventSink> keep(this);
    return Guarded([&] {
        const EventHandler handler = mHandler;
        const HRESULT handled = handler(mPrefix + name->second, *params, result, exception);
        return handled == DISP_E_MEMBERNOTFOUND ? S_OK : handled;
    });
}

}  // namespace kwohost
