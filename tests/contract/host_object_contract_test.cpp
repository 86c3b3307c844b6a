// Host objects are no service: the platform wraps what the host passes in. Every control stands on them.

#include <array>

#include "contract_test.h"
#include "platform/variant.h"

namespace kwo::contract {
namespace {

using platform::Argument;
using platform::ComponentError;
using platform::Date;
using platform::HostObjectRef;
using platform::Missing;
using platform::Variant;
using test_support::Raised;

constexpr TextView kNoSuchMember = u"Object doesn't support this property or method";

class HostObjectContract : public ContractTest {
protected:
    static bool AreSame(const Variant& value, const HostObjectRef& object) {
        const auto* const held = std::get_if<HostObjectRef>(&value);
        return held != nullptr && *held != nullptr && (*held)->IsSameAs(*object);
    }
    /// The uses that name a member.
    static std::vector<std::pair<const char*, std::function<void(platform::HostObject&)>>> UsesOf(TextView member) {
        return {{"Get", [=](auto& asked) { asked.Get(member); }},
                {"Let", [=](auto& asked) { asked.Let(member, true); }},
                {"Set", [=](auto& asked) { asked.Set(member, nullptr); }},
                {"Call", [=](auto& asked) { asked.Call(member); }},
                {"Notify", [=](auto& asked) { asked.Notify(member, {}); }},
                {"CallNamed", [=](auto& asked) { asked.CallNamed(member, {}, {}); }}};
    }

