#include "com/apartment.h"

#include <mutex>
#include <utility>

#include "com/diagnostics.h"
#include "com/server/module.h"
#include "com/server/runtime.h"

namespace kwo::com {

namespace {

/// Keeps the DLL loaded while the system may call into it.
class LocksModule final : public platform::windows::ModuleUse {
public:
    void Begin() noexcept override { Module::Instance().Lock(); }
    void End() noexcept override { Module::Instance().Unlock(); }
};

constinit LocksModule gUse;
constinit Apartments gApartments;

}  // namespace

struct Apartments::Entry {
    std::shared_ptr<Apartment> apartment;
    Entry* next = nullptr;
};

Apartments& Apartments::Instance() {
    return gApartments;
}

std::shared_ptr<Apartment> Apartments::Current() {
    if (const auto* const known = static_cast<Entry*>(ThreadValue())) return known->apartment;
    auto made = std::make_unique<Entry>(Entry{std::make_shared<Apartment>(ThisModule(), gUse)});
    ThreadValue() = made.get();
    StartTrace(made->apartment->component);
    const std::lock_guard guard(mLock);
    made->next = mFirst;
    mFirst = made.release();
    return mFirst->apartment;
}

void Apartments::ThreadEnded() noexcept {
    const std::unique_ptr<Entry> ended(static_cast<Entry*>(std::exchange(ThreadValue(), nullptr)));
    if (!ended) return;
    TakeOut(*ended);
    // The thread has not left its apartment; this is late, because the system loads no library any more. Rows that
    // stayed would keep their timers alive for ever, and with them the DLL and the host's objects.
    ended->apartment->platform.EndThread();
}

void Apartments::EndAll() noexcept {
    while (const std::unique_ptr<Entry> ended{TakeFirst()})
        ended->apartment->platform.StopCallbacks();
}

Apartments::Entry* Apartments::TakeFirst() noexcept {
    const std::lock_guard guard(mLock);
    return mFirst == nullptr ? nullptr : std::exchange(mFirst, mFirst->next);
}

void Apartments::TakeOut(const Entry& entry) noexcept {
    const std::lock_guard guard(mLock);
    Entry** place = &mFirst;
    while (*place != &entry)
        place = &(*place)->next;
    *place = entry.next;
}

}  // namespace kwo::com
