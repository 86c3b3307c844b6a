#pragma once

#include <olectl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com_test.h"

namespace kwo::com_test {

/// A host's object of members by name, each a function of its arguments in order, which it may change; on the test's
/// stack. A put comes with the value as the only argument. The members that were asked for are counted.
class MemberObject : public test_support::StandIn<> {
public:
    using Arguments = std::vector<VARIANT*>;
    using Body = std::function<HRESULT(Arguments& given, VARIANT* result)>;

    void Method(const std::wstring& name, Body body) { mMembers[name] = std::move(body); }
    /// A property with storage.
    Var& Property(const std::wstring& name, Var value) {
        values[name] = std::move(value);
        mMembers[name] = [this, name](Arguments& given, VARIANT* result) {
            if (result == nullptr) return VariantCopyInd(&values[name], given[0]);
            return VariantCopy(result, &values[name]);
        };
        return values[name];
    }

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        DISPID id = 1;
        for (const auto& [name, body] : mMembers) {
            if (lstrcmpiW(name.c_str(), names[0]) == 0) {
                ++asked[name];
                *ids = id;
                return S_OK;
            }
            ++id;
        }
        *ids = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                        UINT*) override {
        if (id < 1 || id > static_cast<DISPID>(mMembers.size())) return DISP_E_MEMBERNOTFOUND;
        auto member = mMembers.begin();
        std::advance(member, id - 1);
        if (member->first == failing) {
            info->scode = static_cast<SCODE>(0x800A04D2);
            info->bstrSource = SysAllocString(L"the host");
            info->bstrDescription = SysAllocString(L"refused");
            return DISP_E_EXCEPTION;
        }
        std::vector<Var> copies(parameters->cArgs);
        Arguments given;
        for (UINT at = 0; at < parameters->cArgs; ++at) {
            VariantCopyInd(&copies[at], &parameters->rgvarg[parameters->cArgs - 1 - at]);
            given.push_back(&copies[at]);
        }
        const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        com_support::OwnedVariant ignored;
        const Body body = member->second;
        const HRESULT called = body(given, isPut ? nullptr : result != nullptr ? result : &ignored);
        for (UINT at = 0; at < parameters->cArgs; ++at)
            WriteBack(copies[at], parameters->rgvarg[parameters->cArgs - 1 - at]);
        return called;
    }

    std::map<std::wstring, Var> values;
    std::map<std::wstring, int> asked;
    std::wstring failing;

private:
    /// Into the caller's variable, if it passed one.
    static void WriteBack(Var& value, VARIANT& passed) {
        if ((passed.vt & VT_BYREF) == 0) return;
        const auto type = static_cast<VARTYPE>(passed.vt & ~VT_BYREF);
        if (type == VT_VARIANT) {
            VariantCopy(passed.pvarVal, &value);
            return;
        }
        VariantChangeType(&value, &value, 0, type);
        if (type == VT_DISPATCH) std::swap(*passed.ppdispVal, value.pdispVal);
        if (type == VT_I4) *passed.plVal = value.lVal;
        if (type == VT_DATE) *passed.pdate = value.date;
        if (type == VT_BOOL) *passed.pboolVal = value.boolVal;
    }

    std::map<std::wstring, Body> mMembers;
};

inline double NumberIn(const VARIANT& value) {
    Var number;
    VariantChangeType(&number, const_cast<VARIANT*>(&value), 0, VT_R8);
    return number.dblVal;
}

