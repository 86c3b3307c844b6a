#include "member_work.h"

#include <olectl.h>

#include "com_support/owned_array.h"
#include "findings.h"

namespace kwo::soak {
namespace {

using com_support::Bstr;
using com_test::Call;
using com_test::Get;
using com_test::Hex;
using com_test::Let;
using com_test::Narrow;
using com_test::Outcome;
using com_test::Set;
using com_test::Var;

constexpr wchar_t kKey[] = L"Software\\KWOUtilSoak";
constexpr long kCurrentUser = static_cast<long>(0x80000001);

void Expect(bool holds, const std::string& what) {
    if (!holds) Found("does not hold: " + what);
}

/// The result of a member that must run.
Var ResultOf(const wchar_t* member, Outcome outcome) {
    if (outcome.status != S_OK)
        Found(Narrow(member) + " failed: " + Hex(outcome.status) + ", scode " + Hex(outcome.scode) + " " +
              Narrow(outcome.description));
    return std::move(outcome.result);
}

Var Do(const LiveObject& object, const wchar_t* member, const std::vector<Var>& arguments = {}) {
    return ResultOf(member, Call(object.Get(), member, arguments));
}

Var Read(const LiveObject& object, const wchar_t* property, const std::vector<Var>& arguments = {}) {
    return ResultOf(property, Get(object.Get(), property, arguments));
}

ComPtr<IDispatch> MakeIcon() {
    const BYTE bits[32] = {};
    PICTDESC description = {};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_ICON;
    description.icon.hicon = CreateIcon(nullptr, 16, 16, 1, 1, bits, bits);
    ComPtr<IDispatch> picture;
    Expect(SUCCEEDED(OleCreatePictureIndirect(&description, IID_IDispatch, TRUE, picture.OutVoid())),
           "a picture is made");
    return picture;
}

std::wstring TextOf(Random& random) {
    return std::wstring(1 + random.Place(60), static_cast<wchar_t>(L'a' + random.Below(26)));
}

}  // namespace

void UseRegistry(Random& random) {
    const LiveObject registry(L"KWORegistry");
    const std::wstring key = std::wstring(kKey) + L"\\" + std::to_wstring(GetCurrentThreadId());
    const std::wstring text = TextOf(random);
    const std::wstring name = L"value " + std::to_wstring(random.Below(9));
    Expect(Do(registry, L"KWO_RegSetValue", {kCurrentUser, key, name, text}).lVal == 0, "a value is written");
    Bstr value(L"");
    Expect(Do(registry, L"KWO_RegGetValue", {kCurrentUser, key, name, Var::Ref(value.InOut())}).lVal == 0,
           "a value is read");
    Expect(value.Text() == text, "what was written is read");
    // The key comes back open, and no member closes it.
    const Var opened = Do(registry, L"KWO_RegCreateKey", {kCurrentUser, key});
    Expect(Do(registry, L"KWO_RegGetValueEx", {opened.lVal, name, L"default"}).Text() == text,
           "a value is read by its key");
    Expect(Do(registry, L"KWO_RegGetValueEx", {opened.lVal, L"none", L"default"}).Text() == L"default", "a default");
    RegCloseKey(reinterpret_cast<HKEY>(static_cast<INT_PTR>(opened.lVal)));
    Expect(Do(registry, L"KWO_RegDeleteValue", {kCurrentUser, key, name}).lVal == 0, "a value is deleted");
    Expect(Do(registry, L"KWO_RegGetValue", {kCurrentUser, key, name, Var::Ref(value.InOut())}).lVal != 0,
           "a deleted value");
    Expect(Do(registry, L"KWO_RegDeleteKey", {kCurrentUser, key}).lVal == 0, "a key is deleted");
}

void RemoveRegistryKey() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
}

void UseMetrics(Random& random) {
    constexpr DISPID kFirst = 0x60030024;
    constexpr int kMetrics = 71;
    constexpr short kTwips = 1;
    constexpr short kPixels = 3;
    const LiveObject metrics(L"KWOSysMetrics");
    for (int at = 0; at < kMetrics; ++at)
        ResultOf(L"a metric", com_test::InvokeId(metrics.Get(), kFirst + 4 * at, DISPATCH_METHOD, {}));
    const Var pixels = Do(metrics, L"ScreenX", {Var(kPixels)});
    const Var twips = Do(metrics, L"ScreenX", {Var(kTwips)});
    Expect(pixels.lVal == GetSystemMetrics(SM_CXSCREEN) && twips.lVal > pixels.lVal, "the screen's width");
    ResultOf(L"ScaleMode", Let(metrics.Get(), L"ScaleMode", Var(random.Flag() ? kTwips : kPixels)));
}

void MakeFonts() {
    const LiveObject fonts(L"KWOSysParams");
    for (const wchar_t* const name : {L"CaptionFont", L"MenuFont", L"StatusFont", L"MessageFont"}) {
        const Var font = Read(fonts, name);
        Expect(font.vt == VT_DISPATCH && font.pdispVal != nullptr, "there is a font");
    }
}

