#include "companion_fixture.h"

namespace kwo::com_test {

ComPtr<IDispatch> CreateCompanion() {
    ComPtr<IDispatch> object;
    CLSID id = {};
    EXPECT_EQ(Hex(CLSIDFromProgID(L"KWOInit.KWOInitialize", &id)), Hex(S_OK));
    EXPECT_EQ(Hex(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.OutVoid())), Hex(S_OK));
    return object;
}

TemporaryFile::TemporaryFile(const std::string& bytes) {
    wchar_t folder[MAX_PATH] = {};
    wchar_t path[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"kwo", 0, path);
    mPath = path;
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    EXPECT_EQ(written, bytes.size());
    CloseHandle(file);
}

LONG Array::Lowest() const {
    LONG lowest = -1;
    SafeArrayGetLBound(mArray.Get(), 1, &lowest);
    return lowest;
}

LONG Array::Highest() const {
    LONG highest = -1;
    SafeArrayGetUBound(mArray.Get(), 1, &highest);
    return highest;
}

std::wstring Array::Text(LONG at) const {
    Bstr text;
    if (FAILED(SafeArrayGetElement(mArray.Get(), &at, text.Out()))) return L"<no element>";
    return text.Text();
}

SHORT Array::Number(LONG at) const {
    SHORT number = -1;
    SafeArrayGetElement(mArray.Get(), &at, &number);
    return number;
}

void Array::Put(LONG at, const wchar_t* text) {
    const Bstr string{std::wstring(text)};
    SafeArrayPutElement(mArray.Get(), &at, string.Get());
}

}  // namespace kwo::com_test
