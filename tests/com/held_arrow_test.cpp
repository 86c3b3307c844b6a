#include <algorithm>
#include <functional>
#include <map>

#include "com_test.h"
#include "host_box.h"

namespace kwo::com_test {
namespace {

constexpr double kNovember21 = 46347;  // 2026
constexpr DWORD kMuchLater = 10'000;

/// Runs an action from the message loop, once after a while or again and again.
class Later {
public:
    static void Run(DWORD ms, std::function<void()> action) { Start(ms, {std::move(action), true}); }
    static void Repeat(DWORD ms, std::function<void()> action) { Start(ms, {std::move(action), false}); }
    static void ForgetAll() {
        for (const auto& [id, entry] : Entries())
            KillTimer(nullptr, id);
        Entries().clear();
    }

private:
    struct Entry {
        std::function<void()> action;
        bool once;
    };
    static std::map<UINT_PTR, Entry>& Entries() {
        static std::map<UINT_PTR, Entry> entries;
        return entries;
    }
    static void Start(DWORD ms, Entry entry) { Entries()[SetTimer(nullptr, 0, ms, Fire)] = std::move(entry); }
    static void CALLBACK Fire(HWND, UINT, UINT_PTR id, DWORD) {
        const auto found = Entries().find(id);
        if (found == Entries().end()) return;
        const Entry entry = found->second;
        if (entry.once) {
            KillTimer(nullptr, id);
            Entries().erase(found);
        }
        entry.action();
    }
};

void ProcessMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

/// What this thread has computed so far, in milliseconds.
double ThreadMs() {
    FILETIME ignored, kernel, user;
    GetThreadTimes(GetCurrentThread(), &ignored, &ignored, &kernel, &user);
    const auto ms = [](const FILETIME& time) {
        return (static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime) / 10'000;
    };
    return ms(kernel) + ms(user);
}

/// An arrow of a calendar that is held. A release comes in any case, much later.
class HeldArrow : public ::testing::Test {
protected:
    void SetUp() override {
        mForm.Method(L"OnChangeMonth", [this](MemberObject::Arguments&, VARIANT*) {
            ++mSteps;
            if (mOnMonth) mOnMonth();
            return S_OK;
        });
        mView = Create(L"KWOMonthView");
        ASSERT_TRUE(mView);
        CreateView(150);
        Later::Run(kMuchLater, [this] { Release(); });
    }
    void TearDown() override {
        Later::ForgetAll();
        if (mIsDown) MoveButton(false);
        if (mWindow != nullptr) DestroyWindow(mWindow);
        ProcessMessages();
    }
    void CreateView(int spinInterval) {
        const Outcome outcome = Call(mView.Get(), L"Create",
                                     {static_cast<IDispatch*>(&mBox), Var::Date(kNovember21), Var::Missing(),
                                      Var::Missing(), spinInterval, true});
        ASSERT_EQ(outcome.result.boolVal, VARIANT_TRUE);
    }
    void Release() {
        ++mReleases;
        Call(mView.Get(), L"MouseUp", {1, 0, 0, 0});
    }
    /// For how many milliseconds the arrow is held.
    DWORD Held() {
        const DWORD before = GetTickCount();
        const double x = (kWidth - 10) * 15.0;
        EXPECT_EQ(Hex(Call(mView.Get(), L"MouseDown", {1, 0, Var(x), Var(10 * 15.0)}).status), Hex(S_OK));
        return GetTickCount() - before;
    }
    /// The user's own button over a window whose events nobody forwards.
    void MoveButton(bool down) {
        mIsDown = down;
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
        SendInput(1, &input, sizeof input);
    }
    void PressForReal() {
        mWindow = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY, 300, 300, 100, 100,
                                  nullptr, nullptr, nullptr, nullptr);
        SetCursorPos(350, 350);
        ProcessMessages();
        MoveButton(true);
        for (int turns = 0; turns < 100 && GetKeyState(VK_LBUTTON) >= 0; ++turns) {
            Sleep(20);
            ProcessMessages();
        }
        ASSERT_LT(GetAsyncKeyState(VK_LBUTTON), 0);
    }

    static constexpr int kWidth = 240;
    MemberObject mForm;
    HostBox mBox{kWidth, 200, &mForm};
    ComPtr<IDispatch> mView;
    HWND mWindow = nullptr;
    bool mIsDown = false;
    int mSteps = 0;
    int mReleases = 0;
    std::function<void()> mOnMonth;
};

TEST_F(HeldArrow, EndsWithTheWindowOfItsBox) {
    Later::Run(300, [this] { DestroyWindow(mBox.Window()); });
    EXPECT_LT(Held(), kMuchLater / 2);
    EXPECT_EQ(mReleases, 0);
}

TEST_F(HeldArrow, EndsWhenItsReleaseGoesElsewhere) {
    PressForReal();
    Later::Run(300, [this] { MoveButton(false); });
    EXPECT_LT(Held(), kMuchLater / 2);
    EXPECT_EQ(mReleases, 0);
}

TEST_F(HeldArrow, EndsWhenANotificationSwallowsItsRelease) {
    PressForReal();
    // As a message box does, which gets the release.
    mOnMonth = [this] {
        MoveButton(false);
        for (int turns = 0; turns < 100 && GetKeyState(VK_LBUTTON) < 0; ++turns) {
            Sleep(20);
            ProcessMessages();
        }
    };
    EXPECT_LT(Held(), kMuchLater / 2);
    EXPECT_EQ(mSteps, 1);
    EXPECT_EQ(mReleases, 0);
}

TEST_F(HeldArrow, WithoutARealButtonItWaitsForItsRelease) {
    Later::Run(1500, [this] { Release(); });
    EXPECT_GE(Held(), 1300u);
    EXPECT_GE(mSteps, 3);
    EXPECT_EQ(mReleases, 1);
}

TEST_F(HeldArrow, TakesNoTimeOfTheProcessorBetweenItsSteps) {
    CreateView(30'000);
    double before = 0;
    mOnMonth = [&] { before = ThreadMs(); };
    Later::Run(2000, [this] { Release(); });
    EXPECT_GE(Held(), 1800u);
    EXPECT_EQ(mSteps, 1);
    EXPECT_LT(ThreadMs() - before, 150);
}

/// A key that repeats while the click that it has begun is shown.
TEST(HeldKey, ClicksAButtonOnceAtATime) {
    MemberObject form;
    int clicks = 0;
    int running = 0;
    int deepest = 0;
    form.Method(L"OnButtonClick", [&](MemberObject::Arguments&, VARIANT*) {
        ++clicks;
        return S_OK;
    });
    HostBox box(80, 30, &form);
    const ComPtr<IDispatch> button = Create(L"KWOPicBtn");
    Call(button.Get(), L"Create", {static_cast<IDispatch*>(&box), L"&Save"});
    int keys = 0;
    const auto press = [&] {
        ++keys;
        deepest = std::max(deepest, ++running);
        Call(button.Get(), L"KeyDown", {32, 0});
        --running;
    };
    Later::Repeat(10, [&] {
        if (keys < 60) press();
    });
    press();
    Later::ForgetAll();
    EXPECT_GE(keys, 2);
    EXPECT_EQ(clicks, 1);
    EXPECT_LE(deepest, 2) << "a key that starts nothing returns at once";
}

}  // namespace
}  // namespace kwo::com_test
