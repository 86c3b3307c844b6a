#include "com/server/object_core.h"

#include <cstdint>
#include <cstring>

#include "com/server/invoke.h"

namespace kwo::com {

namespace {

/// Late-bound callers pass this identifier with every call: comparing it calls no function.
bool IsNull(REFIID id) {
    std::uint64_t halves[2];
    static_assert(sizeof halves == sizeof id);
    std::memcpy(halves, &id, sizeof id);
    return (halves[0] | halves[1]) == 0;
}

}  // namespace

HRESULT ObjectCore::Answer(REFIID id, void** found, void* more) noexcept {
    if (found == nullptr) return E_POINTER;
    if (id == IID_IUnknown || id == IID_IDispatch || id == mInfo.interfaceId) {
        *found = &mObject;
    } else if (id == IID_ISupportErrorInfo) {
        *found = static_cast<ISupportErrorInfo*>(this);
    } else if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) {
        *found = static_cast<IProvideClassInfo2*>(this);
    } else {
        *found = more;
    }
    if (*found == nullptr) return E_NOINTERFACE;
    mObject.AddRef();
    return S_OK;
}

HRESULT ObjectCore::TypeInfo(UINT index, LCID, ITypeInfo** info) noexcept {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    *info = mTable.TypeInfo();
    (*info)->AddRef();
    return S_OK;
}

HRESULT ObjectCore::IdsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID, DISPID* ids) noexcept {
    return IsNull(id) ? mTable.IdsOfNames(names, count, ids) : DISP_E_UNKNOWNINTERFACE;
}

HRESULT ObjectCore::Call(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                         EXCEPINFO* exception, UINT* badArgument) noexcept {
    if (!IsNull(id)) return DISP_E_UNKNOWNINTERFACE;
    return InvokeMember(mTable, &mObject, member, locale, flags, arguments, result, exception, badArgument);
}

HRESULT ObjectCore::GetGUID(DWORD kind, GUID* id) {
    if (id == nullptr) return E_POINTER;
    *id = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    if (mInfo.sourceId == nullptr) return E_NOINTERFACE;
    *id = *mInfo.sourceId;
    return S_OK;
}

}  // namespace kwo::com
