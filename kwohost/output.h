#pragma once

#include <windows.h>

#include <string_view>

namespace kwohost {

/// One of the process's standard outputs: UTF-16 to a console, UTF-8 to a file or a pipe, nothing kept back.
class Output {
public:
    /// `which` is STD_OUTPUT_HANDLE or STD_ERROR_HANDLE. The handle stays the process's.
    explicit Output(DWORD which);

    /// Writes all of the text, and no line end of its own.
    /// Halves of surrogate pairs become replacement characters in UTF-8.
    /// Returns false if the other end is gone or the disk is full; a part may then be written. A process without this
    /// output writes nowhere and succeeds.
    bool Write(std::wstring_view text);

private:
    /// In pieces that a console accepts.
    bool WriteToConsole(std::wstring_view text);
    /// Until all are written or the system refuses. A pipe may take a part at a time.
    bool WriteBytes(std::string_view bytes);

    /// Null if the process has no such output.
    HANDLE mHandle;
    /// Asked once, when the object is made.
    bool mIsConsole;
};

/// How much of `text` goes to a console in one call: all of it, or 8,192 characters. A surrogate pair stays together.
std::size_t ConsoleChunk(std::wstring_view text);

}  // namespace kwohost
