#include "com/module.h"

#include <algorithm>

namespace kwo::com {

Module& Module::Instance() {
    static Module module;
    return module;
}

void Module::Attach(HINSTANCE handle) {
    mHandle = handle;
    mSlot = ::TlsAlloc();
}

void Module::Detach() {
    mApartments.clear();
    if (mSlot != TLS_OUT_OF_INDEXES) ::TlsFree(mSlot);
    mSlot = TLS_OUT_OF_INDEXES;
}

void Module::ThreadEnded() {
    if (mSlot == TLS_OUT_OF_INDEXES) return;
    auto* const ended = static_cast<Apartment*>(::TlsGetValue(mSlot));
    if (ended == nullptr) return;
    ::TlsSetValue(mSlot, nullptr);
    const std::lock_guard guard(mMutex);
    std::erase_if(mApartments, [ended](const auto& apartment) { return apartment.get() == ended; });
}

std::shared_ptr<Apartment> Module::CurrentApartment() {
    auto* const known = static_cast<Apartment*>(::TlsGetValue(mSlot));
    const std::lock_guard guard(mMutex);
    if (known != nullptr) {
        return *std::ranges::find_if(mApartments, [known](const auto& apartment) { return apartment.get() == known; });
    }
    const auto& made = mApartments.emplace_back(std::make_shared<Apartment>(mHandle));
    ::TlsSetValue(mSlot, made.get());
    return made;
}

}  // namespace kwo::com
