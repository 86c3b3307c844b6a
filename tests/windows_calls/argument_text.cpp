#include "windows_calls/argument_text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace kwo::windows_calls {

namespace {

std::string Quoted(std::string_view text) {
    return '\'' + std::string(text) + '\'';
}

/// "{name value, name value}": the fields of a record.
class Fields {
public:
    template <class Value>
    Fields& Add(const char* name, const Value& value) {
        mText += mText.empty() ? "{" : ", ";
        mText += std::string(name) + ' ' + Written(value);
        return *this;
    }
    std::string Text() const { return mText + '}'; }

private:
    std::string mText;
};

}  // namespace

std::string TextOf(const char* text) {
    return text == nullptr ? "null" : Quoted(text);
}

std::string TextOf(const wchar_t* text) {
    if (text == nullptr) return "null";
    if (IS_INTRESOURCE(text)) return "number " + std::to_string(reinterpret_cast<UINT_PTR>(text));
    std::string narrow;
    for (; *text != 0; ++text) {
        if (*text < 0x80) {
            narrow += static_cast<char>(*text);
        } else {
            narrow += '{' + std::to_string(static_cast<unsigned>(*text)) + '}';
        }
    }
    return Quoted(narrow);
}

std::string TextOf(const RECT* area) {
    return '[' + std::to_string(area->left) + ' ' + std::to_string(area->top) + ' ' + std::to_string(area->right) +
           ' ' + std::to_string(area->bottom) + ']';
}

std::string TextOf(const POINT* point) {
    return '[' + std::to_string(point->x) + ' ' + std::to_string(point->y) + ']';
}

std::string TextOf(const GUID& id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, 40);
    return TextOf(text);
}

std::string TextOf(const SECURITY_ATTRIBUTES* security) {
    return Fields()
        .Add("nLength", security->nLength)
        .Add("lpSecurityDescriptor", static_cast<HANDLE>(security->lpSecurityDescriptor))
        .Add("bInheritHandle", security->bInheritHandle)
        .Text();
}

std::string TextOf(const STARTUPINFOW* start) {
    STARTUPINFOW rest = *start;
    rest.cb = 0;
    rest.dwFlags = 0;
    rest.wShowWindow = 0;
    const STARTUPINFOW nothing = {};
    return Fields()
        .Add("cb", start->cb)
        .Add("dwFlags", start->dwFlags)
        .Add("wShowWindow", start->wShowWindow)
        .Add("otherwise empty", std::memcmp(&rest, &nothing, sizeof rest) == 0)
        .Text();
}

std::string TextOf(const NOTIFYICONDATAA* record) {
    return Fields()
        .Add("cbSize", record->cbSize)
        .Add("hWnd", record->hWnd)
        .Add("uID", record->uID)
        .Add("uFlags", record->uFlags)
        .Add("uCallbackMessage", record->uCallbackMessage)
        .Add("hIcon", record->hIcon)
        .Add("szTip", std::string(record->szTip, strnlen(record->szTip, 64)))
        .Text();
}

std::string TextOf(const FONTDESC* font) {
    return Fields()
        .Add("cbSizeofstruct", font->cbSizeofstruct)
        .Add("lpstrName", static_cast<const wchar_t*>(font->lpstrName))
        .Add("cySize", font->cySize.int64)
        .Add("sWeight", font->sWeight)
        .Add("sCharset", font->sCharset)
        .Add("fItalic", font->fItalic)
        .Add("fUnderline", font->fUnderline)
        .Add("fStrikethrough", font->fStrikethrough)
        .Text();
}

std::string TextOf(const OSVERSIONINFOA* version) {
    return Fields().Add("dwOSVersionInfoSize", version->dwOSVersionInfoSize).Text();
}

std::string TextOf(const INPUT* input) {
    return Fields()
        .Add("type", input->type)
        .Add("wVk", input->ki.wVk)
        .Add("wScan", input->ki.wScan)
        .Add("dwFlags", input->ki.dwFlags)
        .Add("time", input->ki.time)
        .Text();
}

std::string TextOf(const FILETIME* time) {
    return '[' + std::to_string(time->dwHighDateTime) + ' ' + std::to_string(time->dwLowDateTime) + ']';
}

std::string TextOf(const SYSTEMTIME* time) {
    std::string text = "[";
    for (const WORD part : {time->wYear, time->wMonth, time->wDay, time->wHour, time->wMinute, time->wSecond})
        text += std::to_string(part) + ' ';
    return text + std::to_string(time->wMilliseconds) + ']';
}

std::string TextOf(const DWORD* number) {
    return "->" + std::to_string(*number);
}

/// Handles have 32 bits that count; a program may extend them to 64 with zeros or with their sign.
std::string TextOfHandle(const void* handle) {
    char text[24];
    std::snprintf(text, sizeof text, "#%lx", static_cast<unsigned long>(reinterpret_cast<UINT_PTR>(handle)));
    return text;
}

std::string TextOfBytes(const void* bytes, std::size_t size) {
    std::string text;
    for (std::size_t at = 0; at < size; ++at) {
        const auto byte = static_cast<const unsigned char*>(bytes)[at];
        if (byte >= 0x20 && byte < 0x7F) {
            text += static_cast<char>(byte);
        } else {
            text += '{' + std::to_string(byte) + '}';
        }
    }
    return Quoted(text);
}

}  // namespace kwo::windows_calls
