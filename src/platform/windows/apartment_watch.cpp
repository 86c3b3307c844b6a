#include "platform/windows/apartment_watch.h"

#include <objidl.h>

#include <new>

namespace kwo::platform::windows {

namespace {

/// The system calls it before and after each CoInitialize and CoUninitialize of its thread.
class Spy final : public IInitializeSpy {
public:
    explicit Spy(ApartmentUser& user) : mUser(user) {}

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (id != IID_IUnknown && id != __uuidof(IInitializeSpy)) return E_NOINTERFACE;
        *object = static_cast<IInitializeSpy*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --mReferences;
        if (left == 0) delete this;
        return left;
    }
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
    ULONG mReferences = 1;
};

bool IsInApartment() {
    ULONG_PTR token = 0;
    return SUCCEEDED(::CoGetContextToken(&token));
}

}  // namespace

void ApartmentWatch::Begin() noexcept {
    if (mRunning || !IsInApartment()) return;
    auto* const spy = new (std::nothrow) Spy(mUser);
    if (spy == nullptr) return;
    mRunning = SUCCEEDED(::CoRegisterInitializeSpy(spy, &mCookie));
    spy->Release();
}

void ApartmentWatch::End() noexcept {
    if (!mRunning) return;
    mRunning = false;
    ::CoRevokeInitializeSpy(mCookie);
}

}  // namespace kwo::platform::windows
