#include "com/apartment.h"

#include <algorithm>
#include <mutex>

#include "com/server/module.h"

namespace kwo::com {

namespace {

/// The DLL stays loaded while the system may call into it.
class LocksModule final : public platform::windows::ModuleUse {
public:
    void Begin() noexcept override { Module::Instance().Lock(); }
    void End() noexcept override { Module::Instance().Unlock(); }
};

platform::windows::ModuleUse& Use() {
    static LocksModule use;
    return use;
}

}  // namespace

Apartments& Apartments::Instance() {
    static Apartments apartments;
    return apartments;
}

void Apartments::Attach() {
    mSlot = ::TlsAlloc();
}

void Apartments::Detach() {
    for (const auto& apartment : mApartments)
        apartment->platform.StopTimers();
    mApartments.clear();
    if (mSlot != TLS_OUT_OF_INDEXES) ::TlsFree(mSlot);
    mSlot = TLS_OUT_OF_INDEXES;
}

void Apartments::ThreadEnded() {
    if (mSlot == TLS_OUT_OF_INDEXES) return;
    auto* const ended = static_cast<Apartment*>(::TlsGetValue(mSlot));
    if (ended == nullptr) return;
    ::TlsSetValue(mSlot, nullptr);
    ended->platform.StopTimers();
    const std::lock_guard guard(mLock);
    std::erase_if(mApartments, [ended](const auto& apartment) { return apartment.get() == ended; });
}

std::shared_ptr<Apartment> Apartments::Current() {
    auto* const known = static_cast<Apartment*>(::TlsGetValue(mSlot));
    const std::lock_guard guard(mLock);
    if (known != nullptr) {
        return *std::ranges::find_if(mApartments, [known](const auto& apartment) { return apartment.get() == known; });
    }
    const auto& made = mApartments.emplace_back(std::make_shared<Apartment>(ThisModule(), Use()));
    ::TlsSetValue(mSlot, made.get());
    return made;
}

}  // namespace kwo::com
