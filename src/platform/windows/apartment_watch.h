#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// Is told when its thread leaves its apartment, by the last CoUninitialize.
class ApartmentUser {
public:
    /// Runs on the thread that leaves, before COM is gone: objects can still be called and released.
    /// May end the watch, but must not destroy it.
    virtual void ApartmentEnds() noexcept = 0;

protected:
    ~ApartmentUser() = default;
};

/// Tells its user that the thread is about to leave its apartment, while objects can still be called.
///
///     watch.Begin();  // the thread has a timer now
///     watch.End();    // it has none any more
///
/// The timer service needs this: a timer that outlives the apartment would call objects that are gone.
/// Begin and End run on the same thread. The module must stay loaded in between, because the system calls into it.
class ApartmentWatch {
public:
    /// Watches nothing yet. `user` must outlive it.
    explicit ApartmentWatch(ApartmentUser& user) : mUser(user) {}
    /// Stops watching, on the thread of Begin.
    ~ApartmentWatch() { End(); }
    ApartmentWatch(const ApartmentWatch&) = delete;
    ApartmentWatch& operator=(const ApartmentWatch&) = delete;

    /// Starts watching.
    /// Does nothing on a thread that is in no apartment, or that is already watched.
    /// If the system refuses, nothing is watched and nobody is told.
    void Begin() noexcept;
    /// Stops watching. Does nothing if it does not watch.
    void End() noexcept;

private:
    ApartmentUser& mUser;
    /// True from a successful Begin to End.
    bool mRunning = false;
    /// What the system gave for the watch.
    ULARGE_INTEGER mCookie = {};
};

}  // namespace kwo::platform::windows
