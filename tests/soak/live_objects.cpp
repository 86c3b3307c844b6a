#include "live_objects.h"

#include <atomic>
#include <utility>

#include "findings.h"

namespace kwo::soak {
namespace {

std::atomic<long> theLive = 0;

}  // namespace

long LiveObjects() {
    return theLive;
}

LiveObject::LiveObject(const wchar_t* className) : mObject(com_test::Create(className)) {
    if (mObject) {
        ++theLive;
    } else {
        Found("an object cannot be made: " + com_test::Narrow(className));
    }
}

LiveObject& LiveObject::operator=(LiveObject&& other) noexcept {
    if (this == &other) return *this;
    End();
    mObject = std::move(other.mObject);
    return *this;
}

bool LiveObject::End() {
    if (!mObject) return true;
    const bool hasEnded = mObject.Reset() == 0;
    if (hasEnded) --theLive;
    return hasEnded;
}

void LiveObject::NoteEnd() {
    --theLive;
}

}  // namespace kwo::soak
