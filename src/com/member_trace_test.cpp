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
#include "kwoutil.h"

namespace kwo::com {
namespace {

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
