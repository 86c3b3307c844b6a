// What the system's annotation service, and readers, are told about the windows of controls.

#include <oleacc.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

#include "com_support/annotation_service.h"
#include "com_test.h"
#include "dll_under_test.h"
#include "host_box.h"
#include "host_pane.h"
#include "support/american_formats.h"
#include "thread.h"

namespace kwo::com_test {
namespace {

using com_support::Annotated;
using com_support::AnnotationService;
using Lines = std::vector<std::wstring>;

constexpr double kNovember21 = 46347;  // 2026

/// What readers in this process hear of one window (NotifyWinEvent), as soon as it is told.
class Reader {
public:
    Reader() {
        sHeard = {};
        mHook = SetWinEventHook(EVENT_OBJECT_STATECHANGE, EVENT_OBJECT_ACCELERATORCHANGE, GetModuleHandleW(nullptr),
                                Hear, GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_INCONTEXT);
        EXPECT_NE(mHook, nullptr);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() {
        UnhookWinEvent(mHook);
        sOnEvent = nullptr;
    }
    /// The events since the last time, as "name", "state" ...
    static Lines Heard() { return std::exchange(sHeard, {}); }
    static void OnEvent(std::function<void()> action) { sOnEvent = std::move(action); }

private:
    static void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND, LONG object, LONG child, DWORD, DWORD) {
        if (object != OBJID_CLIENT || child != CHILDID_SELF) return;
        static const std::map<DWORD, const wchar_t*> kNames = {
            {EVENT_OBJECT_NAMECHANGE, L"name"},
            {EVENT_OBJECT_VALUECHANGE, L"value"},
            {EVENT_OBJECT_DESCRIPTIONCHANGE, L"description"},
            {EVENT_OBJECT_STATECHANGE, L"state"},
            {EVENT_OBJECT_ACCELERATORCHANGE, L"shortcut"},
            {EVENT_OBJECT_DEFACTIONCHANGE, L"action"},
        };
        const auto name = kNames.find(event);
        if (name == kNames.end()) return;
        sHeard.push_back(name->second);
        if (sOnEvent) std::exchange(sOnEvent, nullptr)();
    }

    static inline Lines sHeard;
    static inline std::function<void()> sOnEvent;
    HWINEVENTHOOK mHook = nullptr;
};

class SpokenControls : public ::testing::Test {
protected:
    void SetUp() override {
        if (!test_support::HasAmericanFormats()) GTEST_SKIP() << "readers are told in the user's own language";
    }
    /// Objects know of a service, or of none, as long as their apartment lives: so each test has its own.
    template <class Body>
    void InAnApartment(Body body) {
        Thread thread([&] {
            ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
            {
                mService.emplace([this](const Annotated& told) { return Hear(told); });
                const Reader reader;
                body();
                EXPECT_EQ(mService->Held(), 0u) << "the service is released with the last window";
                mService.reset();
            }
            CoUninitialize();
        });
    }
    HRESULT Hear(const Annotated& told) {
        const std::wstring number = told.window == mFirst ? L"" : L"other ";
        EXPECT_EQ(told.object, static_cast<DWORD>(OBJID_CLIENT));
        EXPECT_EQ(told.child, static_cast<DWORD>(CHILDID_SELF));
        mTold.push_back(number + (told.isCleared ? L"no " + told.property : told.property + L' ' + told.value));
        return mRefusal;
    }
    Lines Told() { return std::exchange(mTold, {}); }
    static bool CreateButton(IDispatch* button, HostBox& box, const wchar_t* caption = L"&Save") {
        const Outcome outcome = Call(button, L"Create", {static_cast<IDispatch*>(&box), caption});
        EXPECT_EQ(Hex(outcome.status), Hex(S_OK)) << Narrow(outcome.description);
        return SUCCEEDED(outcome.status);
    }
    static void Mouse(IDispatch* object, const wchar_t* member, int x = 300, int y = 150) {
        EXPECT_EQ(Hex(Call(object, member, {1, 0, Var(x * 1.0), Var(y * 1.0)}).status), Hex(S_OK));
    }

