#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::test_support {

/// An empty folder of a test's own, gone at the end with all that is in it. Its name has blanks.
class TemporaryFolder {
public:
    TemporaryFolder() {
        wchar_t base[MAX_PATH];
        GetTempPathW(MAX_PATH, base);
        mPath = std::wstring(base) + L"kwo test " + std::to_wstring(GetCurrentProcessId()) + L" " +
                std::to_wstring(++sMade);
        // A process of the same number may have ended before it could tidy up.
        Remove(mPath);
        CreateDirectoryW(mPath.c_str(), nullptr);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { Remove(mPath); }

    const std::wstring& Path() const { return mPath; }
    std::wstring MakeFolder(const std::wstring& name) const {
        const std::wstring path = mPath + L"\\" + name;
        CreateDirectoryW(path.c_str(), nullptr);
        return path;
    }
    std::wstring MakeFile(const std::wstring& name, DWORD attributes = FILE_ATTRIBUTE_NORMAL) const {
        const std::wstring path = mPath + L"\\" + name;
        CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr));
        SetFileAttributesW(path.c_str(), attributes);
        return path;
    }

private:
    static void Remove(const std::wstring& folder) {
        WIN32_FIND_DATAW entry;
        const HANDLE listing = FindFirstFileW((folder + L"\\*").c_str(), &entry);
        if (listing == INVALID_HANDLE_VALUE) return;
        do {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring path = folder + L"\\" + name;
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                Remove(path);
            } else {
                DeleteFileW(path.c_str());
            }
        } while (FindNextFileW(listing, &entry));
        FindClose(listing);
        RemoveDirectoryW(folder.c_str());
    }

    static inline int sMade = 0;
    std::wstring mPath;
};

}  // namespace kwo::test_support
