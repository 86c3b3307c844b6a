#pragma once

#include <string>

#include "com_test.h"

namespace kwo::soak {

using com_support::ComPtr;

/// Objects of the component that were made by MakeLive and have not ended.
long LiveObjects();

/// An object of the component that this program made. It counts as live until its last reference is given back, which
/// the object itself says.
class LiveObject {
public:
    LiveObject() = default;
    /// `className` is such as "KWOTimer".
    explicit LiveObject(const wchar_t* className);
    LiveObject(LiveObject&& other) noexcept = default;
    LiveObject& operator=(LiveObject&& other) noexcept;
    ~LiveObject() { End(); }

    IDispatch* Get() const { return mObject.Get(); }
    explicit operator bool() const { return static_cast<bool>(mObject); }
    /// Gives the reference back. True if the object has ended; one that has not counts on until NoteEnd.
    bool End();
    /// An object has ended that End left alive.
    static void NoteEnd();

private:
    ComPtr<IDispatch> mObject;
};

}  // namespace kwo::soak