    std::optional<AnnotationService> mService;
    HWND mFirst = nullptr;
    HRESULT mRefusal = S_OK;
    Lines mTold;
};

const Lines kButton = {L"Role 43", L"Name Save", L"KeyboardShortcut Alt+S", L"DefaultAction Press", L"State 0"};
const Lines kCleared = {
    L"no Role", L"no State", L"no Name", L"no Value", L"no Description", L"no KeyboardShortcut", L"no DefaultAction"};

TEST_F(SpokenControls, AButton) {
    InAnApartment([this] {
        MemberObject form;
        form.Method(L"OnButtonClick", [](MemberObject::Arguments&, VARIANT*) { return S_OK; });
        HostBox box(80, 30, &form);
        mFirst = box.Window();
        ComPtr<IDispatch> button = Create(L"KWOPicBtn");
        CreateButton(button.Get(), box);
        EXPECT_EQ(Told(), kButton);
        EXPECT_EQ(Reader::Heard(), (Lines{L"name", L"shortcut", L"action", L"state"}));
        EXPECT_EQ(box.asked[L"hWnd"], 1) << "to measure it, as always";

        Mouse(button.Get(), L"MouseDown");
        EXPECT_EQ(Told(), (Lines{L"State 8"}));
        EXPECT_EQ(Reader::Heard(), (Lines{L"state"}));
        Mouse(button.Get(), L"MouseUp");
        EXPECT_EQ(Told(), (Lines{L"State 0"}));
        Call(button.Get(), L"GotFocus");
        EXPECT_EQ(Told(), (Lines{L"State 4"}));
        Call(button.Get(), L"GotFocus");
        Call(button.Get(), L"Resize");
        EXPECT_EQ(Told(), Lines{});
        Let(button.Get(), L"Caption", L"Dele&te");
        EXPECT_EQ(Told(), (Lines{L"Name Delete", L"KeyboardShortcut Alt+T"}));
        EXPECT_EQ(mService->Created(), 1);
        EXPECT_EQ(mService->Held(), 1u);
        button.Reset();
        EXPECT_EQ(Told(), kCleared);
    });
}

TEST_F(SpokenControls, ACalendar) {
    InAnApartment([this] {
        MemberObject form;
        HostBox box(240, 200, &form);
        mFirst = box.Window();
        ComPtr<IDispatch> view = Create(L"KWOMonthView");
        const Var missing = Var::Missing();
        Call(
            view.Get(), L"Create",
            {static_cast<IDispatch*>(&box), Var::Date(kNovember21), missing, missing, missing, missing, missing, true});
        EXPECT_EQ(Told(), (Lines{L"Role 24", L"Name November, 2026", L"Value Saturday, November 21, 2026",
                                 L"Description Selected days: 0"}));
        EXPECT_EQ(Reader::Heard(), (Lines{L"name", L"value", L"description"}));
        EXPECT_EQ(box.asked[L"hWnd"], 1) << "by Create alone";
        Call(view.Get(), L"KeyDown", {39, 0});
        EXPECT_EQ(Told(), (Lines{L"Value Sunday, November 22, 2026"}));
        EXPECT_EQ(Reader::Heard(), (Lines{L"value"}));
        Call(view.Get(), L"KeyDown", {32, 0});
        EXPECT_EQ(Told(), (Lines{L"Value Sunday, November 22, 2026, selected", L"Description Selected days: 1"}));
        EXPECT_EQ(Reader::Heard(), (Lines{L"value", L"description"}));
        Call(view.Get(), L"Resize");
        EXPECT_EQ(Told(), Lines{});
        EXPECT_EQ(box.asked[L"hWnd"], 1);
        view.Reset();
        EXPECT_EQ(Told(), kCleared);
    });
}

TEST_F(SpokenControls, ASplitter) {
    InAnApartment([this] {
        MemberObject form;
        form.Property(L"WindowState", Var(0));
        MemberObject container;
        container.Property(L"hWnd", Var(1));
        container.Property(L"ScaleMode", Var(1));
        container.Property(L"ScaleWidth", Var(1060.0));
        container.Property(L"ScaleHeight", Var(1000.0));
        for (const wchar_t* const name : {L"ScaleX", L"ScaleY"}) {
            container.Method(name, [](MemberObject::Arguments&, VARIANT* result) {
                result->vt = VT_R4;
                result->fltVal = 15;
                return S_OK;
            });
        }
        Pane left(&container, &form, 0);
        Pane right(&container, &form, 600);
        Pane bar(&container, &form, 250);
        mFirst = GetDesktopWindow();
        bar.Property(L"hWnd", Var(static_cast<long>(reinterpret_cast<INT_PTR>(mFirst))));
        ComPtr<IDispatch> splitter = Create(L"KWOSplitterV");
        Call(splitter.Get(), L"Create",
             {static_cast<IDispatch*>(&left), static_cast<IDispatch*>(&right), static_cast<IDispatch*>(&bar)});
        EXPECT_EQ(Told(), (Lines{L"Role 21", L"Value 25%"}));
        Mouse(splitter.Get(), L"MouseDown", 0);
        Mouse(splitter.Get(), L"MouseUp", 250);
        EXPECT_EQ(Told(), (Lines{L"Value 50%"}));
        splitter.Reset();
        EXPECT_EQ(Told(), kCleared);
    });
}

TEST_F(SpokenControls, AWindowIsItsLastOwners) {
    InAnApartment([this] {
        MemberObject form;
        HostBox box(80, 30, &form);
        mFirst = box.Window();
        ComPtr<IDispatch> first = Create(L"KWOPicBtn");
        ComPtr<IDispatch> second = Create(L"KWOPicBtn");
        CreateButton(first.Get(), box);
        CreateButton(second.Get(), box, L"&Open");
        Told();
        Let(first.Get(), L"Caption", L"x");
        first.Reset();
        EXPECT_EQ(Told(), Lines{});
        second.Reset();
        EXPECT_EQ(Told(), kCleared);
    });
}

TEST_F(SpokenControls, AReaderMayLetTheHostReleaseTheObject) {
    InAnApartment([this] {
        MemberObject form;
        HostBox box(80, 30, &form);
        mFirst = box.Window();
        ComPtr<IDispatch> button = Create(L"KWOPicBtn");
        CreateButton(button.Get(), box);
        IDispatch* const raw = button.Get();
        Told();
        Reader::OnEvent([&] { button.Reset(); });
        EXPECT_EQ(Hex(Call(raw, L"GotFocus").status), Hex(S_OK));
        EXPECT_FALSE(button);
        Lines expected = {L"State 4"};
        expected.insert(expected.end(), kCleared.begin(), kCleared.end());
        EXPECT_EQ(Told(), expected);
    });
}

TEST_F(SpokenControls, AServiceThatIsNotImplementedIsAskedOnce) {
    mRefusal = E_NOTIMPL;
    InAnApartment([this] {
        MemberObject form;
        HostBox box(80, 30, &form);
        mFirst = box.Window();
        const ComPtr<IDispatch> keeper = Create(L"KWOPicBtn");
        ComPtr<IDispatch> button = Create(L"KWOPicBtn");
        CreateButton(button.Get(), box);
        EXPECT_EQ(Told().front(), L"Role 43");
        CreateButton(button.Get(), box);
        Call(button.Get(), L"GotFocus");
        EXPECT_EQ(Told(), Lines{});
        EXPECT_EQ(mService->Created(), 1);
        EXPECT_EQ(Reader::Heard(), Lines{});
    });
}

TEST_F(SpokenControls, AServiceThatRefusesAWindowIsAskedForTheNext) {
    mRefusal = E_INVALIDARG;
    InAnApartment([this] {
        MemberObject form;
        HostBox box(80, 30, &form);
        mFirst = box.Window();
        ComPtr<IDispatch> button = Create(L"KWOPicBtn");
        CreateButton(button.Get(), box);
        Told();
        mRefusal = S_OK;
        CreateButton(button.Get(), box);
        EXPECT_EQ(Told(), kButton);
    });
}

// Wine has the class, but not what it does.
TEST_F(SpokenControls, TheSystemsOwnServiceChangesNothing) {
    Thread thread([] {
        CoInitialize(nullptr);
        {
            MemberObject form;
            HostBox box(80, 30, &form);
            ComPtr<IDispatch> button = Create(L"KWOPicBtn");
            CreateButton(button.Get(), box);
            EXPECT_EQ(Hex(Call(button.Get(), L"GotFocus").status), Hex(S_OK));
        }
        CoUninitialize();
    });
}

}  // namespace
}  // namespace kwo::com_test
