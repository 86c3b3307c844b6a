// Nothing in the usual DLL starts the call trace, so this is shown on the shell's objects without the DLL around them.

#include <windows.h>
#include <gtest/gtest.h>

#include <objbase.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "com/apartment.h"
#include "com/class_objects.h"
#include "com/server/com_values.h"
#include "com_support/type_description.h"
#include "kwoutil.h"

namespace kwo::com {
namespace {

using com_support::FunctionDescription;
using com_support::TypeAttributes;

std::string Narrow(TextView text) {
    return {text.begin(), text.end()};
}

/// The members of an object as compiled callers see them.
ComPtr<ITypeInfo> MembersOf(IDispatch& object) {
    constexpr UINT kVirtualTable = static_cast<UINT>(-1);
    ComPtr<ITypeInfo> late;
    ComPtr<ITypeInfo> members;
    HREFTYPE reference = 0;
    EXPECT_EQ(object.GetTypeInfo(0, 0, late.Out()), S_OK);
    EXPECT_EQ(late->GetRefTypeOfImplType(kVirtualTable, &reference), S_OK);
    EXPECT_EQ(late->GetRefTypeInfo(reference, members.Out()), S_OK);
    return members;
}

/// ".Interval (Let)".
std::string NameOf(ITypeInfo& members, const FunctionDescription& member) {
    Bstr name;
    UINT count = 0;
    EXPECT_EQ(members.GetNames(member->memid, name.Out(), 1, &count), S_OK);
    const std::string dotted = "." + Narrow(ToText(name.Get()));
    switch (member->invkind) {
        case INVOKE_PROPERTYGET:
            return dotted + " (Get)";
        case INVOKE_PROPERTYPUT:
            return dotted + " (Let)";
        case INVOKE_PROPERTYPUTREF:
            return dotted + " (Set)";
        default:
            return dotted;
    }
}

/// Every pointer is null, every number 0.
void CallWithNothing(IUnknown& object, const FunctionDescription& member) {
    const auto count = static_cast<UINT>(member->cParams);
    std::vector<VARTYPE> types;
    for (UINT at = 0; at < count; ++at) {
        const VARTYPE type = member->lprgelemdescParam[at].tdesc.vt;
        types.push_back(type == VT_PTR ? VARTYPE{VT_UNKNOWN} : type == VT_USERDEFINED ? VARTYPE{VT_I4} : type);
    }
    VARIANT nothing = {};
    std::vector<VARIANT*> arguments(count, &nothing);
    VARIANT result = {};
    EXPECT_EQ(::DispCallFunc(&object, static_cast<ULONG_PTR>(member->oVft), CC_STDCALL, VT_ERROR, count, types.data(),
                             arguments.data(), &result),
              S_OK);
}

class MemberTrace : public testing::Test {
protected:
    template <class Interface>
    static ComPtr<Interface> New(const ClassEntry& entry, REFIID id) {
        ComPtr<Interface> object;
        EXPECT_EQ(entry.make(id, reinterpret_cast<void**>(object.Out())), S_OK);
        return object;
    }
    /// The entries without their times; those of durations without the duration.
    std::vector<std::string> Entries() {
        constexpr std::size_t kTimeOfDay = 9;
        std::vector<std::string> entries;
        for (std::int32_t slot = 1; slot < mTrace.Ring().WriteIndex(); ++slot) {
            const TextView text = mTrace.Ring().Slot(slot);
            std::string line(text.begin(), text.end());
            if (line.find("====") != std::string::npos) continue;
            line.erase(0, line.find(' ', kTimeOfDay));
            line.erase(std::min(line.find("\r\n"), line.find(" Dur=")));
            entries.push_back(line);
        }
        return entries;
    }

    /// What the DLL's entry point and its host do otherwise.
    struct Attached {
        Attached() { ::CoInitialize(nullptr); }
        ~Attached() {
            Apartments::Instance().ThreadEnded();
            ::CoUninitialize();
        }
        Attached(const Attached&) = delete;
        Attached& operator=(const Attached&) = delete;
    };
    Attached mAttached;
    std::shared_ptr<Apartment> mApartment = Apartments::Instance().Current();
    frame::Trace& mTrace = mApartment->component.trace;
};

TEST_F(MemberTrace, AMemberStandsOnTheTraceWhileItRuns) {
    const auto timer = New<_KWOTimer>(TimerClass(), IID__KWOTimer);
    const auto utility = New<_KWOUtility>(UtilityClass(), IID__KWOUtility);
    mTrace.KWO_TraceStart(0, 20, false);
    LONG interval = 0;
    VARIANT_BOOL isNt = VARIANT_FALSE;

    EXPECT_EQ(timer->put_Interval(100), S_OK);
    EXPECT_EQ(timer->get_Interval(&interval), S_OK);
    EXPECT_EQ(utility->get_KWO_IsWinNT(&isNt), S_OK);

    EXPECT_EQ(Entries(),
              (std::vector<std::string>{"  Push KWOTimer.Interval (Let)", "  Pop  KWOTimer.Interval (Let)",
                                        "  Push KWOTimer.Interval (Get)", "  Pop  KWOTimer.Interval (Get)",
                                        "  Push KWOUtility.KWO_IsWinNT (Get)", "  Pop  KWOUtility.KWO_IsWinNT (Get)"}));
    EXPECT_EQ(mTrace.Stack().Depth(), 0);
}

TEST_F(MemberTrace, EveryMemberStandsOnItByItsNameAndKind) {
    for (const ClassEntry& entry : {RegistryClass(), UtilityClass(), SplitterVClass(), PicBtnClass(), SysParamsClass(),
                                    SysTrayClass(), SysMetricsClass(), MonthViewClass(), TimerClass()}) {
        const auto object = New<IDispatch>(entry, IID_IDispatch);
        const ComPtr<ITypeInfo> members = MembersOf(*object);
        for (UINT index = 0; index < TypeAttributes(*members)->cFuncs; ++index) {
            const FunctionDescription member(*members, index);
            const std::string name = Narrow(entry.name) + NameOf(*members, member);
            mTrace.KWO_TraceStart(0, 20, false);

            CallWithNothing(*object, member);

            const std::vector<std::string> entries = Entries();
            ASSERT_GE(entries.size(), 2u) << name;
            EXPECT_EQ(entries.front(), "  Push " + name);
            EXPECT_EQ(entries.back(), "  Pop  " + name);
        }
    }
}

TEST_F(MemberTrace, AFailingMemberLeavesTheTrace) {
    const auto timer = New<_KWOTimer>(TimerClass(), IID__KWOTimer);
    mTrace.KWO_TraceStart(0, 20, false);

    EXPECT_EQ(timer->get_Interval(nullptr), E_POINTER);

    EXPECT_EQ(Entries(),
              (std::vector<std::string>{"  Push KWOTimer.Interval (Get)", "  Pop  KWOTimer.Interval (Get)"}));
    EXPECT_EQ(mTrace.Stack().Depth(), 0);
}

TEST_F(MemberTrace, NothingIsKeptBeforeATraceWasStarted) {
    const auto timer = New<_KWOTimer>(TimerClass(), IID__KWOTimer);

    EXPECT_EQ(timer->put_Interval(100), S_OK);

    EXPECT_EQ(mTrace.Stack().Capacity(), 0);
}

}  // namespace
}  // namespace kwo::com
