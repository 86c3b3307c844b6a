#include "user_input.h"

#include "script_test.h"

namespace kwohost::tests {

namespace {

/// A form with a picture box, whose procedures note the mouse.
class UserInputTest : public ScriptTest {
protected:
    int RunWithBox(const std::wstring& script) {
        return Run(
            L"Set frm = Host.CreateForm(\"frm\")\r\n"
            L"Set box = frm.AddControl(\"PictureBox\", \"box\")\r\n"
            L"frm.Show\r\n" +
            script);
    }
};

constexpr UINT kAgain = WM_APP;
ULONGLONG theFloodEnds = 0;

/// While it lasts, no timer of the system fires.
LRESULT CALLBACK Flood(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == kAgain && GetTickCount64() < theFloodEnds) {
        Sleep(100);
        PostMessageW(window, kAgain, 0, 0);
    }
    return DefWindowProcW(window, message, first, second);
}

}  // namespace

TEST_F(UserInputTest, ClickReturnsAfterTheReleaseHoweverLongThePressTakes) {
    source->OnCall(L"Work", [](Call&) { Sleep(200); });
    RunWithBox(
        L"Sub box_MouseDown(Button, Shift, X, Y)\r\nSource.Work\r\nSource.Note \"down\"\r\nEnd Sub\r\n"
        L"Sub box_MouseUp(Button, Shift, X, Y)\r\nSource.Note \"up\"\r\nEnd Sub\r\n"
        L"Host.Click box, 75, 75\r\nSource.Note \"clicked\"");

    EXPECT_EQ(notes, Notes({L"down", L"up", L"clicked"}));
}

TEST_F(UserInputTest, HeldButtonIsReleasedBeforeTheScriptGoesOnHoweverLateTheSystemsTimersAre) {
    const HWND window = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Flood));
    source->OnCall(L"BeginFlood", [window](Call&) {
        theFloodEnds = GetTickCount64() + 600;
        PostMessageW(window, kAgain, 0, 0);
    });
    RunWithBox(
        L"Sub box_MouseDown(Button, Shift, X, Y)\r\nSource.BeginFlood\r\nEnd Sub\r\n"
        L"Sub box_MouseUp(Button, Shift, X, Y)\r\nSource.Note \"up\"\r\nEnd Sub\r\n"
        L"Host.MovePointer box, 75, 75\r\nHost.HoldButton 50\r\nSource.Note \"held\"");
    DestroyWindow(window);

    EXPECT_EQ(notes, Notes({L"up", L"held"}));
}

TEST_F(UserInputTest, ButtonHeldInsideTheEventOfAnotherLeavesThatOneHeld) {
    RunWithBox(
        L"Sub box_MouseDown(Button, Shift, X, Y)\r\nSource.Note \"down \" & Button\r\n"
        L"If Button = 1 Then\r\nHost.HoldButton 50, 2\r\nSource.Note \"inner\"\r\nEnd If\r\nEnd Sub\r\n"
        L"Sub box_MouseUp(Button, Shift, X, Y)\r\nSource.Note \"up \" & Button\r\nEnd Sub\r\n"
        L"Host.MovePointer box, 75, 75\r\nHost.HoldButton 1000, 1\r\nSource.Note \"outer\"");

    EXPECT_EQ(notes, Notes({L"down 1", L"down 2", L"up 2", L"inner", L"up 1", L"outer"}));
}

}  // namespace kwohost::tests
