#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// Who hears that its thread leaves its apartment.
class ApartmentUser {
public:
    virtual void ApartmentEnds() noexcept = 0;

protected:
    ~ApartmentUser() = default;
};

/// Tells its user when the thread is about to leave its apartment, while objects can still be called.
///
/// Begins and ends on one and the same thread; the module must stay loaded in between.
class ApartmentWatch {
public:
    explicit ApartmentWatch(ApartmentUser& user) : mUser(user) {}
    ~ApartmentWatch() { End(); }
    ApartmentWatch(const ApartmentWatch&) = delete;
    ApartmentWatch& operator=(const ApartmentWatch&) = delete;

    /// Nothing is watched on a thread that is in no apartment, or that is watched already.
    void Begin() noexcept;
    void End() noexcept;

private:
    ApartmentUser& mUser;
    bool mRunning = false;
    ULARGE_INTEGER mCookie = {};
};

}  // namespace kwo::platform::windows
