#pragma once

#include <windows.h>

#include <string_view>

namespace kwohost {

/// One of the process's standard outputs: UTF-16 to a console, UTF-8 to a file or a pipe, nothing kept back.
class Output {
public:
    /// `which` is STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
    explicit Output(DWORD which);

    /// False if the other end is gone or the disk is full. A process without this output writes nowhere and succeeds.
    bool Write(std::wstring_view text);

private:
    bool WriteToConsole(std::wstring_view text);
    bool WriteBytes(std::string_view bytes);

    HANDLE mHandle;
    bool mIsConsole;
};

/// How much of `text` goes to a console in one call. A surrogate pair stays together.
std::size_t ConsoleChunk(std::wstring_view text);

}  // namespace kwohost
