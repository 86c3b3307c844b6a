#include "platform/windows/apartment_watch.h"

#include <objidl.h>

#include <new>

#include "com_support/com_object.h"

namespace kwo::platform::windows {

namespace {

/// The system calls it before and after each CoInitialize and CoUninitialize of its thread.
class Spy final : public com_support::ComObject<IInitializeSpy> {
public:
    explicit Spy(ApartmentUser& user) : mUser(user) {}

    STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
    STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
    STDMETHODIMP PreUninitialize(DWORD entered) override {
        constexpr DWORD kLast = 1;
        if (entered != kLast) return S_OK;
        // The user may end the watch, which releases the system's reference.
        AddRef();
        mUser.ApartmentEnds();
        Release();
        return S_OK;
    }
    STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

private:
    ApartmentUser& mUser;
};

bool IsInApartment() {
    ULONG_PTR token = 0;
    return SUCCEEDED(::CoGetContextToken(&token));
}

}  // namespace

void ApartmentWatch::Begin() noexcept {
    if (mRunning || !IsInApartment()) return;
    const auto spy = com_support::ComPtr<Spy>::Adopt(new (std::nothrow) Spy(mUser));
    if (!spy) return;
    mRunning = SUCCEEDED(::CoRegisterInitializeSpy(spy.Get(), &mCookie));
}

void ApartmentWatch::End() noexcept {
    if (!mRunning) return;
    mRunning = false;
    ::CoRevokeInitializeSpy(mCookie);
}

}  // namespace kwo::platform::windows
