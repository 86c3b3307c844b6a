#include "kwoinit/dll/message_file_source.h"

#include <windows.h>

#include "com/server/module.h"
#include "com_support/module_path.h"
#include "kwoinit/message_errors.h"
#include "kwoinit/message_file.h"
#include "platform/windows/quiet_drives.h"

namespace kwo::kwoinit {

namespace {

constexpr platform::TextView kSource = u"KWOInitialize.KWO_MsgTableSize";
constexpr platform::TextView kUsualName = u"KWOInit.nls";

class OpenFile {
public:
    explicit OpenFile(const platform::Text& path)
        : mHandle(::CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {}
    ~OpenFile() {
        if (*this) ::CloseHandle(mHandle);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    explicit operator bool() const { return mHandle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return mHandle; }

private:
    HANDLE mHandle;
};

platform::Text About(const platform::Text& path, platform::TextView reason) {
    return u"The message file " + path + u" cannot be used: " + platform::Text(reason);
}

/// False for a folder, for a device, and if there is nothing.
bool IsFile(const platform::Text& path) {
    const DWORD attributes = ::GetFileAttributesW(reinterpret_cast<const wchar_t*>(path.c_str()));
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

std::optional<FoundFile> Read(const platform::Text& path) {
    // For the system a zero character would end the path.
    if (path.empty() || path.find(u'\0') != platform::Text::npos || !IsFile(path)) return std::nullopt;
    const OpenFile file(path);
    if (!file) Raise(MessageError::FileUnreadable, kSource, About(path, u"it cannot be opened"));
    // Windows gives pipes the attributes of files.
    if (::GetFileType(file.Get()) != FILE_TYPE_DISK) return std::nullopt;
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file.Get(), &size))
        Raise(MessageError::FileUnreadable, kSource, About(path, u"it has no size"));
    if (size.QuadPart > static_cast<LONGLONG>(MessageFile::kLargestFile)) {
        Raise(MessageError::FileTooLarge, kSource, About(path, u"it is larger than 64 MiB"));
    }
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        Raise(MessageError::FileUnreadable, kSource, About(path, u"it cannot be read"));
    }
    bytes.resize(read);
    return FoundFile{path, std::move(bytes)};
}

platform::Text FolderOfThisDll() {
    std::wstring path = com_support::ModulePath(com::ThisModule());
    path.resize(path.find_last_of(L'\\') + 1);
    return {path.begin(), path.end()};
}

}  // namespace

std::optional<FoundFile> FindMessageFile(platform::TextView path) {
    const platform::windows::QuietDrives quiet;
    if (auto found = Read(platform::Text(path))) return found;
    const std::size_t separator = path.find_last_of(u"\\/:");
    platform::TextView name = separator == platform::TextView::npos ? path : path.substr(separator + 1);
    if (path.empty()) name = kUsualName;
    if (name.empty()) return std::nullopt;
    return Read(FolderOfThisDll() + platform::Text(name));
}

}  // namespace kwo::kwoinit
