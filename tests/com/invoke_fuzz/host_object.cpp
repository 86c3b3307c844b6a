#include "host_object.h"

#include <algorithm>
#include <iterator>

#include "com_support/bstr.h"
#include "world.h"

namespace kwo::invoke_fuzz {

namespace {

enum class Kind { Method, Number, Context, Window, Object };

struct HostMember {
    const wchar_t* name;
    Kind kind;
    float value = 0;
};

// A member's identifier is its place here, from 1.
constexpr HostMember kMembers[] = {
    {L"Font", Kind::Object},
    {L"Parent", Kind::Object},
    {L"Container", Kind::Object},
    {L"ActiveControl", Kind::Object},
    {L"hDC", Kind::Context},
    {L"hWnd", Kind::Window},
    {L"Handle", Kind::Context},
    {L"Type", Kind::Number, 3},
    {L"Bold", Kind::Number, 0},
    {L"AutoRedraw", Kind::Number, 0},
    {L"Width", Kind::Number, 2000},
    {L"Height", Kind::Number, 3000},
    {L"Left", Kind::Number, 600},
    {L"Top", Kind::Number, 600},
    {L"BackColor", Kind::Number, 0},
    {L"ForeColor", Kind::Number, 0},
    {L"FillStyle", Kind::Number, 1},
    {L"FontTransparent", Kind::Number, 0},
    {L"TextHeight", Kind::Number, 195},
    {L"Cls", Kind::Method},
    {L"Refresh", Kind::Method},
    {L"SetFocus", Kind::Method},
    {L"Line", Kind::Method},
    {L"Move", Kind::Method},
    {L"ScaleMode", Kind::Number, 1},
    {L"ScaleWidth", Kind::Number, 6000},
    {L"ScaleHeight", Kind::Number, 4000},
    {L"ScaleX", Kind::Number, 15},
    {L"ScaleY", Kind::Number, 15},
    {L"WindowState", Kind::Number, 0},
    {L"OnChangeMonth", Kind::Method},
    {L"OnChangeDate", Kind::Method},
    {L"OnButtonClick", Kind::Method},
    {L"Tick", Kind::Method},
    {L"Alarm", Kind::Method},
    {L"MDIChild", Kind::Number, 0},
};

constexpr DISPID kFont = 1;

DISPID IdOf(const wchar_t* name) {
    const auto found =
        std::ranges::find_if(kMembers, [name](const HostMember& member) { return lstrcmpiW(member.name, name) == 0; });
    return found == std::end(kMembers) ? DISPID_UNKNOWN : static_cast<DISPID>(found - std::begin(kMembers) + 1);
}

}  // namespace

STDMETHODIMP HostObject::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    const bool isSink = mWorld.IsSource(id);
    if (id != IID_IUnknown && id != IID_IDispatch && !(isSink && mWorld.random.Flag())) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) HostObject::Release() {
    mWorld.Holds(references > 0, "a host object is released no more often than it is held");
    return --references;
}

STDMETHODIMP HostObject::GetTypeInfoCount(UINT* count) {
    if (count != nullptr) *count = 0;
    return S_OK;
}

STDMETHODIMP HostObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    switch (mWorld.Decide()) {
        case World::Answer::Other:
            *ids = mWorld.random.Below(60) - 10;
            return S_OK;
        case World::Answer::Failure:
            return mWorld.random.Flag() ? E_NOTIMPL : mWorld.AnyFailure();
        default:
            *ids = IdOf(names[0]);
            return *ids == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
    }
}

STDMETHODIMP HostObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                EXCEPINFO* exception, UINT*) {
    mWorld.WriteInto(arguments);
    const bool isKnown = member >= 1 && member <= static_cast<DISPID>(std::size(kMembers));
    // What the component keeps of these must not be the component itself: nobody could end such a circle. But a font
    // may be anything.
    const bool isKept = isKnown && kMembers[member - 1].kind == Kind::Object && member != kFont;
    switch (mWorld.Decide()) {
        case World::Answer::Other:
            if (result != nullptr && !isKept) *result = mWorld.AnyAnswer();
            return S_OK;
        case World::Answer::Failure: {
            if (exception == nullptr || mWorld.random.Flag()) return mWorld.AnyFailure();
            *exception = {};
            if (mWorld.random.Flag()) exception->bstrSource = SysAllocString(L"host");
            exception->scode = mWorld.AnyFailure();
            if (mWorld.random.Flag()) exception->scode = 0;
            if (mWorld.random.Flag()) exception->bstrDescription = SysAllocString(L"refused");
            exception->wCode = exception->scode == 0 ? WORD{1001} : WORD{0};
            return DISP_E_EXCEPTION;
        }
        default:
            break;
    }
    if (!isKnown) return DISP_E_MEMBERNOTFOUND;
    if (result == nullptr || (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return S_OK;
    const HostMember& found = kMembers[member - 1];
    *result = {};
    switch (found.kind) {
        case Kind::Method:
            break;
        case Kind::Number:
            result->vt = VT_R4;
            result->fltVal = found.value;
            break;
        case Kind::Context:
            result->vt = VT_I4;
            result->lVal = mWorld.Context();
            break;
        case Kind::Window:
            result->vt = VT_I4;
            result->lVal = mWorld.Window();
            break;
        case Kind::Object:
            if (member == kFont && mWorld.HasOddFonts()) {
                *result = mWorld.AnyComponentObject();
                break;
            }
            result->vt = VT_DISPATCH;
            result->pdispVal = mWorld.AnyHostObject();
            result->pdispVal->AddRef();
            break;
    }
    return S_OK;
}

}  // namespace kwo::invoke_fuzz
