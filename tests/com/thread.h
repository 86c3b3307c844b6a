#pragma once

#include <windows.h>
// after <windows.h>
#include <process.h>

#include <functional>
#include <utility>

namespace kwo::com_test {

/// A thread that runs `work`; its end waits for it. The compiler's library has none of its own.
class Thread {
public:
    template <class Work>
    explicit Thread(Work work)
        : mWork(std::move(work)),
          mHandle(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, &Thread::Run, this, 0, nullptr))) {}
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    ~Thread() { Join(); }

    void Join() {
        if (mHandle == nullptr) return;
        WaitForSingleObject(mHandle, INFINITE);
        CloseHandle(std::exchange(mHandle, nullptr));
    }

private:
    static unsigned __stdcall Run(void* self) {
        static_cast<Thread*>(self)->mWork();
        return 0;
    }

    std::function<void()> mWork;
    HANDLE mHandle;
};

}  // namespace kwo::com_test
