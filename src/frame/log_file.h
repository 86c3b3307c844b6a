#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/file_system.h"
#include "platform/log_files.h"
#include "platform/system_errors.h"

namespace kwo::frame {

/// One file of a log: 8-bit text in the system's ANSI code page.
/// An existing file is never overwritten or appended to. Others may read the file while it is open.
///
///     if (!file.Open(folder, u"HOSTAPP", errors)) fail(file.Name(), errors.Last());
///     file.Write(u"first line\r\n");
class LogFile {
public:
    /// Keeps references to all of these; they must outlive it.
    LogFile(platform::LogFiles& files, platform::FileSystem& names, platform::Conversions& conversions)
        : mFiles(files), mNames(names), mConversions(conversions) {}
    /// Closes the file.
    ~LogFile() { Close(); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// Sets Name to `program`.log in `folder` without opening it: the name to show when there is no file.
    /// `folder` may end with a backslash.
    void SetName(platform::TextView folder, platform::TextView program);
    /// Creates the first of program.log, program1.log, program2.log ... that does not exist, neither as a file nor as
    /// a folder.
    /// No file may be open.
    /// Returns false if none can be created. Name is then the name tried last, and `errors` holds the reason: 123 for
    /// a name with a zero character, otherwise what the system says.
    bool Open(platform::TextView folder, platform::TextView program, platform::SystemErrors& errors);
    /// True from a successful Open until Close.
    bool IsOpen() const { return mFile != 0; }
    /// The name, with its folder, of the file that is open or was open last.
    const platform::Text& Name() const { return mName; }

    /// Writes `text` in one piece, after conversion to the ANSI code page.
    /// It adds no line end. The file must be open.
    /// Returns false if not all of it could be written; the platform's last error says why. The file stays open.
    bool Write(platform::TextView text);
    /// The bytes written since the file was opened or ForgetWritten was called. A Write that failed does not count.
    std::int64_t Written() const { return mWritten; }
    /// Sets the count of Written to 0.
    void ForgetWritten() { mWritten = 0; }

    /// Closes the file. Does nothing if none is open.
    void Close();
    /// Deletes the file that was open last; close it before. A failure is ignored.
    void Delete() { mFiles.Delete(mName); }

private:
    bool IsTaken(platform::SystemErrors& errors);

    platform::LogFiles& mFiles;
    platform::FileSystem& mNames;
    platform::Conversions& mConversions;
    /// 0 while no file is open.
    platform::LogFiles::File mFile = 0;
    platform::Text mName;
    std::int64_t mWritten = 0;
};

}  // namespace kwo::frame
