#pragma once

#include <functional>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <vector>

#include "input.h"
#include "platform/component_error.h"
#include "platform/variant.h"
#include "target.h"

namespace kwo::fuzz {

class HostileHost;

/// An object of the host. Before each answer the input decides whether the object answers well, answers something else,
/// fails, or first does something else with the component.
class HostileObject final : public platform::HostObject {
public:
    HostileObject(HostileHost& host, platform::Text typeName) : mHost(host), mTypeName(std::move(typeName)) {}

    /// What it answers when it answers well; a method answers the value too.
    std::map<platform::Text, platform::Variant, std::less<>> members;

private:
    platform::Variant DoGet(platform::TextView member, std::span<const platform::Variant> arguments) override;
    void DoLet(platform::TextView member, const platform::Variant& value) override;
    void DoSet(platform::TextView member, const platform::HostObjectRef& value) override;
    platform::Variant DoCall(platform::TextView member, std::span<const platform::Variant> arguments) override;
    platform::Variant DoNotify(platform::TextView member, std::span<platform::Argument> arguments) override;
    platform::Variant DoCallNamed(platform::TextView member, std::span<const platform::TextView> names,
                                  std::span<platform::Variant> arguments) override;
    bool DoIsSameAs(const platform::HostObject& other) const override;
    bool DoKnows(platform::TextView member) override;
    platform::Text DoTypeName() const override;

    HostileHost& mHost;
    platform::Text mTypeName;
};

/// A host whose objects do as the input says, and which remembers what it did.
class HostileHost {
public:
    explicit HostileHost(Input& input) : mInput(input) {}

    std::shared_ptr<HostileObject> Make(platform::TextView typeName) {
        auto object = std::make_shared<HostileObject>(*this, platform::Text(typeName));
        mMade.push_back(object);
        return object;
    }
    /// A value of any type, also an object of this host or no object.
    platform::Variant AnyValue();

    /// Runs one member of the class under test. It may raise what the host raised and what the class itself does, no
    /// other number; it runs out of memory only if the host did.
    template <class Member>
    void Run(Member&& member) {
        try {
            member();
        } catch (const platform::ComponentError& error) {
            KWO_HOLDS(error.number != 0);
            KWO_HOLDS(mRaised.contains(error.number));
        } catch (const std::bad_alloc&) {
            KWO_HOLDS(mRanOutOfMemory);
        }
    }

    /// The class is released: nothing but this host's own members holds its objects then.
    void CheckThatNothingIsHeld() {
        for (const auto& made : mMade) {
            if (const auto object = made.lock()) object->members.clear();
        }
        for (const auto& made : mMade)
            KWO_HOLDS(made.expired());
    }

    /// What the host does in the middle of an answer.
    std::function<void()> onIntrusion;
    /// It behaves from now on.
    bool isCalm = false;

private:
    friend class HostileObject;

    enum class Answer { kGood, kOther };

    /// Decides, and fails or intrudes if that is the decision.
    Answer Decide();

    Input& mInput;
    std::vector<std::weak_ptr<HostileObject>> mMade;
    /// The numbers that may come out of the class: its own, and those that were raised.
    std::set<std::int32_t> mRaised = {5, 6, 13, 91, 424, 438};
    bool mRanOutOfMemory = false;
    int mGoodAnswers = 0;  ///< that come before the next decision
    int mDepth = 0;
};

}  // namespace kwo::fuzz
