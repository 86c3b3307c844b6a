#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/file_system.h"
#include "platform/log_files.h"
#include "platform/system_errors.h"

namespace kwo::frame {

/// A numbered file of a log: 8-bit text in the system's code page.
class LogFile {
public:
    LogFile(platform::LogFiles& files, platform::FileSystem& names, platform::Conversions& conversions)
        : mFiles(files), mNames(names), mConversions(conversions) {}
    ~LogFile() { Close(); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// The name of the next file as long as it is not taken.
    void SetName(platform::TextView folder, platform::TextView program);
    /// Opens the first of program.log, program1.log, program2.log ... that is no file or folder yet. False when there
    /// can be none, the platform's last error says why; `Name` is then what was tried.
    bool Open(platform::TextView folder, platform::TextView program, platform::SystemErrors& errors);
    bool IsOpen() const { return mFile != 0; }
    /// Of the file that is open, or was last; with its folder.
    const platform::Text& Name() const { return mName; }

    /// In one piece. False when it could not be written, the platform's last error says why.
    bool Write(platform::TextView text);
    /// In bytes, since the file was opened or the count was set to nothing.
    std::int64_t Written() const { return mWritten; }
    void ForgetWritten() { mWritten = 0; }

    void Close();
    /// Of the file that was open last.
    void Delete() { mFiles.Delete(mName); }

private:
    bool IsTaken(platform::SystemErrors& errors);

    platform::LogFiles& mFiles;
    platform::FileSystem& mNames;
    platform::Conversions& mConversions;
    platform::LogFiles::File mFile = 0;
    platform::Text mName;
    std::int64_t mWritten = 0;
};

}  // namespace kwo::frame
