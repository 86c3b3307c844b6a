#pragma once

#include <windows.h>

namespace kwo::com_test {

/// The slots of the timer class as an early-bound client compiles them, typed by hand.
struct TimerSlots : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE GetItem(VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE LetItem(VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetItem(VARIANT value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetItemData(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE LetItemData(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetEnabled(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE LetEnabled(VARIANT_BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAlarmEvents(IDispatch** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetAlarmEvents(IDispatch* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTimerEvents(IDispatch** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTimerEvents(IDispatch* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddAlarm(DATE dateTime, LONG itemData) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetInterval(LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE LetInterval(LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE TimerTick(LONG* tickType, LONG* itemData, DATE* newDateTime) = 0;
    virtual HRESULT STDMETHODCALLTYPE CancelTimers(LONG* timerType, LONG* itemData) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddRelativeAlarm(LONG interval, LONG itemData) = 0;
};

}  // namespace kwo::com_test
