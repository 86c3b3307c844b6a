#include "frame/log_file.h"

#include <string>
#include <utility>

#include "frame/text_routines.h"

namespace kwo::frame {

namespace {

constexpr TextView kExtension = u".log";

}  // namespace

void LogFile::SetName(TextView folder, TextView program) {
    mName = KWO_AddSeparator(folder, u"\\") + Text(program) + Text(kExtension);
}

bool LogFile::Open(TextView folder, TextView program, platform::SystemErrors& errors) {
    constexpr std::int32_t kInvalidName = 123;
    SetName(folder, program);
    if (mName.find(u'\0') != Text::npos) {
        // The system would read the name up to that character, where it is the same for every number.
        errors.SetLast(kInvalidName);
        return false;
    }
    mFile = mFiles.CreateNew(mName);
    for (std::int64_t number = 1; mFile == 0 && IsTaken(errors); ++number) {
        SetName(folder, Text(program) + Decimal(number));
        mFile = mFiles.CreateNew(mName);
    }
    mWritten = 0;
    return IsOpen();
}

/// Whether CreateNew failed because the name is taken. Keeps the last error.
bool LogFile::IsTaken(platform::SystemErrors& errors) {
    constexpr std::int32_t kAccessDenied = 5;
    constexpr std::int32_t kFileExists = 80;

    const std::int32_t code = errors.Last();
    // If a folder has the name, some systems report that access is denied.
    if (code != kAccessDenied) return code == kFileExists;
    const std::int32_t attributes = mNames.Attributes(mName);
    errors.SetLast(code);
    return attributes != platform::FileSystem::kNoAttributes && (attributes & platform::FileSystem::kFolder) != 0;
}

bool LogFile::Write(TextView text) {
    const std::string bytes = mConversions.ToAnsi(text);
    if (!mFiles.Write(mFile, bytes)) return false;
    mWritten += static_cast<std::int64_t>(bytes.size());
    return true;
}

void LogFile::Close() {
    if (mFile != 0) mFiles.Close(std::exchange(mFile, 0));
    mWritten = 0;
}

}  // namespace kwo::frame
