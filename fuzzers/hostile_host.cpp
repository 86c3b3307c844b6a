#include "hostile_host.h"

#include <algorithm>

namespace kwo::fuzz {

using platform::HostObject;
using platform::HostObjectRef;
using platform::TextView;
using platform::Variant;

HostileHost::Answer HostileHost::Decide() {
    constexpr int kDeepest = 4;
    // A byte below this says how many answers are good. So a short input reaches far into a member.
    constexpr int kGood = 128;
    if (isCalm) return Answer::kGood;
    if (mGoodAnswers > 0) {
        --mGoodAnswers;
        return Answer::kGood;
    }
    const int decision = mInput.Byte();
    if (decision < kGood) {
        mGoodAnswers = decision;
        return Answer::kGood;
    }
    switch (decision % 8) {
        case 0:
        case 1:
            return Answer::kOther;
        case 2:
        case 3: {
            constexpr std::int32_t kNumbers[] = {1, 380, 438, 1'234, -2147221504, INT32_MIN, INT32_MAX};
            const std::int32_t number = mInput.Of(kNumbers);
            mRaised.insert(number);
            platform::Raise(number, u"host", u"refused");
        }
        case 4:
            if (!mInput.Once(4)) return Answer::kGood;
            mRanOutOfMemory = true;
            throw std::bad_alloc();
        default:
            if (mDepth < kDeepest && onIntrusion) {
                ++mDepth;
                // A host passes over the errors of what it does beside its answer.
                Run(onIntrusion);
                --mDepth;
            }
            return Answer::kGood;
    }
}

Variant HostileHost::AnyValue() {
    switch (mInput.Below(18)) {
        case 0:
            return platform::Empty{};
        case 1:
            return platform::Missing{};
        case 2:
            return platform::Null{};
        case 3:
            return mInput.Whole<std::int16_t>();
        case 4:
            return mInput.Whole<std::int32_t>();
        case 5:
            return mInput.Bits<float>();
        case 6:
            return mInput.Real();
        case 7:
            return platform::Currency{mInput.Whole<std::int64_t>()};
        case 8:
            return platform::Date{mInput.Real()};
        case 9:
            return mInput.Text();
        case 10:
            return mInput.Flag();
        case 11:
            return mInput.Whole<std::uint8_t>();
        case 12:
            return platform::ErrorValue{mInput.Whole<std::int32_t>()};
        case 13:
            return HostObjectRef();
        case 14:
            return platform::ForeignRef(std::make_shared<platform::Int16Array>());
        case 15:
            return HostObjectRef(Make(u"Font"));
        default: {
            if (mMade.empty()) return platform::Empty{};
            const auto which = static_cast<std::size_t>(mInput.Byte()) % mMade.size();
            return HostObjectRef(mMade[which].lock());
        }
    }
}

Variant HostileObject::DoGet(TextView member, std::span<const Variant>) {
    if (mHost.Decide() == HostileHost::Answer::kOther) return mHost.AnyValue();
    const auto found = members.find(member);
    if (found == members.end()) platform::RaiseRuntime(platform::RuntimeError::NoSuchMember);
    return found->second;
}

void HostileObject::DoLet(TextView member, const Variant& value) {
    if (mHost.Decide() == HostileHost::Answer::kOther) return;
    const auto found = members.find(member);
    if (found == members.end()) platform::RaiseRuntime(platform::RuntimeError::NoSuchMember);
    found->second = value;
}

void HostileObject::DoSet(TextView member, const HostObjectRef& value) {
    DoLet(member, Variant(value));
}

Variant HostileObject::DoCall(TextView member, std::span<const Variant> arguments) {
    return DoGet(member, arguments);
}

Variant HostileObject::DoNotify(TextView member, std::span<platform::Argument> arguments) {
    // What is written counts even if the procedure then fails.
    for (platform::Argument& argument : arguments) {
        if (argument.byReference && !mHost.isCalm && mHost.mInput.Once(4)) argument.value = mHost.AnyValue();
    }
    return DoGet(member, {});
}

Variant HostileObject::DoCallNamed(TextView member, std::span<const TextView>, std::span<Variant> arguments) {
    for (Variant& argument : arguments) {
        if (!mHost.isCalm && mHost.mInput.Once(4)) argument = mHost.AnyValue();
    }
    return DoGet(member, {});
}

bool HostileObject::DoIsSameAs(const HostObject& other) const {
    const bool isSame = this == &other;
    return mHost.Decide() == HostileHost::Answer::kOther ? !isSame : isSame;
}

bool HostileObject::DoKnows(TextView member) {
    return mHost.Decide() == HostileHost::Answer::kOther ? mHost.mInput.Flag() : members.contains(member);
}

platform::Text HostileObject::DoTypeName() const {
    return mHost.Decide() == HostileHost::Answer::kOther ? platform::Text() : mTypeName;
}

}  // namespace kwo::fuzz
