#include <windows.h>
#include <commctrl.h>
#include <oleauto.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "com_support/annotation_service.h"
#include "com_support/bstr.h"
#include "com_support/owned_variant.h"
#include "form.h"
#include "kwoutil.h"
#include "measure.h"
#include "script_host.h"

// What a redraw of the whole calendar costs on a picture box of the sample host, beside a program that makes the same
// calls of the host and of the system itself, and beside the system's own month calendar. KWOUtil must be registered.

namespace {

using namespace kwo::bench;
using kwo::com_support::Annotated;
using kwo::com_support::AnnotationService;
using kwo::com_support::NewString;
using kwo::com_support::OwnedVariant;

constexpr int kWidth = 280;
constexpr int kHeight = 240;

/// A host object by its dispatch identifiers, asked for once.
class Direct {
public:
    explicit Direct(IDispatch* object) : mObject(object) {}

    void Get(const wchar_t* name, VARIANT& result) { Call(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {}, &result); }
    LONG Whole(const wchar_t* name) {
        OwnedVariant value;
        Get(name, value);
        return value.vt == VT_R4 ? static_cast<LONG>(value.fltVal) : value.lVal;
    }
    void Call(const wchar_t* name, WORD kind, std::vector<VARIANT> arguments, VARIANT* result = nullptr) {
        auto known = mIds.find(name);
        if (known == mIds.end()) {
            LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
            DISPID id = DISPID_UNKNOWN;
            Must(mObject->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
            known = mIds.emplace(name, id).first;
        }
        std::vector<VARIANT> backwards(arguments.rbegin(), arguments.rend());
        DISPID put = DISPID_PROPERTYPUT;
        const bool isPut = kind == DISPATCH_PROPERTYPUT;
        DISPPARAMS parameters = {backwards.data(), isPut ? &put : nullptr, static_cast<UINT>(backwards.size()),
                                 isPut ? 1u : 0u};
        Must(mObject->Invoke(known->second, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, nullptr, nullptr),
             "Invoke");
    }

private:
    IDispatch* mObject;
    std::map<std::wstring, DISPID> mIds;
};

VARIANT Whole(LONG number) {
    VARIANT value;
    ::VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT Truth(bool truth) {
    VARIANT value;
    ::VariantInit(&value);
    value.vt = VT_BOOL;
    value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

OwnedVariant TextValue(const wchar_t* text) {
    OwnedVariant value;
    value.vt = VT_BSTR;
    value.bstrVal = NewString(std::wstring_view(text));
    return value;
}

/// November 2026, whose first day is a Sunday, by the calls that the calendar makes.
class DirectCalendar {
public:
    explicit DirectCalendar(IDispatch* box) : mBox(box) {}

    void Draw() {
        mBox.Call(L"Cls", DISPATCH_METHOD, {});
        const OwnedVariant sample = TextValue(L"JjGg|");
        OwnedVariant height;
        mBox.Call(L"TextHeight", DISPATCH_METHOD, {sample}, &height);
        const LONG button = static_cast<LONG>(height.fltVal / 15) + 6;
        const LONG width = mBox.Whole(L"Width") / 15;
        const LONG cellWidth = (width - 8) / 7;
        const LONG cellHeight = (mBox.Whole(L"Height") / 15 - 8 - 4 - button - 4) / 7;
        RECT previous = {4, 4, 4 + button, 4 + button};
        RECT next = {width - 4 - button, 4, width - 4, 4 + button};
        ::DrawFrameControl(Context(), &previous, DFC_SCROLL, DFCS_SCROLLLEFT);
        ::DrawFrameControl(Context(), &next, DFC_SCROLL, DFCS_SCROLLRIGHT);
        const RECT caption = {previous.right + 1, 5, next.left - 1, previous.bottom};
        Edge(caption, EDGE_BUMP, 0x480F);
        Style(static_cast<LONG>(0x80000012));
        Text("November, 2026", caption);
        Style(static_cast<LONG>(0x80000011));
        for (LONG column = 0; column < 7; ++column) {
            const RECT cell = Cell(column, 8 + button, cellWidth, cellHeight);
            Edge(cell, EDGE_ETCHED, 0x080F);
            Text("S", cell);
        }
        for (LONG place = 0; place < 42; ++place) {
            const RECT cell = Cell(place % 7, 12 + button + cellHeight * (place / 7 + 1), cellWidth, cellHeight);
            Edge(cell, EDGE_ETCHED, 0x080F);
            if (place >= 30) continue;
            Style(static_cast<LONG>(0x80000008));
            Text(std::to_string(place + 1).c_str(), cell);
            if (place == 20) {
                RECT focus = {cell.left + 2, cell.top + 2, cell.right - 2, cell.bottom - 2};
                ::DrawFocusRect(Context(), &focus);
            }
        }
        mBox.Call(L"Refresh", DISPATCH_METHOD, {});
    }

private:
    HDC Context() { return reinterpret_cast<HDC>(static_cast<INT_PTR>(mBox.Whole(L"hDC"))); }
    static RECT Cell(LONG column, LONG top, LONG width, LONG height) {
        return {4 + column * width, top, 4 + (column + 1) * width, top + height};
    }
    void Edge(RECT area, UINT edge, UINT flags) { ::DrawEdge(Context(), &area, edge, flags); }
    void Text(const char* text, RECT area) {
        ::DrawTextA(Context(), text, static_cast<int>(std::string(text).size()), &area, 0x8025);
    }
    /// The font is asked for each time, as a host may have been given another one.
    void Style(LONG colour) {
        mBox.Call(L"ForeColor", DISPATCH_PROPERTYPUT, {Whole(colour)});
        OwnedVariant font;
        mBox.Get(L"Font", font);
        constexpr DISPID kBold = 3;
        VARIANT bold = Truth(false);
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters = {&bold, &put, 1, 1};
        font.pdispVal->Invoke(kBold, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr,
                              nullptr);
    }

    Direct mBox;
};

ComPtr<_KWOMonthView> Calendar(IDispatch* box) {
    auto view = Early<_KWOMonthView>(Created(L"KWOUtil.KWOMonthView"), IID__KWOMonthView);
    DATE focus = 46347;  // 2026-11-21
    VARIANT_BOOL created = VARIANT_FALSE;
    Must(view->Create(&box, &focus, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &created), "Create");
    Must(created ? S_OK : E_FAIL, "creating the calendar");
    return view;
}

void MeasureRedraw(IDispatch* box) {
    // The annotation service refuses the first calendar, so that there is one that readers are told nothing about.
    bool isAccepting = false;
    int told = 0;
    const AnnotationService service([&](const Annotated&) {
        ++told;
        return isAccepting ? S_OK : E_INVALIDARG;
    });
    const auto view = Calendar(box);
    isAccepting = true;
    const auto spoken = Calendar(box);
    const int toldByCreate = told;
    DirectCalendar direct(box);

    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_DATE_CLASSES};
    ::InitCommonControlsEx(&classes);
    const HWND month =
        ::CreateWindowExW(0, MONTHCAL_CLASSW, L"", WS_POPUP, 0, 0, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, kWidth, kHeight);
    ::SelectObject(memory, bitmap);

    std::printf("\nA redraw of the whole calendar, %d by %d pixels\n", kWidth, kHeight);
    // In turns, so that what else the machine does meets all of them.
    double ours = 0, withReader = 0, directly = 0, systems = 0;
    constexpr int kRounds = 5;
    for (int round = 0; round < kRounds; ++round) {
        ours += Cost(4, [&] { view->Resize(); }) / kRounds;
        withReader += Cost(4, [&] { spoken->Resize(); }) / kRounds;
        directly += Cost(4, [&] { direct.Draw(); }) / kRounds;
        systems +=
            Cost(4, [&] { ::SendMessageW(month, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory), PRF_CLIENT); }) /
            kRounds;
    }
    Row("KWOMonthView.Resize", ours);
    Must(told == toldByCreate ? S_OK : E_FAIL, "telling readers nothing while nothing changes");
    Row("KWOMonthView.Resize, with an annotation service", withReader);
    Row("the same calls of host and system, made directly", directly);
    Row("the system's month calendar, painted at that size", systems);
    Target("KWOMonthView against the same calls", ours / directly, "at most", 1.2, ours <= 1.2 * directly);
    Target("with an annotation service against without", withReader / ours, "at most", 1.05, withReader <= 1.05 * ours);
    std::printf("    -> %-60s %9.2f\n", "KWOMonthView against the system's calendar", ours / systems);

    ::DeleteDC(memory);
    ::DeleteObject(bitmap);
    ::ReleaseDC(nullptr, screen);
    ::DestroyWindow(month);
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    Must(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    {
        kwohost::ScriptHost host({});
        kwohost::Forms forms;
        const auto form = kwohost::MakeObject<kwohost::Form>(host, forms, L"frm", kwohost::Form::Kind::Plain, nullptr);
        form->Open();
        Direct members(form.Get());
        const OwnedVariant type = TextValue(L"PictureBox");
        OwnedVariant box;
        members.Call(L"AddControl", DISPATCH_METHOD, {type, type}, &box);
        members.Call(L"Show", DISPATCH_METHOD, {});
        Direct(box.pdispVal)
            .Call(L"Move", DISPATCH_METHOD, {Whole(0), Whole(0), Whole(kWidth * 15), Whole(kHeight * 15)});
        MeasureRedraw(box.pdispVal);
        form->End();
    }
    ::CoUninitialize();
    return 0;
}
