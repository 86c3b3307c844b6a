#include "platform/windows/taskbar_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "windows/thread_windows.h"

namespace kwo::platform::windows {
namespace {

using contract::ThreadWindows;

class Ear final : public TaskbarListener {
public:
    void TaskbarCreated() override { ++heard; }
    int heard = 0;
};

void TellAll(UINT message) {
    for (const HWND window : ThreadWindows())
        ::PostMessageW(window, message, 0, 0);
    MSG next;
    while (::PeekMessageW(&next, nullptr, 0, 0, PM_REMOVE))
        ::DispatchMessageW(&next);
}

DWORD WINAPI End(void* owner) {
    static_cast<std::unique_ptr<TaskbarWindow>*>(owner)->reset();
    return 0;
}

const UINT kCreated = ::RegisterWindowMessageW(L"TaskbarCreated");

TEST(TaskbarWindowTest, IsNotSeen) {
    Ear ear;
    const std::vector<HWND> before = ThreadWindows();
    const TaskbarWindow window(ear);
    ASSERT_EQ(ThreadWindows().size(), before.size() + 1);
    for (const HWND each : ThreadWindows()) {
        if (std::find(before.begin(), before.end(), each) == before.end()) {
            EXPECT_FALSE(::IsWindowVisible(each));
        }
    }
}

TEST(TaskbarWindowTest, HearsOfATaskbarAndOfNothingElse) {
    Ear ear;
    const TaskbarWindow window(ear);
    TellAll(kCreated + 1);
    TellAll(WM_NULL);
    EXPECT_EQ(ear.heard, 0);
    TellAll(kCreated);
    EXPECT_EQ(ear.heard, 1);
}

TEST(TaskbarWindowTest, StaysWhenAllWindowsAreAskedToClose) {
    Ear ear;
    const TaskbarWindow window(ear);
    TellAll(WM_CLOSE);
    TellAll(kCreated);
    EXPECT_EQ(ear.heard, 1);
}

TEST(TaskbarWindowTest, HearsNothingMoreAfterItsEndOnAnotherThread) {
    Ear ear;
    const std::size_t before = ThreadWindows().size();
    auto window = std::make_unique<TaskbarWindow>(ear);
    ASSERT_EQ(ThreadWindows().size(), before + 1);
    const HANDLE thread = ::CreateThread(nullptr, 0, End, &window, 0, nullptr);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    TellAll(kCreated);
    EXPECT_EQ(ear.heard, 0);
    EXPECT_EQ(ThreadWindows().size(), before);
}

}  // namespace
}  // namespace kwo::platform::windows