/// A picture box that is drawn on in memory: a context, a font and a size in twips of 15 a pixel. Its window, which
/// shows nothing, is its own or a given one, which the caller destroys.
class HostBox : public MemberObject {
public:
    HostBox(int width, int height, IDispatch* parent, HWND window = nullptr)
        : mWidth(width), mHeight(height), mOwnsWindow(window == nullptr), mWindow(window) {
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        mBitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        mBits = static_cast<DWORD*>(bits);
        mContext = CreateCompatibleDC(nullptr);
        mBefore = SelectObject(mContext, mBitmap);
        SetBkMode(mContext, TRANSPARENT);
        if (mOwnsWindow) mWindow = NewWindow(width, height);

        FONTDESC font = {};
        font.cbSizeofstruct = sizeof font;
        font.lpstrName = const_cast<LPOLESTR>(L"MS Sans Serif");
        font.cySize.int64 = 82'500;
        font.sWeight = FW_NORMAL;
        OleCreateFontIndirect(&font, IID_IFont, mFont.OutVoid());
        const ComPtr<IDispatch> fontObject = As<IDispatch>(mFont.Get(), IID_IDispatch);
        Property(L"Font", Var(fontObject.Get()));
        Property(L"Parent", Var(parent));
        Property(L"hWnd", Var(static_cast<long>(reinterpret_cast<INT_PTR>(mWindow))));
        Property(L"Width", Var(width * 15));
        Property(L"Height", Var(height * 15));
        for (const wchar_t* const name : {L"AutoRedraw", L"FillStyle", L"FontTransparent", L"ForeColor", L"BackColor"})
            Property(name, Var(0));
        Method(L"hDC", [this](Arguments&, VARIANT* result) {
            result->vt = VT_I4;
            result->lVal = static_cast<LONG>(reinterpret_cast<INT_PTR>(Context()));
            return S_OK;
        });
        Method(L"Cls", [this](Arguments&, VARIANT*) {
            Fill({0, 0, mWidth, mHeight}, static_cast<LONG>(NumberIn(values[L"BackColor"])));
            return S_OK;
        });
        Method(L"Refresh", [this](Arguments&, VARIANT*) {
            ++refreshes;
            return S_OK;
        });
        Method(L"SetFocus", [](Arguments&, VARIANT*) { return S_OK; });
        Method(L"TextHeight", [this](Arguments&, VARIANT* result) {
            result->vt = VT_R4;
            result->fltVal = static_cast<float>(TextHeight() * 15);
            return S_OK;
        });
        Method(L"Line", [this](Arguments& given, VARIANT*) {
            const auto pixel = [&](std::size_t at) { return static_cast<LONG>(NumberIn(*given[at]) / 15); };
            Fill({pixel(1), pixel(2), pixel(3), pixel(4)}, static_cast<LONG>(NumberIn(*given[5])));
            return S_OK;
        });
    }
    HostBox(const HostBox&) = delete;
    HostBox& operator=(const HostBox&) = delete;
    ~HostBox() override {
        SelectObject(mContext, mBefore);
        DeleteDC(mContext);
        DeleteObject(mBitmap);
        if (mOwnsWindow) DestroyWindow(mWindow);
    }

    static HWND NewWindow(int width, int height) {
        return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, width, height, nullptr, nullptr, nullptr, nullptr);
    }
    /// With the box's font and colour, as a host hands it out.
    HDC Context() {
        HFONT font = nullptr;
        mFont->get_hFont(&font);
        SelectObject(mContext, font);
        SetTextColor(mContext, Colour(static_cast<LONG>(NumberIn(values[L"ForeColor"]))));
        return mContext;
    }
    HWND Window() const { return mWindow; }
    void SetBold(bool bold) { mFont->put_Bold(bold); }
    int TextHeight() {
        RECT area = {};
        DrawTextW(Context(), L"JjGg|", 5, &area, DT_CALCRECT);
        return area.bottom;
    }
    static COLORREF Colour(LONG colour) {
        return colour < 0 ? GetSysColor(colour & 0xFF) : static_cast<COLORREF>(colour);
    }
    void Fill(RECT area, LONG colour) {
        const HBRUSH brush = CreateSolidBrush(Colour(colour));
        FillRect(mContext, &area, brush);
        DeleteObject(brush);
    }
    std::vector<DWORD> Pixels() const {
        GdiFlush();
        return std::vector<DWORD>(mBits, mBits + mWidth * mHeight);
    }

    int refreshes = 0;

private:
    int mWidth;
    int mHeight;
    HBITMAP mBitmap;
    DWORD* mBits;
    HDC mContext;
    HGDIOBJ mBefore;
    bool mOwnsWindow;
    HWND mWindow;
    ComPtr<IFont> mFont;
};

}  // namespace kwo::com_test