    std::unique_ptr<ScriptedObject> scripted = outside().MakeObject(u"Form");
    HostObjectRef object = scripted->Reference();
};

TEST_F(HostObjectContract, APropertyKeepsWhatItIsLetWithItsType) {
    scripted->SetProperty(u"Tag", platform::Empty{});
    const Variant values[] = {platform::Empty{},
                              platform::Null{},
                              std::int16_t{-7},
                              std::int32_t{70'000},
                              1.5f,
                              0.1,
                              platform::Currency{12'345},
                              Date{-2.75},
                              Text(u"a\0\u00E9\u65E5", 4),
                              Text(),
                              true,
                              false,
                              std::uint8_t{255},
                              platform::ErrorValue{13},
                              platform::ErrorValue{-5}};
    for (const Variant& value : values) {
        object->Let(u"Tag", value);
        EXPECT_EQ(scripted->Property(u"Tag"), value) << value.index();
        EXPECT_EQ(object->Get(u"Tag"), value) << value.index();
    }
}

TEST_F(HostObjectContract, APropertyIsSetToAnObjectOrToTheNullObject) {
    const HostObjectRef font = outside().MakeObject()->Reference();
    scripted->SetProperty(u"Font", platform::Empty{});

    object->Set(u"Font", font);
    EXPECT_TRUE(AreSame(object->Get(u"Font"), font));

    object->Set(u"Font", nullptr);
    EXPECT_EQ(object->Get(u"Font"), Variant(HostObjectRef()));
}

TEST_F(HostObjectContract, AnObjectIsItselfByWhateverReference) {
    const HostObjectRef other = outside().MakeObject()->Reference();

    EXPECT_TRUE(object->IsSameAs(*object));
    EXPECT_TRUE(object->IsSameAs(*scripted->Reference()));
    EXPECT_FALSE(object->IsSameAs(*other));
}

TEST_F(HostObjectContract, TheTypesNameIsEmptyWithoutTypeInformation) {
    EXPECT_EQ(object->TypeName(), u"Form");
    EXPECT_EQ(outside().MakeObject()->Reference()->TypeName(), u"");
}

TEST_F(HostObjectContract, EveryUseOfAMemberThatIsMissingRaises438) {
    EXPECT_FALSE(object->Knows(u"Nowhere"));
    for (const auto& [name, use] : UsesOf(u"Nowhere")) {
        const ComponentError error = Raised([&, &used = use] { used(*object); });
        EXPECT_EQ(error.number, 438) << name;
        EXPECT_EQ(error.description, kNoSuchMember) << name;
    }
}

TEST_F(HostObjectContract, AMemberMayAppearLater) {
    EXPECT_EQ(RaisedNumber([&] { object->Get(u"Late"); }), 438);
    EXPECT_FALSE(object->Knows(u"Late"));

    scripted->SetProperty(u"Late", std::int16_t{1});

    EXPECT_TRUE(object->Knows(u"Late"));
    EXPECT_EQ(object->Get(u"Late"), Variant(std::int16_t{1}));
    scripted->SetMethod(u"Later", [](std::span<Variant>) { return Variant(); });
    EXPECT_TRUE(object->Knows(u"Later"));
}

TEST_F(HostObjectContract, TheErrorOfAMemberArrivesWhole) {
    scripted->SetProperty(u"Broken", true);
    for (const std::int32_t number : {5, 1004, static_cast<std::int32_t>(0x80040123)}) {
        scripted->FailMember(u"Broken", {number, u"Form1.Broken", u"It does not like it.", u"form.hlp", 12});
        for (const auto& [name, use] : UsesOf(u"Broken")) {
            const ComponentError error = Raised([&, &used = use] { used(*object); });
            EXPECT_EQ(error.number, number) << name;
            EXPECT_EQ(error.source, u"Form1.Broken") << name;
            EXPECT_EQ(error.description, u"It does not like it.") << name;
            EXPECT_EQ(error.helpFile, u"form.hlp") << name;
            EXPECT_EQ(error.helpContext, 12) << name;
        }
    }
}

TEST_F(HostObjectContract, ArgumentsArriveInTheirOrderWithTheirTypes) {
    const HostObjectRef other = outside().MakeObject()->Reference();
    std::vector<Variant> seen;
    scripted->SetMethod(u"Line", [&](std::span<Variant> arguments) {
        seen.assign(arguments.begin(), arguments.end());
        return Variant(Text(u"drawn"));
    });
    const Variant given[] = {std::int16_t{1}, Missing{}, 2.5f, Text(u"B"), other, HostObjectRef()};

    for (const bool isCall : {true, false}) {
        seen.clear();
        EXPECT_EQ(isCall ? object->Call(u"Line", given) : object->Get(u"Line", given), Variant(Text(u"drawn")));
        ASSERT_EQ(seen.size(), 6u);
        for (const std::size_t at : {0u, 1u, 2u, 3u, 5u})
            EXPECT_EQ(seen[at], given[at]) << at;
        EXPECT_TRUE(AreSame(seen[4], other));
    }
}

TEST_F(HostObjectContract, AProcedureChangesWhatItGetsByReferenceAlone) {
    const HostObjectRef other = outside().MakeObject()->Reference();
    scripted->SetMethod(u"OnChange", [&](std::span<Variant> arguments) {
        arguments[0] = HostObjectRef();
        arguments[1] = std::int16_t{99};
        arguments[2] = Date{5};
        arguments[3] = true;
        arguments[4] = other;
        arguments[5] = Text(u"new");
        return Variant(std::int32_t{7});
    });
    Argument arguments[] = {{object},           {std::int16_t{11}, false}, {Date{2}}, {false}, {HostObjectRef(object)},
                            {Text(u"what is")}, {std::int32_t{3}}};

    EXPECT_EQ(object->Notify(u"OnChange", arguments), Variant(std::int32_t{7}));

    EXPECT_EQ(arguments[0].value, Variant(HostObjectRef()));
    EXPECT_EQ(arguments[1].value, Variant(std::int16_t{11}));
    EXPECT_EQ(arguments[2].value, Variant(Date{5}));
    EXPECT_EQ(arguments[3].value, Variant(true));
    EXPECT_TRUE(AreSame(arguments[4].value, other));
    EXPECT_EQ(arguments[5].value, Variant(Text(u"new")));
    EXPECT_EQ(arguments[6].value, Variant(std::int32_t{3}));
}

TEST_F(HostObjectContract, AnArgumentThatIsMissingStaysMissing) {
    scripted->SetMethod(u"OnChange", [](std::span<Variant> arguments) {
        EXPECT_EQ(arguments[0], Variant(Missing{}));
        arguments[0] = true;
        return Variant();
    });
    Argument arguments[] = {{Missing{}}};

    object->Notify(u"OnChange", arguments);

    EXPECT_EQ(arguments[0].value, Variant(Missing{}));
}

TEST_F(HostObjectContract, AnObjectThatIsNotReplacedStaysTheSameReference) {
    const HostObjectRef box = outside().MakeObject()->Reference();
    scripted->SetMethod(u"OnClick", [](std::span<Variant>) { return Variant(); });
    Argument arguments[] = {{box}};

    object->Notify(u"OnClick", arguments);

    EXPECT_EQ(arguments[0].value, Variant(box));
}

TEST_F(HostObjectContract, AProcedureRunsOnceWhateverTypesItsParametersHave) {
    int runs = 0;
    scripted->SetMethod(u"OnMonth", [&](std::span<Variant> arguments) {
        ++runs;
        if (auto* const number = std::get_if<std::int16_t>(&arguments[0])) ++*number;
        if (auto* const wide = std::get_if<std::int32_t>(&arguments[0])) ++*wide;
        return Variant();
    });
    for (const ParameterTypes types : {ParameterTypes::AsGiven, ParameterTypes::Longs, ParameterTypes::Variants}) {
        scripted->TakeOnly(types);
        runs = 0;
        Argument arguments[] = {{std::int16_t{41}}};

        object->Notify(u"OnMonth", arguments);

        EXPECT_EQ(runs, 1) << static_cast<int>(types);
        EXPECT_EQ(arguments[0].value, Variant(std::int16_t{42})) << static_cast<int>(types);
    }
}

TEST_F(HostObjectContract, AProcedureThatFailsHasRunOnceAndLeavesWhatItWrote) {
    int runs = 0;
    scripted->SetMethod(u"OnChange", [&](std::span<Variant> arguments) -> Variant {
        ++runs;
        arguments[0] = true;
        throw ComponentError{13, u"Form1", u"Type mismatch", {}, 0};
    });
    Argument arguments[] = {{false}, {std::int16_t{1}}};

    EXPECT_EQ(RaisedNumber([&] { object->Notify(u"OnChange", arguments); }), 13);

    EXPECT_EQ(runs, 1);
    EXPECT_EQ(arguments[0].value, Variant(true));
    EXPECT_EQ(arguments[1].value, Variant(std::int16_t{1}));
}

TEST_F(HostObjectContract, NamedArgumentsFindTheirParametersAndComeBack) {
    scripted->SetMethod(u"Load",
                        [](std::span<Variant> arguments) {
                            EXPECT_EQ(arguments[0], Variant(Text(u"a.txt")));
                            EXPECT_EQ(arguments[1], Variant(Missing{}));
                            EXPECT_EQ(arguments[2], Variant(std::int32_t{3}));
                            arguments[2] = std::int32_t{8};
                            return Variant(true);
                        },
                        {u"Path", u"Language", u"Size"});
    const TextView names[] = {u"Size", u"Path"};
    Variant arguments[] = {std::int32_t{3}, Text(u"a.txt")};

    EXPECT_EQ(object->CallNamed(u"Load", names, arguments), Variant(true));

    EXPECT_EQ(arguments[0], Variant(std::int32_t{8}));
    EXPECT_EQ(arguments[1], Variant(Text(u"a.txt")));
}

TEST_F(HostObjectContract, NamedArgumentsThatFindNoParameterAreErrors) {
    bool hasRun = false;
    scripted->SetMethod(u"Load", [&](std::span<Variant>) { return Variant(hasRun = true); }, {u"Path"});
    const TextView wrong[] = {u"Nowhere"};
    const TextView right[] = {u"Path"};
    Variant one[] = {true};

    EXPECT_EQ(RaisedNumber([&] { object->CallNamed(u"Load", wrong, one); }), 448);
    EXPECT_EQ(RaisedNumber([&] { object->CallNamed(u"Nowhere", right, one); }), 438);
    EXPECT_EQ(RaisedNumber([&] { object->CallNamed(u"Load", {}, one); }), 450);
    EXPECT_EQ(RaisedNumber([&] { object->CallNamed(u"Load", right, {}); }), 450);
    EXPECT_FALSE(hasRun);
}

TEST_F(HostObjectContract, AFailedCallLeavesNamedArgumentsAsTheyWere) {
    scripted->SetMethod(u"Load",
                        [](std::span<Variant> arguments) -> Variant {
                            arguments[0] = Text(u"changed");
                            throw ComponentError{53, {}, u"File not found", {}, 0};
                        },
                        {u"Path"});
    const TextView names[] = {u"Path"};
    Variant arguments[] = {Text(u"a.txt")};

    EXPECT_EQ(RaisedNumber([&] { object->CallNamed(u"Load", names, arguments); }), 53);

    EXPECT_EQ(arguments[0], Variant(Text(u"a.txt")));
}

TEST_F(HostObjectContract, AMemberMayCallBack) {
    scripted->SetProperty(u"Depth", std::int16_t{0});
    scripted->SetMethod(u"Descend", [&](std::span<Variant> arguments) {
        const auto depth = std::get<std::int16_t>(object->Get(u"Depth"));
        if (depth == 3) return Variant(depth);
        object->Let(u"Depth", static_cast<std::int16_t>(depth + 1));
        Argument inner[] = {{Text(u"inner")}};
        const Variant result = object->Notify(u"Descend", inner);
        arguments[0] = Text(u"outer");
        return result;
    });
    Argument arguments[] = {{Text(u"outermost")}};

    EXPECT_EQ(object->Notify(u"Descend", arguments), Variant(std::int16_t{3}));

    EXPECT_EQ(arguments[0].value, Variant(Text(u"outer")));
}

TEST_F(HostObjectContract, AnErrorOfAnInnerCallPassesThroughTheOuterOne) {
    scripted->FailMember(u"Inner", {1004, u"Inner.Source", u"from inside", {}, 0});
    scripted->SetMethod(u"Outer", [&](std::span<Variant>) { return object->Call(u"Inner"); });

    const ComponentError error = Raised([&] { object->Call(u"Outer"); });

    EXPECT_EQ(error.number, 1004);
    EXPECT_EQ(error.source, u"Inner.Source");
    EXPECT_EQ(error.description, u"from inside");
}

TEST_F(HostObjectContract, ACallHoldsTheObjectThatEverybodyLetsGoOf) {
    const std::function<void(platform::HostObject&)> calls[] = {[](auto& callee) { callee.Get(u"Unload"); },
                                                                [](auto& callee) { callee.Call(u"Unload"); },
                                                                [](auto& callee) {
                                                                    Argument arguments[] = {{true}};
                                                                    callee.Notify(u"Unload", arguments);
                                                                },
                                                                [](auto& callee) {
                                                                    const TextView names[] = {u"Cancel"};
                                                                    Variant arguments[] = {true};
                                                                    callee.CallNamed(u"Unload", names, arguments);
                                                                }};
    for (const auto& call : calls) {
        scripted = outside().MakeObject();
        object = scripted->Reference();
        auto part = std::make_shared<int>();
        const std::weak_ptr<int> life = part;
        scripted->SetMethod(u"Part", [part](std::span<Variant>) { return Variant(); });
        part.reset();
        bool hasRun = false;
        scripted->SetMethod(u"Unload",
                            [&](std::span<Variant>) {
                                scripted.reset();
                                object.reset();
                                hasRun = !life.expired();
                                return Variant();
                            },
                            {u"Cancel"});
        platform::HostObject& callee = *object;

        call(callee);

        EXPECT_TRUE(hasRun);
        EXPECT_TRUE(life.expired()) << "the object is gone after the call";
    }
}

TEST_F(HostObjectContract, AnObjectIsHeldByWhatRefersToIt) {
    auto part = std::make_shared<int>();
    const std::weak_ptr<int> life = part;
    scripted->SetMethod(u"Part", [part](std::span<Variant>) { return Variant(); });
    part.reset();
    const std::unique_ptr<ScriptedObject> owner = outside().MakeObject();
    owner->SetProperty(u"Child", platform::Empty{});
    owner->Reference()->Set(u"Child", object);

    scripted.reset();
    object.reset();
    EXPECT_FALSE(life.expired());

    owner->Reference()->Set(u"Child", nullptr);
    EXPECT_TRUE(life.expired());
}

}  // namespace
}  // namespace kwo::contract
