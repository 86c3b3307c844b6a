#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// Is told when its thread leaves its apartment.
class ApartmentUser {
public:
    /// Runs on the thread that leaves. May end the watch.
    virtual void ApartmentEnds() noexcept = 0;

protected:
    ~ApartmentUser() = default;
};

/// Tells its user that the thread is about to leave its apartment, while objects can still be called.
///
/// Begin and End run on the same thread. The module must stay loaded in between.
class ApartmentWatch {
public:
    /// Watches nothing yet. `user` must outlive it.
    explicit ApartmentWatch(ApartmentUser& user) : mUser(user) {}
    ~ApartmentWatch() { End(); }
    ApartmentWatch(const ApartmentWatch&) = delete;
    ApartmentWatch& operator=(const ApartmentWatch&) = delete;

    /// Does nothing on a thread that is in no apartment, or that is already watched.
    void Begin() noexcept;
    /// Stops watching. Does nothing if it does not watch.
    void End() noexcept;

private:
    ApartmentUser& mUser;
    bool mRunning = false;
    ULARGE_INTEGER mCookie = {};
};

}  // namespace kwo::platform::windows