void UseFonts(Random& random) {
    constexpr const wchar_t* kFonts[] = {L"CaptionFont", L"SmCaptionFont", L"MenuFont", L"StatusFont", L"MessageFont"};
    const LiveObject fonts(L"KWOSysParams");
    for (const wchar_t* const name : kFonts) {
        const Var font = Read(fonts, name);
        if (font.vt != VT_DISPATCH || font.pdispVal == nullptr) continue;
        // By its interface: a use by name loses keys of the registry in Wine's font object.
        const auto dispatch = com_test::As<IFont>(font.pdispVal, IID_IFont);
        Bstr face;
        Expect(dispatch && SUCCEEDED(dispatch->get_Name(face.Out())) && !face.Text().empty(), "a font has a name");
        HFONT handle = nullptr;
        if (dispatch && random.Flag()) Expect(SUCCEEDED(dispatch->get_hFont(&handle)), "a font has a handle");
    }
}

void UseUtility(Random& random) {
    constexpr short kPauseMs = 100;
    const LiveObject utility(L"KWOUtility");
    Expect(!Do(utility, L"KWO_SystemDir", {random.Flag()}).Text().empty(), "the system's folder");
    Expect(!Do(utility, L"KWO_WindowsDir").Text().empty(), "the folder of Windows");
    Expect(!Do(utility, L"KWO_FindInPath", {L"KWOUtil.dll"}).Text().empty(), "a file is found");
    Expect(Do(utility, L"KWO_FindInPath", {L"no such file"}).Text().empty(), "no file is found");
    Expect(Read(utility, L"KWO_WinMajorVersion").iVal > 0, "the version");
    Read(utility, L"KWO_WinMinorVersion");
    Read(utility, L"KWO_IsWinNT");
    Read(utility, L"KWO_IsWin32");
    if (random.Once(4)) Do(utility, L"KWO_Pause", {Var(kPauseMs)});
    if (random.Once(12))
        Expect(Do(utility, L"KWO_LoadApp", {L"", L"cmd.exe", L"/c exit", Var(short{0}), L""}).lVal != 0,
               "a program starts");
}

void UseMessages(Random& random) {
    constexpr int kLanguages[] = {0x0407, 0x0409, 0x040C, 0x0C0A};
    constexpr int kAnError = 1900;
    CLSID id = {};
    ComPtr<IDispatch> companion;
    if (FAILED(CLSIDFromProgID(L"KWOInit.KWOInitialize", &id)) ||
        FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, companion.OutVoid())))
        return Found("the companion cannot be made");
    LONG first = 0;
    LONG last = 0;
    LONG size = 0;
    const Var found = ResultOf(L"KWO_MsgTableSize",
                               Call(companion.Get(), L"KWO_MsgTableSize",
                                    {L"KWOUtil", L"KWOInit.nls", Var::Ref(&first), Var::Ref(&last), Var::Ref(&size)}));
    Expect(found.boolVal == VARIANT_TRUE && first <= kAnError && kAnError <= last, "the message file is found");
    if (found.boolVal != VARIANT_TRUE) return;
    const LONG language = random.Of(kLanguages);
    // Arrays begin at 0, so the element's index is the number of its message.
    SAFEARRAYBOUND one = {1, 0};
    SAFEARRAYBOUND all = {static_cast<ULONG>(last + 1), 0};
    auto index = com_support::OwnedArray::Adopt(SafeArrayCreate(VT_I2, 1, &one));
    auto texts = com_support::OwnedArray::Adopt(SafeArrayCreate(VT_BSTR, 1, &all));
    ResultOf(L"KWO_MsgTableLoad", Call(companion.Get(), L"KWO_MsgTableLoad",
                                       {static_cast<long>(language), Var::Reference(VT_ARRAY | VT_I2, index.InOut()),
                                        Var::Reference(VT_ARRAY | VT_BSTR, texts.InOut())}));
}

void UseTray(Random& random, HWND window) {
    constexpr int kChanges = 4;
    LiveObject tray(L"KWOSysTray");
    const long handle = static_cast<long>(reinterpret_cast<INT_PTR>(window));
    const ComPtr<IDispatch> icon = MakeIcon();
    Expect(Do(tray, L"Create", {handle, icon.Get(), TextOf(random)}).boolVal == VARIANT_TRUE, "an icon is shown");
    for (int at = 0; at < kChanges; ++at) {
        const std::wstring tip = TextOf(random);
        ResultOf(L"Tip", Let(tray.Get(), L"Tip", tip));
        Expect(Read(tray, L"Tip").Text() == tip, "the tip");
        if (random.Flag()) ResultOf(L"Icon", Set(tray.Get(), L"Icon", MakeIcon().Get()));
        Expect(Read(tray, L"MouseDownMsg", {Var(short{1})}).lVal == WM_LBUTTONDOWN, "a message's number");
    }
    if (random.Flag()) Do(tray, L"Destroy");
    if (!tray.End()) Found("a tray icon has not ended");
}

void UsePatterns(Random& random) {
    const LiveObject pattern(random.Flag() ? L"IKWOTimer" : L"IKWOAlarm");
    Expect(static_cast<bool>(pattern), "a pattern of a callback interface is made");
}

}  // namespace kwo::soak
